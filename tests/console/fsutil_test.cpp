// SPDX-License-Identifier: GPL-3.0-or-later
// The fsutil tool on made-up machines.
#include "console/fsutil.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/machine/block_tree.h"
#include "tests/machine/fake_machine.h"
#include "tests/machine/silent_server.h"

namespace veltrin {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

class KeptOutput : public Output {
 public:
  bool write(std::string_view written) override {
    if (writesLeft == 0) return false;
    --writesLeft;
    text += written;
    return true;
  }
  void letReaderCatchUp() override {}

  std::string text;
  int writesLeft = 1000;
};

class FsUtilTest : public ::testing::Test {
 protected:
  // C on an ext4 partition of 800,000 sectors.
  FsUtilTest() {
    tree_.disk("pci0000:00/nvme/nvme0", "nvme0n1", "259:0", 1'000'000);
    tree_.partition("nvme0n1p1", "259:1", 100'000);
    tree_.partition("nvme0n1p2", "259:2", 800'000);
    tree_.mount("259:2", "/", "ext4", "/dev/nvme0n1p2", "/", "rw,errors=remount-ro,x=y");
    tree_.put("/sys/fs/ext4/nvme0n1p2/errors_count", "0\n");
    machine_->rooms["/"] = {4096, 96'000, 50'000, 40'000, 255, 24'000, 4'000};
  }

  // What the tool prints, and "[1]" at the end with its exit code.
  std::string run(const std::vector<std::string>& arguments, int writes = 1000) {
    KeptOutput output;
    output.writesLeft = writes;
    const FileTree files = tree_.files();
    const auto resolve = [this](const std::string& folder) {
      const auto found = folders_.find(folder);
      return found == folders_.end() ? "" : found->second;
    };
    const int code = FsUtil(files, machine_, resolve, output, questions_).run(arguments);
    return output.text + "[" + std::to_string(code) + "]";
  }

  BlockTree tree_;
  std::shared_ptr<FakeMachine> machine_ = std::make_shared<FakeMachine>();
  TimedQuestions questions_{TimedQuestions::Patience(60'000)};
  std::map<std::string, std::string> folders_;  // by how they are written
};

// --- Its commands ---

TEST_F(FsUtilTest, TellsTheRoomOfADriveBehind31Characters) {
  EXPECT_EQ(run({"volume", "diskfree", "C:"}),
            "Total # of free bytes        : 204800000\r\n"
            "Total # of bytes             : 409600000\r\n"
            "Total # of avail free bytes  : 163840000\r\n[0]");
}

TEST_F(FsUtilTest, RefusesADriveWhoseRoomIsNotTold) {
  machine_->rooms.clear();
  EXPECT_EQ(run({"volume", "diskfree", "C:"}), "The room on C: is not told.\r\n[1]");
}

TEST_F(FsUtilTest, TellsWhatAVolumeIs) {
  tree_.udev("259:2",
             "E:ID_FS_LABEL_ENC=My\\x20System\n"
             "E:ID_FS_UUID_ENC=0f3c2b1a-1111-2222-3333-444455556666\n");
  EXPECT_EQ(run({"fsinfo", "volumeinfo", "C:"}),
            "Volume Name : My System\r\n"
            "Volume Serial Number : 0f3c2b1a-1111-2222-3333-444455556666\r\n"
            "Max Component Length : 255\r\n"
            "File System Name : ext4\r\n"
            "Device : /dev/nvme0n1p2\r\n"
            "Mounted At : /\r\n"
            "Read Only : No\r\n[0]");
}

TEST_F(FsUtilTest, LeavesOutWhatIsNotKnownOfAVolume) {
  machine_->rooms.clear();
  tree_.mount("0:50", "/srv", "nfs", "server:/srv", "/", "ro,vers=3");
  EXPECT_EQ(run({"fsinfo", "volumeinfo", "D:"}),
            "File System Name : nfs\r\n"
            "Device : server:/srv\r\n"
            "Mounted At : /srv\r\n"
            "Read Only : Yes\r\n[0]");
}

TEST_F(FsUtilTest, TellsAVolumeThatIsMountedForReadingWithoutAnyOtherOption) {
  tree_.mount("259:1", "/cd", "iso9660", "/dev/nvme0n1p1", "/", "ro");
  EXPECT_THAT(run({"fsinfo", "volumeinfo", "D:"}), HasSubstr("Read Only : Yes\r\n"));
  tree_.mount("259:1", "/cd", "ext4", "/dev/nvme0n1p1", "/", "rota,x");
  EXPECT_THAT(run({"fsinfo", "volumeinfo", "D:"}), HasSubstr("Read Only : No\r\n"));
}

TEST_F(FsUtilTest, TellsWhatWasReadAndWritten) {
  tree_.put(
      "/sys/class/block/nvme0n1p2/stat",
      "    1000       20    30000      400      500       60     7000      80        0      9\n");
  tree_.put("/sys/fs/ext4/nvme0n1p2/lifetime_write_kbytes", "12345\n");
  EXPECT_EQ(run({"fsinfo", "statistics", "C:"}),
            "File System Type : ext4\r\n"
            "Disk Reads : 1000\r\n"
            "Disk Read Bytes : 15360000\r\n"
            "Disk Writes : 500\r\n"
            "Disk Write Bytes : 3584000\r\n"
            "Lifetime Write Bytes : 12641280\r\n"
            "Files And Folders : 20000\r\n"
            "Files And Folders At Most : 24000\r\n[0]");
}

TEST_F(FsUtilTest, LeavesOutWhatNobodyCounts) {
  tree_.put("/sys/class/block/nvme0n1p2/stat", "1000 20\n");
  machine_->rooms["/"] = {4096, 96'000, 50'000, 40'000, 255, 10, 11};
  EXPECT_EQ(run({"fsinfo", "statistics", "C:"}),
            "File System Type : ext4\r\n"
            "Disk Reads : 1000\r\n[0]");
}

TEST_F(FsUtilTest, RefusesTheFiguresOfNtfsForAnyOtherFileSystem) {
  EXPECT_EQ(run({"fsinfo", "ntfsinfo", "C:"}),
            "C: holds no NTFS volume: its file system is ext4.\r\n[1]");
  tree_.mount("259:1", "/stick", "fuseblk", "/dev/nvme0n1p1");
  tree_.udev("259:1", "E:ID_FS_TYPE=exfat\n");
  EXPECT_EQ(run({"fsinfo", "ntfsinfo", "D:"}),
            "D: holds no NTFS volume: its file system is fuseblk.\r\n[1]");
}

TEST_F(FsUtilTest, TellsTheFiguresOfNtfs) {
  tree_.mount("259:1", "/windows", "ntfs3", "/dev/nvme0n1p1");
  tree_.udev("259:1", "E:ID_FS_TYPE=ntfs\nE:ID_FS_UUID_ENC=A4C2B1D0C2B1A9E4\n");
  tree_.put("/proc/fs/ntfs3/nvme0n1p1/volinfo", "ntfs3.1\n4096\n12499\n256\n87\nclean\ndirty\n");
  EXPECT_EQ(run({"fsinfo", "ntfsinfo", "D:"}),
            "NTFS Volume Serial Number : A4C2B1D0C2B1A9E4\r\n"
            "NTFS Version : 3.1\r\n"
            "Number Sectors : 100000\r\n"
            "Total Clusters : 12499\r\n"
            "Bytes Per Cluster : 4096\r\n"
            "Mft Records : 256\r\n"
            "Mft Records In Use : 87\r\n[0]");
}

TEST_F(FsUtilTest, TellsLessOfNtfsThatIsServedOutsideOfTheKernel) {
  tree_.mount("259:1", "/windows", "fuseblk", "/dev/nvme0n1p1");
  tree_.udev("259:1", "E:ID_FS_TYPE=ntfs\n");
  EXPECT_EQ(run({"fsinfo", "ntfsinfo", "D:"}), "Number Sectors : 100000\r\n[0]");
}

TEST_F(FsUtilTest, TellsWhetherAVolumeIsDirty) {
  EXPECT_EQ(run({"dirty", "query", "C:"}), "Volume - C: is NOT Dirty\r\n[0]");
  tree_.put("/sys/fs/ext4/nvme0n1p2/errors_count", "3\n");
  EXPECT_EQ(run({"dirty", "query", "c:\\"}), "Volume - C: is Dirty\r\n[0]");
}

TEST_F(FsUtilTest, TellsWhetherAnNtfsVolumeIsDirty) {
  tree_.mount("259:1", "/windows", "ntfs3", "/dev/nvme0n1p1");
  const std::string start = "ntfs3.1\n4096\n12499\n256\n87\n";
  tree_.put("/proc/fs/ntfs3/nvme0n1p1/volinfo", start + "clean\ndirty\n");
  EXPECT_EQ(run({"dirty", "query", "D:"}), "Volume - D: is NOT Dirty\r\n[0]");
  tree_.put("/proc/fs/ntfs3/nvme0n1p1/volinfo", start + "dirty\ndirty\n");
  EXPECT_EQ(run({"dirty", "query", "D:"}), "Volume - D: is Dirty\r\n[0]");
  tree_.put("/proc/fs/ntfs3/nvme0n1p1/volinfo", "ntfs3.1\n4096\n12499\n");  // an older kernel
  EXPECT_EQ(run({"dirty", "query", "D:"}),
            "Whether D: is dirty is not told by its file system, ntfs3.\r\n[1]");
}

TEST_F(FsUtilTest, RefusesToGuessWhetherAVolumeIsDirty) {
  tree_.mount("259:1", "/data", "xfs", "/dev/nvme0n1p1");
  EXPECT_EQ(run({"dirty", "query", "D:"}),
            "Whether D: is dirty is not told by its file system, xfs.\r\n[1]");
}

TEST_F(FsUtilTest, TellsWhatIsDoneAboutErrors) {
  tree_.put("/sys/fs/ext4/nvme0n1p2/errors_count", "3\n");
  EXPECT_EQ(run({"repair", "query", "C:"}),
            "File System Name : ext4\r\n"
            "Errors Recorded : 3\r\n"
            "Action On Errors : remount-ro\r\n[0]");
}

TEST_F(FsUtilTest, RefusesWhereNothingIsToldAboutErrors) {
  tree_.mount("259:1", "/data", "xfs", "/dev/nvme0n1p1", "/", "rw,errors,myerrors=x");
  EXPECT_EQ(run({"repair", "query", "D:"}),
            "What is done about errors on D: is not told by its file system, xfs.\r\n[1]");
}

// --- Places ---

TEST_F(FsUtilTest, TakesAFolderForWhatItLiesOn) {
  folders_["../data"] = "/srv/data";
  tree_.mount("259:1", "/srv", "xfs", "/dev/nvme0n1p1");
  tree_.mount("0:60", "/srv/data2", "tmpfs", "tmpfs");
  EXPECT_THAT(run({"fsinfo", "volumeinfo", "../data"}), HasSubstr("Mounted At : /srv\r\n"));
  folders_["../data"] = "/srv/data2";
  EXPECT_THAT(run({"fsinfo", "volumeinfo", "../data"}), HasSubstr("Mounted At : /srv/data2\r\n"));
  folders_["../data"] = "/srvx";
  EXPECT_THAT(run({"fsinfo", "volumeinfo", "../data"}), HasSubstr("Mounted At : /\r\n"));
}

TEST_F(FsUtilTest, FindsWhatAFolderLiesOnInAnyOrderOfTheList) {
  BlockTree tree;
  tree.mount("0:21", "/proc", "proc", "proc");
  tree.mount("0:22", "/", "overlay", "overlay");
  const FileTree files = tree.files();
  KeptOutput output;
  const auto same = [](const std::string& folder) { return folder; };
  FsUtil(files, machine_, same, output).run({"fsinfo", "volumeinfo", "/proc/self"});
  EXPECT_THAT(output.text, HasSubstr("Mounted At : /proc\r\n"));
}

TEST_F(FsUtilTest, CallsAFolderAsItIsWritten) {
  folders_["/root"] = "/root";
  EXPECT_EQ(run({"dirty", "query", "/root"}), "Volume - /root is NOT Dirty\r\n[0]");
}

TEST_F(FsUtilTest, RefusesADriveThatIsNotThere) {
  for (const char* query : {"diskfree", "DISKFREE"}) {
    EXPECT_EQ(run({"Volume", query, "q:\\"}), "There is no drive Q:.\r\n[1]");
  }
}

TEST_F(FsUtilTest, RefusesADriveWithoutAMedium) {
  tree_.disk("pci0000:00/ata2/host1/1:0:0:0", "sr0", "11:0", 2'000'000);
  EXPECT_EQ(run({"fsinfo", "volumeinfo", "D:"}), "There is no medium in drive D:.\r\n[1]");
}

TEST_F(FsUtilTest, RefusesAFolderThatIsNotThere) {
  EXPECT_EQ(run({"volume", "diskfree", "/no\nwhere"}), "There is no folder /no where.\r\n[1]");
}

// --- Servers that are gone ---

class FsUtilWithoutServer : public FsUtilTest {
 protected:
  FsUtilWithoutServer() {
    server_->rooms["/"] = {4096, 96'000, 50'000, 40'000, 255};
    machine_ = server_;
    questions_ = TimedQuestions(TimedQuestions::Patience(5));
    tree_.mount("0:50", "/share", "nfs", "server:/share");
  }

  std::shared_ptr<SilentServer> server_ = std::make_shared<SilentServer>();
};

TEST_F(FsUtilWithoutServer, RefusesTheRoom) {
  EXPECT_EQ(run({"volume", "diskfree", "D:"}), "The room on D: is not told.\r\n[1]");
  server_->comeBack();
}

TEST_F(FsUtilWithoutServer, LeavesOutWhatTheServerDoesNotTell) {
  EXPECT_EQ(run({"fsinfo", "volumeinfo", "D:"}),
            "File System Name : nfs\r\n"
            "Device : server:/share\r\n"
            "Mounted At : /share\r\n"
            "Read Only : No\r\n[0]");
  EXPECT_EQ(run({"fsinfo", "statistics", "D:"}), "File System Type : nfs\r\n[0]");
  EXPECT_EQ(server_->comeBack(), 1);
}

TEST_F(FsUtilWithoutServer, RefusesAFolderThatCannotBeReached) {
  KeptOutput output;
  const auto resolve = [server = server_](const std::string& folder) {
    server->wait();
    return folder;
  };
  const FileTree files = tree_.files();
  const int code =
      FsUtil(files, machine_, resolve, output, questions_).run({"volume", "diskfree", "/share/x"});
  EXPECT_EQ(output.text, "What /share/x lies on is not told.\r\n");
  EXPECT_EQ(code, 1);
  server_->comeBack();
}

TEST(FsUtilWithoutMounts, RefusesEveryFolder) {
  const TemporaryTree tree;
  const FileTree files = tree.files();
  const auto machine = std::make_shared<FakeMachine>();
  KeptOutput output;
  const auto same = [](const std::string& folder) { return folder; };
  EXPECT_EQ(FsUtil(files, machine, same, output).run({"dirty", "query", "/"}), 1);
  EXPECT_EQ(output.text, "What / lies on is not told.\r\n");
}

// --- Its command line ---

constexpr const char* kUsageStart = "\r\nUsage: fsutil dirty query place\r\n";

TEST_F(FsUtilTest, ShowsItsUsage) {
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{"-?"}, {"/?"}, {"dirty", "-?"}, {"volume", "diskfree", "/?"}}) {
    const std::string text = run(arguments);
    EXPECT_THAT(text, StartsWith(kUsageStart));
    EXPECT_THAT(text, ::testing::EndsWith("    -?    Show these lines.\r\n[0]"));
  }
}

TEST_F(FsUtilTest, ShowsItsUsageBehindACommandThatItDoesNotKnow) {
  const std::vector<std::pair<std::vector<std::string>, std::string>> kMistakes{
      {{}, "A command must be specified."},
      {{"format"}, "Bad command format."},
      {{"-x"}, "Bad command -x."},
      {{"Volume"}, "A command must be specified behind volume."},
      {{"fsinfo", "query", "C:"}, "Bad command fsinfo query."},
      {{"repair", "set", "C:"}, "Bad command repair set."},
  };
  for (const auto& [arguments, sentence] : kMistakes) {
    const std::string text = run(arguments);
    EXPECT_THAT(text, StartsWith(sentence + "\r\n" + kUsageStart));
    EXPECT_THAT(text, ::testing::EndsWith("[1]"));
  }
}

TEST_F(FsUtilTest, RefusesTooFewAndTooManyWords) {
  EXPECT_EQ(run({"dirty", "query"}), "A drive or folder must be specified.\r\n[1]");
  EXPECT_EQ(run({"dirty", "query", "C:", "D:"}), "Bad parameter D:.\r\n[1]");
}

TEST_F(FsUtilTest, EndsWhenNobodyReadsAnyMore) {
  EXPECT_EQ(run({"volume", "diskfree", "C:"}, 1),
            "Total # of free bytes        : 204800000\r\n[1]");
  EXPECT_EQ(run({"-?"}, 0), "[1]");
  EXPECT_EQ(run({"format"}, 1), "Bad command format.\r\n[1]");
}

}  // namespace
}  // namespace veltrin
