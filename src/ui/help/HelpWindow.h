#pragma once

#include "ui/help/HelpPages.h"

#include <QWidget>

class QLineEdit;
class QTextBrowser;
class QToolBar;
class QTreeWidget;
class QTreeWidgetItem;

namespace kalmo::ui {

/// Shows the help, at a topic or at its start. There is one window; an open one is reused.
void openHelp(int topic = helpTopicStart);

/// The help: an index that can be searched, and the page.
class HelpWindow : public QWidget
{
    Q_OBJECT

public:
    explicit HelpWindow(QWidget* parent = nullptr);

    /// Shows a topic; an unknown one shows the start.
    void showTopic(int topic);

private:
    QToolBar* makeToolBar();
    QWidget* makeIndex();
    void fillIndex();
    void search(const QString& text);
    void showFirstHit();
    void showItem(const QTreeWidgetItem* item);
    void followPage(const QUrl& url);
    void zoom(int steps);

    QList<HelpPage> m_pages;
    QLineEdit* txtSuche = nullptr;
    QTreeWidget* tvwIndex = nullptr;
    QTextBrowser* txtSeite = nullptr;
    int m_zoom = 0;
};

} // namespace kalmo::ui
