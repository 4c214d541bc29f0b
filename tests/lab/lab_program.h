// SPDX-License-Identifier: GPL-3.0-or-later
// The program `lab` for tests: run from a line of the shell.
#pragma once

#include <array>
#include <cstdio>
#include <gtest/gtest.h>
#include <string>

#include "lab/command.h"

namespace veltrin::lab {

struct Outcome {
  int code = -1;
  std::string text;  // both outputs
};

// Runs a line of the shell in which $LAB is the program.
inline Outcome runLine(const std::string& line) {
  const std::string whole = std::string("export LC_ALL=C LAB='") + LAB_PROGRAM + "'; " + line;
  Outcome outcome;
  FILE* const pipe = popen(("exec 2>&1; " + whole).c_str(), "r");
  if (pipe == nullptr) return outcome;
  std::array<char, 4096> buffer{};
  while (const std::size_t length = std::fread(buffer.data(), 1, buffer.size(), pipe)) {
    outcome.text.append(buffer.data(), length);
  }
  const int status = pclose(pipe);
  outcome.code = exitCodeOf(status);
  return outcome;
}

// Tests of this kind need the lab to run on the present machine.
class LabRunning : public testing::Test {
 protected:
  void SetUp() override {
    const Outcome outcome = runLine("\"$LAB\" ping-test true");
    if (outcome.code == kExitCannotRun) GTEST_SKIP() << outcome.text;
    ASSERT_EQ(outcome.code, 0) << outcome.text;
  }
};

}  // namespace veltrin::lab
