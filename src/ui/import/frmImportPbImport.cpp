// The import's dialog: checked rows go into the lists, or into the phone.

#include "app/Version.h"
#include "transfer/import/ImportSteps.h"
#include "ui/adaptors/QtDialogs.h"
#include "ui/forms/ChangeGuard.h"
#include "ui/forms/ContactMessages.h"
#include "ui/import/AddressFrame.h"
#include "ui/import/frmImportPb.h"
#include "ui/import/NumberFrame.h"
#include "ui/import/PreviewModel.h"
#include "ui/import/TextFrame.h"
#include "ui/window/StatusArea.h"

#include <QCheckBox>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using phonedata::Store;
using transfer::Shape;

void frmImportPb::cmdImport_Click()
{
    if (m_sta->isBusy() || m_building.isValid() || m_numberFrame->rejectsFields() ||
        (m_addressFrame && m_addressFrame->rejectsFields()) || !agreesToHidden())
        return;
    if (m_shape == Shape::Classic)
        ImportToClassicList();
    else
        ImportToVcardStore();
}

/// Rows that a search hides are imported too, but not unnoticed.
bool frmImportPb::agreesToHidden()
{
    const int hidden = hiddenChecked();
    return hidden == 0 ||
           m_program.context.dialogs.Show(
               {.text = u"Zum Import sind auch Einträge ausgewählt, die die Suche gerade ausblendet: %1.\n\n"
                        u"Auch diese importieren?"_s.arg(hidden),
                .buttons = toolkit::Buttons::YesNo,
                .icon = toolkit::Icon::Question,
                .defaultButton = toolkit::Answer::No}) == toolkit::Answer::Yes;
}

void frmImportPb::ImportToClassicList()
{
    using transfer::ClassicStep;
    toolkit::Dialogs& dialogs = m_program.context.dialogs;
    ClassicStep step = ClassicStep::Ready;
    m_model->change([&step](transfer::Preview& preview) { step = transfer::nextClassicStep(preview); });
    if (step != ClassicStep::Ready) {
        const toolkit::Answer answer = dialogs.Show(transfer::messageFor(step));
        if (step != ClassicStep::NameTooLong || answer != toolkit::Answer::Yes)
            return;
        m_model->change(transfer::shortenNames);
        dialogs.Show(transfer::messageOfShortening());
        return;
    }
    const bool isForProviders = m_optDest1->isChecked();
    std::vector<toolkit::ListRow> rows;
    int count = 0;
    if (isForProviders) {
        for (const phonedata::ProviderEntry& entry : transfer::checkedProviders(m_model->preview()))
            rows.push_back(phonedata::toRow(entry));
        count = static_cast<int>(rows.size());
        m_lists.lvwNE->addAll(std::move(rows));
        m_program.memory.NeDirty = true;
    } else {
        for (const phonedata::ClassicEntry& entry : transfer::checkedEntries(m_model->preview()))
            rows.push_back(phonedata::toRow(entry));
        count = static_cast<int>(rows.size());
        m_lists.lvwTB->addAll(std::move(rows));
        m_program.memory.TbDirty = true;
    }
    Q_EMIT entriesAdded(isForProviders ? Store::Providers : Store::Phonebook, count);
    dialogs.Show(transfer::messageOfTakenEntries());
    noteTaken(count);
    saveOptions();
}

void frmImportPb::ImportToVcardStore()
{
    using transfer::VcardStep;
    toolkit::Dialogs& dialogs = m_program.context.dialogs;
    int unchecked = 0;
    m_model->change(
        [&unchecked](transfer::Preview& preview) { unchecked = transfer::uncheckNumberless(preview); });
    if (unchecked > 0)
        dialogs.Show(transfer::messageOfUnchecked(unchecked));
    const auto freePlaces = m_lists.store->freePlaces();
    const VcardStep step = transfer::nextVcardStep(m_model->preview(), freePlaces);
    if (step != VcardStep::Ready) {
        dialogs.Show(transfer::messageFor(step, m_model->preview(), freePlaces.value_or(0)));
        return;
    }
    std::vector<phonedata::tVcfEntry> contacts =
        transfer::checkedContacts(m_model->preview(), m_program.context.log);
    if (!confirmLosses(*m_lists.store, contacts))
        return;
    const ContactImport imported = sendContacts(std::move(contacts));
    Q_EMIT contactsImported(imported);
    if (imported.result == phonedata::CommandResult::Cancelled) { // the user wanted it: no box
        noteTaken(imported.confirmed);
        m_sta->setText(stoppedImport(imported));
        return;
    }
    if (imported.result == phonedata::CommandResult::Refused) { // and a box has said why
        m_sta->setText(nothingImported());
        return;
    }
    const bool isDone = imported.result == phonedata::CommandResult::Done;
    if (!isDone)
        dialogs.Show({.text = u"Es ist ein Fehler beim Importieren aufgetreten."_s,
                      .title = app::productName() + u" - Datensätze Importieren"_s,
                      .icon = toolkit::Icon::Exclamation});
    // The box of success follows that of a failure on purpose.
    dialogs.Show({.text = u"Importieren erfolgreich abgeschlossen."_s, .icon = toolkit::Icon::Information});
    m_sta->setText(u"Importieren erfolgreich abgeschlossen."_s);
    if (isDone)
        noteTaken(imported.planned);
    saveOptions();
    if (!isDone)
        QDialog::reject();
}

ContactImport frmImportPb::sendContacts(std::vector<phonedata::tVcfEntry> contacts)
{
    m_sta->offerCancel(true);
    const toolkit::BusyScope busy(m_sta);
    m_sta->setText(u"Datensätze werden importiert..."_s);
    m_sta->progress().start(0, 0);
    const ContactImport imported = importContacts(*m_lists.store, std::move(contacts), m_sta->progress());
    m_sta->progress().hide();
    return imported;
}

/// The rows that were imported can't be imported a second time by the next Enter.
void frmImportPb::noteTaken(int count)
{
    const transfer::ImportOptions chosen = options();
    m_model->noteTaken(count, chosen.markExisting ? existing() : transfer::ExistingEntries(),
                       chosen.existingByNumber);
    m_cmdAbbruch->setDefault(true);
    m_cmdAbbruch->setFocus();
}

/// The transfer goes on beside the question.
void frmImportPb::askToStop()
{
    if (m_stopBox || !m_sta->offersCancel())
        return;
    m_stopBox = makeSideQuestion(u"Kalmo überträgt gerade Kontakte ins Telefon.\n\n"
                                 u"Soll der Import nach dem laufenden Kontakt abgebrochen werden?"_s,
                                 this);
    m_stopBox->setObjectName(u"stopQuestion"_s);
    connect(m_sta, &StatusArea::becameIdle, m_stopBox, &QMessageBox::reject);
    connect(m_stopBox, &QMessageBox::finished, this, [this](int answer) {
        if (answer == QMessageBox::Yes)
            m_sta->cancel();
    });
    m_stopBox->open();
}

void frmImportPb::saveOptions()
{
    m_remembered.options = options();
    m_remembered.refreshAtOnce = m_chkAutoRefresh->isChecked();
    if (m_textFrame && m_shape == Shape::Classic) {
        const QStringList headings = m_textFrame->chosenHeadings();
        for (size_t field = 0; field < m_remembered.classicHeadings.size(); ++field)
            m_remembered.classicHeadings[field] = headings.value(static_cast<qsizetype>(field));
    }
    transfer::SaveImportOptions(m_program.context.settings, m_remembered);
    m_guard->keep();
}

} // namespace kalmo::ui
