#include "handset/at/AtCommand.h"

#include <algorithm>

namespace kalmo::handset {

namespace {

bool isLetter(char character)
{
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

/// "E0" or "Z": a letter and a number.
AtRequest parseBasic(const QByteArray& body)
{
    return {.name = body.first(1).toUpper(), .argument = body.sliced(1)};
}

/// "+CCLK=...": a prefix, a word, and the form of the command.
AtRequest parseExtended(const QByteArray& body)
{
    qsizetype end = 1;
    while (end < body.size() && (isLetter(body[end]) || isDigit(body[end])))
        ++end;
    AtRequest request{.name = body.first(end).toUpper()};
    const QByteArray rest = body.sliced(end);
    if (rest == "?") {
        request.form = Form::Read;
    } else if (rest == "=?") {
        request.form = Form::Test;
    } else if (rest.startsWith('=')) {
        request.form = Form::Set;
        request.argument = rest.sliced(1);
    } else if (!rest.isEmpty()) {
        request.name = body; // no table has such a command
    }
    return request;
}

} // namespace

QByteArray AtRequest::text() const
{
    switch (form) {
    case Form::Read:
        return "AT" + name + '?';
    case Form::Test:
        return "AT" + name + "=?";
    case Form::Set:
        return "AT" + name + '=' + argument;
    case Form::Run:
        break;
    }
    return "AT" + name + argument;
}

AtAnswer onlyOk(AtContext&, const AtRequest&)
{
    return AtAnswer::ok();
}

AtRequest parseAtLine(const QByteArray& line)
{
    const QByteArray body = line.sliced(2);
    if (body.trimmed().isEmpty())
        return {};
    return isLetter(body.front()) ? parseBasic(body) : parseExtended(body);
}

const AtCommand* findCommand(const AtRequest& request, const Phone& phone)
{
    for (const auto& table : {generalCommands(phone.options.profile), basicCommands(), statusCommands(),
                              storeCommands(), soundCommands(), modeCommands()}) {
        const auto row = std::find_if(table.begin(), table.end(), [&](const AtCommand& command) {
            return request.name == command.name && command.forms.testFlag(request.form) &&
                   command.families.contains(phone.family.number);
        });
        if (row != table.end())
            return &*row;
    }
    return nullptr;
}

} // namespace kalmo::handset
