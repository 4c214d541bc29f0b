// SPDX-License-Identifier: GPL-3.0-or-later
// The page on the licences, as the installation has it, against what the Windows installer
// brings along. Its form is looked at with that of the other help pages.
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <string>

#include "gmock/gmock.h"
#include "gtest/gtest.h"

namespace veltrin {
namespace {

using testing::HasSubstr;

const std::filesystem::path kHelp = SHARE_FOLDER "/help";
const std::filesystem::path kCollector = SOURCE_FOLDER "/packaging/windows/collect-licences.sh";

std::string read(const std::filesystem::path& path) {
  std::ifstream file(path);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

// All that the pattern's first group matches.
std::set<std::string> found(const std::string& text, const char* pattern) {
  const std::regex expression(pattern);
  std::set<std::string> matches;
  for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end;
       ++match) {
    matches.insert((*match)[1]);
  }
  return matches;
}

TEST(LicencesPage, NamesExactlyTheTextsThatTheInstallerBringsAlong) {
  const auto named = found(read(kHelp / "licences.html"), "<code>([^<]*\\.txt)</code>");
  const auto brought = found(read(kCollector), "\ntake [^ ]+ ([^ \n]+)");

  EXPECT_FALSE(brought.empty());
  EXPECT_EQ(named, brought);
}

TEST(LicencesPage, IsLinkedFromTheHomePageAndFromTheContents) {
  EXPECT_THAT(read(kHelp / "home.html"), HasSubstr("href=\"licences.html\""));
  EXPECT_THAT(read(kHelp / "index.html"), HasSubstr("<li><a href=\"licences.html\""));
}

}  // namespace
}  // namespace veltrin
