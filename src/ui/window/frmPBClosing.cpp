// The end of the main window: questions about unwritten lists, the data channel, the work folder.

#include "app/Files.h"
#include "app/StoragePaths.h"
#include "app/Version.h"
#include "obex/clsMmcOperation.h"
#include "ui/adaptors/QtDialogs.h"
#include "ui/panels/ListPanel.h"
#include "ui/window/ClassicWords.h"
#include "ui/window/frmPB.h"
#include "ui/window/PanelStack.h"
#include "ui/window/Reminders.h"
#include "ui/window/StatusArea.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using phonedata::Store;
using toolkit::Answer;

namespace {

constexpr std::chrono::milliseconds lookAgain(200);

bool agrees(app::Context& context, const QString& text)
{
    return context.dialogs.Show({.text = text,
                                 .buttons = toolkit::Buttons::YesNo,
                                 .icon = toolkit::Icon::Question,
                                 .defaultButton = Answer::No}) == Answer::Yes;
}

} // namespace

void frmPB::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && m_sta->isBusy())
        m_sta->cancel();
    else
        QMainWindow::keyPressEvent(event);
}

void frmPB::closeEvent(QCloseEvent* event)
{
    if (m_isClosed) {
        event->accept();
        return;
    }
    event->ignore();
    if (m_isClosing)
        return;
    if (m_sta->isBusy()) {
        if (!m_closeWanted)
            askToInterrupt();
        return;
    }
    m_closeWanted = false;
    if (!m_isEnding && !mayLoseChanges(closingText))
        return;
    m_isClosing = true;
    if (m_isEnding)
        keepUnwritten(); // as the operation has left the lists
    else
        forgetKept();
    closeChannel();
    cleanUp();
    m_isClosed = true;
    hide();
    Q_EMIT closedByUser();
}

bool frmPB::isWriting() const
{
    const auto writes = [](const ClassicList* list) { return list && list->isWriting(); };
    return writes(m_phonebook) || writes(m_providers);
}

bool frmPB::isDirtyListInFront() const
{
    const QWidget* shown = m_panels->currentWidget();
    return (m_phonebook && shown == m_fraPBTB && m_phonebook->isDirty()) ||
           (m_providers && shown == m_fraPBNE && m_providers->isDirty());
}

/// An operation runs, and goes on beside the question: a phone that waits for the user's answer gives up.
void frmPB::askToInterrupt()
{
    if (m_closingBox)
        return;
    const QString text = isWriting()
                             ? u"Kalmo schreibt gerade die Liste ins Telefon und führt das zu Ende.\n\n"
                               u"Soll Kalmo danach beendet werden?"_s
                             : u"Kalmo tauscht gerade Daten mit dem Telefon aus.\n\n"
                               u"Soll der Vorgang abgebrochen und Kalmo beendet werden?"_s;
    m_closingBox = makeSideQuestion(text, this);
    m_closingBox->setObjectName(u"closingQuestion"_s);
    const QPointer<QPushButton> stop =
        m_sta->offersCancel() && !isWriting()
            ? m_closingBox->addButton(u"Nur &abbrechen"_s, QMessageBox::ActionRole)
            : nullptr;
    connect(m_sta, &StatusArea::becameIdle, m_closingBox, [box = m_closingBox.data(), stop] {
        if (!box->isVisible())
            return;
        box->setText(u"Soll Kalmo beendet werden?"_s);
        if (stop)
            stop->hide();
        QGuiApplication::changeOverrideCursor(Qt::ArrowCursor); // the end of the operation has dropped it
    });
    connect(m_closingBox, &QMessageBox::finished, this, [this, stop](int answer) {
        if (stop && m_closingBox->clickedButton() == stop)
            m_sta->cancel();
        else if (answer == QMessageBox::Yes)
            stopForClosing();
    });
    m_closingBox->open();
}

/// The operation ends as soon as that loses nothing, and the window closes then.
void frmPB::stopForClosing()
{
    m_closeWanted = true;
    if (!m_sta->isBusy()) { // it has ended while the question was open
        QMetaObject::invokeMethod(this, &frmPB::closeIfWanted, Qt::QueuedConnection);
        return;
    }
    m_sta->hold(u"Kalmo wird beendet, sobald der Vorgang zu Ende ist ..."_s);
    m_mmc->askToStop();
    if (!isWriting()) // half a list in the phone would be worse than the wait
        m_sta->cancel();
}

/// Waits while a box shows how the operation has ended.
void frmPB::closeIfWanted()
{
    if (!m_closeWanted || m_sta->isBusy())
        return;
    if (QApplication::activeModalWidget())
        QTimer::singleShot(lookAgain, this, &frmPB::closeIfWanted);
    else
        close();
}

QString frmPB::closingText(Store store)
{
    return u"Es wurden "_s + wordsOf(store).changesTo.toString() +
           u" vorgenommen, diese wurden jedoch noch nicht durch die Funktion \"Schreiben\" gespeichert und "
           u"gehen "
           u"verloren, wenn Sie Kalmo beenden.\n\nTrotzdem beenden?"_s;
}

bool frmPB::mayLoseChanges(const std::function<QString(Store)>& text)
{
    const auto mayGo = [&](Store store) {
        return !phonedata::isDirty(m_program.memory, store) || agrees(m_program.context, text(store));
    };
    return mayGo(Store::Providers) && mayGo(Store::Phonebook);
}

/// A channel may be open without a connection, if the phone has refused it or did not end it. If the port is
/// gone there is nothing to close, and the status bar says so; the client gives up its connection. A store of
/// the phone may have stayed open, too.
bool frmPB::closeChannel()
{
    if (m_program.line.owes()) {
        const toolkit::BusyScope busy(&m_parts.busy);
        m_sta->setText(u"Die Liste im Telefon wird geschlossen..."_s);
        m_program.line.sendOwed();
        m_sta->showReady();
    }
    if (!m_program.line.port().IsOpen()) {
        const obex::clsMmc::Quiet quiet(*m_mmc);
        if (m_mmc->IsOnline() == obex::clsMmc::Connected)
            m_mmc->Offline({});
    } else if (isInDataMode()) {
        if (!m_mmc->Offline(m_parts.progress))
            return false;
        m_sta->showReady();
    }
    m_reminders->hideKind(Reminders::CloseFfs);
    m_reminders->showKind(Reminders::NoMenu);
    if (isDirtyListInFront()) // the window may come back after a search
        m_reminders->showKind(Reminders::Save);
    return true;
}

void frmPB::cleanUp()
{
    saveLayouts();
    app::emptyFolder(app::workPath(m_program.context.sy));
    if (m_program.line.port().IsOpen())
        m_program.line.ClosePort();
}

} // namespace kalmo::ui
