#pragma once

#include <QtGlobal>

#include <array>

namespace kalmo::handset {

inline constexpr int lastFamily = 13;

/// Line ends of commands that a handset accepts.
enum class LineEnd {
    Cr,   ///< CR; a line feed after it is ignored
    CrLf, ///< CR LF, and the echo has both; a line that ends in CR alone is not answered
};

/// Properties of a family in data mode.
struct DataMode
{
    int maxPacket = 0;          ///< bytes of the largest OBEX frame that it takes
    qint64 fileMemory = 0;      ///< bytes for files; 0 where there is no file system
    bool answersEscape = false; ///< answers OK when it is back in command mode
    bool quotedCards = false;   ///< letters beyond ASCII go into cards as quoted-printable UTF-8
    bool tellsDeletes = false;  ///< reports LUID and counter after an item has been deleted
    bool absoluteNames = false; ///< wants whole paths where a file is put or deleted
};

/// Common properties of the handsets of one family.
struct Family
{
    int number;               ///< 1 to 13; 0 is a device that is no handset
    const char* manufacturer; ///< answer to "AT+CGMI"
    const char* version;      ///< answer to "AT+CGMR"
    std::array<int, 2> rates; ///< baud rates at which it answers, 0 for none
    LineEnd lineEnd;
    int phonebookCapacity; ///< entries, of whichever phonebook the family has
    int providerCapacity;
    const char* melodyList; ///< argument of "AT^WFFO="; null if the family lists none
    bool blankBehindPrefix; ///< "^WSRE: 5,..." or "^WSRE:5,..."
    DataMode data = {};
};

/// The family of that number. For any other number the first row, which is no handset.
const Family& familyOf(int number);

/// A set of families, for tables.
class FamilySet
{
public:
    constexpr FamilySet() = default;
    /// From `first` to `last`, both included.
    constexpr FamilySet(int first, int last)
    {
        for (int number = first; number <= last; ++number)
            m_bits |= 1u << number;
    }
    constexpr FamilySet operator|(FamilySet other) const
    {
        FamilySet both;
        both.m_bits = m_bits | other.m_bits;
        return both;
    }
    constexpr bool contains(int number) const { return (m_bits >> number & 1u) != 0; }

private:
    quint32 m_bits = 0;
};

inline constexpr FamilySet everyDevice{0, lastFamily};
inline constexpr FamilySet everyHandset{1, lastFamily};
inline constexpr FamilySet classicFamilies{1, 4};
inline constexpr FamilySet vcardFamilies{5, lastFamily};

} // namespace kalmo::handset
