#pragma once

#include "handset/irmc/ContactCard.h"

#include <QJsonArray>

#include <array>
#include <vector>

namespace kalmo::handset {

/// Names of the three stores of a handset.
struct IrmcKind
{
    QString section;   ///< of the memory
    QString folder;    ///< below "telecom"
    QString whole;     ///< object that holds all items
    QString extension; ///< of one item, with its point
    QByteArray begin;  ///< first line of an item
    QByteArray end;    ///< line before which the LUID of an item of the organizer is written
};

enum IrmcStoreIndex { ContactStore, CalendarStore, NoteStore, irmcStores };

const std::array<IrmcKind, irmcStores>& irmcKinds();

struct IrmcItem
{
    QString luid;       ///< constant for the life of the item; the handset gives it
    int changed = 0;    ///< counter of its last change
    QJsonObject fields; ///< a Contact, or "lines" of an object of the organizer
};

/// One store of IrMC objects. Each change raises its counter.
class IrmcStore
{
public:
    explicit IrmcStore(IrmcStoreIndex index, int capacity = 0) : m_index(index), m_capacity(capacity) {}

    const IrmcKind& kind() const { return irmcKinds()[m_index]; }
    int capacity() const { return m_capacity; } ///< items
    int counter() const { return m_counter; }
    const std::vector<IrmcItem>& items() const { return m_items; }
    const IrmcItem* find(const QString& luid) const;

    /// Adds an item under a new LUID, which it returns; empty if the store is full.
    QString add(const QJsonObject& fields);
    /// Gives the first items these LUIDs, for a fault.
    void giveLuids(const QStringList& luids);
    void change(const QString& luid, const QJsonObject& fields);
    void remove(const QString& luid);

    /// An item as it goes over the wire, and all of them. The contacts begin with the handset's own card,
    /// which may have a LUID line.
    QByteArray text(const IrmcItem& item, CardText form) const;
    QByteArray wholeText(CardText form, const QString& ownLuid = {}) const;
    /// Parses an item from a client. Gives nothing if it is no item of this store.
    std::optional<QJsonObject> parse(const QByteArray& text) const;
    /// The store's report about its room, with `surplus` entries more than there are.
    QByteArray infoLog(qsizetype surplus = 0) const;

    QJsonObject json() const;
    /// Takes a section of the memory, or the list of items that a seed may have instead.
    void load(const QJsonValue& json);

private:
    QString freshLuid();

    IrmcStoreIndex m_index;
    int m_capacity;
    int m_counter = 0;
    int m_nextLuid = 1;
    std::vector<IrmcItem> m_items;
};

} // namespace kalmo::handset
