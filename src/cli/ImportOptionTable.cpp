// The options of the commands that import.

#include "cli/Command.h"

namespace kalmo::cli {

const OptionGroup& importOptionGroup()
{
    static const OptionGroup group{
        u"OPTION",
        u"Import options",
        {
            {u"--separator",
             u"",
             u"SEPARATOR",
             u"comma, semicolon or tab, instead of guessing",
             {u"comma", u"semicolon", u"tab"}},
            {.name = u"--quote",
             .value = u"TEXT",
             .help = u"what encloses the cells, '' for nothing, instead of guessing",
             .emptyValue = EmptyValue::Allowed},
            {u"--reading",
             u"",
             u"READING",
             u"simple, csv, or auto for what fits",
             {u"auto", u"simple", u"csv"}},
            {u"--encoding",
             u"",
             u"ENCODING",
             u"ansi, utf-8, utf-16, or auto for what fits",
             {u"auto", u"ansi", u"utf-8", u"utf-16"}},
            {u"--name", u"", u"COLUMN",
             u"column of names: its heading, #3 by position, - for none (classic)"},
            {u"--number", u"", u"COLUMN", u"column of numbers (classic)"},
            {u"--last-name", u"", u"COLUMN", u"column of last names; of an address book a field (vCard)"},
            {u"--first-name", u"", u"COLUMN", u"the same for first names (vCard)"},
            {u"--home", u"", u"COLUMN", u"the same for numbers at home (vCard)"},
            {u"--mobile", u"", u"COLUMN", u"the same for mobile numbers (vCard)"},
            {u"--work", u"", u"COLUMN", u"the same for numbers at work (vCard)"},
            {u"--email", u"", u"COLUMN", u"the same for e-mail addresses (vCard)"},
            {u"--birthday", u"", u"COLUMN", u"column of birthdays, - for none"},
            {u"--time", u"", u"HH:MM", u"time for birthdays that have none"},
            {u"--dates",
             u"",
             u"ORDER",
             u"day-first or month-first, for dates like 5/4/2001",
             {u"day-first", u"month-first"}},
            {u"--country", u"", u"CODE", u"the own country's code, +49 if missing (classic)"},
            {u"--keep-country", u"", u"", u"leave the codes of countries as they are (classic)"},
            {u"--outside-line", u"", u"DIGITS", u"put digits for an outside line in front of each number"},
            {u"--outside-line-min", u"", u"N", u"only in front of numbers with at least N characters"},
            {u"--drop-zero", u"", u"", u"take the (0) out of +49 (0) 221"},
            {u"--skip-heading", u"", u"", u"leave the first line out"},
            {u"--base-letters", u"", u"", u"take base letters for those that phones lack"},
            {u"--numbers", u"", u"KINDS",
             u"home, mobile, home-fax, work, work-fax: numbers of an address book (classic)"},
            {u"--no-birthdays", u"", u"", u"without the birthdays of an address book (classic)"},
            {u"--own-birthdays", u"", u"", u"no birthday of an address book at another's number (classic)"},
            {u"--compose", u"", u"KIND=NAME",
             u"name for a kind of number, like home='{Nachname:15}, {Vorname:1} P' (classic)"},
            {u"--fill-names", u"", u"", u"take Anzeige or Firma where an address book has no name"},
            {u"--existing-by-number", u"", u"", u"compare with the phone's list by numbers alone"},
            {u"--no-existing", u"", u"", u"do not compare with the phone's list"},
            {u"--all", u"", u"", u"take entries that exist already, too"},
            {u"--shorten", u"", u"", u"cut names that are too long (classic)"},
            {u"--skip-too-long", u"", u"", u"leave out what is too long"},
        }};
    return group;
}

} // namespace kalmo::cli
