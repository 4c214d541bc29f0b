// SPDX-License-Identifier: GPL-3.0-or-later
// The section of the report about the devices that have a signed driver.
#include "simulated/catalogue_run.h"

namespace veltrin {
namespace {

class ReportDrivers : public CatalogueRun {
 protected:
  ReportText drivers(const std::vector<WmiObject>& objects) {
    answer("Select * from Win32_PnPSignedDriver", objects);
    tick({ReportBox::Peripherals});
    return press();
  }

  static ReportText withDrivers(const ReportText& lines) {
    return before(joinedLines(
        {{kGap, headingLine("Sound", 33), headingLine("Keyboard", 19),
          headingLine("Mouse - Pointer", 24), headingLine("Printer", 29),
          headingLine("Net Card", 6), headingLine("USB", 34), headingLine("PnP Signed", 0)},
         lines}));
  }

  static WmiObject device(const WmiValue& description, const WmiValue& deviceClass) {
    return {{{"Description", description}, {"DeviceClass", deviceClass}}};
  }

  static ReportLine name(const std::string& text) { return headingLine(text, 0); }
};

TEST_F(ReportDrivers, PrintsADescriptionAsAHeadingWithoutAPicture) {
  EXPECT_EQ(drivers({device("Example Audio", "MEDIA"), device("Example Net", "NET")}),
            withDrivers({name("Example Audio"), name("Example Net")}));
}

TEST_F(ReportDrivers, PassesOverWhatEveryMachineHas) {
  std::vector<WmiObject> objects;
  for (const char* description :
       {"Generic volume", "CD-ROM Drive", "System board", " ", "",
        "Microsoft System Management BIOS Driver", "File as Volume Driver", "Motherboard resources",
        "Standard PS/2 Keyboard", "Floppy disk drive", "Disk drive", "Disk driv", "System timer",
        "IDE Channel", "HID Keyboard Device", "HID-compliant mouse",
        "HID-compliant consumer control device", "USB Input Device"}) {
    objects.push_back(device(description, "IMAGE"));
  }
  EXPECT_EQ(drivers(objects), withDrivers({}));
}

TEST_F(ReportDrivers, PassesOverTheExactTextsAlone) {
  EXPECT_EQ(drivers({device("generic volume", ""), device("  ", ""), device("Disk drives", ""),
                     device("USB Input Device ", "")}),
            withDrivers({name("generic volume"), name("  "), name("Disk drives"),
                         name("USB Input Device ")}));
}

TEST_F(ReportDrivers, ADescriptionThatIsNullIsAnEmptyOne) {
  EXPECT_EQ(drivers({device(WmiValue(), "SCSIADAPTER")}), withDrivers({}));
}

TEST_F(ReportDrivers, ADeviceWithoutAReadableDescriptionStillHasItsClass) {
  const WmiObject unknown{{{"DeviceClass", "SCSIADAPTER"}}};
  EXPECT_EQ(drivers({unknown}), withDrivers({plainLine("SCSI Host", 6), headingLine("    ", 0)}));
}

TEST_F(ReportDrivers, WithoutADescriptionToRememberAClassPrintsOnceMore) {
  const WmiObject unknown{{{"DeviceClass", "IMAGE"}}};
  EXPECT_EQ(
      drivers({unknown, device("Example Scan", "IMAGE")}),
      withDrivers({plainLine("Scanner", 30), name("Example Scan"), plainLine("Scanner", 30)}));
}

TEST_F(ReportDrivers, ADeviceWithoutAReadableClassPrintsItsDescription) {
  EXPECT_EQ(drivers({{{{"Description", "Example"}}}, device("Other", WmiValue())}),
            withDrivers({name("Example"), name("Other")}));
}

TEST_F(ReportDrivers, WithOneImageDeviceOnlyScannerPrints) {
  EXPECT_EQ(drivers({device("Example Scan", "IMAGE")}),
            withDrivers({name("Example Scan"), plainLine("Scanner", 30)}));
}

TEST_F(ReportDrivers, TheSecondImageDeviceIsACameraAndTheThirdHasNoHeading) {
  EXPECT_EQ(drivers({device("Scan", "IMAGE"), device("Cam", "IMAGE"), device("Film", "IMAGE")}),
            withDrivers({name("Scan"), plainLine("Scanner", 30), name("Cam"),
                         plainLine("Camera", 37), name("Film")}));
}

TEST_F(ReportDrivers, TwoImageDevicesMayHaveOneDescription) {
  EXPECT_EQ(
      drivers({device("Scan", "IMAGE"), device("Scan", "IMAGE")}),
      withDrivers({name("Scan"), plainLine("Scanner", 30), name("Scan"), plainLine("Camera", 37)}));
}

TEST_F(ReportDrivers, TheOtherClassesHaveOneHeadingAndABoldGap) {
  EXPECT_EQ(drivers({device("Host 1", "SCSIADAPTER"), device("Host 2", "SCSIADAPTER"),
                     device("Port 1", "ECP Printer Port"), device("Port 2", "ECP Printer Port"),
                     device("Serial 1", "Communications Port"),
                     device("Serial 2", "Communications Port")}),
            withDrivers({name("Host 1"), plainLine("SCSI Host", 6), headingLine("    ", 0),
                         name("Host 2"), name("Port 1"), plainLine("Printer Port", 27),
                         headingLine("    ", 0), name("Port 2"), name("Serial 1"),
                         plainLine("Communications Port", 31), headingLine("    ", 0),
                         name("Serial 2")}));
}

TEST_F(ReportDrivers, ClassesAreComparedExactly) {
  EXPECT_EQ(drivers({device("A", "image"), device("B", "SCSIADAPTER "), device("C", "Ports")}),
            withDrivers({name("A"), name("B"), name("C")}));
}

TEST_F(ReportDrivers, EachRunHasItsHeadings) {
  drivers({device("Scan", "IMAGE")});
  EXPECT_EQ(drivers({device("Scan", "IMAGE")}),
            withDrivers({name("Scan"), plainLine("Scanner", 30)}));
}

}  // namespace
}  // namespace veltrin
