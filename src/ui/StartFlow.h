#pragma once

#include "app/StartSequence.h"
#include "link/mdlSearch.h"
#include "obex/DataChannel.h"
#include "ui/DemoHandset.h"
#include "ui/Program.h"

#include <QObject>

#include <memory>
#include <optional>

namespace kalmo::ui {

class frmEinstellungen;
class frmPB;
class frmStart;
class frmWelcome;

/// Controls the sequence of windows: splash with start sequence and search, settings, main window, and from
/// the settings back to the splash.
class StartFlow : public QObject, public app::StartView
{
    Q_OBJECT

public:
    /// `startArguments` are the arguments of the start sequence: "/DBG" or "/DELINI".
    StartFlow(Program& program, QString startArguments);
    ~StartFlow() override;

    /// Opens a file in the main window as soon as that is in front.
    void openFile(const QString& path);
    /// Ends the program without a question, as when a signal or the desktop's session asks for that.
    void endUnasked();
    /// Shows the splash at once; the start sequence and the search follow from the event loop.
    void begin();

    app::ScreenSize screen() const override;
    void clearAbortFlag() override;
    void layOutSplash(const QString& caption) override;
    void ReadSettingsToForm() override;
    void showSettings() override;

private:
    void showSplash();
    void runSequence();
    void welcome();
    void startDemo();
    void runSearch();
    link::SearchStart takeLineBack();
    void takeOldPhone();
    bool dropsOtherWindow();
    void showMainWindow();
    void openFiles();
    void openSettings();
    void searchAgain();
    void searchNow();
    void presentSettings();
    void noteUnclosed();
    void leaveDemo();
    void onSaved(bool otherPort);
    void onCancelled();
    bool mayLeavePhone(bool otherPort);
    void endByUser();
    void endNow();

    Program& m_program;
    QString m_startArguments;
    QStringList m_filesToOpen;
    std::unique_ptr<frmStart> m_start;
    std::unique_ptr<frmEinstellungen> m_settings;
    std::unique_ptr<frmWelcome> m_welcome;
    std::unique_ptr<frmPB> m_main;
    DemoHandset m_demo;
    int m_ownPort = 0;           // ComNoForThisRun before the emulated handset's was used
    bool m_wasConnected = false; // before the search of all ports
    // A phone was left in its data mode, and none was found at its port since.
    std::optional<obex::UnclosedSession> m_unclosed;
    app::Sy m_mainSy; // as it was when the main window got its phone
};

} // namespace kalmo::ui
