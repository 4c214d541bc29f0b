// SPDX-License-Identifier: GPL-3.0-or-later
// The end of every test program's main().
#pragma once

namespace veltrin {

// The exit code by which a program tells ctest that it could test nothing here.
constexpr int kNothingCouldBeTested = 77;

// Runs the chosen test cases. The exit code: 0 when none failed, kNothingCouldBeTested
// when in addition each of them was skipped, else 1. GoogleTest alone would call a run
// of nothing but skipped cases a success, and one of no cases at all, as a filter with
// a name of old chooses them. A program that a case ends in mid-run fails, too.
int runTests();

}  // namespace veltrin
