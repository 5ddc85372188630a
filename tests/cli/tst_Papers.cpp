// The manual page and the completion know what the table of commands says.

#include "app/Version.h"
#include "cli/Help.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace kalmo::cli;

class tst_Papers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void manualTellsEverything()
    {
        QFile file(QFINDTESTDATA("../../packaging/kalmoctl.1"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.peek(80).contains("Kalmo " + kalmo::app::programVersion().toLatin1()));
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

    void manualsAreWellFormed()
    {
        for (const QString& name : {u"kalmoctl.1"_s, u"kalmo.1"_s, u"kalmo-handset.1"_s, u"de/kalmo.1"_s,
                                    u"m9b.1"_s, u"g722demo.1"_s}) {
            QProcess man;
            man.start(u"man"_s, {u"--warnings"_s, u"-E"_s, u"UTF-8"_s, u"-l"_s, u"-Tutf8"_s, u"-Z"_s,
                                 QFINDTESTDATA(u"../../packaging/"_s + name)});
            QVERIFY2(man.waitForFinished(20000), "man (package man-db) is needed");
            QCOMPARE(man.readAllStandardError(), QByteArray());
            QVERIFY(!man.readAllStandardOutput().isEmpty());
        }
    }

    /// What it offers where is up to the shell; but it has to know every word.
    void completionKnowsEveryWord()
    {
        QFile file(QFINDTESTDATA("../../packaging/kalmoctl.bash"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QStringList known = QString::fromUtf8(file.readAll()).split(QRegularExpression(u"[^-\\w]+"_s));
        for (const Command& command : commandTable()) {
            QStringList words = command.words.toString().split(u' ');
            for (const auto* options : {&globalOptions(), &command.options}) {
                for (const Option& option : *options)
                    words.append(option.name.toString());
            }
            for (const QString& word : words)
                QVERIFY2(known.contains(word), qPrintable(word));
        }
    }
};

QTEST_GUILESS_MAIN(tst_Papers)
#include "tst_Papers.moc"
