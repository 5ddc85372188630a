#include "support/ClassicScript.h"

namespace kalmo::tests {

using namespace Qt::StringLiterals;

QByteArray answerTo(const QByteArray& command, const QByteArray& payload)
{
    return command + "\r\n" + (payload.isEmpty() ? QByteArray() : payload + "\r\n\r\n") + "OK\r\n";
}

void ClassicScript::request(const QByteArray& command, const QByteArray& answer)
{
    m_port.expect(command, answer).then([this, command] {
        m_timeline.append(QString::number(m_test.clock.elapsed(), 'f', 2) + u' ' +
                          QString::fromLatin1(command.trimmed()));
    });
}

ClassicScript& ClassicScript::expect(const QByteArray& command, const QByteArray& payload)
{
    request(command, answerTo(command, payload));
    return *this;
}

ClassicScript& ClassicScript::expectAll(const QByteArrayList& commands)
{
    for (const QByteArray& command : commands)
        expect(command);
    return *this;
}

ClassicScript& ClassicScript::refuse(const QByteArray& command)
{
    return failThrice(command, command + "\r\nERROR\r\n");
}

ClassicScript& ClassicScript::ignore(const QByteArray& command)
{
    return failThrice(command, {});
}

ClassicScript& ClassicScript::failThrice(const QByteArray& command, const QByteArray& answer)
{
    for (int attempt = 0; attempt < 3; ++attempt) {
        request(command, answer);
        for (int reset = 0; reset < 2 && attempt < 2; ++reset)
            request("ATZ\r", {});
    }
    return *this;
}

ClassicScript& ClassicScript::stumble(const QByteArray& command, const QByteArray& payload)
{
    return failOnce(command, command + "\r\nERROR\r\n").expect(command, payload);
}

ClassicScript& ClassicScript::loseAnswer(const QByteArray& command, const QByteArray& payload)
{
    return failOnce(command, {}).expect(command, payload);
}

ClassicScript& ClassicScript::failOnce(const QByteArray& command, const QByteArray& answer)
{
    request(command, answer);
    request("ATZ\r", {});
    request("ATZ\r", {});
    return *this;
}

ClassicScript& ClassicScript::then(const std::function<void()>& action)
{
    m_port.then(action);
    return *this;
}

} // namespace kalmo::tests
