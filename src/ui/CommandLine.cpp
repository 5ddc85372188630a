#include "ui/CommandLine.h"

#include <algorithm>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

struct OptionRow
{
    QStringView name;
    QString CommandLine::*value;
};

constexpr OptionRow options[] = {
    {u"--storage", &CommandLine::storage},
    {u"--port", &CommandLine::port},
    {u"--log", &CommandLine::log},
};

/// Returns true for a name with the ending of a backup, or of a file for the import.
bool isFileOfLists(const QString& word)
{
    constexpr QStringView endings[] = {u".tel", u".prv", u".csv", u".wab", u".vcf"};
    return std::ranges::any_of(
        endings, [&word](QStringView ending) { return word.endsWith(ending, Qt::CaseInsensitive); });
}

CommandLine wrongUse(const QString& error)
{
    CommandLine made;
    made.kind = CommandLine::Kind::WrongUse;
    made.error = error;
    return made;
}

} // namespace

CommandLine parseCommandLine(const QStringList& arguments)
{
    CommandLine made;
    QStringList rest;
    for (qsizetype index = 0; index < arguments.size(); ++index) {
        const QString& word = arguments[index];
        if (!word.startsWith(u"--"_s)) {
            if (isFileOfLists(word))
                made.file = word;
            else
                rest.append(word);
            continue;
        }
        if (word == u"--help"_s || word == u"--version"_s) {
            made.kind = word == u"--help"_s ? CommandLine::Kind::Help : CommandLine::Kind::Version;
            return made;
        }
        const QString name = word.section(u'=', 0, 0);
        const auto option = std::ranges::find(options, QStringView(name), &OptionRow::name);
        if (option == std::end(options))
            return wrongUse(u"there is no option \"%1\""_s.arg(name));
        const bool isJoined = name.size() < word.size();
        const QString value = isJoined ? word.sliced(name.size() + 1) : arguments.value(++index);
        if (value.isEmpty())
            return wrongUse(u"option \"%1\" needs a value"_s.arg(name));
        made.*option->value = value;
    }
    made.rest = rest.join(u' ');
    return made;
}

QString commandLineHelp()
{
    return u"Usage: kalmo [OPTION]... [/DBG | /DELINI] [FILE]\n"
           u"Look after a DECT cordless handset in a window. FILE is a backup (.tel, .prv), a\n"
           u"table (.csv) or an address book (.wab, .vcf) to open after the start.\n\n"
           u"  --storage DIR       keep settings and backups in DIR for this run\n"
           u"  --port N|DEVICE     the handset's port for this run, by its number or its device\n"
           u"  --log FILE          append every exchange with the handset to FILE\n"
           u"  --help              show this help and end\n"
           u"  --version           show the version and end\n"
           u"  /DBG, /DEBUG        log every exchange to a file on the desktop\n"
           u"  /DELINI             forget all settings, after a question\n"_s;
}

} // namespace kalmo::ui
