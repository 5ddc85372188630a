// Output on a terminal and in a pipe, and the questions there.

#include "cli/CliDialogs.h"
#include "cli/CliProgress.h"
#include "cli/Tables.h"
#include "support/TestProgram.h"

#include <cerrno>

using namespace kalmo::cli;
using toolkit::Answer;
using toolkit::Buttons;
using toolkit::Icon;

namespace {

/// Both streams in memory.
struct Streams
{
    QByteArray out;
    QByteArray err;

    Output::Sink sink()
    {
        return [this](Stream stream, const QByteArray& bytes) {
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
    void questions()
    {
        const QByteArray prompt = "Sure? [y/N] ";
        Rows<bool, QStringList, bool, bool, QByteArray> rows;
        rows.add("yes", false, {u" Yes "_s}, true, true, prompt);
        rows.add("just the return key", false, {{}}, false, false, prompt);
        rows.add("neither, and asked again", false, {u"what"_s, u"y"_s}, true, true, prompt + prompt);
        rows.add("end of the input", false, {}, false, false, prompt + "\n");
        rows.add("nobody there", false, {u"-"_s}, false, false,
                 "kalmoctl: Sure?\n"
                 "Nobody can answer here; run this on a terminal, or say --yes.\n");
        rows.each([&](const auto& yes, const auto& answers, const auto& confirmed, const auto& retried,
                      const auto& err) {
            Streams streams;
            Output out(streams.sink(), {.quiet = true});
            const auto answering = [&] {
                return answers == QStringList{u"-"_s} ? Questions::Reader() : reader(answers);
            };
            QCOMPARE(Questions(out, yes, answering()).confirm(u"Sure?"_s), confirmed);
            QCOMPARE(streams.err, err);
            QCOMPARE(Questions(out, yes, answering()).confirmRetry(u"Again?"_s), retried);
        });
    }

    /// Escape sequences from a phone's name or a file never reach the terminal; its line ends do.
    void controlCharactersDoNotReachTheTerminal()
    {
        Streams streams;
        Output out(streams.sink(), {.progressWidth = 20});
        const QString text = u"SL\x1b[2J\r\u009b1m\nB\n"_s;
        out.show({}, text);
        out.note(text);
        out.error(text);
        out.prompt(text);
        out.progress(text);
        const QByteArray shown = "SL?[2J??1m\nB\n";
        QCOMPARE(streams.out, shown);
        QCOMPARE(streams.err, shown + "kalmoctl: " + shown + shown + "\rSL?[2J??1m?B?");
        Streams values;
        Output(values.sink(), {.json = true}).show(QJsonArray{u"Jörg\u009b1m"_s}, {});
        QCOMPARE(values.out, "[\n    \"J\xC3\xB6rg\\u009b1m\"\n]\n");
    }

    void yesRetriesTwice()
    {
        Streams streams;
        Output out(streams.sink(), {});
        Questions questions(out, true, {});
        QVERIFY(questions.confirm(u"Sure?"_s) && streams.err.isEmpty());
        // A yes without end would keep the program for good.
        for (const bool retried : {true, true, false, true})
            QCOMPARE(questions.confirmRetry(u"Again?"_s), retried);
        QCOMPARE(streams.err, "Again? Yes, retry 1 of 2.\nAgain? Yes, retry 2 of 2.\n"
                              "kalmoctl: Again?\nGave up after 2 retries.\nAgain? Yes, retry 1 of 2.\n");
    }

    void boxes()
    {
        const auto box = [](Buttons buttons, Icon icon, const QString& english) {
            return toolkit::Message{
                .text = u"Größe?"_s, .buttons = buttons, .icon = icon, .english = english};
        };
        const Rows<toolkit::Message, Answer, Answer, QByteArray> rows{
            {"error", box(Buttons::Ok, Icon::Exclamation, u"Size."_s), Answer::Ok, Answer::Ok,
             "kalmoctl: Size.\n"},
            {"no English text", box(Buttons::Ok, Icon::Critical, {}), Answer::Ok, Answer::Ok,
             "kalmoctl: Gr\xc3\xb6\xc3\x9f"
             "e?\n"},
            {"yes or no", box(Buttons::YesNo, Icon::Question, u"Size?"_s), Answer::Yes, Answer::No,
             "Size? [y/N] "},
            {"again", box(Buttons::RetryCancel, Icon::Exclamation, u"Size?"_s), Answer::Retry, Answer::Cancel,
             "Size? [y/N] "},
        };
        rows.each([&](const auto& message, const auto& toYes, const auto& toNo, const auto& err) {
            const auto answerTo = [&message](const QString& word, Streams& streams) {
                Output out(streams.sink(), {});
                Questions questions(out, false, reader({word}));
                return CliDialogs(out, questions).Show(message);
            };
            Streams streams;
            Streams ignored;
            QCOMPARE(answerTo(u"n"_s, streams), toNo);
            QCOMPARE(answerTo(u"y"_s, ignored), toYes);
            QCOMPARE(streams.err, err);
        });
    }
};

KALMO_TEST(tst_Output)
#include "tst_Output.moc"
