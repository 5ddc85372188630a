#include "ui/StartFlow.h"

#include "app/SettingsKeys.h"
#include "obex/clsMmc.h"
#include "ui/adaptors/WindowInFront.h"
#include "ui/forms/frmEinstellungen.h"
#include "ui/forms/frmStart.h"
#include "ui/forms/frmWelcome.h"
#include "ui/TakeBack.h"
#include "ui/window/ClassicWords.h"
#include "ui/window/frmPB.h"
#include "ui/window/mdlFormResize.h"

#include <QApplication>
#include <QDir>
#include <QScreen>
#include <QTimer>

#include <cstdlib>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

QString describePort(const Program& program)
{
    const int number = link::portNumber(program.context);
    const link::SerialDevice device = program.ports.present(number);
    const QString path = device.path.isEmpty() ? program.ports.devicePath(number) : device.path;
    const QString name = device.description.isEmpty() ? path : u"%1, %2"_s.arg(device.description, path);
    return name.isEmpty() ? QString() : u"COM %1: %2"_s.arg(number).arg(name);
}

/// Returns true if a window that was made for one phone fits the other.
bool areOfOneKind(const app::Sy& one, const app::Sy& other)
{
    return one.PhoneType == other.PhoneType && one.PhoneID == other.PhoneID;
}

/// Returns true if the session's port is that of the emulated handset.
bool isDemo(const app::Sy& sy)
{
    return sy.ComNoEmulated > 0 && sy.ComNoForThisRun == sy.ComNoEmulated;
}

} // namespace

StartFlow::StartFlow(Program& program, QString startArguments)
    : m_program(program), m_startArguments(std::move(startArguments))
{
    m_program.context.ending.setLastWork([this] {
        if (m_main)
            m_main->saveUnwritten();
        m_demo.stop();
    });
    // The desktop asks the program to end later, or kills it.
    connect(qApp, &QGuiApplication::commitDataRequest, this, [this] {
        if (m_main)
            m_main->keepUnwritten();
    });
}

StartFlow::~StartFlow()
{
    m_program.context.ending.setLastWork(nullptr);
}

void StartFlow::showSplash()
{
    m_start = std::make_unique<frmStart>();
    connect(m_start.get(), &frmStart::closedByUser, this, &StartFlow::endByUser);
    m_start->present();
}

void StartFlow::begin()
{
    showSplash();
    QTimer::singleShot(0, this, &StartFlow::runSequence);
}

void StartFlow::runSequence()
{
    if (app::runStartSequence(m_program.context, *this, m_startArguments) == app::StartOutcome::Search)
        runSearch();
}

void StartFlow::runSearch()
{
    m_wasConnected = false;
    if (m_main)
        m_main->forgetDevice();
    m_start->showPort(describePort(m_program));
    auto start = link::SearchStart::FirstRate;
    const bool isUnclosed = !isDemo(m_program.context.sy) && m_unclosed &&
                            m_unclosed->port == link::portNumber(m_program.context);
    if (isUnclosed) {
        obex::rememberUnclosed(m_program.context, *m_unclosed); // until the phone is back
        start = takeLineBack();
    }
    link::PhoneSearch search(m_program.line, *m_start, m_program.desktop);
    const link::SearchOutcome outcome = search.SearchPhone(start);
    m_start.reset();
    if (isUnclosed && outcome == link::SearchOutcome::PhoneFound) {
        m_unclosed.reset();
        obex::forgetUnclosed(m_program.context);
    }
    if (outcome == link::SearchOutcome::PhoneFound && dropsOtherWindow()) {
        showMainWindow();
        return;
    }
    if (!m_main || !isDemo(m_mainSy))
        leaveDemo();
    if (m_main)
        takeOldPhone();
    presentSettings();
}

void StartFlow::presentSettings()
{
    // The window may hold lists that wait to be written.
    m_settings->present({.hasWayBack = m_main != nullptr, .isDemo = isDemo(m_program.context.sy)});
}

/// The session's port is the user's own again.
void StartFlow::leaveDemo()
{
    if (isDemo(m_program.context.sy))
        m_program.context.sy.ComNoForThisRun = m_ownPort;
    m_demo.stop();
}

/// The window that stays belongs to the phone before the search.
void StartFlow::takeOldPhone()
{
    app::Sy& sy = m_program.context.sy;
    sy.PhoneType = m_mainSy.PhoneType;
    sy.PhoneID = m_mainSy.PhoneID;
    sy.PhoneSVN = m_mainSy.PhoneSVN;
    sy.blnTxLfTerminator = m_mainSy.blnTxLfTerminator;
    sy.ComNo = m_mainSy.ComNo;
    sy.ComSettings = m_mainSy.ComSettings;
}

/// A port that does not open is left to the search.
link::SearchStart StartFlow::takeLineBack()
{
    m_start->clearAborted();
    takeUnclosedBack(m_program, *m_start);
    return m_start->aborted() ? link::SearchStart::AfterAbort : link::SearchStart::FirstRate;
}

/// Destroys a window for another kind of phone, after the lists in it are safe. Returns false if the user
/// keeps it. Lists of the emulated handset never wait to be written to a real one.
bool StartFlow::dropsOtherWindow()
{
    const app::Sy& sy = m_program.context.sy;
    if (!m_main || (areOfOneKind(m_mainSy, sy) && isDemo(m_mainSy) == isDemo(sy)))
        return true;
    if (!m_main->saveUnwritten() && !m_main->mayLoseChanges(unsavedChangesText)) {
        m_program.line.ClosePort();
        return false;
    }
    m_main.reset();
    return true;
}

void StartFlow::showMainWindow()
{
    if (m_main) {
        // Another phone may be connected by now, even one of the same kind.
        m_main->forgetPhone();
    } else {
        m_program.memory = {};
        m_main = std::make_unique<frmPB>(m_program, std::make_shared<obex::clsMmc>(m_program.line));
        connect(m_main.get(), &frmPB::settingsRequested, this, &StartFlow::openSettings);
        connect(m_main.get(), &frmPB::searchRequested, this, &StartFlow::searchAgain);
        connect(m_main.get(), &frmPB::closedByUser, qApp, &QApplication::quit);
        connect(m_main.get(), &frmPB::shown, this, &StartFlow::openFiles);
    }
    app::Sy& sy = m_program.context.sy;
    sy.logKeepsAll = true; // a later search takes nothing away from the log
    sy.StrStCom.clear();
    m_mainSy = sy;
    m_main->showEmulated(isDemo(m_mainSy));
    m_main->show();
}

void StartFlow::openFile(const QString& path)
{
    m_filesToOpen.append(path);
    if (QWidget* window = windowInFront()) {
        window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
        window->raise();
        window->activateWindow();
    }
    if (m_main && m_main->isVisible())
        openFiles();
}

void StartFlow::openFiles()
{
    for (const QString& file : std::exchange(m_filesToOpen, {}))
        QTimer::singleShot(0, m_main.get(), [window = m_main.get(), file] { window->openGiven(file); });
}

void StartFlow::openSettings()
{
    m_main->hide();
    presentSettings();
}

/// Where the search ends without a phone the settings follow, and their "Abbruch" leads back to the window.
/// The user of the emulated handset has not seen the settings, and need not.
void StartFlow::searchAgain()
{
    m_program.line.ClosePort();
    if (isDemo(m_program.context.sy))
        searchNow();
    else
        begin();
}

void StartFlow::searchNow()
{
    showSplash();
    QTimer::singleShot(0, this, &StartFlow::runSearch);
}

/// A user of the emulated handset who saves the settings means the own phone.
void StartFlow::onSaved(bool otherPort)
{
    const bool isOtherPhone = otherPort || isDemo(m_program.context.sy);
    leaveDemo();
    if (isOtherPhone)
        m_main.reset();
    else if (m_main)
        m_main->hide();
    begin();
}

/// A search of all ports that found nothing better has closed the port of the window's phone.
void StartFlow::onCancelled()
{
    const bool wasConnected = std::exchange(m_wasConnected, false);
    if (!m_main)
        return;
    if (wasConnected && !m_program.line.port().IsOpen()) {
        searchNow();
        return;
    }
    m_main->show();
}

/// Runs before the settings close the port. With another port the window is destroyed, after the lists in it
/// are safe.
bool StartFlow::mayLeavePhone(bool otherPort)
{
    if (!m_main)
        return true;
    const bool isOtherPhone = otherPort || isDemo(m_program.context.sy);
    if (isOtherPhone && !m_main->saveUnwritten() && !m_main->mayLoseChanges(unsavedChangesText))
        return false;
    m_main->closeChannel();
    return true;
}

void StartFlow::endByUser()
{
    if (m_main && !m_main->mayLoseChanges(frmPB::closingText))
        return;
    endNow();
}

void StartFlow::endUnasked()
{
    // A dialog of the main window may have hidden it.
    const auto isInFront = [](const QWidget* window) { return window && window->isVisible(); };
    if (m_main && !isInFront(m_settings.get()) && !isInFront(m_start.get()) && !isInFront(m_welcome.get())) {
        m_main->endUnasked();
        return;
    }
    if (m_main)
        m_main->keepUnwritten();
    endNow();
}

/// Changes that are not written are in files now, or the user has agreed to lose them.
void StartFlow::endNow()
{
    m_program.context.ending.setLastWork([this] { m_demo.stop(); });
    // The search is on the stack and would return only through its questions.
    m_program.line.sendOwed();
    m_program.line.ClosePort();
    m_program.context.ending.EndProgram(EXIT_SUCCESS);
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
        m_settings->setLeaveQuestion([this](bool otherPort) { return mayLeavePhone(otherPort); });
        connect(m_settings.get(), &frmEinstellungen::saved, this, &StartFlow::onSaved);
        connect(m_settings.get(), &frmEinstellungen::cancelled, this, &StartFlow::onCancelled);
        connect(m_settings.get(), &frmEinstellungen::closedByUser, this, &StartFlow::endByUser);
        connect(m_settings.get(), &frmEinstellungen::welcomeWanted, this, &StartFlow::welcome);
    }
    m_settings->ReadSettingsToForm();
    noteUnclosed();
}

/// The start sequence deletes the reminder after it has shown it. A phone that has not answered since may
/// still be in its data mode.
void StartFlow::noteUnclosed()
{
    if (const auto session = obex::unclosedSession(m_program.context))
        m_unclosed = session;
}

void StartFlow::showSettings()
{
    m_start->hide();
    m_settings->present({});
    if (app::get(m_program.context.settings, app::keys::Version) == app::noValue())
        welcome();
}

/// A newcomer finds a phone here, or goes on to the settings below. Later the settings lead here.
void StartFlow::welcome()
{
    if (m_main) {
        m_wasConnected = m_wasConnected || m_program.line.port().IsOpen();
        m_main->closeChannel(); // the search opens one port after the other
    }
    noteUnclosed();
    m_welcome = std::make_unique<frmWelcome>(m_program, m_settings.get());
    if (m_unclosed)
        m_welcome->takeBackAt(m_unclosed->port);
    connect(m_welcome.get(), &frmWelcome::portChosen, this, [this](int number) {
        m_welcome->hide();
        m_settings->usePort(number);
    });
    connect(m_welcome.get(), &frmWelcome::searchBegins, this, [this] {
        if (m_main)
            m_main->forgetDevice();
    });
    connect(m_welcome.get(), &frmWelcome::demoWanted, this, &StartFlow::startDemo);
    m_welcome->open();
}

void StartFlow::startDemo()
{
    app::Context& context = m_program.context;
    const QString link = QDir(context.sy.Paths.Storage).filePath(u"config/handset"_s);
    QString error;
    if (!m_demo.start(context.sy.Paths.Exe, link, error)) {
        context.dialogs.Show(
            {.text = u"Das nachgebildete Telefon konnte nicht gestartet werden: %1"_s.arg(error),
             .icon = toolkit::Icon::Exclamation});
        return;
    }
    m_welcome->hide();
    m_program.line.ClosePort();
    if (!isDemo(context.sy))
        m_ownPort = context.sy.ComNoForThisRun;
    context.sy.ComNoEmulated = m_program.ports.numberForThisRun(link);
    m_program.ports.useDevice(context.sy.ComNoEmulated, link);
    context.sy.ComNoForThisRun = context.sy.ComNoEmulated;
    m_settings->hide(); // the user has not confirmed them, and is welcomed again by the next start
    searchNow();
}

} // namespace kalmo::ui
