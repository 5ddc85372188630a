#include "operations/ContactPlan.h"

#include <algorithm>

namespace kalmo::operations {

using namespace Qt::StringLiterals;
using phonedata::ContactCard;
using phonedata::ContactReading;
using phonedata::ContactWrite;
using phonedata::tVcfEntry;

namespace {

bool isReachable(const tVcfEntry& entry)
{
    return !entry.isStandIn && !phonedata::isNoValidLuid(entry.luid);
}

bool haveSameName(const tVcfEntry& left, const tVcfEntry& right)
{
    const bool hasName = !left.lastName.isEmpty() || !left.firstName.isEmpty();
    return hasName && left.lastName == right.lastName && left.firstName == right.firstName;
}

/// Returns true if two cards hold the same: byte for byte where both are known in bytes.
bool haveSameCard(const ContactCard& left, const ContactCard& right)
{
    if (left.raw.isEmpty() || right.raw.isEmpty())
        return phonedata::haveSameContent(left.entry, right.entry);
    return phonedata::withLuid(left.raw, {}) == phonedata::withLuid(right.raw, {});
}

/// Finds for each wanted card the one in the phone that is to become it.
class Matching
{
public:
    Matching(const std::vector<ContactCard>& held, const std::vector<ContactCard>& wanted)
        : m_held(held), m_wanted(wanted), m_isTaken(held.size(), false), m_partner(wanted.size(), nullptr)
    {
        match(
            [](const ContactCard& in, const ContactCard& want) { return in.entry.luid == want.entry.luid; });
        match(haveSameCard);
        match([](const ContactCard& in, const ContactCard& want) {
            return isReachable(in.entry) && haveSameName(in.entry, want.entry);
        });
    }

    ContactPlan plan() const
    {
        ContactPlan plan;
        for (size_t index = 0; index < m_wanted.size(); ++index)
            plan.same += addTo(plan, m_wanted[index], m_partner[index]) ? 0 : 1;
        for (size_t index = 0; index < m_held.size(); ++index) {
            if (!m_isTaken[index])
                (isReachable(m_held[index].entry) ? plan.remove : plan.stuck).push_back(m_held[index].entry);
        }
        return plan;
    }

private:
    template <typename Fits>
    void match(const Fits& fits)
    {
        for (size_t want = 0; want < m_wanted.size(); ++want) {
            for (size_t in = 0; in < m_held.size() && !m_partner[want]; ++in) {
                if (m_isTaken[in] || !fits(m_held[in], m_wanted[want]))
                    continue;
                m_partner[want] = &m_held[in];
                m_isTaken[in] = true;
            }
        }
    }

    /// False for a card that the phone holds already.
    static bool addTo(ContactPlan& plan, const ContactCard& wanted, const ContactCard* partner)
    {
        if (partner && haveSameCard(*partner, wanted))
            return false;
        ContactWrite write{wanted.entry};
        write.entry.isStandIn = false;
        write.entry.luid = partner ? partner->entry.luid : QString();
        if (!wanted.raw.isEmpty())
            write.card = phonedata::withLuid(wanted.raw, write.entry.luid);
        if (partner)
            plan.change.push_back({partner->entry, std::move(write)});
        else
            plan.add.push_back(std::move(write));
        return true;
    }

    const std::vector<ContactCard>& m_held;
    const std::vector<ContactCard>& m_wanted;
    std::vector<bool> m_isTaken;               // of m_held
    std::vector<const ContactCard*> m_partner; // of m_wanted, in m_held
};

/// Returns true if the phone's own card is among the cards: it is the first of one too many.
bool hasOwnCard(const ContactReading& held)
{
    return held.info && std::ssize(held.cards.cards) == held.info->intBelegt + 1;
}

std::vector<ContactCard> cardsWithoutOwn(const ContactReading& held)
{
    std::vector<ContactCard> cards = held.cards.cards;
    if (hasOwnCard(held))
        cards.erase(cards.begin());
    return cards;
}

/// Removes the phone's own card from both lists, of which the first is that of the phone. Where the count
/// does not tell it, a first card without a LUID is taken for it: it could not be changed anyway.
void dropOwn(const ContactReading& held, std::vector<ContactCard>& inPhone, std::vector<ContactCard>& wanted)
{
    const bool isKnown = hasOwnCard(held);
    if (inPhone.empty() || (wanted.empty() && !isKnown))
        return;
    const tVcfEntry& first = inPhone.front().entry;
    const bool isWanted = !wanted.empty() && (isKnown ? wanted.front().entry.luid == first.luid
                                                      : !held.isConfirmed() && !isReachable(first) &&
                                                            !isReachable(wanted.front().entry));
    if (isWanted)
        wanted.erase(wanted.begin());
    if (isWanted || isKnown)
        inPhone.erase(inPhone.begin());
}

const ContactCard* findReachable(const ContactReading& held, const QString& luid, LuidPlan& plan)
{
    const ContactCard* card = held.cards.find(luid);
    if (!card)
        plan.missing = luid;
    else if (!isReachable(card->entry))
        plan.noValid = luid;
    return plan.isSound() ? card : nullptr;
}

} // namespace

int ContactPlan::removedFirst(int freePlaces) const
{
    const auto lacking = static_cast<int>(add.size()) - std::max(freePlaces, 0);
    return std::clamp(lacking, 0, static_cast<int>(remove.size()));
}

bool ContactPlan::fits(int freePlaces) const
{
    return std::ssize(add) <= std::max(freePlaces, 0) + std::ssize(remove);
}

Contacts contactsOf(const ContactReading& reading)
{
    Contacts contacts;
    for (const ContactCard& card : reading.cards.cards)
        contacts.push_back(card.entry);
    return contacts;
}

ContactPlan planAdd(Contacts contacts)
{
    ContactPlan plan;
    for (tVcfEntry& contact : contacts) {
        contact.luid.clear();
        plan.add.push_back({std::move(contact)});
    }
    return plan;
}

LuidPlan planChange(const ContactReading& held, const tVcfEntry& contact)
{
    LuidPlan result;
    if (const ContactCard* card = findReachable(held, contact.luid, result))
        result.plan.change.push_back({card->entry, {contact}});
    return result;
}

LuidPlan planDelete(const ContactReading& held, const QStringList& luids)
{
    LuidPlan result;
    for (const QString& luid : luids) {
        const ContactCard* card = findReachable(held, luid, result);
        if (!card)
            return result;
        result.plan.remove.push_back(card->entry);
    }
    return result;
}

ContactPlan planEqual(const ContactReading& held, const Contacts& wanted)
{
    std::vector<ContactCard> cards;
    const bool startsWithOwn = hasOwnCard(held) && !wanted.empty() && !wanted.front().luid.isEmpty() &&
                               wanted.front().luid == held.cards.cards.front().entry.luid;
    for (const tVcfEntry& entry : wanted)
        cards.push_back({entry});
    if (startsWithOwn) // a saved list holds it like the others
        cards.erase(cards.begin());
    return Matching(cardsWithoutOwn(held), cards).plan();
}

ContactPlan planRestore(const ContactReading& held, const phonedata::VcfCards& wanted,
                        Completeness completeness, const QStringList& added)
{
    std::vector<ContactCard> cards = wanted.cards;
    std::vector<ContactCard> inPhone = held.cards.cards;
    dropOwn(held, inPhone, cards);
    // Of a card that came without a LUID the phone never had one to be found by.
    for (ContactCard& card : cards) {
        if (card.entry.isStandIn)
            card.entry.luid.clear();
    }
    ContactPlan plan = Matching(inPhone, cards).plan();
    if (completeness == Completeness::Whole && held.isConfirmed())
        return plan;
    const auto kept = std::ranges::stable_partition(
        plan.remove, [&](const tVcfEntry& entry) { return added.contains(entry.luid); });
    plan.kept.assign(kept.begin(), kept.end());
    plan.remove.erase(kept.begin(), kept.end());
    return plan;
}

} // namespace kalmo::operations
