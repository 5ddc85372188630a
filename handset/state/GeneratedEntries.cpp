#include "handset/state/GeneratedEntries.h"

#include "handset/classic/ClassicWire.h"

#include <array>

namespace kalmo::handset {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array<QStringView, 23> lastNames = {
    u"Müller",  u"Schmidt", u"Schneider", u"Fischer", u"Weber",    u"Meyer",   u"Wagner", u"Becker",
    u"Schäfer", u"Koch",    u"Richter",   u"Klein",   u"Schröder", u"Neumann", u"Krüger", u"Braun",
    u"Hofmann", u"Groß",    u"Jäger",     u"Vogel",   u"Böhm",     u"Lorenz",  u"Öztürk"};
constexpr std::array<QStringView, 19> firstNames = {
    u"Anna",  u"Bernd", u"Clara",  u"Dieter",  u"Elke", u"Frank", u"Günter", u"Hanna",  u"Ines",  u"Jörg",
    u"Karin", u"Lukas", u"Monika", u"Norbert", u"Olga", u"Peter", u"Rita",   u"Stefan", u"Ursula"};

QString ascii(QStringView name)
{
    QString out = name.toString().toLower();
    const std::array<std::pair<QChar, QString>, 4> spelled = {
        {{u'ä', u"ae"_s}, {u'ö', u"oe"_s}, {u'ü', u"ue"_s}, {u'ß', u"ss"_s}}};
    for (const auto& [umlaut, letters] : spelled)
        out.replace(umlaut, letters);
    return out;
}

QString twoDigits(int value)
{
    return u"%1"_s.arg(value, 2, 10, QChar(u'0'));
}

} // namespace

GeneratedPerson generatedPerson(int index)
{
    const QStringView last = lastNames[static_cast<size_t>(index) % lastNames.size()];
    const QStringView first = firstNames[static_cast<size_t>(index * 7 + index / 23) % firstNames.size()];
    const QString serial = u"%1"_s.arg(index + 1, 5, 10, QChar(u'0'));
    GeneratedPerson person{.lastName = last.toString(),
                           .firstName = first.toString(),
                           .home = u"0521"_s + serial,
                           .mobile = u"01701"_s + serial,
                           .work = {},
                           .email = {},
                           .day = {}};
    if (index % 3 == 0)
        person.work = u"052188"_s + serial;
    if (index % 4 != 0)
        person.email = ascii(first) + u'.' + ascii(last) + u"@example.org"_s;
    if (index % 5 == 0)
        person.day = twoDigits(index % 12 + 1) + twoDigits(index % 28 + 1) + twoDigits(index % 24) + u"30"_s;
    return person;
}

ClassicEntry generatedEntry(int index)
{
    const GeneratedPerson person = generatedPerson(index);
    ClassicEntry entry{.name = (person.lastName + u", "_s + person.firstName).left(longestName),
                       .number = person.home,
                       .day = person.day};
    if (!entry.day.isEmpty())
        entry.reminder = index % 2 == 0 ? u"S"_s : u"3"_s;
    if (index % 10 == 0) {
        entry.vip = true;
        entry.vipSound = QString::number(index % 9 + 1);
    }
    return entry;
}

} // namespace kalmo::handset
