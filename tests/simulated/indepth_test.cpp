// SPDX-License-Identifier: GPL-3.0-or-later
// The InDepth windows: load, help, and what both share beside the test itself.
#include "simulated/indepth_run.h"

namespace veltrin {
namespace {

const std::string kIntroduction =
    "This provides detailed information on internet latency and loss\r\n"
    "This test can take up to 10 minutes or longer depending on total hops and queries\r\n";

using InDepth = InDepthRun;

// --- Load of the window that the user opens ---

TEST_F(InDepth, ShowsItsDefaultsWhenNothingIsRemembered) {
  const indepth& opened = open();
  EXPECT_EQ(opened.caption.get(), "InDepth Internet Analysis");
  EXPECT_EQ(opened.Text1.text.get(), "www.wikipedia.org");
  EXPECT_EQ(opened.text3.text.get(), "100");
  EXPECT_EQ(opened.text4.text.get(), "25");
  EXPECT_EQ(opened.dosbox.text.get(), kIntroduction);
  EXPECT_EQ(opened.info.text.get(), "");
  EXPECT_TRUE(opened.info.visible);
  EXPECT_FALSE(opened.Command3.enabled);
  EXPECT_FALSE(opened.Command4.enabled);
  EXPECT_FALSE(opened.playit.playing);
  EXPECT_TRUE(simulation.processes.starts.empty());
}

TEST_F(InDepth, BearsItsCaptions) {
  const indepth& opened = open();
  EXPECT_EQ(opened.Label1.caption.get(), "Analyze to:");
  EXPECT_EQ(opened.Label2.caption.get(), "Queries Each Hop");
  EXPECT_EQ(opened.Label3.caption.get(), "Time Between Test in MS");
  EXPECT_EQ(opened.Label4.caption.get(), "How to Read");
  EXPECT_EQ(opened.Check1.caption.get(), "Do Not Resolve Address");
  EXPECT_EQ(opened.Check2.caption.get(), "Test for RSVP Path");
  EXPECT_EQ(opened.Check3.caption.get(), "Test if RSVP Aware");
  EXPECT_EQ(opened.Check4.caption.get(), "Test Connectivity to each Hop, Layer 2 priority");
  EXPECT_EQ(opened.Check5.caption.get(), "Force Using IP v4");
  EXPECT_EQ(opened.Check6.caption.get(), "Force Using IP v6");
  EXPECT_EQ(opened.Command1.caption.get(), "Test It");
  EXPECT_EQ(opened.Command2.caption.get(), "Close");
  EXPECT_EQ(opened.Command3.caption.get(), "Copy");
  EXPECT_EQ(opened.Command4.caption.get(), "Save");
  EXPECT_EQ(opened.Command5.caption.get(), "Info");
}

TEST_F(InDepth, ItsDesignHasTheListedPause) {
  const indepth designed(simulation.program());
  EXPECT_EQ(designed.text3.text.get(), "100");
  EXPECT_EQ(designed.text4.text.get(), "250");
}

TEST_F(InDepth, OffersTenToHundredQueries) {
  EXPECT_EQ(open().text3.items.get(), (std::vector<std::string>{"10", "20", "30", "40", "50", "60",
                                                                "70", "80", "90", "100"}));
}

TEST_F(InDepth, OffersPausesOfHundredToFiveHundred) {
  EXPECT_EQ(open().text4.items.get(),
            (std::vector<std::string>{"100", "125", "150", "175", "200", "225", "250", "275", "300",
                                      "325", "350", "375", "400", "425", "450", "475", "500"}));
}

TEST_F(InDepth, AllBoxesAreUntickedAndVisible) {
  indepth& opened = open();
  for (const CheckBox* box : {&opened.Check1, &opened.Check2, &opened.Check3, &opened.Check4,
                              &opened.Check5, &opened.Check6}) {
    EXPECT_EQ(box->value.get(), 0);
    EXPECT_TRUE(box->visible);
  }
}

TEST_F(InDepth, TakesWhatTheSettingsRemember) {
  Program& program = simulation.program();
  program.writeSetting("InDepth", "Source", "far.example");
  program.writeSetting("InDepth", "Queries", "40");
  program.writeSetting("InDepth", "Period", "300");
  const indepth& opened = open();
  EXPECT_EQ(opened.Text1.text.get(), "far.example");
  EXPECT_EQ(opened.text3.text.get(), "40");
  EXPECT_EQ(opened.text4.text.get(), "300");
}

TEST_F(InDepth, EmptyRememberedValuesGiveTheDefaults) {
  Program& program = simulation.program();
  program.writeSetting("InDepth", "Source", "");
  program.writeSetting("InDepth", "Queries", "");
  program.writeSetting("InDepth", "Period", "");
  const indepth& opened = open();
  EXPECT_EQ(opened.Text1.text.get(), "www.wikipedia.org");
  EXPECT_EQ(opened.text3.text.get(), "100");
  EXPECT_EQ(opened.text4.text.get(), "25");
}

TEST_F(InDepth, RefreshesTheTextsOfTheLanguageAtLoad) {
  simulation.program().LanguageId = kDutch;  // and nobody has chosen the texts yet
  EXPECT_EQ(open().dosbox.text.get(),
            "Dit geeft gedetailleerde informatie over internet vertraging en verlies\r\n"
            "Deze test kan tot 10 minuten of langer duren afhankelijk van het aantal sprongen en "
            "het aantal vragen\r\n");
  EXPECT_EQ(simulation.program().texts.TextFileCreated, "Het Bestand dat aangemaakt is heet ");
}

TEST_F(InDepth, OnLaterSystemsTwoOptionsAreGone) {
  simulation.program().menu.PostVistaOs = 1;
  const indepth& opened = open();
  EXPECT_FALSE(opened.Check3.visible);
  EXPECT_FALSE(opened.Check4.visible);
  EXPECT_EQ(opened.Check3.value.get(), 0);
  EXPECT_EQ(opened.Check4.value.get(), 0);
  EXPECT_TRUE(opened.Check2.visible);
  EXPECT_TRUE(opened.Check5.visible);
}

TEST_F(InDepth, OnLaterSystemsTheOptionsThatAreGoneAreSetToOff) {
  simulation.program().menu.PostVistaOs = 1;
  const auto designed = std::make_shared<indepth>(simulation.program());
  for (CheckBox* box : {&designed->Check2, &designed->Check3, &designed->Check4}) box->value = 1;
  designed->load();
  EXPECT_EQ(designed->Check2.value.get(), 1);
  EXPECT_EQ(designed->Check3.value.get(), 0);
  EXPECT_EQ(designed->Check4.value.get(), 0);
}

TEST_F(InDepth, IsOpenedByItsName) {
  simulation.program().tools.show(WindowName::indepth);
  EXPECT_TRUE(simulation.program().isLoaded<indepth>());
}

// --- Info and the help page ---

TEST_F(InDepth, InfoPutsTheDescriptionInThePlaceOfTheText) {
  indepth& opened = open();
  simulation.desktop.click(opened.Command5);
  EXPECT_EQ(opened.dosbox.text.get(),
            "This provides information about network latency and network loss at intermediate hops "
            "between a source and destination. InDepth Analysis sends multiple Echo Request "
            "messages to each router between a source and destination over a period of time and "
            "then computes results based on the packets returned from each router. Because InDepth "
            "Analysis displays the degree of packet loss at any given router or link, you can "
            "determine which routers or subnets might be having network problems.");
}

TEST_F(InDepth, InfoSpeaksDutch) {
  speakDutch();
  indepth& opened = open();
  simulation.desktop.click(opened.Command5);
  EXPECT_EQ(opened.dosbox.text.get().substr(0, 59),
            "Dit geeft informatie over netwerk vertraging en netwerk ver");
}

TEST_F(InDepth, HowToReadOpensTheHelpPageInTheBrowser) {
  simulation.profiles.contents[kProgramFolder + "\\installation.ini"] =
      "[Installation]\r\nHelpPageUrl=https://help.example/\r\n";
  simulation.environment.variables["ProgramFiles"] = "D:\\Programs";
  simulation.desktop.click(open().Label4);
  const SimulatedShell::Execution expected{"Open", "D:\\Programs\\Internet Explorer\\IEXPLORE.EXE",
                                           "https://help.example/", "", 1};
  EXPECT_EQ(simulation.shell.executions, std::vector<SimulatedShell::Execution>{expected});
}

TEST_F(InDepth, ABrowserThatIsMissingIsNotReported) {
  simulation.shell.refuse = true;
  simulation.desktop.click(open().Label4);
  EXPECT_TRUE(simulation.desktop.messages.empty());
}

// --- What both windows share ---

template <class Kind>
class BothInDepth : public InDepthRun {};

using Kinds = ::testing::Types<indepth, indepth2>;
TYPED_TEST_SUITE(BothInDepth, Kinds);

TYPED_TEST(BothInDepth, TheHelpOfEachControlIsShownWhenTheMouseMovesOverIt) {
  indepth_window& opened = this->template openWindow<TypeParam>();
  const std::string queries = "Number of Test Performed on each HOP/Router in path, Default is 100";
  const std::string pause =
      "Number of milliseconds to wait between consecutive test, setting lower than 200 can cause "
      "failures but may be needed for certain problems.  Default is 250";
  const std::vector<std::pair<Control*, std::string>> helps = {
      {&opened.Check1,
       "This prevents attempts to resolve the names of IP addresses of Intermediate Routers. (Can "
       "decrease test times)"},
      {&opened.Check2,
       "Determines if the route supports the Resource Reservation Protocol (RSVP) is supported"},
      {&opened.Check3,
       "Determines whether each network device along the route supports the Resource Reservation "
       "Protocol (RSVP), which allows the host computer to reserve a specified amount of bandwidth "
       "for a data stream. This switch is used to test for Quality of Service (QoS) connectivity"},
      {&opened.Check4,
       "Attaches a layer-2 priority tag (for example, 802.1p) to the Echo Request messages that it "
       "sends to each of the network devices along the route. This helps to identify network "
       "devices that do not have layer-2 priority capability. This switch is used to test for "
       "Quality of Service (QoS) connectivity."},
      {&opened.Check5, "Force the use of Internet Protocol version 4 (IPv4)"},
      {&opened.Check6,
       "Force the use of Internet Protocol version 6 (IPv6), a new suite of standard protocols for "
       "the network layer of the Internet (SP1 or higher)"},
      {&opened.Label2, queries},
      {&opened.text3, queries},
      {&opened.Label3, pause},
      {&opened.text4, pause}};
  for (const auto& [control, help] : helps) {
    opened.moveMouse(MouseButton::None);
    ASSERT_EQ(opened.info.text.get(), "Veltrin");
    this->simulation.desktop.moveMouse(*control);
    EXPECT_EQ(opened.info.text.get(), help);
  }
}

TYPED_TEST(BothInDepth, TheMouseOverTheWindowItselfShowsTheProduct) {
  indepth_window& opened = this->template openWindow<TypeParam>();
  opened.moveMouse(MouseButton::None);
  EXPECT_EQ(opened.info.text.get(), "Veltrin");
}

TYPED_TEST(BothInDepth, TheHelpIsShownInDutch) {
  this->speakDutch();
  indepth_window& opened = this->template openWindow<TypeParam>();
  this->simulation.desktop.moveMouse(opened.Check5);
  EXPECT_EQ(opened.info.text.get(),
            "Alleen het gebruik van Internet Protocol version 4 (IPv4) toestaan");
}

TYPED_TEST(BothInDepth, TheHelpIsNotShownWhileATestRunsInAnyWindow) {
  indepth_window& opened = this->template openWindow<TypeParam>();
  this->simulation.desktop.moveMouse(opened.Check5);
  this->simulation.program().template shared<InDepthValues>().InDepthRunning = 1;
  this->simulation.desktop.moveMouse(opened.Check1);
  opened.moveMouse(MouseButton::None);
  EXPECT_EQ(opened.info.text.get(), "Force the use of Internet Protocol version 4 (IPv4)");
}

TYPED_TEST(BothInDepth, ADoubleClickEmptiesTheDestination) {
  indepth_window& opened = this->template openWindow<TypeParam>();
  this->simulation.desktop.doubleClick(opened.Text1);
  EXPECT_EQ(opened.Text1.text.get(), "");
}

TYPED_TEST(BothInDepth, CloseUnloadsTheWindow) {
  indepth_window& opened = this->template openWindow<TypeParam>();
  this->simulation.desktop.click(opened.Command2);
  EXPECT_FALSE(this->simulation.program().template isLoaded<TypeParam>());
}

TYPED_TEST(BothInDepth, CopyPutsTheTextOnTheClipboardAndSaysSo) {
  this->simulation.desktop.clipboard = "older";
  indepth_window& opened = this->template openWindow<TypeParam>();
  this->test(opened);
  const std::string shown = opened.dosbox.text;
  this->simulation.desktop.click(opened.Command3);
  EXPECT_EQ(this->simulation.desktop.clipboard, shown);
  this->expectOneMessage(
      "InDepth Internet Analysis", 0,
      "Your information is now copied. You can either paste it in a document or an email."
      "\r\n\r\nOpen the document/email and right click in the text area, then select PASTE."
      "\r\n \r\n");
}

TYPED_TEST(BothInDepth, SaveWritesTheTextAndTellsTheName) {
  indepth_window& opened = this->template openWindow<TypeParam>();
  this->simulation.desktop.type(opened.Text1, "near.example");
  this->test(opened);
  this->simulation.desktop.click(opened.Command4);
  const std::string file = kProgramFolder + "\\InDepthAnalysis_ near.example_07Mar2026_0905.txt";
  EXPECT_EQ(this->simulation.files.contents,
            (std::map<std::string, std::string>{{file, opened.dosbox.text}}));
  this->expectOneMessage("InDepth Internet Analysis", 0, "File created is " + file);
}

TYPED_TEST(BothInDepth, SaveSpeaksDutch) {
  this->speakDutch();
  indepth_window& opened = this->template openWindow<TypeParam>();
  this->simulation.desktop.type(opened.Text1, "near.example");
  this->test(opened);
  this->simulation.desktop.click(opened.Command4);
  this->expectOneMessage("InDepth Internet Analysis", 0,
                         "Het Bestand dat aangemaakt is heet " + kProgramFolder +
                             "\\InDepthAnalysis_ near.example_07Mar2026_0905.txt");
}

TYPED_TEST(BothInDepth, ADestinationThatNoFileCanBeNamedBySavesNothingAndTellsTheNameAllTheSame) {
  indepth_window& opened = this->template openWindow<TypeParam>();
  this->simulation.desktop.type(opened.Text1, "2001:db8::7");
  this->test(opened);
  this->simulation.desktop.click(opened.Command4);
  EXPECT_TRUE(this->simulation.files.contents.empty());
  this->expectOneMessage(
      "InDepth Internet Analysis", 0,
      "File created is " + kProgramFolder + "\\InDepthAnalysis_ 2001:db8::7_07Mar2026_0905.txt");
}

TYPED_TEST(BothInDepth, EachChangeOfTheTextPutsTheCaretToItsEndAndYields) {
  indepth_window& opened = this->template openWindow<TypeParam>();
  int carets = 0;
  bool delivered = false;
  opened.dosbox.observeCaret([&] { ++carets; });
  this->at(0, [&] { delivered = true; });
  opened.dosbox.text += "more";
  EXPECT_EQ(carets, 1);
  EXPECT_TRUE(delivered);
}

TYPED_TEST(BothInDepth, ButtonsBearTheColourOfAllButtons) {
  indepth_window& opened = this->template openWindow<TypeParam>();
  const Colour expected{0xBD, 0xB7, 0x95};
  for (const CommandButton* button :
       {&opened.Command1, &opened.Command2, &opened.Command3, &opened.Command4, &opened.Command5}) {
    EXPECT_EQ(button->backColour.get(), expected);
  }
}

}  // namespace
}  // namespace veltrin
