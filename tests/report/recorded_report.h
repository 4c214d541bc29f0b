// SPDX-License-Identifier: GPL-3.0-or-later
// The report of a recorded machine: the program, the answers of Linux and the tool that tells of
// the machine, all standing on the recording.
//
// The expected reports, tests/machine/recorded/NAME.report, are written anew with
//   recorded_report_tests --write tests/machine/recorded
// and then read line by line before they are committed.
#pragma once

#include <string>

#include "tests/machine/recorded_machine.h"

namespace veltrin {

// What the user reads after ticking all boxes and pressing the button, a line each, as
// report_text.h writes them.
std::string wholeReport(const RecordedMachine& recorded);

// Where the expected report of a machine lies.
std::string reportFile(const std::string& folder, const std::string& machine);

// Writes the reports of all recorded machines into a folder. Returns the exit code of a program:
// other than 0 when a recording is wrong or cannot be made here, or a file cannot be written.
int writeReports(const std::string& folder);

}  // namespace veltrin
