#pragma once

#include "app/Context.h"
#include "operations/RecordFile.h"
#include "operations/SaveFault.h"

namespace kalmo::operations {

/// The records of one phone: before each change what the list held, after it what was done. They are files in
/// the folder Verlauf/<model>_<serial> of the storage folder, one for each change. A file is always replaced
/// whole, so a kill at any moment leaves either no record or a complete one. No two records of a storage
/// folder have the same id, whatever their phones.
class Records
{
public:
    /// The folder is made with the first record.
    Records(const app::Context& context, PhoneIdentity phone);

    /// Writes a record with the state Unknown. `entries` is the number of entries of the list before the
    /// change, `before` the phone's own bytes. Returns its id once everything is on the disk. Without an id
    /// nothing may be changed in the phone, and `fault` says why.
    std::optional<QString> begin(RecordedList list, RecordCause cause, int entries,
                                 std::vector<RecordedPart> before, SaveFault* fault = nullptr);

    /// Adds what the change did. Returns false if the file could not be written; the record then keeps the
    /// state Unknown. After a change that is done the oldest records beyond `mostRecords` are deleted. Before
    /// that none goes: the oldest may be the state that this change puts back.
    bool finish(const QString& id, State state, const QJsonObject& details = {});

    /// All records of this phone, the newest first, without their parts. Those of a phone of the same model
    /// with unknown serial number are among them: see mayBeOfAnotherPhone(). Files that are no record are
    /// skipped.
    std::vector<Record> all() const;

    /// One record of these with its parts; nothing if there is no such record or it is broken.
    std::optional<Record> read(const QString& id) const;

    /// The records of all phones in the storage folder, the newest first, without their parts.
    static std::vector<Record> ofAllPhones(const app::Context& context);

    const PhoneIdentity& phone() const { return m_phone; }
    QString folder() const { return m_folder; }

    /// Returns true if the record says the model only: another handset of that model may have been changed.
    static bool mayBeOfAnotherPhone(const Record& record);

    static constexpr int mostRecords = 100;

private:
    QString pathOf(qint64 number) const;
    QString folderOf(const PhoneIdentity& phone) const;
    std::vector<PhoneIdentity> candidates() const;
    QString lockPath() const;
    qint64 nextNumber() const;
    void removeLeftovers() const;
    void removeOldest() const;

    const app::Context& m_context;
    PhoneIdentity m_phone;
    QString m_root;
    QString m_folder;
};

} // namespace kalmo::operations
