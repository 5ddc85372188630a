// Meaning of the words on the command line.

#include "cli/Help.h"
#include "support/TestProgram.h"

#include <set>

using namespace kalmo::cli;

namespace {

QString inWords(const Invocation& made)
{
    if (made.kind == Invocation::Kind::WrongUse)
        return u"wrong: "_s + made.error;
    QString text = made.kind == Invocation::Kind::Run    ? u"run"_s
                   : made.kind == Invocation::Kind::Help ? u"help"_s
                                                         : u"version"_s;
    text += u' ' + (made.command ? made.command->words.toString() : made.topic);
    for (const QString& argument : made.arguments)
        text += u" <"_s + argument + u'>';
    for (auto option = made.options.begin(); option != made.options.end(); ++option)
        text += u' ' + option.key() + u'=' + option.value();
    return text;
}

} // namespace

class tst_Invocation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void words();
    void helpTellsWhatIsAsked();
    void familiesInWords();
};

void tst_Invocation::familiesInWords()
{
    const Rows<const HandsetKind*, QString> rows{
        {"one", &clockHandset, u"(family 1)"_s},
        {"some", &ringingHandset, u"(families 2 to 4)"_s},
        {"with a gap", &filingHandset, u"(families 5, 6 and 8 to 13)"_s},
    };
    rows.each([](const auto& handset, const auto& families) {
        QCOMPARE(handset->inWords(), u"%1 %2"_s.arg(handset->subject, families));
    });
}

void tst_Invocation::words()
{
    const Rows<QString, QString> rows{
        {"longest command wins", u"ringtones set alarm 3 rising"_s,
         u"run ringtones set <alarm> <3> <rising>"_s},
        {"options ahead and behind", u"--port 3 phonebook --json read -o a.tel"_s,
         u"run phonebook read --json= --output=a.tel --port=3"_s},
        {"values behind an equals sign, or attached to the letter",
         u"--port=/dev/x=1 phonebook read -oa.tel"_s, u"run phonebook read --output=a.tel --port=/dev/x=1"_s},
        {"values that are empty, or begin with a dash",
         u"preview f --for vcard --email - --outside-line=-1 --quote="_s,
         u"run preview <f> --email=- --for=vcard --outside-line=-1 --quote="_s},
        {"value that is none of the choices", u"preview f --for tel"_s,
         u"wrong: \"tel\" is no value for --for; choose one of classic, vcard"_s},
        {"words behind two dashes are no options", u"phonebook write -- --yes"_s,
         u"run phonebook write <--yes>"_s},
        {"help about a command, whatever else is wrong", u"phonebook write -h"_s,
         u"help phonebook write --help="_s},
        {"nothing", {}, u"wrong: no command given"_s},
        {"unknown option", u"find --jsno"_s, u"wrong: unknown option --jsno; did you mean --json?"_s},
        {"option of another command", u"find --dry-run"_s, u"wrong: \"find\" has no option --dry-run"_s},
        {"no value", u"find --port"_s, u"wrong: --port needs a value: --port N|DEVICE"_s},
        {"an option is no value", u"--port --json find"_s, u"wrong: --port needs a value: --port N|DEVICE"_s},
        {"second word mistyped", u"ringtones sett external"_s,
         u"wrong: \"sett\" is too much for \"ringtones\"; did you mean \"ringtones set\"?"_s},
        {"not one of the choices", u"ringtones set sms 3 3"_s,
         u"wrong: \"sms\" is no EVENT; choose one of external, internal, appointment, alarm"_s},
    };
    rows.each([&](const auto& line, const auto& meaning) {
        QCOMPARE(inWords(parseWords(line.split(u' ', Qt::SkipEmptyParts))), meaning);
    });
}

void tst_Invocation::helpTellsWhatIsAsked()
{
    const QString all = helpText(parseWords({u"--help"_s}));
    const QString group = helpText(parseWords({u"phonebook"_s, u"--help"_s}));
    const QString one = helpText(parseWords({u"phonebook"_s, u"write"_s, u"--help"_s}));
    for (const Command& command : commandTable())
        QVERIFY2(all.contains(u"  "_s + usageOf(command)), qPrintable(usageOf(command)));
    for (const Option& option : globalOptions())
        QVERIFY2(all.contains(option.name) && one.contains(option.name), qPrintable(option.name.toString()));
    for (const Command& command : commandTable())
        QCOMPARE(group.contains(u"  "_s + usageOf(command)), command.words.startsWith(u"phonebook "));
    QVERIFY(one.startsWith(u"Usage: kalmoctl [OPTION]... phonebook write FILE [--dry-run]\n"_s));
    for (const QString& line : (all + one).split(u'\n'))
        QVERIFY2(line.size() <= 100, qPrintable(line));
}

KALMO_TEST(tst_Invocation)
#include "tst_Invocation.moc"
