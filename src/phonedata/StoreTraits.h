#pragma once

#include "phonedata/ClassicStore.h"

namespace kalmo::phonedata {

/// All that the two classic stores differ in, one row for each.
struct StoreTraits
{
    QByteArrayView wireName; ///< in the commands
    QStringView fileEnding;  ///< of the window's files
    bool hasDates;           ///< entries have dates, VIP marks and sounds besides name and number
    StoreContent PhoneMemory::*content;
    bool PhoneMemory::*dirty;
    std::unique_ptr<toolkit::ListRows> (*makeRows)();
    bool (*read)(const StoreJob& job);
    StoreWriting (*write)(const StoreJob& job, const StoreEntries& wanted);
    QByteArray (*writeCommand)(const ClassicEntry& entry, int phoneType, const SoundList& sounds);
    /// The command for an entry exactly as the phone gave it.
    QByteArray (*commandFromReply)(const QByteArray& reply, int phoneType);
    ClassicEntry (*entryFromReply)(const QByteArray& reply, int phoneType, const SoundList& sounds,
                                   app::DebugLog& log);
    QByteArray (*fileBytes)(const std::vector<ClassicEntry>& entries);
    bool (*load)(app::Context& context, toolkit::ListRows& list, const QString& path);
    bool (*save)(app::Context& context, const toolkit::ListRows& list, const QString& path);
};

const StoreTraits& traitsOf(Store store);

/// The row of a table with one row for each store, the phonebook's first.
template <typename Row>
constexpr const Row& rowOf(const std::array<Row, 2>& table, Store store)
{
    return table[static_cast<size_t>(store) - 1];
}

inline StoreContent& contentOf(PhoneMemory& memory, Store store)
{
    return memory.*(traitsOf(store).content);
}
inline const StoreContent& contentOf(const PhoneMemory& memory, Store store)
{
    return memory.*(traitsOf(store).content);
}

/// Returns true if the list on screen differs from the phone's.
inline bool isDirty(const PhoneMemory& memory, Store store)
{
    return memory.*(traitsOf(store).dirty);
}
inline void setDirty(PhoneMemory& memory, Store store, bool dirty)
{
    memory.*(traitsOf(store).dirty) = dirty;
}

/// Reads or writes a store and notes the time. After a reading the content is known if all entries came, also
/// if the phone did not confirm the end.
bool readStore(const StoreJob& job, Store store);
StoreWriting writeStore(const StoreJob& job, Store store, const StoreEntries& wanted);

} // namespace kalmo::phonedata
