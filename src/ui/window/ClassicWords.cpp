#include "ui/window/ClassicWords.h"

#include "ui/forms/SomeOf.h"

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using operations::Cause;
using operations::EntryObjection;
using phonedata::Store;
using What = EntryObjection::What;
using Field = EntryObjection::Field;

namespace {

constexpr int mostLines = 10;

constexpr std::array<ClassicWords, 2> words = {{
    {u"Kalmo - Telefonbuch öffnen", u"Kalmo - Telefonbuch Backup erstellen", u" (*.tel Telefonbuch)",
     u"*.tel",
     u"Das Telefonbuch wurde verändert, d.h. die aktuell angezeigte Liste entspricht nicht dem Inhalt des "
     u"Telefons.",
     u"Änderungen am Telefonbuch"},
    {u"Kalmo - Provider Liste öffnen", u"Kalmo - Provider Backup erstellen", u" (*.prv Provider)", u"*.prv",
     u"Die Liste der Provider wurde verändert, d.h. die aktuell angezeigte Liste entspricht nicht dem Inhalt "
     u"des Telefons.",
     u"Änderungen an der Providerliste"},
}};

struct FieldNames
{
    QStringView name;   ///< "Der Name"
    QStringView inside; ///< "im Namen"
    QStringView forIt;  ///< "für die Erinnerung"
};

const FieldNames& namesOf(Field field)
{
    static constexpr std::array<FieldNames, 5> names = {{
        {u"Der Name", u"im Namen", u"für den Namen"},
        {u"Die Nummer", u"in der Nummer", u"für die Nummer"},
        {u"Das Datum", u"im Datum", u"für das Datum"},
        {u"Die Erinnerung", u"in der Erinnerung", u"für die Erinnerung"},
        {u"Der VIP-Ruf", u"im VIP-Ruf", u"für den VIP-Ruf"},
    }};
    return names[static_cast<size_t>(field)];
}

QString objectionText(const EntryObjection& objection)
{
    const FieldNames& names = namesOf(objection.field);
    switch (objection.what) {
    case What::NoText:
        return names.name.toString() + u" fehlt"_s;
    case What::TooLong:
        return u"%1 hat %2 Zeichen, das Telefon fasst %3"_s.arg(names.name)
            .arg(objection.length)
            .arg(objection.longest);
    case What::Character:
        return u"Das Zeichen \"%1\" %2 kennt das Telefon nicht"_s.arg(objection.text, names.inside);
    case What::NotSendable:
        return u"Ein Steuerzeichen %1 kann nicht gesendet werden und entfällt"_s.arg(names.inside);
    case What::ImpossibleDate:
        return u"\"%1\" ist kein Tag mit Uhrzeit"_s.arg(objection.text);
    case What::NoMelody:
        return u"Das Telefon hat %1 keine Melodie \"%2\""_s.arg(names.forIt, objection.text);
    case What::ReminderWithoutDate:
        return u"Eine Erinnerung braucht ein Datum"_s;
    case What::NoVip:
        return u"Dieses Telefon kennt keine VIP-Einträge"_s;
    case What::HeldOtherwise:
        break;
    }
    if (objection.held.isEmpty())
        return u"\"%1\" entfällt im Telefon"_s.arg(objection.text);
    return u"Im Telefon steht dann \"%1\" statt \"%2\""_s.arg(objection.held, objection.text);
}

QString objectionLines(const operations::ListPlan& plan)
{
    QStringList lines;
    for (const EntryObjection& objection : plan.objections) {
        if (lines.size() == mostLines)
            break;
        lines.append(u"Eintrag %1 (%2): %3."_s.arg(QString::number(objection.index + 1),
                                                   plan.given[objection.index].name,
                                                   objectionText(objection)));
    }
    const auto others = std::ssize(plan.objections) - lines.size();
    if (others > 0)
        lines.append(u"... und %1 weitere Hinweise."_s.arg(others));
    return lines.join(u'\n');
}

QString filesText(const SavedFiles& files)
{
    QString text;
    if (!files.list.isEmpty())
        text += u"\n\nDie Liste, die geschrieben werden sollte, ist gesichert in:\n"_s + files.list;
    if (!files.phone.isEmpty())
        text += u"\n\nDer bisherige Inhalt des Telefons ist gesichert in:\n"_s + files.phone;
    return text;
}

QString doublesText(const operations::ListOutcome& result)
{
    return result.mayHoldDoubles
               ? u" Die Übertragung war gestört: Ein Eintrag kann doppelt im Telefon stehen."_s
               : QString();
}

QString contentText(const operations::ListOutcome& result)
{
    const operations::Outcome& outcome = result.outcome;
    if (outcome.state == operations::State::Unchanged)
        return u"Das Telefon hat das Löschen der bisherigen Liste abgelehnt. Es enthält, was es vorher "
               u"enthielt."_s;
    if (!result.isErased)
        return u"Was das Telefon jetzt enthält, ist nicht bekannt."_s;
    if (outcome.unknown == 0 && !result.mayHoldDoubles)
        return u"Im Telefon stehen jetzt %1 von %2 Einträgen."_s.arg(outcome.confirmed).arg(outcome.planned);
    QString text =
        u"Das Telefon hat %1 von %2 Einträgen bestätigt."_s.arg(outcome.confirmed).arg(outcome.planned);
    if (outcome.unknown > 0)
        text += u" Ob auch der nächste angekommen ist, ist nicht bekannt."_s;
    return text + doublesText(result);
}

/// "neu: 2 (Anna, Bert)"
QString countedNames(const QString& caption, const std::vector<phonedata::ClassicEntry>& entries)
{
    QStringList names;
    for (const phonedata::ClassicEntry& entry : entries)
        names.append(entry.name);
    const QString inBrackets = names.isEmpty() ? QString() : u" (%1)"_s.arg(someOf(names, 5, u", "_s));
    return u"%1: %2"_s.arg(caption).arg(entries.size()) + inBrackets;
}

} // namespace

const ClassicWords& wordsOf(Store store)
{
    return phonedata::rowOf(words, store);
}

QString unsavedChangesText(Store store)
{
    return u"Es wurden %1 vorgenommen, diese wurden jedoch noch nicht durch die Funktion \"Schreiben\" "
           u"übernommen.\n\nTrotzdem fortfahren?"_s.arg(wordsOf(store).changesTo);
}

QString objectionsText(const operations::ListPlan& plan)
{
    QStringList parts;
    if (plan.movedMelodies > 0)
        parts.append(
            u"Dieses Telefon zählt seine Melodien beim Schreiben anders als beim Lesen. Erinnerungen "
            u"mit einer Melodie (hier %1) erklingen nach dem Schreiben mit der Melodie davor. Der "
            u"bisherige Stand lässt sich über \"Frühere Stände...\" genau wiederherstellen."_s.arg(
                plan.movedMelodies));
    if (plan.unnamedMelodies > 0)
        parts.append(
            u"Von %1 Einträgen ist die eigene Melodie nicht mit Namen bekannt. Sie würde beim "
            u"Schreiben durch \"Melodie 1\" ersetzt. Besser ist es, zuerst die Klingeltöne und danach "
            u"die Liste neu einzulesen."_s.arg(plan.unnamedMelodies));
    if (plan.namelessEntries > 0)
        parts.append(
            u"Einträge ohne Namen im Telefon: %1. Sie heißen nach dem Schreiben \"Ohne Name\"."_s.arg(
                plan.namelessEntries));
    if (!plan.objections.empty())
        parts.append(u"Das Telefon kann nicht alles so aufnehmen, wie es in der Liste steht. Nimmt es einen "
                     u"Eintrag nicht an, fehlen ihm auch alle folgenden.\n\n"_s +
                     objectionLines(plan));
    return parts.join(u"\n\n"_s);
}

QString differenceText(const operations::ListPlan& plan)
{
    if (plan.diff.isEmpty())
        return {};
    std::vector<phonedata::ClassicEntry> changed;
    for (const phonedata::ListDiff::Change& change : plan.diff.change)
        changed.push_back(change.to);
    return u"\n\nBeim Schreiben:\n"_s + countedNames(u"neu"_s, plan.diff.add) + u'\n' +
           countedNames(u"geändert"_s, changed) + u'\n' + countedNames(u"entfernt"_s, plan.diff.remove);
}

QString notSentText(const operations::ListOutcome& result)
{
    QString reason = u"Die Liste im Telefon konnte nicht noch einmal gelesen werden."_s;
    if (result.hasChangedMeanwhile)
        reason = u"Die Liste im Telefon hat sich inzwischen geändert. Bitte lesen Sie sie noch einmal ein."_s;
    else if (result.outcome.cause == Cause::LineGone)
        reason = u"Die Verbindung zum Telefon ist unterbrochen."_s;
    return reason + u"\n\nIm Telefon wurde nichts geändert."_s;
}

QString failedWriteText(const operations::ListOutcome& result, const SavedFiles& files)
{
    const bool isSaved = !files.list.isEmpty() || !files.phone.isEmpty();
    return u"Fehler beim Zugriff auf das Telefon\n\n"_s + contentText(result) + filesText(files) +
           u"\n\nDie Liste im Fenster ist unverändert. Stellen Sie die Verbindung wieder her und führen Sie "
           u"\"Schreiben\" noch einmal aus"_s +
           (isSaved ? u", oder öffnen Sie vorher eine dieser Sicherungen."_s : u"."_s);
}

QString uncheckedWriteText(const operations::ListOutcome& result, const SavedFiles& files)
{
    if (result.outcome.cause != Cause::Mismatch)
        return u"Das Telefon hat alle %1 Einträge bestätigt, konnte danach aber nicht zur Kontrolle gelesen "
               u"werden.%2 Bitte lesen Sie die Liste noch einmal ein."_s.arg(result.outcome.planned)
                   .arg(doublesText(result));
    const phonedata::ListDiff& diff = result.mismatch;
    return u"Das Telefon enthält nach dem Schreiben nicht, was geschrieben wurde. Fehlende Einträge: %1, "
           u"geänderte: %2, überzählige: %3."_s.arg(diff.add.size())
               .arg(diff.change.size())
               .arg(diff.remove.size()) +
           filesText(files);
}

} // namespace kalmo::ui
