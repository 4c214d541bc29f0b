// SPDX-License-Identifier: GPL-3.0-or-later
// The help pages: that they hang together, and can be read on any screen and on paper.
#include <algorithm>

#include <QImage>
#include <QPushButton>
#include <QXmlStreamReader>

#include "frame/startup.h"
#include "help_fixture.h"
#include "view_test.h"

namespace veltrin {
namespace {

using testing::AllOf;
using testing::AnyOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

std::vector<std::string> allPages() {
  std::vector<std::string> pages = kHelpPages;
  pages.insert(pages.end(), {"home.html", "licences.html"});
  return pages;
}

// Empty when a link leads to a place that is there; else the link.
std::string brokenLink(const std::string& page, const std::string& link) {
  const std::string target = pageOf(link).empty() ? page : pageOf(link);
  if (!std::filesystem::exists(kHelpFolder / target)) return link;
  const std::size_t mark = link.find('#');
  const bool isThere = mark == std::string::npos || hasId(readPage(target), link.substr(mark + 1));
  return isThere ? "" : link;
}

class HelpPage : public testing::TestWithParam<std::string> {
 protected:
  const std::string text = readPage(GetParam());
};

TEST_P(HelpPage, EveryPictureIsThereAndHasTheSizeThatThePageTells) {
  const auto pictures = valuesOf(text, "src");
  const auto widths = valuesOf(text, "width");
  const auto heights = valuesOf(text, "height");
  ASSERT_THAT(widths, SizeIs(pictures.size()));
  ASSERT_THAT(heights, SizeIs(pictures.size()));

  for (std::size_t at = 0; at < pictures.size(); ++at) {
    const QImage picture(toQt((kHelpFolder / pictures[at]).string()));
    EXPECT_FALSE(picture.isNull()) << pictures[at];
    EXPECT_EQ(std::to_string(picture.width()), widths[at]) << pictures[at];
    EXPECT_EQ(std::to_string(picture.height()), heights[at]) << pictures[at];
  }
}

// A few words such as "the window" do not tell what a picture shows.
TEST_P(HelpPage, EveryPictureIsToldInWordsToWhoCannotSeeIt) {
  constexpr std::size_t kFewLetters = 40;
  const auto words = valuesOf(text, "alt");

  ASSERT_THAT(words, SizeIs(valuesOf(text, "src").size()));
  for (const std::string& telling : words) {
    EXPECT_GE(squeezed(telling).size(), kFewLetters) << telling;
  }
}

TEST_P(HelpPage, EveryLinkLeadsSomewhere) {
  for (const std::string& link : valuesOf(text, "href")) {
    EXPECT_EQ(brokenLink(GetParam(), link), "");
  }
}

TEST_P(HelpPage, NothingIsFetchedFromTheNetworkAndNothingRuns) {
  for (const char* foreign : {"http:", "https:", "//", "<script", "@import", "url("}) {
    EXPECT_THAT(text, Not(HasSubstr(foreign)));
  }
}

// Pages with looks of their own would drift apart.
TEST_P(HelpPage, HasItsLookFromTheSheetThatAllShare) {
  EXPECT_THAT(text, HasSubstr(R"(<link rel="stylesheet" href="help.css">)"));
  EXPECT_THAT(text, AllOf(Not(HasSubstr("<style")), Not(HasSubstr(" style="))));
}

TEST_P(HelpPage, HasOneHeadingOfTheWhole) {
  EXPECT_THAT(piecesOf(text, "<h1>", "</h1>"), SizeIs(1));
}

// The pages are written so that XML readers accept them too, but for the empty elements.
TEST_P(HelpPage, EveryElementIsClosed) {
  std::string xml = std::regex_replace(text, std::regex("<(meta|img|link)([^>]*)>"), "<$1$2/>");
  xml.erase(0, xml.find("<html"));
  QXmlStreamReader reader(toQt(xml));
  while (!reader.atEnd()) reader.readNext();

  EXPECT_FALSE(reader.hasError()) << fromQt(reader.errorString()) << " in line "
                                  << reader.lineNumber();
}

INSTANTIATE_TEST_SUITE_P(, HelpPage, testing::ValuesIn(allPages()), [](const auto& page) {
  return page.param.substr(0, page.param.find('.'));
});

// The pages of one thing that the user can do.
class HelpOfATool : public HelpPage {};

TEST_P(HelpOfATool, ShowsAPicture) { EXPECT_THAT(valuesOf(text, "src"), Not(IsEmpty())); }

TEST_P(HelpOfATool, TellsWhatToDoHowToReadItWhatABadLineIsAndWhereTheResultIs) {
  for (const char* part : {"steps", "figures", "bad", "files"}) {
    EXPECT_TRUE(hasId(text, part)) << part;
  }
}

TEST_P(HelpOfATool, LeadsFromABadLineToTheTableOfSymptoms) {
  const std::string bad = text.substr(text.find(" id=\"bad\""));

  EXPECT_THAT(valuesOf(bad, "href"), Contains(StartsWith("symptoms.html#")));
}

INSTANTIATE_TEST_SUITE_P(, HelpOfATool,
                         testing::Values("ping.html", "trace.html", "stability.html", "outage.html",
                                         "indepth.html", "mtu.html", "download.html",
                                         "bandwidth.html", "protocols.html", "report.html"),
                         [](const auto& page) {
                           return page.param.substr(0, page.param.find('.'));
                         });

TEST(HelpPages, TheContentsLeadToEveryOne) {
  const std::string contents =
      piecesOf(readPage("index.html"), "<nav class=\"contents\"", "</nav>").at(0);
  std::vector<std::string> named = {"index.html"};
  for (const std::string& link : valuesOf(contents, "href")) {
    if (!pageOf(link).empty()) named.push_back(pageOf(link));
  }

  EXPECT_THAT(named, testing::IsSupersetOf(kHelpPages));
}

// A page that nothing leads to is never read.
TEST(HelpPages, ThereAreNoOthers) {
  for (const auto& entry : std::filesystem::directory_iterator(kHelpFolder)) {
    const std::string name = entry.path().filename().string();
    if (entry.path().extension() == ".html") EXPECT_THAT(allPages(), Contains(name));
  }
}

TEST(HelpPages, EachLeadsOnToTheNextAndBackToTheOneBefore) {
  std::vector<std::string> onwards = {kHelpPages.front()};
  for (std::size_t at = 0; at < kHelpPages.size(); ++at) {
    const std::string text = readPage(kHelpPages[at]);
    const auto next = piecesOf(text, R"(<a rel="next" href=")", "\"");
    const auto back = piecesOf(text, R"(<a rel="prev" href=")", "\"");
    if (at + 1 < kHelpPages.size())
      EXPECT_THAT(next, AllOf(Not(IsEmpty()), Each(kHelpPages[at + 1])));
    if (at > 1) EXPECT_THAT(back, AllOf(Not(IsEmpty()), Each(kHelpPages[at - 1])));
    if (!next.empty()) onwards.push_back(next.front());
  }

  EXPECT_THAT(onwards, ElementsAreArray(kHelpPages));
}

TEST(HelpPages, NoPictureIsLeftThatNoPageShows) {
  std::vector<std::string> shown;
  for (const std::string& page : allPages()) {
    for (const std::string& picture : valuesOf(readPage(page), "src")) shown.push_back(picture);
  }

  for (const auto& entry : std::filesystem::directory_iterator(kHelpFolder / "pictures")) {
    EXPECT_THAT(shown, Contains("pictures/" + entry.path().filename().string()));
  }
}

TEST(HelpPages, EveryRowOfTheTableOfSymptomsNamesAToolAndWhatToDoNext) {
  const std::string text = readPage("symptoms.html");
  std::size_t rows = 0;
  for (const std::string& table : piecesOf(text, "<tbody>", "</tbody>")) {
    for (const std::string& row : piecesOf(table, "<tr>", "</tr>")) {
      const auto cells = piecesOf(row, "<td", "</td>");
      ASSERT_THAT(cells, SizeIs(4)) << row;
      EXPECT_THAT(
          valuesOf(cells[0], "href"),
          Contains(AnyOf("ping.html", "trace.html", "stability.html", "outage.html", "indepth.html",
                         "download.html", "bandwidth.html", "protocols.html")))
          << row;
      EXPECT_TRUE(!valuesOf(cells[3], "href").empty() ||
                  withoutMarks("<td" + cells[3]).starts_with("Nothing"))
          << row;
      ++rows;
    }
  }

  EXPECT_GE(rows, 20U);
}

TEST(HelpLook, FollowsTheDesktopIntoTheDark) {
  EXPECT_THAT(readPage("help.css"), HasSubstr("@media screen and (prefers-color-scheme: dark)"));
}

TEST(HelpLook, OnPaperTheGroundIsWhiteAndNoPictureOrRowIsCut) {
  const std::string sheet = readPage("help.css");
  const std::size_t print = sheet.find("@media print");
  ASSERT_NE(print, std::string::npos);
  const std::string onPaper = squeezed(sheet.substr(print));

  EXPECT_THAT(onPaper, HasSubstr("body { background: #fff; color: #000;"));
  EXPECT_THAT(onPaper, HasSubstr("img, pre, tr, li, dd, .contents { break-inside: avoid;"));
  EXPECT_THAT(onPaper, HasSubstr(".pages { display: none }"));
}

// The browser in which Windows opens the pages knows no variables and leaves out what has one.
TEST(HelpLook, NeedsNothingThatAnOldBrowserLacks) {
  EXPECT_THAT(readPage("help.css"),
              AllOf(Not(HasSubstr("var(")), Not(HasSubstr("url(")), Not(HasSubstr("@import"))));
}

class HelpOfTheMenu : public ViewTest {
 protected:
  // What each page calls itself, by what the contents call it.
  static std::string headingBehind(const std::string& words) {
    const std::string contents = readPage("index.html");
    for (const std::string& link : piecesOf(contents, "<a href=\"", "</a>")) {
      const std::size_t end = link.find("\">");
      if (link.substr(end + 2) != words) continue;
      const auto headings = piecesOf(readPage(pageOf(link.substr(0, end))), "<h1>", "</h1>");
      return headings.empty() ? "" : headings.front();
    }
    return "";
  }
};

TEST_F(HelpOfTheMenu, EachToolHasAPageUnderTheNameOfItsButton) {
  shown<startup>();
  std::vector<std::string> tools;
  for (const QPushButton* button : window->findChildren<QPushButton*>()) {
    const std::string words = fromQt(button->text());
    const bool isTool = words != "Help" && words != "About" && words != "Exit" && !words.empty();
    if (button->isVisible() && isTool) tools.push_back(words);
  }

  ASSERT_THAT(tools, SizeIs(8));
  for (const std::string& tool : tools) EXPECT_EQ(headingBehind(tool), tool);
}

TEST_F(HelpOfTheMenu, SoHaveTheToolsBehindItsArrowAndItsLink) {
  EXPECT_EQ(headingBehind("Download test"), "Download test");
  EXPECT_EQ(headingBehind("System report"), "System report");
}

}  // namespace
}  // namespace veltrin
