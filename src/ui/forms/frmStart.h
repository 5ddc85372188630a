#pragma once

#include "link/mdlSearch.h"

#include <QWidget>

class QLabel;
class QProgressBar;
class QPushButton;

namespace kalmo::ui {

/// The splash, which is also the window of the search.
class frmStart : public QWidget, public link::SearchView
{
    Q_OBJECT

public:
    explicit frmStart(QWidget* parent = nullptr);

    /// Centres the window on the screen.
    void present();
    /// Sets the window's title, and shows that the start goes on.
    void layOutSplash(const QString& caption);
    /// Shows the device of the port that is searched: a name, or empty.
    void showPort(const QString& text);

    void setStatus(const QString& text) override;
    void setProgress(int value, int maximum) override;
    bool aborted() const override { return m_aborted; }
    void clearAborted() override;

Q_SIGNALS:
    /// The user closed the window, which ends the program.
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
