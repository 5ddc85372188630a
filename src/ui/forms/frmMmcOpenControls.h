#pragma once

#include "media/UploadFiles.h"
#include "ui/controls/PictureLoader.h"
#include "ui/Program.h"

#include <QGroupBox>

#include <optional>

class QCheckBox;
class QComboBox;
class QLabel;
class QProcess;
class QRadioButton;
class QStackedWidget;
class QTimer;

namespace kalmo::ui {

class SoundButtons;

/// The files that an upload is for.
struct UploadQuestion
{
    media::UploadKind kind = media::UploadKind::None;
    int phoneType = 0;
    std::optional<qint64> freeBytes = {}; ///< in the phone
    QString folder = {};                  ///< where the file dialog starts
};

/// What the user chose.
struct UploadChoice
{
    QStringList paths;
    media::UploadOptions options;
};

/// The panel at the foot of the file dialog of an upload: shows what the selected file becomes in the phone,
/// and takes the quality and shape of pictures and the length of sounds.
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

    /// The choices for the files that the dialog gives. Nothing, and that is told, if they lie elsewhere.
    std::optional<UploadChoice> GetSelFiles(const QStringList& paths);
    /// Stops the sound that is played for a check.
    void cmdSndStop_Click();

private:
    void SetLogoSize(media::UploadKind kind);
    QWidget* makePreviews();
    QWidget* makeChoices();
    QWidget* makeFit();
    QWidget* makeTrim();
    void showDescription(const QString& text);
    void showPicture(const QString& path);
    void showSound(const QString& path);
    void askLength(const QString& path);
    void takePicture(const media::LoadedPicture& picture);
    void renderPicture();
    void showResult(std::optional<qint64> bytes);
    void showSoundResult();
    media::Fit fit() const;
    int quality() const;
    int trimSeconds() const;
    bool isTrimValid() const;
    bool rejectTrim();
    void startStopTimer();

    Program& m_program;
    UploadQuestion m_question;
    QSize m_size;      // of a picture in the phone
    QSize m_shownSize; // of it in the preview
    TypeOfSel m_type = NoneOrSeveral;
    QString m_path; // the one selected file
    double m_seconds = 0;
    PictureLoader m_loader;
    QImage m_picture;
    std::unique_ptr<QProcess> m_length;

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
    QCheckBox* m_chkTrimWav;
    QComboBox* m_cmbTrimWav;
    QLabel* m_lblResult;
    QTimer* m_tmrStopWav;
};

} // namespace kalmo::ui
