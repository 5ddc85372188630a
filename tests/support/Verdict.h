#pragma once

#include <QTest>

#include <utility>

namespace kalmo::tests {

/// The complaints of one test's fakes. Each one that the test has not taken out fails the running test
/// when the verdict goes out of scope, so that no test can forget to ask.
class Verdict
{
public:
    Verdict() = default;
    ~Verdict()
    {
        if (!isClean())
            QTest::qFail(qPrintable(m_problems.join(QLatin1Char('\n'))), __FILE__, __LINE__);
    }
    Q_DISABLE_COPY_MOVE(Verdict)

    void complain(const QString& problem) { m_problems.append(problem); }
    bool isClean() const { return m_problems.isEmpty(); }

    /// Takes the complaints out, for tests of the fakes themselves.
    QStringList take() { return std::exchange(m_problems, {}); }

private:
    QStringList m_problems;
};

} // namespace kalmo::tests
