#include "ui/help/HelpWindow.h"

#include "ui/controls/ScreenRoom.h"
#include "ui/controls/SearchField.h"
#include "ui/icons/Icons.h"

#include <QAction>
#include <QApplication>
#include <QFontMetrics>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QSplitter>
#include <QTextBrowser>
#include <QToolBar>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

constexpr int urlRole = Qt::UserRole;
constexpr int wordsRole = Qt::UserRole + 1;
constexpr int largestZoom = 12;
constexpr int smallestZoom = -4;

const QString pageStyle = u"h1 { font-size: x-large; margin-bottom: 12px; }"
                          u"h2 { font-size: large; margin-top: 18px; margin-bottom: 6px; }"
                          u"p, li { margin-bottom: 6px; line-height: 130%; }"
                          u"td, th { padding: 4px 12px 4px 0px; text-align: left; }"
                          u"code { font-family: monospace; }"_s;

QUrl urlOf(const HelpPage& page, const QString& anchor = {})
{
    QUrl url(u"qrc"_s + helpRoot() + page.file);
    if (!anchor.isEmpty())
        url.setFragment(anchor);
    return url;
}

QTreeWidgetItem* makeItem(const QString& title, const QUrl& url, const QString& words)
{
    auto* item = new QTreeWidgetItem({title});
    item->setData(0, urlRole, url);
    item->setData(0, wordsRole, words);
    item->setToolTip(0, title);
    item->setSizeHint(0, QSize(0, QFontMetrics(QApplication::font()).height() * 3 / 2));
    return item;
}

bool hasAllWords(const QString& text, const QStringList& words)
{
    return std::ranges::all_of(words,
                               [&](const QString& word) { return text.contains(word, Qt::CaseInsensitive); });
}

} // namespace

void openHelp(int topic)
{
    static QPointer<HelpWindow> window;
    if (!window) {
        window = new HelpWindow;
        window->setAttribute(Qt::WA_DeleteOnClose);
    }
    window->showTopic(topic);
    window->show();
    window->raise();
    window->activateWindow();
}

HelpWindow::HelpWindow(QWidget* parent) : QWidget(parent, Qt::Window), m_pages(readHelpPages())
{
    setObjectName(u"HelpWindow"_s);
    setWindowTitle(u"Kalmo Hilfe"_s);
    setWindowIcon(programIcon());
    txtSeite = new QTextBrowser(this);
    txtSeite->setObjectName(u"txtSeite"_s);
    txtSeite->setAccessibleName(u"Hilfeseite"_s);
    txtSeite->setFrameShape(QFrame::NoFrame);
    const int line = fontMetrics().height();
    txtSeite->document()->setDocumentMargin(line * 1.5);
    txtSeite->document()->setDefaultStyleSheet(pageStyle);
    connect(txtSeite, &QTextBrowser::sourceChanged, this, &HelpWindow::followPage);

    auto* halves = new QSplitter(this);
    halves->addWidget(makeIndex());
    halves->addWidget(txtSeite);
    halves->setStretchFactor(1, 1);
    halves->setSizes({line * 19, line * 45});
    halves->setChildrenCollapsible(false);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins({});
    rows->setSpacing(0);
    rows->addWidget(makeToolBar());
    rows->addWidget(halves, 1);
    resizeWithinScreen(*this, {line * 64, line * 46});
    fillIndex();
    setTabOrder(txtSuche, tvwIndex);
    setTabOrder(tvwIndex, txtSeite);
}

QToolBar* HelpWindow::makeToolBar()
{
    auto* bar = new QToolBar(this);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    const auto add = [&](const QString& name, const QString& text, const QList<QKeySequence>& keys) {
        QAction* action = bar->addAction(icon(name), text);
        action->setShortcuts(keys);
        action->setToolTip(u"%1 (%2)"_s.arg(text, keys.first().toString(QKeySequence::NativeText)));
        return action;
    };
    QAction* back = add(u"back"_s, u"Zurück"_s, {QKeySequence(Qt::ALT | Qt::Key_Left)});
    QAction* forward = add(u"forward"_s, u"Vor"_s, {QKeySequence(Qt::ALT | Qt::Key_Right)});
    QAction* home = add(u"root"_s, u"Startseite"_s, {QKeySequence(Qt::ALT | Qt::Key_Home)});
    bar->addSeparator();
    QAction* larger = add(u"zoomin"_s, u"Größer"_s,
                          {QKeySequence(Qt::CTRL | Qt::Key_Plus), QKeySequence(Qt::CTRL | Qt::Key_Equal)});
    QAction* smaller = add(u"zoomout"_s, u"Kleiner"_s, {QKeySequence(Qt::CTRL | Qt::Key_Minus)});
    connect(back, &QAction::triggered, txtSeite, &QTextBrowser::backward);
    connect(forward, &QAction::triggered, txtSeite, &QTextBrowser::forward);
    connect(home, &QAction::triggered, this, [this] { showTopic(helpTopicStart); });
    connect(larger, &QAction::triggered, this, [this] { zoom(1); });
    connect(smaller, &QAction::triggered, this, [this] { zoom(-1); });
    connect(txtSeite, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    connect(txtSeite, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
    back->setEnabled(false);
    forward->setEnabled(false);

    auto* close = new QAction(this);
    close->setShortcut(Qt::Key_Escape);
    connect(close, &QAction::triggered, this, &QWidget::close);
    addAction(close);
    return bar;
}

QWidget* HelpWindow::makeIndex()
{
    auto* side = new QWidget(this);
    txtSuche = new QLineEdit(side);
    txtSuche->setObjectName(u"txtSuche"_s);
    makeSearchField(*txtSuche, u"Suchbegriff"_s);
    txtSuche->setAccessibleName(u"In der Hilfe suchen"_s);
    auto* label = new QLabel(u"In der Hilfe &suchen:"_s, side);
    label->setBuddy(txtSuche);
    tvwIndex = new QTreeWidget(side);
    tvwIndex->setObjectName(u"tvwIndex"_s);
    tvwIndex->setAccessibleName(u"Inhalt der Hilfe"_s);
    tvwIndex->setHeaderHidden(true);
    tvwIndex->header()->setStretchLastSection(true);
    connect(txtSuche, &QLineEdit::textChanged, this, &HelpWindow::search);
    connect(txtSuche, &QLineEdit::returnPressed, this, &HelpWindow::showFirstHit);
    connect(tvwIndex, &QTreeWidget::currentItemChanged, this, &HelpWindow::showItem);
    auto* rows = new QVBoxLayout(side);
    rows->addWidget(label);
    rows->addWidget(txtSuche);
    rows->addWidget(tvwIndex, 1);
    return side;
}

void HelpWindow::fillIndex()
{
    for (const HelpPage& page : std::as_const(m_pages)) {
        QTreeWidgetItem* root = makeItem(page.title, urlOf(page), page.words);
        for (const HelpSection& section : page.sections)
            root->addChild(makeItem(section.title, urlOf(page, section.anchor), section.words));
        tvwIndex->addTopLevelItem(root);
    }
}

void HelpWindow::search(const QString& text)
{
    const QStringList words = text.split(u' ', Qt::SkipEmptyParts);
    for (int row = 0; row < tvwIndex->topLevelItemCount(); ++row) {
        QTreeWidgetItem* page = tvwIndex->topLevelItem(row);
        bool hasHit = false;
        for (int child = 0; child < page->childCount(); ++child) {
            const bool hit = hasAllWords(page->child(child)->data(0, wordsRole).toString(), words);
            page->child(child)->setHidden(!hit);
            hasHit |= hit;
        }
        page->setHidden(!hasHit && !hasAllWords(page->data(0, wordsRole).toString(), words));
        page->setExpanded(hasHit && !words.isEmpty());
    }
}

void HelpWindow::showFirstHit()
{
    QTreeWidgetItemIterator item(tvwIndex, QTreeWidgetItemIterator::NotHidden);
    // The words of a page are all in its sections, which are the better results.
    if (*item && (*item)->isExpanded())
        ++item;
    if (*item)
        tvwIndex->setCurrentItem(*item);
}

void HelpWindow::showItem(const QTreeWidgetItem* item)
{
    if (item)
        txtSeite->setSource(item->data(0, urlRole).toUrl());
}

void HelpWindow::followPage(const QUrl& url)
{
    const QTreeWidgetItem* current = tvwIndex->currentItem();
    if (current && current->data(0, urlRole).toUrl() == url)
        return;
    for (int row = 0; row < tvwIndex->topLevelItemCount(); ++row) {
        QTreeWidgetItem* page = tvwIndex->topLevelItem(row);
        if (!url.matches(page->data(0, urlRole).toUrl(), QUrl::RemoveFragment))
            continue;
        const QSignalBlocker quiet(tvwIndex);
        tvwIndex->setCurrentItem(page);
        return;
    }
}

void HelpWindow::showTopic(int topic)
{
    const auto found = std::ranges::find(m_pages, topic, &HelpPage::topic);
    const HelpPage& page = found == m_pages.end() ? m_pages.first() : *found;
    txtSeite->setSource(urlOf(page));
    followPage(urlOf(page));
}

void HelpWindow::zoom(int steps)
{
    const int wanted = std::clamp(m_zoom + steps, smallestZoom, largestZoom);
    txtSeite->zoomIn(wanted - m_zoom);
    m_zoom = wanted;
}

} // namespace kalmo::ui
