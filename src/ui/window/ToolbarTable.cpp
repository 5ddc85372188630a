#include "ui/window/ToolbarTable.h"

#include "link/PhoneModels.h"
#include "ui/window/SectionGuard.h"

#include <QMenu>

#include <algorithm>
#include <initializer_list>

namespace kalmo::ui {

namespace {

using Commands = std::initializer_list<Command>;

/// A list that is edited here and written as a whole.
constexpr Commands wholeList = {Command::Read, Command::Write,  Command::New,
                                Command::Edit, Command::Delete, Command::Open,
                                Command::Save, Command::Export, Command::Import};
/// A list whose every change goes to the phone at once.
constexpr Commands singleEntries = {Command::New,  Command::Edit, Command::Delete, Command::Refresh,
                                    Command::Open, Command::Save, Command::Export, Command::Import};
constexpr Commands queries = {Command::Refresh};

Commands offeredIn(int mode, int phoneType)
{
    switch (mode) {
    case ModePhonebook:
        return link::hasVcards(phoneType) ? singleEntries : wholeList;
    case ModeProviders:
        return wholeList;
    case ModeSounds:
    case ModeDiverse:
        return queries;
    default:
        return {};
    }
}

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
    const Commands offered = offeredIn(mode, phoneType);
    return command == Command::Help || std::find(offered.begin(), offered.end(), command) != offered.end();
}

void fillMenu(QMenu& menu, const PopupMenu& table, const std::function<void(int choice)>& choose)
{
    for (const MenuRow& row : table.rows) {
        if (row.text.isEmpty())
            menu.addSeparator();
        else if (QAction* action = menu.addAction(row.text.toString()); row.choice >= 0)
            QObject::connect(action, &QAction::triggered, &menu,
                             [choose, choice = row.choice] { choose(choice); });
    }
}

const PopupMenu& mnuOpen()
{
    static const PopupMenu menu{
        u"mnuOpen",
        u"",
        u"Öffnen",
        {{u"Freie Dateiauswahl", 0}, {u"Automatisch angelegtes Backup", 1}, {u"", -1}, {u"&abbrechen", -1}}};
    return menu;
}

const PopupMenu& mnuImport_TB()
{
    static const PopupMenu menu{u"mnuImport_TB",
                                u"In das &Telefonbuch",
                                u"In das Telefonbuch importieren",
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
                                u"In die Providerliste importieren",
                                {{u"Aus *.&CSV Datei", 0}, {u"", -1}, {u"&abbrechen", -1}}};
    return menu;
}

} // namespace kalmo::ui
