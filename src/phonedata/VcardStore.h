#pragma once

#include "obex/clsMmcOperation.h"
#include "phonedata/IrmcItems.h"

#include <algorithm>
#include <functional>
#include <vector>

namespace kalmo::phonedata {

/// A reading of the phonebook.
struct ContactReading
{
    VcfCards cards;
    std::optional<tVcfInfo> info; ///< nothing where "info.log" could not be read

    /// Contacts that came, without the phone's own card, which comes before them.
    int arrived() const { return std::max(cards.upperBound - 1, 0); }
    /// Returns true if as many cards came as the phone counts, or if it does not say how many there are. That
    /// is enough to show the contacts.
    bool isWhole() const { return !info || cards.isWhole(info->intBelegt); }
    /// Returns true if the phone's own count confirms the reading. Only this tells which card is the phone's
    /// own one and which contacts are missing.
    bool isConfirmed() const { return info && isWhole(); }
};

/// A contact to be written.
struct ContactWrite
{
    tVcfEntry entry;      ///< a new one without a LUID
    QByteArray card = {}; ///< text of its card; empty for one that is built of the entry
};

/// Result of a write or a delete.
struct ContactReport
{
    QStringList luids = {};   ///< of the entries that the phone confirmed, in that order
    int sent = 0;             ///< entries whose bytes all went out
    bool unconfirmed = false; ///< the last of them was neither confirmed nor refused
    bool refused = false;     ///< the last of them was refused by the phone
    QString backup = {};      ///< path of the automatic backup, empty for none
};

/// Seconds that the phone needs after its work before the session ends.
inline constexpr double settlePause = 1;

/// The vCard phonebook of a phone and the list that shows it. Every change goes to the phone at once. Each
/// operation takes a session of its own and leaves the line to AT commands again in any case, unless it runs
/// within a Session. The client's BusyOn and BusyOff are raised around each of them as a whole.
///
/// Held by std::shared_ptr: an operation keeps the store until it has ended. The list outlives the store.
class VcardStore : public QObject, public std::enable_shared_from_this<VcardStore>
{
    Q_OBJECT

public:
    class Session;

    /// `list` is lvwVCF, as makeVcfRows() makes it.
    VcardStore(std::shared_ptr<obex::clsMmc> client, toolkit::ListRows& list);
    ~VcardStore() override;

    obex::clsMmc& client() const { return *m_client; }
    app::Context& context() const { return m_client->line().context(); }
    toolkit::ListRows* list() const { return m_list; }

    /// Capacity and used entries, "?" where they are not known.
    QString lblVCFkap() const { return inWords(m_capacity); }
    QString lblVCFbelegt() const { return inWords(m_used); }
    /// Their difference. Nothing where the capacity is not known; used entries that are not known count as 0.
    std::optional<int> freePlaces() const;

    /// Reads the phonebook into the list. If that returns false the list is empty, or as it was after a stop
    /// by the user. The phone's failures have been shown, but not that the command as a whole has failed.
    bool VcfReadList(const toolkit::Progress& progress);

    /// Empties the list and forgets the capacity: another phone may be on the line, with LUIDs of its own.
    void forget();

    /// Writes entries one by one, until the first that fails, and adds a row for each: entries without a LUID
    /// are new. The row of an entry that the phone has not confirmed shows that: a new one gets a row without
    /// a valid LUID, a changed one loses its LUID in the row that it has. The cancel box ends it between two.
    /// Outside a Session the automatic backup is made first. Part of the described interface.
    bool VcfWriteList(const std::vector<tVcfEntry>& entries, const toolkit::Progress& progress,
                      ContactReport* report = nullptr);
    /// The same, where an entry may come with the text of its card.
    bool writeContacts(const std::vector<ContactWrite>& writes, const toolkit::Progress& progress,
                       ContactReport* report = nullptr);

    /// Deletes the selected rows in the phone, from the last to the first, and removes their rows. The cancel
    /// box ends it between two. Outside a Session the automatic backup is made first. Part of the described
    /// interface.
    bool VcfDeleteRows(const toolkit::Progress& progress, ContactReport* report = nullptr);
    /// The same for contacts by their LUIDs, in that order.
    bool deleteContacts(const QStringList& luids, const toolkit::Progress& progress,
                        ContactReport* report = nullptr);

    /// Reads the phonebook and the capacity; the list stays as it is. Nothing after a failure, which has been
    /// shown.
    std::optional<ContactReading> readCards(const toolkit::Progress& progress);
    /// The last reading, null if there is none or a change followed it.
    const ContactReading* lastReading() const { return m_last ? &*m_last : nullptr; }
    /// Makes the list show a reading. Rows that show the same already stay where they are.
    void showReading(const ContactReading& reading);
    /// Returns true if the list shows the phone's contacts: a whole reading, or one that the user has
    /// accepted, with the changes since.
    bool isListKnown() const { return m_isListKnown; }

    /// The automatic backup: the list as a table, if the settings want it. Path of the file, empty for none.
    QString backUp();

Q_SIGNALS:
    /// lblVCFkap or lblVCFbelegt may have changed.
    void capacityChanged();

private:
    using Work = std::function<bool(const toolkit::Progress& shown)>;
    bool inSession(const QString& name, const toolkit::Progress& progress, obex::Target target,
                   const Work& work);
    bool changeInSession(const QString& name, const toolkit::Progress& progress, ContactReport& report,
                         const Work& work);
    static QString inWords(std::optional<int> count);
    void setRoom(std::optional<int> capacity, std::optional<int> used);
    void forgetCapacity() { setRoom({}, {}); }
    bool learnRoom(tVcfInfo& info, const toolkit::Progress& progress);
    bool acceptCount(const ContactReading& reading);
    bool reserveRoom(int upperBound, const toolkit::Progress& progress);
    bool writeAll(const std::vector<ContactWrite>& writes, const toolkit::Progress& progress,
                  ContactReport& report);
    bool writeOne(const ContactWrite& write, const toolkit::Progress& progress, int index, int total,
                  ContactReport& report);
    void noteWritten(tVcfEntry entry, const QString& luid);
    void showWritten(const tVcfEntry& entry);
    void showUnconfirmed(tVcfEntry entry);
    bool deleteAll(const QStringList& luids, const toolkit::Progress& progress, ContactReport& report);
    void removeRow(const QString& luid);
    void removeLastRow(const QString& luid);

    std::shared_ptr<obex::clsMmc> m_client;
    toolkit::ListRows* m_list;
    VcfCards m_cards; // of the last reading, without those that were changed since
    std::optional<ContactReading> m_last;
    bool m_isListKnown = false;
    Session* m_session = nullptr;
    std::optional<int> m_capacity;
    std::optional<int> m_used; // entries
};

/// One session with the phone around several operations of a store. Ends it and gives the line back to AT
/// commands when it goes.
class VcardStore::Session
{
public:
    Session(VcardStore& store, const QString& name, const toolkit::Progress& progress);
    ~Session();
    Q_DISABLE_COPY_MOVE(Session)

    /// Opens the data channel and connects. A failure has been shown.
    bool open();
    const toolkit::Progress& progress() const { return m_operation.progress(); }

private:
    std::shared_ptr<VcardStore> m_keep;
    VcardStore& m_store;
    obex::clsMmc::Operation m_operation;
    obex::clsMmc::Busy m_busy;
};

} // namespace kalmo::phonedata
