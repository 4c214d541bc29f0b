// SPDX-License-Identifier: GPL-3.0-or-later
// The print window: its choices, its settings, and the pages that it makes of a text.
#include "simulated/report_run.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kMargin = "\r\n\r\n\r\n\r\n";
constexpr const char* kLargeMargin = "\r\n\r\n\r\n\r\n\r\n";

// So many lines of a text, from a number on.
std::string textOf(int count, int first = 1) {
  std::string text;
  for (int line = first; line < first + count; ++line) {
    text += "line " + std::to_string(line) + "\r\n";
  }
  return text;
}

// The same as they stand on the paper.
std::string onPaper(int count, int first = 1) {
  std::string text;
  for (int line = first; line < first + count; ++line) {
    text += "     line " + std::to_string(line) + "\r\n";
  }
  return text;
}

class PrintWindow : public ReportRun {
 protected:
  // The print window of a report with this text.
  frmPrint& openPrint(const std::string& text) {
    if (!window) open();
    window->Text1.text = text;
    print = program.show<frmPrint>();
    program.showInLoad(*print);  // the report window takes the input of others away
    return *print;
  }

  void choose(const std::string& size, const std::string& copies = "1") {
    simulation.desktop.type(print->Combo2, size);
    simulation.desktop.type(print->Combo1, copies);
  }

  void pressPrint() { simulation.desktop.click(print->cmdPrint); }

  // The texts of the jobs.
  Lines papers() const {
    Lines texts;
    for (const auto& job : simulation.printers.jobs) texts.push_back(job.text);
    return texts;
  }

  // How many of the report's lines are on each page, by its five blanks.
  std::vector<int> linesOfPages() const {
    std::vector<int> counts;
    for (const std::string& paper : papers()) {
      int count = 0;
      for (std::size_t at = 0; (at = paper.find("     line ", at)) != std::string::npos; ++at) {
        ++count;
      }
      counts.push_back(count);
    }
    return counts;
  }

  std::string setting(const std::string& key) { return program.readSetting("Printer", key); }

  void settingsAre(const std::string& name, const std::string& copies,
                   const std::string& orientation, const std::string& size) {
    program.writeSetting("Printer", "Printer", name);
    program.writeSetting("Printer", "Copies", copies);
    program.writeSetting("Printer", "Orientation", orientation);
    program.writeSetting("Printer", "Size", size);
  }

  // What was written to the settings from now on, in order.
  Lines settingsWritten(const std::function<void()>& action) {
    simulation.keepJournal();
    action();
    Lines written;
    for (const std::string& entry : simulation.journal) {
      if (entry.starts_with("write Printer/")) written.push_back(entry);
    }
    return written;
  }

  std::shared_ptr<frmPrint> print;
};

TEST_F(PrintWindow, HasItsTexts) {
  openPrint("text");
  EXPECT_EQ(print->caption.get(), "Print");
  EXPECT_EQ(print->lblPrinter.caption.get(), "Select Printer");
  EXPECT_EQ(print->Label1.caption.get(), "Copies");
  EXPECT_EQ(print->Label2.caption.get(), "Font Size");
  EXPECT_EQ(print->Label3.caption.get(), "Orientation");
  EXPECT_EQ(print->Option1.caption.get(), "Portrait");
  EXPECT_EQ(print->Option2.caption.get(), "Landscape");
  EXPECT_EQ(print->cmdPrint.caption.get(), "&Print");
  EXPECT_EQ(print->cmdExit.caption.get(), "Cancel");
}

TEST_F(PrintWindow, KeepsItsTextsOutOfSight) {
  openPrint("text");
  EXPECT_FALSE(print->rtfLap1.visible.get());
  EXPECT_FALSE(print->rtfLap2.visible.get());
}

TEST_F(PrintWindow, OffersPrintersCopiesAndSizes) {
  openPrint("text");
  EXPECT_THAT(print->cboPrinter.items.get(), ElementsAre("Laser", "Ink"));
  EXPECT_THAT(print->Combo1.items.get(), ElementsAre("1", "2", "3", "4", "5"));
  EXPECT_THAT(print->Combo2.items.get(), ElementsAre("8", "10", "12", "14", "16"));
}

TEST_F(PrintWindow, LetsPickAndNotType) {
  openPrint("text");
  simulation.desktop.type(print->Combo1, "17");
  simulation.desktop.type(print->Combo2, "9");
  simulation.desktop.type(print->cboPrinter, "Nothing");
  EXPECT_EQ(print->Combo1.text.get(), "1");
  EXPECT_EQ(print->Combo2.text.get(), "12");
  EXPECT_EQ(print->cboPrinter.text.get(), "Ink");
}

TEST_F(PrintWindow, TakesTheReportsText) {
  openPrint("one\r\ntwo");
  EXPECT_EQ(print->rtfLap1.text.get(), "one\r\ntwo");
  EXPECT_EQ(print->rtfLap2.text.get(), "");
}

TEST_F(PrintWindow, WritesFourDefaultsAtItsFirstUse) {
  open();
  EXPECT_THAT(settingsWritten([&] { openPrint("text"); }),
              ElementsAre("write Printer/Printer=Ink", "write Printer/Copies=1",
                          "write Printer/Orientation=1", "write Printer/Size=12"));
  EXPECT_EQ(print->cboPrinter.text.get(), "Ink");
  EXPECT_EQ(print->Combo1.text.get(), "1");
  EXPECT_EQ(print->Combo2.text.get(), "12");
  EXPECT_TRUE(print->Option1.value());
  EXPECT_FALSE(print->Option2.value());
}

TEST_F(PrintWindow, ShowsWhatWasChosenBefore) {
  settingsAre("Laser", "3", "2", "16");
  EXPECT_THAT(settingsWritten([&] { openPrint("text"); }), IsEmpty());
  EXPECT_EQ(print->cboPrinter.text.get(), "Laser");
  EXPECT_EQ(print->Combo1.text.get(), "3");
  EXPECT_EQ(print->Combo2.text.get(), "16");
  EXPECT_FALSE(print->Option1.value());
  EXPECT_TRUE(print->Option2.value());
}

TEST_F(PrintWindow, AnyOrientationButOneIsLandscape) {
  settingsAre("Laser", "1", "", "12");
  openPrint("text");
  EXPECT_TRUE(print->Option2.value());
}

TEST_F(PrintWindow, ChoosesOneOrientation) {
  openPrint("text");
  simulation.desktop.click(print->Option2);
  EXPECT_FALSE(print->Option1.value());
  EXPECT_TRUE(print->Option2.value());
  simulation.desktop.click(print->Option1);
  EXPECT_TRUE(print->Option1.value());
  EXPECT_FALSE(print->Option2.value());
}

TEST_F(PrintWindow, TellsThatThereIsNoPrinter) {
  simulation.printers.names.clear();
  simulation.printers.defaultName.clear();
  openPrint("text");
  pressPrint();
  ASSERT_EQ(simulation.desktop.messages.size(), 1U);
  EXPECT_EQ(simulation.desktop.messages[0].text, "No Printer Detected");
  EXPECT_EQ(simulation.desktop.messages[0].title, "Printer Not Install");
  EXPECT_EQ(simulation.desktop.messages[0].style, kMessageWarning);
  EXPECT_TRUE(print->isLoaded());
  EXPECT_THAT(papers(), IsEmpty());
}

TEST_F(PrintWindow, OpensWhereTheSystemDoesNotTellItsPrinters) {
  simulation.printers.tellsNothing = true;
  openPrint("text");
  EXPECT_EQ(print->rtfLap1.text.get(), "text");
  EXPECT_EQ(print->Combo1.text.get(), "1");
  EXPECT_EQ(print->Combo2.text.get(), "12");
  EXPECT_TRUE(print->Option1.value());
  EXPECT_EQ(setting("Printer"), "");
  pressPrint();
  EXPECT_THAT(messages(), ElementsAre("No Printer Detected"));
}

TEST_F(PrintWindow, TellsThatThereIsNoText) {
  openPrint("");
  pressPrint();
  ASSERT_EQ(simulation.desktop.messages.size(), 1U);
  EXPECT_EQ(simulation.desktop.messages[0].text, "No Data to Print");
  EXPECT_EQ(simulation.desktop.messages[0].title, "Print");
  EXPECT_EQ(simulation.desktop.messages[0].style, kMessageCritical);
  EXPECT_TRUE(print->isLoaded());
  EXPECT_THAT(papers(), IsEmpty());
}

TEST_F(PrintWindow, WritesTheSettingsWithTheOldOrientationFirst) {
  openPrint("text");
  simulation.desktop.type(print->cboPrinter, "Laser");
  choose("10", "4");
  simulation.desktop.click(print->Option2);
  EXPECT_THAT(settingsWritten([&] { pressPrint(); }),
              ElementsAre("write Printer/Printer=Laser", "write Printer/Copies=4",
                          "write Printer/Orientation=1", "write Printer/Orientation=2",
                          "write Printer/Size=10"));
}

TEST_F(PrintWindow, WritesNoSettingsWithoutAPrinterOrAText) {
  openPrint("");
  EXPECT_THAT(settingsWritten([&] { pressPrint(); }), IsEmpty());
}

TEST_F(PrintWindow, UnloadsBehindAPrint) {
  openPrint("text");
  pressPrint();
  EXPECT_FALSE(print->isLoaded());
  EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(PrintWindow, CancelPrintsNothing) {
  openPrint("text");
  simulation.desktop.click(print->cmdExit);
  EXPECT_FALSE(print->isLoaded());
  EXPECT_THAT(papers(), IsEmpty());
}

TEST_F(PrintWindow, PrintsOnTheChosenPrinterWithTheChosenProperties) {
  openPrint("text");
  simulation.desktop.type(print->cboPrinter, "Laser");
  choose("14", "2");
  simulation.desktop.click(print->Option2);
  pressPrint();
  ASSERT_EQ(simulation.printers.jobs.size(), 1U);
  EXPECT_EQ(simulation.printers.jobs[0].deviceName, "Laser");
  EXPECT_EQ(simulation.printers.jobs[0].properties,
            (PrinterProperties{"Times New Roman", 2, 14, kLandscape}));
}

TEST_F(PrintWindow, SetsThePropertiesAnewForEachPage) {
  openPrint(textOf(47));
  simulation.keepJournal();
  pressPrint();
  Lines calls;
  for (const std::string& entry : simulation.journal) {
    const bool isPrinters = entry.starts_with("set ") || entry == "print" || entry == "end" ||
                            entry.starts_with("open Ink");
    if (isPrinters) calls.push_back(entry);
  }
  EXPECT_THAT(calls,
              ElementsAre("open Ink", "set Times New Roman 1 12 1", "set Times New Roman 1 12 1",
                          "print", "end", "set Times New Roman 1 12 1", "print", "end"));
}

TEST_F(PrintWindow, FortySixLinesUprightAt12GiveTwoJobsTheSecondWithTheMarginAlone) {
  openPrint(textOf(46));
  pressPrint();
  EXPECT_THAT(papers(), ElementsAre(kMargin + onPaper(46), kMargin));
}

TEST_F(PrintWindow, FortySevenLinesUprightAt12GiveOneFullPageAndOneOfOneLine) {
  openPrint(textOf(47));
  pressPrint();
  EXPECT_THAT(papers(), ElementsAre(kMargin + onPaper(46), kMargin + onPaper(1, 47)));
}

TEST_F(PrintWindow, BlankLinesDoNotReachThePaper) {
  openPrint("\r\none\r\n\r\n   \r\ntwo\r\n");
  pressPrint();
  EXPECT_THAT(papers(), ElementsAre(std::string(kMargin) + "     one\r\n     two\r\n"));
}

TEST_F(PrintWindow, KeepsTheBlanksOfALineThatHasMore) {
  openPrint("    Name: x \r\n");
  pressPrint();
  EXPECT_THAT(papers(), ElementsAre(std::string(kMargin) + "         Name: x \r\n"));
}

TEST_F(PrintWindow, ATextOfBlankLinesIsAMarginAlone) {
  openPrint("\r\n  \r\n");
  pressPrint();
  EXPECT_THAT(papers(), ElementsAre(kMargin));
}

TEST_F(PrintWindow, Size16GivesATopMarginOfFiveEmptyLines) {
  openPrint("one");
  choose("16");
  pressPrint();
  EXPECT_THAT(papers(), ElementsAre(std::string(kLargeMargin) + "     one\r\n"));
}

TEST_F(PrintWindow, Size14StillGivesFour) {
  openPrint("one");
  choose("14");
  pressPrint();
  EXPECT_THAT(papers(), ElementsAre(std::string(kMargin) + "     one\r\n"));
}

struct PageLength {
  const char* size;
  bool upright;
  int lines;
};

class PrintedPage : public PrintWindow, public testing::WithParamInterface<PageLength> {};

TEST_P(PrintedPage, IsFullBehindItsNumberOfLines) {
  openPrint(textOf(2 * GetParam().lines + 1));
  choose(GetParam().size);
  if (!GetParam().upright) simulation.desktop.click(print->Option2);
  pressPrint();
  EXPECT_THAT(linesOfPages(), ElementsAre(GetParam().lines, GetParam().lines, 1));
}

INSTANTIATE_TEST_SUITE_P(OfEachSize, PrintedPage,
                         testing::Values(PageLength{"8", true, 70}, PageLength{"8", false, 55},
                                         PageLength{"10", true, 57}, PageLength{"10", false, 44},
                                         PageLength{"12", true, 46}, PageLength{"12", false, 34},
                                         PageLength{"14", true, 39}, PageLength{"14", false, 28},
                                         PageLength{"16", true, 36}, PageLength{"16", false, 27}),
                         [](const auto& example) {
                           return std::string(example.param.size) +
                                  (example.param.upright ? "Upright" : "Across");
                         });

TEST_F(PrintWindow, ASizeOfNoPageIsPrintedAsOne) {
  settingsAre("Ink", "1", "1", "9");
  openPrint(textOf(200));
  pressPrint();
  EXPECT_THAT(linesOfPages(), ElementsAre(200));
}

TEST_F(PrintWindow, AfterAPrintAcrossTheNextOpeningShowsLandscape) {
  openPrint("text");
  simulation.desktop.click(print->Option2);
  pressPrint();
  openPrint("text");
  EXPECT_TRUE(print->Option2.value());
  EXPECT_FALSE(print->Option1.value());
  EXPECT_EQ(setting("Orientation"), "2");
}

TEST_F(PrintWindow, APrinterThatHasGoneEndsTheRoutine) {
  openPrint("text");
  simulation.printers.names = {"Laser"};
  pressPrint();
  EXPECT_THAT(papers(), IsEmpty());
  EXPECT_TRUE(print->isLoaded());
  EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(PrintWindow, APrinterThatFailsOnItsSecondPageEndsTheRoutine) {
  openPrint(textOf(100));
  simulation.printers.jobsUntilRefusal = 1;
  pressPrint();
  EXPECT_THAT(linesOfPages(), ElementsAre(46));
  EXPECT_TRUE(print->isLoaded());
}

TEST_F(PrintWindow, CopiesThatAreNoNumberEndTheRoutine) {
  settingsAre("Ink", "many", "1", "12");
  openPrint("text");
  EXPECT_EQ(print->Combo1.text.get(), "many");
  pressPrint();
  EXPECT_THAT(papers(), IsEmpty());
  EXPECT_TRUE(print->isLoaded());
}

TEST_F(PrintWindow, CopiesBeyond16BitsEndTheRoutine) {
  settingsAre("Ink", "32768", "1", "12");
  openPrint("text");
  pressPrint();
  EXPECT_THAT(papers(), IsEmpty());
}

TEST_F(PrintWindow, PrintsNothingOfAReportThatIsNotThere) {
  print = program.show<frmPrint>();
  pressPrint();
  EXPECT_THAT(messages(), ElementsAre("No Data to Print"));
}

}  // namespace
}  // namespace veltrin
