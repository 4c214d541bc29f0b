// SPDX-License-Identifier: GPL-3.0-or-later
// Web hosts inside the lab, read by a client of plain sockets. Skipped with the lab's
// reason where it cannot run.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

#include "lab_program.h"

namespace veltrin::lab {
namespace {

using testing::Each;
using testing::Field;
using testing::HasSubstr;
using testing::Lt;
using testing::Not;

// Two seconds of each file that has a rate.
constexpr const char* kScenario =
    "[internet]\n"
    "machine = 192.0.2.2/24, 2001:db8::2/64\n"
    "gateway = 192.0.2.1, 2001:db8::1\n"
    "dns = 198.51.100.53\n"
    "[router gateway.example]\n"
    "address = 192.0.2.1, 2001:db8::1\n"
    "[router gone.example]\n"
    "address = 198.51.100.9\n"
    "beyond = host-unreachable\n"
    "[host steady.example]\n"
    "address = 203.0.113.1\n"
    "delay = 100 ms\n"
    "via = gateway.example\n"
    "[web steady.example]\n"
    "rate = 400000\n"
    "files = /two-seconds 800000, /empty 0\n"
    "[host stalling.example]\n"
    "address = 203.0.113.2\n"
    "[web stalling.example]\n"
    "port = 8080\n"
    "rate = 400000\n"
    "stall = after 200000 for 700 ms\n"
    "files = /file 400000, /short 100000\n"
    "[host quick.example]\n"
    "address = 203.0.113.3, 2001:db8:0:3::1\n"
    "delay = 2 ms\n"
    "[web quick.example]\n"
    "files = /file 20000000\n"
    "[host lossy.example]\n"
    "address = 203.0.113.4\n"
    "delay = 2 ms\n"
    "link-loss-pattern = every 10th\n"
    "[web lossy.example]\n"
    "files = /file 2000000\n"
    "[host behind.example]\n"
    "address = 203.0.113.5\n"
    "via = gone.example\n"
    "[web behind.example]\n"
    "files = /file 1000\n";

// What the client tells; times in ms.
struct Reading {
  std::string status;
  std::string length;
  std::uint64_t body = 0;
  std::string right;
  double connect = 0;
  double head = 0;  // from the request to the head of the answer
  double time = 0;  // from there to the end
  double pause = 0;
  std::uint64_t pauseAt = 0;
};

class WebLab : public LabRunning {
 protected:
  void SetUp() override {
    LabRunning::SetUp();
    std::string folder = (std::filesystem::temp_directory_path() / "web-lab-XXXXXX").string();
    ASSERT_NE(mkdtemp(folder.data()), nullptr);
    folder_ = folder;
    std::ofstream(folder_ / "web.ini") << kScenario;
  }

  void TearDown() override {
    if (!folder_.empty()) std::filesystem::remove_all(folder_);
  }

  // Runs a line of the shell inside the lab, in which $CLIENT is the client.
  Outcome run(const std::string& line) const {
    return runLine("export CLIENT='" + std::string(WEB_CLIENT) + "'; \"$LAB\" '" +
                   (folder_ / "web.ini").string() + "' -- sh -c '" + line + "'");
  }

  // What each of the clients told that a line of the shell has run.
  std::vector<Reading> readings(const std::string& line) const {
    const Outcome outcome = run(line);
    std::vector<Reading> result;
    std::istringstream lines(outcome.text);
    for (std::string text; std::getline(lines, text);) {
      std::istringstream words(text);
      Reading reading;
      std::string name;
      words >> name >> reading.status >> name >> reading.length >> name >> reading.body >> name >>
          reading.right >> name >> reading.connect >> name >> reading.head >> name >>
          reading.time >> name >> reading.pause >> name >> reading.pauseAt;
      EXPECT_TRUE(words && name == "at") << text;
      result.push_back(reading);
    }
    EXPECT_EQ(outcome.code, 0) << outcome.text;
    return result;
  }

  // The same once the last of them took so long, in ms, and 5 percent at most, with a pause no
  // longer than the one given and 100 ms. A busy machine makes one late now and then; only a
  // wrong rate does it each time.
  std::vector<Reading> readingsInTime(const std::string& line, double time,
                                      double pause = 100) const {
    constexpr int kAttempts = 5;
    std::vector<Reading> result;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
      result = readings(line);
      if (!result.empty() && std::abs(result.back().time - time) <= time / 20 &&
          result.back().pause <= pause + 100) {
        break;
      }
    }
    return result;
  }

  Reading readingInTime(const std::string& line, double time, double pause = 100) const {
    const auto all = readingsInTime(line, time, pause);
    EXPECT_EQ(all.size(), 1U);
    return all.empty() ? Reading{} : all[0];
  }

  Reading reading(const std::string& line) const {
    const auto all = readings(line);
    EXPECT_EQ(all.size(), 1U);
    return all.empty() ? Reading{} : all[0];
  }

  std::filesystem::path folder_;
};

TEST_F(WebLab, FileComesAtItsRate) {
  const Reading reading = readingInTime("\"$CLIENT\" GET steady.example 80 /two-seconds", 2000);
  EXPECT_EQ(reading.status, "200");
  EXPECT_EQ(reading.body, 800000U);
  EXPECT_NEAR(reading.time, 2000, 100);
}

TEST_F(WebLab, FileComesWithoutAPauseThatNobodyAskedFor) {
  EXPECT_LT(readingInTime("\"$CLIENT\" GET steady.example 80 /two-seconds", 2000).pause, 200);
}

TEST_F(WebLab, ClientsAtOnceEachHaveTheWholeRate) {
  const auto readings = readingsInTime(
      "for number in 1 2 3; do \"$CLIENT\" GET steady.example 80 /two-seconds & done; wait", 2000);
  ASSERT_EQ(readings.size(), 3U);
  for (const Reading& reading : readings) {
    EXPECT_EQ(reading.body, 800000U);
    EXPECT_EQ(reading.right, "yes");
    EXPECT_LT(reading.head, 1000);
    EXPECT_NEAR(reading.time, 2000, 100);
  }
}

TEST_F(WebLab, PausesAtItsPlaceForItsTime) {
  const Reading reading = readingInTime("\"$CLIENT\" GET stalling.example 8080 /file", 1700, 700);
  EXPECT_EQ(reading.body, 400000U);
  EXPECT_EQ(reading.pauseAt, 200000U);
  EXPECT_NEAR(reading.pause, 700, 100);  // a busy machine wakes the client late
  EXPECT_NEAR(reading.time, 1700, 85);
}

TEST_F(WebLab, FileThatEndsBeforeThePauseHasNone) {
  const Reading reading = readingInTime("\"$CLIENT\" GET stalling.example 8080 /short", 250);
  EXPECT_EQ(reading.body, 100000U);
  EXPECT_LT(reading.pause, 200);
}

TEST_F(WebLab, EveryByteOfALongFileIsRight) {
  const Reading reading = this->reading("\"$CLIENT\" GET quick.example 80 /file");
  EXPECT_EQ(reading.length, "20000000");
  EXPECT_EQ(reading.body, 20000000U);
  EXPECT_EQ(reading.right, "yes");
}

TEST_F(WebLab, FileComesWholeOverALossyLink) {
  const Reading reading = this->reading("\"$CLIENT\" GET lossy.example 80 /file");
  EXPECT_EQ(reading.body, 2000000U);
  EXPECT_EQ(reading.right, "yes");
}

TEST_F(WebLab, ServesAtEachAddressOfItsHost) {
  EXPECT_EQ(reading("\"$CLIENT\" GET 203.0.113.3 80 /file").body, 20000000U);
  EXPECT_EQ(reading("\"$CLIENT\" GET 2001:db8:0:3::1 80 /file").body, 20000000U);
}

TEST_F(WebLab, ConnectionTakesTheDelayOfItsHost) {
  double shortest = 1e9;  // of five, as a busy machine makes one late now and then
  for (int attempt = 0; attempt < 5; ++attempt) {
    const Reading reading = this->reading("\"$CLIENT\" HEAD 203.0.113.1 80 /two-seconds");
    EXPECT_GE(reading.connect, 100);
    shortest = std::min(shortest, reading.connect);
  }
  EXPECT_LT(shortest, 150);
}

TEST_F(WebLab, RouterThatCannotReachTheHostTellsTheClient) {
  EXPECT_EQ(run("\"$CLIENT\" GET behind.example 80 /file").text, "no connection\n");
}

TEST_F(WebLab, PortThatNothingServesIsRefused) {
  EXPECT_EQ(run("\"$CLIENT\" GET steady.example 81 /two-seconds").text, "no connection\n");
}

TEST_F(WebLab, HeadHasTheLengthAndNoBody) {
  const Reading reading = this->reading("\"$CLIENT\" HEAD steady.example 80 /two-seconds");
  EXPECT_EQ(reading.status, "200");
  EXPECT_EQ(reading.length, "800000");
  EXPECT_EQ(reading.body, 0U);
}

TEST_F(WebLab, EmptyFileHasNoBody) {
  const Reading reading = this->reading("\"$CLIENT\" GET steady.example 80 /empty");
  EXPECT_EQ(reading.status, "200");
  EXPECT_EQ(reading.length, "0");
  EXPECT_EQ(reading.body, 0U);
}

TEST_F(WebLab, UnknownPathIsNotFound) {
  const Reading reading = this->reading("\"$CLIENT\" GET steady.example 80 /nowhere");
  EXPECT_EQ(reading.status, "404");
  EXPECT_EQ(reading.body, 0U);
}

TEST_F(WebLab, ClientsThatLeaveInMidBodyDoNotHarmTheNext) {
  const auto readings = readingsInTime(
      "for number in $(seq 70); do \"$CLIENT\" GET steady.example 80 /two-seconds 1 & done; wait; "
      "\"$CLIENT\" GET steady.example 80 /two-seconds",
      2000);
  ASSERT_EQ(readings.size(), 71U);
  EXPECT_THAT(readings, Each(Field(&Reading::right, "yes")));
  EXPECT_THAT(readings, Each(Field(&Reading::head, Lt(10000))));
  EXPECT_LT(readings[0].body, 800000U);
  EXPECT_EQ(readings[70].body, 800000U);
  EXPECT_NEAR(readings[70].time, 2000, 100);
}

// The file that the program inside reads, as it is there and outside.
class WebLabInstallation : public LabRunning {
 protected:
  static std::string textIn(const std::string& scenario) {
    return runLine("\"$LAB\" " + scenario + " cat '" + INSTALLATION + "'").text;
  }
};

TEST_F(WebLabInstallation, HasTheSettingsOfTheScenarioInside) {
  EXPECT_THAT(textIn("download"),
              HasSubstr("\nDownloadTestUrl6=http://download.example/download-6.bin\r\n"));
  EXPECT_THAT(textIn("download"), HasSubstr("\nProbeHost="));
}

TEST_F(WebLabInstallation, IsAsItWasOutsideAndInOtherScenarios) {
  const std::string before = runLine(std::string("cat '") + INSTALLATION + "'").text;
  EXPECT_THAT(textIn("download"), Not(before));
  EXPECT_EQ(textIn("clean-15"), before);
  EXPECT_EQ(runLine(std::string("cat '") + INSTALLATION + "'").text, before);
}

}  // namespace
}  // namespace veltrin::lab
