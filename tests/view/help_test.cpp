// SPDX-License-Identifier: GPL-3.0-or-later
// The help pages as the installation has them.
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include <QImage>
#include <QXmlStreamReader>

#include "gmock/gmock.h"
#include "gtest/gtest.h"
#include "platform/qt/qt_text.h"

namespace veltrin {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

const std::filesystem::path kFolder = SHARE_FOLDER "/help";

std::string read(const std::string& page) {
  std::ifstream file(kFolder / page);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

// The values of an attribute, in their order.
std::vector<std::string> values(const std::string& page, const std::string& attribute) {
  const std::regex pattern(attribute + "=\"([^\"]*)\"");
  std::vector<std::string> found;
  for (std::sregex_iterator match(page.begin(), page.end(), pattern), end; match != end; ++match) {
    found.push_back((*match)[1]);
  }
  return found;
}

bool hasId(const std::string& page, const std::string& id) {
  return page.find("id=\"" + id + "\"") != std::string::npos;
}

class HelpPage : public testing::TestWithParam<std::string> {
 protected:
  const std::string text = read(GetParam());
};

TEST_P(HelpPage, EveryPictureIsThereAndHasTheSizeThatThePageTells) {
  const auto pictures = values(text, "src");
  const auto widths = values(text, " width");
  const auto heights = values(text, " height");
  ASSERT_FALSE(pictures.empty());
  ASSERT_EQ(widths.size(), pictures.size());

  for (std::size_t at = 0; at < pictures.size(); ++at) {
    const QImage picture(toQt((kFolder / pictures[at]).string()));
    EXPECT_EQ(std::to_string(picture.width()), widths[at]) << pictures[at];
    EXPECT_EQ(std::to_string(picture.height()), heights[at]) << pictures[at];
  }
}

TEST_P(HelpPage, EveryPictureHasWordsForWhoCannotSeeIt) {
  const auto words = values(text, "alt");

  EXPECT_EQ(words.size(), values(text, "src").size());
  EXPECT_THAT(words, Not(testing::Contains("")));
}

TEST_P(HelpPage, EveryLinkLeadsSomewhere) {
  for (const std::string& link : values(text, "href")) {
    if (link.starts_with("#")) {
      EXPECT_TRUE(hasId(text, link.substr(1))) << link;
    } else {
      EXPECT_TRUE(std::filesystem::exists(kFolder / link)) << link;
    }
  }
}

TEST_P(HelpPage, NothingIsFetchedFromTheNetworkAndNothingRuns) {
  for (const char* foreign : {"http:", "https:", "//", "<script", "@import", "url("}) {
    EXPECT_THAT(text, Not(HasSubstr(foreign)));
  }
}

TEST_P(HelpPage, FollowsTheDesktopIntoTheDark) {
  EXPECT_THAT(text, HasSubstr("@media (prefers-color-scheme: dark)"));
}

// The pages are written so that XML readers accept them too, but for the empty elements.
TEST_P(HelpPage, EveryElementIsClosed) {
  std::string xml = std::regex_replace(text, std::regex("<(meta|img)([^>]*)>"), "<$1$2/>");
  xml.erase(0, xml.find("<html"));
  QXmlStreamReader reader(toQt(xml));
  while (!reader.atEnd()) reader.readNext();

  EXPECT_FALSE(reader.hasError()) << fromQt(reader.errorString()) << " in line "
                                  << reader.lineNumber();
}

INSTANTIATE_TEST_SUITE_P(, HelpPage, testing::Values("index.html", "home.html"),
                         [](const auto& page) {
                           return page.param.substr(0, page.param.find('.'));
                         });

TEST(HelpPages, EveryWindowThatTheUserMeetsHasItsSection) {
  const std::string text = read("index.html");
  std::vector<std::string> missing;
  for (const char* id : {"start", "menu", "ping", "trace", "indepth", "report", "failures"}) {
    if (!hasId(text, id)) missing.emplace_back(id);
  }

  EXPECT_THAT(missing, IsEmpty());
}

}  // namespace
}  // namespace veltrin
