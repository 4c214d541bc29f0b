// SPDX-License-Identifier: GPL-3.0-or-later
// What the drive reports find out, and what they write to the settings.
#include "simulated/drive_run.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DriveWalkTest : public DriveRun {
 protected:
  // Drives C and D on one disk.
  void addTwoOnOneDisk() {
    addDrive("C:", 12, "System", 100);
    addDrive("D:", 12, "Data", 200);
    addDisk(0, 2, 300 * kCylinder);
  }
};

// --- The chain ---

TEST_F(DriveWalkTest, AModeOfOneEndsBehindTheFirst) {
  addTwoOnOneDisk();
  runChain("1");
  EXPECT_THAT(simulation.wmi.queries, ElementsAre(kDrivesQuery, kDisksQuery));
  EXPECT_THAT(lines(), IsEmpty());
  EXPECT_EQ(simulation.settings(), "");
}

TEST_F(DriveWalkTest, EveryOtherModeGoesOnToTheLast) {
  for (const Loose& mode : {Loose("2"), Loose("0"), Loose(""), Loose("x"), Loose(3)}) {
    simulation.wmi.queries.clear();
    runChain(mode);
    EXPECT_THAT(simulation.wmi.queries, ElementsAre(kDrivesQuery, kDisksQuery, kDrivesQuery,
                                                    kDisksQuery, kDrivesQuery, kDisksQuery))
        << mode.text();
  }
}

TEST_F(DriveWalkTest, TheSecondGoesOnToTheThird) {
  form->Test2();
  EXPECT_EQ(simulation.wmi.queries.size(), 4U);
}

// --- Logical drives ---

TEST_F(DriveWalkTest, AsksForTheClustersOfEachRoot) {
  addTwoOnOneDisk();
  runChain("1");
  EXPECT_THAT(simulation.drives.calls,
              ElementsAre("GetDiskFreeSpaceA C:\\", "GetDiskFreeSpaceA D:\\"));
}

TEST_F(DriveWalkTest, EstimatesASizeFromTwoCylindersAndABit) {
  addDrive("C:", 12, "System", 0);
  simulation.drives.clusters["C:\\"] = {8, 512, 0, 4096};
  runChain("1");
  EXPECT_EQ(form->Drives.slot(1).DriveSize, Loose(16'450'560));
}

TEST_F(DriveWalkTest, EntersDrivesInTheOrderOfTheService) {
  addDrive("D:", 11, WmiValue(), 0);
  addDrive("C:", 12, "System", 100);
  runChain("1");
  EXPECT_EQ(form->Drives.slot(1).DriveCaption, "D:");
  EXPECT_EQ(form->Drives.slot(1).DriveLabel, "");
  EXPECT_TRUE(form->Drives.slot(1).DriveMedia.equals(11));
  EXPECT_EQ(form->Drives.slot(2).DriveCaption, "C:");
  EXPECT_EQ(form->Drives.slot(2).DriveLabel, "System");
}

TEST_F(DriveWalkTest, OnlyFixedDrivesAreCandidates) {
  int media = 0;
  for (const char* caption : {"A:", "B:", "C:", "D:"}) addDrive(caption, 9 + media++, "x", 0);
  runChain("1");
  EXPECT_THAT(itemsOf(form->List2), ElementsAre("4"));
}

TEST_F(DriveWalkTest, ADriveWithoutAMediumKeepsTheSizesOfItsSlot) {
  addDrive("C:", 12, "System", 100);
  runChain("1");
  simulation.drives.clusters.clear();
  runChain("1");
  EXPECT_EQ(form->Drives.slot(1).DriveSize, Loose(100 * kCylinder));
}

TEST_F(DriveWalkTest, ADriveWithoutAMediumDoesNotTakeTheSizesOfTheOneBefore) {
  addDrive("C:", 12, "System", 100);
  addDrive("D:", 11, WmiValue(), 0);
  runChain("1");
  EXPECT_TRUE(form->Drives.slot(2).DriveSize.isEmpty());
}

TEST_F(DriveWalkTest, SlotsOfAnEarlierRunStay) {
  addTwoOnOneDisk();
  runChain("1");
  drives = {drive("E:", 12, "Other")};
  answerQueries();
  runChain("1");
  EXPECT_EQ(form->Drives.slot(1).DriveCaption, "E:");
  EXPECT_EQ(form->Drives.slot(2).DriveCaption, "D:");
  EXPECT_EQ(form->Drives.slot(2).DriveSize, Loose(200 * kCylinder));
}

TEST_F(DriveWalkTest, TheListOfLettersGrowsWithEachRunOfTheSecond) {
  addDrive("c:", 12, "System", 100);
  addDrive("D:", 11, "", 0);
  runChain("1");
  EXPECT_THAT(itemsOf(form->List8), IsEmpty());
  runChain("2");
  EXPECT_THAT(itemsOf(form->List8), ElementsAre("C1", "D2"));
  form->Test2();
  EXPECT_THAT(itemsOf(form->List8), ElementsAre("C1", "D2", "C1", "D2"));
}

TEST_F(DriveWalkTest, ATwentySeventhDriveLeavesTheTableAsItIs) {
  for (int number = 0; number < 26; ++number) {
    addDrive(std::string(1, static_cast<char>('A' + number)) + ":", 11, "x", 0);
  }
  addDrive("[:", 12, "Past", 300);
  runChain("1");
  EXPECT_EQ(form->Drives.slot(26).DriveCaption, "Z:");
  EXPECT_EQ(form->Drives.slot(26).DriveLabel, "x");
  EXPECT_TRUE(form->Drives.slot(26).DriveSize.isEmpty());
  EXPECT_EQ(form->Drives.slot(1).DriveCaption, "A:");
}

TEST_F(DriveWalkTest, ATwentySeventhDriveEndsTheLastOfTheChainThere) {
  for (int number = 0; number < 27; ++number) {
    addDrive(std::string(1, static_cast<char>('A' + number)) + ":", 11, "", 0);
  }
  runChain("2");
  ASSERT_FALSE(lines().empty());
  EXPECT_EQ(lines().back(), "8 drive: Z:   (Empty)");
}

// --- Disks ---

TEST_F(DriveWalkTest, RecordsAMatchInTheListsAndTakesItsDrivesOffTheCandidates) {
  addDrive("C:", 12, "System", 100);
  addDrive("D:", 12, "Data", 200);
  addDrive("E:", 12, "Else", 400);
  addDisk(3, 2, 300 * kCylinder);
  runChain("1");
  EXPECT_THAT(itemsOf(form->List5), ElementsAre("3"));
  EXPECT_THAT(itemsOf(form->List4), ElementsAre("C", "D"));
  EXPECT_THAT(itemsOf(form->List2), ElementsAre("3"));
}

TEST_F(DriveWalkTest, OnlyTheFirstDriveOfAMatchTakesThePicture) {
  addTwoOnOneDisk();
  runChain("1");
  EXPECT_EQ(iconOf(1), "15");
  EXPECT_EQ(iconOf(2), "");
}

struct PictureCase {
  const char* interfaceType;
  const char* label;
  const char* first;  // the picture that the first of the chain finds
  const char* last;   // and the last
};

TEST_F(DriveWalkTest, ChoosesThePictureByTheInterfaceAndTheLabel) {
  for (const PictureCase& each : {
           PictureCase{"IDE", "System", "15", "15"},
           PictureCase{"USB", "RAMDisk", "34", "34"},
           PictureCase{"usb 2", "System", "34", "15"},
           PictureCase{"IDE", "My RAMDisk", "15", "7"},
           PictureCase{"IDE", "RAM 1", "15", "7"},
           PictureCase{"IDE", "RAMDISK", "15", "15"},
           PictureCase{"IDE", "RAM", "15", "15"},
       }) {
    drives.clear();
    disks.clear();
    addDrive("C:", 12, each.label, 100);
    addDisk(0, 1, 100 * kCylinder, each.interfaceType);
    runChain("1");
    EXPECT_EQ(iconOf(1), each.first) << each.interfaceType << " " << each.label;
    runChain("2");
    EXPECT_EQ(iconOf(1), each.last) << each.interfaceType << " " << each.label;
  }
}

TEST_F(DriveWalkTest, FourPartitionsAreFoundBySecondAlone) {
  for (const char* caption : {"C:", "D:", "E:", "F:"}) addDrive(caption, 12, "x", 100);
  addDisk(0, 4, 400 * kCylinder);
  runChain("1");
  EXPECT_THAT(itemsOf(form->List4), IsEmpty());
  form->Test2();
  EXPECT_EQ(setting("Drive0"), "CDEF");
  EXPECT_EQ(setting("Label0"), "x|x|x|x");
  EXPECT_THAT(itemsOf(form->List4), IsEmpty());  // of the third, which ran last
}

TEST_F(DriveWalkTest, ADiskThreeCylindersLargerThanOneOfTwoDrivesIsFoundByThatOne) {
  addDrive("C:", 12, "System", 100);
  addDrive("D:", 12, "Data", 200);
  addDisk(0, 1, 203 * kCylinder);
  form->Test2();
  EXPECT_EQ(setting("Drive0"), "D");
  EXPECT_EQ(iconOf(2), "15");
}

TEST_F(DriveWalkTest, TheOnlyCandidateOfADiskLeavesItsPictureAtTheDriveThatWasTriedLast) {
  addDrive("C:", 12, "System", 100);
  addDrive("D:", 12, "Data", 200);
  addDisk(0, 1, 100 * kCylinder);
  addDisk(1, 5, 999 * kCylinder, "USB");
  runChain("1");
  EXPECT_EQ(iconOf(1), "34");
  EXPECT_EQ(iconOf(2), "");
  EXPECT_THAT(itemsOf(form->List2), ElementsAre("2"));
  EXPECT_THAT(itemsOf(form->List4), ElementsAre("C"));
  EXPECT_THAT(itemsOf(form->List5), ElementsAre("0"));
}

TEST_F(DriveWalkTest, TheOnlyCandidateOfADiskIsNotWritten) {
  addDrive("C:", 12, "System", 100);
  addDisk(0, 5, 999 * kCylinder);
  form->Test2();
  EXPECT_EQ(simulation.settings(),
            "[System]\r\n"
            "C Drive Label=HDR\r\n"
            "C Drive Size=822,528,000\r\n");
  EXPECT_EQ(form->Drives.PhysicalLetters(0), "");
}

// --- Settings ---

TEST_F(DriveWalkTest, WritesTheKeysOfDrivesAndDisksInTheirOrder) {
  addTwoOnOneDisk();
  addDrive("E:", 11, "Film", 0);
  form->Test2();
  EXPECT_EQ(simulation.settings(),
            "[System]\r\n"
            "C Drive Label=HDR\r\n"
            "C Drive Size=822,528,000\r\n"
            "D Drive Label=HDR\r\n"
            "D Drive Size=1,645,056,000\r\n"
            "E Drive Label=DVD\r\n"
            "E Drive Size=0\r\n"
            "Drive0=CD\r\n"
            "Label0=System|Data\r\n"
            "Type0=DVD\r\n");
}

TEST_F(DriveWalkTest, WritesTheLabelOfADriveAndThenTheWordForItsKind) {
  addDrive("C:", 12, "System", 100);
  simulation.keepJournal();
  form->Test2();
  Journal writes;
  std::copy_if(simulation.journal.begin(), simulation.journal.end(), std::back_inserter(writes),
               [](const std::string& entry) { return entry.starts_with("write "); });
  EXPECT_THAT(writes, ElementsAre("write System/C Drive Label=System",      //
                                  "write System/C Drive Size=822,528,000",  //
                                  "write System/C Drive Label=HDR",         //
                                  "write System/C Drive Label=System",      // the third does
                                  "write System/C Drive Size=822,528,000",  // the same
                                  "write System/C Drive Label=HDR"));
}

TEST_F(DriveWalkTest, TakesTheLettersOfDriveKeysAsTheyStand) {
  addDrive("c:", 12, "System", 100);
  form->Test2();
  EXPECT_EQ(simulation.settings().substr(0, 27), "[System]\r\nc Drive Label=HDR");
}

TEST_F(DriveWalkTest, ADriveWithoutAWordTakesThatOfTheDriveBefore) {
  addDrive("C:", 11, "Film", 0);
  addDrive("D:", 2, "Stick", 0);
  form->Test2();
  EXPECT_EQ(setting("D Drive Label"), "DVD");
}

TEST_F(DriveWalkTest, TheWordOfTheLastRunIsThatOfTheFirstDriveWithoutOne) {
  addDrive("C:", 2, "Stick", 0);
  form->Test2();
  EXPECT_EQ(setting("C Drive Label"), "");
  form->Drives.typeWord = "FLP";
  form->Test2();
  EXPECT_EQ(setting("C Drive Label"), "FLP");
}

TEST_F(DriveWalkTest, ADriveOnAUsbDiskHasItsWordFromTheRunBefore) {
  addDrive("C:", 12, "Stick", 100);
  addDisk(0, 1, 100 * kCylinder, "USB");
  form->Test2();
  EXPECT_EQ(setting("C Drive Label"), "USB");  // the third follows the second
  EXPECT_EQ(setting("Type0"), "USB");
}

TEST_F(DriveWalkTest, WritesTheTypeOfARamDrive) {
  addDrive("R:", 12, "RAMDisk", 100);
  addDisk(2, 1, 100 * kCylinder);
  form->Test2();
  EXPECT_EQ(setting("Type2"), "RAM");
}

TEST_F(DriveWalkTest, ADiskThatNoLongerMatchesKeepsItsLetters) {
  addTwoOnOneDisk();
  form->Test2();
  disks.clear();
  answerQueries();
  form->Test2();
  EXPECT_EQ(form->Drives.PhysicalLetters(0), "CD");
}

TEST_F(DriveWalkTest, AnotherWindowBeginsWithAnEmptyTable) {
  addTwoOnOneDisk();
  form->Test2();
  program.unload<DosApp>();
  const auto other = program.keep<DosApp>();
  EXPECT_EQ(other->Drives.slot(1).DriveCaption, "");
  EXPECT_EQ(other->Drives.PhysicalLetters(0), "");
  EXPECT_EQ(other->List8.count(), 0U);
}

// --- Failures ---

TEST_F(DriveWalkTest, WithoutTheServiceTheTableStaysEmptyAndNoKeyIsWritten) {
  simulation.wmi.answers.clear();
  runChain("2");
  EXPECT_EQ(form->Drives.slot(1).DriveCaption, "");
  EXPECT_EQ(simulation.settings(), "");
}

TEST_F(DriveWalkTest, WithoutAnAnswerAboutDisksTheDrivesAreEnteredAndWritten) {
  addTwoOnOneDisk();
  simulation.wmi.answers.erase(kDisksQuery);
  form->Test2();
  EXPECT_EQ(simulation.settings(),
            "[System]\r\n"
            "C Drive Label=HDR\r\n"
            "C Drive Size=822,528,000\r\n"
            "D Drive Label=HDR\r\n"
            "D Drive Size=1,645,056,000\r\n");
}

TEST_F(DriveWalkTest, WithoutAnAnswerAboutDrivesTheDisksAreTriedWithNone) {
  addTwoOnOneDisk();
  simulation.wmi.answers.erase(kDrivesQuery);
  form->Test2();
  EXPECT_THAT(simulation.wmi.queries, ElementsAre(kDrivesQuery, kDisksQuery, kDrivesQuery));
  EXPECT_EQ(simulation.settings(), "");
}

TEST_F(DriveWalkTest, SettingsThatCannotBeWrittenDoNotEndTheChain) {
  addTwoOnOneDisk();
  simulation.profiles.refuseWriting = true;
  form->Test2();
  EXPECT_EQ(form->Drives.PhysicalLetters(0), "CD");
  EXPECT_EQ(lines().back(), "0 drive:     TracksPerCylinder: 255");
}

TEST_F(DriveWalkTest, ATwentySeventhDriveFallsIntoTheBodiesOfAllTestsOfItsKind) {
  for (int number = 0; number < 27; ++number) {
    addDrive(std::string(1, static_cast<char>('A' + number)) + ":", 11, "x", 0);
  }
  form->Test2();
  EXPECT_EQ(setting("Z Drive Label"), "DVD");
  EXPECT_EQ(setting("[ Drive Label"), "USB");
  EXPECT_EQ(simulation.settings().find("[ Drive Size"), std::string::npos);
  EXPECT_EQ(form->List8.item(26), "[27");
}

TEST_F(DriveWalkTest, AMissingCaptionDropsWhatItStandsIn) {
  addDrive("C:", 12, "Old", 100);
  runChain("1");
  drives[0].properties.erase("Caption");
  drives[0].properties["VolumeName"] = WmiValue("New");
  answerQueries();
  form->Test2();
  EXPECT_EQ(form->Drives.slot(1).DriveCaption, "C:");
  EXPECT_EQ(form->Drives.slot(1).DriveLabel, "New");
  EXPECT_EQ(simulation.settings(), "");
  EXPECT_THAT(itemsOf(form->List8), IsEmpty());
}

TEST_F(DriveWalkTest, AMissingMediaTypeMakesADriveACandidate) {
  addDrive("C:", 11, "x", 100);
  drives[0].properties.erase("MediaType");
  answerQueries();
  runChain("1");
  EXPECT_THAT(itemsOf(form->List2), ElementsAre("1"));
}

TEST_F(DriveWalkTest, AMissingInterfaceFallsIntoTheBodyOfItsFirstTest) {
  addDrive("C:", 12, "System", 100);
  addDisk(0, 1, 100 * kCylinder);
  disks[0].properties.erase("InterfaceType");
  answerQueries();
  runChain("1");
  EXPECT_EQ(iconOf(1), "34");
}

TEST_F(DriveWalkTest, ADiskWithoutAnIndexIsFoundAndNotWritten) {
  addDrive("C:", 12, "System", 100);
  addDisk(0, 1, 100 * kCylinder);
  disks[0].properties.erase("Index");
  answerQueries();
  runChain("1");
  EXPECT_THAT(itemsOf(form->List5), IsEmpty());
  EXPECT_THAT(itemsOf(form->List4), ElementsAre("C"));
  form->Test2();
  EXPECT_EQ(simulation.settings(), "[System]\r\nC Drive Label=HDR\r\nC Drive Size=822,528,000\r\n");
}

TEST_F(DriveWalkTest, ADiskWhoseIndexIsNullIsNotDiskZero) {
  addDrive("C:", 12, "System", 100);
  addDisk(0, 1, 100 * kCylinder);
  disks[0].properties["Index"] = WmiValue();
  answerQueries();
  form->Test2();
  EXPECT_EQ(form->Drives.PhysicalLetters(0), "");
  EXPECT_EQ(iconOf(1), "15");
  EXPECT_EQ(simulation.settings(), "[System]\r\nC Drive Label=HDR\r\nC Drive Size=822,528,000\r\n");
}

TEST_F(DriveWalkTest, ATwentySeventhDiskIsWrittenAndHasNoLetters) {
  addDrive("C:", 12, "System", 100);
  addDisk(26, 1, 100 * kCylinder);
  form->Test2();
  EXPECT_EQ(setting("Drive26"), "C");
  EXPECT_EQ(setting("Type26"), "HDR");
}

TEST_F(DriveWalkTest, TheLastOfTheChainLeavesWithItsFailureWhenItIsCalledAlone) {
  simulation.wmi.answers.clear();
  EXPECT_THROW(form->Test3(), StatementFailed);
}

}  // namespace
}  // namespace veltrin
