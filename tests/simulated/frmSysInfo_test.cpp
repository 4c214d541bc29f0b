// SPDX-License-Identifier: GPL-3.0-or-later
// The report window: what is chosen, what the list and the text hold, its size, its menu.
#include <array>

#include "simulated/report_run.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Notes what a list asks of its screen.
class NotedScreen : public ListViewScreen {
 public:
  explicit NotedScreen(ListView& list) : list_(list) { list_.setScreen(this); }
  ~NotedScreen() override { list_.setScreen(nullptr); }
  NotedScreen(const NotedScreen&) = delete;
  NotedScreen& operator=(const NotedScreen&) = delete;

  void noteInserted(std::size_t index) override { note("inserted", index); }
  void noteRemoved(std::size_t index) override { note("removed", index); }
  void noteChanged(std::size_t index) override { note("changed", index); }
  void noteReset() override { notes.emplace_back("reset"); }
  void noteSelection() override { notes.emplace_back("selection"); }
  void EnsureVisible(std::size_t index) override { note("visible", index); }
  void StartLabelEdit(std::size_t index) override { note("edit", index); }
  void lockDrawing(bool locked) override { notes.emplace_back(locked ? "locked" : "unlocked"); }
  void Refresh() override { notes.emplace_back("refresh"); }
  std::uintptr_t hWnd() const override { return 7; }

  Lines notes;

 private:
  void note(const std::string& what, std::size_t index) {
    notes.push_back(what + " " + std::to_string(index));
  }

  ListView& list_;
};

class ReportWindow : public ReportRun {
 protected:
  std::array<int, 14> ticks() const {
    std::array<int, 14> values{};
    for (std::size_t index = 0; index < values.size(); ++index) {
      values[index] = window->Showme[index].value;
    }
    return values;
  }

  // The line that LogEvents makes of a colour's number.
  ListLine lineOfColour(std::int16_t number) {
    window->LogEvents("line", 0, number, false);
    return window->SYSView.ListView1.line(window->SYSView.ListView1.count() - 1);
  }

  // A report of one line, which is told while the tool runs.
  void reports(const std::string& line) {
    onStart = [this, line] { window->LogEvents(line, 0, 1, false); };
  }

  std::size_t linesThatAre(const std::string& text) const {
    const Lines all = lines();
    return static_cast<std::size_t>(std::count(all.begin(), all.end(), text));
  }

  std::string savedFile() const {
    const auto& files = simulation.files.contents;
    const auto found = files.find("C:\\Program Files\\Veltrin\\SystemInfo (07Mar2666.txt");
    return found == files.end() ? "(none)" : found->second;
  }
};

TEST_F(ReportWindow, HasItsTexts) {
  open();
  EXPECT_EQ(window->caption.get(), "Detailed System Information");
  EXPECT_EQ(window->Command1.caption.get(), "Get Info");
  EXPECT_EQ(window->Label1.caption.get(), "ALL");
  EXPECT_EQ(window->Label2.caption.get(), "None");
  EXPECT_EQ(window->mnuOpt.caption.get(), "Options");
  EXPECT_EQ(window->mnuSave.caption.get(), "Save to Files");
  EXPECT_EQ(window->mnuPrint.caption.get(), "Print");
  EXPECT_EQ(window->mnuExit.caption.get(), "Exit");
}

TEST_F(ReportWindow, NamesItsSections) {
  open();
  Lines captions;
  for (const CheckBox& box : window->Showme) captions.push_back(box.caption.get());
  EXPECT_THAT(captions, ElementsAre("Users", "CPU", "Memory", "Hard Drive", "MotherBoard", "Video",
                                    "Peripheals", "Install Software", "Startup/Processes",
                                    "Drivers", "Hot Fixes", "Errors", "Destop ", "System"));
}

TEST_F(ReportWindow, WantsSixSectionsAtFirst) {
  open();
  EXPECT_THAT(ticks(), ElementsAre(0, 1, 1, 1, 1, 1, 1, 0, 0, 0, 0, 0, 0, 0));
}

TEST_F(ReportWindow, HasTipsWhereTheProgramSpeaksEnglish) {
  open();
  EXPECT_EQ(window->Command1.toolTip.get(), "Get Detailed System Information");
  EXPECT_EQ(window->Label1.toolTip.get(), "Select ALL Items");
  EXPECT_EQ(window->Label2.toolTip.get(), "De-Select ALL Items");
}

TEST_F(ReportWindow, HasThirtyEightPictures) {
  open();
  EXPECT_EQ(window->ImageList1.pictures.size(), 38U);
  EXPECT_NE(window->ImageList1.find(38), nullptr);
  EXPECT_EQ(window->ImageList1.find(39), nullptr);
  EXPECT_EQ(window->ImageList1.find(0), nullptr);
}

TEST_F(ReportWindow, BeginsItsTextWithTheComputersName) {
  open();
  EXPECT_EQ(window->Text1.text.get(), "\r\nSystem Information KITCHEN\r\n");
  EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(ReportWindow, ReadsNameAndCoresBeforeItComesUp) {
  std::string seen;
  simulation.desktop.onModal = [&](Form& form) {
    seen = report().ComputerName + " " + summary.CpuCores + " " +
           dynamic_cast<frmSysInfo&>(form).Text1.text.get();
  };
  open();
  EXPECT_EQ(seen, "KITCHEN 4 ");
}

TEST_F(ReportWindow, WaitsTenMillisecondsInItsLoad) {
  const std::int64_t before = simulation.loop.milliseconds();
  open();
  EXPECT_EQ(simulation.loop.milliseconds() - before, 10);
}

TEST_F(ReportWindow, GivesItselfToTheReportWhileItIsLoaded) {
  open();
  EXPECT_EQ(report().window.lock(), window);
  simulation.desktop.closeWindow(*window);
  EXPECT_EQ(report().window.lock(), nullptr);
}

TEST_F(ReportWindow, LogEventsWithColour0ShowsAGreenLine) {
  open();
  EXPECT_EQ(translated(lineOfColour(0).ForeColor), (Colour{0, 128, 0}));
}

TEST_F(ReportWindow, LogEventsKnowsSixColoursAndElseBlack) {
  open();
  EXPECT_EQ(translated(lineOfColour(1).ForeColor), (Colour{0, 128, 0}));
  EXPECT_EQ(translated(lineOfColour(2).ForeColor), (Colour{192, 64, 0}));
  EXPECT_EQ(translated(lineOfColour(3).ForeColor), (Colour{255, 0, 0}));
  EXPECT_EQ(translated(lineOfColour(4).ForeColor), (Colour{192, 0, 0}));
  EXPECT_EQ(translated(lineOfColour(5).ForeColor), (Colour{192, 0, 192}));
  EXPECT_EQ(translated(lineOfColour(6).ForeColor), (Colour{0, 192, 192}));
  for (const std::int16_t none : {-32768, -1, 7, 32767}) {
    EXPECT_EQ(lineOfColour(none).ForeColor, ColourCode{0});
  }
}

TEST_F(ReportWindow, LogEventsGivesALineItsPictureAndItsLetters) {
  open();
  window->LogEvents("Sound", 33, 2, true);
  window->LogEvents("plain", 0, 1, false);
  const ListLine& heading = window->SYSView.ListView1.line(0);
  EXPECT_EQ(heading.Text, "Sound");
  EXPECT_EQ(heading.SmallIcon, 33);
  EXPECT_TRUE(heading.Bold);
  const ListLine& plain = window->SYSView.ListView1.line(1);
  EXPECT_EQ(plain.SmallIcon, 0);
  EXPECT_FALSE(plain.Bold);
}

TEST_F(ReportWindow, LogEventsAppendsToTheText) {
  open();
  window->LogEvents("one", 0, 1, false);
  window->LogEvents("", 0, 1, false);
  EXPECT_EQ(window->Text1.text.get(), "\r\nSystem Information KITCHEN\r\none\r\n\r\n");
}

TEST_F(ReportWindow, LogEventsFollowsTheEndOfTheList) {
  open();
  NotedScreen screen(window->SYSView.ListView1);
  window->LogEvents("one", 0, 1, false);
  window->LogEvents("two", 0, 1, false);
  EXPECT_THAT(screen.notes, ElementsAre("inserted 0", "selection", "visible 0", "refresh",
                                        "inserted 1", "selection", "visible 1", "refresh"));
  EXPECT_EQ(window->SYSView.ListIndex(), 1);
}

TEST_F(ReportWindow, LogEventsBindsThePicturesAtEachCall) {
  open();
  window->LogEvents("one", 0, 1, false);
  window->SYSView.setImageList(nullptr);
  window->LogEvents("two", 0, 1, false);
  EXPECT_EQ(window->SYSView.getImageList(), &window->ImageList1);
}

TEST_F(ReportWindow, ShowsTheHourglassDuringARun) {
  open();
  std::vector<MousePointer> seen;
  onStart = [&] { seen.push_back(window->mousePointer.get()); };
  simulation.desktop.click(window->Command1);
  EXPECT_THAT(seen, ElementsAre(MousePointer::Hourglass));
  EXPECT_EQ(window->mousePointer.get(), MousePointer::Default);
}

TEST_F(ReportWindow, RunsTheCollectorWhichStaysLoaded) {
  open();
  EXPECT_FALSE(program.isLoaded<DosApp>());
  simulation.desktop.click(window->Command1);
  EXPECT_THAT(commandLines(), ElementsAre("C:\\Windows\\System32\\Systeminfo.exe"));
  EXPECT_TRUE(program.isLoaded<DosApp>());
  simulation.desktop.closeWindow(*window);
  EXPECT_TRUE(program.isLoaded<DosApp>());
}

TEST_F(ReportWindow, EmptiesTheListBeforeARunAndKeepsTheText) {
  open();
  window->LogEvents("old", 0, 1, false);
  Lines during;
  onStart = [&] { during = lines(); };
  simulation.desktop.click(window->Command1);
  EXPECT_THAT(during, IsEmpty());
  EXPECT_EQ(linesThatAre("old"), 0U);
  EXPECT_EQ(window->Text1.text.get().find("\r\nSystem Information KITCHEN\r\nold\r\n"), 0U);
}

TEST_F(ReportWindow, ReturnsToTheTopBehindARun) {
  open();
  onStart = [&] {
    for (const char* text : {"one", "two", "three"}) window->LogEvents(text, 0, 1, false);
  };
  NotedScreen screen(window->SYSView.ListView1);
  simulation.desktop.click(window->Command1);
  EXPECT_EQ(window->SYSView.ListIndex(), 1);
  EXPECT_THAT(Lines(screen.notes.end() - 4, screen.notes.end()),
              ElementsAre("selection", "visible 1", "visible 0", "refresh"));
}

TEST_F(ReportWindow, SecondRunShowsOneReportInTheListAndTwoInASavedFile) {
  open();
  reports("line of the report");
  simulation.desktop.click(window->Command1);
  simulation.desktop.click(window->Command1);
  simulation.desktop.choose(window->mnuSave);
  EXPECT_EQ(linesThatAre("line of the report"), 1U);
  const std::string file = savedFile();
  const std::string line = "line of the report\r\n";
  const std::size_t first = file.find(line);
  const std::size_t second = file.find(line, first + 1);
  EXPECT_NE(first, std::string::npos);
  EXPECT_NE(second, std::string::npos);
  EXPECT_EQ(file.find(line, second + 1), std::string::npos);
}

TEST_F(ReportWindow, SecondPressInAYieldStartsANestedRun) {
  open();
  prints(linesOfBoard(3));
  int depth = 0;
  int deepest = 0;
  window->Command1.click = [&, run = window->Command1.click] {
    deepest = std::max(deepest, ++depth);
    run();
    --depth;
  };
  simulation.loop.after(kToolTime / 2, [this] { simulation.desktop.click(window->Command1); });
  simulation.desktop.click(window->Command1);
  EXPECT_EQ(simulation.processes.starts.size(), 2U);
  EXPECT_EQ(deepest, 2);
  EXPECT_EQ(window->mousePointer.get(), MousePointer::Default);
}

TEST_F(ReportWindow, RunGoesOnBehindAClosedWindow) {
  open();
  prints(linesOfBoard(12));
  simulation.loop.after(kToolTime / 2, [this] { simulation.desktop.closeWindow(*window); });
  simulation.desktop.click(window->Command1);
  EXPECT_FALSE(window->isLoaded());
  EXPECT_EQ(summary.MbModel, "Board 7");
}

TEST_F(ReportWindow, AllSetsAllBoxesAndNoneClearsThem) {
  open();
  simulation.desktop.click(window->Label1);
  EXPECT_THAT(ticks(), testing::Each(1));
  simulation.desktop.click(window->Label2);
  EXPECT_THAT(ticks(), testing::Each(0));
}

TEST_F(ReportWindow, OpensInItsLeastSize) {
  open();
  EXPECT_EQ(window->width.get(), 10890);
  EXPECT_EQ(window->height.get(), 7330);
}

TEST_F(ReportWindow, OpensWithItsControlsAtItsEdges) {
  open();
  EXPECT_EQ(window->SYSView.width.get(), 8655);
  EXPECT_EQ(window->SYSView.height.get(), 6060);
  EXPECT_EQ(window->Command1.left.get(), 9000);
  EXPECT_EQ(window->Command1.top.get(), 5685);
}

TEST_F(ReportWindow, CannotBeMadeSmallerThan10890By7330) {
  open();
  window->resizeTo(10889, 9000);
  EXPECT_EQ(window->width.get(), 10890);
  EXPECT_EQ(window->height.get(), 9000);
  window->resizeTo(12000, 7329);
  EXPECT_EQ(window->width.get(), 12000);
  EXPECT_EQ(window->height.get(), 7330);
  window->resizeTo(0, 0);
  EXPECT_EQ(window->width.get(), 10890);
  EXPECT_EQ(window->height.get(), 7330);
}

TEST_F(ReportWindow, KeepsItsControlsAtItsEdges) {
  open();
  for (const auto& [width, height] : {std::pair{10890, 7330}, std::pair{15000, 12000}}) {
    window->resizeTo(width, height);
    EXPECT_EQ(window->SYSView.width.get(), width - 2235);
    EXPECT_EQ(window->SYSView.height.get(), height - 1270);
    for (const CheckBox& box : window->Showme) EXPECT_EQ(box.left.get(), width - 1890);
    EXPECT_EQ(window->Command1.left.get(), width - 1890);
    EXPECT_EQ(window->Command1.top.get(), height - 1645);
    EXPECT_EQ(window->Label1.left.get(), width - 1890);
    EXPECT_EQ(window->Label1.top.get(), height - 2005);
    EXPECT_EQ(window->Label2.left.get(), width - 1170);
    EXPECT_EQ(window->Label2.top.get(), height - 2005);
  }
}

TEST_F(ReportWindow, SavesTheTextUnderTheDay) {
  open();
  window->LogEvents("one", 0, 1, false);
  simulation.desktop.choose(window->mnuSave);
  EXPECT_EQ(savedFile(), "\r\nSystem Information KITCHEN\r\none\r\n");
  EXPECT_THAT(messages(), ElementsAre("File Created: \r\n"
                                      "C:\\Program Files\\Veltrin\\SystemInfo (07Mar2666.txt"));
  EXPECT_EQ(simulation.desktop.messages[0].style, kMessageOk);
  EXPECT_EQ(simulation.desktop.messages[0].title, "Veltrin");
}

TEST_F(ReportWindow, SavingTwiceOnOneDayLeavesOneFileWithTheLaterContent) {
  open();
  window->LogEvents("a long first line", 0, 1, false);
  simulation.desktop.choose(window->mnuSave);
  window->Text1.text = "later";
  simulation.desktop.choose(window->mnuSave);
  EXPECT_EQ(savedFile(), "later");
  EXPECT_EQ(simulation.files.contents.size(), 1U);
}

TEST_F(ReportWindow, TellsOfAFileThatItCouldNotOpen) {
  open();
  simulation.files.refuseOpening = true;
  simulation.desktop.choose(window->mnuSave);
  EXPECT_EQ(savedFile(), "(none)");
  EXPECT_THAT(messages(), ElementsAre("File Created: \r\n"
                                      "C:\\Program Files\\Veltrin\\SystemInfo (07Mar2666.txt"));
}

TEST_F(ReportWindow, KeepsTheOlderFileOnAFullDisk) {
  open();
  simulation.desktop.choose(window->mnuSave);
  window->LogEvents("more", 0, 1, false);
  simulation.files.refuseWriting = true;
  simulation.desktop.choose(window->mnuSave);
  EXPECT_EQ(savedFile(), "\r\nSystem Information KITCHEN\r\n");
  EXPECT_EQ(messages().size(), 2U);
}

TEST_F(ReportWindow, PrintsInAWindowBeforeItself) {
  open();
  bool isBefore = false;
  simulation.loop.after(50, [&] {
    isBefore = program.isLoaded<frmPrint>() && !simulation.desktop.takesInput(*window);
    program.unload<frmPrint>();
  });
  simulation.desktop.choose(window->mnuPrint);
  EXPECT_TRUE(isBefore);
  EXPECT_EQ(report().PrintSource, 1);
}

TEST_F(ReportWindow, ExitUnloadsIt) {
  open();
  simulation.desktop.choose(window->mnuExit);
  EXPECT_FALSE(window->isLoaded());
}

}  // namespace
}  // namespace veltrin
