// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>

#include "simulated/menu_run.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Startup = MenuRun;

// --- The load ---

TEST_F(Startup, IsTitledAndNamedAfterTheProduct) {
  open();
  EXPECT_EQ(menu->caption.get(), "Veltrin");
  EXPECT_EQ(menu->Label1.caption.get(), "Veltrin");
  EXPECT_EQ(menu->Label2.caption.get(), "Version 1.03");
  EXPECT_EQ(menu->Label3.caption.get(), "Rated Download Speed in KB");
}

TEST_F(Startup, ButtonsBearTheNamesOfTheirTools) {
  open();
  EXPECT_EQ(menu->Command1.caption.get(), "Trace Route");
  EXPECT_EQ(menu->Command2.caption.get(), "InDepth Test");
  EXPECT_EQ(menu->Command3.caption.get(), "Exit");
  EXPECT_EQ(menu->Command4.caption.get(), "Ping Test");
  EXPECT_EQ(menu->Command5.caption.get(), "Help");
  EXPECT_EQ(menu->Command6.caption.get(), "About");
  EXPECT_EQ(menu->Command7.caption.get(), "Set MTU");
  EXPECT_EQ(menu->Command8.caption.get(), "Monitor Outage");
  EXPECT_EQ(menu->Command9.caption.get(), "Hop Stability Test");
  EXPECT_EQ(menu->Command10.caption.get(), "Monitor Bandwidth");
  EXPECT_EQ(menu->Command12.caption.get(), "InDepth Net Monitor");
}

TEST_F(Startup, NeverShowsTheTwoButtonsOfOld) {
  open();
  EXPECT_EQ(menu->Command11.caption.get(), "The Planet Test");
  EXPECT_FALSE(menu->Command11.visible);
  EXPECT_EQ(menu->Command13.caption.get(), "Stability Test");
  EXPECT_FALSE(menu->Command13.visible);
}

TEST_F(Startup, ListsTheSpeeds) {
  open();
  EXPECT_THAT(
      menu->Combo1.items.get(),
      ElementsAre("256", "512", "768", "1,000", "1,200", "1,500", "2,000", "2,500", "3,000",
                  "3,500", "4,000", "4,500", "5,000", "6,000", "7,000", "7,500", "8,000", "9,000",
                  "10,000", "11,000", "12,000", "13,000", "14,000", "15,000", "20,000", "25,000",
                  "30,000", "35,000", "40,000", "45,000", "50,000", "55,000", "60,000", "65,000",
                  "70,000", "75,000", "80,000", "85,000", "90,000", "95,000", "100,000"));
}

TEST_F(Startup, ShowsTheStoredSpeedWithItsSeparatorsAndKeepsItWithout) {
  settingsAre("[Settings]\r\nRated Speed=1,500\r\n");
  open();
  EXPECT_EQ(menu->Combo1.text.get(), "1,500");
  EXPECT_EQ(simulation.program().menu.RatedSpeed, "1500");
}

TEST_F(Startup, TakesAStoredSpeedOfTwoDigitsForNone) {
  settingsAre("[Settings]\r\nRated Speed=64\r\n");
  open();
  EXPECT_EQ(menu->Combo1.text.get(), "0");
  EXPECT_EQ(simulation.program().menu.RatedSpeed, "");
}

TEST_F(Startup, TakesAStoredSpeedOfTwoCharactersForNoneWhateverTheirBytes) {
  settingsAre("[Settings]\r\nRated Speed=\u00BD\u00BD\r\n");
  open();
  EXPECT_EQ(menu->Combo1.text.get(), "0");
}

TEST_F(Startup, KeepsAStoredSpeedOfThreeDigits) {
  settingsAre("[Settings]\r\nRated Speed=256\r\n");
  open();
  EXPECT_EQ(menu->Combo1.text.get(), "256");
  EXPECT_EQ(simulation.program().menu.RatedSpeed, "256");
}

TEST_F(Startup, KeepsAStoredSpeedThatIsNoNumber) {
  settingsAre("[Settings]\r\nRated Speed=fast\r\n");
  open();
  EXPECT_EQ(menu->Combo1.text.get(), "fast");
  EXPECT_EQ(simulation.program().menu.RatedSpeed, "fast");
}

TEST_F(Startup, SpeaksEnglishAtEveryStart) {
  settingsAre("[Settings]\r\nLang=4\r\n");
  simulation.program().LanguageId = kDutch;
  open();
  EXPECT_EQ(setting("Settings", "Lang"), "1");
  EXPECT_EQ(simulation.program().LanguageId.text(), "1");
  EXPECT_EQ(simulation.program().texts.CaptionTests, "Tests");
}

TEST_F(Startup, ShowsOneAddressWhenTheWorldSeesTheLocalOne) {
  simulation.program().start.LocalIp = "192.0.2.20";
  simulation.program().start.PublicIp = "192.0.2.20";
  open();
  EXPECT_EQ(menu->Label4.caption.get(), "Your IP - 192.0.2.20");
}

TEST_F(Startup, ShowsTheLocalAddressWhenNobodyToldAnother) {
  simulation.program().start.LocalIp = "192.0.2.20";
  open();
  EXPECT_EQ(menu->Label4.caption.get(), "Your IP - 192.0.2.20");
}

TEST_F(Startup, ShowsBothAddressesWhenTheyDiffer) {
  simulation.program().start.LocalIp = "192.0.2.20";
  simulation.program().start.PublicIp = "198.51.100.7";
  open();
  EXPECT_EQ(menu->Label4.caption.get(), "Your IP - 198.51.100.7\r\nLocal - 192.0.2.20");
}

TEST_F(Startup, DisablesTheMtuButtonOnWindows7) {
  settingsAre("[Settings]\r\nOS=Microsoft WINDOWS 7 Home Premium\r\n");
  openWith<7>(WindowName::mtutest);
  EXPECT_FALSE(menu->Command7.enabled);
  EXPECT_EQ(simulation.program().menu.PostVistaOs, 1);
}

TEST_F(Startup, DisablesTheMtuButtonOnVista) {
  settingsAre("[Settings]\r\nOS=Windows vista\r\n");
  openWith<7>(WindowName::mtutest);
  EXPECT_FALSE(menu->Command7.enabled);
  EXPECT_EQ(simulation.program().menu.PostVistaOs, 1);
}

TEST_F(Startup, KnowsWindows7ByTheFirstWordsOfItsName) {
  settingsAre("[Settings]\r\nOS=Windows 7\r\n");
  openWith<7>(WindowName::mtutest);
  EXPECT_FALSE(menu->Command7.enabled);
}

TEST_F(Startup, KnowsVistaByTheFirstWordOfItsName) {
  settingsAre("[Settings]\r\nOS=Vista\r\n");
  openWith<7>(WindowName::mtutest);
  EXPECT_FALSE(menu->Command7.enabled);
}

TEST_F(Startup, LetsTheMtuBeSetOnOtherSystems) {
  settingsAre("[Settings]\r\nOS=00000-00000-00000-AA\r\n");
  simulation.program().menu.PostVistaOs = 1;
  openWith<7>(WindowName::mtutest);
  EXPECT_TRUE(menu->Command7.enabled);
  EXPECT_EQ(simulation.program().menu.PostVistaOs, 0);
}

TEST_F(Startup, SetsItsToolTips) {
  open();
  EXPECT_EQ(menu->Command10.toolTip.get(), "Monitor Recieved and Sent Bandwidth on Network");
  EXPECT_EQ(menu->Image1.toolTip.get(), "Click and Hold to Move");
  EXPECT_EQ(menu->Image2.toolTip.get(), "Kestrimo");
  EXPECT_EQ(menu->Image3.toolTip.get(), "Tools");
}

TEST_F(Startup, HandlesWhatHasComeInBeforeItReadsItsSettings) {
  int handled = 0;
  simulation.loop.at(0, [&] {
    ++handled;
    EXPECT_EQ(setting("Settings", "Lang"), "");
  });
  open();
  EXPECT_EQ(handled, 1);
}

TEST_F(Startup, GivesTheApplicationItsTitle) {
  simulation.desktop.setApplicationTitle("another");
  open();
  EXPECT_EQ(simulation.desktop.applicationTitle(), "Veltrin");
}

TEST_F(Startup, DoesNotShowTheListOfChanges) {
  open();
  EXPECT_THAT(simulation.shell.runs, IsEmpty());
}

TEST_F(Startup, ASecondCopySaysSoAndEnds) {
  simulation.desktop.otherWindows = {"Veltrin"};
  EXPECT_THROW(open(), ProgramEnded);
  ASSERT_EQ(simulation.desktop.messages.size(), 1U);
  EXPECT_EQ(simulation.desktop.messages[0].text, "Veltrin is already Running");
  EXPECT_EQ(simulation.desktop.messages[0].title, "Veltrin");
}

TEST_F(Startup, ASecondCopyWritesNoLanguage) {
  simulation.desktop.otherWindows = {"Veltrin"};
  EXPECT_THROW(open(), ProgramEnded);
  EXPECT_EQ(setting("Settings", "Lang"), "");
}

// --- The tools ---

TEST_F(Startup, ShowsTheToolsThatDoNotBlockIt) {
  Program& program = simulation.program();
  program.provide<Tool<1>>(WindowName::trace);
  program.provide<Tool<2>>(WindowName::indepth);
  program.provide<Tool<4>>(WindowName::pingtester);
  program.provide<Tool<10>>(WindowName::frmNetwork);
  program.provide<Tool<12>>(WindowName::frmIP);
  open();
  simulation.desktop.click(menu->Command1);
  simulation.desktop.click(menu->Command2);
  simulation.desktop.click(menu->Command4);
  simulation.desktop.click(menu->Command10);
  simulation.desktop.click(menu->Command12);
  EXPECT_TRUE(isOpen<1>());
  EXPECT_TRUE(isOpen<2>());
  EXPECT_TRUE(isOpen<4>());
  EXPECT_TRUE(isOpen<10>());
  EXPECT_TRUE(isOpen<12>());
  EXPECT_TRUE(simulation.desktop.takesInput(*menu));
}

// The second way to the Stability Test is out of sight, and wired all the same.
TEST_F(Startup, ItsHiddenButtonShowsTheStabilityTestBesideIt) {
  openWith<13>(WindowName::Stability);
  EXPECT_FALSE(menu->Command13.visible);
  menu->Command13.visible = true;
  simulation.desktop.click(menu->Command13);
  EXPECT_TRUE(isOpen<13>());
  EXPECT_TRUE(simulation.desktop.takesInput(*menu));
}

TEST_F(Startup, SpeaksEnglishWhateverWasSpokenBefore) {
  Program& program = simulation.program();
  program.LanguageId = kDutch;
  chooseLanguage(program.LanguageId, program.texts);
  open();
  EXPECT_EQ(program.LanguageId.text(), "1");
  EXPECT_EQ(program.texts.CaptionHigh, "High");
}

TEST_F(Startup, ShowsTheStabilityTestModally) {
  openWith<9>(WindowName::Stability);
  bool blocked = false;
  simulation.loop.after(100, [&] { blocked = !simulation.desktop.takesInput(*menu); });
  closeFrontAfter(200);
  simulation.desktop.click(menu->Command9);
  EXPECT_TRUE(blocked);
  EXPECT_TRUE(simulation.desktop.takesInput(*menu));
}

TEST_F(Startup, ShowsTheMtuWindowModally) {
  openWith<7>(WindowName::mtutest);
  bool blocked = false;
  simulation.loop.after(100, [&] { blocked = !simulation.desktop.takesInput(*menu); });
  closeFrontAfter(200);
  simulation.desktop.click(menu->Command7);
  EXPECT_TRUE(blocked);
}

TEST_F(Startup, ShowsTheDownloadTestModally) {
  openWith<3>(WindowName::testdl);
  bool blocked = false;
  simulation.loop.after(100, [&] { blocked = !simulation.desktop.takesInput(*menu); });
  closeFrontAfter(200);
  simulation.desktop.click(menu->Image3);
  EXPECT_TRUE(blocked);
}

TEST_F(Startup, HidesWhileTheOutageMonitorIsOpenAndComesBack) {
  openWith<8>(WindowName::MonOut);
  std::vector<std::string> meanwhile;
  simulation.loop.after(100, [&] {
    for (const Form* form : simulation.desktop.shown) meanwhile.push_back(form->name());
  });
  closeFrontAfter(200);
  simulation.desktop.click(menu->Command8);
  EXPECT_THAT(meanwhile, ElementsAre("tool"));
  EXPECT_THAT(simulation.desktop.shown, ElementsAre(menu.get()));
}

TEST_F(Startup, DisablesTheButtonsWhoseToolsAreNotThere) {
  const auto hasTool = [this](WindowName name) { return simulation.program().tools.has(name); };
  open();
  EXPECT_EQ(menu->Command8.enabled.get(), hasTool(WindowName::MonOut));
  EXPECT_EQ(menu->Command9.enabled.get(), hasTool(WindowName::Stability));
  EXPECT_EQ(menu->Command10.enabled.get(), hasTool(WindowName::frmNetwork));
  EXPECT_EQ(menu->Command12.enabled.get(), hasTool(WindowName::frmIP));
  EXPECT_EQ(menu->Image3.enabled.get(), hasTool(WindowName::testdl));
  EXPECT_TRUE(menu->Command4.enabled);
}

TEST_F(Startup, OpensTheRealPingTest) {
  open();
  simulation.desktop.click(menu->Command4);
  EXPECT_EQ(simulation.desktop.shown.back()->name(), "pingtester");
}

TEST_F(Startup, ShowsAboutModally) {
  open();
  bool blocked = false;
  simulation.loop.after(100, [&] {
    blocked =
        !simulation.desktop.takesInput(*menu) && simulation.desktop.shown.back()->name() == "About";
  });
  closeFrontAfter(200);
  simulation.desktop.click(menu->Command6);
  EXPECT_TRUE(blocked);
}

// --- The pages ---

TEST_F(Startup, OpensTheHelpPageInTheOneBrowser) {
  open();
  simulation.desktop.click(menu->Command5);
  EXPECT_THAT(simulation.shell.executions,
              ElementsAre(SimulatedShell::Execution{
                  "Open", "C:\\Program Files\\Internet Explorer\\IEXPLORE.EXE",
                  "file:///C:/Program%20Files/Veltrin/help/index.html", "", 1}));
}

TEST_F(Startup, OpensTheHelpPageThatTheInstallationNames) {
  simulation.profiles.contents[folder() + "\\installation.ini"] =
      "[Installation]\r\nHelpPageUrl=https://help.example/veltrin\r\n";
  open();
  simulation.desktop.click(menu->Command5);
  ASSERT_EQ(simulation.shell.executions.size(), 1U);
  EXPECT_EQ(simulation.shell.executions[0].parameters, "https://help.example/veltrin");
}

TEST_F(Startup, OpensTheHomePageMaximized) {
  open();
  simulation.desktop.click(menu->Image2);
  EXPECT_THAT(simulation.shell.runs,
              ElementsAre(SimulatedShell::Run{"C:\\Program Files\\Internet Explorer\\IEXPLORE.EXE "
                                              "file:///C:/Program%20Files/Veltrin/help/home.html",
                                              3}));
}

TEST_F(Startup, AMissingBrowserGivesNoMessage) {
  simulation.shell.refuse = true;
  open();
  simulation.desktop.click(menu->Command5);
  simulation.desktop.click(menu->Image2);
  EXPECT_THAT(simulation.desktop.messages, IsEmpty());
}

// --- The rated speed ---

TEST_F(Startup, StoresTheSpeedAsShownWhenItsBoxIsLeft) {
  open();
  simulation.desktop.type(menu->Combo1, "12,000");
  EXPECT_EQ(setting("Settings", "Rated Speed"), "");
  simulation.desktop.leave(menu->Combo1);
  EXPECT_EQ(setting("Settings", "Rated Speed"), "12,000");
}

TEST_F(Startup, ExitStoresTheSpeedAndClosesTheMenu) {
  open();
  simulation.desktop.type(menu->Combo1, "3,000");
  simulation.desktop.click(menu->Command3);
  EXPECT_EQ(setting("Settings", "Rated Speed"), "3,000");
  EXPECT_FALSE(menu->isLoaded());
  EXPECT_TRUE(simulation.loop.gate().hasEnded());
}

TEST_F(Startup, ClosedByItsFrameItStoresTheSpeedToo) {
  open();
  simulation.desktop.type(menu->Combo1, "3,500");
  simulation.desktop.closeWindow(*menu);
  EXPECT_EQ(setting("Settings", "Rated Speed"), "3,500");
}

// --- The end of the program ---

TEST_F(Startup, ToolsStayWhenTheMenuCloses) {
  openWith<4>(WindowName::pingtester);
  simulation.desktop.click(menu->Command4);
  simulation.desktop.click(menu->Command3);
  EXPECT_TRUE(isOpen<4>());
  EXPECT_FALSE(simulation.loop.gate().hasEnded());
}

TEST_F(Startup, TheLastToolEndsTheProgram) {
  openWith<4>(WindowName::pingtester);
  simulation.desktop.click(menu->Command4);
  simulation.desktop.click(menu->Command3);
  simulation.desktop.closeWindow(*simulation.desktop.shown.back());
  EXPECT_TRUE(simulation.loop.gate().hasEnded());
}

TEST_F(Startup, AWindowThatIsKeptOutOfSightDoesNotHoldTheProgram) {
  open();
  simulation.program().keep<Tool<20>>();
  simulation.desktop.click(menu->Command3);
  EXPECT_TRUE(simulation.loop.gate().hasEnded());
}

TEST_F(Startup, TheLastWindowEndsTheProgramWhileARoutineOfItStillWaits) {
  open();
  closeFrontAfter(500);
  EXPECT_THROW(
      {
        const EventGate::Opening opening(simulation.loop.gate());
        simulation.program().Wait(60'000);
      },
      ProgramEnded);
  EXPECT_EQ(now(), 500);
}

// --- The mouse ---

TEST_F(Startup, ThePointerIsACrossOverTheGripOnly) {
  open();
  simulation.desktop.moveMouse(menu->Image1);
  EXPECT_EQ(menu->mousePointer.get(), MousePointer::SizeAll);
  simulation.desktop.moveMouse(menu->Label1);
  EXPECT_EQ(menu->mousePointer.get(), MousePointer::Default);
  simulation.desktop.moveMouse(menu->Image1);
  simulation.desktop.moveMouse(menu->Label2);
  EXPECT_EQ(menu->mousePointer.get(), MousePointer::Default);
  simulation.desktop.moveMouse(menu->Image1);
  menu->moveMouse(MouseButton::None);
  EXPECT_EQ(menu->mousePointer.get(), MousePointer::Default);
}

}  // namespace
}  // namespace veltrin
