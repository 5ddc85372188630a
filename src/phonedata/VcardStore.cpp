#include "phonedata/VcardStore.h"

#include "app/mdlKonverter.h"
#include "app/SettingsKeys.h"
#include "app/Version.h"
#include "obex/clsMmcOperation.h"
#include "phonedata/BackupFiles.h"
#include "phonedata/IrmcItems.h"
#include "phonedata/VcfCodec.h"
#include "phonedata/VcfFiles.h"

namespace kalmo::phonedata {

using namespace Qt::StringLiterals;
using obex::clsMmc;
using toolkit::Answer;
using toolkit::Buttons;
using toolkit::Icon;
using toolkit::Progress;

namespace {

constexpr double settlePause = 1; // seconds that the phone needs after its work

/// For the steps of an operation whose bar counts entries.
Progress withoutBar(Progress progress)
{
    progress.bar = nullptr;
    return progress;
}

} // namespace

VcardStore::VcardStore(std::shared_ptr<clsMmc> client, toolkit::ListRows& list)
    : m_client(std::move(client)), m_list(&list)
{
}

VcardStore::~VcardStore() = default;

int VcardStore::freePlaces() const
{
    return app::ValInt(m_kap) - app::ValInt(m_belegt);
}

void VcardStore::setLabels(const QString& kap, const QString& belegt)
{
    m_kap = kap;
    m_belegt = belegt;
    Q_EMIT capacityChanged();
}

void VcardStore::forget()
{
    if (m_list)
        m_list->clear();
    forgetCapacity();
}

bool VcardStore::updateLabels(tVcfInfo& info, const Progress& progress)
{
    if (!VcfGetInfo(*m_client, info, progress))
        return false;
    setLabels(QString::number(info.intKap), QString::number(info.intBelegt));
    return true;
}

/// Whether what was read may be shown: all that the phone says to hold, or what the user is content with.
bool VcardStore::isComplete(int upperBound, int belegt)
{
    // Behind the last card stands an empty piece, and ahead of the contacts the phone's own card.
    if (m_isLeftToOwner || upperBound <= 0 || upperBound - 1 == belegt || m_client->isAbandoned())
        return true;
    const Answer answer = context().dialogs.Show(
        {.text =
             u"Warnung!\nDas Telefon meldet, daß es %1 Einträge im Telefonbuch gibt. Beim Auslesen wurden "
             u"aber nur %2 Einträge übermittelt. Es wird empfohlen, den Einlesevorgang zu wiederholen.\n\n"
             u"Sollen die eingelesenen Einträge trotzdem angezeigt werden?"_s.arg(belegt)
                 .arg(upperBound),
         .title = app::productName() + u" - Lesefehler"_s,
         .buttons = Buttons::YesNo,
         .icon = Icon::Question,
         .defaultButton = Answer::No,
         .english =
             u"The phone says that it has %1 contacts, but sent %2. Go on with those?"_s.arg(belegt).arg(
                 upperBound)});
    return answer == Answer::Yes;
}

/// Runs an operation in a session of its own: however it ends, the line is given back to AT commands. One
/// that changes the phone is preceded by a backup and gets the second connection, on top of the first, on
/// which alone the phone says what became of a change.
bool VcardStore::inSession(const QString& name, const Progress& progress, Report* change,
                           const std::function<bool(const Progress& shown)>& work)
{
    const auto keep = weak_from_this().lock();
    clsMmc& client = *m_client;
    const clsMmc::Operation operation(client, name, progress);
    if (!operation.isAllowed())
        return false;
    const clsMmc::Busy busy(client);
    const Progress& shown = operation.progress();
    if (change)
        change->backup = backUp();
    const bool done =
        client.Online(shown) && (!change || client.connect(shown, obex::Target::IrMC)) && work(shown);
    if (client.ChannelState() == clsMmc::ChannelOpen) {
        client.line().pause(settlePause);
        client.Offline(shown);
    }
    return done;
}

bool VcardStore::VcfReadList(const Progress& progress)
{
    if (m_list && !m_client->line().isWaiting())
        m_list->clear();
    return inSession(u"VcfReadList"_s, progress, nullptr, [this](const Progress& shown) {
        tVcfInfo info;
        updateLabels(info, shown);
        QString text;
        return VcxRead(*m_client, KindContact, text, shown) && showCards(text, info.intBelegt);
    });
}

bool VcardStore::showCards(const QString& text, int belegt)
{
    const VcfCards cards = parseCards(text);
    if (!isComplete(cards.upperBound, belegt)) {
        forgetCapacity();
        return false;
    }
    std::vector<toolkit::ListRow> rows;
    for (const tVcfEntry& entry : cards.entries)
        rows.push_back(toRow(entry));
    if (m_list)
        m_list->addAll(std::move(rows));
    return true;
}

/// Path of the backup; empty if there is none.
QString VcardStore::backUp()
{
    if (!m_list || m_isLeftToOwner || !app::isOn(context().settings, app::keys::AutoBackup))
        return {};
    const QString path = backupPath(context(), u"Backup von "_s, u".csv"_s);
    return VCF2BackupFile(context(), *m_list, path) ? path : QString();
}

bool VcardStore::hasRoomFor(int upperBound, const Progress& progress)
{
    tVcfInfo info;
    if (!updateLabels(info, progress))
        return false;
    if (upperBound <= info.intKap - info.intBelegt)
        return true;
    if (!m_client->isAbandoned())
        context().dialogs.Show(
            {.text =
                 u"Es stehen nicht genügend freie Speicherplätze zur Verfügung, um %1 Einträge zu speichern."_s
                     .arg(upperBound),
             .icon = Icon::Information,
             .english = u"The phone has no room for that many contacts."_s});
    return false;
}

bool VcardStore::VcfWriteList(const std::vector<tVcfEntry>& entries, const Progress& progress, Report* report)
{
    Report scratch;
    Report& told = report ? *report : scratch;
    told = {};
    if (entries.empty())
        return true;
    return inSession(u"VcfWriteList"_s, progress, &told, [&](const Progress& shown) {
        const auto upperBound = static_cast<int>(entries.size()) - 1;
        if (entries.front().luid.isEmpty() && !hasRoomFor(upperBound, withoutBar(shown)))
            return false;
        shown.start(0, upperBound + 1);
        const bool done = writeEntries(entries, shown, told);
        shown.hide();
        return done;
    });
}

bool VcardStore::writeEntries(const std::vector<tVcfEntry>& entries, const Progress& progress, Report& report)
{
    const auto count = static_cast<int>(entries.size());
    for (int index = 0; index < count; ++index) {
        if (progress.cancelled() ||
            !writeEntry(entries[index], withoutBar(progress), index + 1, count, report))
            return false;
        progress.step();
        m_client->CdRoot();
    }
    return true;
}

bool VcardStore::writeEntry(tVcfEntry entry, const Progress& progress, int index, int total, Report& report)
{
    qint32 counter = 0;
    if (!m_client->CDluidPB() || !VcfGetCc(*m_client, counter, progress))
        return false;
    QString luid;
    const ItemResult result = VcfWriteItem(*m_client, entry, counter, luid, progress, index, total);
    if (result == ItemResult::Unconfirmed) {
        report.unconfirmed = true;
        showUnconfirmed(entry);
    }
    if (result != ItemResult::Written)
        return false;
    bool isNumber = false;
    const int belegt = m_belegt.toInt(&isNumber);
    if (entry.luid.isEmpty() && isNumber)
        setLabels(m_kap, QString::number(belegt + 1));
    const int replaced = m_list && luid != entry.luid ? m_list->indexOfKey(vcfKey(entry.luid)) : -1;
    if (replaced >= 0)
        m_list->removeAt(replaced);
    entry.luid = luid;
    report.luids.append(luid);
    showWritten(entry);
    return true;
}

void VcardStore::showWritten(const tVcfEntry& entry)
{
    if (!m_list)
        return;
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
        setLabels(m_kap, u"?"_s);
        entry.luid = mark;
        showWritten(entry);
        return;
    }
    for (int index = 0; m_list && index < m_list->count(); ++index) {
        if (m_list->text(index, VcfLuid) == entry.luid)
            m_list->setText(index, VcfLuid, mark);
    }
}

bool VcardStore::VcfDeleteRows(const Progress& progress, Report* report)
{
    Report scratch;
    Report& told = report ? *report : scratch;
    told = {};
    return inSession(u"VcfDeleteRows"_s, progress, &told, [&](const Progress& shown) {
        const bool done = deleteEntries(shown, told);
        shown.hide();
        if (!done)
            return false;
        if (m_client->stopAsked()) {
            forgetCapacity(); // nothing can be asked any more
            return true;
        }
        m_client->line().pause(settlePause);
        tVcfInfo info;
        return updateLabels(info, withoutBar(shown));
    });
}

bool VcardStore::deleteEntries(const Progress& progress, Report& report)
{
    const Progress shown = withoutBar(progress);
    qint32 counter = 0;
    if (!m_client->CDluidPB() || !VcfGetCc(*m_client, counter, shown))
        return false;
    const auto total = m_list ? static_cast<int>(m_list->selectedRows().size()) : 0;
    progress.start(0, total);
    int index = 0;
    // From the end, so that the rows that go don't move those that come.
    for (int row = m_list ? m_list->count() - 1 : -1; row >= 0 && m_list; --row) {
        if (row >= m_list->count() || !m_list->row(row).selected)
            continue;
        if (progress.cancelled() || m_client->stopAsked())
            return true;
        if (counter == -1 && !VcfGetCc(*m_client, counter, shown))
            return false;
        progress.step();
        const QString asked = m_list->text(row, VcfLuid);
        QString luid = asked;
        const ItemResult result = VcxDel(*m_client, KindContact, luid, counter, shown, ++index, total);
        report.unconfirmed = result == ItemResult::Unconfirmed;
        if (result != ItemResult::Written)
            return false;
        report.luids.append(asked);
        if (m_list && row < m_list->count() && m_list->text(row, VcfLuid) == asked)
            m_list->removeAt(row);
    }
    return true;
}

CommandResult VcardStore::VcfDeleteSelected(const Progress& progress, Report* report)
{
    const auto keep = weak_from_this().lock();
    const QList<int> selected = m_list ? m_list->selectedRows() : QList<int>();
    if (selected.isEmpty())
        return CommandResult::Refused;
    for (const int row : selected) {
        if (!hasValidLuid(m_list->row(row))) {
            context().dialogs.Show(
                {.text =
                     u"Der gewählte bzw. ein gewählter Eintrag verfügt über keine gültige Referenznummer.\n"_s +
                     readAgainAdvice(),
                 .icon = Icon::Information,
                 .english = u"An entry has no valid reference. Read the phonebook again first."_s});
            return CommandResult::Refused;
        }
    }
    const Answer answer = context().dialogs.Show(
        {.text = u"%1 gewählte(n) Kontakt(e) wirklich löschen ?"_s.arg(selected.size()),
         .title = app::productName() + u"  -  Kontakt löschen"_s,
         .buttons = Buttons::YesNo,
         .icon = Icon::Question,
         .defaultButton = Answer::No,
         .english = u"Really delete %1 contact(s)?"_s.arg(selected.size())});
    if (answer != Answer::Yes)
        return CommandResult::Refused;
    if (VcfDeleteRows(progress, report))
        return CommandResult::Done;
    if (m_client->isAbandoned())
        return CommandResult::Failed;
    context().dialogs.Show(
        {.text = u"Beim Löschen ist ein Fehler aufgetreten. Bitte lesen Sie das Telefonbuch erneut ein, um "
                 u"Inkonsistenzen zu vermeiden."_s,
         .icon = Icon::Information,
         .english = u"Not everything could be deleted. Read the phonebook again."_s});
    forgetCapacity();
    if (m_list)
        m_list->clear();
    return CommandResult::Failed;
}

QString readAgainAdvice()
{
    return u"Dies kann aufgrund eines Fehler im Gigaset, der bisher von der Firma Gigaset nicht behoben "
           u"wurde unter "
           u"ungünstigen Umständen vorkommen. Bitte lesen Sie das Telefonbuch einmal komplett neu ein "
           u"(Schaltfläche \"Neu Laden\"). Danach können Sie den betroffenen Eintrag beliebig ändern oder löschen."_s;
}

} // namespace kalmo::phonedata
