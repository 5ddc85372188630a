#include "handset/program/Program.h"

#include "handset/program/SignalWatch.h"

#include <QCoreApplication>

namespace kalmo::handset {

using namespace Qt::StringLiterals;

namespace {
constexpr double unpluggedSeconds = 1;
}

Program::Program(CommandLine line, QTextStream& out, QTextStream& err)
    : m_line(std::move(line)), m_out(out), m_err(err)
{
    connect(&m_terminal, &PseudoTerminal::received, this, &Program::onReceived);
    connect(&m_terminal, &PseudoTerminal::closed, this, &Program::onClosed);
    connect(&m_terminal, &PseudoTerminal::failed, this, [this](const QString& why) {
        m_err << why << Qt::endl;
        QCoreApplication::exit(ExitNoTerminal);
    });
}

int Program::run()
{
    switch (m_line.action) {
    case CommandLine::PrintText:
        m_out << m_line.text << Qt::flush;
        return ExitDone;
    case CommandLine::Refuse:
        m_err << u"kalmo-handset: "_s << m_line.text << Qt::endl;
        return ExitUsage;
    case CommandLine::Run:
        break;
    }
    return runHandset();
}

int Program::runHandset()
{
    QString error;
    auto phone = makePhone(m_line.options, error);
    if (!phone) {
        m_err << u"kalmo-handset: "_s << error << Qt::endl;
        return ExitUsage;
    }
    const SignalWatch signalWatch;
    connect(&signalWatch, &SignalWatch::endAsked, this, [] { QCoreApplication::exit(ExitDone); });
    m_handset = std::make_unique<Handset>(std::move(phone), m_time, static_cast<Wire&>(*this));
    if (!start())
        return ExitNoTerminal;
    const int status = QCoreApplication::exec();
    return status == ExitDone ? verdict() : status;
}

bool Program::start()
{
    QString error;
    if (!m_terminal.open(m_line.link, m_handset->baudRate(), error)) {
        m_err << u"kalmo-handset: "_s << error << Qt::endl;
        return false;
    }
    m_out << m_terminal.path() << Qt::endl;
    return true;
}

void Program::onReceived(const QByteArray& bytes)
{
    m_handset->setBaudRate(m_terminal.baudRate());
    m_handset->receive(bytes);
}

void Program::onClosed()
{
    m_handset->lineClosed();
    if (m_line.untilClosed)
        QCoreApplication::exit(ExitDone);
}

void Program::hangUp()
{
    m_terminal.hangUp(unpluggedSeconds);
}

int Program::verdict()
{
    for (const QString& violation : m_handset->violations())
        m_err << u"violation: "_s << violation << Qt::endl;
    const QString& problem = m_handset->phone().memory.problem();
    if (!problem.isEmpty()) {
        m_err << u"kalmo-handset: "_s << problem << Qt::endl;
        return ExitNoTerminal;
    }
    return m_handset->violations().isEmpty() ? ExitDone : ExitViolations;
}

} // namespace kalmo::handset
