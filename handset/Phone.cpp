#include "handset/Phone.h"

#include "handset/state/GeneratedEntries.h"

#include <QFileInfo>

// Outside of any namespace, as the macro needs it.
static void loadSamples()
{
    Q_INIT_RESOURCE(samples);
}

namespace kalmo::handset {

using namespace Qt::StringLiterals;

namespace {

constexpr int organizerCapacity = 100;

std::optional<Model> modelOf(const Options& options, QString& error)
{
    if (!options.cgmm.isEmpty())
        return Model{options.family, options.cgmm, options.wppn};
    auto model = findModel(options.model);
    if (!model)
        error = u"There is no model \"%1\"."_s.arg(options.model);
    return model;
}

QString seedFile(const QString& seed, int family)
{
    if (seed != u"sample"_s)
        return seed;
    return vcardFamilies.contains(family) ? u":/samples/vcard.json"_s : u":/samples/classic.json"_s;
}

/// Content of a new handset, and the folder that its files are relative to.
struct Content
{
    QJsonObject sections = {};
    QString base = {};
};

bool loadContent(const StateFolder& memory, const QString& seed, int family, Content& content, QString& error)
{
    content.base = memory.path();
    if (!memory.load(content.sections, error))
        return false;
    if (!content.sections.isEmpty() || seed == u"none"_s)
        return true;
    QJsonValue sections;
    const QString file = seedFile(seed, family);
    if (!readJson(file, sections, error))
        return false;
    content = {sections.toObject(), QFileInfo(file).path()};
    return true;
}

void loadClassic(Phone& phone, const QJsonObject& sections)
{
    phone.phonebook.load(sections[phone.phonebook.section()].toArray());
    phone.providers.load(sections[phone.providers.section()].toArray());
    for (int index = 0; std::ssize(phone.phonebook.entries) < phone.options.entries; ++index)
        phone.phonebook.entries.push_back(generatedEntry(index));
    phone.keep(phone.phonebook);
    phone.keep(phone.providers);
}

const QString endlessFolder = u"Endlos"_s;

void addHostileNames(FileTree& files)
{
    const auto put = [](FileNode& folder, FileNode node) -> FileNode& {
        FileNode* there = folder.child(node.name);
        return there ? *there : FileTree::add(folder, std::move(node));
    };
    FileNode& root = *files.find({});
    for (const QString& name : {u"../../x"_s, u"a/b"_s, u"..\\c"_s, u"C:x.txt"_s, u"new\nline"_s, u"CON"_s,
                                u".."_s, u"x\"y"_s, u"new\r\nline"_s, QString(300, u'L')})
        put(root, {.name = name, .content = "harmless"});
    FileNode& endless = put(root, {.name = endlessFolder, .isFolder = true});
    for (const QString& name : {u"."_s, u".."_s, QString(), u"a\\b"_s})
        put(endless, {.name = name, .isFolder = true});
    endless.holdsItself = true;
}

const QStringList hostileLuids = {u"../../1"_s, u"2;3"_s, u"NUL"_s, u"5 \"x\""_s, QString(200, u'6')};

void loadData(Phone& phone, const Content& content)
{
    for (IrmcStore& store : phone.irmc)
        store.load(content.sections[store.kind().section]);
    IrmcStore& contacts = phone.irmc[ContactStore];
    for (int index = 0; std::ssize(contacts.items()) < phone.options.entries; ++index)
        contacts.add(generatedContact(index));
    if (phone.faults.hostileLuids)
        contacts.giveLuids(hostileLuids);
    if (phone.files.capacity() > 0) {
        phone.fileMemory.load(phone.files, content.sections[u"files"_s].toArray(), content.base,
                              phone.memory);
        if (phone.faults.hostileNames)
            addHostileNames(phone.files);
        phone.keepFiles();
    }
    for (const IrmcStore& store : phone.irmc)
        phone.keep(store);
}

int phonebookCapacity(const Options& options, const Family& family)
{
    return std::max(options.capacity > 0 ? options.capacity : family.phonebookCapacity, options.entries);
}

} // namespace

void Phone::keepSettings()
{
    memory.save(u"settings"_s, settings.json());
}

void Phone::keep(const ClassicStore& store)
{
    memory.save(store.section(), store.json());
}

ClassicStore* Phone::openStore()
{
    for (ClassicStore* store : {&phonebook, &providers}) {
        if (store->open)
            return store;
    }
    return nullptr;
}

void Phone::closeStores()
{
    phonebook.open = false;
    providers.open = false;
}

void Phone::keep(const IrmcStore& store)
{
    memory.save(store.kind().section, store.json());
}

void Phone::keepFiles()
{
    fileMemory.save(files, memory);
}

QList<int> Phone::rates() const
{
    if (!options.rates.isEmpty())
        return options.rates;
    QList<int> rates;
    for (const int rate : family.rates) {
        if (rate > 0)
            rates.append(rate);
    }
    return rates;
}

LineEnd Phone::lineEnd() const
{
    // General clients end their lines with CR.
    return isTolerant() ? LineEnd::Cr : options.lineEnd.value_or(family.lineEnd);
}

CardText Phone::cardText() const
{
    return options.cards.value_or(family.data.quotedCards ? CardText::QuotedPrintable : CardText::Raw);
}

std::unique_ptr<Phone> makePhone(const Options& options, QString& error)
{
    loadSamples();
    const auto model = modelOf(options, error);
    Content content;
    const StateFolder memory(options.stateFolder);
    if (!model || !loadContent(memory, options.seed, model->family, content, error))
        return nullptr;
    const Family& family = familyOf(model->family);
    const bool hasData = vcardFamilies.contains(family.number);
    if (options.profile != Profile::Own && !hasData) {
        error = u"\"%1\" has no data mode; the general profiles need a model of families 5 to 13."_s.arg(
            model->name());
        return nullptr;
    }
    const int capacity = phonebookCapacity(options, family);
    const qint64 fileMemory = options.fileMemory >= 0 ? options.fileMemory : family.data.fileMemory;
    auto phone = std::unique_ptr<Phone>(
        new Phone{.options = options,
                  .model = *model,
                  .family = family,
                  .faults = options.faults,
                  .violations = Violations(options.profile != Profile::Own),
                  .settings = {},
                  .phonebook = {StoreKind::Phonebook, capacity},
                  .providers = {StoreKind::Providers, family.providerCapacity},
                  .irmc = {IrmcStore(ContactStore, capacity), IrmcStore(CalendarStore, organizerCapacity),
                           IrmcStore(NoteStore, organizerCapacity)},
                  .files = FileTree(fileMemory),
                  .fileMemory = {},
                  .memory = memory});
    phone->settings.load(content.sections[u"settings"_s].toObject());
    phone->keepSettings();
    if (classicFamilies.contains(family.number))
        loadClassic(*phone, content.sections);
    if (hasData)
        loadData(*phone, content);
    return phone;
}

} // namespace kalmo::handset
