#pragma once

#include "link/mdlComInfos.h"
#include "ui/Program.h"

#include <QDialog>

#include <functional>

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;
class QVBoxLayout;

namespace kalmo::ui {

/// The settings: port, backups and storage, messages. Made once, it exists for the whole run, hidden most of
/// the time.
class frmEinstellungen : public QDialog
{
    Q_OBJECT

public:
    explicit frmEinstellungen(Program& program, QWidget* parent = nullptr);

    /// Fills the controls from the settings file.
    void ReadSettingsToForm();
    struct Occasion
    {
        bool hasWayBack = false; ///< if not, the user has to save, and closing the form ends the program
        bool isDemo = false;     ///< the phone of this run is the emulated handset
    };
    void present(Occasion occasion);

    /// Chooses a port and saves the settings, as the user would.
    void usePort(int number);

    /// Sets a question that is asked before anything is saved, with the argument of saved(). If it returns
    /// false nothing is saved.
    void setLeaveQuestion(std::function<bool(bool otherPort)> mayLeave) { m_mayLeave = std::move(mayLeave); }

    void reject() override;

Q_SIGNALS:
    /// The settings were saved. `otherPort`: the phone is at another port now.
    void saved(bool otherPort);
    void cancelled();
    /// The user wants all ports to be searched, or the emulated handset.
    void welcomeWanted();
    /// The user closed the form, and there is no way back.
    void closedByUser();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void addPortRows(QVBoxLayout& rows);
    void addStorageRows(QVBoxLayout& rows);
    void addMessageRows(QVBoxLayout& rows);
    void addButtons(QVBoxLayout& rows);
    QCheckBox* addCheck(QVBoxLayout& rows, const QString& name, const QString& text, const QString& tip);
    void fillPorts(link::PortListFor purpose);
    void describePorts();
    void selectPort(int number);
    void RebuildCmbCom();
    void showUsbInfo();
    void chooseStorage();
    void showStorage(const QString& folder);
    void showPortOfThisRun();
    void save();
    void saveWithPort(int port);
    bool store();
    void writeSettings();

    Program& m_program;
    link::ComDescriptions m_descriptions;
    QString m_storage; // the folder that is shown
    std::function<bool(bool otherPort)> m_mayLeave;
    bool m_isSaving = false;
    bool m_isDemo = false; // the phone of this run is the emulated handset
    QComboBox* cmbCom = nullptr;
    QLabel* lblPortHinweis = nullptr;
    QLabel* lblSpeicherpfad = nullptr;
    QLabel* lblSpeicherHinweis = nullptr;
    QPushButton* cmdSpeicherpfad = nullptr;
    QCheckBox* chkAutoBackup = nullptr;
    QCheckBox* chkSwWarnung = nullptr;
    QCheckBox* chkShowSuccessPopup = nullptr;
    QCheckBox* chkUTF8contcats = nullptr;
    QPushButton* cmdOK = nullptr;
    QPushButton* cmdAbbruch = nullptr;
};

} // namespace kalmo::ui
