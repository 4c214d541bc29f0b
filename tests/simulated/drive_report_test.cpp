// SPDX-License-Identifier: GPL-3.0-or-later
// The lines of the drive reports.
#include "simulated/drive_run.h"

namespace veltrin {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::Not;

const ReportLines kOfNothing{"0 drive:      ",
                             "0 drive: Physical Hard Drive Information",
                             "0 plain:     ",
                             "0 drive:                   Logical Drive Information",
                             "0 drive:  ",
                             "0 drive:  ",
                             "0 drive:                   Detailed Physical Drive Information"};

class DriveReportTest : public DriveRun {
 protected:
  // The report of a fresh run.
  ReportLines reported() {
    window->SYSView.Clear();
    runChain("2");
    return lines();
  }

  // The one line of a logical drive of this kind.
  std::string lineOfDrive(const std::string& caption, int media, const WmiValue& label,
                          std::uint32_t cylinders) {
    drives.clear();
    addDrive(caption, media, label, cylinders);
    return reported().at(5);
  }
};

TEST_F(DriveReportTest, OfEmptyAnswersHasOnlyItsHeadings) {
  EXPECT_THAT(reported(), ElementsAreArray(kOfNothing));
}

TEST_F(DriveReportTest, WithoutTheServiceEndsBehindTheHeadingOfTheDrives) {
  simulation.wmi.answers.clear();
  EXPECT_THAT(reported(),
              ElementsAre("0 drive:      ", "0 drive: Physical Hard Drive Information",
                          "0 plain:     ", "0 drive:                   Logical Drive Information",
                          "0 drive:  "));
}

TEST_F(DriveReportTest, TellsAMachineOfTwoDisksWhole) {
  addDrive("A:", 5, WmiValue(), 0);
  addDrive("C:", 12, "System", 100);
  addDrive("D:", 12, "Data", 9700);
  addDrive("E:", 11, "Film", 80);
  addDrive("F:", 12, "Stick", 500);
  addDisk(0, 2, 9800 * kCylinder);
  addDisk(1, 1, 500 * kCylinder, "USB");
  EXPECT_THAT(reported(),
              ElementsAre("0 drive:      ",                                          //
                          "0 drive: Physical Hard Drive Information",                //
                          "15 drive: PHYSICAL DRIVE 0   2 Partition",                //
                          "0 drive:      C: (System)  823 MB   (822,528,000 Bytes)"  //
                          ,
                          "0 drive:      D: (Data)  80 GB   (79,785,216,000 Bytes)",  //
                          "34 drive: PHYSICAL DRIVE 1   1 Partition",                 //
                          "0 drive:      F: (Stick)  4 GB   (4,112,640,000 Bytes)",   //
                          "0 plain:     ",                                            //
                          "0 drive:                   Logical Drive Information",     //
                          "0 drive:  ",                                               //
                          "16 drive: A:   (Empty)",                                   //
                          "15 drive: C:   (System)   823 MB   (822,528,000 Bytes)",   //
                          "15 drive: D:   (Data)   80 GB   (79,785,216,000 Bytes)",   //
                          "8 drive: E:   (Film)   658 MB   (658,022,400 Bytes)",      //
                          "34 drive: F:   (Stick)   4 GB   (4,112,640,000 Bytes)",    //
                          "0 drive:  ",                                               //
                          "0 drive:                   Detailed Physical Drive Information",
                          "15 drive: \\\\.\\PHYSICALDRIVE0",       //
                          "0 drive: Logical Drive: C   (System)",  //
                          "0 drive: Logical Drive: D   (Data)",    //
                          "0 drive:     Model: Disk 0",            //
                          "0 drive:     InterfaceType: IDE",       //
                          "0 drive:     Size: 80,607,744,000",     //
                          "0 drive:     Partitions: 2",            //
                          "0 drive:     BytesPerSector: 512",      //
                          "0 drive:     SectorsPerTrack: 63",      //
                          "0 drive:     TotalCylinders: 9,729",    //
                          "0 drive:     TotalTracks: 2,480,895",   //
                          "0 drive:     TracksPerCylinder: 255",   //
                          "34 drive: \\\\.\\PHYSICALDRIVE1",       //
                          "0 drive: Logical Drive: F   (Stick)",   //
                          "0 drive:     Model: Disk 1",            //
                          "0 drive:     InterfaceType: USB",       //
                          "0 drive:     Size: 4,112,640,000",      //
                          "0 drive:     Partitions: 1",            //
                          "0 drive:     BytesPerSector: 512",      //
                          "0 drive:     SectorsPerTrack: 63",      //
                          "0 drive:     TotalCylinders: 9,729",    //
                          "0 drive:     TotalTracks: 2,480,895",   //
                          "0 drive:     TracksPerCylinder: 255"));
}

TEST_F(DriveReportTest, TheOtherFormTellsDrivesFirstAndTheHeadsOfDisks) {
  addDrive("C:", 12, "System", 100);
  addDrive("D:", 12, "", 0);
  addDisk(0, 1, 100 * kCylinder);
  form->GetDrive();
  EXPECT_THAT(lines(),
              ElementsAre("0 plain:     ",                                              //
                          "0 drive:                   Basic Drive Information",         //
                          "0 drive:  ",                                                 //
                          "15 drive: C:   (System)      823 MB   (822,528,000 Bytes)",  //
                          "15 drive: D:",                                               //
                          "0 drive:  ",                                                 //
                          "0 drive:                   Detailed Drive Information",      //
                          "15 drive: \\\\.\\PHYSICALDRIVE0",                            //
                          "0 drive: Logical Drive: C   (System)",                       //
                          "0 drive:     Model: Disk 0",                                 //
                          "0 drive:     InterfaceType: IDE",                            //
                          "0 drive:     Size: 822,528,000",                             //
                          "0 drive:     Partitions: 1",                                 //
                          "0 drive:     BytesPerSector: 512",                           //
                          "0 drive:     SectorsPerTrack: 63",                           //
                          "0 drive:     TotalCylinders: 9,729",                         //
                          "0 drive:     TotalTracks: 2,480,895",                        //
                          "0 drive:     TracksPerCylinder: 255",                        //
                          "0 drive:     Total Heads: 255"));
}

TEST_F(DriveReportTest, TheOtherFormWritesNothingAndKeepsNoLetters) {
  addDrive("C:", 12, "System", 100);
  addDisk(0, 1, 100 * kCylinder);
  form->GetDrive();
  EXPECT_EQ(simulation.settings(), "");
  EXPECT_EQ(form->Drives.PhysicalLetters(0), "");
  EXPECT_THAT(itemsOf(form->List8), IsEmpty());
}

TEST_F(DriveReportTest, TheOtherFormKnowsARamDiskByItsInterface) {
  addDrive("C:", 12, "System", 100);
  addDisk(0, 1, 100 * kCylinder, "RAM");
  form->GetDrive();
  EXPECT_THAT(lines(), Contains("7 drive: \\\\.\\PHYSICALDRIVE0"));
  form->Test3();
  EXPECT_THAT(lines(), Contains("15 drive: \\\\.\\PHYSICALDRIVE0"));
}

TEST_F(DriveReportTest, TheOtherFormGoesOnBehindWhatIsMissing) {
  addDrive("C:", 12, "System", 100);
  addDisk(0, 1, 100 * kCylinder);
  disks[0].properties.erase("Model");
  disks[0].properties.erase("TotalTracks");
  answerQueries();
  form->GetDrive();
  EXPECT_THAT(lines(), Not(Contains("0 drive:     Model: Disk 0")));
  EXPECT_EQ(lines().back(), "0 drive:     Total Heads: 255");
}

TEST_F(DriveReportTest, TheOtherFormWithoutTheServiceHasOnlyItsHeadings) {
  simulation.wmi.answers.clear();
  form->GetDrive();
  EXPECT_THAT(lines(),
              ElementsAre("0 plain:     ", "0 drive:                   Basic Drive Information",
                          "0 drive:  ", "0 drive:  ",
                          "0 drive:                   Detailed Drive Information"));
}

TEST_F(DriveReportTest, AnAnswerAboutDisksThatBreaksOffEndsBehindTheDisksThatCame) {
  addDrive("C:", 12, "System", 100);
  addDisk(0, 1, 100 * kCylinder);
  addDisk(1, 1, 500 * kCylinder);
  simulation.wmi.breaks[kDisksQuery] = 1;
  const ReportLines all = reported();
  EXPECT_THAT(all, Contains("0 drive:     Model: Disk 0"));
  EXPECT_EQ(all.back(), "0 drive:     TracksPerCylinder: 255");
}

TEST_F(DriveReportTest, AnAnswerAboutDrivesThatBreaksOffEndsBehindTheDrivesThatCame) {
  addDrive("C:", 12, "System", 100);
  addDrive("D:", 12, "Data", 100);
  simulation.wmi.breaks[kDrivesQuery] = 1;
  EXPECT_EQ(reported().back(), "15 drive: C:   (System)   823 MB   (822,528,000 Bytes)");
}

TEST_F(DriveReportTest, WithoutAnAnswerAboutDisksEndsBehindTheirHeading) {
  simulation.wmi.answers.erase(kDisksQuery);
  EXPECT_THAT(reported(), ElementsAreArray(kOfNothing));
}

// --- Physical drives ---

TEST_F(DriveReportTest, TellsAPhysicalDriveByThePictureOfItsFirstDrive) {
  struct IconCase {
    const char* icon;
    const char* line;
  };
  addDrive("C:", 11, "System", 100);
  form->Drives.PhysicalLetters(25) = "CX";
  for (const IconCase& each : {
           IconCase{"34", "34 drive: PHYSICAL DRIVE 25   2 Partition"},
           IconCase{"0", "14 drive: PHYSICAL DRIVE 25   2 Partition"},
           IconCase{"5", "16 drive: PHYSICAL DRIVE 25   2 Partition"},
           IconCase{"11", "8 drive: PHYSICAL DRIVE 25   2 Partition"},
           IconCase{"12", "15 drive: PHYSICAL DRIVE 25   2 Partition"},
           IconCase{"15", "15 drive: PHYSICAL DRIVE 25   2 Partition"},
           IconCase{"7", "0 drive:      C: (System)  823 MB   (822,528,000 Bytes)"},
           IconCase{"14", "0 drive:      C: (System)  823 MB   (822,528,000 Bytes)"},
           IconCase{"", "0 drive:      C: (System)  823 MB   (822,528,000 Bytes)"},
       }) {
    form->Drives.slot(1).DriveIcon = each.icon;
    EXPECT_EQ(reported().at(2), each.line) << each.icon;
  }
}

TEST_F(DriveReportTest, FindsADriveWhereItsLetterWasFirst) {
  addDrive("C:", 12, "System", 100);
  addDrive("D:", 12, "Data", 200);
  addDisk(0, 1, 100 * kCylinder);
  reported();
  std::swap(drives[0], drives[1]);
  answerQueries();
  EXPECT_EQ(reported().at(3), "0 drive:      C: (Data)  2 GB   (1,645,056,000 Bytes)");
}

TEST_F(DriveReportTest, TheLettersOfADiskThatIsGoneAreStillTold) {
  addDrive("C:", 12, "System", 100);
  addDisk(0, 1, 100 * kCylinder);
  reported();
  disks.clear();
  answerQueries();
  EXPECT_EQ(reported().at(2), "15 drive: PHYSICAL DRIVE 0   1 Partition");
}

// --- Logical drives ---

TEST_F(DriveReportTest, AFixedDriveWithoutANameHasItsCaptionAlone) {
  EXPECT_EQ(lineOfDrive("C:", 12, "", 100), "15 drive: C:");
  EXPECT_EQ(lineOfDrive("C:", 12, WmiValue(), 0), "15 drive: C:");
}

TEST_F(DriveReportTest, AFloppyDriveWithoutAMediumIsEmpty) {
  EXPECT_EQ(lineOfDrive("A:", 5, WmiValue(), 0), "16 drive: A:   (Empty)");
}

TEST_F(DriveReportTest, OtherDrivesWithoutANameAreEmptyToo) {
  EXPECT_EQ(lineOfDrive("N:", 0, "", 0), "14 drive: N:   (Empty)");
  EXPECT_EQ(lineOfDrive("E:", 11, "", 0), "8 drive: E:   (Empty)");
  EXPECT_EQ(lineOfDrive("S:", 2, "", 0), "15 drive: S:   (Empty)");
}

TEST_F(DriveReportTest, NamedDrivesHaveThePicturesOfTheirMedia) {
  EXPECT_EQ(lineOfDrive("N:", 0, "Net", 100),
            "14 drive: N:   (Net)   823 MB   (822,528,000 Bytes)");
  EXPECT_EQ(lineOfDrive("A:", 5, "Flp", 100),
            "16 drive: A:   (Flp)   823 MB   (822,528,000 Bytes)");
  EXPECT_EQ(lineOfDrive("E:", 11, "Film", 100),
            "8 drive: E:   (Film)   823 MB   (822,528,000 Bytes)");
  EXPECT_EQ(lineOfDrive("S:", 2, "Stick", 100),
            "15 drive: S:   (Stick)   823 MB   (822,528,000 Bytes)");
}

TEST_F(DriveReportTest, RamDrivesAreKnownByTheirNamesBeforeAllElse) {
  form->Drives.slot(1).DriveIcon = "34";
  EXPECT_EQ(lineOfDrive("R:", 12, "ramdisk", 100),
            "7 drive: R:   (ramdisk)   823 MB   (822,528,000 Bytes)");
  EXPECT_EQ(lineOfDrive("R:", 11, "My RAM drive", 100),
            "7 drive: R:   (My RAM drive)   823 MB   (822,528,000 Bytes)");
  EXPECT_EQ(lineOfDrive("R:", 12, "RAM 1", 100),
            "34 drive: R:   (RAM 1)   823 MB   (822,528,000 Bytes)");
}

TEST_F(DriveReportTest, ASizeBelowAMegabyteIsToldInBytes) {
  EXPECT_EQ(lineOfDrive("C:", 11, "x", 0), "8 drive: C:   (x)   0 Bytes");
}

// --- Detailed disks ---

TEST_F(DriveReportTest, ADiskThatTakesItsOnlyCandidateHasNoLineOfItsDrive) {
  addDrive("C:", 12, "System", 100);
  addDisk(0, 5, 999 * kCylinder);
  const ReportLines report = reported();
  EXPECT_EQ(report.at(7), "0 drive:                   Detailed Physical Drive Information");
  EXPECT_EQ(report.at(8), "0 drive:     Model: Disk 0");
}

TEST_F(DriveReportTest, AFigureThatADiskDoesNotKnowIsLeftOut) {
  addDisk(0, 0, 0);
  disks[0].properties["Size"] = WmiValue();
  disks[0].properties["Model"] = WmiValue();
  answerQueries();
  EXPECT_THAT(reported(), Contains("0 drive:     Size: "));
  EXPECT_THAT(reported(), Contains("0 drive:     Model: "));
}

TEST_F(DriveReportTest, APropertyThatIsMissingEndsTheReportThere) {
  addDisk(0, 0, 0);
  disks[0].properties.erase("TotalTracks");
  answerQueries();
  EXPECT_EQ(reported().back(), "0 drive:     TotalCylinders: 9,729");
}

TEST_F(DriveReportTest, ADriveWithoutANamePropertyEndsTheReportThere) {
  addDrive("C:", 12, "System", 100);
  drives[0].properties.erase("VolumeName");
  answerQueries();
  EXPECT_EQ(reported().back(), "0 drive:  ");
}

TEST_F(DriveReportTest, ATwentySeventhDiskWithADriveEndsTheReportThere) {
  addDrive("C:", 12, "System", 100);
  addDisk(26, 1, 100 * kCylinder);
  EXPECT_EQ(reported().back(), "0 drive:                   Detailed Physical Drive Information");
}

// --- The window ---

TEST_F(DriveReportTest, WithoutAWindowDoesAllButPrint) {
  addDrive("C:", 12, "System", 100);
  addDisk(0, 1, 100 * kCylinder);
  program.unload(*window);
  runChain("2");
  EXPECT_THAT(lines(), IsEmpty());
  EXPECT_EQ(setting("Drive0"), "C");
}

}  // namespace
}  // namespace veltrin
