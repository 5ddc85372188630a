#include "support/Verdict.h"

#include <QTest>

namespace kalmo::tests {

Verdict::~Verdict()
{
    if (!isClean())
        QTest::qFail(qPrintable(m_problems.join(QLatin1Char('\n'))), __FILE__, __LINE__);
}

} // namespace kalmo::tests
