// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/timed_room.h"

#include <gtest/gtest.h>

#include "block_tree.h"
#include "silent_server.h"

namespace veltrin {
namespace {

class TimedRoomTest : public testing::Test {
 protected:
  std::optional<FileSystemRoom> roomOf(const std::string& numbers, const std::string& folder,
                                       const std::string& type) const {
    return rooms_.of({0, VolumeKind::Unknown, "", {numbers, "/", folder, type, "x", "rw"}});
  }

  std::shared_ptr<SilentServer> server_ = std::make_shared<SilentServer>();
  BlockTree tree_;
  TimedRoom rooms_{tree_.files(), server_, TimedQuestions(TimedQuestions::Patience(5))};
};

TEST_F(TimedRoomTest, IsNotWaitedForWhereOthersServe) {
  int asked = 0;
  for (const char* type : {"nfs4", "cifs", "fuse.sshfs", "fuseblk", "autofs", "9p"}) {
    EXPECT_FALSE(roomOf("0:" + std::to_string(++asked), "/share", type)) << type;
  }
  server_->comeBack();
}

TEST_F(TimedRoomTest, IsAskedOnceOfAServerThatIsGone) {
  for (int time = 0; time < 4; ++time) {
    EXPECT_FALSE(roomOf("0:50", "/share", "nfs"));
  }
  EXPECT_EQ(server_->comeBack(), 1);
}

TEST_F(TimedRoomTest, IsAskedOfWhatTookThePlaceOfAServerThatIsGone) {
  EXPECT_FALSE(roomOf("0:50", "/share", "nfs"));
  server_->waitForQuestion();
  server_->rooms["/share"] = {4096, 20, 5, 4};
  std::optional<FileSystemRoom> told;
  for (int attempt = 0; attempt < 100 && !told; ++attempt) {
    told = roomOf("0:51", "/share", "nfs");
  }
  ASSERT_TRUE(told);
  EXPECT_EQ(told->total, 20U);
  server_->comeBack();
}

TEST_F(TimedRoomTest, IsToldOfAServerThatAnswers) {
  server_->rooms["/share"] = {4096, 20, 5, 4};
  const TimedRoom patient(tree_.files(), server_, TimedQuestions());
  const auto told =
      patient.of({0, VolumeKind::Network, "", {"0:51", "/", "/share", "nfs", "x", "rw"}});
  ASSERT_TRUE(told);
  EXPECT_EQ(told->total, 20U);
}

}  // namespace
}  // namespace veltrin
