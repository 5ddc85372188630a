#include "ui/StartFlow.h"

#include "app/SettingsKeys.h"
#include "obex/clsMmc.h"
#include "ui/forms/frmEinstellungen.h"
#include "ui/forms/frmStart.h"
#include "ui/window/frmPB.h"

#include <QApplication>
#include <QScreen>
#include <QTimer>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

constexpr int twipsPerPixel = 15;

QString describePort(const Program& program)
{
    const app::Sy& sy = program.context.sy;
    const int number = sy.ComNoForThisRun > 0 ? sy.ComNoForThisRun
                                              : app::getInt(program.context.settings, app::keys::ComPortNew);
    const link::SerialDevice device = program.ports.present(number);
    const QString path = device.path.isEmpty() ? program.ports.devicePath(number) : device.path;
    const QString name = device.description.isEmpty() ? path : u"%1, %2"_s.arg(device.description, path);
    return name.isEmpty() ? QString() : u"COM %1: %2"_s.arg(number).arg(name);
}

/// What the phone says of itself, and its family: enough to tell whether a window fits it.
QString phoneOf(const app::Sy& sy)
{
    return QString::number(sy.PhoneType) + u' ' + sy.PhoneID;
}

} // namespace

StartFlow::StartFlow(Program& program, QString startArguments)
    : m_program(program), m_startArguments(std::move(startArguments))
{
}

StartFlow::~StartFlow() = default;

void StartFlow::begin()
{
    m_start = std::make_unique<frmStart>();
    connect(m_start.get(), &frmStart::closedByUser, this, &StartFlow::endByUser);
    m_start->present();
    QTimer::singleShot(0, this, &StartFlow::runSequence);
}

void StartFlow::runSequence()
{
    if (app::runStartSequence(m_program.context, *this, m_startArguments) == app::StartOutcome::Search)
        runSearch();
}

void StartFlow::runSearch()
{
    m_start->showPort(describePort(m_program));
    link::PhoneSearch search(m_program.line, *m_start, m_program.desktop);
    const link::SearchOutcome outcome = search.SearchPhone();
    m_start.reset();
    if (outcome == link::SearchOutcome::PhoneFound)
        showMainWindow();
    else
        m_settings->present(false);
}

void StartFlow::showMainWindow()
{
    // Another phone may hang at the cable by now, even one of the same kind.
    m_program.memory.phonebook.forget();
    m_program.memory.providers.forget();
    const QString phone = phoneOf(m_program.context.sy);
    if (m_mainPhone != phone)
        m_main.reset();
    if (!m_main) {
        m_program.memory = {};
        m_main = std::make_unique<frmPB>(m_program, std::make_shared<obex::clsMmc>(m_program.line));
        m_mainPhone = phone;
        connect(m_main.get(), &frmPB::settingsRequested, this, &StartFlow::openSettings);
        connect(m_main.get(), &frmPB::closedByUser, qApp, &QApplication::quit);
    }
    m_main->show();
}

void StartFlow::openSettings()
{
    m_main->hide();
    m_settings->present(true);
}

void StartFlow::onSaved(bool otherPort)
{
    if (otherPort)
        m_main.reset();
    else if (m_main)
        m_main->hide();
    begin();
}

void StartFlow::onCancelled()
{
    if (m_main)
        m_main->show();
}

bool StartFlow::mayLoseChanges()
{
    const phonedata::PhoneMemory& memory = m_program.memory;
    if (!m_main || (!memory.TbDirty && !memory.NeDirty))
        return true;
    return m_program.context.dialogs.Show(
               {.text =
                    u"Es wurden Änderungen vorgenommen, diese wurden jedoch noch nicht durch die Funktion "
                    u"\"Schreiben\" gespeichert und gehen verloren, wenn Sie Kalmo beenden.\n\n"
                    u"Trotzdem beenden?"_s,
                .buttons = toolkit::Buttons::YesNo,
                .icon = toolkit::Icon::Question,
                .defaultButton = toolkit::Answer::No}) == toolkit::Answer::Yes;
}

void StartFlow::endByUser()
{
    if (!mayLoseChanges())
        return;
    // In the middle of the search's own stack: it could only come back through its questions.
    m_program.line.ClosePort();
    m_program.context.ending.EndProgram();
}

app::ScreenSize StartFlow::screen() const
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    const QSize logical = screen->size();
    const QSize pixels = (QSizeF(logical) * screen->devicePixelRatio()).toSize();
    return {logical.width() * twipsPerPixel, logical.height() * twipsPerPixel, pixels.width(),
            pixels.height()};
}

void StartFlow::clearAbortFlag()
{
    m_start->clearAborted();
}

void StartFlow::layOutSplash(const QString& caption)
{
    m_start->layOutSplash(caption);
}

void StartFlow::ReadSettingsToForm()
{
    if (!m_settings) {
        m_settings = std::make_unique<frmEinstellungen>(m_program);
        connect(m_settings.get(), &frmEinstellungen::saved, this, &StartFlow::onSaved);
        connect(m_settings.get(), &frmEinstellungen::cancelled, this, &StartFlow::onCancelled);
        connect(m_settings.get(), &frmEinstellungen::closedByUser, this, &StartFlow::endByUser);
    }
    m_settings->ReadSettingsToForm();
}

void StartFlow::showSettings()
{
    m_start->hide();
    m_settings->present(false);
}

} // namespace kalmo::ui
