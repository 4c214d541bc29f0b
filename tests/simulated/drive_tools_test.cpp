// SPDX-License-Identifier: GPL-3.0-or-later
// The routines about one drive.
#include <optional>

#include "simulated/drive_run.h"
#include "sysinfo/AModule1.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string kFsutil = "C:\\Windows\\System32\\fsutil.exe ";
const std::string kRefusal =
    "The FSUTIL utility requires that you have administrative privileges.\r\n";

class DriveToolsTest : public DriveRun {
 protected:
  DriveToolsTest() {
    program.start.WinDir = "C:\\Windows";
    simulation.processes.tool =
        [this](const std::string&) -> std::optional<std::vector<ToolWrite>> { return writes; };
  }

  void prints(const std::string& text) { writes = std::vector<ToolWrite>{{20, text}}; }

  // What the tool tells of a drive's room, with these figures.
  static std::string roomText(const std::string& free, const std::string& total) {
    return "Total # of free bytes        : " + free +
           "\r\nTotal # of bytes             : " + total +
           "\r\nTotal # of avail free bytes  : 7\r\n";
  }

  ReportLines commandLines() const {
    ReportLines lines;
    for (const auto& start : simulation.processes.starts) lines.push_back(start.commandLine);
    return lines;
  }

  std::optional<std::vector<ToolWrite>> writes = std::vector<ToolWrite>{};
  DriveValues& values = program.shared<DriveValues>();
};

// --- Whether a drive is dirty ---

TEST_F(DriveToolsTest, AsksTheToolWhetherADriveIsDirty) {
  form->CheckDirty("C:");
  EXPECT_THAT(commandLines(), ElementsAre(kFsutil + "dirty query C:"));
}

TEST_F(DriveToolsTest, KeepsTheLinesOfTheAnswerThatAreNotEmpty) {
  form->List1.add("old");
  form->DosBox.text = "old";
  prints("\r\nVolume - C: is NOT Dirty\r\n\r\n  \r\nend");
  form->CheckDirty("C:");
  EXPECT_EQ(form->DosBox.text.get(), "\r\nVolume - C: is NOT Dirty\r\n\r\n  \r\nend");
  EXPECT_THAT(itemsOf(form->List1), ElementsAre("Volume - C: is NOT Dirty", "  ", "end"));
}

TEST_F(DriveToolsTest, AToolThatCannotBeStartedLeavesNoLines) {
  form->List1.add("old");
  writes = std::nullopt;
  form->CheckDirty("C:");
  EXPECT_THAT(itemsOf(form->List1), IsEmpty());
}

// --- What a drive is ---

TEST_F(DriveToolsTest, AsksTheToolForAllItKnowsOfADrive) {
  prints(roomText("62354169856", "120031539200"));
  form->DriveCInfo("C:");
  EXPECT_THAT(commandLines(),
              ElementsAre(kFsutil + "volume diskfree C:", kFsutil + "fsinfo volumeinfo C:",
                          kFsutil + "repair query C:", kFsutil + "fsinfo statistics C:",
                          kFsutil + "fsinfo ntfsinfo C:"));
}

TEST_F(DriveToolsTest, KeepsTheRoomOfADriveInTheUnitOfItsFreeBytes) {
  prints(roomText("62354169856", "120031539200"));
  form->DriveCInfo("C:");
  EXPECT_EQ(values.FreeText, "62 GB");
  EXPECT_EQ(values.TotalText, "120 GB");
}

TEST_F(DriveToolsTest, KeepsTheLastAnswerAlone) {
  form->List1.add("old");
  prints(roomText("5", "6"));
  form->DriveCInfo("C:");
  EXPECT_EQ(form->DosBox.text.get(), roomText("5", "6"));
  EXPECT_THAT(itemsOf(form->List1), IsEmpty());
}

TEST_F(DriveToolsTest, ReadsLinesWithBlanksAroundThem) {
  prints("   Total # of free bytes        : 62354169856  \r\n\tx\r\n");
  form->DriveCInfo("C:");
  EXPECT_EQ(values.FreeText, "62 GB");
  EXPECT_EQ(values.TotalText, "0 GB");
}

TEST_F(DriveToolsTest, AsksTheSystemForTheClustersOfTheDrive) {
  prints(roomText("5", "6"));
  form->DriveCInfo("C:");
  EXPECT_THAT(simulation.drives.calls, ElementsAre("GetDiskFreeSpaceA C:"));
}

TEST_F(DriveToolsTest, AToolThatRefusesIsAskedForLessAndTheSystemForTheRoom) {
  simulation.drives.bytes["D:"] = {1, 120'031'539'200, 62'354'169'856};
  prints(kRefusal);
  form->DriveCInfo("D:\\");
  EXPECT_THAT(simulation.drives.calls,
              ElementsAre("GetDiskFreeSpaceExA D:", "GetDiskFreeSpaceA D:\\"));
  EXPECT_THAT(commandLines(),
              ElementsAre(kFsutil + "volume diskfree D:\\", kFsutil + "fsinfo volumeinfo D:\\"));
  EXPECT_EQ(values.FreeText, "62 GB");
  EXPECT_EQ(values.TotalText, "120 GB");
}

TEST_F(DriveToolsTest, ADriveThatNobodyKnowsHasNoRoom) {
  values.FreeBytes = 5;
  prints(kRefusal);
  form->DriveCInfo("Q:");
  EXPECT_EQ(values.FreeText, "0 KB");
  EXPECT_EQ(values.TotalText, "0 KB");
}

TEST_F(DriveToolsTest, AClosedWindowAsksNoTool) {
  program.unload<DosApp>();
  form->DriveCInfo("C:");
  form->CheckDirty("C:");
  EXPECT_THAT(commandLines(), IsEmpty());
}

// --- The free room ---

TEST_F(DriveToolsTest, KeepsTheFreeAndAllBytesOfADrive) {
  simulation.drives.bytes["C:"] = {1, 8'000'000'000'000, 5'000'000'000'001};
  FreeSpace(program, "C:");
  EXPECT_EQ(values.FreeBytes, 5'000'000'000'001U);
  EXPECT_EQ(values.TotalBytes, 8'000'000'000'000U);
}

TEST_F(DriveToolsTest, KeepsNoBytesOfADriveThatIsNotThere) {
  values.FreeBytes = 5;
  values.TotalBytes = 6;
  FreeSpace(program, "Q:");
  EXPECT_EQ(values.FreeBytes, 0U);
  EXPECT_EQ(values.TotalBytes, 0U);
}

// --- The test file ---

TEST_F(DriveToolsTest, WritesTheTestFileAndLeavesIt) {
  values.DriveLetter = "D";
  form->testdrivers();
  std::string expected;
  for (int line = 0; line < 20'480; ++line) expected += std::string(1024, ' ') + "\r\n";
  EXPECT_TRUE(simulation.files.contents["D:\\Performance.tmp"] == expected);
  EXPECT_EQ(simulation.files.closings, 1);
}

TEST_F(DriveToolsTest, AFileThatCannotBeOpenedIsNotWritten) {
  values.DriveLetter = "D";
  simulation.files.refuseOpening = true;
  EXPECT_NO_THROW(form->testdrivers());
  EXPECT_EQ(simulation.files.contents.count("D:\\Performance.tmp"), 0U);
}

TEST_F(DriveToolsTest, AFullDriveIsPassedOver) {
  values.DriveLetter = "D";
  simulation.files.refuseWriting = true;
  EXPECT_NO_THROW(form->testdrivers());
}

}  // namespace
}  // namespace veltrin
