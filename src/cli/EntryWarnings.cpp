#include "cli/EntryWarnings.h"

#include "cli/StoreWords.h"
#include "cli/Tables.h"

namespace kalmo::cli {

using namespace Qt::StringLiterals;
using operations::EntryObjection;
using What = EntryObjection::What;
using Field = EntryObjection::Field;

namespace {

constexpr int mostLines = 20;

QString nameOf(Field field)
{
    switch (field) {
    case Field::Name:
        return u"name"_s;
    case Field::Number:
        return u"number"_s;
    case Field::Date:
        return u"date"_s;
    case Field::Reminder:
        return u"reminder"_s;
    case Field::Vip:
        return u"VIP call"_s;
    }
    return {};
}

QString warningText(const EntryObjection& objection)
{
    const QString field = nameOf(objection.field);
    const QString text = printable(objection.text);
    switch (objection.what) {
    case What::NoText:
        return u"there is no %1"_s.arg(field);
    case What::TooLong:
        return u"the %1 has %2 characters, the phone holds %3"_s.arg(field)
            .arg(objection.length)
            .arg(objection.longest);
    case What::Character:
        return u"the phone can't hold \"%1\" in a %2"_s.arg(text, field);
    case What::NotSendable:
        return u"the %1 has a control character that can't be sent; it is left out"_s.arg(field);
    case What::ImpossibleDate:
        return u"\"%1\" is no day and time"_s.arg(text);
    case What::NoMelody:
        return u"the phone has no melody \"%1\" for the %2"_s.arg(text, field);
    case What::ReminderWithoutDate:
        return u"a reminder needs a date"_s;
    case What::NoVip:
        return u"this phone marks no VIP entries"_s;
    case What::HeldOtherwise:
        break;
    }
    const QString held = objection.held.isEmpty() ? u"nothing"_s : u'"' + printable(objection.held) + u'"';
    return u"the phone will hold %1 instead of \"%2\""_s.arg(held, text);
}

QString listWarnings(const operations::ListPlan& plan)
{
    QString text;
    if (plan.movedMelodies > 0)
        text += u"Warning: this handset counts melodies from 0 when they are written and from 1 when they "
                u"are read: after the write %1 will come back as the melody before.\n"_s.arg(
                    plan.movedMelodies == 1 ? u"1 melody"_s : u"%1 melodies"_s.arg(plan.movedMelodies));
    if (plan.unnamedMelodies > 0)
        text += u"Warning: %1 have a melody of the handset's own that has no name here; the write replaces "
                u"it by \"Melodie 1\".\n"_s.arg(entryCount(static_cast<size_t>(plan.unnamedMelodies)));
    if (plan.namelessEntries > 0)
        text += u"Warning: the write gives %1 without a name the name \"Ohne Name\".\n"_s.arg(
            entryCount(static_cast<size_t>(plan.namelessEntries)));
    return text;
}

} // namespace

QString warningLines(const operations::ListPlan& plan)
{
    QString text = listWarnings(plan);
    int count = 0;
    for (const EntryObjection& objection : plan.objections) {
        if (++count <= mostLines)
            text += u"Warning: entry %1 (%2): %3.\n"_s.arg(QString::number(objection.index + 1),
                                                           printable(plan.given[objection.index].name),
                                                           warningText(objection));
    }
    if (count > mostLines)
        text += u"... and %1 more warnings.\n"_s.arg(count - mostLines);
    return text;
}

} // namespace kalmo::cli
