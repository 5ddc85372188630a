// Commands about the phonebook and the provider list of classic handsets.

#include "handset/at/AtCommand.h"

#include "app/CodePage.h"

namespace kalmo::handset {

using namespace Qt::StringLiterals;
using app::fromCp1252;

namespace {

constexpr double eraseSecondsPerEntry = 0.05;
constexpr double writeSecondsPerEntry = 0.001; // the fuller the store, the slower

ClassicStore* storeNamed(Phone& phone, const QByteArray& argument)
{
    for (ClassicStore* store : {&phone.phonebook, &phone.providers}) {
        if (argument == '"' + store->wireName() + '"')
            return store;
    }
    return nullptr;
}

/// The open store. If none is open, records a violation and returns null.
ClassicStore* neededStore(AtContext& context, const AtRequest& request)
{
    ClassicStore* store = context.phone.openStore();
    if (!store)
        context.phone.violations.record(fromCp1252(request.text()) + u" without an open store"_s);
    return store;
}

void open(Phone& phone, ClassicStore& store)
{
    phone.closeStores();
    store.open = true;
    store.next = 0;
}

AtAnswer selectStore(AtContext& context, const AtRequest& request)
{
    ClassicStore* store = storeNamed(context.phone, request.argument);
    if (!store)
        return AtAnswer::error(BadIndex);
    open(context.phone, *store);
    return AtAnswer::ok();
}

AtAnswer closeStores(AtContext& context, const AtRequest&)
{
    context.phone.closeStores();
    return AtAnswer::ok();
}

AtAnswer eraseStore(AtContext& context, const AtRequest& request)
{
    ClassicStore* store = storeNamed(context.phone, request.argument);
    if (!store)
        return AtAnswer::error(BadIndex);
    const double seconds = eraseSecondsPerEntry * static_cast<double>(store->entries.size());
    store->entries.clear();
    context.phone.keep(*store);
    open(context.phone, *store);
    return AtAnswer::ok({}, seconds);
}

bool readFails(Faults& faults)
{
    const int entry = faults.reads + 1;
    if (entry == faults.readErrorOnceAt) {
        faults.readErrorOnceAt = 0;
        return true;
    }
    return entry == faults.readErrorAt;
}

bool writeFails(Faults& faults)
{
    const int entry = faults.writes + 1;
    if (entry == faults.writeErrorOnceAt) {
        faults.writeErrorOnceAt = 0;
        return true;
    }
    return entry == faults.writeErrorAt;
}

/// Does not answer at all after the last entry has been read.
AtAnswer readNext(AtContext& context, const AtRequest& request)
{
    Phone& phone = context.phone;
    ClassicStore* store = neededStore(context, request);
    if (!store)
        return AtAnswer::error(NotAllowed);
    if (store->next >= store->entries.size())
        return AtAnswer::ok();
    if (readFails(phone.faults))
        return AtAnswer::error(NotAllowed);
    ++phone.faults.reads;
    const QByteArray prefix = phone.family.blankBehindPrefix ? "^WSRE: " : "^WSRE:";
    return AtAnswer::ok(prefix + entryText(store->entries[store->next++], store->kind, phone.family.number));
}

AtAnswer refused(AtContext& context, const AtRequest& request, EntryFault fault)
{
    if (fault == EntryFault::TooLong)
        return AtAnswer::error(TextTooLong);
    if (fault == EntryFault::BadCharacter)
        return AtAnswer::error(BadCharacters);
    context.phone.violations.record(u"malformed: "_s + fromCp1252(request.text()));
    return AtAnswer::error(NotSupported);
}

AtAnswer writeNext(AtContext& context, const AtRequest& request)
{
    Phone& phone = context.phone;
    ClassicStore* store = neededStore(context, request);
    if (!store)
        return AtAnswer::error(NotAllowed);
    const ParsedEntry parsed = parseEntry(request.argument, store->kind, phone.family.number);
    if (parsed.fault != EntryFault::None)
        return refused(context, request, parsed.fault);
    if (writeFails(phone.faults))
        return AtAnswer::error(NotAllowed);
    if (phone.faults.full || std::ssize(store->entries) >= store->capacity)
        return AtAnswer::error(MemoryFull);
    ++phone.faults.writes;
    store->entries.push_back(parsed.entry);
    phone.keep(*store);
    return AtAnswer::ok({}, writeSecondsPerEntry * static_cast<double>(store->entries.size()));
}

constexpr AtCommand storeTable[] = {
    {"^WSSL", Form::Set, classicFamilies, 0.1, selectStore},
    {"^WSSL", Form::Run, FamilySet(3, 4), 0.1, closeStores, true, Ending::Either},
    {"^WSEL", Form::Set, classicFamilies, 0.4, eraseStore},
    {"^WSRE", Form::Run, classicFamilies, 0.03, readNext, true},
    {"^WSWE", Form::Set, classicFamilies, 0.15, writeNext, true, Ending::ByStore},
};

} // namespace

std::span<const AtCommand> storeCommands()
{
    return storeTable;
}

} // namespace kalmo::handset
