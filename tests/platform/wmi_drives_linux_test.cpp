// SPDX-License-Identifier: GPL-3.0-or-later
// The drives and disks of a Linux machine, as WMI tells them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "machine/linux_machine.h"
#include "platform/linux/wmi_classes.h"
#include "tests/machine/block_tree.h"
#include "tests/machine/fake_machine.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kNvme = "pci0000:00/0000:00:1d.0/0000:04:00.0/nvme/nvme0";
constexpr const char* kUsb = "pci0000:00/0000:00:14.0/usb2/2-1/2-1:1.0/host6/target6:0:0/6:0:0:0";

// A property as a text, and "null".
std::string told(const WmiObject& object, const char* name) {
  const WmiValue& value = object.value(name);
  return value.isNull() ? "null" : value.text();
}

class WmiDrivesTest : public testing::Test {
 protected:
  WmiSources sources() const { return {tree_.files(), std::make_shared<FakeMachine>(), nullptr}; }

  // "C: 12 System" for each.
  std::vector<std::string> logicalDisks() const {
    std::vector<std::string> texts;
    for (const WmiObject& drive : win32LogicalDisk(sources())) {
      EXPECT_EQ(told(drive, "DeviceID"), told(drive, "Caption"));
      texts.push_back(told(drive, "Caption") + " " + told(drive, "MediaType") + " " +
                      told(drive, "VolumeName"));
    }
    return texts;
  }

  // A property of all disks.
  std::vector<std::string> ofDisks(const char* name) const {
    std::vector<std::string> texts;
    for (const WmiObject& disk : win32DiskDrive(sources())) texts.push_back(told(disk, name));
    return texts;
  }

  BlockTree tree_;
};

// --- Logical drives ---

TEST_F(WmiDrivesTest, TellTheMediumOfEachDriveByTheNumbersOfTheClass) {
  tree_.disk("platform/floppy.0", "fd0", "2:0", 8);
  tree_.disk(kNvme, "nvme0n1", "259:0", 1'000'000);
  tree_.partition("nvme0n1p1", "259:1", 900'000);
  tree_.disk("pci0000:00/ata2/host1/1:0:0:0", "sr0", "11:0", 2'000'000);
  tree_.disk(kUsb, "sda", "8:0", 60'000'000);
  tree_.partition("sda1", "8:1", 59'000'000);
  tree_.mount("259:1", "/", "ext4", "/dev/nvme0n1p1");
  tree_.mount("0:50", "/srv", "nfs4", "server:/srv");
  tree_.mount("8:1", "/media/stick", "vfat", "/dev/sda1");
  tree_.udev("259:1", "E:ID_FS_LABEL_ENC=My\\x20System\n");
  tree_.udev("8:1", "E:ID_FS_LABEL_ENC=STICK\n");
  EXPECT_THAT(logicalDisks(), ElementsAre("A: 5 null", "C: 12 My System", "D: 11 null", "E: 0 null",
                                          "F: 12 STICK"));
}

TEST_F(WmiDrivesTest, TellTheNameOfADisc) {
  tree_.disk("pci0000:00/ata2/host1/1:0:0:0", "sr0", "11:0", 2'000'000);
  tree_.udev("11:0", "E:ID_CDROM_MEDIA=1\nE:ID_FS_LABEL_ENC=FILM\n");
  EXPECT_THAT(logicalDisks(), ElementsAre("C: null null", "D: 11 FILM"));
}

TEST_F(WmiDrivesTest, TellNoMediumOfARootThatLiesOnNoDevice) {
  tree_.mount("0:50", "/", "overlay", "overlay");
  EXPECT_THAT(logicalDisks(), ElementsAre("C: null null"));
}

// --- Disks ---

TEST_F(WmiDrivesTest, TellAllThatTheReportPrintsOfADisk) {
  tree_.disk(kNvme, "nvme0n1", "259:0", 1'000'215'216);
  tree_.partition("nvme0n1p1", "259:1", 1'048'576);
  tree_.partition("nvme0n1p2", "259:2", 999'163'904);
  tree_.fact("device/model", "Example NVMe 512GB                      ");
  const WmiAnswer disks = win32DiskDrive(sources());
  ASSERT_EQ(disks.size(), 1U);
  std::vector<std::string> texts;
  for (const auto& [name, value] : disks[0].properties) {
    texts.push_back(name + "=" + told(disks[0], name.c_str()));
  }
  EXPECT_THAT(texts, testing::UnorderedElementsAre(
                         "Index=0", "DeviceID=/dev/nvme0n1", "Model=Example NVMe 512GB",
                         "InterfaceType=SCSI", "Size=512105932800", "Partitions=2",
                         "BytesPerSector=512", "SectorsPerTrack=63", "TotalCylinders=62260",
                         "TotalTracks=15876300", "TracksPerCylinder=255", "TotalHeads=255"));
}

TEST_F(WmiDrivesTest, TellSizesOfWholeCylinders) {
  constexpr std::uint64_t kCylinder = std::uint64_t{255} * 63;  // sectors
  tree_.disk(kNvme, "nvme0n1", "259:0", 100 * kCylinder - 1);
  tree_.disk(kNvme + std::string("1"), "nvme1n1", "259:1", 100 * kCylinder);
  tree_.disk(kNvme + std::string("2"), "nvme2n1", "259:2", 101 * kCylinder - 1);
  EXPECT_THAT(ofDisks("Size"), ElementsAre("814302720", "822528000", "822528000"));
}

TEST_F(WmiDrivesTest, TellTheSizeOfADiskOfLessThanACylinder) {
  tree_.disk(kNvme, "nvme0n1", "259:0", 8192);
  EXPECT_THAT(ofDisks("Size"), ElementsAre("4194304"));
  EXPECT_THAT(ofDisks("TotalCylinders"), ElementsAre("0"));
}

TEST_F(WmiDrivesTest, CountTheCylindersOfLargeSectorsByThese) {
  tree_.disk(kNvme, "nvme0n1", "259:0", 1'000'215'216);
  tree_.fact("queue/logical_block_size", "4096");
  EXPECT_THAT(ofDisks("BytesPerSector"), ElementsAre("4096"));
  EXPECT_THAT(ofDisks("TotalCylinders"), ElementsAre("7782"));
  EXPECT_THAT(ofDisks("Size"), ElementsAre("512105932800"));
}

TEST_F(WmiDrivesTest, TellNothingOfAMediumThatIsNotThere) {
  tree_.disk(kUsb, "sda", "8:0", 0);
  for (const char* name : {"Size", "SectorsPerTrack", "TotalCylinders", "TotalTracks",
                           "TracksPerCylinder", "TotalHeads", "Model"}) {
    EXPECT_THAT(ofDisks(name), ElementsAre("null")) << name;
  }
  EXPECT_THAT(ofDisks("Partitions"), ElementsAre("0"));
  EXPECT_THAT(ofDisks("InterfaceType"), ElementsAre("USB"));
}

TEST_F(WmiDrivesTest, TellNoGeometryWithoutSectors) {
  tree_.disk(kNvme, "nvme0n1", "259:0", 1'000'000);
  for (const char* size : {"", "0", "x"}) {
    tree_.fact("queue/logical_block_size", size);
    EXPECT_THAT(ofDisks("TotalCylinders"), ElementsAre("null")) << size;
  }
}

TEST_F(WmiDrivesTest, TellTheInterfaceInTheWordsOfTheClass) {
  tree_.disk("pci0000:00/ata1/host0/0:0:0:0", "sda", "8:0", 1000);
  tree_.disk("pci0000:00/host1/1:0:0:0", "sdb", "8:16", 1000);
  tree_.disk("pci0000:00/virtio1", "vda", "254:0", 1000);
  tree_.disk("vbd-51712", "xvda", "202:0", 1000);
  tree_.disk(kUsb, "sdc", "8:32", 1000);
  tree_.disk("pci0000:00/fw1/fw1.0/host7", "sdd", "8:48", 1000);
  EXPECT_THAT(ofDisks("DeviceID"),
              ElementsAre("/dev/sda", "/dev/sdb", "/dev/vda", "/dev/xvda", "/dev/sdc", "/dev/sdd"));
  EXPECT_THAT(ofDisks("InterfaceType"), ElementsAre("IDE", "SCSI", "SCSI", "null", "USB", "1394"));
  EXPECT_THAT(ofDisks("Index"), ElementsAre("0", "1", "2", "3", "4", "5"));
}

TEST_F(WmiDrivesTest, TellTheDeviceOfADiskWithASlashInItsName) {
  tree_.disk("pci0000:00/cciss0", "cciss!c0d0", "104:0", 1000);
  EXPECT_THAT(ofDisks("DeviceID"), ElementsAre("/dev/cciss/c0d0"));
}

TEST_F(WmiDrivesTest, OfAMachineWithoutDisksAreNone) { EXPECT_THAT(ofDisks("Index"), IsEmpty()); }

// --- On the machine of the test ---

// What lsblk tells of its disks, "NAME SIZE TYPE MODEL" in its own quotes.
std::vector<std::string> linesOfLsblk() {
  std::vector<std::string> lines;
  FILE* output = popen("lsblk -adbPno NAME,SIZE,TYPE,MODEL,LOG-SEC 2>/dev/null", "r");
  if (output == nullptr) return lines;
  std::array<char, 1024> line{};
  while (fgets(line.data(), line.size(), output) != nullptr) lines.emplace_back(line.data());
  pclose(output);
  return lines;
}

std::string quoted(const std::string& line, const std::string& key) {
  const std::size_t start = line.find(key + "=\"");
  if (start == std::string::npos) return "";
  const std::size_t text = start + key.size() + 2;
  return line.substr(text, line.find('"', text) - text);
}

TEST(WmiDrivesHere, HoldTheDisksOfLsblk) {
  const WmiAnswer disks = win32DiskDrive({FileTree(), std::make_shared<LinuxMachine>(), nullptr});
  const std::vector<std::string> lines = linesOfLsblk();
  if (lines.empty()) GTEST_SKIP() << "lsblk tells of no block devices here";
  std::size_t compared = 0;
  for (const std::string& line : lines) {
    const std::string name = quoted(line, "NAME");
    const bool isMemory = name.starts_with("zram") || name.starts_with("ram");
    const bool isPart = name.find("boot") != std::string::npos || name.starts_with("mtdblock");
    if (quoted(line, "TYPE") != "disk" || isMemory || isPart || name.starts_with("nbd")) continue;
    const auto found = std::find_if(disks.begin(), disks.end(), [&](const WmiObject& disk) {
      return told(disk, "DeviceID") == "/dev/" + name;
    });
    ASSERT_NE(found, disks.end()) << line;
    const std::uint64_t size = std::stoull(quoted(line, "SIZE"));
    constexpr std::uint64_t kCylinder = 8'225'280;
    if (size >= kCylinder) {
      EXPECT_EQ(told(*found, "Size"), std::to_string(size / kCylinder * kCylinder)) << line;
    }
    EXPECT_EQ(told(*found, "BytesPerSector"), quoted(line, "LOG-SEC")) << line;
    const std::string model = quoted(line, "MODEL");
    EXPECT_THAT(told(*found, "Model"), testing::HasSubstr(model.empty() ? "" : model)) << line;
    EXPECT_EQ(told(*found, "Model") == "null", model.empty()) << line;
    ++compared;
  }
  EXPECT_EQ(compared, disks.size());
}

}  // namespace
}  // namespace veltrin
