#include "handset/Phone.h"

#include "handset/state/GeneratedEntries.h"

#include <QDir>

// Outside of any namespace, as the macro wants it.
static void loadSamples()
{
    Q_INIT_RESOURCE(samples);
}

namespace kalmo::handset {

using namespace Qt::StringLiterals;

namespace {

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

bool loadSections(const StateFolder& memory, const QString& seed, int family, QJsonObject& sections,
                  QString& error)
{
    if (!memory.load(sections, error))
        return false;
    if (!sections.isEmpty() || seed == u"none"_s)
        return true;
    QJsonValue content;
    if (!readJson(seedFile(seed, family), content, error))
        return false;
    sections = content.toObject();
    return true;
}

void loadClassic(Phone& phone, const QJsonObject& sections)
{
    if (!classicFamilies.contains(phone.model.family))
        return;
    const Options& options = phone.options;
    phone.phonebook.load(sections[phone.phonebook.section()].toArray());
    phone.providers.load(sections[phone.providers.section()].toArray());
    for (int index = 0; std::ssize(phone.phonebook.entries) < options.entries; ++index)
        phone.phonebook.entries.push_back(generatedEntry(index));
    phone.keep(phone.phonebook);
    phone.keep(phone.providers);
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

std::unique_ptr<Phone> makePhone(const Options& options, QString& error)
{
    loadSamples();
    const auto model = modelOf(options, error);
    QJsonObject sections;
    const StateFolder memory(options.stateFolder);
    if (!model || !loadSections(memory, options.seed, model->family, sections, error))
        return nullptr;
    const Family& family = familyOf(model->family);
    auto phone = std::unique_ptr<Phone>(
        new Phone{.options = options,
                  .model = *model,
                  .family = family,
                  .faults = options.faults,
                  .violations = {},
                  .settings = {},
                  .phonebook = {StoreKind::Phonebook, phonebookCapacity(options, family)},
                  .providers = {StoreKind::Providers, family.providerCapacity},
                  .memory = memory});
    phone->settings.load(sections[u"settings"_s].toObject());
    phone->keepSettings();
    loadClassic(*phone, sections);
    return phone;
}

} // namespace kalmo::handset
