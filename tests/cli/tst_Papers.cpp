// The manual pages and the completion know what the table of commands says.

#include "app/Version.h"
#include "cli/Help.h"
#include "support/TestProgram.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>

using namespace kalmo::cli;

namespace {

/// Pairs of what the program's help says and what a translated manual says for it.
using Wording = QList<std::pair<QString, QString>>;

const Wording german = {
    {u"FILE"_s, u"DATEI"_s},
    {u"DIR"_s, u"ORDNER"_s},
    {u"FOLDER"_s, u"ORDNER"_s},
    {u"PATH"_s, u"PFAD"_s},
    {u"FROM"_s, u"VON"_s},
    {u"TO"_s, u"NACH"_s},
    {u"RIGHTS"_s, u"RECHTE"_s},
    {u"EVENT"_s, u"ANLASS"_s},
    {u"TONE"_s, u"TON"_s},
    {u"VOLUME"_s, u"LAUTSTÄRKE"_s},
    {u"IN"_s, u"QUELLE"_s},
    {u"OUT"_s, u"ZIEL"_s},
    {u"SECONDS"_s, u"SEKUNDEN"_s},
    {u"done"_s, u"erledigt"_s},
    {u"the phone or the line failed, or a file could not be written"_s,
     u"das Telefon oder die Leitung hat versagt, oder eine Datei ließ sich nicht schreiben"_s},
    {u"wrong use or a bad input file"_s, u"falsch benutzt, oder eine Eingabedatei ist fehlerhaft"_s},
    {u"no phone found, or none that Kalmo knows"_s, u"kein Telefon gefunden, oder keines, das Kalmo kennt"_s},
    {u"refused by the user, or interrupted"_s, u"vom Benutzer abgelehnt oder unterbrochen"_s},
};

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
    void manualTellsEverything()
    {
        const Rows<QString, Wording> rows{{"English", u"kalmoctl.1"_s, {}},
                                          {"German", u"de/kalmoctl.1"_s, german}};
        rows.each([](const auto& file, const auto& wording) {
            const QString text = untypeset(file);
            QVERIFY(text.contains(u"Kalmo %1 "_s.arg(kalmo::app::programVersion())));
            const QStringList words = text.split(QRegularExpression(u"[^-\\w]+"_s));

            // Brackets and blanks are set apart from the words by the macros.
            static const QRegularExpression loose(u"[\\[\\] ]"_s);
            const QString dense = QString(text).remove(loose);
            for (const Command& command : commandTable()) {
                QString usage = usageOf(command);
                for (const auto& [english, other] : wording)
                    usage.replace(QRegularExpression(u"\\b%1\\b"_s.arg(english)), other);
                QVERIFY2(dense.contains(u'\n' + usage.remove(loose) + u'\n'), qPrintable(usage));
                for (const Option& option : optionsOf(command))
                    QVERIFY2(words.contains(option.name), qPrintable(option.name.toString()));
            }
            for (const Option& option : globalOptions())
                QVERIFY2(words.contains(option.name), qPrintable(option.name.toString()));
            for (const ExitMeaning& row : exitMeanings()) {
                QString meaning = row.meaning.toString();
                for (const auto& [english, other] : wording)
                    meaning = meaning == english ? other : meaning;
                QVERIFY2(text.contains(u"\n%1\n%2\n"_s.arg(row.status).arg(meaning)), qPrintable(meaning));
            }
        });
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
