// The main window's import, and the files that come from outside: from the command line or a second start.

#include "transfer/import/SourceKind.h"
#include "ui/import/frmImportPb.h"
#include "ui/window/frmPB.h"
#include "ui/window/NaviTree.h"
#include "ui/window/StatusArea.h"

#include <QApplication>
#include <QDialog>
#include <QFileInfo>
#include <QScopedValueRollback>
#include <QTimer>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using phonedata::Store;

void frmPB::openGiven(const QString& path)
{
    m_given.append(path);
    openNextGiven();
}

/// Opens one file after the other. A file waits for the end of an operation and of a dialog, and until the
/// user comes back from the settings or a search.
void frmPB::openNextGiven()
{
    if (m_opensGiven)
        return;
    const QScopedValueRollback opens(m_opensGiven, true);
    const auto once = static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection);
    while (!m_given.isEmpty() && isVisible() && !m_isEnding && !m_isClosing) {
        if (m_sta->isBusy()) { // at the start the window may still talk to the phone
            connect(m_sta, &StatusArea::becameIdle, this, &frmPB::openNextGiven, once);
            return;
        }
        if (const auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
            connect(dialog, &QDialog::finished, this, &frmPB::openNextGiven, once);
            return;
        }
        openFile(m_given.takeFirst());
    }
}

/// Opens a list of a classic handset in its section, and another file in the import.
void frmPB::openFile(const QString& path)
{
    const QString ending = QFileInfo(path).suffix().toLower();
    const Store store = ending == u"prv"_s ? Store::Providers : Store::Phonebook;
    if (m_contacts && store == Store::Providers) {
        m_program.context.dialogs.Show(
            {.text =
                 u"Eine Providerliste gibt es bei diesem Telefon nicht. Die Datei wird nicht geöffnet:\n"_s +
                 path,
             .icon = toolkit::Icon::Information});
        return;
    }
    if (!enterList(store)) // the user wants to stay
        return;
    if (!m_contacts && (ending == u"tel"_s || ending == u"prv"_s)) {
        (store == Store::Providers ? m_providers : m_phonebook)->openFile(path);
        return;
    }
    const bool isAddressBook = transfer::sourceKindOf(path) == transfer::SourceKind::AddressBook;
    presentImport(isAddressBook ? ImportFrom::AddressBook : ImportFrom::File, store, path);
}

/// Enters the section of a list. Returns false if the user refuses to leave the one in front.
bool frmPB::enterList(Store store)
{
    const bool areProviders = store == Store::Providers;
    goTo((areProviders ? nodes::Providers : nodes::Phonebook).toString());
    return m_toolbarMode == (areProviders ? ModeProviders : ModePhonebook);
}

bool frmPB::isListRead(Store store) const
{
    if (m_contacts)
        return m_contacts->isRead();
    return (store == Store::Providers ? m_providers : m_phonebook)->isRead();
}

/// Asks if an import goes on without the phone's list. Entries are always compared with the phonebook, so for
/// the provider list nothing is lost by that.
bool frmPB::mayImportUnread(Store store)
{
    const QString state = store == Store::Providers
                              ? u"Die Providerliste ist nicht eingelesen."_s
                              : u"Das Telefonbuch ist nicht eingelesen.\n"
                                u"Kalmo erkennt daher keine Einträge, die schon vorhanden sind."_s;
    const QString result =
        m_contacts ? QString() : u" Beim Schreiben ersetzt der Import die Liste im Telefon."_s;
    return m_program.context.dialogs.Show({.text = state + result + u"\nMöchten Sie trotzdem importieren?"_s,
                                           .buttons = toolkit::Buttons::YesNo,
                                           .icon = toolkit::Icon::Exclamation,
                                           .defaultButton = toolkit::Answer::No}) == toolkit::Answer::Yes;
}

/// A list that was never read is read ahead, so that it is not replaced by what is imported.
void frmPB::readAheadOfImport(Store store)
{
    if (isListRead(store))
        return;
    m_program.context.dialogs.Show(
        {.text =
             store == Store::Providers
                 ? u"Die Providerliste wurde bisher noch nicht eingelesen.\n"
                   u"Kalmo holt das jetzt nach, damit die bisherige Liste beim Import erhalten bleibt."_s
                 : u"Das Telefonbuch wurde bisher noch nicht eingelesen.\n"
                   u"Kalmo holt das jetzt nach, damit das bisherige Telefonbuch beim Import erhalten bleibt."_s});
    enterList(store);
}

/// Opens the import dialog for the list in front.
void frmPB::openImport(ImportFrom source)
{
    const Store store = m_toolbarMode == ModeProviders ? Store::Providers : Store::Phonebook;
    readAheadOfImport(store);
    // From a timer, so that the menu has closed before the dialog opens.
    QTimer::singleShot(0, this, [this, source, store] { presentImport(source, store, {}); });
}

/// `given` is the file that is read at once, empty if the user chooses it in the dialog.
void frmPB::presentImport(ImportFrom source, Store store, const QString& given)
{
    const bool isKnown = m_contacts ? m_contacts->isKnown() : isListRead(store);
    if (m_sta->isBusy() || m_isClosing || !isVisible() || (!isKnown && !mayImportUnread(store)))
        return;
    // Contacts go into the phone at once, through a data session of their own.
    const bool interruptsFiles = m_contacts && isFilesInFront();
    if (interruptsFiles && !regainLine())
        return;
    ImportLists lists;
    if (m_contacts)
        lists.store = m_contacts->store();
    else
        lists = {.lvwTB = &m_phonebook->rows(), .lvwNE = &m_providers->rows()};
    lists.isPhonebookRead = m_contacts || m_phonebook->isRead();
    frmImportPb form(m_program, lists, source, this);
    form.setGiven(given);
    form.Form_Present(store);
    connect(&form, &frmImportPb::entriesAdded, this, [this](Store changed, int count) {
        (changed == Store::Providers ? m_providers : m_phonebook)->noteImport(count);
    });
    if (m_contacts)
        connect(&form, &frmImportPb::contactsImported, m_contacts, &VcardList::noteImport);
    form.exec();
    if (interruptsFiles && !m_closeWanted)
        returnToFiles();
}

} // namespace kalmo::ui
