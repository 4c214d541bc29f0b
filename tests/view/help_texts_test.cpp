// SPDX-License-Identifier: GPL-3.0-or-later
// What the help pages quote of the program is what the program shows: buttons and other words
// of its windows, its messages, and the names of its files.
#include <algorithm>
#include <set>

#include <QAbstractButton>
#include <QAction>
#include <QLabel>

#include "download/testdl.h"
#include "frame/About.h"
#include "frame/startup.h"
#include "help_fixture.h"
#include "monitor/frmIP.h"
#include "monitor/frmNetwork.h"
#include "mtu/mtutest.h"
#include "pictures.h"
#include "route/MonOut.h"
#include "route/Stability.h"
#include "route/indepth.h"
#include "route/trace.h"
#include "sysinfo/frmPrint.h"
#include "sysinfo/frmSysInfo.h"
#include "text/date_time.h"

namespace veltrin {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const std::filesystem::path kSources = SOURCE_FOLDER "/src";

// Reads the sources' texts in quotes, as they are written there. Those that only blanks part
// are one text.
class LiteralReader {
 public:
  explicit LiteralReader(const std::string& source) : source_(source) {}

  std::vector<std::string> read() {
    while (at_ < source_.size()) step();
    return literals_;
  }

 private:
  void step() {
    if (startsHere("//")) {
      at_ = std::min(source_.find('\n', at_), source_.size());
    } else if (startsHere("'\"'")) {
      at_ += 3;
      goesOn_ = false;
    } else if (startsHere("\"")) {
      readLiteral();
    } else {
      const char letter = source_[at_++];
      if (letter != ' ' && letter != '\n') goesOn_ = false;
    }
  }

  bool startsHere(std::string_view what) const {
    return source_.compare(at_, what.size(), what) == 0;
  }

  void readLiteral() {
    std::string literal;
    for (++at_; at_ < source_.size() && source_[at_] != '"'; ++at_) {
      if (source_[at_] == '\\') literal += source_[at_++];
      literal += source_[at_];
    }
    ++at_;
    if (goesOn_) {
      literals_.back() += literal;
    } else {
      literals_.push_back(literal);
    }
    goesOn_ = true;
  }

  const std::string& source_;
  std::size_t at_ = 0;
  bool goesOn_ = false;
  std::vector<std::string> literals_;
};

// Those of all sources of a folder of the program.
std::vector<std::string> literalsOf(const std::string& folder) {
  std::vector<std::string> literals;
  for (const auto& entry : std::filesystem::directory_iterator(kSources / folder)) {
    if (!entry.is_regular_file()) continue;
    const std::string source = readFile(entry.path());
    for (std::string& literal : LiteralReader(source).read()) {
      literals.push_back(std::move(literal));
    }
  }
  return literals;
}

TEST(HelpLiterals, AreReadAcrossLinesAndWithTheirEscapes) {
  const std::string source = "a('\"', \"one \"  // \"not\" this\n    \"text\", \"\\\"two\\\"\");";

  EXPECT_THAT(LiteralReader(source).read(), ElementsAre("one text", "\\\"two\\\""));
}

class HelpTexts : public Pictures {
 protected:
  // Takes in what the user can read on the window: buttons, entries of menus, other words.
  void readWindow() {
    const auto enter = [&](QString text) {
      words_.insert(squeezed(fromQt(text.remove(QLatin1Char('&')))));
    };
    for (const auto* button : window->findChildren<QAbstractButton*>()) enter(button->text());
    for (const auto* label : window->findChildren<QLabel*>()) enter(label->text());
    for (const auto* action : window->findChildren<QAction*>()) enter(action->text());
  }

  template <class Kind>
  std::shared_ptr<Kind> reading() {
    auto form = shown<Kind>();
    readWindow();
    return form;
  }

  // Takes in what a button is called at other times, when the sources of its window have it.
  void readLater(const std::string& caption, const std::string& folder) {
    if (testing::Value(literalsOf(folder), Contains(caption))) words_.insert(caption);
  }

  // What a page marks as a button or another word of the windows, and no window has shown. A
  // page may name the buttons of the main menu, from which each tool sets out.
  std::vector<std::string> strangeWords(const std::string& page) {
    reading<startup>();
    std::vector<std::string> strange;
    std::size_t marked = 0;
    for (const char* mark : {"<b class=\"button\">", "<b class=\"label\">"}) {
      for (const std::string& word : piecesOf(readPage(page), mark, "</b>")) {
        if (!words_.contains(squeezed(word))) strange.push_back(word);
        ++marked;
      }
    }
    EXPECT_GE(marked, 2U);
    return strange;
  }

 private:
  std::set<std::string> words_;
};

TEST_F(HelpTexts, OfTheContentsStandInTheMenu) {
  reading<About>();

  EXPECT_THAT(strangeWords("index.html"), IsEmpty());
}

TEST_F(HelpTexts, OfThePingTestStandInItsWindow) {
  reading<pingtester>();
  readLater("Stop", "ping");

  EXPECT_THAT(strangeWords("ping.html"), IsEmpty());
}

TEST_F(HelpTexts, OfTheTraceRouteStandInItsWindow) {
  reading<trace>();

  EXPECT_THAT(strangeWords("trace.html"), IsEmpty());
}

TEST_F(HelpTexts, OfTheHopStabilityTestStandInItsWindow) {
  reading<Stability>();
  readLater("Page 2", "route");

  EXPECT_THAT(strangeWords("stability.html"), IsEmpty());
}

TEST_F(HelpTexts, OfTheOutageMonitorStandInItsWindow) {
  reading<MonOut>();
  readLater("Stop", "route");

  EXPECT_THAT(strangeWords("outage.html"), IsEmpty());
}

TEST_F(HelpTexts, OfTheInDepthAnalysisStandInItsWindow) {
  reading<indepth>();

  EXPECT_THAT(strangeWords("indepth.html"), IsEmpty());
}

TEST_F(HelpTexts, OfTheDownloadTestStandInItsWindow) {
  look<testdl>();
  readWindow();
  readLater("Done", "download");

  EXPECT_THAT(strangeWords("download.html"), IsEmpty());
}

TEST_F(HelpTexts, OfTheBandwidthMonitorStandInItsMenu) {
  EXPECT_EQ(reading<frmNetwork>()->mnucloseme.caption.get(), "Exit");

  EXPECT_THAT(strangeWords("bandwidth.html"), IsEmpty());
}

TEST_F(HelpTexts, OfTheProtocolMonitorStandInItsWindow) {
  reading<frmIP>();

  EXPECT_THAT(strangeWords("protocols.html"), IsEmpty());
}

TEST_F(HelpTexts, OfTheReportStandInItsWindows) {
  reading<About>();
  reading<frmSysInfo>();
  reading<frmPrint>();

  EXPECT_THAT(strangeWords("report.html"), IsEmpty());
}

TEST_F(HelpTexts, OfWhatFailsStandInTheWindows) {
  reading<MonOut>();

  EXPECT_THAT(strangeWords("failures.html"), IsEmpty());
}

// The MTU optimizer's first window has one button.
TEST_F(HelpTexts, OfTheMtuOptimizerNameItsButton) {
  look<mtutest>();

  EXPECT_EQ(piecesOf(readPage("mtu.html"), "<b class=\"button\">", "</b>"),
            std::vector<std::string>{fromQt(widget<QAbstractButton>("Command3")->text())});
}

// Messages that the program puts together of pieces are quoted without the mark.
TEST(HelpMessages, AreThoseOfTheProgram) {
  std::string all;
  for (const char* folder : {"frame", "ping", "route", "mtu", "download", "monitor", "sysinfo"}) {
    for (const std::string& literal : literalsOf(folder)) all += literal + "\n";
  }
  std::size_t quoted = 0;
  for (const std::string& page : kHelpPages) {
    for (const std::string& message : piecesOf(readPage(page), "<q>", "</q>")) {
      EXPECT_THAT(all, HasSubstr(squeezed(message))) << page;
      ++quoted;
    }
  }

  EXPECT_GE(quoted, 10U);
}

// The files that the pages name as an example are those of 7 March 2026, 9:05.
struct SavedFile {
  const char* page;
  const char* folder;   // whose sources name it
  const char* literal;  // as it stands there
  std::string name;
};

std::vector<SavedFile> savedFiles() {
  const DateTime then{2026, 3, 7, 9, 5};
  const std::string dated = "_" + Format(then, "ddmmmyyyy") + "_" + Format(then, "hhmm") + ".txt";
  return {{"ping.html", "ping", "\\\\PingTest", "PingTest" + dated},
          {"trace.html", "route", "\\\\Traceroute_ ", "Traceroute_ www.example.org" + dated},
          {"indepth.html", "route", "\\\\InDepthAnalysis_ ",
           "InDepthAnalysis_ www.example.org" + dated},
          {"outage.html", "route", "Outage Log ",
           "Outage Log " + Format(then, "dd mmm yy") + " " + Format(then, "hhmm") + ".txt"},
          {"download.html", "download", "\\\\Download Stability Test.txt",
           "Download Stability Test.txt"},
          {"download.html", "download", "\\\\TestDL.tst", "TestDL.tst"},
          {"report.html", "sysinfo", "\\\\SystemInfo (",
           "SystemInfo (" + Format(then, "ddmmmyyy") + ".txt"}};
}

TEST(HelpFiles, AreNamedAsTheProgramNamesThem) {
  for (const SavedFile& file : savedFiles()) {
    EXPECT_THAT(literalsOf(file.folder), Contains(HasSubstr(file.literal)));
    EXPECT_THAT(readPage(file.page), HasSubstr("<code>" + file.name + "</code>"));
  }
}

TEST(HelpFiles, AllStandInTheOverviewOfFiles) {
  const std::string overview = readPage("failures.html");
  for (const SavedFile& file : savedFiles()) {
    if (file.name == "TestDL.tst") continue;  // no result
    EXPECT_THAT(overview, HasSubstr("<code>" + file.name + "</code>"));
  }
}

// The installation's settings that a page tells the user to change.
TEST(HelpFiles, NameSettingsThatTheInstallationHas) {
  const std::string settings = readFile(std::filesystem::path(SHARE_FOLDER) / "installation.ini");
  for (const char* setting : {"ProbeHost", "DownloadTestUrl1", "DownloadTestUrl6"}) {
    EXPECT_THAT(settings, HasSubstr("\n" + std::string(setting) + "="));
    EXPECT_THAT(readPage("failures.html"), HasSubstr(setting));
  }
}

}  // namespace
}  // namespace veltrin
