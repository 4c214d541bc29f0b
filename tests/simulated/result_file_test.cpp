// SPDX-License-Identifier: GPL-3.0-or-later
// Saving a result as a text file.
#include "frame/result_file.h"

#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

#include "support/simulation.h"

namespace veltrin {
namespace {

using Contents = std::map<std::string, std::string>;

const std::string kFolder = "C:\\Program Files\\Veltrin";

class ResultFile : public ::testing::Test {
 protected:
  // Saves as the Trace Route does.
  void save(const std::string& destination, const std::string& text = "text") {
    saveResult(program, {"\\Traceroute_ ", destination, "Trace Routes", "File created is "}, text);
  }

  const SimulatedDesktop::Message& lastMessage() const {
    return simulation.desktop.messages.back();
  }

  // Expects that nothing was written and the user was told of the file all the same.
  void expectNothingButTheMessage(const std::string& destination) {
    save(destination);
    EXPECT_EQ(simulation.files.contents, Contents{});
    ASSERT_EQ(simulation.desktop.messages.size(), 1U);
    EXPECT_EQ(lastMessage().text, "File created is " + kFolder + "\\Traceroute_ " + destination +
                                      "_07Mar2026_0905.txt");
  }

  Simulation simulation;
  Program& program = simulation.program();
};

TEST_F(ResultFile, BearsNamePartDestinationDayAndMinute) {
  save("near.example", "the text");
  EXPECT_EQ(simulation.files.contents,
            (Contents{{kFolder + "\\Traceroute_ near.example_07Mar2026_0905.txt", "the text"}}));
}

TEST_F(ResultFile, HasNothingBetweenNamePartAndDayWithoutADestination) {
  saveResult(program, {"\\PingTest", "", "PingTest", "File created: "}, "the text");
  EXPECT_EQ(simulation.files.contents,
            (Contents{{kFolder + "\\PingTest_07Mar2026_0905.txt", "the text"}}));
}

TEST_F(ResultFile, IsToldInAPlainMessageUnderTheWindowsTitle) {
  save("near.example");
  ASSERT_EQ(simulation.desktop.messages.size(), 1U);
  EXPECT_EQ(lastMessage().text,
            "File created is " + kFolder + "\\Traceroute_ near.example_07Mar2026_0905.txt");
  EXPECT_EQ(lastMessage().style, 0);
  EXPECT_EQ(lastMessage().title, "Trace Routes");
}

TEST_F(ResultFile, StandsBeforeItsMessageIsShown) {
  bool stoodBefore = false;
  simulation.desktop.habit.delay = 1000;
  simulation.loop.after(500, [&] { stoodBefore = !simulation.files.contents.empty(); });
  save("near.example");
  EXPECT_TRUE(stoodBefore);
}

TEST_F(ResultFile, LeavesFolderAndNameInTheProgramsValuesAndNoStream) {
  save("near.example");
  EXPECT_EQ(program.shared<ResultValues>().ResultFolder, kFolder);
  EXPECT_EQ(program.shared<ResultValues>().ResultFile,
            kFolder + "\\Traceroute_ near.example_07Mar2026_0905.txt");
  EXPECT_EQ(program.shared<ResultValues>().ResultStream, nullptr);
}

TEST_F(ResultFile, TwoSavesOfOneMinuteLeaveOneFileWithTheSecondText) {
  save("near.example", "a first and longer text");
  simulation.run(54'000);
  save("near.example", "second");
  EXPECT_EQ(simulation.files.contents,
            (Contents{{kFolder + "\\Traceroute_ near.example_07Mar2026_0905.txt", "second"}}));
}

TEST_F(ResultFile, TwoSavesOfTwoMinutesLeaveTwoFiles) {
  save("near.example", "first");
  simulation.run(60'000);
  save("near.example", "second");
  EXPECT_EQ(simulation.files.contents,
            (Contents{{kFolder + "\\Traceroute_ near.example_07Mar2026_0905.txt", "first"},
                      {kFolder + "\\Traceroute_ near.example_07Mar2026_0906.txt", "second"}}));
}

TEST_F(ResultFile, AnEmptyTextLeavesAnEmptyFile) {
  save("near.example", "");
  EXPECT_EQ(simulation.files.contents,
            (Contents{{kFolder + "\\Traceroute_ near.example_07Mar2026_0905.txt", ""}}));
}

// --- The temporary folder ---

TEST_F(ResultFile, GoesToTheTemporaryFolderWhenThatIsAskedFor) {
  program.shared<ResultValues>().UseTempFolder = 1;
  save("near.example", "the text");
  EXPECT_EQ(simulation.files.folders, (std::vector<std::string>{"c:\\Temp", "c:\\Temp\\Veltrin"}));
  EXPECT_EQ(
      simulation.files.contents,
      (Contents{{"c:\\temp\\veltrin\\Traceroute_ near.example_07Mar2026_0905.txt", "the text"}}));
  EXPECT_EQ(lastMessage().text,
            "File created is c:\\temp\\veltrin\\Traceroute_ near.example_07Mar2026_0905.txt");
}

TEST_F(ResultFile, MakesNoTemporaryFolderForAnotherValue) {
  program.shared<ResultValues>().UseTempFolder = 2;
  save("near.example");
  EXPECT_TRUE(simulation.files.folders.empty());
  EXPECT_EQ(program.shared<ResultValues>().ResultFolder, kFolder);
}

TEST_F(ResultFile, TellsOfTheFileWhenTheTemporaryFolderCannotBeMade) {
  program.shared<ResultValues>().UseTempFolder = 1;
  simulation.files.refuseOpening = true;
  save("near.example");
  EXPECT_EQ(simulation.files.contents, Contents{});
  EXPECT_EQ(lastMessage().text,
            "File created is c:\\temp\\veltrin\\Traceroute_ near.example_07Mar2026_0905.txt");
}

// --- Failures ---

TEST_F(ResultFile, AFolderThatCannotBeWrittenIsNotReported) {
  simulation.files.refuseOpening = true;
  expectNothingButTheMessage("near.example");
}

TEST_F(ResultFile, AFullDiskIsNotReported) {
  simulation.files.refuseWriting = true;
  save("near.example");
  ASSERT_EQ(simulation.desktop.messages.size(), 1U);
  EXPECT_EQ(lastMessage().text,
            "File created is " + kFolder + "\\Traceroute_ near.example_07Mar2026_0905.txt");
}

TEST_F(ResultFile, ATextThatCannotBeWrittenIsNotReportedAndItsFileIsClosed) {
  simulation.files.refuseText = true;
  save("near.example");
  EXPECT_EQ(simulation.files.closings, 1);
  EXPECT_EQ(program.shared<ResultValues>().ResultStream, nullptr);
  ASSERT_EQ(simulation.desktop.messages.size(), 1U);
}

TEST_F(ResultFile, AFullDiskLeavesTheFileOfTheSaveBefore) {
  save("near.example", "first");
  simulation.files.refuseWriting = true;
  save("near.example", "second");
  EXPECT_EQ(simulation.files.contents,
            (Contents{{kFolder + "\\Traceroute_ near.example_07Mar2026_0905.txt", "first"}}));
}

TEST_F(ResultFile, AFailedSaveWritesNothingToTheFileOfTheSaveBefore) {
  save("near.example", "first");
  simulation.files.refuseOpening = true;
  save("near.example", "second");
  EXPECT_EQ(simulation.files.contents,
            (Contents{{kFolder + "\\Traceroute_ near.example_07Mar2026_0905.txt", "first"}}));
}

// --- Destinations as a user may type them ---

TEST_F(ResultFile, ADestinationThatClimbsOutOfTheFolderSavesNothing) {
  expectNothingButTheMessage("..\\..\\x");
}

TEST_F(ResultFile, ADestinationWithASlashSavesNothing) { expectNothingButTheMessage("a/b"); }

TEST_F(ResultFile, ADestinationWithABackslashSavesNothing) { expectNothingButTheMessage("a\\b"); }

TEST_F(ResultFile, ADestinationWithAColonSavesNothing) {
  expectNothingButTheMessage("2001:db8::1");
}

TEST_F(ResultFile, ADestinationWithWildcardsSavesNothing) { expectNothingButTheMessage("*?"); }

TEST_F(ResultFile, ADestinationWithAControlCharacterSavesNothing) {
  expectNothingButTheMessage("near\r\nexample");
}

TEST_F(ResultFile, ADestinationOf300CharactersSavesNothing) {
  expectNothingButTheMessage(std::string(300, 'x'));
}

TEST_F(ResultFile, TheNameOfADeviceIsLegalInsideALongerName) {
  save("con", "the text");
  EXPECT_EQ(simulation.files.contents,
            (Contents{{kFolder + "\\Traceroute_ con_07Mar2026_0905.txt", "the text"}}));
}

TEST_F(ResultFile, TwoDotsAreLegalInsideALongerName) {
  save("..", "the text");
  EXPECT_EQ(simulation.files.contents,
            (Contents{{kFolder + "\\Traceroute_ .._07Mar2026_0905.txt", "the text"}}));
}

}  // namespace
}  // namespace veltrin
