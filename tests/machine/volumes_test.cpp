// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/volumes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "block_tree.h"
#include "fake_machine.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;

constexpr const char* kAta = "pci0000:00/0000:00:17.0/ata1/host0/target0:0:0/0:0:0:0";
constexpr const char* kUsb = "pci0000:00/0000:00:14.0/usb2/2-1/2-1:1.0/host6/target6:0:0/6:0:0:0";
constexpr const char* kDvd = "pci0000:00/0000:00:17.0/ata2/host1/target1:0:0/1:0:0:0";

std::string wordOf(VolumeKind kind) {
  switch (kind) {
    case VolumeKind::Disk:
      return "disk";
    case VolumeKind::Optical:
      return "optical";
    case VolumeKind::Floppy:
      return "floppy";
    case VolumeKind::Network:
      return "network";
    case VolumeKind::Unknown:
      break;
  }
  return "unknown";
}

class VolumesTest : public ::testing::Test {
 protected:
  // A disk of partitions sda1, sda2 and so on, the second of them the root.
  VolumesTest() {
    tree_.disk(kAta, "sda", "8:0", 1'000'000);
    for (const char* number : {"1", "2", "3", "4"}) {
      tree_.partition("sda" + std::string(number), "8:" + std::string(number), 200'000);
    }
    tree_.mount("8:2", "/", "ext4", "/dev/sda2");
  }

  // "C disk /" for each, and "E optical -" for one that is not mounted.
  std::vector<std::string> volumes() const {
    std::vector<std::string> texts;
    for (const Volume& volume : volumesOf(tree_.files())) {
      const std::string& folder = volume.mount.folder;
      texts.push_back(std::string(1, volume.letter) + " " + wordOf(volume.kind) + " " +
                      (folder.empty() ? "-" : folder));
    }
    return texts;
  }

  BlockTree tree_;
};

TEST_F(VolumesTest, AreTheRootAndOtherFileSystemsByTheirFolders) {
  tree_.mount("0:21", "/proc", "proc", "proc");
  tree_.mount("8:3", "/home", "ext4", "/dev/sda3");
  tree_.mount("8:1", "/boot/efi", "vfat", "/dev/sda1");
  tree_.mount("0:30", "/run", "tmpfs", "tmpfs");
  EXPECT_THAT(volumes(), ElementsAre("C disk /", "D disk /boot/efi", "E disk /home"));
}

TEST_F(VolumesTest, HaveFoldersOfAnyName) {
  tree_.mount("8:3", "/media/My\\040Stick\\134", "ext4", "/dev/sda3");
  EXPECT_THAT(volumes(), ElementsAre("C disk /", "D disk /media/My Stick\\"));
}

TEST_F(VolumesTest, HaveOneLetterHoweverOftenTheyAreMounted) {
  tree_.mount("8:3", "/a/part", "ext4", "/dev/sda3", "/part");
  tree_.mount("8:3", "/srv/again", "ext4", "/dev/sda3");
  tree_.mount("8:3", "/srv/about", "ext4", "/dev/sda3");
  tree_.mount("8:2", "/a/root", "ext4", "/dev/sda2");
  EXPECT_THAT(volumes(), ElementsAre("C disk /", "D disk /srv/about"));
}

TEST_F(VolumesTest, OfManyFoldersOfOneFileSystemAreOne) {
  BlockTree tree;
  tree.disk("pci0000:00/nvme/nvme0", "nvme0n1", "259:0", 1'000'000);
  tree.partition("nvme0n1p2", "259:2", 900'000);
  tree.mount("0:25", "/", "btrfs", "/dev/nvme0n1p2", "/@");
  tree.mount("0:25", "/home", "btrfs", "/dev/nvme0n1p2", "/@home");
  const auto all = volumesOf(tree.files());
  ASSERT_EQ(all.size(), 1U);
  EXPECT_EQ(all[0].device, "nvme0n1p2");
  EXPECT_EQ(all[0].kind, VolumeKind::Disk);
}

TEST_F(VolumesTest, AreKnownByTheLinkThatTheyAreMountedFrom) {
  tree_.stacked("dm-0", "254:0", 190'000, {"sda3"});
  tree_.link("/dev/mapper/vg-home", "../dm-0");
  tree_.mount("0:31", "/home", "btrfs", "/dev/mapper/vg-home");
  const auto volume = volumeAt(tree_.files(), "D:");
  ASSERT_TRUE(volume);
  EXPECT_EQ(volume->device, "dm-0");
}

TEST_F(VolumesTest, AreWhatWasMountedLastAtAPlace) {
  tree_.mount("8:3", "/mnt", "ext4", "/dev/sda3");
  tree_.mount("8:4", "/mnt", "xfs", "/dev/sda4");
  EXPECT_THAT(volumes(), ElementsAre("C disk /", "D disk /mnt"));
  EXPECT_EQ(volumeAt(tree_.files(), "D:")->device, "sda4");
}

TEST_F(VolumesTest, AreNeitherImagesNorMemory) {
  tree_.disk("virtual", "loop3", "7:3", 1000);
  tree_.disk("virtual", "zram1", "252:1", 1000);
  tree_.mount("7:3", "/snap/core", "squashfs", "/dev/loop3");
  tree_.mount("252:1", "/tmp", "ext4", "/dev/zram1");
  tree_.mount("0:40", "/var/lib/docker/overlay2/x", "overlay", "overlay");
  EXPECT_THAT(volumes(), ElementsAre("C disk /"));
}

TEST_F(VolumesTest, AreNotTheSingleFilesThatAContainerGets) {
  tree_.put("/etc/hosts", "127.0.0.1 localhost\n");
  tree_.mount("8:3", "/etc/hosts", "ext4", "/dev/sda3", "/docker/hosts");
  tree_.makeFolder("/data");
  tree_.mount("8:4", "/data", "ext4", "/dev/sda4", "/srv/data");
  EXPECT_THAT(volumes(), ElementsAre("C disk /", "D disk /data"));
}

TEST_F(VolumesTest, StandWithDiscsServersAndSticksBehindTheOthers) {
  tree_.disk(kDvd, "sr0", "11:0", 2'000'000);
  tree_.disk(kUsb, "sdb", "8:16", 60'000'000);
  tree_.partition("sdb1", "8:17", 59'000'000);
  tree_.stacked("dm-0", "254:0", 190'000, {"sdb1"});
  tree_.mount("254:0", "/a/stick", "ext4", "/dev/mapper/stick");
  tree_.mount("0:50", "/b/server", "nfs4", "server:/export");
  tree_.mount("0:51", "/b/again", "nfs4", "server:/export");
  tree_.mount("0:52", "/b/share", "cifs", "//server/share");
  tree_.mount("8:3", "/home", "ext4", "/dev/sda3");
  EXPECT_THAT(volumes(),
              ElementsAre("C disk /", "D disk /home", "E optical -", "F network /b/again",
                          "G network /b/share", "H disk /a/stick"));
}

TEST_F(VolumesTest, OfADriveForDiscsAreTheSameWithADisc) {
  tree_.disk(kDvd, "sr0", "11:0", 2'000'000);
  tree_.disk(kDvd + std::string("1"), "sr1", "11:1", 2'000'000);
  EXPECT_THAT(volumes(), ElementsAre("C disk /", "D optical -", "E optical -"));
  tree_.mount("11:1", "/media/film", "udf", "/dev/sr1");
  EXPECT_THAT(volumes(), ElementsAre("C disk /", "D optical -", "E optical /media/film"));
}

TEST_F(VolumesTest, OfFloppyDrivesHaveTheFirstTwoLetters) {
  for (const char* name : {"fd0", "fd1", "fd2"}) {
    tree_.disk("platform/floppy.0" + std::string(name), name, "2:" + std::string(name + 2), 8);
  }
  tree_.mount("2:1", "/media/floppy", "vfat", "/dev/fd1");
  EXPECT_THAT(volumes(), ElementsAre("A floppy -", "B floppy /media/floppy", "C disk /"));
}

TEST_F(VolumesTest, OfAPoolAreOne) {
  BlockTree tree;
  tree.mount("0:25", "/", "zfs", "rpool/ROOT/system");
  tree.mount("0:26", "/home", "zfs", "rpool/USERDATA/home");
  tree.mount("0:27", "/boot", "zfs", "bpool/BOOT/system");
  const auto all = volumesOf(tree.files());
  ASSERT_EQ(all.size(), 2U);
  EXPECT_EQ(all[0].kind, VolumeKind::Disk);
  EXPECT_EQ(all[1].mount.folder, "/boot");
}

TEST(Volumes, HaveARootWhereverItLies) {
  for (const char* type : {"overlay", "tmpfs"}) {
    BlockTree tree;
    tree.mount("0:50", "/", type, type);
    const auto all = volumesOf(tree.files());
    ASSERT_EQ(all.size(), 1U);
    EXPECT_EQ(all[0].letter, 'C');
    EXPECT_EQ(all[0].kind, VolumeKind::Unknown);
    EXPECT_EQ(all[0].device, "");
  }
  BlockTree diskless;
  diskless.mount("0:20", "/", "nfs", "server:/roots/this");
  EXPECT_EQ(volumesOf(diskless.files()).at(0).kind, VolumeKind::Network);
}

TEST(Volumes, HaveARootThatIsOnAnImage) {
  BlockTree tree;
  tree.disk("virtual", "loop0", "7:0", 1000);
  tree.mount("7:0", "/", "squashfs", "/dev/loop0");
  EXPECT_EQ(volumesOf(tree.files()).at(0).kind, VolumeKind::Unknown);
}

TEST(Volumes, HaveARootThatTheKernelCallsByNoName) {
  BlockTree tree;
  tree.disk("platform/mmc0:0001", "mmcblk0", "179:0", 1000);
  tree.partition("mmcblk0p2", "179:2", 900);
  tree.mount("179:2", "/", "ext4", "/dev/root");
  EXPECT_EQ(volumesOf(tree.files()).at(0).device, "mmcblk0p2");
}

TEST(Volumes, OfAMachineThatTellsNothingAreTheRootAlone) {
  const auto all = volumesOf(TemporaryTree().files());
  ASSERT_EQ(all.size(), 1U);
  EXPECT_EQ(all[0].letter, 'C');
  EXPECT_EQ(all[0].mount.folder, "/");
}

TEST_F(VolumesTest, EndWithTheAlphabet) {
  for (int number = 10; number < 60; ++number) {
    tree_.mount("0:" + std::to_string(number), "/m" + std::to_string(number), "nfs",
                "server:/" + std::to_string(number));
  }
  const auto all = volumesOf(tree_.files());
  EXPECT_EQ(all.size(), 24U);
  EXPECT_EQ(all.back().letter, 'Z');
  EXPECT_EQ(all.back().mount.folder, "/m32");
}

TEST_F(VolumesTest, AreFoundByTheirLettersInAnyCase) {
  tree_.mount("8:3", "/home", "ext4", "/dev/sda3");
  const FileTree files = tree_.files();
  EXPECT_EQ(volumeAt(files, "C:")->mount.folder, "/");
  EXPECT_EQ(volumeAt(files, "d:\\")->mount.folder, "/home");
}

TEST_F(VolumesTest, AreNotFoundByAnythingElse) {
  for (const char* root : {"", "C", "A:", "D:", "C:/", "C:\\x", "CC:", "\xC3\xB6:", ":::"}) {
    EXPECT_FALSE(volumeAt(tree_.files(), root)) << root;
  }
}

// --- Names ---

TEST_F(VolumesTest, HaveTheNameThatUdevKnows) {
  const Volume root = volumesOf(tree_.files()).at(0);
  EXPECT_EQ(labelOf(tree_.files(), root), "");
  tree_.udev("8:2", "E:ID_FS_LABEL=My_System\nE:ID_FS_LABEL_ENC=My\\x20System\n");
  EXPECT_EQ(labelOf(tree_.files(), root), "My System");
}

TEST_F(VolumesTest, HaveTheNameOfTheLinkWhereThereIsNoUdev) {
  tree_.link("/dev/disk/by-label/Another", "../../xsda2");
  tree_.link("/dev/disk/by-label/Longer", "../../sda21");
  tree_.link("/dev/disk/by-label/My\\x20System", "../../sda2");
  EXPECT_EQ(labelOf(tree_.files(), volumesOf(tree_.files()).at(0)), "My System");
}

TEST_F(VolumesTest, HaveNoNameOnNoDevice) {
  tree_.mount("0:50", "/share", "nfs", "server:/share");
  tree_.udev("", "E:ID_FS_LABEL_ENC=x\n");
  EXPECT_EQ(labelOf(tree_.files(), *volumeAt(tree_.files(), "D:")), "");
}

TEST_F(VolumesTest, HaveNamesInUtf8) {
  tree_.udev("8:2", "E:ID_FS_LABEL_ENC=\xC3\xB6\\xff\n");
  EXPECT_EQ(labelOf(tree_.files(), volumesOf(tree_.files()).at(0)), "ö?");
}

// --- Room ---

class RoomOfVolume : public VolumesTest {
 protected:
  std::optional<FileSystemRoom> room(const char* drive) {
    return roomOf(tree_.files(), machine_, *volumeAt(tree_.files(), drive));
  }

  FakeMachine machine_;
};

TEST_F(RoomOfVolume, CountsTheWholeDevice) {
  machine_.rooms["/"] = {4096, 24'000, 10'000, 9'000};
  const auto told = room("C:");
  ASSERT_TRUE(told);
  EXPECT_EQ(told->block, 4096U);
  EXPECT_EQ(told->total, 25'000U);  // 200,000 sectors
  EXPECT_EQ(told->free, 10'000U);
  EXPECT_EQ(told->available, 9'000U);
}

TEST_F(RoomOfVolume, CountsWhatIsEncryptedAsAWhole) {
  tree_.stacked("dm-0", "254:0", 190'000, {"sda3"});
  tree_.mount("254:0", "/home", "ext4", "/dev/mapper/home");
  machine_.rooms["/home"] = {4096, 20'000, 10'000, 9'000};
  tree_.fact("dm/uuid", "LVM-xyz");
  EXPECT_EQ(room("D:")->total, 23'750U);
  tree_.fact("dm/uuid", "CRYPT-LUKS2-xyz");
  EXPECT_EQ(room("D:")->total, 25'000U);
  tree_.link("/sys/class/block/dm-0/slaves/sda4", "../../sda4");
  EXPECT_EQ(room("D:")->total, 23'750U);
}

TEST_F(RoomOfVolume, OfAVolumeThatEncryptsItselfComesToAnEnd) {
  tree_.stacked("dm-0", "254:0", 190'000, {});
  tree_.fact("dm/uuid", "CRYPT-x");
  tree_.link("/sys/class/block/dm-0/slaves/dm-0", "../../dm-0");
  tree_.mount("254:0", "/home", "ext4", "/dev/mapper/home");
  machine_.rooms["/home"] = {4096, 20'000, 10'000, 9'000};
  EXPECT_EQ(room("D:")->total, 23'750U);
}

TEST_F(RoomOfVolume, CountsTheBlocksOfAFileSystemOnSeveralDevices) {
  machine_.rooms["/"] = {4096, 50'000, 10'000, 9'000};
  EXPECT_EQ(room("C:")->total, 50'000U);
}

TEST_F(RoomOfVolume, CountsTheBlocksOfOneOnNoDevice) {
  tree_.mount("0:50", "/share", "nfs", "server:/share");
  machine_.rooms["/share"] = {1'048'576, 700, 300, 200};
  EXPECT_EQ(room("D:")->total, 700U);
}

TEST_F(RoomOfVolume, IsUnknownWhereTheSystemDoesNotTell) {
  EXPECT_FALSE(room("C:"));
  tree_.disk(kDvd, "sr0", "11:0", 2'000'000);
  machine_.rooms[""] = {4096, 1, 1, 1};
  EXPECT_FALSE(room("D:"));
  machine_.rooms["/"] = {0, 0, 0, 0};
  EXPECT_EQ(room("C:")->total, 0U);
}

}  // namespace
}  // namespace veltrin
