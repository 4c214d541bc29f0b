// SPDX-License-Identifier: GPL-3.0-or-later
// A running program: the lives of its windows, its settings, its messages.
#include "frame/program.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "forms/command_button.h"
#include "forms/label.h"
#include "forms/text_box.h"
#include "frame/mainmod.h"
#include "frame/mcolor.h"
#include "support/simulation.h"
#include "text/statement.h"

namespace veltrin {
namespace {

using Texts = std::vector<std::string>;

// A window that writes down what happens to it.
class LoggingWindow : public Form {
 public:
  LoggingWindow(const std::string& name, Program& program) : Form(name, program) {
    own("Command1", Command1);
    own("Text1", Text1);
    own("Label1", Label1);
  }

  CommandButton Command1;
  TextBox Text1;
  Label Label1;
  EventRoutine onLoad;
  EventRoutine onUnload;

 protected:
  void Form_Load() override {
    if (onLoad) onLoad();
  }
  void Form_Unload() override {
    if (onUnload) onUnload();
  }
};

class MainWindow : public LoggingWindow {
 public:
  explicit MainWindow(Program& program) : LoggingWindow("MainWindow", program) {}
};

class ToolWindow : public LoggingWindow {
 public:
  explicit ToolWindow(Program& program) : LoggingWindow("ToolWindow", program) {}
};

// Shows the tool window and goes away while it loads, as a splash screen does.
class SplashWindow : public Form {
 public:
  explicit SplashWindow(Program& program) : Form("SplashWindow", program), program_(program) {}

 private:
  void Form_Load() override {
    program_.show<ToolWindow>();
    unload();
  }
  Program& program_;
};

class Windows : public ::testing::Test {
 protected:
  Simulation simulation;
  SimulatedLoop& loop = simulation.loop;
  Program& program = simulation.program();
  std::shared_ptr<MainWindow> main = program.show<MainWindow>();
};

// --- Show ---

TEST_F(Windows, ShowLoadsAWindowAndPutsItOnTheScreen) {
  const auto tool = program.show<ToolWindow>();
  EXPECT_TRUE(tool->isLoaded());
  EXPECT_TRUE(program.isLoaded<ToolWindow>());
  EXPECT_EQ(simulation.desktop.shown, (std::vector<Form*>{main.get(), tool.get()}));
}

TEST_F(Windows, ShowingALoadedWindowBringsTheSameOneToTheFront) {
  const auto tool = program.show<ToolWindow>();
  EXPECT_EQ(program.show<MainWindow>(), main);
  EXPECT_EQ(simulation.desktop.shown, (std::vector<Form*>{tool.get(), main.get()}));
}

TEST_F(Windows, ShowingAnUnloadedWindowMakesANewOne) {
  const auto tool = program.show<ToolWindow>();
  tool->Text1.text = "typed";
  tool->unload();
  const auto next = program.show<ToolWindow>();
  EXPECT_NE(next, tool);
  EXPECT_EQ(next->Text1.text.get(), "");
}

TEST_F(Windows, AWindowThatUnloadsItselfWhileItLoadsIsNotShown) {
  const auto splash = program.show<SplashWindow>();
  EXPECT_FALSE(splash->isLoaded());
  EXPECT_FALSE(program.isLoaded<SplashWindow>());
  ASSERT_EQ(simulation.desktop.shown.size(), 2U);
  EXPECT_EQ(simulation.desktop.shown.back()->name(), "ToolWindow");
}

// --- Unload ---

TEST_F(Windows, UnloadRunsTheUnloadRoutineAndTakesTheWindowOffTheScreen) {
  const auto tool = program.show<ToolWindow>();
  bool loadedMeanwhile = false;
  tool->onUnload = [&] { loadedMeanwhile = tool->isLoaded(); };
  tool->unload();
  EXPECT_TRUE(loadedMeanwhile);
  EXPECT_FALSE(tool->isLoaded());
  EXPECT_FALSE(program.isLoaded<ToolWindow>());
  EXPECT_EQ(simulation.desktop.shown, std::vector<Form*>{main.get()});
}

TEST_F(Windows, UnloadingTwiceRunsTheUnloadRoutineOnce) {
  const auto tool = program.show<ToolWindow>();
  int unloads = 0;
  tool->onUnload = [&] { ++unloads; };
  tool->unload();
  tool->unload();
  EXPECT_EQ(unloads, 1);
}

TEST_F(Windows, UnloadingAnewWhileTheUnloadRoutineWaitsRunsItOnceAndToItsEnd) {
  const auto tool = program.show<ToolWindow>();
  Texts log;
  tool->onUnload = [&] {
    log.push_back("starts");
    program.Wait(1000);
    log.push_back("ends");
  };
  loop.at(100, [&] { main->unload(); });
  loop.at(200, [&] { simulation.desktop.closeWindow(*tool); });
  loop.at(0, [&] { simulation.desktop.closeWindow(*tool); });
  loop.run(5000);
  EXPECT_EQ(log, (Texts{"starts", "ends"}));
  EXPECT_TRUE(loop.gate().hasEnded());
}

TEST_F(Windows, TheCloseButtonOfTheFrameUnloads) {
  const auto tool = program.show<ToolWindow>();
  simulation.desktop.closeWindow(*tool);
  EXPECT_FALSE(program.isLoaded<ToolWindow>());
}

TEST_F(Windows, AnUnloadedWindowsEventsAreNotDelivered) {
  const auto tool = program.show<ToolWindow>();
  Texts events;
  tool->Command1.click = [&] { events.push_back("click"); };
  tool->Text1.change = [&] { events.push_back("change"); };
  tool->unload();
  tool->Command1.press();
  tool->Text1.text = "typed";
  EXPECT_EQ(events, Texts{});
}

TEST_F(Windows, AnUnloadedWindowIsGoneWhenNobodyUsesIt) {
  const std::weak_ptr<ToolWindow> tool = program.show<ToolWindow>();
  tool.lock()->unload();
  EXPECT_TRUE(tool.expired());
}

TEST_F(Windows, ARoutineThatOutlivesItsWindowReadsAndWritesItsValues) {
  const std::weak_ptr<ToolWindow> tool = program.show<ToolWindow>();
  ToolWindow& window = *tool.lock();
  std::string read;
  bool alive = false;
  window.Command1.click = [&] {
    program.Wait(1000);
    window.Label1.caption = "written behind the end";
    read = window.Label1.caption;
    alive = !tool.expired();
  };
  loop.at(0, [&] { simulation.desktop.click(window.Command1); });
  loop.at(500, [&] { simulation.desktop.closeWindow(window); });
  loop.run(600);
  EXPECT_FALSE(program.isLoaded<ToolWindow>());
  loop.run(2000);
  EXPECT_EQ(read, "written behind the end");
  EXPECT_TRUE(alive);
  EXPECT_TRUE(tool.expired());
}

TEST_F(Windows, AWindowShownAnewIsAnotherThanTheOneWhoseRoutineStillRuns) {
  const auto first = program.show<ToolWindow>();
  first->Command1.click = [&] {
    program.Wait(1000);
    first->Label1.caption = "of the first";
  };
  loop.at(0, [&] { simulation.desktop.click(first->Command1); });
  loop.at(500, [&] {
    first->unload();
    program.show<ToolWindow>()->Label1.caption = "of the second";
  });
  loop.run(2000);
  EXPECT_EQ(first->Label1.caption.get(), "of the first");
  EXPECT_EQ(program.show<ToolWindow>()->Label1.caption.get(), "of the second");
}

// --- Modal windows ---

TEST_F(Windows, AModalShowReturnsWhenTheWindowIsUnloaded) {
  std::int64_t returned = 0;
  loop.at(100, [&] {
    program.showModal<ToolWindow>();
    returned = loop.milliseconds();
  });
  loop.at(700, [&] { program.show<ToolWindow>()->unload(); });
  loop.run(2000);
  EXPECT_EQ(returned, 700);
}

TEST_F(Windows, EventsAreDeliveredDuringAModalShow) {
  std::int64_t delivered = 0;
  loop.at(100, [&] { program.showModal<ToolWindow>(); });
  loop.at(300, [&] { delivered = loop.milliseconds(); });
  loop.at(700, [&] { program.show<ToolWindow>()->unload(); });
  loop.run(2000);
  EXPECT_EQ(delivered, 300);
}

TEST_F(Windows, NoOtherWindowTakesInputDuringAModalShow) {
  int clicks = 0;
  main->Command1.click = [&] { ++clicks; };
  const auto click = [&] { simulation.desktop.click(main->Command1); };
  loop.at(100, [&] { program.showModal<ToolWindow>(); });
  loop.at(300, click);
  loop.at(700, [&] { program.show<ToolWindow>()->unload(); });
  loop.run(800);
  EXPECT_EQ(clicks, 0);
  click();
  EXPECT_EQ(clicks, 1);
}

TEST_F(Windows, AModalShowOfAWindowThatUnloadsItselfWhileItLoadsReturnsAtOnce) {
  program.showModal<SplashWindow>();
  EXPECT_EQ(loop.milliseconds(), 0);
}

TEST_F(Windows, AModalShowTellsOfTheUnloadBeforeItReturns) {
  Texts told;
  loop.at(100, [&] {
    program.showModal<ToolWindow>([&] { told.push_back("unloaded"); });
    told.push_back("returned");
  });
  loop.at(700, [&] { program.unload<ToolWindow>(); });
  loop.run(2000);
  EXPECT_EQ(told, (Texts{"unloaded", "returned"}));
}

// The routine of the window that goes on lies above the modal show on the stack.
TEST_F(Windows, AModalShowTellsOfTheUnloadWhileARoutineOfTheWindowGoesOn) {
  std::int64_t told = 0;
  std::int64_t returned = 0;
  loop.at(100, [&] {
    program.showModal<ToolWindow>([&] { told = loop.milliseconds(); });
    returned = loop.milliseconds();
  });
  loop.at(200, [&] {
    const auto tool = program.show<ToolWindow>();
    tool->Command1.click = [&] { program.Wait(1000); };
    tool->Command1.press();
  });
  loop.at(700, [&] { program.unload<ToolWindow>(); });
  loop.run(2000);
  EXPECT_EQ(told, 700);
  EXPECT_EQ(returned, 1200);
}

TEST_F(Windows, AModalShowTellsOfAWindowThatUnloadsItselfWhileItLoads) {
  int told = 0;
  program.showModal<SplashWindow>([&] { ++told; });
  EXPECT_EQ(told, 1);
}

TEST_F(Windows, ASecondModalShowOfAWindowKeepsWhatTheFirstOneWantsToBeTold) {
  int told = 0;
  loop.at(100, [&] { program.showModal<ToolWindow>([&] { ++told; }); });
  loop.at(200, [&] { program.showModal<ToolWindow>(); });
  loop.at(700, [&] { program.unload<ToolWindow>(); });
  loop.run(2000);
  EXPECT_EQ(told, 1);
}

// --- The program's end ---

TEST_F(Windows, TheProgramGoesOnWhileAWindowIsLoaded) {
  const auto tool = program.show<ToolWindow>();
  main->unload();
  EXPECT_FALSE(loop.gate().hasEnded());
}

TEST_F(Windows, TheProgramEndsWithItsLastWindow) {
  main->unload();
  EXPECT_TRUE(loop.gate().hasEnded());
}

TEST_F(Windows, AWindowShownByAnUnloadRoutineKeepsTheProgramAlive) {
  main->onUnload = [&] { program.show<ToolWindow>(); };
  main->unload();
  EXPECT_FALSE(loop.gate().hasEnded());
}

TEST_F(Windows, TheProgramEndsByItsOwnWordEvenOutsideTheGate) {
  EXPECT_THROW(program.end(), ProgramEnded);
  EXPECT_TRUE(loop.gate().hasEnded());
}

TEST_F(Windows, AKeptWindowDoesNotKeepTheProgramRunning) {
  const auto kept = program.keep<ToolWindow>();
  EXPECT_TRUE(kept->isLoaded());
  main->close();
  EXPECT_TRUE(loop.gate().hasEnded());
}

TEST_F(Windows, AKeptWindowThatIsShownLaterKeepsTheProgramRunning) {
  const auto kept = program.keep<ToolWindow>();
  program.show<ToolWindow>();
  main->close();
  EXPECT_FALSE(loop.gate().hasEnded());
}

TEST_F(Windows, TheEndUnwindsEveryRoutineThatWaits) {
  Texts reached;
  main->Command1.click = [&] {
    program.Wait(10'000);
    reached.push_back("behind a wait");
  };
  loop.at(100, [&] { simulation.desktop.click(main->Command1); });
  loop.at(200, [&] {
    program.showModal<ToolWindow>();
    reached.push_back("behind a modal show");
  });
  loop.at(300, [&] {
    simulation.desktop.habit.delay = 10'000;
    program.MsgBox("text");
    reached.push_back("behind a message");
  });
  loop.at(1400, [&] {
    program.show<ToolWindow>()->unload();
    main->unload();
  });
  loop.run(60'000);
  EXPECT_EQ(reached, Texts{});
  EXPECT_EQ(loop.milliseconds(), 1400);
}

TEST_F(Windows, TheRoutineThatEndsTheProgramRunsOnUntilItPumps) {
  Texts reached;
  loop.at(100, [&] {
    main->unload();
    reached.push_back("behind the unload");
    loop.DoEvents();
    reached.push_back("behind the yield");
  });
  loop.run(1000);
  EXPECT_EQ(reached, Texts{"behind the unload"});
}

// --- Values of the program ---

TEST_F(Windows, AnUnloadRoutineThatFailedRunsAgainAtTheNextUnload) {
  int unloads = 0;
  main->onUnload = [&] {
    if (++unloads == 1) throw StatementFailed("The first one fails");
  };
  EXPECT_THROW(main->end(), StatementFailed);
  EXPECT_TRUE(main->isLoaded());
  EXPECT_TRUE(main->end());
  EXPECT_FALSE(main->isLoaded());
  EXPECT_EQ(unloads, 2);
}

TEST_F(Windows, TheMouseOverAControlWithoutARoutineDoesNothing) {
  EXPECT_NO_THROW(main->Label1.moveMouse(MouseButton::None));
}

TEST_F(Windows, AnInvisibleOrDisabledControlDoesNotNoticeTheMouse) {
  int moves = 0;
  main->Label1.mouseMove = [&](MouseButton) { ++moves; };
  main->Label1.visible = false;
  main->Label1.moveMouse(MouseButton::None);
  main->Label1.visible = true;
  main->Label1.enabled = false;
  main->Label1.moveMouse(MouseButton::None);
  EXPECT_EQ(moves, 0);
  main->Label1.enabled = true;
  main->Label1.moveMouse(MouseButton::None);
  EXPECT_EQ(moves, 1);
}

TEST(Controls, OutsideAnyWindowRunTheirRoutines) {
  TextBox box;
  int changes = 0;
  box.change = [&] { ++changes; };
  box.text = "typed";
  EXPECT_EQ(changes, 1);
}

TEST(ProgramStart, KnowsItsFolderAndItsSettingsFile) {
  Simulation simulation;
  EXPECT_EQ(simulation.program().programFolder, "C:\\Program Files\\Veltrin");
  EXPECT_EQ(simulation.program().settingsFile, "C:\\Program Files\\Veltrin\\Files\\Veltrin.dat");
}

TEST(ProgramStart, SpeaksNoLanguageYet) {
  Simulation simulation;
  const Program program(simulation.platform);
  EXPECT_TRUE(program.LanguageId.isEmpty());
  EXPECT_EQ(program.texts.CaptionTests, "");
}

TEST(ProgramStart, TakesThePlaceToProbeFromTheInstallation) {
  Simulation simulation;
  simulation.profiles.contents["C:\\Program Files\\Veltrin\\installation.ini"] =
      "[Installation]\r\nProbeHost=probe.example\r\n";
  EXPECT_EQ(simulation.program().installation.ProbeHost, "probe.example");
}

TEST(ProgramStart, HasAPlaceToProbeWithoutAnInstallation) {
  Simulation simulation;
  EXPECT_EQ(simulation.program().installation.ProbeHost, "www.wikipedia.org");
}

TEST(ProgramSettings, StandInItsFileBySectionAndKey) {
  Simulation simulation;
  simulation.program().writeSetting("Trace", "Trace1", "near.example");
  EXPECT_EQ(simulation.settings(), "[Trace]\r\nTrace1=near.example\r\n");
  EXPECT_EQ(simulation.program().readSetting("Trace", "Trace1"), "near.example");
}

TEST(ProgramMessages, ArePlainUnderTheApplicationsTitleWhenNothingElseIsSaid) {
  Simulation simulation;
  simulation.program().MsgBox("text");
  ASSERT_EQ(simulation.desktop.messages.size(), 1U);
  EXPECT_EQ(simulation.desktop.messages[0].text, "text");
  EXPECT_EQ(simulation.desktop.messages[0].style, 0);
  EXPECT_EQ(simulation.desktop.messages[0].title, "Veltrin");
}

TEST(ProgramMessages, ReturnTheUsersAnswer) {
  Simulation simulation;
  simulation.desktop.answers = {{kAnswerYes, 0}, {kAnswerNo, 0}};
  EXPECT_EQ(simulation.program().MsgBox("sure?", kMessageYesNo, "Question"), 6);
  EXPECT_EQ(simulation.program().MsgBox("sure?", kMessageYesNo, "Question"), 7);
  EXPECT_EQ(simulation.desktop.messages[0].style, 4);
  EXPECT_EQ(simulation.desktop.messages[0].title, "Question");
}

// --- Small services ---

TEST_F(Windows, OnTopKeepsAWindowAboveAllOthersUntilTheFlagIsZero) {
  onTop(simulation.desktop, *main, -1);
  EXPECT_EQ(simulation.desktop.topmost.count(main.get()), 1U);
  onTop(simulation.desktop, *main, 0);
  EXPECT_EQ(simulation.desktop.topmost.count(main.get()), 0U);
}

TEST_F(Windows, MenusAreOfTheColourOfTheButtonsForOptionOne) {
  menuColour(simulation.desktop, *main, 1);
  EXPECT_EQ(simulation.desktop.menuColours.at(main.get()), (Colour{189, 183, 149}));
}

TEST_F(Windows, MenusAreBlackForAnotherOption) {
  menuColour(simulation.desktop, *main, 0);
  EXPECT_EQ(simulation.desktop.menuColours.at(main.get()), (Colour{0, 0, 0}));
}

}  // namespace
}  // namespace veltrin
