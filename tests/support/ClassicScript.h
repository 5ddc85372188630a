#pragma once

#include "support/ScriptedPort.h"

namespace kalmo::tests {

/// A script of list commands on a scripted port, which notes when each request came.
class ClassicScript
{
public:
    ClassicScript(TestContext& test, ScriptedPort& port) : m_test(test), m_port(port) {}

    /// A command and its answer: echo, payload if there is one, OK.
    ClassicScript& expect(const QByteArray& command, const QByteArray& payload = {});
    /// Commands that are answered by OK alone.
    ClassicScript& expectAll(const QByteArrayList& commands);
    /// A command that is answered by ERROR each of the three times that it is sent.
    ClassicScript& refuse(const QByteArray& command);
    /// A command that gets no answer, each of the three times that it is sent.
    ClassicScript& ignore(const QByteArray& command);
    /// A command that is answered by ERROR once, and then as it should be.
    ClassicScript& stumble(const QByteArray& command, const QByteArray& payload = {});
    /// A command that gets no answer once, and then the one that it should get.
    ClassicScript& loseAnswer(const QByteArray& command, const QByteArray& payload = {});
    /// Runs when the request that was expected last has come in.
    ClassicScript& then(const std::function<void()>& action);

    /// The first line of each request, with the seconds since the test began: "0.52 AT^WSRE".
    QStringList timeline() const { return m_timeline; }

private:
    void request(const QByteArray& command, const QByteArray& answer);
    ClassicScript& failOnce(const QByteArray& command, const QByteArray& answer);
    ClassicScript& failThrice(const QByteArray& command, const QByteArray& answer);

    TestContext& m_test;
    ScriptedPort& m_port;
    QStringList m_timeline;
};

/// An answer as the phone gives it: the echo of the command, the payload and OK.
QByteArray answerTo(const QByteArray& command, const QByteArray& payload = {});

} // namespace kalmo::tests
