#include "transfer/import/ImportSteps.h"

#include <algorithm>

namespace kalmo::transfer {

using phonedata::ClassicEntry;
using phonedata::tVcfEntry;
using toolkit::Icon;
using toolkit::Message;

namespace {

PreviewRow* firstChecked(Preview& preview, const std::function<bool(const PreviewRow&)>& test)
{
    const auto found = std::find_if(preview.rows.begin(), preview.rows.end(),
                                    [&test](const PreviewRow& row) { return row.checked && test(row); });
    return found == preview.rows.end() ? nullptr : &*found;
}

template <typename Entry, typename Make>
std::vector<Entry> fromChecked(const Preview& preview, Make make)
{
    std::vector<Entry> entries;
    for (const PreviewRow& row : preview.rows) {
        if (row.checked)
            entries.push_back(make(row));
    }
    return entries;
}

Message nothingChecked()
{
    return {.text =
                u"Es sind keine Einträge zum Import ausgewählt. Markieren Sie mindestens einen Eintrag mit "
                u"einem Häkchen."_s,
            .icon = Icon::Information,
            .english = u"There is nothing to import."_s};
}

/// "24.12.2005  08:30" as a contact has it: "2005-12-24T08:30"; empty for a day that does not exist.
QString birthdayValue(const QString& text, app::DebugLog& log)
{
    if (text.isEmpty())
        return {};
    const QString name = u"DateSL55_2_Date"_s;
    log.WriteDebugLog(name, u"Enter: "_s + text);
    const QDateTime moment = DateSL55_2_Date(text);
    const QString value = moment.toString(u"yyyy-MM-dd"_s) + u'T' + moment.toString(u"hh:mm"_s);
    log.WriteDebugLog(name, u"Result: "_s + (moment.isValid() ? value : u"none"_s));
    return moment.isValid() ? value : QString();
}

} // namespace

ClassicStep nextClassicStep(Preview& preview)
{
    if (preview.checkedCount() == 0)
        return ClassicStep::NothingChecked;
    if (PreviewRow* row =
            firstChecked(preview, [](const PreviewRow& each) { return !each.isComplete(Shape::Classic); })) {
        if (!row->cells[PreviewNumber].isEmpty())
            row->colours[PreviewNumber] = Colour::Red;
        return ClassicStep::Incomplete;
    }
    const auto isRed = [](size_t field) {
        return [field](const PreviewRow& row) { return row.colours[field] == Colour::Red; };
    };
    if (firstChecked(preview, isRed(PreviewNumber)))
        return ClassicStep::NumberTooLong;
    return firstChecked(preview, isRed(PreviewName)) ? ClassicStep::NameTooLong : ClassicStep::Ready;
}

Message messageFor(ClassicStep step)
{
    switch (step) {
    case ClassicStep::NothingChecked:
        return nothingChecked();
    case ClassicStep::Incomplete:
        return {
            .text =
                u"Mindestens einer der zum Import ausgewählten Einträge in der Vorschauliste enthält "
                u"keinen Namen oder keine Nummer und wurde rot markiert.\n"
                u"Korrigieren Sie diesen Eintrag von Hand per Doppelklick auf den Eintrag oder wählen Sie "
                u"ihn nicht zum Import aus."_s,
            .icon = Icon::Information,
            .english = u"An entry has no name or no number."_s};
    case ClassicStep::NumberTooLong:
        return {.text =
                    u"Mindestens einer der zum Import ausgewählten Einträge in der Vorschauliste ist bzgl. "
                    u"der Telefonnummer zu lang und wurde rot markiert.\n"
                    u"Korrigieren Sie diesen Eintrag in der Quelldatei oder wählen Sie ihn nicht zum Import "
                    u"aus."_s,
                .icon = Icon::Information,
                .english = u"A number is longer than 32 characters."_s};
    case ClassicStep::NameTooLong:
        return {
            .text =
                u"Mindestens einer der zum Import ausgewählten Einträge in der Vorschauliste ist bzgl. "
                u"des Namens zu lang und wurde rot markiert.\n"
                u"Sie können zu lange Namen entweder in der Quelldatei korrigieren oder automatisch durch "
                u"Kalmo nur die maximal mögliche Länge importieren.\n\n"
                u"Soll Kalmo automatisch auf die maximal mögliche Länge kürzen?"_s,
            .buttons = toolkit::Buttons::YesNoCancel,
            .icon = Icon::Question,
            .english = u"A name is longer than 16 characters. Cut such names?"_s};
    case ClassicStep::Ready:
        break;
    }
    return {};
}

void shortenNames(Preview& preview)
{
    const qsizetype longest = fieldsOf(Shape::Classic)[PreviewName].longest;
    for (PreviewRow& row : preview.rows) {
        if (!row.checked || row.colours[PreviewName] != Colour::Red)
            continue;
        row.cells[PreviewName].truncate(longest);
        row.colours[PreviewName] = Colour::Green;
    }
}

Message messageOfShortening()
{
    return {
        .text =
            u"Zu lange Einträge wurden automatisch gekürzt und grün markiert - Sie können jetzt importieren "
            u"wählen."_s,
        .icon = Icon::Information};
}

std::vector<ClassicEntry> checkedEntries(const Preview& preview)
{
    return fromChecked<ClassicEntry>(preview, [](const PreviewRow& row) {
        const QString& birthday = row.cells[PreviewBirthday];
        return ClassicEntry{.name = row.cells[PreviewName],
                            .number = row.cells[PreviewNumber],
                            .date = birthday,
                            .dateSound = birthday.isEmpty() ? QString() : u"Optisch"_s};
    });
}

std::vector<phonedata::ProviderEntry> checkedProviders(const Preview& preview)
{
    return fromChecked<phonedata::ProviderEntry>(preview, [](const PreviewRow& row) {
        return phonedata::ProviderEntry{row.cells[PreviewName], row.cells[PreviewNumber]};
    });
}

Message messageOfTakenEntries()
{
    return {.text = u"Einträge übernommen, speichern ins Gigaset nicht vergessen."_s,
            .icon = Icon::Information};
}

int uncheckNumberless(Preview& preview)
{
    int count = 0;
    for (PreviewRow& row : preview.rows) {
        if (!row.checked || row.isComplete(Shape::Vcard))
            continue;
        row.checked = false;
        ++count;
    }
    return count;
}

VcardStep nextVcardStep(const Preview& preview, std::optional<int> freePlaces)
{
    if (preview.checkedCount() == 0)
        return VcardStep::NothingChecked;
    if (freePlaces.value_or(0) >= preview.checkedCount())
        return VcardStep::Ready;
    return freePlaces ? VcardStep::NoRoom : VcardStep::RoomUnknown;
}

Message messageFor(VcardStep step, const Preview& preview, int freePlaces)
{
    switch (step) {
    case VcardStep::NothingChecked:
        return nothingChecked();
    case VcardStep::NoRoom:
        return {.text =
                    u"Sie haben %1 Einträge in der Vorschauliste zum Import ausgewählt.\n"
                    u"Im Telefon sind jedoch nur noch %2 Speicherplätze frei."_s.arg(preview.checkedCount())
                        .arg(freePlaces),
                .icon = Icon::Information,
                .english = u"%1 contacts are to be imported, but the phone has room for %2."_s
                               .arg(preview.checkedCount())
                               .arg(freePlaces)};
    case VcardStep::RoomUnknown:
        return {.text =
                    u"Kalmo weiß nicht, wie viele Speicherplätze im Telefon frei sind. Bitte lesen Sie das "
                    u"Telefonbuch neu ein (Schaltfläche \"Neu laden\")."_s,
                .icon = Icon::Information};
    case VcardStep::Ready:
        break;
    }
    return {};
}

Message messageOfUnchecked(int count)
{
    return {.text = QString::number(count) +
                    u" Einträge haben keine einzige Telefonnummer und können nicht importiert werden. Diese "
                    u"Einträge wurden abgewählt."_s,
            .icon = Icon::Information};
}

Message messageOfRefusedCheck()
{
    return {
        .text =
            u"Der Eintrag hat keine einzige Telefonnummer und kann nicht importiert werden. Dieser Eintrag "
            u"wurden abgewählt."_s,
        .icon = Icon::Information};
}

std::vector<tVcfEntry> checkedContacts(const Preview& preview, app::DebugLog& log)
{
    return fromChecked<tVcfEntry>(preview, [&log](const PreviewRow& row) {
        const auto cut = [&row](size_t field) {
            return row.cells[field].left(fieldsOf(Shape::Vcard)[field].longest);
        };
        const QString birthday = birthdayValue(row.cells[PreviewAnniversary], log);
        return tVcfEntry{.email = cut(PreviewEmail),
                         .lastName = cut(PreviewLastName),
                         .work = cut(PreviewWork),
                         .mobile = cut(PreviewMobile),
                         .home = cut(PreviewHome),
                         .firstName = cut(PreviewFirstName),
                         .birthday = birthday};
    });
}

} // namespace kalmo::transfer
