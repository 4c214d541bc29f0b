// Runs the built ping on the loopback interface and reads it through a pipe.
#include <array>
#include <fcntl.h>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <signal.h>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "console/echo_socket.h"

namespace veltrin {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;

// A running ping whose output and errors come through pipes.
class Program {
 public:
  explicit Program(std::vector<std::string> arguments) {
    if (pipe2(output_.data(), O_CLOEXEC) != 0 || pipe2(errors_.data(), O_CLOEXEC) != 0) {
      ADD_FAILURE() << "no pipe";
      return;
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, output_[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, errors_[1], STDERR_FILENO);
    arguments.insert(arguments.begin(), VELTRIN_PING);
    std::vector<char*> pointers;
    for (std::string& argument : arguments) {
      pointers.push_back(argument.data());
    }
    pointers.push_back(nullptr);
    EXPECT_EQ(posix_spawn(&process_, VELTRIN_PING, &actions, nullptr, pointers.data(), environ), 0);
    posix_spawn_file_actions_destroy(&actions);
    closeEnd(output_[1]);
    closeEnd(errors_[1]);
  }

  ~Program() {
    if (process_ > 0) {
      kill(process_, SIGKILL);
      waitpid(process_, nullptr, 0);
    }
    closeEnd(output_[0]);
    closeEnd(errors_[0]);
  }

  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  // The next piece of at most 256 bytes; empty at the end.
  std::string readPiece() { return readFrom(output_[0]); }

  // Adds pieces to `text` until it holds `wanted` or the output ends.
  void readUntil(const std::string& wanted, std::string& text) {
    while (text.find(wanted) == std::string::npos) {
      const std::string piece = readPiece();
      if (piece.empty()) {
        return;
      }
      text += piece;
    }
  }

  // The rest of the output; `last` is its last piece.
  std::string readRest(std::string* last = nullptr) {
    std::string text;
    for (std::string piece = readPiece(); !piece.empty(); piece = readPiece()) {
      text += piece;
      if (last != nullptr) {
        *last = piece;
      }
    }
    return text;
  }

  std::string readErrors() { return readFrom(errors_[0]); }

  void stopReading() { closeEnd(output_[0]); }

  // Waits for the end; the exit code, -1 when a signal ended it.
  int exitCode() {
    int status = 0;
    waitpid(process_, &status, 0);
    process_ = 0;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  pid_t process() const { return process_; }

 private:
  static std::string readFrom(int file) {
    std::array<char, 256> bytes{};
    const ssize_t size = read(file, bytes.data(), bytes.size());
    return std::string(bytes.data(), size < 0 ? 0 : static_cast<std::size_t>(size));
  }

  static void closeEnd(int& file) {
    if (file >= 0) {
      close(file);
      file = -1;
    }
  }

  pid_t process_ = 0;
  std::array<int, 2> output_{-1, -1};
  std::array<int, 2> errors_{-1, -1};
};

// Why this machine cannot ping its loopback address; empty when it can.
std::string obstacle(const std::string& loopback) {
  EchoRequest request;
  request.destination = *Address::parse(loopback);
  EchoSocket socket;
  if (!socket.open(request.destination.family)) {
    return "this user may open no ICMP socket";
  }
  return socket.send(request) == 0 ? "" : "this machine has no " + loopback;
}

class PingProgram : public ::testing::Test {
 protected:
  void SetUp() override {
    const std::string reason = obstacle("127.0.0.1");
    if (!reason.empty()) {
      GTEST_SKIP() << reason;
    }
  }
};

class PingProgram6 : public ::testing::Test {
 protected:
  void SetUp() override {
    const std::string reason = obstacle("::1");
    if (!reason.empty()) {
      GTEST_SKIP() << reason;
    }
  }
};

TEST_F(PingProgram, PrintsOneReplyOfTheLoopback) {
  Program ping({"127.0.0.1", "-n", "1", "-i", "64"});
  EXPECT_THAT(ping.readRest(),
              ::testing::MatchesRegex(
                  "\r\n"
                  "Pinging 127\\.0\\.0\\.1 with 32 bytes of data:\r\n"
                  "Reply from 127\\.0\\.0\\.1: bytes=32 time(<1|=[0-9]+)ms TTL=64\r\n"
                  "\r\n"
                  "Ping statistics for 127\\.0\\.0\\.1:\r\n"
                  "    Packets: Sent = 1, Received = 1, Lost = 0 \\(0% loss\\),\r\n"
                  "Approximate round trip times in milli-seconds:\r\n"
                  "    Minimum = [0-9]+ms, Maximum = [0-9]+ms, Average = [0-9]+ms \r\n"));
}

TEST_F(PingProgram6, PrintsOneReplyOfTheLoopback) {
  Program ping({"::1", "-n", "1"});
  EXPECT_THAT(ping.readRest(),
              ::testing::MatchesRegex(
                  "\r\n"
                  "Pinging ::1 with 32 bytes of data:\r\n"
                  "Reply from ::1: time(<1|=[0-9]+)ms\r\n"
                  "\r\n"
                  "Ping statistics for ::1:\r\n"
                  "    Packets: Sent = 1, Received = 1, Lost = 0 \\(0% loss\\),\r\n"
                  "Approximate round trip times in milli-seconds:\r\n"
                  "    Minimum = [0-9]+ms, Maximum = [0-9]+ms, Average = [0-9]+ms \r\n"));
}

TEST_F(PingProgram, EndsInExactlyThreeCharactersBehindTheAverage) {
  Program ping({"127.0.0.1", "-n", "1"});
  const std::string text = ping.readRest();
  EXPECT_EQ(text.substr(text.rfind("ms")), "ms \r\n");
}

TEST_F(PingProgram, HandsItsReaderTheSummaryLineInAPieceOfItsOwn) {
  Program ping({"127.0.0.1", "-n", "1"});
  std::string last;
  ping.readRest(&last);
  EXPECT_THAT(last, ::testing::StartsWith("    Minimum = "));
  EXPECT_THAT(last, EndsWith("ms \r\n"));
}

TEST_F(PingProgram, WithAReplyEndsWell) {
  Program ping({"127.0.0.1", "-n", "1"});
  ping.readRest();
  EXPECT_EQ(ping.exitCode(), 0);
}

TEST_F(PingProgram, WritesNothingToTheErrorStream) {
  Program ping({"127.0.0.1", "-n", "1"});
  ping.readRest();
  EXPECT_EQ(ping.readErrors(), "");
}

TEST_F(PingProgram, PassesTheLargestPacketUnsplit) {
  Program ping({"-f", "-l", "65500", "127.0.0.1", "-n", "1"});
  EXPECT_THAT(ping.readRest(), HasSubstr("Reply from 127.0.0.1: bytes=65500 time"));
}

TEST_F(PingProgram, SaysThatAHostCouldNotBeFound) {
  Program ping({"nosuch.invalid"});
  EXPECT_EQ(ping.readRest(),
            "Ping request could not find host nosuch.invalid. Please check the name and try "
            "again.\r\n");
  EXPECT_EQ(ping.exitCode(), 1);
}

TEST_F(PingProgram, RefusesASourceOfAnotherMachine) {
  Program ping({"127.0.0.1", "-S", "203.0.113.250"});
  EXPECT_EQ(ping.readRest(),
            "PING: cannot send from 203.0.113.250: it is not an address of this machine.\r\n");
}

TEST_F(PingProgram, SendsFromTheChosenSource) {
  Program ping({"127.0.0.1", "-S", "127.0.0.9", "-n", "1"});
  EXPECT_THAT(ping.readRest(), HasSubstr("Packets: Sent = 1, Received = 1, Lost = 0 (0% loss),"));
}

TEST_F(PingProgram, RecordsTheRouteOfTheLoopback) {
  Program ping({"127.0.0.1", "-r", "2", "-n", "1"});
  EXPECT_THAT(ping.readRest(), HasSubstr("    Route: 127.0.0.1 ->\r\n"
                                         "           127.0.0.1\r\n"));
}

TEST_F(PingProgram, DoesNotTakeAnotherPingsReplies) {
  Program first({"127.0.0.1", "-n", "2"});
  Program second({"127.0.0.1", "-n", "2"});
  EXPECT_THAT(first.readRest(), HasSubstr("Sent = 2, Received = 2, Lost = 0 (0% loss),"));
  EXPECT_THAT(second.readRest(), HasSubstr("Sent = 2, Received = 2, Lost = 0 (0% loss),"));
}

TEST_F(PingProgram, StoppedByTheUserPrintsItsFigures) {
  Program ping({"-t", "127.0.0.1"});
  std::string text;
  ping.readUntil("TTL=", text);
  kill(ping.process(), SIGINT);
  text += ping.readRest();
  EXPECT_THAT(text, HasSubstr(", Lost = 0 (0% loss),\r\n"));
  EXPECT_THAT(text, EndsWith("ms \r\nControl-C\r\n\r\n"));
  EXPECT_EQ(ping.exitCode(), 0);
}

TEST_F(PingProgram, HoldsNoPrivilegeWhileItRuns) {
  Program ping({"-t", "127.0.0.1"});
  std::string text;
  ping.readUntil("Pinging", text);
  std::ifstream status("/proc/" + std::to_string(ping.process()) + "/status");
  const std::string all((std::istreambuf_iterator<char>(status)), {});
  EXPECT_THAT(all, HasSubstr("CapInh:\t0000000000000000\n"
                             "CapPrm:\t0000000000000000\n"
                             "CapEff:\t0000000000000000\n"));
}

TEST_F(PingProgram, EndsInSilenceWhenItsReaderGoes) {
  Program ping({"-t", "127.0.0.1"});
  ping.readPiece();
  ping.stopReading();
  EXPECT_EQ(ping.exitCode(), 1);
  EXPECT_EQ(ping.readErrors(), "");
}

}  // namespace
}  // namespace veltrin
