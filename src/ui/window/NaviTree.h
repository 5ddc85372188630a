#pragma once

#include <QTreeWidget>

namespace kalmo::ui {

/// Keys of the nodes.
namespace nodes {
inline constexpr QStringView Phone = u"PHONE";
inline constexpr QStringView Phonebook = u"TB";
inline constexpr QStringView AreaCodes = u"VW";
inline constexpr QStringView Files = u"FFS";
inline constexpr QStringView Providers = u"NE";
inline constexpr QStringView Sounds = u"SOUND";
inline constexpr QStringView Diverse = u"DIV";
inline constexpr QStringView Settings = u"SETUP";
inline constexpr QStringView Sponsors = u"SPONSOR";
inline constexpr QStringView SponsorOrvane = u"SPONSOR_ORV";
inline constexpr QStringView SponsorNorva = u"SPONSOR_NORVA";
inline constexpr QStringView Bluetooth = u"BT";
} // namespace nodes

/// A node of the navigation. The table's order is that of the tree; a child comes after its parent.
struct NodeRow
{
    QStringView key;
    QStringView caption;
    QStringView icon;
    QStringView parent; ///< key, empty for a root
    bool (*isOffered)(int phoneType);
};

/// The nodes that a family of handsets gets.
QList<NodeRow> navigationNodes(int phoneType);

/// `tvwNavi`. A click on a node, or Enter on the current one, emits nodeClicked. Moving the cursor alone does
/// not, since many sections begin with a long exchange with the phone.
class NaviTree : public QTreeWidget
{
    Q_OBJECT

public:
    explicit NaviTree(int phoneType, QWidget* parent = nullptr);

    /// Makes a node the current one without entering its section. Returns false if there is none of that key.
    bool selectNode(const QString& key);
    QString currentKey() const;

Q_SIGNALS:
    void nodeClicked(const QString& key);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    int widestNode() const;
    QTreeWidgetItem* itemOf(const QString& key) const;
};

} // namespace kalmo::ui
