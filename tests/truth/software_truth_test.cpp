// SPDX-License-Identifier: GPL-3.0-or-later
// The software of this machine as the program tells it, beside what the machine's tools tell.
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <string>

#include "machine/fact_text.h"
#include "machine/linux_machine.h"
#include "truth/tools.h"

namespace veltrin {
namespace {

using Texts = std::vector<std::string>;

TEST(SystemTruth, TheSystemHasTheNameThatInxiTells) {
  const auto told = InxiSection::of("System");
  if (!told) GTEST_SKIP() << "inxi is not installed";
  EXPECT_EQ(summaryOf("OS Name"), told->value("Distro"));
}

TEST(SystemTruth, TheKernelAndTheHostAreThoseOfUname) {
  const auto told = printedBy("uname -nr");
  if (!told) GTEST_SKIP() << "uname is not installed";
  const Kernel kernel = LinuxMachine().kernel();
  EXPECT_EQ(kernel.host + " " + kernel.release, trimmed(*told));
  EXPECT_TRUE(summaryOf("OS Version").starts_with(kernel.release)) << summaryOf("OS Version");
}

// A package of another architecture than the system's own is told with it.
TEST(SoftwareTruth, PackagesAndVersionsAreThoseOfDpkg) {
  const auto own = printedBy("dpkg --print-architecture");
  const auto told =
      printedBy("dpkg-query -W -f '${db:Status-Status} ${Package} ${Version} ${Architecture}\\n'");
  if (!own || !told) GTEST_SKIP() << "dpkg is not installed";
  std::multiset<std::string> expected;
  for (const std::string& line : linesIn(*told)) {
    const std::vector<std::string_view> words = wordsOf(line);
    if (words.size() != 4 || words[0] != "installed") continue;
    std::string name(words[1]);
    if (words[3] != "all" && words[3] != trimmed(*own)) name += ":" + std::string(words[3]);
    expected.insert(name + " " + std::string(words[2]));
  }
  ASSERT_FALSE(expected.empty());
  std::multiset<std::string> found;
  for (const WmiObject& product : objectsOf("Win32_Product")) {
    found.insert(textOf(product, "Name") + " " + textOf(product, "Version"));
  }
  EXPECT_EQ(found, expected);
}

// The text of a message; where it is no UTF-8, the tool prints its bytes as numbers.
std::string messageIn(const Json& entry) {
  const Json& message = entry.at("MESSAGE");
  std::string bytes = message.text;
  for (const Json& byte : message.items) bytes += static_cast<char>(std::stoi(byte.text));
  return printable(bytes);
}

TEST(SoftwareTruth, MessagesAreThoseOfJournalctl) {
  constexpr std::size_t kLongest = 4000;  // bytes; a longer one the tool may leave out
  constexpr const char* kCommand = "journalctl -q -r -n 201 -o json --all --no-pager";
  const auto told = printedBy(kCommand);
  if (!told) GTEST_SKIP() << "journalctl is not installed";
  Texts expected;
  for (const std::string& line : linesIn(*told)) expected.push_back(messageIn(Json::parse(line)));
  std::vector<WmiObject> events = objectsOf("Win32_NTLogEvent");
  if (expected.empty()) {
    EXPECT_TRUE(events.empty());
    GTEST_SKIP() << "this machine keeps no journal, or none for this user";
  }
  if (printedBy(kCommand) != told) GTEST_SKIP() << "messages come in too quickly to compare them";
  events.resize(std::min(events.size(), expected.size()));
  Texts found;
  for (const WmiObject& event : events) found.push_back(textOf(event, "Message"));
  for (Texts* texts : {&expected, &found}) {
    for (std::string& text : *texts) text.resize(std::min(text.size(), kLongest));
  }
  EXPECT_EQ(found, expected);
}

TEST(SoftwareTruth, AccountsAreThoseOfGetent) {
  const auto users = printedBy("getent -s files passwd");
  const auto groups = printedBy("getent -s files group");
  if (!users || !groups) GTEST_SKIP() << "getent is not installed";
  std::multiset<std::string> expected;
  for (const std::string& line : linesIn(*users)) {
    expected.insert("1 " + line.substr(0, line.find(':')));
  }
  for (const std::string& line : linesIn(*groups)) {
    expected.insert("2 " + line.substr(0, line.find(':')));
  }
  std::multiset<std::string> found;
  for (const WmiObject& account : objectsOf("Win32_Account")) {
    found.insert(textOf(account, "SIDType") + " " + textOf(account, "Name"));
  }
  EXPECT_EQ(found, expected);
}

}  // namespace
}  // namespace veltrin
