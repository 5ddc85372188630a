#include "ui/window/SectionGuard.h"

#include "app/SettingsKeys.h"
#include "ui/window/NaviTree.h"

#include <array>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using phonedata::Store;

namespace {

/// The active sections in which a node asks about each list. The provider list comes first; the phonebook is
/// asked about only if that list has no changes.
struct GuardRow
{
    QStringView key; ///< also stands for its children if it ends in "_"
    std::array<int, 2> providersIn;
    std::array<int, 2> phonebookIn;
};

constexpr std::array<int, 2> never = {-1, -1};

constexpr std::array<GuardRow, 7> guardTable = {{
    {nodes::Phonebook, {SectionProviders, -1}, never},
    {nodes::Providers, never, {SectionPhonebook, -1}},
    {nodes::Diverse, {SectionPhonebook, SectionProviders}, {SectionPhonebook, SectionProviders}},
    {nodes::Sounds, {SectionPhonebook, SectionProviders}, {SectionPhonebook, SectionProviders}},
    {nodes::Sponsors, {SectionProviders, -1}, {SectionPhonebook, -1}},
    {u"SPONSOR_", {SectionProviders, -1}, {SectionPhonebook, -1}},
    {nodes::Settings, {SectionProviders, -1}, {SectionPhonebook, -1}},
}};

struct WayBack
{
    int section;
    QStringView key;
};

constexpr std::array<WayBack, 4> waysBack = {{
    {SectionPhonebook, nodes::Phonebook},
    {SectionProviders, nodes::Providers},
    {SectionSponsor, u"ORVANE"}, // no node of the tree: from there the selection stays where it is
    {SectionDiverse, nodes::Diverse},
}};

const GuardRow* guardOf(const QString& key)
{
    for (const GuardRow& row : guardTable) {
        if (key == row.key || (row.key.endsWith(u'_') && key.startsWith(row.key)))
            return &row;
    }
    return nullptr;
}

bool holds(const std::array<int, 2>& sections, int active)
{
    return sections[0] == active || sections[1] == active;
}

} // namespace

std::optional<Store> SectionGuard::promptFor(const QString& nodeKey) const
{
    const GuardRow* row = guardOf(nodeKey);
    if (!row || GuardSuppressed || app::getInt(m_settings, app::keys::SwWarning) != 1)
        return {};
    if (m_memory.NeDirty && holds(row->providersIn, ActiveSection))
        return Store::Providers;
    if (m_memory.TbDirty && holds(row->phonebookIn, ActiveSection))
        return Store::Phonebook;
    return {};
}

QString SectionGuard::previousNode() const
{
    for (const WayBack& way : waysBack) {
        if (way.section == ActiveSection)
            return way.key.toString();
    }
    return {};
}

} // namespace kalmo::ui
