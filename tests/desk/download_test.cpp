// SPDX-License-Identifier: GPL-3.0-or-later
// A person tests the download, in the lab, by the menu's picture: the smallest file of the
// scenario's web host, for 5 Mbit/s. It takes about 20 s.
#include <chrono>
#include <cstdint>
#include <gtest/gtest.h>
#include <regex>
#include <string>

#include "desk/tool_run.h"
#include "lab/web_pattern.h"

namespace veltrin::desk {
namespace {

// What the scenario says of the sixth file, and of how it comes.
constexpr std::size_t kSize = 6'250'000;
constexpr double kRate = 625'000;  // bytes/s
constexpr double kStall = 2;       // s
constexpr double kSeconds = kSize / kRate + kStall;
constexpr double kExcess = 1.15;  // what the line lets through at once when a stall is over

const char* const kWindow = "Stability Analyzer ";

class DownloadOnADesk : public ToolRun {
 protected:
  // A program that has been started before, at a connection of that speed.
  void setRatedSpeed(const std::string& speed) const {
    std::filesystem::create_directories(data_ / "veltrin" / "Files");
    std::ofstream(data_ / "veltrin" / "Files" / "Veltrin.dat", std::ios::binary)
        << "[Settings]\r\nPath=known\r\nOS=known\r\nRated Speed=" << speed << "\r\n";
  }

  std::filesystem::path inProgramFolder(const std::string& name) const {
    return data_ / "veltrin" / name;
  }

  void openTest() {
    window_ = kWindow;
    start();
    ASSERT_NO_FATAL_FAILURE(awaitMenu());
    desk_->click(desk_->button(kMenu, "Download test"));
    ASSERT_TRUE(eventually(milliseconds(20000), [&] { return desk_->hasWindow(kWindow); }));
  }

  // The line of a report that tells the speed, in KB/s and Kb/s: no faster than the scenario's
  // line, however little of the time is the download's, and no slower than the whole took, which
  // on a busy machine is longer than the download.
  static void expectSpeed(const std::string& report, double whole) {
    std::smatch speed;
    ASSERT_TRUE(std::regex_search(
        report, speed,
        std::regex("\r\nSpeed: ([0-9]+\\.[0-9]+) KB/s   /  ([0-9]+\\.[0-9]+) Kb/s\r\n")))
        << report;
    const double kilobytes = std::stod(speed[1]);
    const double kilobits = std::stod(speed[2]);
    EXPECT_LE(kilobytes, kSize / kSeconds / 1000 * kExcess) << report;
    EXPECT_GE(kilobytes, kSize / whole / 1000) << report;
    EXPECT_NEAR(kilobits, kilobytes * 8, kilobits / 100) << report;
  }
};

// The end of the curve, by what the picture tells of itself; -1 when no picture does.
double endOfCurve() {
  const std::regex told("Speed in Kb/s over (?:17\\.5|30) seconds ([0-9.]+)");
  for (const Element& element : elementsOf("veltrin")) {
    std::smatch value;
    if (element.showing && std::regex_match(element.name, value, told)) return std::stod(value[1]);
  }
  return -1;
}

// The first place at which a file is not as the web host served it; its length when there
// is none.
std::size_t rightUpTo(const std::string& bytes) {
  for (std::size_t place = 0; place < bytes.size(); ++place) {
    if (static_cast<std::uint8_t>(bytes[place]) != lab::webByte(place)) return place;
  }
  return bytes.size();
}

TEST_F(DownloadOnADesk, TheFileForTheRatedSpeedIsReadWholeAndItsSpeedReported) {
  setRatedSpeed("5,000");
  const auto begin = std::chrono::steady_clock::now();
  ASSERT_NO_FATAL_FAILURE(openTest());
  EXPECT_TRUE(eventually(milliseconds(10000),
                         [&] { return isShown(kWindow, "Testing Internet Connection"); }));
  EXPECT_FALSE(std::filesystem::exists(inProgramFolder("Download Stability Test.txt")));
  desk_->photograph("download-running");
  ASSERT_NO_FATAL_FAILURE(awaitEnabled("Done"));
  const std::chrono::duration<double> whole = std::chrono::steady_clock::now() - begin;
  desk_->photograph("download-complete");
  EXPECT_TRUE(isShown(kWindow, "Graph 0 to 10 Mbps"));

  const std::string report = contentOf(inProgramFolder("Download Stability Test.txt"));
  EXPECT_EQ(report.rfind("Advance Settings Summary\r\n", 0), 0U) << report;
  EXPECT_NE(report.find("\r\nTotal Bytes Received = " + std::to_string(kSize) + "\r\n"),
            std::string::npos)
      << report;
  ASSERT_NO_FATAL_FAILURE(expectSpeed(report, whole.count()));
  // The curve ends with the speed behind the stall.
  EXPECT_GE(endOfCurve(), kSize / whole.count() * 8 / 1000);
  EXPECT_LE(endOfCurve(), kRate * 8 / 1000 * kExcess);
  const std::string served = contentOf(inProgramFolder("TestDL.tst"));
  EXPECT_EQ(served.size(), kSize);
  EXPECT_EQ(rightUpTo(served), kSize);

  click("Done");
  ASSERT_TRUE(eventually(milliseconds(20000), [&] { return !desk_->hasWindow(kWindow); }));
  EXPECT_TRUE(std::filesystem::exists(inProgramFolder("TestDL.tst")));
  desk_->click(desk_->button(kMenu, "Exit"));
  EXPECT_EQ(program_->waitFor(milliseconds(30000)), 0);
}

}  // namespace
}  // namespace veltrin::desk
