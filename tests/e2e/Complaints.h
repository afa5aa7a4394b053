#pragma once

#include "support/ProgramHarness.h"

namespace lumora::tests {

/// Expects of a command that it failed, said why in one line that steers no terminal, and answered
/// nothing.
inline void expectComplaint(const ProgramHarness::Outcome& outcome, int exitCode) {
    EXPECT_EQ(outcome.exitCode, exitCode);
    EXPECT_EQ(outcome.out, "");
    EXPECT_TRUE(outcome.err.startsWith("lumora: ")) << outcome.err.toStdString();
    EXPECT_EQ(outcome.err.count('\n'), 1) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.err.endsWith('\n'));
    EXPECT_FALSE(outcome.err.contains('\x1b'));
}

} // namespace lumora::tests
