#pragma once

#include "support/ConverterFolder.h"

namespace kalmo::tests {

/// Everything that a conversion works with.
struct Workshop : TestContext
{
    ConverterFolder plugins{*this};

    QStringList leftovers() const { return workLeftIn(*this); }
};

} // namespace kalmo::tests
