#pragma once

#include "handset/Handset.h"
#include "handset/program/CommandLine.h"
#include "handset/program/PseudoTerminal.h"
#include "handset/program/RealTime.h"

#include <QTextStream>

namespace kalmo::handset {

enum ExitStatus { ExitDone = 0, ExitNoTerminal = 1, ExitUsage = 2, ExitViolations = 3 };

/// A handset on a pseudo terminal, in real time.
class Program : public QObject, private Wire
{
    Q_OBJECT

public:
    Program(CommandLine line, QTextStream& out, QTextStream& err);

    /// Prints the requested text, or runs the handset in the event loop until it has to end. Returns the exit
    /// status.
    int run();

private:
    void send(const QByteArray& bytes) override { m_terminal.write(bytes); }
    void hangUp() override;

    int runHandset();
    bool start();
    void onReceived(const QByteArray& bytes);
    void onClosed();
    int verdict();

    CommandLine m_line;
    QTextStream& m_out;
    QTextStream& m_err;
    RealTime m_time;
    PseudoTerminal m_terminal;
    std::unique_ptr<Handset> m_handset;
};

} // namespace kalmo::handset
