#pragma once

#include "ui/Program.h"

#include <QDialog>
#include <QImage>

class QFrame;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QScrollArea;
class QStackedWidget;
class QTimer;
class QToolButton;

namespace kalmo::ui {

class ProgressStrip;
class SoundButtons;
class StatusLabel;

/// Shows a file that was read from the phone: a picture, a sound or a text. The user plays it, sees the
/// picture in its true size, and saves the file. Of any other file it shows the kind and the size.
class frmMmc_View : public QDialog
{
    Q_OBJECT

public:
    explicit frmMmc_View(Program& program, QWidget* parent = nullptr);
    ~frmMmc_View() override;

    /// Returns true for the kinds of files that can be shown, by the last four characters of the name.
    static bool IsSupported(const QString& name);

    /// Fills the form. `original` asks for a picture's true size. Returns false, after a message, if the file
    /// can't be shown, and without one if the user closes the form meanwhile.
    bool Form_Present(const QString& path, const QString& displayName, bool original = false);

    /// Fills the form with kind and size of a file that is not supported.
    void presentUnknown(const QString& path, const QString& displayName);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void done(int result) override;

private:
    void layOut();
    QWidget* makeHead();
    QFrame* makePicture();
    QWidget* makeSound();
    bool presentPicture(bool original);
    void ScaleForm4BMP(QSize picture);
    void stretch(QSize size);
    void presentSound();
    void presentText();
    void save();
    toolkit::FileType savedType() const;
    QSize roomForPicture() const;

    /// The user closed the form while it worked.
    struct Closing final : toolkit::CancelBox
    {
        bool isClosed = false;
        bool Checked() const override { return isClosed; }
    };

    /// The form stays until its work has ended, so that nobody uses the window below it before.
    class Work
    {
    public:
        explicit Work(frmMmc_View& form) : m_form(form) { ++m_form.m_works; }
        ~Work()
        {
            if (--m_form.m_works == 0 && m_form.m_closing.isClosed)
                m_form.QDialog::done(Rejected);
        }
        Q_DISABLE_COPY_MOVE(Work)

    private:
        frmMmc_View& m_form;
    };

    Program& m_program;
    Closing m_closing;
    int m_works = 0;
    QString m_path;
    QImage m_picture;
    QSize m_ownSize;           // that the form gave itself, in contrast to one that the user gave it
    bool m_isOnScreen = false; // painted once: sizes before are the system's

    QLineEdit* m_txtFile;
    QToolButton* m_cmdBmp1zu1;
    QToolButton* m_cmdSave;
    QStackedWidget* m_pages;
    QScrollArea* m_imgArea;
    QLabel* m_imgBmp;
    SoundButtons* m_sound;
    QPlainTextEdit* m_txtText;
    QLabel* m_lblUnknown;
    StatusLabel* m_sta;
    ProgressStrip* m_prg;
    QTimer* m_tmrMidiPlayAutoStart;
};

} // namespace kalmo::ui
