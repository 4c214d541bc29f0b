// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/disks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "block_tree.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kAta = "pci0000:00/0000:00:17.0/ata1/host0/target0:0:0/0:0:0:0";
constexpr const char* kUsb = "pci0000:00/0000:00:14.0/usb2/2-1/2-1:1.0/host6/target6:0:0/6:0:0:0";

class DisksTest : public ::testing::Test {
 protected:
  std::vector<std::string> names() const {
    std::vector<std::string> names;
    for (const Disk& disk : disksOf(tree_.files())) names.push_back(disk.name);
    return names;
  }

  // The only one.
  Disk disk() const {
    const auto disks = disksOf(tree_.files());
    if (disks.size() != 1) ADD_FAILURE() << disks.size() << " disks";
    return disks.empty() ? Disk() : disks.front();
  }

  BlockTree tree_;
};

TEST_F(DisksTest, AreHardwareAlone) {
  tree_.disk(kAta, "sda", "8:0", 1000);
  for (const char* name : {"loop0", "ram0", "zram0", "dm-0", "md0", "nbd0", "zd0"}) {
    tree_.disk("virtual", name, "1:0" + std::string(name), 1000);
  }
  for (const char* name : {"sr0", "fd0", "mtdblock0", "mmcblk0boot0", "mmcblk0rpmb"}) {
    tree_.disk("platform", name, "2:0" + std::string(name), 1000);
  }
  EXPECT_THAT(names(), ElementsAre("sda"));
}

TEST_F(DisksTest, OfSeveralWaysAreShownOnce) {
  tree_.disk("virtual/nvme-subsystem/nvme-subsys0", "nvme0n1", "259:0", 1000);
  tree_.disk("pci0000:00/nvme/nvme0", "nvme0c0n1", "259:1", 1000);
  tree_.fact("hidden", "1");
  EXPECT_THAT(names(), ElementsAre("nvme0n1"));
}

TEST_F(DisksTest, StandInTheOrderInWhichTheyAreCounted) {
  for (const char* name : {"sdaa", "nvme10n1", "sdb", "nvme2n1", "sda"}) {
    tree_.disk(std::string(kAta) + name, name, name, 1000);
  }
  EXPECT_THAT(names(), ElementsAre("sda", "sdb", "sdaa", "nvme2n1", "nvme10n1"));
}

TEST_F(DisksTest, ThatComeAndGoStandLast) {
  tree_.disk(kUsb, "sda", "8:0", 1000);
  tree_.disk("platform/fe320000.mmc/mmc_host/mmc1/mmc1:aaaa", "mmcblk1", "179:0", 1000);
  tree_.fact("device/type", "SD");
  tree_.disk("pci0000:00/0000:00:1d.0/fw1/fw1.0/host7/7:0:0:0", "sdc", "8:32", 1000);
  tree_.disk(std::string(kAta) + "x", "sdd", "8:48", 1000);
  tree_.fact("removable", "1");
  tree_.disk("pci0000:00/nvme/nvme0", "nvme0n1", "259:0", 1000);
  tree_.disk(kAta, "sdb", "8:16", 1000);
  EXPECT_THAT(names(), ElementsAre("sdb", "nvme0n1", "sda", "sdc", "sdd", "mmcblk1"));
}

TEST_F(DisksTest, TellByWhatTheyAreConnected) {
  const std::vector<std::pair<std::string, DiskBus>> kPlaces{
      {kAta, DiskBus::Ata},
      {kUsb, DiskBus::Usb},
      {"pci0000:00/0000:00:1d.0/host2/target2:0:0/2:0:0:0", DiskBus::Scsi},
      {"pci0000:00/0000:00:02.0/virtio1", DiskBus::Virtio},
      {"pci0000:00/0000:05:00.0/fw1/fw1.0/host7", DiskBus::FireWire},
      {"vbd-51712", DiskBus::Other},
      {"platform/soc.usb/data0", DiskBus::Other},
      {"platform/hostess/xhost0", DiskBus::Other},
  };
  for (const auto& [place, bus] : kPlaces) {
    BlockTree tree;
    tree.disk(place, "xvda", "202:0", 1000);
    EXPECT_EQ(disksOf(tree.files()).at(0).bus, bus) << place;
  }
  tree_.disk("pci0000:00/0000:00:1d.0/0000:04:00.0/nvme/nvme0", "nvme0n1", "259:0", 1000);
  EXPECT_EQ(disk().bus, DiskBus::Nvme);
}

TEST_F(DisksTest, TellTheirSizeInBytes) {
  tree_.disk(kAta, "sda", "8:0", 976'773'168);
  tree_.fact("queue/logical_block_size", "4096");
  EXPECT_EQ(disk().bytes, 500'107'862'016U);
  EXPECT_EQ(disk().sectorBytes, 4096U);
}

TEST_F(DisksTest, WithoutAMediumHaveNoSize) {
  tree_.disk(kUsb, "sda", "8:0", 0);
  EXPECT_EQ(disk().bytes, std::nullopt);
  EXPECT_EQ(disk().partitions, 0);
}

TEST_F(DisksTest, OfAbsurdSizesHaveNone) {
  for (const char* size : {"", "x", "-1", "36028797018963968", "99999999999999999999999"}) {
    tree_.disk(kAta + std::string(size), "sda", "8:0", 1000);
    tree_.fact("size", size);
    EXPECT_EQ(disk().bytes, std::nullopt) << size;
    std::filesystem::remove(tree_.real("/sys/block/sda"));
    std::filesystem::remove(tree_.real("/sys/class/block/sda"));
    std::filesystem::remove(tree_.real("/sys/dev/block/8:0"));
  }
}

TEST_F(DisksTest, CountThePartitionsThatHoldSomething) {
  tree_.disk(kAta, "sda", "8:0", 976'773'168);
  tree_.partition("sda1", "8:1", 409'600);
  tree_.partition("sda2", "8:2", 2);  // only holds the next
  tree_.partition("sda5", "8:5", 976'000'000);
  tree_.put("/sys/class/block/sda/sdaX/size", "1000\n");
  EXPECT_EQ(disk().partitions, 2);
}

TEST_F(DisksTest, TellAnExtendedPartitionOfLargeSectors) {
  tree_.disk(kAta, "sda", "8:0", 976'773'168);
  tree_.partition("sda1", "8:1", 8);
  tree_.partition("sda5", "8:5", 9);
  EXPECT_EQ(disk().partitions, 1);
}

TEST_F(DisksTest, CountAnUndividedOneThatIsMountedAsAPartition) {
  tree_.disk("pci0000:00/0000:00:02.0/virtio1", "vda", "254:0", 1000);
  EXPECT_EQ(disk().partitions, 0);
  tree_.mount("254:0", "/", "ext4", "/dev/vda");
  EXPECT_EQ(disk().partitions, 1);
}

TEST_F(DisksTest, CountAnUndividedOneThatAnotherDeviceLiesOnAsAPartition) {
  tree_.disk(kAta, "sda", "8:0", 1000);
  tree_.stacked("md0", "9:0", 900, {"sda"});
  EXPECT_EQ(disk().partitions, 1);
}

TEST_F(DisksTest, CountAnUndividedOneThatBearsAFileSystemAsAPartition) {
  tree_.disk(kUsb, "sda", "8:0", 1000);
  tree_.udev("8:0", "E:ID_FS_USAGE=filesystem\n");
  EXPECT_EQ(disk().partitions, 1);
  tree_.udev("8:0", "E:ID_FS_USAGE=filesystem\nE:ID_PART_TABLE_TYPE=dos\n");
  EXPECT_EQ(disk().partitions, 0);
}

TEST_F(DisksTest, TellTheModelThatUdevKnowsWhole) {
  tree_.disk(kAta, "sda", "8:0", 1000);
  tree_.fact("device/vendor", "ATA     ");
  tree_.fact("device/model", "Example SSD Evo ");
  EXPECT_EQ(disk().model, "Example SSD Evo");
  tree_.udev("8:0", "E:ID_MODEL=x\nE:ID_MODEL_ENC=Example\\x20SSD\\x20Evo\\x20Plus\\x201TB\\x20\n");
  EXPECT_EQ(disk().model, "Example SSD Evo Plus 1TB");
}

TEST_F(DisksTest, TellTheirMakerBeforeTheModel) {
  tree_.disk(kUsb, "sda", "8:0", 1000);
  tree_.fact("device/vendor", "Maker   ");
  tree_.fact("device/model", "Stick 3.0       ");
  EXPECT_EQ(disk().model, "Maker Stick 3.0");
  tree_.fact("device/model", "Maker Stick");
  EXPECT_EQ(disk().model, "Maker Stick");
}

TEST_F(DisksTest, TellTheNameOfAMemoryCard) {
  tree_.disk("platform/mmc1:aaaa", "mmcblk0", "179:0", 1000);
  tree_.fact("device/name", "SD32G");
  EXPECT_EQ(disk().model, "SD32G");
}

TEST_F(DisksTest, WithoutAFolderOfTheirOwnAreNone) {
  tree_.link("/sys/block/sdy", "../devices/gone/block/sdy");
  tree_.makeFolder("/sys/block/sdz");
  EXPECT_EQ(disksOf(tree_.files()).size(), 0U);
}

TEST_F(DisksTest, WithoutAModelHaveNone) {
  tree_.disk("pci0000:00/0000:00:02.0/virtio1", "vda", "254:0", 1000);
  tree_.fact("device/vendor", "0x1af4");
  EXPECT_EQ(disk().model, "");
}

TEST_F(DisksTest, TellTheirModelsInUtf8) {
  tree_.disk(kUsb, "sda", "8:0", 1000);
  tree_.fact("device/model", "Bad\xFFName");
  EXPECT_EQ(disk().model, "Bad?Name");
}

TEST(Disks, OfAMachineThatTellsNothingAreNone) {
  EXPECT_THAT(disksOf(TemporaryTree().files()), IsEmpty());
}

TEST_F(DisksTest, AreExternalWhenAllBelowComeAndGo) {
  tree_.disk(kAta, "sda", "8:0", 1000);
  tree_.partition("sda1", "8:1", 900);
  tree_.disk(kUsb, "sdb", "8:16", 1000);
  tree_.partition("sdb1", "8:17", 900);
  tree_.stacked("dm-0", "254:0", 800, {"sdb1"});
  tree_.stacked("md0", "9:0", 800, {"dm-0", "sda1"});
  tree_.stacked("dm-1", "254:1", 800, {"dm-0"});
  const FileTree files = tree_.files();
  EXPECT_FALSE(isExternal(files, "sda1"));
  EXPECT_TRUE(isExternal(files, "sdb"));
  EXPECT_TRUE(isExternal(files, "sdb1"));
  EXPECT_TRUE(isExternal(files, "dm-1"));
  EXPECT_FALSE(isExternal(files, "md0"));
}

TEST_F(DisksTest, ThatLieOnEachOtherInACircleAreNotFollowedForEver) {
  tree_.stacked("dm-0", "254:0", 800, {});
  tree_.link("/sys/class/block/dm-0/slaves/dm-1", "x");
  tree_.stacked("dm-1", "254:1", 800, {"dm-0"});
  EXPECT_FALSE(isExternal(tree_.files(), "dm-0"));
}

}  // namespace
}  // namespace veltrin
