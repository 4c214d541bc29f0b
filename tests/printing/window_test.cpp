// SPDX-License-Identifier: GPL-3.0-or-later
// The window that prints the report, on real printers.
#include <algorithm>
#include <cctype>
#include <fstream>
#include <utility>

#include "support/simulation.h"
#include "sysinfo/frmPrint.h"
#include "tests/printing/printing_test.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PrintWindowTest : public PrintingTest {
 protected:
  // Opens the window, with a report of so many lines and a blank one behind each.
  frmPrint& open(int count) {
    window_ = program_.show<frmPrint>();
    std::string report;
    for (int line = 1; line <= count; ++line) {
      report += "line " + std::to_string(line) + "\r\n  \r\n";
    }
    window_->rtfLap1.text = report;
    return *window_;
  }

  std::vector<std::pair<std::string, std::string>> messages() const {
    std::vector<std::pair<std::string, std::string>> shown;
    for (const auto& message : rest_.desktop.messages) {
      shown.emplace_back(message.title, message.text);
    }
    return shown;
  }

  // "line 1", "line 2" and so on, and the end of the sheet.
  static std::vector<std::string> sheet(int first, int last) {
    std::vector<std::string> words;
    for (int line = first; line <= last; ++line) words.push_back("line " + std::to_string(line));
    words.emplace_back("---");
    return words;
  }

  // The text of a report that is kept for the tests of reports: behind six characters that tell
  // the look of a line, with a bar behind blanks at its end.
  static std::string recordedReport() {
    std::ifstream file(RECORDED_REPORT);
    std::string report;
    for (std::string line; std::getline(file, line);) {
      if (line.ends_with(" |")) line.pop_back();
      report += line.substr(std::min<std::size_t>(line.size(), 6)) + "\r\n";
    }
    return report;
  }

  static std::string withoutBlanks(std::string text) {
    std::erase_if(text, [](unsigned char c) { return std::isspace(c) != 0; });
    return text;
  }

  Simulation rest_;
  Platform platform_{rest_.loop,  rest_.loop,        rest_.clock,       rest_.desktop,
                     rest_.files, rest_.processes,   rest_.profiles,    rest_.registry,
                     rest_.shell, rest_.environment, rest_.sockets,     rest_.counters,
                     rest_.wmi,   rest_.icmp,        rest_.downloads,   rest_.interfaces,
                     printers,    rest_.drives,      rest_.processList, "Veltrin"};
  Program program_{platform_};
  std::shared_ptr<frmPrint> window_;
};

TEST_F(PrintWindowTest, ShowsThePrintersAndTheDefaultOne) {
  serve({{"Plain"}, {"Other"}});
  const frmPrint& window = open(1);
  EXPECT_THAT(window.cboPrinter.items.get(), testing::UnorderedElementsAre("Plain", "Other"));
  EXPECT_EQ(window.cboPrinter.text, "Plain");
  EXPECT_EQ(window.Combo2.text, "12");
}

TEST_F(PrintWindowTest, AFullPageIsFollowedByOneWithTheMarginAlone) {
  serve({{"Plain"}});
  open(46).cmdPrint.press();
  const auto jobs = server->paper(2);
  ASSERT_EQ(jobs.size(), 2U);
  keep(jobs[0], "upright-12");
  EXPECT_EQ(wordsOn(jobs[0]), sheet(1, 46));
  EXPECT_THAT(wordsOn(jobs[1]), ElementsAre("---"));
  EXPECT_EQ(fact(jobs[1], "Page size"), "595 x 842 pts (A4)");
}

TEST_F(PrintWindowTest, OneLineMoreThanAFullPageStandsAloneOnTheNext) {
  serve({{"Plain"}});
  open(47).cmdPrint.press();
  const auto jobs = server->paper(2);
  ASSERT_EQ(jobs.size(), 2U);
  EXPECT_EQ(wordsOn(jobs[0]), sheet(1, 46));
  EXPECT_EQ(wordsOn(jobs[1]), sheet(47, 47));
}

TEST_F(PrintWindowTest, AReportOfBlankLinesIsOnePageWithTheMarginAlone) {
  serve({{"Plain"}});
  open(0).rtfLap1.text = "   \r\n\r\n";
  window_->cmdPrint.press();
  const auto jobs = server->paper(1);
  ASSERT_EQ(jobs.size(), 1U);
  EXPECT_EQ(server->waitingJobs(), 0);
  EXPECT_EQ(fact(jobs[0], "Pages"), "1");
  EXPECT_THAT(wordsOn(jobs[0]), ElementsAre("---"));
}

// Five blanks of Times New Roman, a quarter of the size each, and four blank lines.
TEST_F(PrintWindowTest, APageHasItsMargins) {
  serve({{"Plain"}});
  open(3).cmdPrint.press();
  const auto jobs = server->paper(1);
  ASSERT_EQ(jobs.size(), 1U);
  const auto places = placesOn(jobs[0]);
  ASSERT_EQ(places.size(), 6U);
  EXPECT_NEAR(places[0].left, 12 + 15, 0.1);
  EXPECT_NEAR(places[0].top, 4 * 13.8, 1);
  EXPECT_NEAR(places[4].top - places[0].top, 2 * 13.8, 0.05);
}

// A long line goes on in the next one, so what is compared is all that is no blank.
TEST_F(PrintWindowTest, OfAWholeReportNothingIsLostOnPaper) {
  serve({{"Plain"}});
  const std::string report = recordedReport();
  ASSERT_NE(report.find("Windows Errors"), std::string::npos);
  open(0).rtfLap1.text = report;
  window_->Combo2.text = "8";
  window_->cmdPrint.press();
  constexpr std::size_t kPages = 5;  // of 70 lines
  const auto jobs = server->paper(kPages);
  ASSERT_EQ(jobs.size(), kPages);
  EXPECT_EQ(server->waitingJobs(), 0);
  keep(jobs[0], "report-8");
  std::string paper;
  for (const PaperJob& job : jobs) {
    for (const std::string& line : wordsOn(job)) {
      if (line != "---") paper += line;
    }
  }
  EXPECT_EQ(withoutBlanks(paper), withoutBlanks(report));
}

struct PageCase {
  const char* size;
  int upright;  // lines of a page
  int across;
};

class PageTest : public PrintWindowTest, public testing::WithParamInterface<const char*> {};

// Whatever is chosen, the counted lines and the margin fit on one sheet.
TEST_P(PageTest, ACountedPageFitsItsSheet) {
  serve({{"Plain", GetParam()}});
  const std::vector<PageCase> cases{
      {"8", 70, 55}, {"10", 57, 44}, {"12", 46, 34}, {"14", 39, 28}, {"16", 36, 27}};
  std::size_t count = 0;
  for (const PageCase& page : cases) {
    for (const bool isAcross : {false, true}) {
      const int lines = isAcross ? page.across : page.upright;
      open(lines + 1);
      window_->Combo2.text = page.size;
      (isAcross ? window_->Option2 : window_->Option1).press();
      window_->cmdPrint.press();
      count += 2;
      const auto jobs = server->paper(count);
      ASSERT_EQ(jobs.size(), count);
      const std::string name = std::string(page.size) + (isAcross ? " across" : " upright");
      EXPECT_EQ(fact(jobs[count - 2], "Pages"), "1") << name;
      EXPECT_EQ(wordsOn(jobs[count - 2]), sheet(1, lines)) << name;
      EXPECT_EQ(wordsOn(jobs[count - 1]), sheet(lines + 1, lines + 1)) << name;
      if (isAcross) keep(jobs[count - 2], std::string(GetParam()) + "-across-" + page.size);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Sheets, PageTest, testing::Values("A4", "Letter"));

TEST_F(PrintWindowTest, TheChosenCopiesAreMade) {
  serve({{"Plain"}});
  open(1).Combo1.text = "2";
  window_->cmdPrint.press();
  const auto jobs = server->paper(1);
  ASSERT_EQ(jobs.size(), 1U);
  EXPECT_EQ(jobs[0].copies, "2");
  EXPECT_EQ(wordsOn(jobs[0]), sheet(1, 1));
}

TEST_F(PrintWindowTest, WithoutAPrinterSaysSo) {
  serve({});
  open(1).cmdPrint.press();
  EXPECT_THAT(messages(), ElementsAre(std::pair("Printer Not Install", "No Printer Detected")));
}

TEST_F(PrintWindowTest, WithoutAPrintServerSaysSo) {
  serve({{"Plain"}});
  server->stop();
  open(1).cmdPrint.press();
  EXPECT_THAT(messages(), ElementsAre(std::pair("Printer Not Install", "No Printer Detected")));
}

TEST_F(PrintWindowTest, APrinterThatWasTakenAwayEndsTheRoutine) {
  serve({{"Plain"}, {"Other"}});
  open(1);
  ASSERT_EQ(server->command("lpadmin -x Plain"), 0);
  rest_.loop.after(0, [this] { window_->cmdPrint.press(); });
  rest_.run(1);
  EXPECT_EQ(rest_.loop.gate().escapedFailures(), 0);
  EXPECT_THAT(messages(), IsEmpty());
  EXPECT_EQ(server->waitingJobs(), 0);
  EXPECT_THAT(server->paper(0), IsEmpty());
}

}  // namespace
}  // namespace veltrin
