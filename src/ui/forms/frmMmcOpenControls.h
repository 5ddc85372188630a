#pragma once

#include "media/UploadFiles.h"
#include "ui/controls/PictureLoader.h"
#include "ui/controls/UploadSizes.h"
#include "ui/Program.h"

#include <QElapsedTimer>
#include <QGroupBox>

#include <optional>

class QComboBox;
class QLabel;
class QRadioButton;
class QStackedWidget;
class QTimer;

namespace kalmo::ui {

class SoundButtons;
class TrimChoice;

/// The folder that an upload is for.
struct UploadQuestion
{
    media::UploadKind kind = media::UploadKind::None;
    int phoneType = 0;
    std::optional<qint64> freeBytes = {}; ///< in the phone
    QString folder = {};                  ///< where the file dialog starts
    QStringList given = {};               ///< files to send; without them the user chooses some
};

/// The files that the user chose, and their form.
struct UploadChoice
{
    QStringList paths;
    media::UploadOptions options;
    qsizetype passedOver = 0; ///< things that were given beside them and can't be sent, such as folders
};

/// The panel at the foot of the file dialog of an upload. Shows the selected files as they will be in the
/// phone, and takes the quality and shape of pictures and the length of sounds.
class frmMmcOpenControls : public QWidget
{
    Q_OBJECT

public:
    enum TypeOfSel { NoneOrSeveral = 0, Picture = 1, Midi = 2 };

    frmMmcOpenControls(Program& program, const UploadQuestion& question, QWidget* parent = nullptr);
    ~frmMmcOpenControls() override;

    /// The selection of the file dialog.
    void showSelection(const QStringList& paths);
    TypeOfSel TypeOfSelFile() const { return m_type; }

    /// The choices for the files of the dialog. Returns nothing, after a message, if a file is not there or
    /// if the length of sounds is no whole number above 0.
    std::optional<UploadChoice> GetSelFiles(const QStringList& paths);
    /// Stops the sound that is played for a check.
    void cmdSndStop_Click();

private:
    void SetLogoSize(media::UploadKind kind);
    QWidget* makePreviews();
    QWidget* makeChoices();
    QWidget* makeFit();
    void showSeveral();
    void showDescription(const QString& text);
    void showPicture(const QString& path);
    void showSound(const QString& path);
    void takePicture(const media::LoadedPicture& picture);
    void changeForm();
    void renderPicture();
    void measure();
    void showSizes();
    void showRoom(QStringList lines, std::optional<qint64> bytes);
    media::UploadOptions options() const;
    media::Fit fit() const;
    int quality() const;
    void startStopTimer();
    void moveStopTimer();

    Program& m_program;
    UploadQuestion m_question;
    QSize m_size;      // of a picture in the phone
    QSize m_shownSize; // of it in the preview
    TypeOfSel m_type = NoneOrSeveral;
    QStringList m_paths; // selected
    QString m_path;      // of the one selected file
    PictureLoader m_loader;
    QImage m_picture;
    UploadSizes m_sizes;

    QStackedWidget* m_pages;
    QLabel* m_description;
    QGroupBox* m_fraBmpPrev;
    QLabel* m_imgPrev;
    QLabel* m_label1;
    QComboBox* m_cmbJPGCompression;
    QRadioButton* m_optStretch;
    QRadioButton* m_optCrop;
    QRadioButton* m_optInside;
    SoundButtons* m_sound;
    QLabel* m_lblMidiToLarge;
    QLabel* m_lblLength;
    TrimChoice* m_trim;
    QLabel* m_lblResult;
    QTimer* m_tmrStopWav;
    QElapsedTimer m_played; // since the sound was started
};

} // namespace kalmo::ui
