// SPDX-License-Identifier: GPL-3.0-or-later
// Made-up Linux machines through the whole report about drives: what it says must be true.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/linux_drives.h"
#include "platform/linux/linux_wmi.h"
#include "sysinfo/DosApp.h"
#include "sysinfo/frmSysInfo.h"
#include "tests/machine/block_tree.h"
#include "tests/machine/fake_machine.h"
#include "tests/platform/partly_real.h"

namespace veltrin {
namespace {

using testing::HasSubstr;

constexpr const char* kNvme = "pci0000:00/0000:00:1d.0/0000:04:00.0/nvme/nvme0";
constexpr const char* kFirstAta = "pci0000:00/0000:00:17.0/ata1/host0/target0:0:0/0:0:0:0";
constexpr const char* kSecondAta = "pci0000:00/0000:00:17.0/ata2/host1/target1:0:0/1:0:0:0";
constexpr const char* kThirdAta = "pci0000:00/0000:00:17.0/ata3/host2/target2:0:0/2:0:0:0";
constexpr const char* kUsb = "pci0000:00/0000:00:14.0/usb2/2-1/2-1:1.0/host6/target6:0:0/6:0:0:0";

class DriveTruth : public testing::Test {
 protected:
  DriveTruth() { machine_->kernelFacts.host = "desk"; }

  // A file system, of which ext4's own needs are not in the blocks it tells.
  void mount(const std::string& numbers, const std::string& folder, const std::string& type,
             const std::string& source, std::uint64_t sectors, const std::string& label = "") {
    tree_.mount(numbers, folder, type, source);
    const std::uint64_t blocks = sectors / 8;
    machine_->rooms[folder] = {4096, blocks - blocks / 60, blocks / 2, blocks / 3, 255, 0, 0};
    if (!label.empty()) tree_.udev(numbers, "E:ID_FS_LABEL_ENC=" + label + "\n");
  }

  // The report's lines, each behind the number of its picture and up to a bar.
  std::string report() {
    LinuxWmi wmi({tree_.files(), machine_, nullptr});
    LinuxDrives drives(tree_.files(), machine_);
    Simulation& all = simulation_;
    all.environment.variables["Computername"] = "DESK";
    Platform platform = partlyReal(all, all.processes, wmi, drives);
    Program program(platform);
    prepare(program);
    const auto window = program.show<frmSysInfo>();
    (program.keep<DosApp>()->TEST)("2");
    settings_ = all.profiles.contents[program.settingsFile];
    std::string lines;
    const ListView& list = window->SYSView.ListView1;
    for (std::size_t index = 0; index < list.count(); ++index) {
      lines += std::to_string(list.line(index).SmallIcon) + " " + list.line(index).Text + "|\n";
    }
    return lines;
  }

  // The key of a disk in the settings: the letters found on it; empty without.
  std::string lettersOf(int disk) const {
    const std::string key = "\r\nDrive" + std::to_string(disk) + "=";
    const std::size_t at = settings_.find(key);
    if (at == std::string::npos) return "";
    const std::size_t start = at + key.size();
    return settings_.substr(start, settings_.find("\r\n", start) - start);
  }

  Simulation simulation_;
  BlockTree tree_;
  std::shared_ptr<FakeMachine> machine_ = std::make_shared<FakeMachine>();
  std::string settings_;
};

// An EFI partition and the root fill the disk.
TEST_F(DriveTruth, OfALaptop) {
  tree_.disk(kNvme, "nvme0n1", "259:0", 1'000'215'216);
  tree_.fact("device/model", "Example NVMe 512GB");
  tree_.partition("nvme0n1p1", "259:1", 1'048'576);
  tree_.partition("nvme0n1p2", "259:2", 999'163'904);
  mount("259:2", "/", "ext4", "/dev/nvme0n1p2", 999'163'904, "System");
  mount("259:1", "/boot/efi", "vfat", "/dev/nvme0n1p1", 1'048'576);
  EXPECT_EQ(report(), R"(0      |
0 Physical Hard Drive Information|
15 PHYSICAL DRIVE 0   2 Partition|
0      C: (System)  512 GB   (511,571,289,600 Bytes)|
0      D: ()  535 MB   (534,643,200 Bytes)|
0     |
0                   Logical Drive Information|
0  |
15 C:   (System)   512 GB   (511,571,289,600 Bytes)|
15 D:|
0  |
0                   Detailed Physical Drive Information|
15 /dev/nvme0n1|
0 Logical Drive: C   (System)|
0 Logical Drive: D   ()|
0     Model: Example NVMe 512GB|
0     InterfaceType: SCSI|
0     Size: 512,105,932,800|
0     Partitions: 2|
0     BytesPerSector: 512|
0     SectorsPerTrack: 63|
0     TotalCylinders: 62,260|
0     TotalTracks: 15,876,300|
0     TracksPerCylinder: 255|
)");
  EXPECT_EQ(lettersOf(0), "CD");
}

// Two disks of one partition each, a drive for discs and a stick.
TEST_F(DriveTruth, OfADesktop) {
  tree_.disk(kFirstAta, "sda", "8:0", 468'862'128);
  tree_.fact("device/vendor", "ATA");
  tree_.fact("device/model", "Example SSD 240GB");
  tree_.partition("sda1", "8:1", 468'858'880);
  tree_.disk(kSecondAta, "sdb", "8:16", 3'907'029'168);
  tree_.fact("device/vendor", "ATA");
  tree_.fact("device/model", "Example HDD 2TB");
  tree_.partition("sdb1", "8:17", 3'907'026'944);
  tree_.disk(kUsb, "sdc", "8:32", 60'062'500);
  tree_.fact("removable", "1");
  tree_.fact("device/vendor", "Maker");
  tree_.fact("device/model", "Stick");
  tree_.partition("sdc1", "8:33", 60'060'452);
  tree_.disk(kThirdAta, "sr0", "11:0", 2'097'151);
  mount("8:1", "/", "ext4", "/dev/sda1", 468'858'880, "System");
  mount("8:17", "/home", "ext4", "/dev/sdb1", 3'907'026'944, "Data");
  mount("8:33", "/media/me/STICK", "vfat", "/dev/sdc1", 60'060'452, "STICK");
  EXPECT_EQ(report(), R"(0      |
0 Physical Hard Drive Information|
15 PHYSICAL DRIVE 0   1 Partition|
0      C: (System)  240 GB   (240,054,796,800 Bytes)|
15 PHYSICAL DRIVE 1   1 Partition|
0      D: (Data)  2 TB   (2,000,396,321,280 Bytes)|
34 PHYSICAL DRIVE 2   1 Partition|
0      F: (STICK)  31 GB   (30,754,321,920 Bytes)|
0     |
0                   Logical Drive Information|
0  |
15 C:   (System)   240 GB   (240,054,796,800 Bytes)|
15 D:   (Data)   2 TB   (2,000,396,321,280 Bytes)|
8 E:   (Empty)|
34 F:   (STICK)   31 GB   (30,754,321,920 Bytes)|
0  |
0                   Detailed Physical Drive Information|
15 /dev/sda|
0 Logical Drive: C   (System)|
0     Model: Example SSD 240GB|
0     InterfaceType: IDE|
0     Size: 240,054,796,800|
0     Partitions: 1|
0     BytesPerSector: 512|
0     SectorsPerTrack: 63|
0     TotalCylinders: 29,185|
0     TotalTracks: 7,442,175|
0     TracksPerCylinder: 255|
15 /dev/sdb|
0 Logical Drive: D   (Data)|
0     Model: Example HDD 2TB|
0     InterfaceType: IDE|
0     Size: 2,000,396,321,280|
0     Partitions: 1|
0     BytesPerSector: 512|
0     SectorsPerTrack: 63|
0     TotalCylinders: 243,201|
0     TotalTracks: 62,016,255|
0     TracksPerCylinder: 255|
34 /dev/sdc|
0 Logical Drive: F   (STICK)|
0     Model: Maker Stick|
0     InterfaceType: USB|
0     Size: 30,746,096,640|
0     Partitions: 1|
0     BytesPerSector: 512|
0     SectorsPerTrack: 63|
0     TotalCylinders: 3,738|
0     TotalTracks: 953,190|
0     TracksPerCylinder: 255|
)");
  EXPECT_EQ(lettersOf(0), "C");
  EXPECT_EQ(lettersOf(1), "D");
  EXPECT_EQ(lettersOf(2), "F");
}

// Two volumes of LVM on a mirror of two disks: neither is found on one of them by its size.
TEST_F(DriveTruth, OfAServer) {
  for (const char* name : {"sda", "sdb"}) {
    const bool isFirst = name == std::string("sda");
    tree_.disk(isFirst ? kFirstAta : kSecondAta, name, isFirst ? "8:0" : "8:16", 7'814'037'168);
    tree_.fact("device/model", "Example HDD 4TB");
    tree_.partition(name + std::string("1"), isFirst ? "8:1" : "8:17", 7'814'033'408);
  }
  tree_.stacked("md0", "9:0", 7'813'771'264, {"sda1", "sdb1"});
  tree_.stacked("dm-0", "253:0", 104'857'600, {"md0"});
  tree_.stacked("dm-1", "253:1", 7'600'000'000, {"md0"});
  mount("253:0", "/", "ext4", "/dev/mapper/vg-root", 104'857'600, "root");
  mount("253:1", "/srv", "xfs", "/dev/mapper/vg-srv", 7'600'000'000);
  mount("0:60", "/backup", "nfs4", "store:/backup", 9'000'000'000);
  EXPECT_EQ(report(), R"(0      |
0 Physical Hard Drive Information|
0     |
0                   Logical Drive Information|
0  |
15 C:   (root)   54 GB   (53,686,402,560 Bytes)|
15 D:|
14 E:   (Empty)|
0  |
0                   Detailed Physical Drive Information|
0     Model: Example HDD 4TB|
0     InterfaceType: IDE|
0     Size: 4,000,784,417,280|
0     Partitions: 1|
0     BytesPerSector: 512|
0     SectorsPerTrack: 63|
0     TotalCylinders: 486,401|
0     TotalTracks: 124,032,255|
0     TracksPerCylinder: 255|
0     Model: Example HDD 4TB|
0     InterfaceType: IDE|
0     Size: 4,000,784,417,280|
0     Partitions: 1|
0     BytesPerSector: 512|
0     SectorsPerTrack: 63|
0     TotalCylinders: 486,401|
0     TotalTracks: 124,032,255|
0     TracksPerCylinder: 255|
)");
  EXPECT_EQ(lettersOf(0), "");
  EXPECT_EQ(lettersOf(1), "");
}

// The root lies on the undivided disk.
TEST_F(DriveTruth, OfAVirtualMachine) {
  tree_.disk("pci0000:00/0000:00:02.0/virtio1", "vda", "254:0", 536'870'912);
  mount("254:0", "/", "ext4", "/dev/vda", 536'870'912);
  EXPECT_EQ(report(), R"(0      |
0 Physical Hard Drive Information|
15 PHYSICAL DRIVE 0   1 Partition|
0      C: ()  275 GB   (274,880,632,320 Bytes)|
0     |
0                   Logical Drive Information|
0  |
15 C:|
0  |
0                   Detailed Physical Drive Information|
15 /dev/vda|
0 Logical Drive: C   ()|
0     Model: |
0     InterfaceType: SCSI|
0     Size: 274,872,407,040|
0     Partitions: 1|
0     BytesPerSector: 512|
0     SectorsPerTrack: 63|
0     TotalCylinders: 33,418|
0     TotalTracks: 8,521,590|
0     TracksPerCylinder: 255|
)");
  EXPECT_EQ(lettersOf(0), "C");
}

TEST_F(DriveTruth, OfAContainer) {
  mount("0:50", "/", "overlay", "overlay", 400'000'000);
  EXPECT_EQ(report(), R"(0      |
0 Physical Hard Drive Information|
0     |
0                   Logical Drive Information|
0  |
15 C:   (Empty)|
0  |
0                   Detailed Physical Drive Information|
)");
  EXPECT_EQ(settings_,
            "[System]\r\n"
            "C Drive Label=\r\n"
            "C Drive Size=201,387,755,520\r\n");
}

// By the blocks that ext4 tells, a partition would be 1.6 percent smaller than its disk.
TEST_F(DriveTruth, ADiskIsFoundThoughItsFileSystemTellsFewerBlocks) {
  tree_.disk(kFirstAta, "sda", "8:0", 468'862'128);
  tree_.partition("sda1", "8:1", 468'858'880);
  mount("8:1", "/", "ext4", "/dev/sda1", 468'858'880);
  report();
  EXPECT_EQ(lettersOf(0), "C");
}

// An encrypted root begins 16 MB behind the start of its partition, which is two cylinders.
TEST_F(DriveTruth, ADiskIsFoundThoughItsRootIsEncrypted) {
  tree_.disk(kNvme, "nvme0n1", "259:0", 1'000'215'216);
  tree_.partition("nvme0n1p1", "259:1", 1'048'576);
  tree_.partition("nvme0n1p2", "259:2", 999'163'904);
  tree_.stacked("dm-0", "253:0", 999'131'136, {"nvme0n1p2"});
  tree_.fact("dm/uuid", "CRYPT-LUKS2-0123456789abcdef-root");
  mount("253:0", "/", "ext4", "/dev/mapper/root", 999'131'136);
  mount("259:1", "/boot/efi", "vfat", "/dev/nvme0n1p1", 1'048'576);
  report();
  EXPECT_EQ(lettersOf(0), "CD");
}

TEST_F(DriveTruth, AStickWithoutATableIsFound) {
  tree_.disk(kFirstAta, "sda", "8:0", 468'862'128);
  tree_.partition("sda1", "8:1", 468'858'880);
  tree_.disk(kUsb, "sdb", "8:16", 60'062'500);
  mount("8:1", "/", "ext4", "/dev/sda1", 468'858'880);
  mount("8:16", "/media/me/STICK", "vfat", "/dev/sdb", 60'062'500, "STICK");
  EXPECT_THAT(report(), HasSubstr("\n34 /dev/sdb|\n0 Logical Drive: D   (STICK)|\n"));
  EXPECT_EQ(lettersOf(1), "D");
}

// A partition alone on each of many disks, of sizes that fall anywhere in a cylinder.
TEST_F(DriveTruth, EveryDiskOfOnePartitionIsFoundWhateverItsSize) {
  constexpr std::uint64_t kTable = 2048 + 33;  // sectors before and behind the partition
  for (std::uint64_t part = 0; part < 20; ++part) {
    const std::string number = std::to_string(part);
    const std::uint64_t sectors = (20'000 + part * 100) * 16'065 + part * 803;
    tree_.disk(kNvme + number, "nvme" + number + "n1", "259:" + number, sectors);
    tree_.partition("nvme" + number + "n1p1", "260:" + number, sectors - kTable);
    const std::string folder = part == 0 ? "/" : "/m" + std::to_string(part + 10);
    mount("260:" + number, folder, "ext4", "/dev/nvme" + number + "n1p1", sectors - kTable);
  }
  report();
  for (int disk = 0; disk < 20; ++disk) {
    EXPECT_EQ(lettersOf(disk), std::string(1, static_cast<char>('C' + disk)));
  }
}

}  // namespace
}  // namespace veltrin
