#pragma once

#include "ui/adaptors/ProgressWidgets.h"

#include <QStatusBar>

#include <memory>

namespace kalmo::link {
class Line;
}

namespace kalmo::ui {

class ConnectionLight;

/// The status bar `sta` with its panels "sta" and "prg", the button that cancels, and the blocking of the
/// window around it. The bar itself stays enabled, so that an operation can be cancelled.
class StatusArea : public QStatusBar, public toolkit::BusyWindow
{
    Q_OBJECT

public:
    explicit StatusArea(const link::Line& line, QWidget* parent = nullptr);

    /// Sets the widgets that are blocked while the phone is busy.
    void setBlocked(const QList<QWidget*>& widgets);

    toolkit::Progress progress() { return {m_text, m_bar, m_cancel}; }

    /// Blocks and frees; calls nest.
    void SetBusy(bool busy) override;
    /// Offers the button that cancels. It is shown while the operation keeps the window busy, and not pressed
    /// at first. The end of the operation takes the offer back.
    void offerCancel(bool offered);
    /// Returns true if the user can stop what runs.
    bool offersCancel() const { return m_offersCancel && isBusy(); }
    bool isBusy() const { return m_busy && m_busy->isBusy(); }

    /// Asks the running operation to stop. Does nothing if none runs that looks at the cancel box.
    void cancel();

    void showEmulated(bool isEmulated);

    /// Panel "sta" while bytes come in: its text up to the dots, followed by the count.
    void showBytes(qint64 count);
    void setText(const QString& text) { m_text->SetText(text); }
    /// The text of the panel "sta", also of one that is held back.
    QString text() const { return m_text->Text(); }
    /// Shows how something has ended. The advice about a lost connection follows it.
    void showResult(const QString& sentence);
    /// Says that nothing runs, in place of the sentence about the last operation. The advice about a lost
    /// connection stays.
    void showReady();
    /// Shows a text in place of the operation's own ones until it ends.
    void hold(const QString& text) { m_text->hold(text); }

Q_SIGNALS:
    void becameIdle();
    void connectionLost(); ///< the phone does not answer any more, or the port is gone
    void searchWanted();   ///< the user wants the phone to be looked for again

private:
    void showAdvice(const QString& advice);
    void takeAdviceBack();

    StatusLabel* m_text;
    ProgressStrip* m_bar;
    CancelCheck* m_cancel;
    ConnectionLight* m_connection;
    std::unique_ptr<WindowBusy> m_busy;
    bool m_offersCancel = false;
    QString m_advice; // about the connection that is lost now
};

} // namespace kalmo::ui
