// What kalmoctl reads from a handset, as users run it. In real time, on a pseudo terminal.

#include "support/RunningPrograms.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace kalmo::tests;

namespace {

const QByteArray seed = R"({
    "phonebook": [{"name": "Jörg Groß", "number": "+49*1", "anniversary": "24.12. 08:30", "reminder": "12",
                   "vipSound": "5"},
                  {"name": "Zoë", "number": "112"}],
    "providers": [{"name": "Nord, Ruf", "number": "01031"}]
})";

} // namespace

class tst_KalmoctlRead : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lists();
    void deviceDataAndClock();
};

void tst_KalmoctlRead::lists()
{
    RunningPrograms programs;
    QVERIFY(programs.startHandset(
        {u"--model"_s, u"PICASSO"_s, u"--seed"_s, programs.makeFile(u"seed.json"_s, seed)}));

    const ProgramRun book =
        programs.kalmoctl({u"phonebook"_s, u"read"_s, u"-o"_s, programs.path(u"book.tel"_s)});
    QCOMPARE(book.err, u"2 entries saved in HOME/book.tel.\n"_s);
    QCOMPARE(book.status, 0);
    QCOMPARE(
        programs.contentOf(u"book.tel"_s),
        QByteArray("\"J\xf6rg Gro\xdf\",\"+49*1\",\"24.12  08:30\",\"Melodie 1\",\"Ja\",\"Melodie 5\"\r\n"
                   "\"Zo\xeb\",\"112\",\"\",\"\",\"\",\"\"\r\n"));
    const ProgramRun providers = programs.kalmoctl({u"--json"_s, u"providers"_s, u"read"_s});
    QCOMPARE(providers.out,
             u"[\n    {\n        \"name\": \"Nord, Ruf\",\n        \"number\": \"01031\"\n    }\n]\n"_s);
    QCOMPARE(providers.err, QString());
    QCOMPARE(programs.stopHandset(), QString());
}

void tst_KalmoctlRead::deviceDataAndClock()
{
    RunningPrograms programs;
    QVERIFY(programs.startHandset({u"--model"_s, u"WOODSTOCK"_s}));
    const ProgramRun clock = programs.kalmoctl({u"clock"_s, u"set"_s});
    QCOMPARE(clock.status, 0);
    QCOMPARE(clock.err,
             u"The clock is set. The phone may take a minute to show it, and shows no seconds.\n"_s);
    QVERIFY2(QRegularExpression(u"^Phone time:  20\\d\\d-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\n$"_s)
                 .match(clock.out)
                 .hasMatch(),
             qPrintable(clock.out));

    const ProgramRun status = programs.kalmoctl({u"status"_s});
    QCOMPARE(status.err, QString());
    QCOMPARE(QString(status.out).replace(QRegularExpression(u"20\\d\\d-.*"_s), u"NOW"_s),
             u"Manufacturer:   SIEMENS\n"
             "Model:          WOODSTOCK\n"
             "Version:        25.01\n"
             "Serial number:  004999010640000\n"
             "Signal:         -- 73 dBm (64 %)\n"
             "Battery:        85 %\n"
             "Phone time:     NOW\n"
             "PC time:        NOW\n"_s);
    QCOMPARE(programs.stopHandset(), QString());
}

QTEST_GUILESS_MAIN(tst_KalmoctlRead)
#include "tst_KalmoctlRead.moc"
