#pragma once

#include "handset/Faults.h"

#include <QTest>

#include <span>

namespace kalmo::tests {

/// A fault that strikes at the n-th command or request.
struct FaultKind
{
    const char* name;
    handset::Faults (*make)(int at);
};

/// Runs `body(faults, why)` for each kind at every `step`-th of so many requests, with the words for a
/// failure. Ends at the first failure.
template <typename Body>
void sweep(std::span<const FaultKind> kinds, int requests, int step, const Body& body)
{
    for (const FaultKind& kind : kinds) {
        for (int at = 1; at <= requests; at += step) {
            body(kind.make(at), kind.name + QByteArray(" at ") + QByteArray::number(at) + ": ");
            if (QTest::currentTestFailed())
                return;
        }
    }
}

} // namespace kalmo::tests
