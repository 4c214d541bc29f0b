// SPDX-License-Identifier: GPL-3.0-or-later
// The tests of whole reports, or with "--write FOLDER" the reports themselves.
#include <gmock/gmock.h>
#include <string>

#include "report/recorded_report.h"
#include "runner/run_tests.h"

int main(int count, char** arguments) {
  testing::InitGoogleMock(&count, arguments);
  if (count == 3 && std::string(arguments[1]) == "--write") {
    return veltrin::writeReports(arguments[2]);
  }
  return veltrin::runTests();
}
