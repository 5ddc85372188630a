#pragma once

#include "link/mdlComm.h"
#include "support/ScriptedPort.h"

namespace kalmo::tests {

/// The line with a scripted phone at its end.
struct ScriptedLine
{
    TestContext test;
    ScriptedPort port{test};
    link::Line line{test.context, port};
};

} // namespace kalmo::tests
