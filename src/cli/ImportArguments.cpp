#include "cli/ImportArguments.h"

#include "phonedata/EntryRules.h"
#include "phonedata/PhoneCharacters.h"

#include <QRegularExpression>

#include <algorithm>
#include <map>

namespace kalmo::cli {

using transfer::FieldKind;
using transfer::Shape;
using transfer::SourceKind;

namespace {

const QString noColumnWord = u"-"_s;

/// Options that are not for every import.
struct Restriction
{
    QStringView option;
    std::optional<Shape> shape = {};
    std::optional<SourceKind> kind = {};
};

const std::vector<Restriction>& restrictions()
{
    constexpr auto classic = Shape::Classic;
    constexpr auto vcard = Shape::Vcard;
    constexpr auto text = SourceKind::Text;
    constexpr auto book = SourceKind::AddressBook;
    static const std::vector<Restriction> table = {
        {u"--separator", {}, text},
        {u"--quote", {}, text},
        {u"--reading", {}, text},
        {u"--encoding", {}, text},
        {u"--dates", {}, text},
        {u"--skip-heading", {}, text},
        {u"--name", classic, text},
        {u"--number", classic, text},
        {u"--last-name", vcard},
        {u"--first-name", vcard},
        {u"--home", vcard},
        {u"--mobile", vcard},
        {u"--work", vcard},
        {u"--email", vcard},
        {u"--country", classic},
        {u"--keep-country", classic},
        {u"--shorten", classic},
        {u"--fill-names", {}, book},
        {u"--numbers", classic, book},
        {u"--compose", classic, book},
        {u"--no-birthdays", classic, book},
        {u"--own-birthdays", classic, book},
    };
    return table;
}

/// The option for a column of the preview: "--last-name" for "lastName".
QString optionFor(const transfer::ImportField& field)
{
    static const std::map<QStringView, QStringView> names = {{u"lastName", u"--last-name"},
                                                             {u"firstName", u"--first-name"}};
    const auto found = names.find(field.key);
    return found == names.end() ? u"--"_s + field.key.toString() : found->second.toString();
}

QString badValue(const QString& option, const QString& value, const QString& expected)
{
    return u"\"%1\" is no value for %2: it must be %3"_s.arg(value, option, expected);
}

/// The column that a word names, nothing if there is none.
std::optional<int> columnNamed(const QString& word, const QStringList& headings)
{
    if (word == noColumnWord)
        return transfer::noColumn;
    if (word.startsWith(u'#') && transfer::isNumeric(word.sliced(1))) {
        const int position = transfer::leadingNumber(word.sliced(1));
        return position >= 1 && position <= headings.size() ? std::optional(position - 1) : std::nullopt;
    }
    for (qsizetype column = 0; column < headings.size(); ++column) {
        if (headings[column].compare(word, Qt::CaseInsensitive) == 0)
            return static_cast<int>(column);
    }
    return std::nullopt;
}

/// Names of a contact's fields on the command line. Those of numbers differ from the engine's.
std::optional<int> addressFieldNamed(const QString& word, FieldKind kind)
{
    const auto choices = transfer::choicesOf(kind);
    static const QStringList numberWords{u"home"_s, u"mobile"_s, u"work"_s};
    static const QStringList mailWords{u"1"_s, u"2"_s};
    qsizetype position = -1;
    if (word == noColumnWord) {
        position = static_cast<qsizetype>(choices.size()) - 1;
    } else if (kind == FieldKind::Name) {
        const auto found =
            std::find_if(choices.begin(), choices.end(), [&word](const transfer::AddressField& field) {
                return field.tag != transfer::notUsed && word.compare(field.text, Qt::CaseInsensitive) == 0;
            });
        position = found == choices.end() ? -1 : found - choices.begin();
    } else {
        position = (kind == FieldKind::Number ? numberWords : mailWords).indexOf(word.toLower());
    }
    return position < 0 ? std::nullopt : std::optional(static_cast<int>(position));
}

QString wordsFor(FieldKind kind)
{
    if (kind == FieldKind::Name)
        return u"Nachname, Vorname, Vorname 2, Anzeige, Rufname, Firma or -"_s;
    return kind == FieldKind::Number ? u"home, mobile, work or -"_s : u"1, 2 or -"_s;
}

std::optional<size_t> kindNamed(const QString& word)
{
    const auto kinds = transfer::subNumberKinds();
    const auto found = std::find_if(kinds.begin(), kinds.end(), [&word](const transfer::SubNumberKind& kind) {
        return kind.key == word;
    });
    return found == kinds.end() ? std::nullopt : std::optional(static_cast<size_t>(found - kinds.begin()));
}

bool isComposable(const QString& text)
{
    return text.size() <= transfer::longestComposedText &&
           std::all_of(text.begin(), text.end(), phonedata::IsNameChar);
}

/// Understands "{Nachname:15}, {Vorname:1} P"; the second field may be missing.
bool takeTemplate(const QString& text, transfer::SubNumberOptions& options)
{
    static const QRegularExpression form(
        u"^\\{([^{}:]+)(?::([0-9]{1,2}))?\\}([^{}]*)(?:\\{([^{}:]+)(?::([0-9]{1,2}))?\\}([^{}]*))?$"_s);
    const auto parts = form.match(text);
    const bool hasSecond = parts.capturedLength(4) > 0;
    const auto first = addressFieldNamed(parts.captured(1), FieldKind::Name);
    const auto second = addressFieldNamed(hasSecond ? parts.captured(4) : noColumnWord, FieldKind::Name);
    if (!parts.hasMatch() || !first || !second)
        return false;
    const auto count = [&parts](int place) {
        return parts.capturedLength(place) > 0 ? parts.captured(place)
                                               : QString::number(phonedata::longestName);
    };
    options.field1 = *first;
    options.field2 = *second;
    options.count1 = count(2);
    options.count2 = count(5);
    options.middle = hasSecond ? parts.captured(3) : QString();
    options.end = hasSecond ? parts.captured(6) : parts.captured(3);
    return transfer::leadingNumber(options.count1) > 0 && transfer::leadingNumber(options.count2) > 0 &&
           isComposable(options.middle) && isComposable(options.end);
}

QString takeCompose(const QString& value, transfer::AddressOptions& options)
{
    const qsizetype equals = value.indexOf(u'=');
    const auto kind = kindNamed(value.first(std::max<qsizetype>(equals, 0)));
    if (equals < 0 || !kind)
        return badValue(u"--compose"_s, value,
                        u"home, mobile, home-fax, work or work-fax, a \"=\" and a name"_s);
    if (!takeTemplate(value.sliced(equals + 1), options.numbers[*kind]))
        return badValue(u"--compose"_s, value,
                        u"one or two fields like {Nachname:15}, with at most %1 characters behind each"_s.arg(
                            transfer::longestComposedText));
    return {};
}

QString takeKinds(const QString& value, transfer::AddressOptions& options)
{
    for (transfer::SubNumberOptions& number : options.numbers)
        number.process = false;
    for (const QString& word : value.split(u',')) {
        const auto kind = kindNamed(word.trimmed());
        if (!kind)
            return badValue(u"--numbers"_s, value, u"a list of home, mobile, home-fax, work, work-fax"_s);
        options.numbers[*kind].process = true;
    }
    return {};
}

} // namespace

QString faultOfOptions(const Invocation& invocation, Shape shape, SourceKind kind)
{
    for (const Restriction& row : restrictions()) {
        if (!invocation.has(row.option.toString()))
            continue;
        if (row.shape && *row.shape != shape)
            return u"%1 is for %2 phonebooks only"_s.arg(
                row.option, *row.shape == Shape::Classic ? u"classic"_s : u"vCard"_s);
        if (row.kind && *row.kind != kind)
            return u"%1 is for %2 only"_s.arg(row.option, *row.kind == SourceKind::Text ? u"text files"_s
                                                                                        : u"address books"_s);
    }
    return {};
}

QString takeCommonOptions(const Invocation& invocation, transfer::ImportOptions& options)
{
    transfer::NumberRules& rules = options.numbers;
    rules.convertCountry = !invocation.has(u"--keep-country"_s);
    if (invocation.has(u"--country"_s)) {
        rules.country = invocation.value(u"--country"_s);
        if (!transfer::isCountryCode(rules.country) || rules.country.size() > transfer::longestCountry)
            return badValue(u"--country"_s, rules.country, u"a \"+\" and up to three digits"_s);
    }
    rules.outsideLine = invocation.has(u"--outside-line"_s);
    if (rules.outsideLine) {
        rules.outsideDigits = invocation.value(u"--outside-line"_s);
        if (!transfer::isOutsideLine(rules.outsideDigits) ||
            rules.outsideDigits.size() > transfer::longestOutsideLine)
            return badValue(u"--outside-line"_s, rules.outsideDigits, u"up to three digits"_s);
    }
    rules.longNumbersOnly = invocation.has(u"--outside-line-min"_s);
    if (rules.longNumbersOnly) {
        rules.minimumLength = invocation.value(u"--outside-line-min"_s);
        if (!rules.outsideLine || !transfer::isNumeric(rules.minimumLength))
            return rules.outsideLine ? badValue(u"--outside-line-min"_s, rules.minimumLength, u"a number"_s)
                                     : u"--outside-line-min needs --outside-line"_s;
    }
    rules.dropZero = invocation.has(u"--drop-zero"_s);
    options.baseLetters = invocation.has(u"--base-letters"_s);
    options.markExisting = !invocation.has(u"--no-existing"_s);
    options.existingByNumber = invocation.has(u"--existing-by-number"_s);
    if (!invocation.has(u"--time"_s))
        return {};
    const QString time = invocation.value(u"--time"_s);
    options.text.defaultTime = options.addresses.birthdayTime = options.addresses.vcardBirthdayTime = time;
    return phonedata::isTimeOfDay(time) ? QString() : badValue(u"--time"_s, time, u"a time like 08:30"_s);
}

transfer::TextRequest textRequest(const Invocation& invocation, QByteArrayView bytes)
{
    using transfer::Encoding;
    using transfer::Reading;
    using transfer::Separator;
    static const QMap<QString, Separator> separators = {
        {u"comma"_s, Separator::Comma}, {u"semicolon"_s, Separator::Semicolon}, {u"tab"_s, Separator::Tab}};
    static const QMap<QString, Encoding> encodings = {
        {u"ansi"_s, Encoding::Ansi}, {u"utf-8"_s, Encoding::Utf8}, {u"utf-16"_s, Encoding::Utf16}};
    static const QMap<QString, Reading> readings = {{u"simple"_s, Reading::Simple}, {u"csv"_s, Reading::Csv}};
    transfer::TextRequest request;
    request.encoding = encodings.value(invocation.value(u"--encoding"_s),
                                       transfer::detectEncoding(bytes)); // "auto" is no row
    if (invocation.has(u"--separator"_s))
        request.separator = separators.value(invocation.value(u"--separator"_s));
    if (invocation.has(u"--quote"_s))
        request.filter = invocation.value(u"--quote"_s);
    const QString reading = invocation.value(u"--reading"_s);
    if (readings.contains(reading))
        request.reading = readings.value(reading);
    return request;
}

QString takeTextOptions(const Invocation& invocation, Shape shape, const QStringList& headings,
                        transfer::TextOptions& options)
{
    const auto fields = transfer::fieldsOf(shape);
    for (size_t field = 0; field < fields.size(); ++field) {
        const QString option = optionFor(fields[field]);
        if (!invocation.has(option))
            continue;
        const QString word = invocation.value(option);
        const auto column = columnNamed(word, headings);
        if (!column)
            return u"there is no column \"%1\" for %2"_s.arg(word, option);
        options.columns[field] = *column;
    }
    options.skipHeading = invocation.has(u"--skip-heading"_s);
    if (invocation.value(u"--dates"_s) == u"month-first"_s)
        options.dateOrder = transfer::DateOrder::MonthFirst;
    return {};
}

QString takeAddressOptions(const Invocation& invocation, Shape shape, transfer::AddressOptions& options)
{
    options.fillNames = invocation.has(u"--fill-names"_s);
    options.ownBirthdays = invocation.has(u"--own-birthdays"_s);
    options.birthdays = !invocation.has(u"--no-birthdays"_s);
    if (invocation.has(u"--birthday"_s)) {
        if (invocation.value(u"--birthday"_s) != noColumnWord)
            return badValue(u"--birthday"_s, invocation.value(u"--birthday"_s), u"- for an address book"_s);
        options.birthdays = options.vcardBirthdays = false;
    }
    QString fault =
        invocation.has(u"--numbers"_s) ? takeKinds(invocation.value(u"--numbers"_s), options) : QString();
    for (const QString& value : invocation.values(u"--compose"_s)) {
        if (fault.isEmpty())
            fault = takeCompose(value, options);
    }
    const auto fields = transfer::fieldsOf(shape);
    for (size_t field = 0; shape == Shape::Vcard && field < transfer::PreviewAnniversary && fault.isEmpty();
         ++field) {
        const QString option = optionFor(fields[field]);
        if (!invocation.has(option))
            continue;
        const QString word = invocation.value(option);
        const auto position = addressFieldNamed(word, fields[field].kind);
        if (position)
            options.fields[field] = *position;
        else
            fault = badValue(option, word, wordsFor(fields[field].kind));
    }
    return fault;
}

} // namespace kalmo::cli
