#include "transfer/import/ImportHints.h"

#include "phonedata/PhoneCharacters.h"
#include "transfer/import/BaseLetters.h"

#include <QRegularExpression>

#include <algorithm>

namespace kalmo::transfer {

namespace {

constexpr std::array<HintText, hintKindCount> hintTexts = {{
    {u"damaged", u"Einträge des Adressbuchs sind beschädigt und fehlen", u"",
     u"entries of the address book are damaged and missing", u""},
    {u"cut", u"Die Datei ist beschädigt: Kontakte brechen ab, ihr Rest und womöglich weitere fehlen", u"",
     u"the file is damaged: contacts break off, their rest and maybe others are missing", u""},
    {u"reading", u"Zeilen kommen falsch heraus, weil nur manche Zellen in Anführungszeichen stehen",
     u"Als CSV lesen", u"lines come out wrong because only some cells are in quotes", u"--reading csv"},
    {u"broken", u"Anführungszeichen stehen falsch, dort können Zeilen fehlen", u"Zeile für Zeile lesen",
     u"quotes are at a wrong place, rows may be missing there", u"--reading simple"},
    {u"filter", u"Die Zellen sind nicht von den Zeichen umgeben, die ausgefiltert werden",
     u"Keine Zeichen ausfiltern", u"the cells are not in the quotes that are looked for", u"--quote ''"},
    {u"encoding", u"Umlaute und Akzente kommen falsch heraus", u"Als %1 lesen", u"letters come out wrong",
     u"--encoding"},
    {u"heading", u"Die Überschriften würden als Eintrag importiert", u"Erste Zeile weglassen",
     u"the line of headings would be imported", u"--skip-heading"},
    {u"columns", u"Keine Spalte mit Telefonnummern erkannt, bitte wählen Sie die Spalten", u"",
     u"no column of numbers was recognised; name one by --number or --home, --mobile, --work", u""},
    {u"zero", u"Nummern mit \"(0)\" würden falsch gewählt", u"\"(0)\" entfernen",
     u"numbers with \"(0)\" would be dialled wrongly", u"--drop-zero"},
    {u"extensions", u"Nummern mit Durchwahl werden zu einer langen Nummer", u"",
     u"extensions become part of the number", u""},
    {u"lost-extensions", u"Durchwahlen stehen getrennt von der Nummer und fallen weg", u"",
     u"extensions are written apart from the number and are left out", u""},
    {u"numbers", u"Mehrere Nummern in einer Zelle werden zu einer", u"",
     u"several numbers in one cell become one", u""},
    {u"letters", u"Namen verlieren Buchstaben, die das Telefon nicht hat", u"Grundbuchstaben nehmen",
     u"names lose letters that the phone lacks", u"--base-letters"},
    {u"mails", u"E-Mail-Adressen verlieren Zeichen, die das Telefon nicht hat", u"",
     u"e-mail addresses lose characters that the phone lacks", u""},
    {u"dates", u"Geburtstage nennen den Monat zuerst, andere werden mit dem Tag zuerst gelesen",
     u"Überall Monat zuerst", u"birthdays have the month first, while others are read day first",
     u"--dates month-first"},
    {u"birthdays", u"Geburtstage sind nicht lesbar und fallen weg", u"",
     u"birthdays are not understood and left out", u""},
    {u"days", u"Geburtstage nennen einen Tag, den es nicht gibt", u"",
     u"birthdays name a day that does not exist", u""},
    {u"years", u"Geburtstage ohne Jahr bekommen das laufende", u"",
     u"birthdays without a year get the current one", u""},
    {u"names", u"Kontakte haben keinen Namen in den gewählten Feldern", u"Anzeige oder Firma nehmen",
     u"contacts have no name in the chosen fields", u"--fill-names"},
    {u"moved", u"Geburtstage landen bei einem anderen Kontakt", u"Diese weglassen",
     u"birthdays go to another contact's entry", u"--own-birthdays"},
    {u"lost-birthdays", u"Geburtstage von Kontakten ohne Nummer fallen weg", u"",
     u"birthdays of contacts without a number are left out", u""},
    {u"places", u"Nummern finden keinen Platz und fallen weg", u"", u"numbers find no place and are left out",
     u""},
    {u"files", u"Dateien im Ordner sind keine vCards und fehlen", u"",
     u"files of the folder hold no card and are left out", u""},
}};

QStringView encodingWord(Encoding encoding)
{
    constexpr std::array<QStringView, 3> words = {u"ansi", u"utf-8", u"utf-16"};
    return words[static_cast<size_t>(encoding)];
}

bool isDialled(QChar character)
{
    return character >= u'0' && character <= u'9';
}

qsizetype digitsIn(QStringView text)
{
    return std::count_if(text.begin(), text.end(), isDialled);
}

/// Returns true if there are letters in front of digits at the end, as in "0221 123 ext. 4", or a mark of two
/// numbers.
bool isWorthALook(QStringView cell)
{
    return std::any_of(cell.begin(), cell.end(), [](QChar character) {
        return character.isLetter() || QStringView(u";:,/\n").contains(character);
    });
}

/// Looks at the start of a cell only: the time that the expression needs grows with the square of the length.
bool hasExtension(const QString& cell)
{
    constexpr qsizetype mostRead = 200;
    static const QRegularExpression extension(
        u"[0-9].*?(?:\\bext\\.?|\\bx|\\bdurchwahl|\\bdw\\.?|\\bapp(?:arat)?\\.?|;ext=)\\s*:?\\s*[0-9]+"_s,
        QRegularExpression::CaseInsensitiveOption);
    return extension.match(cell.first(std::min(cell.size(), mostRead))).hasMatch();
}

bool hasLetters(QStringView cell)
{
    return std::any_of(cell.begin(), cell.end(), [](QChar character) { return character.isLetter(); });
}

/// Returns true if two parts of a cell, parted by a mark, are long enough for a number each. What follows a
/// slash has to begin as a number does: an area code may have five digits.
bool holdsSeveralNumbers(QString cell)
{
    constexpr qsizetype shortestNumber = 5;
    static const QRegularExpression words(u"\\b(?:oder|or|und|and)\\b"_s,
                                          QRegularExpression::CaseInsensitiveOption);
    if (hasLetters(cell))
        cell.replace(words, u";"_s);
    int numbers = 0;
    qsizetype start = 0;
    for (qsizetype place = 0; place <= cell.size(); ++place) {
        if (place < cell.size() && !QStringView(u":;,/\n").contains(cell[place]))
            continue;
        const QStringView part = QStringView(cell).sliced(start, place - start).trimmed();
        const bool followsSlash = start > 0 && cell[start - 1] == u'/';
        const bool beginsAnew = !followsSlash || part.startsWith(u'0') || part.startsWith(u'+');
        numbers += digitsIn(part) >= shortestNumber && beginsAnew ? 1 : 0;
        start = place + 1;
    }
    return numbers > 1;
}

/// In a file of UTF-16 no letter is right, so there is nothing to count and no example.
bool isUtf16(const ImportHint& hint)
{
    return hint.kind == HintKind::OtherEncoding && hint.encoding == Encoding::Utf16;
}

QString shown(QStringView cell)
{
    constexpr qsizetype mostShown = 40;
    return cell.first(std::min(cell.size(), mostShown)).toString().simplified();
}

} // namespace

const HintText& textOf(HintKind kind)
{
    return hintTexts[static_cast<size_t>(kind)];
}

QString optionOf(const ImportHint& hint)
{
    if (!hint.canBeMended)
        return {};
    const QString option = textOf(hint.kind).option.toString();
    return hint.kind == HintKind::OtherEncoding ? option + u' ' + encodingWord(hint.encoding).toString()
                                                : option;
}

QString germanOf(const ImportHint& hint)
{
    const QString example = hint.example.isEmpty() ? QString() : u", z. B. "_s + hint.example;
    if (isUtf16(hint))
        return u"Die Datei ist in UTF-16 geschrieben, so ist ihr Text nicht lesbar"_s;
    return textOf(hint.kind).german.toString() + u" ("_s + QString::number(hint.count) + u" ×"_s + example +
           u')';
}

QString englishOf(const ImportHint& hint)
{
    const QString example = hint.example.isEmpty() ? QString() : u", such as "_s + hint.example;
    if (isUtf16(hint))
        return u"the file is UTF-16, so its text is not readable"_s;
    return textOf(hint.kind).english.toString() + u" ("_s + QString::number(hint.count) + example + u')';
}

QString mendingOf(const ImportHint& hint)
{
    if (!hint.canBeMended)
        return {};
    const QString caption = textOf(hint.kind).mending.toString();
    const bool namesEncoding = hint.kind == HintKind::OtherEncoding;
    return namesEncoding ? caption.arg(encodingWord(hint.encoding).toString().toUpper()) : caption;
}

ImportOptions mended(ImportOptions options, const ImportHint& hint)
{
    switch (hint.kind) {
    case HintKind::ReadAsCsv:
        options.text.layout.reading = Reading::Csv;
        break;
    case HintKind::BrokenCsv:
        options.text.layout.reading = Reading::Simple;
        break;
    case HintKind::UnusedFilter:
        options.text.layout.filter.clear();
        break;
    case HintKind::OtherEncoding:
        options.text.encoding = hint.encoding;
        break;
    case HintKind::Heading:
        options.text.skipHeading = true;
        break;
    case HintKind::ZeroInBrackets:
        options.numbers.dropZero = true;
        break;
    case HintKind::LostLetters:
        options.baseLetters = true;
        break;
    case HintKind::MixedDates:
        options.text.dateOrder = DateOrder::MonthFirst;
        break;
    case HintKind::EmptyNames:
        options.addresses.fillNames = true;
        break;
    case HintKind::MovedBirthdays:
        options.addresses.ownBirthdays = true;
        break;
    case HintKind::DamagedRecords:
    case HintKind::CutContacts:
    case HintKind::NoNumberColumn:
    case HintKind::Extensions:
    case HintKind::LostExtensions:
    case HintKind::SeveralNumbers:
    case HintKind::LostMailCharacters:
    case HintKind::LostBirthdays:
    case HintKind::UnreadBirthdays:
    case HintKind::ImpossibleDays:
    case HintKind::BirthdaysWithoutYear:
    case HintKind::NumbersWithoutPlace:
    case HintKind::SkippedFiles:
        break;
    }
    return options;
}

void HintCounter::add(HintKind kind, int count, const QString& example)
{
    Counted& counted = m_counted[static_cast<size_t>(kind)];
    if (counted.count == 0)
        counted.example = shown(example);
    counted.count += count;
}

void HintCounter::lookAtNumber(QStringView cell, const NumberRules& rules)
{
    if (!rules.dropZero && hasZeroInBrackets(cell))
        add(HintKind::ZeroInBrackets, cell.toString());
    if (!isWorthALook(cell))
        return;
    const QString text = cell.toString();
    if ((hasLetters(cell) || cell.contains(u';')) && hasExtension(text))
        add(HintKind::Extensions, text);
    else if (holdsSeveralNumbers(text))
        add(HintKind::SeveralNumbers, text);
}

void HintCounter::lookAtName(QStringView cell, const QString& kept)
{
    if (kept.size() == cell.size())
        return;
    const bool losesLetter = std::any_of(cell.begin(), cell.end(), [](QChar character) {
        return (character.isLetter() || character.isSurrogate()) && !phonedata::IsNameChar(character);
    });
    if (!losesLetter)
        return;
    add(HintKind::LostLetters, cell.toString() + u" → "_s + kept);
    m_lettersHaveBase = m_lettersHaveBase || FilterName(withBaseLetters(cell)).size() > kept.size();
}

void HintCounter::lookAtMail(QStringView cell, const QString& kept)
{
    if (kept.trimmed().size() != cell.trimmed().size())
        add(HintKind::LostMailCharacters, cell.toString() + u" → "_s + kept);
}

void HintCounter::lookAtBirthday(QStringView cell, const BirthdayCell& birthday, const DateManner& manner)
{
    if (birthday.text.isEmpty() && digitsIn(cell) > 0)
        add(HintKind::UnreadBirthdays, cell.toString());
    if (birthday.isImpossible)
        add(HintKind::ImpossibleDays, cell.toString());
    if (manner.needsYear && !birthday.hasYear)
        add(HintKind::BirthdaysWithoutYear, cell.toString());
    if (manner.order == DateOrder::MonthFirst)
        return;
    const bool isSwapped = birthday.hint == DateHint::SwappedDots;
    m_swappedDots += isSwapped ? 1 : 0;
    if ((isSwapped || birthday.hint == DateHint::MonthFirstOnly) && m_monthFirst++ == 0)
        m_monthFirstExample = cell.toString();
    const bool isDotted = birthday.hint == DateHint::None && !birthday.text.isEmpty();
    m_dotted += isDotted && cell.contains(u'.') ? 1 : 0;
    m_dayFirst += birthday.hint == DateHint::DayFirstOnly ? 1 : 0;
    m_either += birthday.hint == DateHint::Either ? 1 : 0;
}

std::vector<ImportHint> HintCounter::hints() const
{
    std::vector<ImportHint> hints;
    const bool isMisread = m_counted[static_cast<size_t>(HintKind::OtherEncoding)].count > 0;
    for (size_t index = 0; index < hintKindCount; ++index) {
        const auto kind = static_cast<HintKind>(index);
        const Counted& counted = m_counted[index];
        if (kind == HintKind::MixedDates && m_monthFirst > 0 &&
            m_either + m_dayFirst + (m_swappedDots > 0 ? m_dotted : 0) > 0) {
            // Where some are no date month first, neither order fits the whole column. Dates with dots are
            // read day first in any case.
            hints.push_back({.kind = kind,
                             .count = m_monthFirst,
                             .example = shown(m_monthFirstExample),
                             .canBeMended = m_dayFirst + m_swappedDots == 0});
        } else if (counted.count > 0 && (kind != HintKind::LostLetters || !isMisread)) {
            hints.push_back({.kind = kind,
                             .count = counted.count,
                             .example = counted.example,
                             .canBeMended = !textOf(kind).option.isEmpty() &&
                                            (kind != HintKind::LostLetters || m_lettersHaveBase)});
        }
    }
    return hints;
}

} // namespace kalmo::transfer
