#pragma once

#include "link/PortScan.h"
#include "ui/Program.h"

#include <QDialog>

class QLabel;
class QProgressBar;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace kalmo::ui {

/// Receives a newcomer: says what Kalmo is and how a phone is connected, looks for phones at all ports, and
/// offers a handset to try where there is none.
class frmWelcome : public QDialog, private link::SearchView
{
    Q_OBJECT

public:
    explicit frmWelcome(Program& program, QWidget* parent = nullptr);

    /// The search takes a phone at that port out of its data mode first.
    void takeBackAt(int number) { m_unclosedPort = number; }
    void reject() override;

protected:
    void keyPressEvent(QKeyEvent* event) override;

Q_SIGNALS:
    void portChosen(int number); ///< a phone was found there, and the user wants it
    void demoWanted();
    void searchBegins(); ///< of all ports

private:
    QWidget* makeAdvice();
    QWidget* makeSearch();
    void searchAllPorts();
    void searchPort(int number);
    QString endOfSearch() const;
    void tell(const QString& text);
    void showFound(const link::FoundAtPort& found);
    void offerConnecting();
    void connectToChosen();

    void setStatus(const QString& text) override;
    void setProgress(int value, int maximum) override;
    bool aborted() const override { return m_isAborted; }
    void clearAborted() override {}

    Program& m_program;
    QPushButton* m_search;
    QTreeWidget* m_found;
    QLabel* m_status;
    QProgressBar* m_progress;
    QPushButton* m_connect;
    QPushButton* m_demo;
    QPushButton* m_settings;
    int m_unclosedPort = 0; // 0 for none
    bool m_isSearching = false;
    bool m_isAborted = false;
};

} // namespace kalmo::ui
