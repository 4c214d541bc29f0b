// SPDX-License-Identifier: GPL-3.0-or-later
// What the user reads of each recorded machine, whole.
#include "report/recorded_report.h"

#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

#include "report/report_text.h"

namespace veltrin {
namespace {

std::string contentOf(const std::string& path) {
  const std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file.good()) << "no file " << path;
  std::ostringstream content;
  content << file.rdbuf();
  return content.str();
}

class RecordedReport : public testing::TestWithParam<std::string> {};

// A report that differs is left beside the other leavings of tests, for a person to compare.
TEST_P(RecordedReport, IsTheExpectedOne) {
  const RecordedMachine recorded(recordingsFolder() + GetParam() + ".machine");
  if (!recorded.lacks().empty()) GTEST_SKIP() << recorded.lacks();
  const std::string found = wholeReport(recorded);
  const std::string expected = contentOf(reportFile(recordingsFolder(), GetParam()));
  if (found == expected) return;
  const std::string left = reportFile(testing::TempDir(), GetParam());
  std::ofstream(left, std::ios::binary) << found;
  FAIL() << differences(expected, found) << "The new report: " << left;
}

// Whoever asks again reads the same, whatever the machine's parts have kept of the first time.
TEST_P(RecordedReport, IsTheSameTheNextTime) {
  const RecordedMachine recorded(recordingsFolder() + GetParam() + ".machine");
  EXPECT_EQ(differences(wholeReport(recorded), wholeReport(recorded)), "");
}

INSTANTIATE_TEST_SUITE_P(Of, RecordedReport, testing::ValuesIn(recordedMachines()),
                         [](const auto& info) { return info.param; });

}  // namespace
}  // namespace veltrin
