// SPDX-License-Identifier: GPL-3.0-or-later
// Runs the built systeminfo on this machine and reads it through a pipe.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "machine/linux_machine.h"
#include "tests/console/program.h"

namespace veltrin {
namespace {

using ::testing::HasSubstr;
using ::testing::MatchesRegex;

std::string outputOf(const std::vector<std::string>& arguments = {}) {
  return Program(VELTRIN_SYSTEMINFO, arguments).readRest();
}

// The whole form: labels, order, indents and line ends, with what this machine holds
// in between.
TEST(SystemInfoProgram, PrintsTheFormOfThisMachine) {
  const std::string anything = "[^\r\n]+\r\n";
  const std::string indexed = "\\[[0-9]{2,}\\]: " + anything;
  const std::string name = "                           " + indexed;
  const std::string detail = "                                 ";
  const std::string memory = "([0-9]{1,3}(,[0-9]{3})* MB|N/A)\r\n";
  const std::string moment =
      "([0-9]{1,2}/[0-9]{1,2}/[0-9]{4}, [0-9]{1,2}:[0-9]{2}:[0-9]{2} [AP]M|N/A)\r\n";
  EXPECT_THAT(
      outputOf(),
      MatchesRegex(
          "\r\n"
          "Host Name:                 " +
          anything + "OS Name:                   " + anything +
          "OS Version:                " + anything + "OS Manufacturer:           " + anything +
          "OS Configuration:          " + anything +
          "OS Build Type:             (Multiprocessor|Uniprocessor|N/A)\r\n"
          "Registered Owner:          N/A\r\n"
          "Registered Organization:   N/A\r\n"
          "Product ID:                ([0-9A-Z]{5}(-[0-9A-Z]{5}){3}|N/A)\r\n"
          "Original Install Date:     " +
          moment + "System Boot Time:          " + moment +
          "System Manufacturer:       " + anything + "System Model:              " + anything +
          "System Type:               " + anything +
          "Processor\\(s\\):              [1-9][0-9]* Processor\\(s\\) "
          "Installed.\r\n(" +
          name + ")+" + "BIOS Version:              " + anything +
          "Windows Directory:         N/A\r\n"
          "System Directory:          N/A\r\n"
          "Boot Device:               " +
          anything + "System Locale:             " + anything + "Input Locale:              " +
          anything + "Time Zone:                 \\(UTC[^\r\n]*\\) " + anything +
          "Total Physical Memory:     " + memory + "Available Physical Memory: " + memory +
          "Virtual Memory: Max Size:  " + memory + "Virtual Memory: Available: " + memory +
          "Virtual Memory: In Use:    " + memory + "Page File Location\\(s\\):     " + anything +
          "(                           [^\r\n]+\r\n)*" + "Domain:                    " + anything +
          "Logon Server:              N/A\r\n"
          "Hotfix\\(s\\):                 ([0-9]+ Hotfix\\(s\\) Installed\\.|N/A)"
          "\r\n(" +
          name + ")*" + "Network Card\\(s\\):           [0-9]+ NIC\\(s\\) Installed\\.\r\n(" +
          name + detail + "Connection Name: " + anything + "((" + detail +
          "Status:          Media disconnected\r\n)|"
          "((" +
          detail +
          "DHCP Enabled:    (Yes|No)\r\n)?"
          "(" +
          detail + "DHCP Server:     " + anything +
          ")?"
          "(" +
          detail + "IP address\\(es\\)\r\n(" + detail + indexed + ")+)?)))*"));
}

TEST(SystemInfoProgram, EndsWell) {
  Program tool(VELTRIN_SYSTEMINFO, {});
  tool.readRest();
  EXPECT_EQ(tool.exitCode(), 0);
}

TEST(SystemInfoProgram, WritesNothingToTheErrorStream) {
  Program tool(VELTRIN_SYSTEMINFO, {});
  tool.readRest();
  EXPECT_EQ(tool.readErrors(), "");
}

TEST(SystemInfoProgram, BearsTheNameOfThisMachine) {
  std::array<char, 256> host{};
  ASSERT_EQ(gethostname(host.data(), host.size() - 1), 0);
  EXPECT_THAT(outputOf(),
              HasSubstr("Host Name:                 " + std::string(host.data()) + "\r\n"));
}

TEST(SystemInfoProgram, ListsEveryAddressOfARunningCard) {
  const auto interfaces = LinuxMachine().interfaces();
  ASSERT_TRUE(interfaces);
  const std::string text = outputOf();
  for (const NetworkInterface& interface : *interfaces) {
    EXPECT_THAT(text, HasSubstr("Connection Name: "));
    for (const InterfaceAddress& own : interface.addresses) {
      if (interface.running) {
        EXPECT_THAT(text, HasSubstr("]: " + own.address.text() + "\r\n"));
      }
    }
  }
}

TEST(SystemInfoProgram, RefusesAnUnknownOption) {
  Program tool(VELTRIN_SYSTEMINFO, {"/x"});
  EXPECT_THAT(tool.readRest(), ::testing::StartsWith("Bad option /x.\r\n\r\nUsage: systeminfo"));
  EXPECT_EQ(tool.exitCode(), 1);
}

// The end of a pipe that nobody reads, as the standard output of the tool.
TEST(SystemInfoProgram, EndsInSilenceWhenNobodyReads) {
  std::array<int, 2> output{};
  std::array<int, 2> errors{};
  ASSERT_EQ(pipe2(output.data(), O_CLOEXEC), 0);
  ASSERT_EQ(pipe2(errors.data(), O_CLOEXEC), 0);
  close(output[0]);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, errors[1], STDERR_FILENO);
  std::string path = VELTRIN_SYSTEMINFO;
  std::array<char*, 2> arguments{path.data(), nullptr};
  pid_t process = 0;
  ASSERT_EQ(posix_spawn(&process, path.c_str(), &actions, nullptr, arguments.data(), environ), 0);
  posix_spawn_file_actions_destroy(&actions);
  close(output[1]);
  close(errors[1]);
  int status = 0;
  waitpid(process, &status, 0);
  EXPECT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 1);
  char byte = 0;
  EXPECT_EQ(read(errors[0], &byte, 1), 0) << "something stands on the error stream";
  close(errors[0]);
}

}  // namespace
}  // namespace veltrin
