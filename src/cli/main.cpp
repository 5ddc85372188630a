// The program kalmoctl.

#include "app/Version.h"
#include "cli/Help.h"
#include "cli/Session.h"

#include <QCoreApplication>

namespace {

using namespace kalmo;
using namespace kalmo::cli;

Output::Manner mannerOf(const Invocation& invocation, const QByteArray& encoding)
{
    const bool quiet = invocation.has(u"--quiet"_s);
    const bool showsProgress = !quiet && isTerminal(Stream::Err);
    return {.json = invocation.has(u"--json"_s),
            .quiet = quiet,
            .progressWidth = showsProgress ? terminalWidth() : 0,
            .encoding = encoding};
}

ExitStatus answer(const Invocation& invocation, Output& out)
{
    switch (invocation.kind) {
    case Invocation::Kind::Help:
        out.print(helpText(invocation));
        break;
    case Invocation::Kind::Version:
        out.print(u"kalmoctl %1\n"_s.arg(app::programVersion()));
        break;
    case Invocation::Kind::WrongUse:
        out.error(invocation.error + (invocation.error.endsWith(u'?') ? u""_s : u"."_s) +
                  u"\nTry \"kalmoctl --help\"."_s);
        return ExitWrongUse;
    case Invocation::Kind::Run: {
        const bool someoneIsThere = isTerminal(Stream::In) && isTerminal(Stream::Err);
        Questions questions(out, invocation.has(u"--yes"_s),
                            someoneIsThere ? Questions::Reader(readLine) : Questions::Reader());
        return Session(invocation, out, questions).run();
    }
    }
    return out.isComplete() ? ExitDone : ExitFailed;
}

} // namespace

int main(int argc, char** argv)
{
    // Before the toolkit changes the locale, and says so where nobody wants to read it.
    const QByteArray encoding = localeEncoding();
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    catchStopSignals();
    QCoreApplication application(argc, argv);

    const Invocation invocation = parseWords(QCoreApplication::arguments().mid(1));
    Output out(writeTo, mannerOf(invocation, encoding));
    return answer(invocation, out);
}
