#include "cli/Questions.h"

namespace kalmo::cli {

using namespace Qt::StringLiterals;

namespace {

constexpr int mostRetries = 2; // that --yes answers with yes

} // namespace

Questions::Questions(Output& out, bool yes, Reader reader)
    : m_out(out), m_yes(yes), m_reader(std::move(reader))
{
}

bool Questions::confirm(const QString& question)
{
    if (m_yes)
        return true;
    if (m_reader)
        return ask(question);
    tellUnanswered(question);
    return false;
}

bool Questions::confirmRetry(const QString& question)
{
    if (m_yes)
        return retriesByItself(question);
    return confirm(question);
}

bool Questions::retriesByItself(const QString& question)
{
    const int retry = ++m_retries[question];
    if (retry > mostRetries) {
        m_retries.remove(question);
        m_out.error(u"%1\nGave up after %2 retries."_s.arg(question).arg(mostRetries));
        return false;
    }
    m_out.note(u"%1 Yes, retry %2 of %3.\n"_s.arg(question).arg(retry).arg(mostRetries));
    return true;
}

void Questions::tellUnanswered(const QString& question)
{
    m_out.error(question + u"\nNobody can answer here; run this on a terminal, or say --yes."_s);
}

bool Questions::ask(const QString& question)
{
    for (;;) {
        m_out.prompt(question + u" [y/N] "_s);
        const auto line = m_reader();
        if (!line) {
            m_out.prompt(u"\n"_s);
            return false;
        }
        const QString answer = line->trimmed().toLower();
        if (answer == u"y"_s || answer == u"yes"_s)
            return true;
        if (answer.isEmpty() || answer == u"n"_s || answer == u"no"_s)
            return false;
    }
}

} // namespace kalmo::cli
