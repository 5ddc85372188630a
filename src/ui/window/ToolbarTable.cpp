#include "ui/window/ToolbarTable.h"

#include "link/PhoneModels.h"
#include "ui/window/SectionGuard.h"

namespace kalmo::ui {

namespace {

/// What one section offers: the commands whose letters stand in `offered`, in the order read, write, edit,
/// delete, new, open, save, refresh, export, import.
struct EnablingRow
{
    int mode;
    int kind; ///< 0 for all families, 1 for classic ones, 2 for those with vCards
    QStringView offered;
};

constexpr EnablingRow enablingTable[] = {
    {ModePhonebook, 1, u"TTTTTTTFTT"}, {ModePhonebook, 2, u"FFTTTTTTTT"}, {ModeProviders, 0, u"TTTTTTTFTT"},
    {ModeSounds, 0, u"FFFFFFFTFF"},    {ModeDiverse, 0, u"FFFFFFFTFF"},   {ModeSponsor, 0, u"FFFFFFFFFF"},
};

constexpr Command enablingOrder[] = {Command::Read,   Command::Write, Command::Edit, Command::Delete,
                                     Command::New,    Command::Open,  Command::Save, Command::Refresh,
                                     Command::Export, Command::Import};

} // namespace

const QList<CommandRow>& commandTable()
{
    static const QList<CommandRow> table = {
        {Command::Read, u"read", u"Lesen", u"Daten vom Telefon einlesen", u"&Lesen", u"Ctrl+L"},
        {Command::Write, u"write", u"Schreiben", u"Daten im Telefon speichern", u"S&chreiben", u"Ctrl+T"},
        {Command::New, u"new", u"Neu", u"Neuer Eintrag", u"&Neu", u"Ctrl+N"},
        {Command::Edit, u"edit", u"Bearb.", u"Eintrag bearbeiten", u"&Bearbeiten", u"F2"},
        {Command::Delete, u"delete", u"Löschen", u"Eintrag löschen", u"L&öschen", u""},
        {Command::Refresh, u"refresh", u"Neu laden", u"Daten erneut einlesen", u"Ne&u laden", u"F5"},
        {Command::Open, u"open", u"Öffnen", u"Sicherungsdatei öffnen", u"Ö&ffnen", u"Ctrl+O"},
        {Command::Save, u"save", u"Sichern", u"Aktuell angezeigte Liste als Sicherung speichern", u"&Sichern",
         u"Ctrl+S"},
        {Command::Export, u"export", u"Export", u"Liste exportieren", u"&Export", u"Ctrl+E"},
        {Command::Import, u"import", u"Import", u"Daten Importieren", u"&Import", u"Ctrl+I"},
        {Command::Help, u"help", u"Hilfe", u"Programmhilfe anzeigen", u"&Hilfe", u"F1"},
    };
    return table;
}

bool isOffered(Command command, int mode, int phoneType)
{
    const int kind = link::hasVcards(phoneType) ? 2 : 1;
    for (const EnablingRow& row : enablingTable) {
        if (row.mode != mode || (row.kind != 0 && row.kind != kind))
            continue;
        for (qsizetype place = 0; place < row.offered.size(); ++place) {
            if (enablingOrder[place] == command)
                return row.offered[place] == u'T';
        }
    }
    return command == Command::Help;
}

const PopupMenu& mnuOpen()
{
    static const PopupMenu menu{
        u"mnuOpen",
        u"",
        {{u"Freie Dateiauswahl", 0}, {u"Automatisch angelegtes Backup", 1}, {u"", -1}, {u"&abbrechen", -1}}};
    return menu;
}

const PopupMenu& mnuImport_TB()
{
    static const PopupMenu menu{u"mnuImport_TB",
                                u"In das &Telefonbuch",
                                {{u"Aus *.&CSV und *.TEL Datei", 0},
                                 {u"Aus WAB &Outlook Express", 1},
                                 {u"", -1},
                                 {u"&abbrechen", -1}}};
    return menu;
}

const PopupMenu& mnuImport_NE()
{
    static const PopupMenu menu{u"mnuImport_NE",
                                u"In die &Providerliste",
                                {{u"Aus *.&CSV Datei", 0}, {u"", -1}, {u"&abbrechen", -1}}};
    return menu;
}

} // namespace kalmo::ui
