#include "ui/window/NaviTree.h"

#include "link/PhoneModels.h"
#include "ui/icons/Icons.h"

#include <QHeaderView>
#include <QKeyEvent>

#include <algorithm>
#include <array>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

constexpr int keyRole = Qt::UserRole;

bool always(int)
{
    return true;
}

bool hasProviders(int phoneType)
{
    return !link::hasVcards(phoneType);
}

constexpr std::array<NodeRow, 12> nodeTable = {{
    {nodes::Phone, u"Telefon", u"tel", u"", always},
    {nodes::Phonebook, u"Telefonbuch", u"tb", nodes::Phone, always},
    {nodes::AreaCodes, u"Vorwahlen", u"Vw", nodes::Phonebook, link::hasAreaCodes},
    {nodes::Files, u"Dateisystem", u"ffs", nodes::Phone, link::hasFileSystem},
    {nodes::Providers, u"Provider", u"ne", nodes::Phone, hasProviders},
    {nodes::Sounds, u"Klingeltöne", u"Sounds", nodes::Phone, link::hasRingtoneSettings},
    {nodes::Diverse, u"Diverses", u"div", nodes::Phone, always},
    {nodes::Settings, u"Kalmo Einstellungen", u"setup", u"", always},
    {nodes::Sponsors, u"Sponsoren", u"sponsor", u"", always},
    {nodes::SponsorOrvane, u"Orvane", u"sponsor", nodes::Sponsors, always},
    {nodes::SponsorNorva, u"Norva", u"sponsor", nodes::Sponsors, always},
    {nodes::Bluetooth, u"Bluetooth Hinweis", u"BT", u"", always},
}};

} // namespace

QList<NodeRow> navigationNodes(int phoneType)
{
    QList<NodeRow> rows;
    for (const NodeRow& row : nodeTable) {
        if (row.isOffered(phoneType))
            rows.append(row);
    }
    return rows;
}

NaviTree::NaviTree(int phoneType, QWidget* parent) : QTreeWidget(parent)
{
    setObjectName(u"tvwNavi"_s);
    setAccessibleName(u"Navigation"_s);
    setHeaderHidden(true);
    setColumnCount(1);
    setFrameShape(QFrame::NoFrame);
    setIconSize(QSize(22, 22));
    setIndentation(18);
    for (const NodeRow& row : navigationNodes(phoneType)) {
        auto* item = row.parent.isEmpty() ? new QTreeWidgetItem(this)
                                          : new QTreeWidgetItem(itemOf(row.parent.toString()));
        item->setText(0, row.caption.toString());
        item->setIcon(0, icon(row.icon.toString()));
        item->setData(0, keyRole, row.key.toString());
        item->setSizeHint(0, QSize(0, fontMetrics().height() + 14));
    }
    expandAll();
    setMinimumWidth(widestNode());
    connect(this, &QTreeWidget::itemClicked, this,
            [this](const QTreeWidgetItem* item) { Q_EMIT nodeClicked(item->data(0, keyRole).toString()); });
}

/// Wide enough for each caption. The tree itself knows the widths only of items that it has painted.
int NaviTree::widestNode() const
{
    int widest = 0;
    for (QTreeWidgetItemIterator item(const_cast<NaviTree*>(this)); *item; ++item) {
        const int levels = (*item)->parent() ? 2 : 1;
        widest = std::max(widest, levels * indentation() + fontMetrics().horizontalAdvance((*item)->text(0)));
    }
    return widest + iconSize().width() + 2 * indentation();
}

bool NaviTree::selectNode(const QString& key)
{
    QTreeWidgetItem* item = itemOf(key);
    if (item)
        setCurrentItem(item);
    return item;
}

QString NaviTree::currentKey() const
{
    return currentItem() ? currentItem()->data(0, keyRole).toString() : QString();
}

void NaviTree::keyPressEvent(QKeyEvent* event)
{
    const bool isCall =
        event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Space;
    if (isCall && currentItem())
        Q_EMIT nodeClicked(currentKey());
    else
        QTreeWidget::keyPressEvent(event);
}

QTreeWidgetItem* NaviTree::itemOf(const QString& key) const
{
    for (QTreeWidgetItemIterator item(const_cast<NaviTree*>(this)); *item; ++item) {
        if ((*item)->data(0, keyRole).toString() == key)
            return *item;
    }
    return nullptr;
}

} // namespace kalmo::ui
