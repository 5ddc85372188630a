// What the words on the command line are understood as.

#include "cli/Help.h"

#include <QTest>

#include <set>

using namespace Qt::StringLiterals;
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
    void words_data();
    void words();
    void tableIsSound();
    void helpTellsWhatIsAsked();
};

void tst_Invocation::words_data()
{
    QTest::addColumn<QString>("line"); // split at blanks
    QTest::addColumn<QString>("meaning");

    QTest::newRow("one word") << u"find"_s << u"run find"_s;
    QTest::newRow("two words") << u"phonebook read"_s << u"run phonebook read"_s;
    QTest::newRow("longest command wins")
        << u"ringtones set alarm 3 rising"_s << u"run ringtones set <alarm> <3> <rising>"_s;
    QTest::newRow("shorter command") << u"ringtones"_s << u"run ringtones"_s;
    QTest::newRow("options ahead and behind") << u"--port 3 phonebook --json read -o a.tel"_s
                                              << u"run phonebook read --json= --output=a.tel --port=3"_s;
    QTest::newRow("values behind an equals sign, or attached to the letter")
        << u"--port=/dev/x=1 phonebook read -oa.tel"_s
        << u"run phonebook read --output=a.tel --port=/dev/x=1"_s;
    QTest::newRow("switches in one word") << u"-qy find"_s << u"run find --quiet= --yes="_s;
    QTest::newRow("last value counts") << u"--port 1 --port 2 find"_s << u"run find --port=2"_s;
    QTest::newRow("a value may begin with a dash") << u"--port -1 find"_s << u"run find --port=-1"_s;
    QTest::newRow("words behind two dashes are no options")
        << u"phonebook write -- --yes"_s << u"run phonebook write <--yes>"_s;
    QTest::newRow("help") << u"--help"_s << u"help  --help="_s;
    QTest::newRow("help about a command, whatever else is wrong")
        << u"phonebook write -h"_s << u"help phonebook write --help="_s;
    QTest::newRow("help about a group") << u"phonebook --help"_s << u"help phonebook --help="_s;
    QTest::newRow("version") << u"--version"_s << u"version  --version="_s;

    QTest::newRow("nothing") << QString() << u"wrong: no command given"_s;
    QTest::newRow("mistyped")
        << u"phonbook raed"_s
        << u"wrong: unknown command \"phonbook raed\"; did you mean \"phonebook read\"?"_s;
    QTest::newRow("mistyped, one word")
        << u"staus"_s << u"wrong: unknown command \"staus\"; did you mean \"status\"?"_s;
    QTest::newRow("like nothing") << u"frobnicate it"_s << u"wrong: unknown command \"frobnicate\""_s;
    QTest::newRow("first word only")
        << u"phonebook"_s
        << u"wrong: \"phonebook\" needs a second word: read or add or set or delete or write"_s;
    QTest::newRow("help about nothing")
        << u"frobnicate --help"_s << u"wrong: unknown command \"frobnicate\""_s;
    QTest::newRow("unknown option") << u"find --jsno"_s
                                    << u"wrong: unknown option --jsno; did you mean --json?"_s;
    QTest::newRow("unknown letter") << u"find -x"_s << u"wrong: unknown option -x"_s;
    QTest::newRow("option of another command")
        << u"find --dry-run"_s << u"wrong: \"find\" has no option --dry-run"_s;
    QTest::newRow("no value") << u"find --port"_s << u"wrong: --port needs a value: --port N|DEVICE"_s;
    QTest::newRow("empty value") << u"find --port="_s << u"wrong: --port needs a value: --port N|DEVICE"_s;
    QTest::newRow("value for a switch") << u"find --json=1"_s << u"wrong: --json takes no value"_s;
    QTest::newRow("too few") << u"phonebook write"_s
                             << u"wrong: \"phonebook write\" needs FILE: a .tel or .json file"_s;
    QTest::newRow("too many") << u"find it"_s << u"wrong: \"it\" is too much for \"find\""_s;
    QTest::newRow("not one of the choices")
        << u"ringtones set sms 3 3"_s
        << u"wrong: \"sms\" is no EVENT; choose one of external, internal, appointment, alarm"_s;
}

void tst_Invocation::words()
{
    QFETCH(QString, line);
    QTEST(inWords(parseWords(line.split(u' ', Qt::SkipEmptyParts))), "meaning");
}

void tst_Invocation::tableIsSound()
{
    std::set<QString> names;
    for (const Command& command : commandTable()) {
        const QString name = command.words.toString();
        QVERIFY2(names.insert(name).second, qPrintable(name));
        QVERIFY2(command.run && !command.help.isEmpty(), qPrintable(name));
        QVERIFY2(!command.fits == command.needs.isEmpty(), qPrintable(name));
        for (const Option& option : command.options) {
            for (const Option& global : globalOptions())
                QVERIFY2(option.name != global.name &&
                             (option.letter.isEmpty() || option.letter != global.letter),
                         qPrintable(name));
        }
    }
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

QTEST_GUILESS_MAIN(tst_Invocation)
#include "tst_Invocation.moc"
