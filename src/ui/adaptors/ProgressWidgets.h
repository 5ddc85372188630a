#pragma once

#include "toolkit/Progress.h"

#include <QLabel>
#include <QPointer>
#include <QProgressBar>
#include <QToolButton>

namespace kalmo::ui {

/// A status text that never widens its window. A text that doesn't fit is elided, and a tool tip shows the
/// whole.
class StatusLabel : public QLabel, public toolkit::StatusPanel
{
    Q_OBJECT

public:
    explicit StatusLabel(QWidget* parent = nullptr);

    QString Text() const override { return m_held ? m_latest : text(); }
    void SetText(const QString& text) override;
    /// Shows a text until release(). The last of the texts that are set meanwhile is shown then.
    void hold(const QString& text);
    void release();
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void announced(const QString& text); ///< a screen reader reads it out

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void announce(const QString& text);

    bool m_held = false;
    QString m_latest; // set while another text is held
};

/// The slim progress bar of a status bar. Hidden until an operation shows it.
class ProgressStrip : public QProgressBar, public toolkit::ProgressBar
{
    Q_OBJECT

public:
    explicit ProgressStrip(QWidget* parent = nullptr);

    int Value() const override { return value(); }
    int Maximum() const override { return maximum(); }
    void SetValue(int value) override { setValue(value); }
    void SetMaximum(int maximum) override { setMaximum(maximum); }
    void SetVisible(bool visible) override { setVisible(visible); }
};

/// The button "Abbrechen" of a long operation. Once pressed it stays so until reset().
class CancelCheck : public QToolButton, public toolkit::CancelBox
{
    Q_OBJECT

public:
    explicit CancelCheck(QWidget* parent = nullptr);

    bool Checked() const override { return isChecked(); }
    void reset();
    /// Says in a status label at once that the user was heard: the operation ends at its next safe step. The
    /// text stays until the label's release().
    void answerIn(StatusLabel& status);
};

/// Blocks widgets while the phone is busy, with the wait cursor over the program. Calls nest. At the end the
/// keyboard focus returns to its widget. Neither this object nor a widget may be destroyed while busy.
class WindowBusy : public toolkit::BusyWindow
{
public:
    explicit WindowBusy(const QList<QWidget*>& widgets);
    ~WindowBusy() override;
    Q_DISABLE_COPY_MOVE(WindowBusy)

    void SetBusy(bool busy) override;
    bool isBusy() const { return m_depth > 0; }
    /// Returns true if any of the program's windows is busy.
    static bool isAnyBusy() { return s_busy > 0; }

private:
    void block();
    void release();

    QList<QWidget*> m_widgets;
    // An operation runs event loops, in which a widget of a list or form may be deleted.
    QList<QPointer<QWidget>> m_disabled; // those that this object disabled itself
    QPointer<QWidget> m_focus;
    int m_depth = 0;
    inline static int s_busy = 0;
};

} // namespace kalmo::ui
