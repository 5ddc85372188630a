#pragma once

#include "transfer/import/ImportOptions.h"

#include <array>
#include <span>
#include <vector>

namespace kalmo::transfer {

/// Faults of a source, in the order in which they are shown.
enum class HintKind : size_t {
    DamagedRecords,     ///< entries of an address book that can't be read
    CutContacts,        ///< contacts within which the file breaks off
    ReadAsCsv,          ///< the file is valid by RFC 4180, which gives other cells
    BrokenCsv,          ///< read as CSV, the file has quotes at a wrong place, which may swallow rows
    UnusedFilter,       ///< the text to filter stands around no cell, so no row is taken apart
    OtherEncoding,      ///< the letters look like another encoding
    Heading,            ///< the heading line would be imported
    NoNumberColumn,     ///< no column of numbers was recognised
    ZeroInBrackets,     ///< "+49 (0) 221" would be dialled wrongly
    Extensions,         ///< an extension becomes part of the number
    LostExtensions,     ///< a card's extension is left out
    SeveralNumbers,     ///< two numbers in one cell become one
    LostLetters,        ///< the handsets lack letters of names
    LostMailCharacters, ///< an e-mail address becomes another one
    MixedDates,         ///< dates of which some are read day first and some month first
    UnreadBirthdays,    ///< a cell of birthdays that is none
    ImpossibleDays,     ///< a birthday on a day that no calendar has
    BirthdaysWithoutYear,
    EmptyNames,     ///< names with only the texts around the fields
    MovedBirthdays, ///< a birthday that goes to another contact's row
    LostBirthdays,  ///< a birthday that no row can take
    NumbersWithoutPlace,
    SkippedFiles ///< files of a folder that hold no card
};

inline constexpr size_t hintKindCount = static_cast<size_t>(HintKind::SkippedFiles) + 1;

/// The texts of a kind of hint.
struct HintText
{
    QStringView key;     ///< in JSON
    QStringView german;  ///< without the number of cases and the example
    QStringView mending; ///< caption of the click that mends it, empty where only the user can
    QStringView english;
    QStringView option; ///< its remedy on the command line, empty for none
};

const HintText& textOf(HintKind kind);

struct ImportHint
{
    HintKind kind = HintKind::ReadAsCsv;
    int count = 0;
    QString example = {};
    Encoding encoding = Encoding::Ansi; ///< the likely one, for OtherEncoding
    bool canBeMended = false;

    bool operator==(const ImportHint&) const = default;
};

/// The option that mends a hint at the command line, with its value; empty where none does.
QString optionOf(const ImportHint& hint);
/// The hint in words, with the number of cases and an example, without a full stop.
QString germanOf(const ImportHint& hint);
QString englishOf(const ImportHint& hint);
/// Caption of the click that mends a hint, empty where only the user can.
QString mendingOf(const ImportHint& hint);

/// The options with the remedy of a hint. If the layout or encoding of a text changes, reopenText() has to
/// follow.
ImportOptions mended(ImportOptions options, const ImportHint& hint);

/// Counts faults while a source is read.
class HintCounter
{
public:
    void add(HintKind kind, const QString& example) { add(kind, 1, example); }
    void add(HintKind kind, int count, const QString& example);
    /// Checks a cell of numbers before it is filtered.
    void lookAtNumber(QStringView cell, const NumberRules& rules);
    /// Compares a cell of names with its filtered text.
    void lookAtName(QStringView cell, const QString& kept);
    /// Compares an e-mail address with its filtered text.
    void lookAtMail(QStringView cell, const QString& kept);
    struct DateManner
    {
        DateOrder order = DateOrder::DayFirst;
        bool needsYear = false;
    };
    /// Compares a cell of birthdays with its result.
    void lookAtBirthday(QStringView cell, const BirthdayCell& birthday, const DateManner& manner);

    /// The faults that were counted, in the order of the kinds.
    std::vector<ImportHint> hints() const;

private:
    struct Counted
    {
        int count = 0;
        QString example = {};
    };

    std::array<Counted, hintKindCount> m_counted;
    int m_monthFirst = 0; // dates that are none day first
    int m_dayFirst = 0;   // dates that are none month first
    int m_either = 0;
    int m_dotted = 0;      // dates with dots that are read day first
    int m_swappedDots = 0; // dates with dots that are none day first; in m_monthFirst, too
    QString m_monthFirstExample;
    bool m_lettersHaveBase = false; // of those that are lost
};

} // namespace kalmo::transfer
