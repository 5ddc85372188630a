#pragma once

#include "handset/classic/ClassicWire.h"

#include <QJsonArray>

#include <vector>

namespace kalmo::handset {

/// The phonebook or the provider list of a classic handset. It is read and written from first to last only.
struct ClassicStore
{
    StoreKind kind;
    int capacity = 0; ///< entries
    std::vector<ClassicEntry> entries = {};
    bool open = false;
    size_t next = 0; ///< the entry that is read next

    /// Its name in commands.
    QByteArray wireName() const { return kind == StoreKind::Phonebook ? "TB" : "NE"; }
    /// Its name in the memory.
    QString section() const;

    QJsonArray json() const;
    void load(const QJsonArray& json);
};

} // namespace kalmo::handset
