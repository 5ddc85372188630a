#include "transfer/import/ImportOptions.h"

#include "app/mdlKonverter.h"

#include <algorithm>

namespace kalmo::transfer {

namespace {

const QString importSection = u"frmImportPb"_s;
constexpr qsizetype lastHalfHour = 47;

/// How a value stands in the settings.
enum class Written {
    Text,
    Blanks, ///< with a "|" in front, since the settings cut blanks off; each "|" goes on reading
    Number,
    Switch
};

/// Hands every remembered value to `visit`, as key, value and form.
template <typename Choices, typename Visit>
void eachRemembered(Choices& choices, Visit visit)
{
    auto& options = choices.options;
    for (size_t index = 0; index < subNumberCount; ++index) {
        auto& number = options.addresses.numbers[index];
        const QString digit = QString::number(index);
        visit(u"cmbCount1"_s + digit, number.count1, Written::Text);
        visit(u"cmbCount2"_s + digit, number.count2, Written::Text);
        visit(u"txtMiddle"_s + digit, number.middle, Written::Blanks);
        visit(u"txtEnd"_s + digit, number.end, Written::Blanks);
        visit(u"cmbField1"_s + digit, number.field1, Written::Number);
        visit(u"cmbField2"_s + digit, number.field2, Written::Number);
        visit(u"chkProcessNr"_s + digit, number.process, Written::Switch);
    }
    visit(u"chkPreviewAutoRefresh"_s, choices.refreshAtOnce, Written::Switch);
    visit(u"chkBirthdays"_s, options.addresses.birthdays, Written::Switch);
    visit(u"txtCountry"_s, options.numbers.country, Written::Text);
    for (size_t index = 0; index < choices.classicHeadings.size(); ++index)
        visit(u"cmbCsvField"_s + QString::number(index), choices.classicHeadings[index], Written::Text);
    for (size_t index = 0; index < options.addresses.fields.size(); ++index)
        visit(u"cmbWabVCF"_s + QString::number(index), options.addresses.fields[index], Written::Number);
    visit(u"cmbGebuTimeDefaultWaB"_s, options.addresses.vcardBirthdayTime, Written::Text);
    visit(u"chkWabVcfUseGebu"_s, options.addresses.vcardBirthdays, Written::Switch);
    visit(u"chkAmt"_s, options.numbers.outsideLine, Written::Switch);
    visit(u"txtAmt"_s, options.numbers.outsideDigits, Written::Text);
}

template <typename Visit, typename Options>
void eachMarking(Options& options, Visit visit)
{
    visit(u"chkMarkExistingContacts0"_s, options.markExisting, Written::Switch);
    visit(u"chkMarkExistingContacts1"_s, options.existingByNumber, Written::Switch);
}

class Loader
{
public:
    explicit Loader(const app::Settings& settings) : m_settings(settings) {}

    void operator()(const QString& key, QString& value, Written written) const
    {
        const QString text = m_settings.GetIniText(importSection, key);
        if (text != app::noValue())
            value = written == Written::Blanks ? QString(text).remove(u'|') : text;
    }
    void operator()(const QString& key, int& value, Written) const
    {
        value = app::toInt32(m_settings.GetIniNumber(importSection, key, static_cast<float>(value)));
    }
    void operator()(const QString& key, bool& value, Written) const
    {
        value = m_settings.GetIniNumber(importSection, key, value ? 1 : 0) != 0;
    }

private:
    const app::Settings& m_settings;
};

class Saver
{
public:
    explicit Saver(app::Settings& settings) : m_settings(settings) {}

    void operator()(const QString& key, const QString& value, Written written) const
    {
        // A blank at the end needs a mark after it, too.
        const QString mark = value.endsWith(u' ') ? u"|"_s : QString();
        put(key, written == Written::Blanks ? u'|' + value + mark : value);
    }
    void operator()(const QString& key, int value, Written) const { put(key, QString::number(value)); }
    void operator()(const QString& key, bool value, Written) const { put(key, value ? u"1"_s : u"0"_s); }

private:
    void put(const QString& key, const QString& value) const
    {
        if (m_settings.GetIniText(importSection, key) != value) // each write rewrites the file
            m_settings.PutIniText(importSection, key, value);
    }

    app::Settings& m_settings;
};

/// Replaces remembered values that are not usable by their defaults.
void mend(ImportOptions& options)
{
    const ImportOptions start;
    const auto isPosition = [](int position, size_t choices) {
        return position >= 0 && position < static_cast<int>(choices);
    };
    for (size_t index = 0; index < subNumberCount; ++index) {
        SubNumberOptions& number = options.addresses.numbers[index];
        const SubNumberOptions& usual = start.addresses.numbers[index];
        if (!isPosition(number.field1, nameChoices().size()))
            number.field1 = usual.field1;
        if (!isPosition(number.field2, nameChoices().size()))
            number.field2 = usual.field2;
        if (!isCharacterCount(number.count1))
            number.count1 = usual.count1;
        if (!isCharacterCount(number.count2))
            number.count2 = usual.count2;
    }
    for (size_t index = 0; index < options.addresses.fields.size(); ++index) {
        if (!isPosition(options.addresses.fields[index],
                        choicesOf(fieldsOf(Shape::Vcard)[index].kind).size()))
            options.addresses.fields[index] = start.addresses.fields[index];
    }
    if (!isCountryCode(options.numbers.country))
        options.numbers.country = start.numbers.country;
    const QString& digits = options.numbers.outsideDigits; // none leave the numbers as they are
    if (!digits.isEmpty() && !isOutsideLine(digits))
        options.numbers.outsideDigits = start.numbers.outsideDigits;
}

} // namespace

AddressOptions::AddressOptions()
{
    for (size_t index = 0; index < subNumberCount; ++index)
        numbers[index].end = subNumberKinds()[index].end.toString();
}

bool isCharacterCount(QStringView text)
{
    return isNumeric(text) && leadingNumber(text) > 0;
}

QStringList halfHours()
{
    QStringList times;
    for (qsizetype index = 0; index <= lastHalfHour; ++index)
        times.append(QTime(0, 0).addSecs(static_cast<int>(index) * 1800).toString(u"hh:mm"_s));
    return times;
}

RememberedChoices loadImportOptions(const app::Settings& settings)
{
    RememberedChoices choices;
    const Loader load(settings);
    eachRemembered(choices, load);
    eachMarking(choices.options, load);
    int time = static_cast<int>(halfHours().indexOf(choices.options.addresses.birthdayTime));
    load(u"cmbWabTimeGebu"_s, time, Written::Number);
    choices.options.addresses.birthdayTime = halfHours().value(time, choices.options.addresses.birthdayTime);
    for (size_t index = 0; index < choices.vcardHeadings.size(); ++index)
        load(u"cmbCsvFieldVCF"_s + QString::number(index), choices.vcardHeadings[index], Written::Text);
    mend(choices.options);
    return choices;
}

void SaveImportOptions(app::Settings& settings, const RememberedChoices& choices)
{
    const Saver save(settings);
    eachRemembered(choices, save);
    eachMarking(choices.options, save);
    save(u"cmbWabTimeGebu"_s, static_cast<int>(halfHours().indexOf(choices.options.addresses.birthdayTime)),
         Written::Number);
}

void saveMarkingOptions(app::Settings& settings, const ImportOptions& options)
{
    eachMarking(options, Saver(settings));
}

} // namespace kalmo::transfer
