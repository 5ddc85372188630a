// The manual pages and the completion know what the table of commands says.

#include "app/Version.h"
#include "cli/Help.h"
#include "support/TestProgram.h"

using namespace kalmo::cli;

namespace {

/// A manual page without the marks of the typesetter. Empty if the page can't be read.
QString untypeset(const QString& name)
{
    QFile file(QFINDTESTDATA(u"../../packaging/"_s + name));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    static const QRegularExpression marks(u"\\\\f[A-Z]|^\\.[A-Z]+ |\""_s,
                                          QRegularExpression::MultilineOption);
    QString text = QString::fromUtf8(file.readAll()).remove(marks);
    return text.replace(u"\\-"_s, u"-"_s)
        .replace(u"\\~"_s, u" "_s)
        .replace(QRegularExpression(u" +"_s), u" "_s);
}

} // namespace

class tst_Papers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// Each language has its own words for what the user fills in, which are written in capitals.
    void manualTellsEverything()
    {
        for (const QString& file : {u"kalmoctl.1"_s, u"de/kalmoctl.1"_s}) {
            const QString text = untypeset(file);
            QVERIFY(text.contains(u"Kalmo %1 "_s.arg(kalmo::app::programVersion())));
            const QStringList words = text.split(QRegularExpression(u"[^-\\w]+"_s));

            // Brackets and blanks are set apart from the words by the macros.
            static const QRegularExpression loose(u"[\\[\\] ]"_s);
            const QString dense = QString(text).remove(loose);
            for (const Command& command : commandTable()) {
                QString usage = usageOf(command).replace(QRegularExpression(u"\\b[A-Z]{2,}\\b"_s), u"@"_s);
                usage = QRegularExpression::escape(usage.remove(loose)).replace(u"\\@"_s, u"[A-ZÄÖÜ]+"_s);
                QVERIFY2(dense.contains(QRegularExpression(u'\n' + usage + u'\n')), qPrintable(usage));
                for (const Option& option : optionsOf(command))
                    QVERIFY2(words.contains(option.name), qPrintable(option.name.toString()));
            }
            for (const Option& option : globalOptions())
                QVERIFY2(words.contains(option.name), qPrintable(option.name.toString()));
            for (const ExitMeaning& row : exitMeanings()) {
                const QString status = u"\n%1\n"_s.arg(row.status);
                QVERIFY2(
                    text.contains(file.startsWith(u"de/") ? status : status + row.meaning.toString() + u'\n'),
                    qPrintable(file + status));
            }
        }
    }

    void manualsAreWellFormed()
    {
        for (const QString& name : {u"kalmoctl.1"_s, u"kalmo.1"_s, u"kalmo-handset.1"_s, u"de/kalmoctl.1"_s,
                                    u"de/kalmo.1"_s, u"de/kalmo-handset.1"_s, u"m9b.1"_s, u"g722demo.1"_s}) {
            QProcess man;
            man.start(u"man"_s, {u"--warnings"_s, u"-E"_s, u"UTF-8"_s, u"-l"_s, u"-Tutf8"_s, u"-Z"_s,
                                 QFINDTESTDATA(u"../../packaging/"_s + name)});
            QVERIFY2(man.waitForFinished(20000), "man (package man-db) is needed");
            QCOMPARE(man.readAllStandardError(), QByteArray());
            QVERIFY(!man.readAllStandardOutput().isEmpty());
        }
    }

    /// The shell decides where a word is offered; but the completion has to know every word.
    void completionKnowsEveryWord()
    {
        QFile file(QFINDTESTDATA("../../packaging/kalmoctl.bash"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QStringList known = QString::fromUtf8(file.readAll()).split(QRegularExpression(u"[^-\\w]+"_s));
        for (const Command& command : commandTable()) {
            QStringList words = command.words.toString().split(u' ');
            for (const auto& options : {globalOptions(), optionsOf(command)}) {
                for (const Option& option : options)
                    words.append(option.name.toString());
            }
            for (const QString& word : words)
                QVERIFY2(known.contains(word), qPrintable(word));
        }
    }
};

KALMO_TEST(tst_Papers)
#include "tst_Papers.moc"
