// Made-up Linux machines through the whole report about drives: what it says must be true.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "frame/language.h"
#include "platform/linux/linux_drives.h"
#include "platform/linux/linux_wmi.h"
#include "support/simulation.h"
#include "sysinfo/DosApp.h"
#include "sysinfo/frmSysInfo.h"
#include "tests/machine/block_tree.h"
#include "tests/machine/fake_machine.h"
#include "toolbox/toolbox.h"

namespace veltrin {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;
using testing::StartsWith;

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

  // The report's lines, each behind the number of its picture.
  std::vector<std::string> report() {
    LinuxWmi wmi({tree_.files(), machine_, nullptr});
    LinuxDrives drives(tree_.files(), machine_);
    Simulation& all = simulation_;
    all.environment.variables["Computername"] = "DESK";
    Platform platform{all.loop,       all.loop,     all.clock,    all.desktop,     all.files,
                      all.processes,  all.profiles, all.registry, all.shell,       all.environment,
                      all.sockets,    all.counters, wmi,          all.icmp,        all.downloads,
                      all.interfaces, all.printers, drives,       all.processList, "Veltrin"};
    Program program(platform);
    program.LanguageId = kEnglish;
    chooseLanguage(program.LanguageId, program.texts);
    provideTools(program);
    const auto window = program.show<frmSysInfo>();
    (program.keep<DosApp>()->TEST)("2");
    settings_ = all.profiles.contents[program.settingsFile];
    std::vector<std::string> lines;
    const ListView& list = window->SYSView.ListView1;
    for (std::size_t index = 0; index < list.count(); ++index) {
      lines.push_back(std::to_string(list.line(index).SmallIcon) + " " + list.line(index).Text);
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
  EXPECT_THAT(report(), ElementsAre("x"));
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
  EXPECT_THAT(report(), ElementsAre("x"));
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
  EXPECT_THAT(report(), ElementsAre("x"));
  EXPECT_EQ(lettersOf(0), "");
  EXPECT_EQ(lettersOf(1), "");
}

// The root lies on the undivided disk.
TEST_F(DriveTruth, OfAVirtualMachine) {
  tree_.disk("pci0000:00/0000:00:02.0/virtio1", "vda", "254:0", 536'870'912);
  mount("254:0", "/", "ext4", "/dev/vda", 536'870'912);
  EXPECT_THAT(report(), ElementsAre("x"));
  EXPECT_EQ(lettersOf(0), "C");
}

TEST_F(DriveTruth, OfAContainer) {
  mount("0:50", "/", "overlay", "overlay", 400'000'000);
  EXPECT_THAT(report(), ElementsAre("x"));
  EXPECT_EQ(settings_, "x");
}

// By the blocks that ext4 tells, a partition would be 1.6 percent smaller than its disk.
TEST_F(DriveTruth, ADiskIsFoundThoughItsFileSystemTellsFewerBlocks) {
  tree_.disk(kFirstAta, "sda", "8:0", 468'862'128);
  tree_.partition("sda1", "8:1", 468'858'880);
  mount("8:1", "/", "ext4", "/dev/sda1", 468'858'880);
  report();
  EXPECT_EQ(lettersOf(0), "C");
}

// What is encrypted begins 16 MB behind the start of its partition.
TEST_F(DriveTruth, ADiskIsFoundThoughItsVolumeIsEncrypted) {
  tree_.disk(kFirstAta, "sda", "8:0", 468'862'128);
  tree_.partition("sda1", "8:1", 468'858'880);
  tree_.disk(kSecondAta, "sdb", "8:16", 976'773'168);
  tree_.partition("sdb1", "8:17", 976'771'072);
  tree_.stacked("dm-0", "253:0", 976'738'304, {"sdb1"});
  mount("8:1", "/", "ext4", "/dev/sda1", 468'858'880);
  mount("253:0", "/home", "ext4", "/dev/mapper/home", 976'738'304);
  mount("0:51", "/srv", "nfs", "store:/srv", 1000);
  tree_.disk(kThirdAta, "sdc", "8:32", 976'773'168);
  report();
  EXPECT_EQ(lettersOf(0), "C");
}

TEST_F(DriveTruth, AStickWithoutATableIsFound) {
  tree_.disk(kFirstAta, "sda", "8:0", 468'862'128);
  tree_.partition("sda1", "8:1", 468'858'880);
  tree_.disk(kUsb, "sdb", "8:16", 60'062'500);
  mount("8:1", "/", "ext4", "/dev/sda1", 468'858'880);
  mount("8:16", "/media/me/STICK", "vfat", "/dev/sdb", 60'062'500, "STICK");
  EXPECT_THAT(report(), Contains("34 /dev/sdb"));
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
