// The manual page and the completion say what the table of commands says.

#include "cli/Help.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace kalmo::cli;

namespace {

/// Completes the last word of each line that comes in, and says the line and what was found.
constexpr char completing[] = R"bash(
source "$1" || exit
cd / # away from files that could be offered
while read -r line; do
    eval "COMP_WORDS=(kalmoctl $line)"
    COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
    _kalmoctl
    echo "$line: $(printf '%s\n' "${COMPREPLY[@]}" | LC_ALL=C sort | xargs)"
done
)bash";

/// Runs a program to its end; what it said on both streams.
struct Outcome
{
    QString out;
    QString err;
    bool ended = false;
};

Outcome run(const QString& program, const QStringList& arguments, const QByteArray& input = {})
{
    QProcess process;
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    const bool ended = process.waitForFinished(20000) && process.exitStatus() == QProcess::NormalExit;
    return {QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError()), ended};
}

QString inOrder(QStringList words)
{
    words.sort();
    words.removeDuplicates();
    return words.join(u' ');
}

/// What can follow some words, by the table: further words of commands, and choices of an argument.
QString wordsBehind(const QStringList& given)
{
    QStringList words;
    for (const Command& command : commandTable()) {
        const QStringList own = command.words.toString().split(u' ');
        const qsizetype place = given.size() - own.size();
        if (given.size() < own.size() && own.mid(0, given.size()) == given)
            words.append(own[given.size()]);
        else if (place >= 0 && given.mid(0, own.size()) == own &&
                 place < static_cast<qsizetype>(command.arguments.size()))
            for (const QStringView choice : command.arguments[place].choices)
                words.append(choice.toString());
    }
    return inOrder(words);
}

QString optionsOf(const Command& command)
{
    QStringList names;
    for (const auto* options : {&globalOptions(), &command.options}) {
        for (const Option& option : *options)
            names += {option.name.toString(), option.letter.toString()};
    }
    names.removeAll(QString());
    return inOrder(names);
}

} // namespace

class tst_Papers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void manualTellsEverything();
    void manualsAreWellFormed_data();
    void manualsAreWellFormed();
    void completionFollowsTheTable();
};

void tst_Papers::manualTellsEverything()
{
    QFile file(QFINDTESTDATA("../../packaging/kalmoctl.1"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    // Without the marks of the typesetter.
    QString text = QString::fromUtf8(file.readAll());
    text.remove(QRegularExpression(u"\\\\f[A-Z]|^\\.[A-Z]+ |\""_s, QRegularExpression::MultilineOption));
    text.replace(u"\\-"_s, u"-"_s).replace(u"\\~"_s, u" "_s).replace(QRegularExpression(u" +"_s), u" "_s);

    for (const Command& command : commandTable()) {
        QString usage = usageOf(command);
        QString plain = text;
        // Brackets and blanks are set apart from the words by the macros.
        usage.remove(QRegularExpression(u"[\\[\\] ]"_s));
        plain.remove(QRegularExpression(u"[\\[\\] ]"_s));
        QVERIFY2(plain.contains(u'\n' + usage + u'\n'), qPrintable(usageOf(command)));
    }
    for (const Option& option : globalOptions())
        QVERIFY2(text.contains(option.name), qPrintable(option.name.toString()));
    for (const ExitMeaning& row : exitMeanings())
        QVERIFY2(text.contains(u"\n%1\n%2\n"_s.arg(row.status).arg(row.meaning)),
                 qPrintable(row.meaning.toString()));
}

void tst_Papers::manualsAreWellFormed_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("kalmoctl") << u"kalmoctl.1"_s;
    QTest::newRow("kalmo") << u"kalmo.1"_s;
}

void tst_Papers::manualsAreWellFormed()
{
    QFETCH(QString, name);
    const QString path = QFINDTESTDATA(u"../../packaging/"_s + name);
    const Outcome outcome =
        run(u"man"_s, {u"--warnings"_s, u"-E"_s, u"UTF-8"_s, u"-l"_s, u"-Tutf8"_s, u"-Z"_s, path});
    QVERIFY2(outcome.ended, "man (package man-db) is needed");
    QCOMPARE(outcome.err, QString());
    QVERIFY(!outcome.out.isEmpty());
}

void tst_Papers::completionFollowsTheTable()
{
    QStringList queries;
    QStringList expected;
    const auto ask = [&](const QStringList& given, const QString& current, const QString& answer) {
        queries.append((given + QStringList{current.isEmpty() ? u"''"_s : current}).join(u' '));
        expected.append(queries.last() + u": "_s + answer);
    };
    ask({}, {}, wordsBehind({}));
    ask({u"--port"_s, u"3"_s, u"-q"_s}, {},
        wordsBehind({})); // options and their values are no words of a command
    for (const Command& command : commandTable()) {
        QStringList given = command.words.toString().split(u' ');
        ask(given.mid(0, 1), {}, wordsBehind(given.mid(0, 1)));
        for (const Argument& argument : command.arguments) {
            if (!argument.choices.empty())
                ask(given, {}, wordsBehind(given));
            given.append(argument.choices.empty() ? u"x"_s : argument.choices.front().toString());
        }
        ask(given, u"-"_s, optionsOf(command));
    }
    const Outcome outcome = run(
        u"bash"_s,
        {u"-c"_s, QString::fromUtf8(completing), u"bash"_s, QFINDTESTDATA("../../packaging/kalmoctl.bash")},
        queries.join(u'\n').toUtf8() + '\n');
    QCOMPARE(outcome.err, QString());
    QCOMPARE(outcome.out.split(u'\n', Qt::SkipEmptyParts), expected);
}

QTEST_GUILESS_MAIN(tst_Papers)
#include "tst_Papers.moc"
