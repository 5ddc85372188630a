#include "ui/forms/FormerStateWords.h"

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using operations::Cause;
using operations::RecordCause;
using operations::RecordedList;
using operations::SaveFault;

namespace {

QString germanFor(RecordCause cause)
{
    switch (cause) {
    case RecordCause::Write:
        return u"Liste geschrieben"_s;
    case RecordCause::Add:
        return u"Kontakt angelegt"_s;
    case RecordCause::Change:
        return u"Kontakt geändert"_s;
    case RecordCause::Delete:
        return u"Kontakt gelöscht"_s;
    case RecordCause::Import:
        return u"Import"_s;
    case RecordCause::Set:
        return u"Geändert"_s;
    case RecordCause::Undo:
        return u"Früherer Stand zurückgeholt"_s;
    case RecordCause::PutFiles:
        return u"Datei gesendet"_s;
    case RecordCause::RemoveFiles:
        return u"Datei gelöscht"_s;
    case RecordCause::MoveFile:
        return u"Datei verschoben"_s;
    case RecordCause::MakeFolder:
        return u"Ordner angelegt"_s;
    case RecordCause::SetRights:
        break;
    }
    return u"Rechte geändert"_s;
}

} // namespace

QString inWords(RecordedList list)
{
    switch (list) {
    case RecordedList::Phonebook:
        return u"Telefonbuch"_s;
    case RecordedList::Providers:
        return u"Provider"_s;
    case RecordedList::Files:
        return u"Dateien"_s;
    case RecordedList::Ringtones:
        return u"Klingeltöne"_s;
    case RecordedList::AreaCodes:
        break;
    }
    return u"Vorwahlen"_s;
}

QString causeInWords(const QString& cause)
{
    const auto known = operations::recordCauseOf(cause);
    return known ? germanFor(*known) : u"Geändert"_s;
}

QString differenceInWords(const operations::UndoDiff& diff)
{
    QStringList parts;
    const auto add = [&parts](const QStringList& names, const QString& text) {
        if (!names.isEmpty())
            parts.append(u"%1 %2"_s.arg(QString::number(names.size()), text));
    };
    add(diff.add, u"neu"_s);
    add(diff.change, u"geändert"_s);
    add(diff.remove, u"weniger"_s);
    add(diff.blocked, u"nicht möglich"_s);
    add(diff.stuck + diff.kept, u"zusätzlich"_s);
    if (diff.isReordered)
        parts.append(u"andere Reihenfolge"_s);
    return parts.isEmpty() ? u"keine"_s : parts.join(u", "_s);
}

QString reasonInWords(const operations::SaveFault& fault)
{
    switch (fault.kind) {
    case SaveFault::Kind::None:
    case SaveFault::Kind::System:
        break;
    case SaveFault::Kind::Locked:
        return u"Ein anderes Programm schreibt gerade in den Ordner %1"_s.arg(fault.detail);
    case SaveFault::Kind::NoNumberLeft:
        return u"Im Ordner %1 ist keine Nummer mehr frei"_s.arg(fault.detail);
    }
    return fault.detail;
}

QString reasonInWords(const operations::Outcome& outcome)
{
    switch (outcome.cause) {
    case Cause::Interrupted:
        return u"Der Vorgang wurde abgebrochen."_s;
    case Cause::PhoneRefused:
        return u"Das Telefon hat die Änderung abgelehnt."_s;
    case Cause::NoAnswer:
        return u"Das Telefon antwortet nicht."_s;
    case Cause::LineGone:
        return u"Die Verbindung zum Telefon ist unterbrochen."_s;
    case Cause::NotSaved:
        return u"Der jetzige Stand konnte nicht gesichert werden: %1"_s.arg(reasonInWords(outcome.saveFault));
    case Cause::Doubtful:
        return u"Die Verbindung war gestört. Bitte versuchen Sie es noch einmal."_s;
    case Cause::NoRoom:
        return u"Im Telefon ist nicht genügend Platz."_s;
    case Cause::Mismatch:
        return u"Das Telefon hat nicht alles so übernommen, wie es gesendet wurde."_s;
    case Cause::NotPossible:
        return u"Dieser Stand kann nicht zurückgeholt werden."_s;
    case Cause::None:
    case Cause::NotRead:
        break;
    }
    return u"Der jetzige Stand konnte nicht gelesen werden."_s;
}

QString doubtInWords(operations::Undo::Doubt doubt)
{
    using Doubt = operations::Undo::Doubt;
    switch (doubt) {
    case Doubt::OtherCount:
        return u"Das Telefon nennt eine andere Anzahl von Kontakten, als es sendet: Was es jetzt enthält, "
               u"ist nicht sicher bekannt."_s;
    case Doubt::NoCount:
        return u"Das Telefon hat nicht mitgeteilt, wie viele Kontakte es enthält."_s;
    case Doubt::Disturbed:
        break;
    }
    return u"Die Verbindung war gestört: Was das Telefon jetzt enthält, ist nicht sicher bekannt."_s;
}

QString lostInWords(const operations::Outcome& outcome)
{
    if (outcome.lost.isEmpty())
        return {};
    return u"\n\nIm Telefon fehlen jetzt:\n%1\nDer neueste Stand in der Liste enthält sie."_s.arg(
        outcome.lost.join(u'\n'));
}

QString openRecordInWords()
{
    return u"Der frühere Stand ist gesichert. Das Ergebnis der Änderung konnte nicht ergänzt werden: "
           u"Die Änderung steht als \"nicht bestätigt\" unter \"Frühere Stände\"."_s;
}

QString uncomparedInWords()
{
    return u"Das Telefon hat jede Änderung bestätigt. Danach konnte es nicht vollständig zur Kontrolle "
           u"gelesen werden. Bitte vergleichen Sie den Stand noch einmal."_s;
}

QString momentInWords(const QDateTime& moment)
{
    return moment.toString(u"dd.MM.yyyy  hh:mm"_s);
}

} // namespace kalmo::ui
