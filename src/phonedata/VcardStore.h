#pragma once

#include "obex/clsMmc.h"
#include "phonedata/CommandResult.h"
#include "phonedata/IrmcAnswers.h"
#include "phonedata/VcfEntry.h"

#include <QPointer>

#include <functional>
#include <vector>

namespace kalmo::phonedata {

/// The vCard phonebook of a phone and the list that shows it. Every change goes to the phone at once, after a
/// backup of the list; each operation takes a session of its own and leaves the line to AT commands again,
/// whatever happens in between. The client's BusyOn and BusyOff stand around each of them as a whole.
///
/// Held by std::shared_ptr: an operation keeps the store until it has ended. The list may go in the middle of
/// one; its owner then abandons the client.
class VcardStore : public QObject, public std::enable_shared_from_this<VcardStore>
{
    Q_OBJECT

public:
    /// `list` is lvwVCF, as makeVcfRows() makes it.
    VcardStore(std::shared_ptr<obex::clsMmc> client, toolkit::ListRows& list);
    ~VcardStore() override;

    obex::clsMmc& client() const { return *m_client; }
    app::Context& context() const { return m_client->line().context(); }
    toolkit::ListRows* list() const { return m_list; }

    /// Capacity and used entries, "?" where they are not known.
    QString lblVCFkap() const { return m_kap; }
    QString lblVCFbelegt() const { return m_belegt; }
    /// Their difference, where what is no number counts as 0.
    int freePlaces() const;

    /// Reads the phonebook into the list. False leaves the list empty; the phone's failures have been told,
    /// but the caller has a word to say of the command as a whole.
    bool VcfReadList(const toolkit::Progress& progress);

    /// Empties the list and forgets the capacity: another phone may be on the line, with LUIDs of its own.
    void forget();

    /// Makes no automatic backups, whatever the settings say, and asks nothing when not all contacts came:
    /// the owner makes his own backups ahead of changes, and compares the list with lblVCFbelegt() himself.
    void leaveToOwner() { m_isLeftToOwner = true; }

    /// What a write or a delete has done, for those who have to say it.
    struct Report
    {
        QStringList luids = {};   ///< of the entries that the phone has taken or deleted, in that order
        bool unconfirmed = false; ///< of one entry more it is not known
        QString backup = {};      ///< path of the automatic backup, empty for none
    };

    /// Writes entries one by one, until the first that fails, and adds a row for each: entries without a LUID
    /// are new. Of an entry that the phone has not confirmed the list says so: a new one gets a row without a
    /// valid LUID, a changed one loses its LUID in the row that it has. The cancel box ends it between two.
    bool VcfWriteList(const std::vector<tVcfEntry>& entries, const toolkit::Progress& progress,
                      Report* report = nullptr);

    /// Deletes the selected rows in the phone, from the last to the first, and removes their rows. The cancel
    /// box ends it between two.
    bool VcfDeleteRows(const toolkit::Progress& progress, Report* report = nullptr);
    /// The command: refuses rows without a valid LUID, asks, deletes. After a failure the list is empty.
    CommandResult VcfDeleteSelected(const toolkit::Progress& progress, Report* report = nullptr);

Q_SIGNALS:
    /// lblVCFkap or lblVCFbelegt may have changed.
    void capacityChanged();

private:
    void setLabels(const QString& kap, const QString& belegt);
    void forgetCapacity() { setLabels(QStringLiteral("?"), QStringLiteral("?")); }
    bool updateLabels(tVcfInfo& info, const toolkit::Progress& progress);
    bool inSession(const QString& name, const toolkit::Progress& progress, Report* change,
                   const std::function<bool(const toolkit::Progress& shown)>& work);
    bool showCards(const QString& text, int belegt);
    bool isComplete(int upperBound, int belegt);
    QString backUp();
    bool hasRoomFor(int upperBound, const toolkit::Progress& progress);
    bool writeEntries(const std::vector<tVcfEntry>& entries, const toolkit::Progress& progress,
                      Report& report);
    bool writeEntry(tVcfEntry entry, const toolkit::Progress& progress, int index, int total, Report& report);
    void showWritten(const tVcfEntry& entry);
    void showUnconfirmed(tVcfEntry entry);
    bool deleteEntries(const toolkit::Progress& progress, Report& report);

    std::shared_ptr<obex::clsMmc> m_client;
    QPointer<toolkit::ListRows> m_list;
    bool m_isLeftToOwner = false;
    QString m_kap = QStringLiteral("?");
    QString m_belegt = QStringLiteral("?");
};

/// What a user can do about an entry without a valid LUID.
QString readAgainAdvice();

} // namespace kalmo::phonedata
