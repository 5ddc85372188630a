#pragma once

#include "phonedata/ClassicStore.h"

namespace kalmo::operations {

/// One thing about an entry of a classic list that the phone can't hold as given.
struct EntryObjection
{
    enum class What {
        NoText,              ///< there is no name, or no number
        TooLong,             ///< more characters than the field of the phone has
        Character,           ///< a character that the phone can't show or dial
        NotSendable,         ///< a character that would break the command; it is left out
        ImpossibleDate,      ///< no day and time; a date that is no date at all is left out
        NoMelody,            ///< the phone has no melody of this name
        ReminderWithoutDate, ///< the reminder is left out
        NoVip,               ///< this phone marks no VIP entries
        HeldOtherwise,       ///< the phone will hold another text
    };
    enum class Field { Name, Number, Date, Reminder, Vip };

    size_t index = 0; ///< of the entry in the list
    What what = What::NoText;
    Field field = Field::Name;
    QString text = {}; ///< the character, date, melody or text that the objection is about
    QString held = {}; ///< with HeldOtherwise the text that the phone will hold
    int length = 0;    ///< with TooLong the number of characters
    int longest = 0;   ///< with TooLong the most characters that the phone holds

    bool operator==(const EntryObjection&) const = default;
};

/// All objections to a list, entry by entry, then the texts that the phone will hold otherwise. `held` has
/// the entries as the phone will hold them, one for each. A melody that the phone has, and that only comes
/// back under another name, is no objection here.
std::vector<EntryObjection> objectionsTo(const std::vector<phonedata::ClassicEntry>& entries,
                                         const std::vector<phonedata::ClassicEntry>& held,
                                         phonedata::Store store, int phoneType,
                                         const phonedata::SoundList& sounds);

/// Number of melodies that come back under another name than they were sent under: of the oldest family,
/// which counts them from 0 when they are written and from 1 when they are read.
int movedMelodies(const std::vector<phonedata::ClassicEntry>& entries,
                  const std::vector<phonedata::ClassicEntry>& held, int phoneType,
                  const phonedata::SoundList& sounds);

} // namespace kalmo::operations
