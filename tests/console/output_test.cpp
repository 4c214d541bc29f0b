// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/output.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <string>
#include <unistd.h>

namespace veltrin {
namespace {

using Clock = std::chrono::steady_clock;

class FileOutputOfAPipe : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(pipe2(ends_.data(), O_CLOEXEC), 0); }

  void TearDown() override {
    close(ends_[0]);
    close(ends_[1]);
  }

  std::string read() {
    std::array<char, 256> bytes{};
    const ssize_t size = ::read(ends_[0], bytes.data(), bytes.size());
    return std::string(bytes.data(), size < 0 ? 0 : static_cast<std::size_t>(size));
  }

  std::array<int, 2> ends_{};
};

TEST_F(FileOutputOfAPipe, HandsOverWhatIsWritten) {
  FileOutput output(ends_[1]);
  EXPECT_TRUE(output.write("a line\r\n"));
  EXPECT_EQ(read(), "a line\r\n");
}

TEST_F(FileOutputOfAPipe, TellsThatTheReaderIsGone) {
  signal(SIGPIPE, SIG_IGN);
  close(ends_[0]);
  ends_[0] = -1;
  EXPECT_FALSE(FileOutput(ends_[1]).write("a line\r\n"));
}

TEST_F(FileOutputOfAPipe, WaitsALittleForAReader) {
  FileOutput output(ends_[1]);
  output.write("a line\r\n");
  const auto before = Clock::now();
  output.letReaderCatchUp();
  EXPECT_GE(Clock::now() - before, std::chrono::milliseconds(50));
}

TEST_F(FileOutputOfAPipe, DoesNotWaitForAnEmptyPipe) {
  auto shortest = Clock::duration::max();
  for (int attempt = 0; attempt < 5; ++attempt) {
    const auto before = Clock::now();
    FileOutput(ends_[1]).letReaderCatchUp();
    shortest = std::min(shortest, Clock::now() - before);
  }
  EXPECT_LT(shortest, std::chrono::milliseconds(50));
}

}  // namespace
}  // namespace veltrin
