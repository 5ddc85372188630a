#pragma once

#include "link/mdlSearch.h"

#include <QWidget>

class QLabel;
class QProgressBar;
class QPushButton;

namespace kalmo::ui {

/// The splash, which is the window of the search too.
class frmStart : public QWidget, public link::SearchView
{
    Q_OBJECT

public:
    explicit frmStart(QWidget* parent = nullptr);

    /// Puts the window in the middle of the screen.
    void present();
    /// What the window is called, and that the start goes on.
    void layOutSplash(const QString& caption);
    /// What is behind the port that is searched: a name, or empty.
    void showPort(const QString& text);

    void setStatus(const QString& text) override;
    void setProgress(int value, int maximum) override;
    bool aborted() const override { return m_aborted; }
    void clearAborted() override;

Q_SIGNALS:
    /// The user closed the window: he wants the program to end.
    void closedByUser();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void abortSearch();

    QLabel* lblStatusPre;
    QLabel* lblStatus;
    QProgressBar* progbarStart;
    QPushButton* lblEsc;
    bool m_aborted = false;
};

} // namespace kalmo::ui
