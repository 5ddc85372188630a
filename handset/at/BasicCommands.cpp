// Commands that every device has.

#include "handset/at/AtCommand.h"

#include "app/CodePage.h"

namespace kalmo::handset {

namespace {

/// Families 1 and 2 close a store with a bare "AT".
AtAnswer attention(AtContext& context, const AtRequest&)
{
    if (FamilySet(1, 2).contains(context.phone.family.number))
        context.phone.closeStores();
    return AtAnswer::ok();
}

AtAnswer reset(AtContext& context, const AtRequest&)
{
    context.echo = context.phone.echoesAtFirst();
    context.cmeLevel = 0;
    return AtAnswer::ok();
}

AtAnswer setEcho(AtContext& context, const AtRequest& request)
{
    if (request.argument.size() > 1 || request.argument > "1")
        return AtAnswer::error(NotSupported);
    context.echo = request.argument == "1";
    return AtAnswer::ok();
}

AtAnswer errorLevel(AtContext& context, const AtRequest& request)
{
    if (request.form == Form::Read)
        return AtAnswer::ok("+CMEE: " + QByteArray::number(context.cmeLevel));
    bool ok = false;
    const int level = request.argument.toInt(&ok);
    if (!ok || level < 0 || level > 2)
        return AtAnswer::error(NotSupported);
    context.cmeLevel = level;
    return AtAnswer::ok();
}

AtAnswer manufacturer(AtContext& context, const AtRequest&)
{
    return AtAnswer::ok(context.phone.family.manufacturer);
}

AtAnswer model(AtContext& context, const AtRequest&)
{
    return AtAnswer::ok(app::toCp1252(context.phone.model.cgmm));
}

AtAnswer version(AtContext& context, const AtRequest&)
{
    return AtAnswer::ok(context.phone.family.version);
}

AtAnswer serialNumber(AtContext& context, const AtRequest&)
{
    return AtAnswer::ok(app::toCp1252(context.phone.settings.serialNumber));
}

AtAnswer productName(AtContext& context, const AtRequest&)
{
    const QString& answer = context.phone.model.wppn;
    return answer.isEmpty() ? AtAnswer::error(NotSupported) : AtAnswer::ok(app::toCp1252(answer));
}

constexpr auto either = Ending::Either;

constexpr AtCommand basicTable[] = {
    {"", Form::Run, everyDevice, 0.02, attention, true, either},
    {"Z", Form::Run, everyDevice, 0.05, reset, true, either},
    {"E", Form::Run, everyDevice, 0.02, setEcho},
    {"+CMEE", Form::Read | Form::Set, everyDevice, 0.02, errorLevel},
    {"+CMEE", Form::Test, everyDevice, 0.02, onlyOk},
    {"+CGMI", Form::Run, everyDevice, 0.04, manufacturer},
    {"+CGMM", Form::Run, everyDevice, 0.04, model, false, either},
    {"+CGMR", Form::Run, everyDevice, 0.04, version},
    {"+CGSN", Form::Run, everyDevice, 0.04, serialNumber},
    {"^WPPN", Form::Run, everyDevice, 0.06, productName, false, either},
};

} // namespace

std::span<const AtCommand> basicCommands()
{
    return basicTable;
}

} // namespace kalmo::handset
