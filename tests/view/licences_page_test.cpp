// SPDX-License-Identifier: GPL-3.0-or-later
// The page on the licences, as the installation has it, against what the Windows installer
// brings along.
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <string>

#include <QXmlStreamReader>

#include "gmock/gmock.h"
#include "gtest/gtest.h"
#include "platform/qt/qt_text.h"

namespace veltrin {
namespace {

using testing::HasSubstr;
using testing::Not;

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

TEST(LicencesPage, IsLinkedFromTheHelpPages) {
  EXPECT_THAT(read(kHelp / "home.html"), HasSubstr("href=\"licences.html\""));
  EXPECT_THAT(read(kHelp / "index.html"), HasSubstr("href=\"licences.html\""));
}

TEST(LicencesPage, EveryLinkLeadsSomewhere) {
  for (const std::string& link : found(read(kHelp / "licences.html"), "href=\"([^\"]*)\"")) {
    EXPECT_TRUE(std::filesystem::exists(kHelp / link)) << link;
  }
}

TEST(LicencesPage, NothingIsFetchedFromTheNetworkAndNothingRuns) {
  const std::string text = read(kHelp / "licences.html");
  for (const char* foreign : {"http:", "https:", "//", "<script", "@import", "url("}) {
    EXPECT_THAT(text, Not(HasSubstr(foreign)));
  }
}

TEST(LicencesPage, FollowsTheDesktopIntoTheDarkAndHasInkForPaper) {
  const std::string text = read(kHelp / "licences.html");
  EXPECT_THAT(text, HasSubstr("@media (prefers-color-scheme: dark)"));
  EXPECT_THAT(text, HasSubstr("@media print"));
}

TEST(LicencesPage, EveryElementIsClosed) {
  std::string xml = std::regex_replace(read(kHelp / "licences.html"),
                                       std::regex("<(meta|img)([^>]*)>"), "<$1$2/>");
  xml.erase(0, xml.find("<html"));
  QXmlStreamReader reader(toQt(xml));
  while (!reader.atEnd()) reader.readNext();

  EXPECT_FALSE(reader.hasError()) << fromQt(reader.errorString()) << " in line "
                                  << reader.lineNumber();
}

}  // namespace
}  // namespace veltrin
