// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/sysinfo/systeminfo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>

#include "tests/machine/machines.h"

namespace veltrin {
namespace {

using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;

// Keeps what is written, as long as somebody reads.
class KeptOutput : public Output {
 public:
  bool write(std::string_view text) override {
    if (writes.size() == most) {
      return false;
    }
    writes.emplace_back(text);
    return true;
  }

  void letReaderCatchUp() override {}

  std::string text() const {
    std::string all;
    for (const std::string& write : writes) {
      all += write;
    }
    return all;
  }

  std::vector<std::string> writes;
  std::size_t most = 10'000;  // writes that somebody reads
};

class SystemInfoTool : public ::testing::Test {
 protected:
  int run(const std::vector<std::string>& arguments = {}) {
    const FileTree files = tree_.files();
    return SystemInfo(files, machine_, output_).run(arguments);
  }

  TemporaryTree tree_;
  FakeMachine machine_;
  KeptOutput output_;
};

// --- Whole machines ---

TEST_F(SystemInfoTool, TellsAllOfALaptop) {
  makeLaptop(tree_, machine_);
  EXPECT_EQ(run(), 0);
  EXPECT_EQ(output_.text(),
            "\r\n"
            "Host Name:                 mypc\r\n"
            "OS Name:                   Example Linux 7\r\n"
            "OS Version:                6.1.0-21-amd64 #1 SMP PREEMPT_DYNAMIC Example 6.1.90-1\r\n"
            "OS Manufacturer:           Example Project\r\n"
            "OS Configuration:          Workstation Edition\r\n"
            "OS Build Type:             Multiprocessor\r\n"
            "Registered Owner:          N/A\r\n"
            "Registered Organization:   N/A\r\n"
            "Product ID:                008J4-CT4AN-VSKAN-VSKEY\r\n"
            "Original Install Date:     1/30/2026, 4:22:51 PM\r\n"
            "System Boot Time:          2/2/2026, 11:21:12 AM\r\n"
            "System Manufacturer:       Example Works\r\n"
            "System Model:              Notebook 7\r\n"
            "System Type:               x64-based PC\r\n"
            "Processor(s):              1 Processor(s) Installed.\r\n"
            "                           [01]: Intel64 Family 6 Model 37 Stepping 5 GenuineIntel "
            "~2667 Mhz\r\n"
            "BIOS Version:              Example Firmware F.20, 8/10/2025\r\n"
            "Windows Directory:         N/A\r\n"
            "System Directory:          N/A\r\n"
            "Boot Device:               /dev/nvme0n1p2\r\n"
            "System Locale:             en-us;English (United States)\r\n"
            "Input Locale:              us;English (US)\r\n"
            "Time Zone:                 (UTC+01:00) Europe/Berlin\r\n"
            "Total Physical Memory:     3,957 MB\r\n"
            "Available Physical Memory: 2,046 MB\r\n"
            "Virtual Memory: Max Size:  7,912 MB\r\n"
            "Virtual Memory: Available: 5,605 MB\r\n"
            "Virtual Memory: In Use:    2,307 MB\r\n"
            "Page File Location(s):     /dev/nvme0n1p3\r\n"
            "Domain:                    example.net\r\n"
            "Logon Server:              N/A\r\n"
            "Hotfix(s):                 2 Hotfix(s) Installed.\r\n"
            "                           [01]: openssl:amd64 1.0-2\r\n"
            "                           [02]: tzdata:all 1.0-2\r\n"
            "Network Card(s):           2 NIC(s) Installed.\r\n"
            "                           [01]: Example Corporation Gigabit 7\r\n"
            "                                 Connection Name: eth0\r\n"
            "                                 DHCP Enabled:    Yes\r\n"
            "                                 DHCP Server:     198.51.100.1\r\n"
            "                                 IP address(es)\r\n"
            "                                 [01]: 198.51.100.20\r\n"
            "                                 [02]: fe80::1\r\n"
            "                           [02]: example_net\r\n"
            "                                 Connection Name: wlan0\r\n"
            "                                 Status:          Media disconnected\r\n");
}

TEST_F(SystemInfoTool, WritesEachLineByItself) {
  makeLaptop(tree_, machine_);
  run();
  EXPECT_THAT(output_.writes, SizeIs(46));
  EXPECT_THAT(output_.writes, Each(EndsWith("\r\n")));
}

TEST_F(SystemInfoTool, CountsTheProcessorsOfAServer) {
  makeServer(tree_, machine_, 0);
  run();
  EXPECT_THAT(output_.text(),
              HasSubstr("Processor(s):              2 Processor(s) Installed.\r\n"));
}

TEST_F(SystemInfoTool, TellsThatAServerHasNoCards) {
  makeServer(tree_, machine_, 0);
  run();
  EXPECT_THAT(output_.text(), EndsWith("Network Card(s):           0 NIC(s) Installed.\r\n"));
}

TEST_F(SystemInfoTool, ListsAllFiveCardsOfAServer) {
  makeServer(tree_, machine_, 5);
  run();
  EXPECT_THAT(output_.text(), HasSubstr("Network Card(s):           5 NIC(s) Installed.\r\n"
                                        "                           [01]: example_net\r\n"
                                        "                                 Connection Name: eth0\r\n"
                                        "                                 IP address(es)\r\n"
                                        "                                 [01]: 192.0.2.1\r\n"
                                        "                           [02]: example_net\r\n"));
  EXPECT_THAT(output_.text(), EndsWith("                           [05]: example_net\r\n"
                                       "                                 Connection Name: eth4\r\n"
                                       "                                 IP address(es)\r\n"
                                       "                                 [01]: 192.0.2.5\r\n"));
}

TEST_F(SystemInfoTool, OfAMachineThatTellsNothingStillPrintsEveryLine) {
  EXPECT_EQ(run(), 0);
  EXPECT_THAT(output_.writes, SizeIs(33));
  EXPECT_THAT(output_.writes, Contains("Product ID:                N/A\r\n"));
  EXPECT_THAT(output_.writes, Contains("System Model:              N/A\r\n"));
  EXPECT_THAT(output_.writes, Contains("Hotfix(s):                 N/A\r\n"));
  EXPECT_THAT(output_.writes, Contains("Network Card(s):           N/A\r\n"));
}

// --- Files that hold nothing, or anything ---

class BrokenFiles : public SystemInfoTool {
 protected:
  void SetUp() override {
    machine_.kernelFacts = {"mypc", "6.1", "#1 SMP", "x86_64"};
    machine_.network = std::vector<NetworkInterface>{makeInterface(2, "eth0")};
  }

  // The labels of the lines of the form, in their order, and what no line may hold.
  void checkForm() {
    std::string labels;
    for (const std::string& write : output_.writes) {
      ASSERT_THAT(write, EndsWith("\r\n"));
      const std::string line = write.substr(0, write.size() - 2);
      ASSERT_THAT(line.find_first_of(std::string("\r\n\0\x1B", 4)), std::string::npos) << line;
      if (!line.empty() && line[0] != ' ') {
        labels += line.substr(0, line.find(':')) + "\n";
      }
    }
    EXPECT_EQ(labels,
              "Host Name\nOS Name\nOS Version\nOS Manufacturer\nOS Configuration\nOS Build Type\n"
              "Registered Owner\nRegistered Organization\nProduct ID\nOriginal Install Date\n"
              "System Boot Time\nSystem Manufacturer\nSystem Model\nSystem Type\nProcessor(s)\n"
              "BIOS Version\nWindows Directory\nSystem Directory\nBoot Device\nSystem Locale\n"
              "Input Locale\nTime Zone\nTotal Physical Memory\nAvailable Physical Memory\n"
              "Virtual Memory\nVirtual Memory\nVirtual Memory\nPage File Location(s)\nDomain\n"
              "Logon Server\nHotfix(s)\nNetwork Card(s)\n");
  }
};

TEST_F(BrokenFiles, ThatAreEmptyTellNothing) {
  fillEveryFile(tree_, "");
  EXPECT_EQ(run(), 0);
  checkForm();
  EXPECT_THAT(output_.text(), HasSubstr("Processor(s):              N/A\r\n"));
  EXPECT_THAT(output_.text(), HasSubstr("Hotfix(s):                 N/A\r\n"));
}

TEST_F(BrokenFiles, OfLineEndsAndZerosTellNothing) {
  fillEveryFile(tree_, std::string("\n\r\n\0\0\n\n\0", 8));
  EXPECT_EQ(run(), 0);
  checkForm();
  EXPECT_THAT(output_.text(), HasSubstr("Total Physical Memory:     N/A\r\n"));
}

// Bytes by chance, and pieces of what the files really hold, so that readers get
// beyond their first test.
TEST_F(BrokenFiles, OfAnyBytesLeaveTheFormWhole) {
  const std::vector<std::string> pieces{"\n",
                                        "=",
                                        ":",
                                        " ",
                                        "\t",
                                        "processor",
                                        ": 0",
                                        "[device]",
                                        "- ext4",
                                        "/dev/",
                                        "MemTotal:",
                                        "btime ",
                                        "lease {",
                                        "}",
                                        "! layout",
                                        "LANG=",
                                        "de_DE",
                                        "kB",
                                        "[ALPM] ",
                                        "upgrade a 1 2",
                                        "\x1B[31m",
                                        "physical id",
                                        "2026-01-30 15:22:51 "};
  std::mt19937 random(1);
  for (int round = 0; round < 15; ++round) {
    std::string bytes;
    for (int i = 0; i < 300; ++i) {
      bytes += random() % 2 == 0 ? pieces[random() % pieces.size()]
                                 : std::string(1, static_cast<char>(random() % 256));
    }
    fillEveryFile(tree_, bytes);
    output_.writes.clear();
    EXPECT_EQ(run(), 0);
    checkForm();
  }
}

// --- The command line ---

TEST_F(SystemInfoTool, ExplainsItselfWhenAsked) {
  for (const char* option : {"-?", "/?"}) {
    output_.writes.clear();
    EXPECT_EQ(run({option}), 0);
    EXPECT_THAT(output_.writes, ElementsAre(StartsWith("\r\nUsage: systeminfo [-?]\r\n")));
  }
}

TEST_F(SystemInfoTool, RefusesAnUnknownOptionAndExplainsItself) {
  for (const std::string option : {"-x", "/fo", "--help", "-"}) {
    output_.writes.clear();
    EXPECT_EQ(run({option}), 1);
    EXPECT_THAT(output_.writes, ElementsAre("Bad option " + option + ".\r\n",
                                            StartsWith("\r\nUsage: systeminfo [-?]\r\n")));
  }
}

TEST_F(SystemInfoTool, RefusesAParameter) {
  EXPECT_EQ(run({"server"}), 1);
  EXPECT_THAT(output_.writes, ElementsAre("Bad parameter server.\r\n"));
}

TEST_F(SystemInfoTool, TellsOfTheFirstMistakeOnly) {
  EXPECT_EQ(run({"server", "-x"}), 1);
  EXPECT_THAT(output_.writes, ElementsAre("Bad parameter server.\r\n"));
}

// --- A reader that goes ---

TEST_F(SystemInfoTool, EndsWithTheLineThatNobodyReads) {
  for (const std::size_t most : {0U, 1U, 20U}) {
    output_.writes.clear();
    output_.most = most;
    EXPECT_EQ(run(), 1);
    EXPECT_THAT(output_.writes, SizeIs(most));
  }
}

TEST_F(SystemInfoTool, FailsWhenNobodyReadsItsUsage) {
  output_.most = 0;
  EXPECT_EQ(run({"-?"}), 1);
  EXPECT_THAT(output_.writes, IsEmpty());
}

}  // namespace
}  // namespace veltrin
