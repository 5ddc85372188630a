// Commands of clients for any phone, for the general profiles.

#include "handset/at/AtCommand.h"

namespace kalmo::handset {

namespace {

/// A maker with whom general clients use AT^SQWE.
AtAnswer knownMaker(AtContext&, const AtRequest&)
{
    return AtAnswer::ok("SIEMENS");
}

/// A maker with whom they try AT+CPROT.
AtAnswer anyMaker(AtContext&, const AtRequest&)
{
    return AtAnswer::ok("Emulated");
}

AtAnswer characterSet(AtContext&, const AtRequest& request)
{
    if (request.form == Form::Set)
        return AtAnswer::ok();
    return AtAnswer::ok(request.form == Form::Read ? "+CSCS: \"GSM\"" : "+CSCS: (\"GSM\",\"UTF-8\")");
}

AtAnswer cable(AtContext&, const AtRequest&)
{
    return AtAnswer::ok("^SIFS: WIRE");
}

AtAnswer protocols(AtContext&, const AtRequest&)
{
    return AtAnswer::ok("^SBFB: (0-3)");
}

AtAnswer dataProtocol(AtContext&, const AtRequest& request)
{
    if (request.form == Form::Test)
        return AtAnswer::ok("+CPROT: (0),(\"1.2\"),(8)");
    if (request.argument != "0")
        return AtAnswer::error(NotSupported);
    return {.result = AtAnswer::Connect, .then = AtAnswer::EnterDataMode};
}

constexpr AtCommand sqweCommands[] = {
    {"+GMI", Form::Run, everyHandset, 0.02, knownMaker},
    {"+CGMI", Form::Run, everyHandset, 0.02, knownMaker},
    {"+CFUN", Form::Set, everyHandset, 0.02, onlyOk},
    {"+CCLK", Form::Read | Form::Set, everyHandset, 0.15, clockCommand},
    {"+CSCS", Form::Read | Form::Test | Form::Set, everyHandset, 0.02, characterSet},
    {"^SIFS", Form::Run, everyHandset, 0.02, cable},
    {"^SBFB", Form::Test, everyHandset, 0.02, protocols},
};

constexpr AtCommand cprotCommands[] = {
    {"+GMI", Form::Run, everyHandset, 0.02, anyMaker},
    {"+CGMI", Form::Run, everyHandset, 0.02, anyMaker},
    {"+CFUN", Form::Set, everyHandset, 0.02, onlyOk},
    {"+CCLK", Form::Read | Form::Set, everyHandset, 0.15, clockCommand},
    {"+CSCS", Form::Read | Form::Test | Form::Set, everyHandset, 0.02, characterSet},
    {"+CPROT", Form::Test | Form::Set, everyHandset, 0.05, dataProtocol},
};

} // namespace

std::span<const AtCommand> generalCommands(Profile profile)
{
    switch (profile) {
    case Profile::Own:
        break;
    case Profile::GeneralSqwe:
        return sqweCommands;
    case Profile::GeneralCprot:
        return cprotCommands;
    }
    return {};
}

} // namespace kalmo::handset
