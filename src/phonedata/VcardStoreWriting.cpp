// Writing and deleting contacts, and the rows that show them.

#include "phonedata/VcardStore.h"

namespace kalmo::phonedata {

using namespace Qt::StringLiterals;
using obex::clsMmc;
using toolkit::Progress;

namespace {

/// For the steps of an operation whose bar counts entries.
Progress withoutBar(Progress progress)
{
    progress.bar = nullptr;
    return progress;
}

/// Notes one item's result. Returns true if the phone confirmed it.
bool note(ItemResult result, clsMmc& client, ContactReport& report)
{
    report.sent += result == ItemResult::NotSent ? 0 : 1;
    report.unconfirmed = result == ItemResult::Unconfirmed;
    report.refused = result == ItemResult::Refused;
    if (result == ItemResult::Written)
        client.showTimeoutsOnce();
    return result == ItemResult::Written;
}

} // namespace

bool VcardStore::changeInSession(const QString& name, const Progress& progress, ContactReport& report,
                                 const Work& work)
{
    report = {};
    m_last.reset();
    if (!m_session && !m_client->line().isWaiting())
        report.backup = backUp();
    return inSession(name, progress, obex::Target::IrMC, work);
}

/// Shows that there are too few free places. The upper bound of the entries is compared on purpose, not their
/// count: the phone itself refuses the one entry too many, and such a list is written up to there.
bool VcardStore::reserveRoom(int upperBound, const Progress& progress)
{
    tVcfInfo info;
    if (!learnRoom(info, progress))
        return false;
    if (upperBound <= info.intKap - info.intBelegt)
        return true;
    context().dialogs.Show(
        {.text =
             u"Es stehen nicht genügend freie Speicherplätze zur Verfügung, um %1 Einträge zu speichern."_s
                 .arg(upperBound),
         .icon = toolkit::Icon::Information,
         .english = u"The phone has no room for that many contacts."_s});
    return false;
}

bool VcardStore::VcfWriteList(const std::vector<tVcfEntry>& entries, const Progress& progress,
                              ContactReport* report)
{
    std::vector<ContactWrite> writes;
    for (const tVcfEntry& entry : entries)
        writes.push_back({entry});
    return writeContacts(writes, progress, report);
}

bool VcardStore::writeContacts(const std::vector<ContactWrite>& writes, const Progress& progress,
                               ContactReport* report)
{
    ContactReport scratch;
    ContactReport& noted = report ? *report : scratch;
    noted = {};
    if (writes.empty())
        return true;
    return changeInSession(u"VcfWriteList"_s, progress, noted, [&](const Progress& shown) {
        const auto upperBound = static_cast<int>(writes.size()) - 1;
        if (writes.front().entry.luid.isEmpty() && !reserveRoom(upperBound, withoutBar(shown)))
            return false;
        shown.start(0, upperBound + 1);
        const bool done = writeAll(writes, shown, noted);
        shown.hide();
        return done;
    });
}

bool VcardStore::writeAll(const std::vector<ContactWrite>& writes, const Progress& progress,
                          ContactReport& report)
{
    const auto count = static_cast<int>(writes.size());
    for (int index = 0; index < count; ++index) {
        if (progress.cancelled() ||
            !writeOne(writes[static_cast<size_t>(index)], withoutBar(progress), index + 1, count, report))
            return false;
        progress.step();
        m_client->CdRoot();
    }
    return true;
}

bool VcardStore::writeOne(const ContactWrite& write, const Progress& progress, int index, int total,
                          ContactReport& report)
{
    qint32 counter = 0;
    if (!m_client->CDluidPB() || !VcfGetCc(*m_client, counter, progress))
        return false;
    const tVcfEntry& entry = write.entry;
    const ContactCard* before = entry.luid.isEmpty() ? nullptr : m_cards.find(entry.luid);
    const QByteArray card = write.card.isEmpty() ? cardFor(context(), entry, before) : write.card;
    QString luid;
    const ItemResult result = writeCard(*m_client, card, entry.luid, counter, luid, progress, index, total);
    if (result == ItemResult::Unconfirmed || result == ItemResult::Written)
        std::erase_if(m_cards.cards, [&](const ContactCard& held) { return held.entry.luid == entry.luid; });
    if (result == ItemResult::Unconfirmed)
        showUnconfirmed(entry);
    if (!note(result, *m_client, report))
        return false;
    report.luids.append(luid);
    noteWritten(entry, luid);
    return true;
}

void VcardStore::noteWritten(tVcfEntry entry, const QString& luid)
{
    if (entry.luid.isEmpty() && m_used)
        setRoom(m_capacity, *m_used + 1);
    if (luid != entry.luid)
        removeRow(entry.luid);
    entry.luid = luid;
    showWritten(entry);
}

void VcardStore::removeRow(const QString& luid)
{
    const int row = !luid.isEmpty() ? m_list->indexOfKey(vcfKey(luid)) : -1;
    if (row >= 0)
        m_list->removeAt(row);
}

/// Removes the last row with a LUID, whatever its key.
void VcardStore::removeLastRow(const QString& luid)
{
    int row = m_list->count() - 1;
    while (row >= 0 && m_list->text(row, VcfLuid) != luid)
        --row;
    if (row >= 0)
        m_list->removeAt(row);
}

void VcardStore::showWritten(const tVcfEntry& entry)
{
    toolkit::ListRow row = toRow(entry);
    const int old = m_list->indexOfKey(row.key);
    if (old >= 0 && isNoValidLuid(entry.luid)) // another one of the same second
        row.key.clear();
    else if (old >= 0)
        m_list->removeAt(old);
    m_list->add(std::move(row));
}

/// The phone may have the entry or not, and may have given it another LUID.
void VcardStore::showUnconfirmed(tVcfEntry entry)
{
    const QString mark = noValidLuid(context().clock.Now());
    if (entry.luid.isEmpty()) {
        setRoom(m_capacity, {});
        entry.luid = mark;
        showWritten(entry);
        return;
    }
    for (int index = 0; index < m_list->count(); ++index) {
        if (m_list->text(index, VcfLuid) == entry.luid)
            m_list->setText(index, VcfLuid, mark);
    }
}

bool VcardStore::VcfDeleteRows(const Progress& progress, ContactReport* report)
{
    QStringList luids;
    // From the last to the first, as they are deleted.
    for (int row = m_list->count() - 1; row >= 0; --row) {
        if (m_list->row(row).selected)
            luids.append(m_list->text(row, VcfLuid));
    }
    return deleteContacts(luids, progress, report);
}

bool VcardStore::deleteContacts(const QStringList& luids, const Progress& progress, ContactReport* report)
{
    ContactReport scratch;
    ContactReport& noted = report ? *report : scratch;
    return changeInSession(u"VcfDeleteRows"_s, progress, noted, [&](const Progress& shown) {
        const bool done = deleteAll(luids, shown, noted);
        shown.hide();
        if (!done)
            return false;
        if (m_client->stopAsked()) {
            forgetCapacity(); // nothing can be asked any more
            return true;
        }
        m_client->line().pause(settlePause);
        tVcfInfo info;
        return learnRoom(info, withoutBar(shown));
    });
}

bool VcardStore::deleteAll(const QStringList& luids, const Progress& progress, ContactReport& report)
{
    const Progress shown = withoutBar(progress);
    qint32 counter = 0;
    if (!m_client->CDluidPB() || !VcfGetCc(*m_client, counter, shown))
        return false;
    const auto total = static_cast<int>(luids.size());
    progress.start(0, total);
    int index = 0;
    for (const QString& luid : luids) {
        if (progress.cancelled() || m_client->stopAsked())
            return true;
        if (counter == -1 && !VcfGetCc(*m_client, counter, shown))
            return false;
        progress.step();
        QString answered = luid;
        const ItemResult result = VcxDel(*m_client, KindContact, answered, counter, shown, ++index, total);
        if (!note(result, *m_client, report))
            return false;
        report.luids.append(luid);
        removeLastRow(luid);
    }
    return true;
}

} // namespace kalmo::phonedata
