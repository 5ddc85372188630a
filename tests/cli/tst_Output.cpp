// What comes out on a terminal or in a pipe, and what is asked there.

#include "cli/CliDialogs.h"
#include "cli/CliProgress.h"
#include "cli/Tables.h"

#include <QJsonArray>
#include <QTest>

#include <cerrno>

using namespace Qt::StringLiterals;
using namespace kalmo;
using namespace kalmo::cli;
using toolkit::Answer;
using toolkit::Buttons;
using toolkit::Icon;

namespace {

/// Both streams in memory; standard output can fail.
struct Streams
{
    QByteArray out;
    QByteArray err;
    int fault = 0;

    Output::Sink sink()
    {
        return [this](Stream stream, const QByteArray& bytes) {
            if (stream == Stream::Out && fault != 0)
                return fault;
            (stream == Stream::Out ? out : err) += bytes;
            return 0;
        };
    }
};

/// A user whose answers are known beforehand; after the last one the input ends.
Questions::Reader reader(QStringList answers)
{
    return [answers]() mutable -> std::optional<QString> {
        return answers.isEmpty() ? std::nullopt : std::optional(answers.takeFirst());
    };
}

} // namespace

class tst_Output : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tables();
    void streams_data();
    void streams();
    void encodings_data();
    void encodings();
    void failingStream_data();
    void failingStream();
    void progressLine();
    void questions_data();
    void questions();
    void boxes_data();
    void boxes();
};

void tst_Output::tables()
{
    QCOMPARE(alignedTable({u"Name"_s, u"Number"_s, u"VIP"_s},
                          {{u"Jörg Groß"_s, u"1"_s, {}}, {u"evil\x1b[2J\r"_s, u"22"_s, u"yes"_s}}),
             u"Name       Number  VIP\n"
             u"Jörg Groß  1\n"
             u"evil?[2J?  22      yes\n"_s);
    QCOMPARE(alignedFields({{u"Model"_s, u"A\nB"_s}, {u"Phone time"_s, {}}}), u"Model:       A?B\n"
                                                                              u"Phone time:  -\n"_s);
}

void tst_Output::streams_data()
{
    QTest::addColumn<bool>("json");
    QTest::addColumn<bool>("quiet");
    QTest::addColumn<QByteArray>("out");
    QTest::addColumn<QByteArray>("err");
    const QByteArray json = "[\n    \"\xc3\xb6\"\n]\n";
    QTest::newRow("for people") << false << false << QByteArray("text\n")
                                << QByteArray("note\nkalmoctl: error\n");
    QTest::newRow("JSON") << true << false << json << QByteArray("note\nkalmoctl: error\n");
    QTest::newRow("quiet") << false << true << QByteArray("text\n") << QByteArray("kalmoctl: error\n");
    QTest::newRow("both") << true << true << json << QByteArray("kalmoctl: error\n");
}

void tst_Output::streams()
{
    QFETCH(bool, json);
    QFETCH(bool, quiet);
    Streams streams;
    Output out(streams.sink(), {.json = json, .quiet = quiet});
    out.note(u"note\n"_s);
    out.show(QJsonArray{u"ö"_s}, u"text\n"_s);
    out.error(u"error"_s);
    QTEST(streams.out, "out");
    QTEST(streams.err, "err");
    QVERIFY(out.isComplete());
}

void tst_Output::encodings_data()
{
    QTest::addColumn<QByteArray>("encoding");
    QTest::addColumn<QByteArray>("out");
    QTest::newRow("UTF-8") << QByteArray("UTF-8") << QByteArray("\xc3\xb6\xe2\x82\xac");
    QTest::newRow("Latin 1") << QByteArray("ISO-8859-1") << QByteArray("\xf6?");
    QTest::newRow("the C locale") << QByteArray("ANSI_X3.4-1968") << QByteArray("??");
    QTest::newRow("unknown") << QByteArray("no-such-code") << QByteArray("\xc3\xb6\xe2\x82\xac");
}

void tst_Output::encodings()
{
    QFETCH(QByteArray, encoding);
    Streams streams;
    Output out(streams.sink(), {.encoding = encoding});
    out.print(u"ö€"_s);
    QTEST(streams.out, "out");
}

void tst_Output::failingStream_data()
{
    QTest::addColumn<int>("fault");
    QTest::addColumn<bool>("isComplete");
    QTest::addColumn<QByteArray>("err");
    QTest::newRow("the reader has gone") << EPIPE << true << QByteArray();
    QTest::newRow("full disk") << ENOSPC << false
                               << QByteArray(
                                      "kalmoctl: the result could not be written: No space left on device\n");
}

void tst_Output::failingStream()
{
    QFETCH(int, fault);
    Streams streams;
    streams.fault = fault;
    Output out(streams.sink(), {});
    out.print(u"one\n"_s);
    streams.fault = 0;
    out.print(u"two\n"_s); // behind a gap nothing makes sense any more
    QCOMPARE(streams.out, QByteArray());
    QTEST(streams.err, "err");
    QTEST(out.isComplete(), "isComplete");
}

void tst_Output::progressLine()
{
    Streams streams;
    Output out(streams.sink(), {.progressWidth = 20});
    CliProgress progress(out);
    progress.phase(u"Reading"_s);
    progress.count(12);
    out.note(u"note\n"_s);
    progress.phase(u"Erasing"_s, u"Writing"_s);
    progress.SetMaximum(3);
    progress.SetValue(0);
    progress.SetVisible(true);
    progress.SetValue(2);
    progress.SetVisible(false);
    progress.clear();
    progress.clear();
    QCOMPARE(streams.err, QByteArray("\rReading..."
                                     "\rReading: 12"
                                     "\r           \rnote\n"
                                     "\rErasing..."
                                     "\rWriting: 0 of 3 (0 " // cut to the terminal
                                     "\rWriting: 2 of 3 (66"
                                     "\r                   \r"));

    Streams silent;
    Output pipe(silent.sink(), {.progressWidth = 0});
    CliProgress unseen(pipe);
    unseen.phase(u"Reading"_s);
    QCOMPARE(silent.err, QByteArray());
}

void tst_Output::questions_data()
{
    QTest::addColumn<bool>("yes");
    QTest::addColumn<QStringList>("answers"); // "-" for no terminal
    QTest::addColumn<bool>("confirmed");
    QTest::addColumn<bool>("retried");
    QTest::addColumn<QByteArray>("err"); // of the first question
    const QByteArray prompt = "Sure? [y/N] ";
    QTest::newRow("yes") << false << QStringList{u" Yes "_s} << true << true << prompt;
    QTest::newRow("no") << false << QStringList{u"n"_s} << false << false << prompt;
    QTest::newRow("just the return key") << false << QStringList{{}} << false << false << prompt;
    QTest::newRow("neither, and asked again")
        << false << QStringList{u"what"_s, u"y"_s} << true << true << prompt + prompt;
    QTest::newRow("end of the input") << false << QStringList{} << false << false << prompt + "\n";
    QTest::newRow("nobody there") << false << QStringList{u"-"_s} << false << false
                                  << QByteArray(
                                         "kalmoctl: Sure?\n"
                                         "Nobody can answer here; run this on a terminal, or say --yes.\n");
    // A retry that is answered with yes without end would never end.
    QTest::newRow("--yes") << true << QStringList{u"-"_s} << true << false << QByteArray();
    QTest::newRow("--yes on a terminal") << true << QStringList{} << true << false << QByteArray();
}

void tst_Output::questions()
{
    QFETCH(bool, yes);
    QFETCH(QStringList, answers);
    Streams streams;
    Output out(streams.sink(), {.quiet = true});
    const auto answering = [&] {
        return answers == QStringList{u"-"_s} ? Questions::Reader() : reader(answers);
    };
    QTEST(Questions(out, yes, answering()).confirm(u"Sure?"_s), "confirmed");
    QTEST(streams.err, "err");
    QTEST(Questions(out, yes, answering()).confirmRetry(u"Again?"_s), "retried");
}

void tst_Output::boxes_data()
{
    QTest::addColumn<toolkit::Message>("message");
    QTest::addColumn<Answer>("toYes");
    QTest::addColumn<Answer>("toNo");
    QTest::addColumn<QByteArray>("err"); // of the one that was answered with no
    const auto box = [](Buttons buttons, Icon icon, const QString& english) {
        return toolkit::Message{.text = u"Größe?"_s, .buttons = buttons, .icon = icon, .english = english};
    };
    QTest::newRow("error") << box(Buttons::Ok, Icon::Exclamation, u"Size."_s) << Answer::Ok << Answer::Ok
                           << QByteArray("kalmoctl: Size.\n");
    QTest::newRow("information") << box(Buttons::Ok, Icon::Information, u"Size."_s) << Answer::Ok
                                 << Answer::Ok << QByteArray("Size.\n");
    QTest::newRow("no English text") << box(Buttons::Ok, Icon::Critical, {}) << Answer::Ok << Answer::Ok
                                     << QByteArray("kalmoctl: Gr\xc3\xb6\xc3\x9f"
                                                   "e?\n");
    QTest::newRow("yes or no") << box(Buttons::YesNo, Icon::Question, u"Size?"_s) << Answer::Yes << Answer::No
                               << QByteArray("Size? [y/N] ");
    QTest::newRow("or cancel") << box(Buttons::YesNoCancel, Icon::Question, u"Size?"_s) << Answer::Yes
                               << Answer::No << QByteArray("Size? [y/N] ");
    QTest::newRow("go on") << box(Buttons::OkCancel, Icon::Question, u"Size?"_s) << Answer::Ok
                           << Answer::Cancel << QByteArray("Size? [y/N] ");
    QTest::newRow("again") << box(Buttons::RetryCancel, Icon::Exclamation, u"Size?"_s) << Answer::Retry
                           << Answer::Cancel << QByteArray("Size? [y/N] ");
}

void tst_Output::boxes()
{
    QFETCH(toolkit::Message, message);
    const auto answerTo = [&message](const QString& word, Streams& streams) {
        Output out(streams.sink(), {});
        Questions questions(out, false, reader({word}));
        return CliDialogs(out, questions).Show(message);
    };
    Streams streams;
    Streams ignored;
    QTEST(answerTo(u"n"_s, streams), "toNo");
    QTEST(answerTo(u"y"_s, ignored), "toYes");
    QTEST(streams.err, "err");
}

QTEST_GUILESS_MAIN(tst_Output)
#include "tst_Output.moc"
