#include "cli/Invocation.h"

#include "cli/Suggestion.h"

#include <algorithm>

namespace kalmo::cli {

namespace {

QString quoted(const QString& word)
{
    return u'"' + word + u'"';
}

/// All options, so that an option may come before the command that it belongs to.
std::vector<Option> allOptions()
{
    std::vector<Option> options = globalOptions();
    for (const Command& command : commandTable()) {
        const std::vector<Option> own = optionsOf(command);
        options.insert(options.end(), own.begin(), own.end());
    }
    return options;
}

const Option* findOption(const std::vector<Option>& options, QStringView word)
{
    const auto found = std::find_if(options.begin(), options.end(), [word](const Option& option) {
        return option.name == word || (!option.letter.isEmpty() && option.letter == word);
    });
    return found == options.end() ? nullptr : &*found;
}

bool isAllowed(const std::vector<QStringView>& choices, QStringView word)
{
    return choices.empty() || std::find(choices.begin(), choices.end(), word) != choices.end();
}

QStringList namesOf(const std::vector<QStringView>& choices)
{
    QStringList names;
    for (const QStringView choice : choices)
        names.append(choice.toString());
    return names;
}

class Parser
{
public:
    explicit Parser(const QStringList& words) : m_words(words), m_options(allOptions()) {}

    Invocation parse();

private:
    bool readWords();
    bool readOption(const QString& word);
    bool findCommand();
    bool checkOptions();
    bool checkArguments();
    bool askForHelp();
    bool fail(const QString& error)
    {
        m_made.error = error;
        return false;
    }
    QString unknownCommand() const;
    QString tooMuch(const QString& word) const;
    bool nextIsOption() const;
    QString unknownOption(const QString& name) const;

    QStringList m_words;
    std::vector<Option> m_options;
    qsizetype m_next = 0;
    QStringList m_positional;
    Invocation m_made;
};

Invocation Parser::parse()
{
    using Kind = Invocation::Kind;
    if (!readWords())
        return m_made;
    if (m_made.has(u"--version"_s))
        m_made.kind = Kind::Version;
    else if (m_made.has(u"--help"_s))
        m_made.kind = askForHelp() ? Kind::Help : Kind::WrongUse;
    else if (findCommand() && checkOptions() && checkArguments())
        m_made.kind = Kind::Run;
    return m_made;
}

bool Parser::readWords()
{
    while (m_next < m_words.size()) {
        const QString word = m_words[m_next++];
        if (word == u"--"_s) {
            m_positional += m_words.mid(m_next);
            return true;
        }
        if (!word.startsWith(u'-') || word == u"-"_s)
            m_positional.append(word);
        else if (!readOption(word))
            return false;
    }
    return true;
}

bool Parser::readOption(const QString& word)
{
    const bool isLong = word.startsWith(u"--"_s);
    const qsizetype equals = isLong ? word.indexOf(u'=') : -1;
    const QString name = isLong ? word.left(equals) : word.first(2);
    const Option* option = findOption(m_options, name);
    if (!option)
        return fail(unknownOption(name));
    QString value;
    const bool attached = equals >= 0 || (!isLong && word.size() > 2);
    if (attached && isLong && option->value.isEmpty())
        return fail(u"%1 takes no value"_s.arg(name));
    if (attached && option->value.isEmpty())
        m_words.insert(m_next, u'-' + word.mid(2)); // more switches in one word
    else if (attached)
        value = word.mid(isLong ? equals + 1 : 2);
    const bool follows = !attached && !option->value.isEmpty() && m_next < m_words.size() && !nextIsOption();
    if (follows)
        value = m_words[m_next++];
    const bool isMissing =
        option->emptyValue == EmptyValue::Allowed ? !attached && !follows : value.isEmpty();
    if (isMissing && !option->value.isEmpty())
        return fail(u"%1 needs a value: %1 %2"_s.arg(name, option->value));
    m_made.options.insert(option->name.toString(), value);
    m_made.repeated[option->name.toString()].append(value);
    return true;
}

/// Returns true if the next word is an option rather than the value of the one before it.
bool Parser::nextIsOption() const
{
    return findOption(m_options, QStringView(m_words[m_next]).split(u'=').first()) != nullptr;
}

bool Parser::findCommand()
{
    if (m_positional.isEmpty())
        return fail(u"no command given"_s);
    for (qsizetype count = m_positional.size(); count > 0; --count) {
        const QString words = m_positional.first(count).join(u' ');
        for (const Command& command : commandTable()) {
            if (command.words != words)
                continue;
            m_made.command = &command;
            m_made.arguments = m_positional.mid(count);
            return true;
        }
    }
    return fail(unknownCommand());
}

QString Parser::unknownCommand() const
{
    QStringList names;
    QStringList below;
    const QString first = m_positional.first() + u' ';
    for (const Command& command : commandTable()) {
        names.append(command.words.toString());
        if (command.words.startsWith(first))
            below.append(command.words.sliced(first.size()).toString());
    }
    if (m_positional.size() == 1 && !below.isEmpty())
        return u"%1 needs a second word: %2"_s.arg(quoted(m_positional.first()), below.join(u" or "_s));
    // Words after the command's own would only blur the likeness.
    QString text;
    for (qsizetype count = std::min<qsizetype>(m_positional.size(), 2); count > 0; --count) {
        const QString words = m_positional.first(count).join(u' ');
        text = u"unknown command %1"_s.arg(quoted(words));
        if (const QString near = closestTo(words, names); !near.isEmpty())
            return text + u"; did you mean %1?"_s.arg(quoted(near));
    }
    return text;
}

QString Parser::tooMuch(const QString& word) const
{
    const QString words = m_made.command->words.toString();
    QStringList below; // of a longer command only the first word may have been understood
    for (const Command& command : commandTable()) {
        if (command.words.startsWith(words + u' '))
            below.append(command.words.sliced(words.size() + 1).toString());
    }
    const QString near = closestTo(word, below);
    const QString text = u"%1 is too much for %2"_s.arg(quoted(word), quoted(words));
    return near.isEmpty() ? text : text + u"; did you mean %1?"_s.arg(quoted(words + u' ' + near));
}

QString Parser::unknownOption(const QString& name) const
{
    QStringList names;
    for (const Option& option : m_options)
        names.append(option.name.toString());
    const QString near = closestTo(name, names);
    const QString text = u"unknown option %1"_s.arg(name);
    return near.isEmpty() ? text : text + u"; did you mean %1?"_s.arg(near);
}

bool Parser::checkOptions()
{
    const std::vector<Option> own = optionsOf(*m_made.command);
    for (auto given = m_made.options.cbegin(); given != m_made.options.cend(); ++given) {
        const Option* option = findOption(own, given.key());
        if (!option && !findOption(globalOptions(), given.key()))
            return fail(u"%1 has no option %2"_s.arg(quoted(m_made.command->words.toString()), given.key()));
        if (option && !isAllowed(option->choices, given.value()))
            return fail(u"%1 is no value for %2; choose one of %3"_s.arg(
                quoted(given.value()), given.key(), namesOf(option->choices).join(u", "_s)));
    }
    return true;
}

bool Parser::checkArguments()
{
    const Command& command = *m_made.command;
    const auto& arguments = command.arguments;
    const auto expected = static_cast<qsizetype>(arguments.size());
    const bool takesMore = expected > 0 && arguments.back().count == Count::OneOrMore;
    if (m_made.arguments.size() > expected && !takesMore)
        return fail(tooMuch(m_made.arguments[expected]));
    for (qsizetype index = 0; index < expected; ++index) {
        const Argument& argument = arguments[index];
        if (index >= m_made.arguments.size())
            return argument.count == Count::OneOrNone ||
                   fail(u"%1 needs %2: %3"_s.arg(quoted(command.words.toString()), argument.name,
                                                 argument.help));
        const QString& given = m_made.arguments[index];
        if (!isAllowed(argument.choices, given))
            return fail(u"%1 is no %2; choose one of %3"_s.arg(quoted(given), argument.name,
                                                               namesOf(argument.choices).join(u", "_s)));
    }
    return true;
}

bool Parser::askForHelp()
{
    if (m_positional.isEmpty())
        return true;
    if (findCommand())
        return true;
    m_made.topic = m_positional.join(u' ');
    const auto below = [this](const Command& command) {
        return command.words.startsWith(m_made.topic + u' ');
    };
    return std::any_of(commandTable().begin(), commandTable().end(), below);
}

} // namespace

QString inShellQuotes(QString word)
{
    return u'\'' + word.replace(u'\'', u"'\\''"_s) + u'\'';
}

QString Invocation::again(const QString& words) const
{
    QString line = u"kalmoctl "_s;
    for (const QString& option : {u"--port"_s, u"--storage"_s}) {
        if (has(option))
            line += option + u' ' + inShellQuotes(value(option)) + u' ';
    }
    return line + words;
}

std::vector<Option> optionsOf(const Command& command)
{
    std::vector<Option> options = command.options;
    if (command.group)
        options.insert(options.end(), command.group->options.begin(), command.group->options.end());
    return options;
}

Invocation parseWords(const QStringList& words)
{
    return Parser(words).parse();
}

} // namespace kalmo::cli
