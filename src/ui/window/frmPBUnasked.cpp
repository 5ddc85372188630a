// The end of the main window without the user: lists that wait to be written to the phone become files, and
// nothing is asked.

#include "app/Files.h"
#include "app/SettingsKeys.h"
#include "obex/clsMmc.h"
#include "phonedata/BackupFiles.h"
#include "ui/adaptors/ProgressWidgets.h"
#include "ui/window/frmPB.h"

#include <QApplication>
#include <QFile>
#include <QMessageBox>
#include <QTimer>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::milliseconds betweenLooks(50);
constexpr QChar betweenPaths = u'|';

/// Closes the dialog in front as Escape does, but without its question. A dialog at work with the phone ends
/// its work first.
void dismissDialog()
{
    QWidget* modal = QApplication::activeModalWidget();
    if (qobject_cast<QMessageBox*>(modal) || !WindowBusy::isAnyBusy()) {
        if (auto* dialog = qobject_cast<QDialog*>(modal))
            dialog->done(QDialog::Rejected);
    }
}

} // namespace

frmPB::SavedLists frmPB::saveLists() const
{
    SavedLists saved;
    for (const ClassicList* list : {m_phonebook, m_providers}) {
        const auto entries =
            list && list->isDirty() ? list->entries() : std::vector<phonedata::ClassicEntry>();
        if (entries.empty())
            continue;
        const phonedata::StoreTraits& traits = phonedata::traitsOf(list->store());
        const QString path = phonedata::backupPath(m_program.context, u"Nicht geschriebene Liste vom "_s,
                                                   traits.fileEnding.toString());
        QString reason;
        if (app::writeWholeFile(path, traits.fileBytes(entries), &reason))
            saved.paths.append(path);
        else
            saved.failures.append(phonedata::messageOfFailedFile(path, reason));
    }
    return saved;
}

bool frmPB::saveUnwritten()
{
    const SavedLists saved = saveLists();
    for (const toolkit::Message& failure : saved.failures)
        m_program.context.dialogs.Show(failure);
    if (!saved.paths.isEmpty())
        m_program.context.dialogs.Show(
            {.text = u"Änderungen, die noch nicht ins Telefon geschrieben sind, sind gesichert in:\n"_s +
                     saved.paths.join(u'\n'),
             .icon = toolkit::Icon::Information});
    return saved.failures.isEmpty();
}

void frmPB::keepUnwritten()
{
    const SavedLists saved = saveLists();
    for (const toolkit::Message& failure : saved.failures)
        m_program.context.log.WriteDebugLog(u"Terminate"_s, failure.english);
    if (!saved.failures.isEmpty() && m_kept) // the older files stay
        return;
    if (!saved.paths.isEmpty()) {
        for (const QString& older : m_kept.value_or(QStringList()))
            QFile::remove(older);
    }
    m_kept = saved.paths;
    app::put(m_program.context.settings, app::keys::KeptLists,
             saved.paths.isEmpty() ? app::noValue() : saved.paths.join(betweenPaths));
}

/// The user ends the program now, and was asked about what is not written.
void frmPB::forgetKept()
{
    if (m_kept)
        app::put(m_program.context.settings, app::keys::KeptLists, app::noValue());
}

void frmPB::tellKept()
{
    app::Context& context = m_program.context;
    const QString kept = app::get(context.settings, app::keys::KeptLists);
    if (kept == app::noValue() || m_kept)
        return;
    app::put(context.settings, app::keys::KeptLists, app::noValue());
    context.dialogs.Show({.text = u"Kalmo wurde beendet, bevor Änderungen ins Telefon geschrieben waren. Sie "
                                  u"sind gesichert in:\n"_s +
                                  kept.split(betweenPaths).join(u'\n'),
                          .icon = toolkit::Icon::Information});
}

void frmPB::endUnasked()
{
    if (m_isEnding)
        return;
    m_isEnding = true;
    auto* timer = new QTimer(this); // ahead of all that may show a box
    timer->callOnTimeout([this] {
        dismissDialog();
        // Not from within: the timer would be silent while a box of the end is open.
        if (!QApplication::activeModalWidget())
            QMetaObject::invokeMethod(this, &frmPB::closeIfWanted, Qt::QueuedConnection);
    });
    timer->start(betweenLooks);
    if (m_isClosing) // the user was asked about the lists
        return;
    keepUnwritten(); // now already: nobody knows how long the operation takes
    m_mmc->askToStop();
    stopForClosing();
}

} // namespace kalmo::ui
