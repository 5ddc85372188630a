#include "app/Files.h"
#include "ui/window/frmPB.h"
#include "ui/window/mdlFormResize.h"
#include "ui/window/Reminders.h"
#include "ui/window/StatusArea.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QKeyEvent>
#include <QPointer>
#include <QTimer>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
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

QString closingText(const QString& list)
{
    return u"Es wurden Änderungen "_s + list +
           u" vorgenommen, diese wurden jedoch noch nicht durch die Funktion \"Schreiben\" gespeichert und "
           u"gehen "
           u"verloren, wenn Sie Kalmo beenden.\n\nTrotzdem beenden?"_s;
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
        stopForClosing();
        return;
    }
    m_closeWanted = false;
    if (!mayClose())
        return;
    m_isClosing = true;
    const QPointer<frmPB> self(this);
    closeChannel();
    if (!self)
        return;
    cleanUp();
    m_isClosed = true;
    hide();
    Q_EMIT closedByUser();
}

/// Something runs: it ends as soon as that loses nothing, and the window closes then.
void frmPB::stopForClosing()
{
    m_closeWanted = true;
    m_mmc->askToStop();
    const auto isWriting = [](const ClassicList* list) { return list && list->isWriting(); };
    if (isWriting(m_phonebook) || isWriting(m_providers))
        return; // half a list in the phone would be worse than a moment's patience
    m_sta->cancel();
}

/// Not over a box that tells how the operation has ended.
void frmPB::closeIfWanted()
{
    if (!m_closeWanted || m_sta->isBusy())
        return;
    if (QApplication::activeModalWidget())
        QTimer::singleShot(lookAgain, this, &frmPB::closeIfWanted);
    else
        close();
}

bool frmPB::mayClose()
{
    const phonedata::PhoneMemory& memory = m_program.memory;
    app::Context& context = m_program.context;
    return (!memory.NeDirty || agrees(context, closingText(u"an der Providerliste"_s))) &&
           (!memory.TbDirty || agrees(context, closingText(u"am Telefonbuch"_s)));
}

void frmPB::closeChannel()
{
    const QPointer<frmPB> self(this);
    const std::shared_ptr<obex::clsMmc> mmc = m_mmc;
    const bool isClosed = mmc->IsOnline() != obex::clsMmc::Connected || mmc->Offline(m_parts.progress);
    if (!self || !isClosed)
        return;
    m_reminders->hideKind(Reminders::CloseFfs);
    m_reminders->showKind(Reminders::NoMenu);
}

void frmPB::cleanUp()
{
    SaveFormLayout(*this, m_program.context.settings);
    m_mmc->abandon();
    app::emptyFolder(QDir(m_program.context.sy.Paths.Storage).filePath(u"config/temp"_s));
    if (m_program.line.port().IsOpen())
        m_program.line.ClosePort();
}

} // namespace kalmo::ui
