// SPDX-License-Identifier: GPL-3.0-or-later
// The built tools on a German desktop, whose language writes a comma before decimals and a
// point between thousands. The windows read what the tools print by its English form.
#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>
#include <ostream>
#include <regex>
#include <string>
#include <vector>

#include "program.h"
#include "tests/support/german_language.h"

namespace veltrin {
namespace {

struct Command {
  const char* name;
  const char* path;
  std::vector<std::string> arguments;
  bool sendsEchoes = false;
};

std::ostream& operator<<(std::ostream& out, const Command& command) { return out << command.name; }

// A text without what differs from run to run: each number, with English commas between its
// thousands and with what makes room for it or says that it is below, is "#".
std::string formOf(const std::string& text) {
  static const std::regex number("[ <=]*[0-9]+(,[0-9]{3}(?![0-9]))*");
  return std::regex_replace(text, number, "#");
}

// Takes out the two lines of systeminfo that tell the language itself.
std::string withoutLanguage(const std::string& text) {
  static const std::regex lines("(System|Input) Locale: [^\n]*\n");
  return std::regex_replace(text, lines, "");
}

class GermanDesktop : public ::testing::TestWithParam<Command> {
 protected:
  static void SetUpTestSuite() { german_ = std::make_unique<GermanLanguage>(); }
  static void TearDownTestSuite() { german_.reset(); }

  void SetUp() override {
    if (!german_->isMade()) GTEST_SKIP() << GermanLanguage::kMissing;
    const std::string reason = GetParam().sendsEchoes ? obstacle("127.0.0.1") : "";
    if (!reason.empty()) GTEST_SKIP() << reason;
    setenv("LOCPATH", german_->folder().c_str(), 1);
  }
  void TearDown() override {
    unsetenv("LC_ALL");
    unsetenv("LOCPATH");
  }

  // What the tool prints on a desktop of that language.
  static std::string printedIn(const char* language) {
    setenv("LC_ALL", language, 1);
    Program tool(GetParam().path, GetParam().arguments);
    std::string text = tool.readRest();
    EXPECT_EQ(tool.readErrors(), "");
    EXPECT_EQ(tool.exitCode(), 0);
    return text;
  }

 private:
  static inline std::unique_ptr<GermanLanguage> german_;
};

TEST_P(GermanDesktop, ReadsTheFormThatIsPrintedWithoutALanguage) {
  const std::string english = formOf(withoutLanguage(printedIn("C")));
  EXPECT_NE(english.find('#'), std::string::npos) << "no number in " << english;
  EXPECT_EQ(formOf(withoutLanguage(printedIn(GermanLanguage::kName))), english);
}

INSTANTIATE_TEST_SUITE_P(
    Tools, GermanDesktop,
    ::testing::Values(Command{"ping", VELTRIN_PING, {"-n", "1", "127.0.0.1"}, true},
                      Command{"tracert", VELTRIN_TRACERT, {"-d", "-h", "1", "127.0.0.1"}, true},
                      Command{"systeminfo", VELTRIN_SYSTEMINFO, {}},
                      Command{"fsutil", VELTRIN_FSUTIL, {"volume", "diskfree", "C:"}}),
    [](const auto& info) { return std::string(info.param.name); });

// That the language arrives at all: systeminfo tells it.
TEST(GermanDesktopItself, IsToldBySystemInfo) {
  setenv("LC_ALL", GermanLanguage::kName, 1);
  Program tool(VELTRIN_SYSTEMINFO, {});
  unsetenv("LC_ALL");
  EXPECT_NE(tool.readRest().find("System Locale:             de-de;German (Germany)\r\n"),
            std::string::npos);
}

}  // namespace
}  // namespace veltrin
