// The import's dialog: files and address books that it opens.

#include "app/Files.h"
#include "app/StoragePaths.h"
#include "app/Version.h"
#include "ui/forms/ChangeGuard.h"
#include "ui/import/AddressFrame.h"
#include "ui/import/frmImportPb.h"
#include "ui/import/TextFrame.h"
#include "ui/window/StatusArea.h"

#include <QFileInfo>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using transfer::Shape;

namespace {

// Uses of the remembered folders.
const QString dialogUse = u"frmImportPb"_s;
const QString bookUse = u"frmImportPb_Wab"_s;
constexpr double pauseBeforeBook = 0.1; // seconds

QString reasonOf(transfer::AddressBookFault fault, bool isFolder)
{
    using transfer::AddressBookFault;
    switch (fault) {
    case AddressBookFault::None:
        break;
    case AddressBookFault::NotThere:
        return u"Es gibt keine solche Datei."_s;
    case AddressBookFault::NotReadable:
        return u"Prüfen Sie, ob Sie Leserecht haben."_s;
    case AddressBookFault::TooLarge:
        return u"Das sind mehr als %1 MB."_s.arg(transfer::largestAddressBook / app::megabyte);
    case AddressBookFault::NotAnAddressBook:
        return isFolder ? u"In diesem Ordner sind keine vCard-Dateien."_s
                        : u"Die Datei enthält weder ein Adressbuch noch vCards."_s;
    case AddressBookFault::OldLayout:
        return u"Es stammt aus Windows 95; diese Form kann Kalmo nicht lesen."_s;
    case AddressBookFault::Damaged:
        return u"Es ist beschädigt, kein Kontakt darin ist lesbar."_s;
    case AddressBookFault::Stopped:
        break;
    case AddressBookFault::TooManyContacts:
        return u"Es enthält mehr als 100000 Kontakte."_s;
    }
    return {};
}

} // namespace

void frmImportPb::openFile(int choice)
{
    const bool isFree = choice == 0;
    app::Context& context = m_program.context;
    const QString folder = isFree ? app::GetLastInitDir(context, dialogUse) : app::backupFolder(context.sy);
    const QString path = context.dialogs.OpenFile(
        {.title = app::productName() + u" - Datei importieren"_s,
         .folder = folder,
         .types = {{u"Importdateien (*.csv; *.txt; *.tel)"_s, {u"*.csv"_s, u"*.txt"_s, u"*.tel"_s}},
                   {u"Alle Dateien (*.*)"_s, {u"*"_s}}}});
    if (path.isEmpty()) {
        m_textFrame->showOpened({}, {});
        return;
    }
    takeFile(path);
    if (isFree)
        app::SetLastInitDir(context, dialogUse, path);
}

void frmImportPb::takeFile(const QString& path)
{
    m_loading = true;
    m_sta->setText(u"Lese "_s + path + u"..."_s);
    m_mended = {}; // a hint mends one file, not the next
    const transfer::OpenedText opened = openedText(path);
    const bool isFine = opened.fault == transfer::TextFault::None;
    m_textFrame->showOpened(isFine ? path : QString(), opened);
    m_sta->setText({});
    m_loading = false;
    if (!isFine)
        tellFault(path, opened.fault);
    RebuildPreview();
    m_guard->keep();
}

/// The file as the dialog opens it: as ANSI, line by line.
transfer::OpenedText frmImportPb::openedText(const QString& path) const
{
    const transfer::TextFile file = transfer::readTextFile(path);
    if (file.fault != transfer::TextFault::None)
        return {.fault = file.fault};
    transfer::TextRequest request{.reading = transfer::Reading::Simple};
    for (size_t field = 0; field < transfer::fieldsOf(m_shape).size(); ++field)
        request.headings[field] = m_shape == Shape::Classic ? m_remembered.classicHeadings[field]
                                                            : m_remembered.vcardHeadings[field];
    transfer::OpenedText opened = transfer::openText(path, file.bytes, m_shape, request);
    if (opened.options.layout.filter.isEmpty() && !m_textFrame->filter().isEmpty()) {
        request.filter = m_textFrame->filter(); // the user's filter stays
        opened = transfer::openText(path, file.bytes, m_shape, request);
    }
    return opened;
}

void frmImportPb::tellFault(const QString& path, transfer::TextFault fault)
{
    using transfer::TextFault;
    QString text;
    switch (fault) {
    case TextFault::None:
        return;
    case TextFault::NotReadable:
        text = u"Die Datei %1 kann nicht gelesen werden. Prüfen Sie, ob Sie Leserecht haben."_s;
        break;
    case TextFault::NoFirstLine:
        text = u"Die Datei %1 enthält keine Daten in der ersten Zeile anhand derer sich die Spalten erkennen "
               u"lassen.\n"
               u"Wenn Sie die Datei von Hand bearbeitet haben, sorgen Sie dafür, daß sich in der ersten "
               u"Zeile Daten "
               u"(am besten die Spaltennamen) befinden."_s;
        break;
    case TextFault::Binary:
        text = u"Die Datei %1 ist keine Textdatei. Speichern Sie eine Tabelle zuerst als CSV."_s;
        break;
    case TextFault::UnmarkedUtf16:
        text = u"Die Datei %1 sieht aus wie UTF-16 ohne Kennung. Speichern Sie sie als UTF-8."_s;
        break;
    case TextFault::TooManyColumns:
        text = u"Die Datei %1 hat mehr als 16384 Spalten."_s;
        break;
    case TextFault::TooLarge:
        text = u"Die Datei %1 ist größer als %2 MB oder hat mehr als 250000 Zeilen."_s.arg(
            u"%1"_s, QString::number(transfer::largestText / app::megabyte));
        break;
    }
    m_program.context.dialogs.Show({.text = text.arg(path), .icon = toolkit::Icon::Exclamation});
}

/// The dialog for an address book begins with the question for its file.
void frmImportPb::activateBook()
{
    if (!isVisible()) // closed at once
        return;
    m_isPausing = true;
    m_program.context.clock.WaitSeconds(pauseBeforeBook);
    m_isPausing = false;
    if (m_closeWanted) { // the user had enough meanwhile
        QDialog::reject();
        return;
    }
    askForBook(false);
    const transfer::AddressBookFault fault = m_book.fault();
    if (!m_bookPath.isEmpty() && fault != transfer::AddressBookFault::None &&
        fault != transfer::AddressBookFault::Stopped)
        QDialog::reject();
}

void frmImportPb::askForBook(bool isFolder)
{
    app::Context& context = m_program.context;
    const QString title = app::productName() + u" - Adressbuch öffnen"_s;
    const QString folder = app::GetLastInitDir(context, bookUse);
    const QString path = isFolder
                             ? context.dialogs.PickFolder(title, folder)
                             : context.dialogs.OpenFile(
                                   {.title = title,
                                    .folder = folder,
                                    .types = {{u"Adressbücher (*.wab; *.vcf)"_s, {u"*.wab"_s, u"*.vcf"_s}},
                                              {u"Alle Dateien (*.*)"_s, {u"*"_s}}}});
    if (!path.isEmpty())
        takeBook(path);
}

void frmImportPb::takeGiven()
{
    if (m_from == ImportFrom::AddressBook)
        takeBook(m_given);
    else
        takeFile(m_given);
}

void frmImportPb::takeBook(const QString& path)
{
    m_bookPath = path;
    if (!readBook(path))
        return;
    m_mended = {}; // a hint mends one book, not the next
    app::SetLastInitDir(m_program.context, bookUse, path);
    m_addressFrame->showPath(path);
    RebuildPreview();
    m_guard->keep();
}

bool frmImportPb::readBook(const QString& path)
{
    beginWork();
    const bool isRead = m_book.OpenWab(path) && m_book.ReadAllContacts(m_program.context.clock.Now().date());
    m_book.CloseWap();
    endWork();
    if (m_closeWanted) {
        QDialog::reject();
        return false;
    }
    if (isRead || m_book.fault() == transfer::AddressBookFault::Stopped)
        return isRead;
    const bool isFolder = QFileInfo(path).isDir();
    QString reason = reasonOf(m_book.fault(), isFolder);
    const bool isOneFile = m_book.fault() == transfer::AddressBookFault::NotReadable ||
                           m_book.fault() == transfer::AddressBookFault::TooLarge;
    if (isFolder && isOneFile)
        reason = QFileInfo(m_book.faultyFile()).fileName() + u": "_s + reason;
    m_program.context.dialogs.Show(
        {.text =
             u"Das Windows Adressbuch (WAB / Outlook Express) konnte nicht eingelesen werden.\n"_s + reason,
         .icon = toolkit::Icon::Exclamation});
    return false;
}

void frmImportPb::mend(const transfer::ImportHint& hint)
{
    using transfer::HintKind;
    m_mended = transfer::mended(options(), hint);
    const bool changesText = hint.kind == HintKind::ReadAsCsv || hint.kind == HintKind::BrokenCsv ||
                             hint.kind == HintKind::UnusedFilter || hint.kind == HintKind::OtherEncoding;
    if (m_textFrame && changesText) {
        m_loading = true;
        const QString path = m_textFrame->path();
        const transfer::TextFile file = transfer::readTextFile(path);
        if (file.fault == transfer::TextFault::None)
            m_textFrame->showOpened(
                path, transfer::reopenText(path, file.bytes, m_shape, m_textFrame->opened(), m_mended.text));
        m_loading = false;
    }
    RebuildPreview();
}

} // namespace kalmo::ui
