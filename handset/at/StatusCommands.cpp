// Commands about signal, battery, clock and area codes.

#include "handset/at/AtCommand.h"

#include "app/CodePage.h"

#include <algorithm>

namespace kalmo::handset {

using namespace Qt::StringLiterals;

namespace {

const QString clockForm = u"yy/MM/dd,hh:mm"_s;

AtAnswer signal(AtContext& context, const AtRequest&)
{
    return AtAnswer::ok("+CSQ: " + QByteArray::number(context.phone.settings.signal) + ",99");
}

AtAnswer battery(AtContext& context, const AtRequest&)
{
    return AtAnswer::ok("+CBC: 0," + QByteArray::number(context.phone.settings.battery));
}

/// The handset shows no seconds: they are always 00.
AtAnswer readClock(AtContext& context, const AtRequest&)
{
    const QDateTime now = context.time.dateTime().addSecs(context.phone.settings.clockAhead);
    return AtAnswer::ok("+CCLK: \"" + now.toString(clockForm).toLatin1() + ":00\"");
}

AtAnswer setClock(AtContext& context, const AtRequest& request)
{
    QByteArray text = request.argument;
    text.replace('"', "");
    // Two digits of a year are read as those of the last century.
    const QDateTime wanted =
        QDateTime::fromString(QString::fromLatin1(text), clockForm + u":ss"_s).addYears(100);
    if (!wanted.isValid())
        return AtAnswer::error(NotSupported);
    context.phone.settings.clockAhead = context.time.dateTime().secsTo(wanted);
    context.phone.keepSettings();
    return AtAnswer::ok();
}

AtAnswer setAreaCodes(AtContext& context, const AtRequest& request)
{
    const QStringList codes = app::fromCp1252(request.argument).split(u',');
    const bool good = codes.size() == 4 && std::all_of(codes.begin(), codes.end(), [](const QString& code) {
                          return code.size() <= 8 && std::all_of(code.begin(), code.end(), [](QChar digit) {
                                     return digit >= u'0' && digit <= u'9';
                                 });
                      });
    if (!good)
        return AtAnswer::error(NotSupported);
    context.phone.settings.areaCodes = codes;
    context.phone.keepSettings();
    return AtAnswer::ok();
}

/// Usually the answer has no prefix: the four codes are alone.
AtAnswer areaCodes(AtContext& context, const AtRequest& request)
{
    if (request.form == Form::Set)
        return setAreaCodes(context, request);
    const QByteArray prefix = context.phone.options.areaCodePrefix ? "^SACO: " : "";
    return AtAnswer::ok(prefix + app::toCp1252(context.phone.settings.areaCodes.join(u',')));
}

constexpr FamilySet withGauges = FamilySet(1, 1) | vcardFamilies;

constexpr AtCommand statusTable[] = {
    {"+CSQ", Form::Run, withGauges, 0.05, signal},
    {"+CBC", Form::Run, withGauges, 0.05, battery},
    {"+CCLK", Form::Read | Form::Set, FamilySet(1, 1), 0.15, clockCommand},
    {"^SACO", Form::Read | Form::Set, FamilySet(8, lastFamily), 0.1, areaCodes},
};

} // namespace

AtAnswer clockCommand(AtContext& context, const AtRequest& request)
{
    return request.form == Form::Read ? readClock(context, request) : setClock(context, request);
}

std::span<const AtCommand> statusCommands()
{
    return statusTable;
}

} // namespace kalmo::handset
