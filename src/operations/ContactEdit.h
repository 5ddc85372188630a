#pragma once

#include "operations/ContactPlan.h"
#include "operations/Outcome.h"
#include "operations/RecordFile.h"

#include <functional>

namespace kalmo::operations {

/// Part of the record of a change that was made on a doubtful reading: "pb.vcf" may lack contacts.
inline const QString incompletePart = QStringLiteral("pb.incomplete");

/// Reads the cards of an open session, and once more if the phone's own count does not confirm the first
/// reading, of which `again` is informed before. Nothing after a failure, which has been reported.
std::optional<phonedata::ContactReading>
readUntilConfirmed(phonedata::VcardStore& store, const toolkit::Progress& progress,
                   const std::function<void(const phonedata::ContactReading& first)>& again = {});

/// Differences between the programs that change contacts.
struct ContactPolicy
{
    /// Contacts are changed although a reading may lack some: the record says so. The contacts that it lacks
    /// are not touched. New ones need the phone's own count all the same.
    bool mayUseDoubtfulReading = false;
    /// A reading that the phone's own count does not confirm is repeated once.
    bool readsAgain = false;
    /// New contacts that do not fit are refused before the first change. Without it the store's own check
    /// shows that, and the phone refuses the one entry that this check lets pass.
    bool checksRoom = false;
    enum class Backup {
        Table, ///< the list as a table, if the settings want one; a change does not depend on it
        Json,  ///< all contacts with their LUIDs; nothing is changed before it is on the disk
    };
    Backup backup = Backup::Table;
};

/// The card with the content of a contact that was not there before. Null without one.
const phonedata::ContactCard* findAdded(const phonedata::VcfCards& cards, const phonedata::VcfCards& before,
                                        const phonedata::tVcfEntry& contact);

/// Facts about a change of contacts.
struct ContactOutcome
{
    Outcome facts;
    /// The phone answered each request of the change as it should, the last query of the capacity included.
    bool isAnswered = true;
    /// The phonebook was changed elsewhere since begin(), so nothing was sent.
    bool hasChangedMeanwhile = false;
    QStringList
        luids; ///< of the contacts that were written or deleted, in that order; as far as they are known
    QString refusedFor; ///< LUID or name of the contact at which it ended, empty where it did not
    /// Contacts that the phone holds otherwise than they were written: as written, and as held.
    std::vector<std::pair<phonedata::tVcfEntry, phonedata::tVcfEntry>> mismatches;
};

/// A change of a vCard phonebook in one session: begin() reads what the phone holds, the program plans and
/// asks, apply() saves the raw cards in a record, makes the changes, reads back and compares. The session
/// ends when this goes.
class ContactEdit
{
public:
    /// Progress may be null where there is nothing to report to.
    ContactEdit(std::shared_ptr<phonedata::VcardStore> store, ContactPolicy policy,
                const toolkit::Progress& progress);
    ~ContactEdit();
    Q_DISABLE_COPY_MOVE(ContactEdit)

    /// Opens the session and reads the phonebook. State Done means that apply() may follow; else nothing was
    /// sent that changes the phone.
    Outcome begin();
    /// The phone's contacts before the change.
    const phonedata::ContactReading& held() const { return m_held; }
    /// Free places of the phone, nothing if it does not say.
    std::optional<int> freePlaces() const;

    /// Makes the changes of a plan; the record says `cause`. If a question has taken long, it reads the
    /// phonebook again before: another content is Cause::Doubtful, and nothing is sent.
    ContactOutcome apply(const ContactPlan& plan, RecordCause cause);

    /// Ends the session, as going does.
    void end() { m_session.reset(); }

    /// Contacts of the phone after the change, nothing if they could not be read back as a whole.
    const std::optional<phonedata::ContactReading>& heldAfter() const { return m_after; }

private:
    struct Work;
    Cause renewReading();
    bool saveBackup(Outcome& facts);
    bool write(const std::vector<phonedata::ContactWrite>& writes, Work& work);
    bool remove(const std::vector<phonedata::tVcfEntry>& contacts, Work& work);
    void carryOut(const ContactPlan& plan, Work& work);
    void readBack(const ContactPlan& plan, Work& work);
    Cause causeOfFailure(const phonedata::ContactReport* report) const;

    std::shared_ptr<phonedata::VcardStore> m_store;
    ContactPolicy m_policy;
    toolkit::Progress m_progress;
    QString m_table; // path of the backup as a table
    std::unique_ptr<phonedata::VcardStore::Session> m_session;
    phonedata::ContactReading m_held;
    QDateTime m_readAt;
    std::optional<phonedata::ContactReading> m_after;
};

} // namespace kalmo::operations
