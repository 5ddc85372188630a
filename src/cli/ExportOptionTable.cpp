// The options that all commands share that export.

#include "cli/Command.h"

namespace kalmo::cli {

const OptionGroup& exportOptionGroup()
{
    static const OptionGroup group = {
        .name = u"OPTION",
        .heading = u"Export options",
        .options = {
            {u"--from", u"", u"LIST", u"export a saved list instead of the phone's"},
            {u"--columns", u"", u"A,B", u"only these columns, by their German headings"},
            {u"--rows", u"", u"1-5,9", u"only these rows, counted from 1"},
            {u"--no-header", u"", u"", u"leave the headings out"},
            {u"--empty-line", u"", u"", u"put an empty line below the headings"},
            {u"--separator",
             u"",
             u"KIND",
             u".csv: comma, comma-quoted, semicolon, semicolon-quoted or tab",
             {u"comma", u"comma-quoted", u"semicolon", u"semicolon-quoted", u"tab"}},
            {u"--replace",
             u"",
             u"TEXT",
             u".csv: put in the place of separators in the data, a blank if missing",
             {},
             EmptyValue::Allowed},
            {u"--template", u"", u"PAGE", u".html: page with a place for the table"},
            {u"--fixed-width", u"", u"", u".xlsx, .docx: columns of one width instead of fitted ones"},
            {u"--force", u"", u"", u"overwrite FILE without a question"},
        }};
    return group;
}

} // namespace kalmo::cli
