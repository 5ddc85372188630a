#pragma once

#include "support/Rows.h"

#include <QtTest> // and with it the whole of QtCore

#include <memory>

namespace kalmo::tests {

/// Makes a class of tests known to the program that holds it. One program holds all tests of a folder, since
/// linking takes longer than compiling.
struct TestClass
{
    using Maker = std::unique_ptr<QObject> (*)();

    /// `file` is the path of its source, "tests/engine/tst_Line.cpp" for the test "Line".
    TestClass(const char* file, Maker maker);
};

} // namespace kalmo::tests

/// Makes a class of tests part of its folder's program. Stands once in a source, after the class.
#define KALMO_TEST(Class)                                                                                    \
    static const kalmo::tests::TestClass testOf##Class(                                                      \
        __FILE__, [] { return std::unique_ptr<QObject>(std::make_unique<Class>()); });

// Only tests include this, and all of them speak of these.
using namespace Qt::StringLiterals;
using namespace kalmo;
using namespace kalmo::tests;
