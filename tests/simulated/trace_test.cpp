// SPDX-License-Identifier: GPL-3.0-or-later
// The Trace Route: its load, its boxes and menu, copying, saving and leaving.
#include "route/trace.h"

#include "simulated/route_run.h"

namespace veltrin {
namespace {

class Trace : public RouteRun {
 protected:
  trace& open() {
    window = simulation.program().show<trace>();
    return *window;
  }

  static std::vector<std::string> destinations(const trace& opened) {
    return {opened.trace1.text, opened.trace2.text, opened.trace3.text, opened.trace4.text,
            opened.trace5.text};
  }

  // Opens the window with a text in the box of the results.
  trace& openWithText(const std::string& text) {
    trace& opened = open();
    simulation.desktop.type(opened.txtOutputs, text);
    return opened;
  }

  std::shared_ptr<trace> window;
};

const std::vector<std::string> kDefaults = {"www.wikipedia.org", "www.debian.org", "www.kernel.org",
                                            "www.python.org", "www.mozilla.org"};
const std::vector<std::string> kNone = {"", "", "", "", ""};

// --- Load ---

TEST_F(Trace, ShowsItsDefaultsWhenNothingIsRemembered) {
  const trace& opened = open();
  EXPECT_EQ(opened.caption.get(), "Trace Route Test");
  EXPECT_EQ(opened.Combo1.text.get(), "1");
  EXPECT_EQ(opened.txtOutputs.text.get(), "");
  EXPECT_EQ(opened.Text1.text.get(), "");
  EXPECT_EQ(destinations(opened), kDefaults);
}

TEST_F(Trace, BearsItsCaptions) {
  const trace& opened = open();
  EXPECT_EQ(opened.startit.caption.get(), "Start");
  EXPECT_EQ(opened.copy1.caption.get(), "Copy");
  EXPECT_EQ(opened.write1.caption.get(), "Save");
  EXPECT_EQ(opened.Command1.caption.get(), "Exit");
  EXPECT_EQ(opened.menuclear.caption.get(), "Clear All");
  EXPECT_EQ(opened.menudef.caption.get(), "Apply Defaults");
  EXPECT_EQ(opened.Label3.caption.get(), "Number of Passes");
  EXPECT_EQ(opened.Label1.caption.get(), "1");
  EXPECT_EQ(opened.Label2.caption.get(), "2");
  EXPECT_EQ(opened.Label4.caption.get(), "3");
  EXPECT_EQ(opened.Label5.caption.get(), "4");
  EXPECT_EQ(opened.Label6.caption.get(), "5");
}

TEST_F(Trace, OffersOneToTwelvePasses) {
  EXPECT_EQ(open().Combo1.items.get(), (std::vector<std::string>{"1", "2", "3", "4", "5", "6", "7",
                                                                 "8", "9", "10", "11", "12"}));
}

TEST_F(Trace, AllButtonsCanBePressedAtOnce) {
  const trace& opened = open();
  EXPECT_TRUE(opened.startit.enabled);
  EXPECT_TRUE(opened.copy1.enabled);
  EXPECT_TRUE(opened.write1.enabled);
  EXPECT_TRUE(opened.Command1.enabled);
}

TEST_F(Trace, TakesTheDestinationsThatTheSettingsRemember) {
  Program& program = simulation.program();
  program.writeSetting("Trace", "Trace1", "one.example");
  program.writeSetting("Trace", "Trace2", "two.example");
  program.writeSetting("Trace", "Trace3", "three.example");
  program.writeSetting("Trace", "Trace4", "four.example");
  program.writeSetting("Trace", "Trace5", "five.example");
  EXPECT_EQ(destinations(open()),
            (std::vector<std::string>{"one.example", "two.example", "three.example", "four.example",
                                      "five.example"}));
}

TEST_F(Trace, AnEmptyRememberedDestinationLeavesTheDefault) {
  simulation.program().writeSetting("Trace", "Trace1", "");
  simulation.program().writeSetting("Trace", "Trace5", "five.example");
  EXPECT_EQ(destinations(open()),
            (std::vector<std::string>{"www.wikipedia.org", "www.debian.org", "www.kernel.org",
                                      "www.python.org", "five.example"}));
}

TEST_F(Trace, TakesItsFirstDefaultFromTheInstallation) {
  simulation.profiles.contents[kProgramFolder + "\\installation.ini"] =
      "[Installation]\r\nProbeHost=probe.example\r\n";
  EXPECT_EQ(open().trace1.text.get(), "probe.example");
}

TEST_F(Trace, PaintsItsMenuInTheColourOfTheButtons) {
  const trace& opened = open();
  const Colour expected{0xBD, 0xB7, 0x95};
  EXPECT_EQ(simulation.desktop.menuColours.at(&opened), expected);
  EXPECT_EQ(opened.startit.backColour.get(), expected);
}

TEST_F(Trace, HasItsTipsInEnglish) {
  const trace& opened = open();
  EXPECT_EQ(opened.trace1.toolTip.get(), "Enter the URL/Destination to Test");
  EXPECT_EQ(opened.trace5.toolTip.get(), "Enter the URL/Destination to Test");
  EXPECT_EQ(opened.Combo1.toolTip.get(), "Set the Number for Test for each URL/IP");
  EXPECT_EQ(opened.copy1.toolTip.get(), "Copy Results to Clipbaord to paste in Document or Email");
  EXPECT_EQ(opened.write1.toolTip.get(), "Save Results to File");
}

TEST_F(Trace, HasNoTipsInDutch) {
  speakDutch();
  const trace& opened = open();
  EXPECT_EQ(opened.trace1.toolTip.get(), "");
  EXPECT_EQ(opened.Combo1.toolTip.get(), "");
  EXPECT_EQ(opened.copy1.toolTip.get(), "");
  EXPECT_EQ(opened.write1.toolTip.get(), "");
}

TEST_F(Trace, IsOpenedByItsName) {
  simulation.program().tools.show(WindowName::trace);
  EXPECT_TRUE(simulation.program().isLoaded<trace>());
}

// --- Boxes and menu ---

TEST_F(Trace, ADoubleClickEmptiesTheBoxThatItHits) {
  trace& opened = open();
  const std::vector<TextBox*> boxes = {&opened.trace1, &opened.trace2, &opened.trace3,
                                       &opened.trace4, &opened.trace5};
  for (std::size_t hit = 0; hit < boxes.size(); ++hit) {
    simulation.desktop.choose(opened.menudef);
    simulation.desktop.doubleClick(*boxes[hit]);
    std::vector<std::string> expected = kDefaults;
    expected[hit] = "";
    EXPECT_EQ(destinations(opened), expected);
  }
}

TEST_F(Trace, ClearAllEmptiesTheBoxesAndNotTheSettings) {
  simulation.program().writeSetting("Trace", "Trace1", "one.example");
  trace& opened = open();
  simulation.desktop.choose(opened.menuclear);
  EXPECT_EQ(destinations(opened), kNone);
  EXPECT_EQ(simulation.settings(), "[Trace]\r\nTrace1=one.example\r\n");
}

TEST_F(Trace, ApplyDefaultsRestoresTheBoxesAndNotTheSettings) {
  simulation.program().writeSetting("Trace", "Trace1", "one.example");
  trace& opened = open();
  simulation.desktop.type(opened.trace4, "");
  simulation.desktop.choose(opened.menudef);
  EXPECT_EQ(destinations(opened), kDefaults);
  EXPECT_EQ(simulation.settings(), "[Trace]\r\nTrace1=one.example\r\n");
}

TEST_F(Trace, ClearAllAndTheFramesCloseBoxBringTheSavedDestinationsBack) {
  keepTheProgramRunning();
  simulation.program().writeSetting("Trace", "Trace2", "two.example");
  trace& opened = open();
  simulation.desktop.choose(opened.menuclear);
  simulation.desktop.closeWindow(opened);
  std::vector<std::string> expected = kDefaults;
  expected[1] = "two.example";
  EXPECT_EQ(destinations(open()), expected);
}

// --- Leaving ---

TEST_F(Trace, ExitRemembersAllFiveBoxesInOrderAndUnloads) {
  trace& opened = open();
  simulation.desktop.type(opened.trace2, "two.example");
  simulation.desktop.type(opened.trace5, "");
  simulation.desktop.click(opened.Command1);
  EXPECT_FALSE(simulation.program().isLoaded<trace>());
  EXPECT_EQ(simulation.settings(),
            "[Trace]\r\nTrace1=www.wikipedia.org\r\nTrace2=two.example\r\n"
            "Trace3=www.kernel.org\r\nTrace4=www.python.org\r\nTrace5=\r\n");
}

TEST_F(Trace, ExitOverwritesARememberedDestinationWithAnEmptyBox) {
  simulation.program().writeSetting("Trace", "Trace1", "one.example");
  trace& opened = open();
  simulation.desktop.choose(opened.menuclear);
  simulation.desktop.click(opened.Command1);
  EXPECT_EQ(simulation.program().readSetting("Trace", "Trace1"), "");
}

TEST_F(Trace, ClosingTheFrameRemembersNothing) {
  simulation.desktop.closeWindow(open());
  EXPECT_FALSE(simulation.program().isLoaded<trace>());
  EXPECT_EQ(simulation.settings(), "");
}

TEST_F(Trace, ExitUnloadsWhenTheSettingsCannotBeWritten) {
  simulation.profiles.refuseWriting = true;
  simulation.desktop.click(open().Command1);
  EXPECT_FALSE(simulation.program().isLoaded<trace>());
}

// --- The results ---

TEST_F(Trace, EachChangeOfTheResultsPutsTheCaretToTheirEnd) {
  trace& opened = open();
  std::vector<std::string> seen;
  opened.txtOutputs.observeCaret([&] { seen.push_back(opened.txtOutputs.text); });
  simulation.desktop.type(opened.txtOutputs, "one");
  simulation.desktop.type(opened.txtOutputs, "one two");
  EXPECT_EQ(seen, (std::vector<std::string>{"one", "one two"}));
}

TEST_F(Trace, AChangeOfTheResultsYields) {
  trace& opened = open();
  bool delivered = false;
  at(0, [&] { delivered = true; });
  opened.txtOutputs.text += "more";
  EXPECT_TRUE(delivered);
}

TEST_F(Trace, CopyPutsTheResultsOnTheClipboardAndSaysSo) {
  simulation.desktop.clipboard = "older";
  trace& opened = openWithText("results\r\n");
  simulation.desktop.click(opened.copy1);
  EXPECT_EQ(simulation.desktop.clipboard, "results\r\n");
  expectOneMessage(
      "Trace Route", 0,
      "Your information is now copied. You can either paste it in a document or an email."
      "\r\n\r\nOpen the document/email and right click in the text area, then select PASTE."
      "\r\n \r\n");
}

TEST_F(Trace, CopySpeaksDutch) {
  speakDutch();
  simulation.desktop.click(openWithText("results").copy1);
  expectOneMessage(
      "Trace Route", 0,
      "Uw informatie wordt nu gekopieerd. U kunt het plakken in een document of een email."
      "\r\n\r\nOpen het document/email en klik met de rechter muisknop in het tekst gedeeelte, "
      "kies vervolgens PLAKKEN.\r\n \r\n");
}

TEST_F(Trace, CopyOfNoResultsEmptiesTheClipboard) {
  simulation.desktop.clipboard = "older";
  simulation.desktop.click(open().copy1);
  EXPECT_EQ(simulation.desktop.clipboard, "");
}

TEST_F(Trace, SaveWritesTheResultsAsTheyStandAndTellsTheName) {
  trace& opened = openWithText("results\r\n");
  simulation.desktop.type(opened.trace1, "near.example");
  simulation.desktop.click(opened.write1);
  const std::string file = kProgramFolder + "\\Traceroute_ near.example_07Mar2026_0905.txt";
  EXPECT_EQ(simulation.files.contents, (std::map<std::string, std::string>{{file, "results\r\n"}}));
  expectOneMessage("Trace Routes", 0, "File created is " + file);
}

TEST_F(Trace, SaveSpeaksDutch) {
  speakDutch();
  trace& opened = openWithText("results");
  simulation.desktop.type(opened.trace1, "near.example");
  simulation.desktop.click(opened.write1);
  expectOneMessage("Trace Routes", 0,
                   "Het Bestand dat aangemaakt is heet " + kProgramFolder +
                       "\\Traceroute_ near.example_07Mar2026_0905.txt");
}

TEST_F(Trace, ASecondSaveOfAMinuteReplacesTheFirst) {
  trace& opened = openWithText("first and longer");
  simulation.desktop.type(opened.trace1, "near.example");
  simulation.desktop.click(opened.write1);
  simulation.desktop.type(opened.txtOutputs, "second");
  simulation.desktop.click(opened.write1);
  EXPECT_EQ(simulation.files.contents,
            (std::map<std::string, std::string>{
                {kProgramFolder + "\\Traceroute_ near.example_07Mar2026_0905.txt", "second"}}));
}

TEST_F(Trace, ADestinationThatNoFileCanBeNamedBySavesNothingAndTellsTheNameAllTheSame) {
  trace& opened = openWithText("results");
  simulation.desktop.type(opened.trace1, "http://near.example/?a");
  simulation.desktop.click(opened.write1);
  EXPECT_TRUE(simulation.files.contents.empty());
  expectOneMessage("Trace Routes", 0,
                   "File created is " + kProgramFolder +
                       "\\Traceroute_ http://near.example/?a_07Mar2026_0905.txt");
}

TEST_F(Trace, AFolderThatCannotBeWrittenIsNotReported) {
  simulation.files.refuseOpening = true;
  trace& opened = openWithText("results");
  simulation.desktop.type(opened.trace1, "near.example");
  simulation.desktop.click(opened.write1);
  EXPECT_TRUE(simulation.files.contents.empty());
  expectOneMessage(
      "Trace Routes", 0,
      "File created is " + kProgramFolder + "\\Traceroute_ near.example_07Mar2026_0905.txt");
}

}  // namespace
}  // namespace veltrin
