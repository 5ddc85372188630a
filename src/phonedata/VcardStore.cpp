// Sessions and reading. Changes are in VcardStoreWriting.cpp.

#include "phonedata/VcardStore.h"

#include "app/SettingsKeys.h"
#include "app/Version.h"
#include "phonedata/BackupFiles.h"
#include "phonedata/VcfCodec.h"
#include "phonedata/VcfFiles.h"

#include <QSet>

#include <algorithm>

namespace kalmo::phonedata {

using namespace Qt::StringLiterals;
using obex::clsMmc;
using toolkit::Answer;
using toolkit::Progress;

namespace {

bool areEqual(const toolkit::ListRow& shown, const toolkit::ListRow& row)
{
    const auto isSameCell = [](const toolkit::ListCell& left, const toolkit::ListCell& right) {
        return left.text == right.text && left.tag == right.tag;
    };
    return shown.key == row.key &&
           std::equal(shown.cells.begin(), shown.cells.end(), row.cells.begin(), row.cells.end(), isSameCell);
}

} // namespace

VcardStore::Session::Session(VcardStore& store, const QString& name, const Progress& progress)
    : m_keep(store.weak_from_this().lock()), m_store(store), m_operation(store.client(), name, progress),
      m_busy(store.client())
{
}

bool VcardStore::Session::open()
{
    if (!m_operation.isAllowed() || m_store.m_session)
        return false;
    m_store.m_session = this;
    return m_store.m_client->Online(progress());
}

VcardStore::Session::~Session()
{
    if (m_store.m_session != this)
        return;
    m_store.m_session = nullptr;
    clsMmc& client = *m_store.m_client;
    if (client.ChannelState() != clsMmc::ChannelOpen)
        return;
    client.line().pause(settlePause);
    client.Offline(progress());
}

VcardStore::VcardStore(std::shared_ptr<clsMmc> client, toolkit::ListRows& list)
    : m_client(std::move(client)), m_list(&list)
{
}

VcardStore::~VcardStore() = default;

QString VcardStore::inWords(std::optional<int> count)
{
    return count ? QString::number(*count) : u"?"_s;
}

std::optional<int> VcardStore::freePlaces() const
{
    return m_capacity ? std::optional(*m_capacity - m_used.value_or(0)) : std::nullopt;
}

void VcardStore::setRoom(std::optional<int> capacity, std::optional<int> used)
{
    m_capacity = capacity;
    m_used = used;
    Q_EMIT capacityChanged();
}

void VcardStore::forget()
{
    m_list->clear();
    m_cards = {};
    m_last.reset();
    m_isListKnown = false;
    forgetCapacity();
}

bool VcardStore::learnRoom(tVcfInfo& info, const Progress& progress)
{
    if (!VcfGetInfo(*m_client, info, progress))
        return false;
    setRoom(info.intKap, info.intBelegt);
    return true;
}

/// Runs work on a connection to a target: within the session that is open, or in one of its own. Changes need
/// the second connection, on top of the first: on that one alone the phone reports the result of a change.
bool VcardStore::inSession(const QString& name, const Progress& progress, obex::Target target,
                           const Work& work)
{
    const auto isConnected = [&](const Progress& shown) {
        return m_client->target() == target || m_client->connect(shown, target);
    };
    if (m_session) {
        const clsMmc::Operation operation(*m_client, name, progress);
        return operation.isAllowed() && isConnected(operation.progress()) && work(operation.progress());
    }
    Session session(*this, name, progress);
    return session.open() && isConnected(session.progress()) && work(session.progress());
}

std::optional<ContactReading> VcardStore::readCards(const Progress& progress)
{
    std::optional<ContactReading> reading;
    inSession(u"VcfReadList"_s, progress, obex::Target::FlexMemory, [&](const Progress& shown) {
        tVcfInfo info;
        const bool isCounted = learnRoom(info, shown);
        QByteArray object;
        // A phone that has stayed silent is not asked again: that would only show a second timeout.
        if (!m_client->isInStep() || !VcxReadBytes(*m_client, KindContact, object, shown))
            return false;
        reading = {parseCards(object), isCounted ? std::optional(info) : std::nullopt};
        if (reading->cards.endsBroken)
            m_client->noteDecoding(true);
        markOwnCard(reading->cards, isCounted ? std::optional<int>(info.intBelegt) : std::nullopt);
        m_cards = reading->cards;
        m_last = reading;
        return true;
    });
    return reading;
}

bool VcardStore::VcfReadList(const Progress& progress)
{
    const bool isAllowed = !m_client->line().isWaiting();
    std::vector<toolkit::ListRow> rowsBefore;
    std::optional<ContactReading> readingBefore;
    const bool wasKnown = m_isListKnown;
    if (isAllowed) {
        for (int row = 0; row < m_list->count(); ++row)
            rowsBefore.push_back(m_list->row(row));
        readingBefore = std::exchange(m_last, std::nullopt);
        m_list->clear();
        m_isListKnown = false;
    }
    const auto read = [this](const Progress& shown) {
        const auto reading = readCards(shown);
        if (!reading || !acceptCount(*reading))
            return false;
        showReading(*reading);
        m_isListKnown = m_isListKnown || m_list->count() > 0;
        return true;
    };
    const bool isRead = inSession(u"VcfReadList"_s, progress, obex::Target::FlexMemory, read);
    if (isAllowed && !isRead && progress.cancelled()) {
        m_list->clear();
        m_list->addAll(std::move(rowsBefore));
        m_last = std::move(readingBefore);
        m_isListKnown = wasKnown;
    }
    return isRead;
}

/// Asks about a reading whose number of cards is not the phone's own count. Returns true if it may be shown.
bool VcardStore::acceptCount(const ContactReading& reading)
{
    // An empty piece follows the last card, and the phone's own card comes before the contacts.
    const int upperBound = reading.cards.upperBound;
    if (!reading.info || upperBound <= 0 || upperBound - 1 == reading.info->intBelegt)
        return true;
    const Answer answer = context().dialogs.Show(
        {.text =
             u"Warnung!\nDas Telefon meldet, daß es %1 Einträge im Telefonbuch gibt. Beim Auslesen wurden "
             u"aber nur %2 Einträge übermittelt. Es wird empfohlen, den Einlesevorgang zu wiederholen.\n\n"
             u"Sollen die eingelesenen Einträge trotzdem angezeigt werden?"_s.arg(reading.info->intBelegt)
                 .arg(upperBound),
         .title = app::productName() + u" - Lesefehler"_s,
         .buttons = toolkit::Buttons::YesNo,
         .icon = toolkit::Icon::Question,
         .defaultButton = Answer::No});
    if (answer != Answer::Yes)
        forgetCapacity();
    return answer == Answer::Yes;
}

void VcardStore::showReading(const ContactReading& reading)
{
    std::vector<toolkit::ListRow> added;
    QSet<QString> keys;
    for (const ContactCard& card : reading.cards.cards) {
        toolkit::ListRow row = toRow(card.entry);
        const int shown = keys.contains(row.key) ? -1 : m_list->indexOfKey(row.key);
        keys.insert(row.key);
        if (shown >= 0 && areEqual(m_list->row(shown), row))
            continue;
        if (shown >= 0)
            m_list->removeAt(shown);
        added.push_back(std::move(row));
    }
    for (int index = m_list->count() - 1; index >= 0; --index) {
        if (!keys.contains(m_list->row(index).key))
            m_list->removeAt(index);
    }
    m_list->addAll(std::move(added));
    m_isListKnown = reading.isWhole();
}

QString VcardStore::backUp()
{
    if (!app::isOn(context().settings, app::keys::AutoBackup))
        return {};
    const QString path = backupPath(context(), u"Backup von "_s, u".csv"_s);
    return VCF2BackupFile(context(), *m_list, path) ? path : QString();
}

} // namespace kalmo::phonedata
