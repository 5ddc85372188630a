// Fuzzes answers with LUID and counter.

#include "fuzz/Targets.h"

#include "phonedata/IrmcAnswers.h"

namespace kalmo::fuzz {

void luidAnswers(const QByteArray& bytes)
{
    const auto answer = phonedata::parseLuidAnswer(bytes);
    if (answer)
        require(bytes.startsWith('L') && answer->luid.size() <= 255 && answer->luid.size() < bytes.size());
}

} // namespace kalmo::fuzz
