// SPDX-License-Identifier: GPL-3.0-or-later
#include <arpa/inet.h>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <linux/capability.h>
#include <poll.h>
#include <string>
#include <sys/syscall.h>
#include <sys/time.h>
#include <thread>

#include "platform/linux/linux_icmp.h"
#include "tests/platform/echo_answerer.h"
#include "tests/platform/own_network.h"
#include "tests/platform/scratch_folder.h"

namespace veltrin {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;
using Way = LinuxIcmp::Way;

const std::string kData = "PING!PING!PING!PING!PING!PING!";
constexpr std::uint32_t kTimeout = 1000;  // ms, for a machine that does much else
constexpr const char* kThisMachine = "127.0.0.1";

std::uint32_t inMemory(const char* dotted) { return inet_addr(dotted); }

std::size_t openDescriptors() {
  std::size_t count = 0;
  for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
    ++count;
  }
  return count;
}

// What one echo through a handle of its own has brought.
struct Outcome {
  std::uint32_t replies = 0;
  ICMP_ECHO_REPLY reply;
  milliseconds took{};
};

Outcome echo(LinuxIcmp& icmp, const char* address, std::uint32_t timeout = kTimeout) {
  Outcome outcome;
  const Icmp::Handle handle = icmp.IcmpCreateFile();
  EXPECT_NE(handle, Icmp::kNoHandle);
  const auto before = steady_clock::now();
  outcome.replies =
      icmp.IcmpSendEcho(handle, inMemory(address), kData, outcome.reply, kEchoReplySize, timeout);
  outcome.took = std::chrono::floor<milliseconds>(steady_clock::now() - before);
  EXPECT_TRUE(icmp.IcmpCloseHandle(handle));
  return outcome;
}

void expectReply(const Outcome& outcome) {
  EXPECT_EQ(outcome.replies, 1U);
  EXPECT_EQ(outcome.reply.Status, kIpSuccess);
  EXPECT_EQ(outcome.reply.Address, inMemory(kThisMachine));
  EXPECT_EQ(outcome.reply.DataSize, 30);
  EXPECT_EQ(outcome.reply.Data, kData);
}

void expectNoReply(const Outcome& outcome, std::uint32_t status) {
  EXPECT_EQ(outcome.replies, 0U);
  EXPECT_EQ(outcome.reply.RoundTripTime, kNoReplyTime);
  EXPECT_EQ(outcome.reply.Status, status);
  EXPECT_EQ(outcome.reply.Data, "");
}

TEST(LinuxIcmpTest, TheLayerStartsInTheVersionAskedForAndTellsItsSockets) {
  LinuxIcmp icmp("");
  WSADATA layer;
  EXPECT_EQ(icmp.WSAStartup(0x0101, layer), 0);
  EXPECT_EQ(layer.wVersion, 0x0101);
  EXPECT_EQ(layer.iMaxSockets, 32767);
  EXPECT_EQ(icmp.WSACleanup(), 0);
}

TEST(LinuxIcmpTest, TheLayerHasNoVersionAbove2Point2) {
  LinuxIcmp icmp("");
  WSADATA layer;
  icmp.WSAStartup(0x0003, layer);
  EXPECT_EQ(layer.wVersion, 0x0202);
  icmp.WSAStartup(0x0901, layer);
  EXPECT_EQ(layer.wVersion, 0x0901);
}

TEST(LinuxIcmpTest, WhereNoWayIsOpenThereIsNoHandle) {
  const ScratchFolder noTools;
  LinuxIcmp icmp(noTools.folder(), {}, {Way::Tool});
  EXPECT_EQ(icmp.IcmpCreateFile(), Icmp::kNoHandle);
}

TEST(LinuxIcmpTest, NoHandleSendsNothingAndCannotBeClosed) {
  LinuxIcmp icmp("", [](int, int) { ADD_FAILURE() << "waited"; });
  Outcome outcome;
  outcome.replies = icmp.IcmpSendEcho(Icmp::kNoHandle, inMemory(kThisMachine), kData, outcome.reply,
                                      kEchoReplySize, kTimeout);
  expectNoReply(outcome, kIpGeneralFailure);
  EXPECT_FALSE(icmp.IcmpCloseHandle(Icmp::kNoHandle));
}

// Each of these on both kinds of socket.
class SocketEchoTest : public testing::TestWithParam<Way> {
 protected:
  // The routine has a network of its own, in which it may send echoes.
  template <class Routine>
  static void allowed(Routine routine) {
    inOwnNetwork([routine] {
      ASSERT_TRUE(allowEchoes());
      routine();
    });
  }

  // There the kernel answers none.
  template <class Routine>
  static void inSilence(Routine routine) {
    allowed([routine] {
      ASSERT_TRUE(silenceKernel());
      routine();
    });
  }

  static LinuxIcmp icmpWith(LinuxIcmp::WhileSilent whileSilent = {}) {
    return LinuxIcmp("", std::move(whileSilent), {GetParam()});
  }

  // Does one thing at each wait of an echo, from the first on, and then waits on.
  static LinuxIcmp::WhileSilent atEachWait(std::vector<std::function<void()>> things) {
    return [things, next = std::size_t{0}](int descriptor, int most) mutable {
      if (next < things.size()) {
        things[next++]();
      } else {
        pollfd entry{descriptor, POLLIN, 0};
        poll(&entry, 1, most);
      }
    };
  }
};

INSTANTIATE_TEST_SUITE_P(Kinds, SocketEchoTest, testing::Values(Way::Datagram, Way::Raw),
                         [](const auto& kind) {
                           return kind.param == Way::Raw ? "Raw" : "Datagram";
                         });

TEST_P(SocketEchoTest, ThisMachineSendsBackWhatItWasSent) {
  allowed([] {
    LinuxIcmp icmp = icmpWith();
    const Outcome outcome = echo(icmp, kThisMachine);
    expectReply(outcome);
    EXPECT_LT(outcome.reply.RoundTripTime, 100U);
    EXPECT_EQ(outcome.reply.Options.Ttl, 64);
  });
}

TEST_P(SocketEchoTest, TheRequestIsWholeAndHoldsTheData) {
  inSilence([] {
    EchoAnswerer answerer;
    std::string request;
    LinuxIcmp icmp = icmpWith([&](int, int) {
      if (request.empty()) request = answerer.nextRequest();
    });
    echo(icmp, kThisMachine, 1);
    ASSERT_EQ(request.size(), 38U);
    EXPECT_EQ(request.substr(0, 2), std::string("\x08\0", 2));
    EXPECT_EQ(request.substr(8), kData);
    std::uint32_t sum = 0;
    for (std::size_t at = 0; at < request.size(); at += 2) {
      sum += static_cast<std::uint8_t>(request[at]) * 256U +
             static_cast<std::uint8_t>(request[at + 1]);
    }
    EXPECT_EQ((sum & 0xFFFF) + (sum >> 16), 0xFFFFU);
  });
}

TEST_P(SocketEchoTest, ASilentAddressHasNoReplyWhenTheTimeIsOver) {
  inSilence([] {
    LinuxIcmp icmp = icmpWith();
    const Outcome outcome = echo(icmp, kThisMachine);
    expectNoReply(outcome, kIpTimedOut);
    EXPECT_GE(outcome.took, milliseconds(kTimeout));
    EXPECT_LT(outcome.took, milliseconds(kTimeout + 500));
  });
}

TEST_P(SocketEchoTest, SignalsDoNotShortenTheWait) {
  inSilence([] {
    static int signals = 0;
    struct sigaction action {};
    action.sa_handler = [](int) { ++signals; };
    sigaction(SIGALRM, &action, nullptr);
    const itimerval often{{0, 5000}, {0, 5000}};
    setitimer(ITIMER_REAL, &often, nullptr);
    LinuxIcmp icmp = icmpWith();
    const Outcome outcome = echo(icmp, kThisMachine, 100);
    expectNoReply(outcome, kIpTimedOut);
    EXPECT_GE(outcome.took, milliseconds(100));
    EXPECT_GT(signals, 1);
  });
}

TEST_P(SocketEchoTest, TheHookHasTheDescriptorAndTheTimeThatIsLeft) {
  inSilence([] {
    std::vector<int> left;
    LinuxIcmp icmp = icmpWith([&left](int descriptor, int most) {
      left.push_back(most);
      pollfd entry{descriptor, POLLIN, 0};
      EXPECT_EQ(poll(&entry, 1, left.size() == 1 ? 300 : most), 0);
    });
    expectNoReply(echo(icmp, kThisMachine, 900), kIpTimedOut);
    ASSERT_GE(left.size(), 2U);
    EXPECT_LE(left[0], 900);
    EXPECT_GT(left[0], 600);
    EXPECT_LE(left[1], 600);
  });
}

TEST_P(SocketEchoTest, AReplyToTheEchoBeforeIsNotTakenForThisOnes) {
  inSilence([] {
    EchoAnswerer answerer;
    std::string late;
    LinuxIcmp icmp = icmpWith(atEachWait({
        [&] { late = answerer.nextRequest(); },
        [] { std::this_thread::sleep_for(milliseconds(310)); },
        [&] { answerer.send(EchoAnswerer::replyTo(late)); },
    }));
    // The same handle, so that even the kernel cannot tell the two apart.
    const Icmp::Handle handle = icmp.IcmpCreateFile();
    Outcome outcome;
    const auto send = [&](std::uint32_t timeout) {
      outcome.replies = icmp.IcmpSendEcho(handle, inMemory(kThisMachine), kData, outcome.reply,
                                          kEchoReplySize, timeout);
    };
    send(300);
    expectNoReply(outcome, kIpTimedOut);
    ASSERT_NE(late, "");
    send(600);
    expectNoReply(outcome, kIpTimedOut);
    icmp.IcmpCloseHandle(handle);
  });
}

TEST_P(SocketEchoTest, AReplyWithOtherDataIsPassedOver) {
  inSilence([] {
    EchoAnswerer answerer;
    std::string request;
    LinuxIcmp icmp = icmpWith(atEachWait({
        [&] {
          request = answerer.nextRequest();
          std::string other = request;
          other.back() = '?';
          answerer.send(EchoAnswerer::replyTo(other));
          answerer.send(EchoAnswerer::replyTo(request + "!"));
          answerer.send(EchoAnswerer::replyTo(request.substr(0, 37)));
        },
        [&] { answerer.send(EchoAnswerer::replyTo(request)); },
    }));
    const Outcome outcome = echo(icmp, kThisMachine);
    expectReply(outcome);
    EXPECT_NE(request, "");
  });
}

TEST_P(SocketEchoTest, AReplyToAnotherProgramIsPassedOver) {
  inSilence([] {
    EchoAnswerer answerer;
    LinuxIcmp icmp = icmpWith(atEachWait({[&] {
      std::string other = answerer.nextRequest();
      other[5] = static_cast<char>(other[5] + 1);
      answerer.send(EchoAnswerer::replyTo(other));
    }}));
    expectNoReply(echo(icmp, kThisMachine, 50), kIpTimedOut);
  });
}

TEST_P(SocketEchoTest, AnAnswerBehindTheTimeIsNone) {
  inSilence([] {
    EchoAnswerer answerer;
    LinuxIcmp icmp = icmpWith(atEachWait({[&] {
      std::this_thread::sleep_for(milliseconds(30));
      answerer.send(EchoAnswerer::replyTo(answerer.nextRequest()));
    }}));
    expectNoReply(echo(icmp, kThisMachine, 20), kIpTimedOut);
  });
}

TEST_P(SocketEchoTest, AnAnswerInTimeCountsHoweverLateTheProgramLooks) {
  inSilence([] {
    EchoAnswerer answerer;
    LinuxIcmp icmp = icmpWith(atEachWait({[&] {
      // The kernel stamps arrivals a while after the first socket that asked for it.
      std::this_thread::sleep_for(milliseconds(30));
      answerer.send(EchoAnswerer::replyTo(answerer.nextRequest()));
      std::this_thread::sleep_for(milliseconds(620));
    }}));
    const Outcome outcome = echo(icmp, kThisMachine, 600);
    expectReply(outcome);
    EXPECT_GE(outcome.reply.RoundTripTime, 30U);
    EXPECT_LE(outcome.reply.RoundTripTime, 600U);
    EXPECT_GE(outcome.took, milliseconds(650));
  });
}

struct ErrorCase {
  char type;
  char code;
  std::uint32_t status;
};

TEST_P(SocketEchoTest, AnErrorAboutTheEchoEndsTheWaitAndIsToldAsItsStatus) {
  for (const ErrorCase& error :
       {ErrorCase{3, 0, kIpNetUnreachable}, ErrorCase{3, 1, kIpHostUnreachable},
        ErrorCase{3, 2, kIpProtocolUnreachable}, ErrorCase{3, 3, kIpPortUnreachable},
        ErrorCase{3, 13, kIpHostUnreachable}, ErrorCase{11, 0, kIpHopsExceeded},
        ErrorCase{12, 0, kIpBadParameter}}) {
    SCOPED_TRACE(int{error.type} * 100 + error.code);
    inSilence([error] {
      EchoAnswerer answerer;
      LinuxIcmp icmp = icmpWith(atEachWait({[&] {
        const std::string request = answerer.nextRequest();
        answerer.send(answerer.errorAbout(request, error.type, error.code));
      }}));
      const Outcome outcome = echo(icmp, kThisMachine, 5000);
      expectNoReply(outcome, error.status);
      EXPECT_EQ(outcome.reply.Address, inMemory(kThisMachine));
      EXPECT_LT(outcome.took, milliseconds(2500));
    });
  }
}

TEST_P(SocketEchoTest, AnErrorAboutAnEarlierEchoIsPassedOver) {
  inSilence([] {
    EchoAnswerer answerer;
    LinuxIcmp icmp = icmpWith(atEachWait({[&] {
      std::string earlier = answerer.nextRequest();
      earlier[7] = static_cast<char>(earlier[7] - 1);
      answerer.send(answerer.errorAbout(earlier, 3, 1));
    }}));
    expectNoReply(echo(icmp, kThisMachine, 50), kIpTimedOut);
  });
}

TEST_P(SocketEchoTest, AnErrorThatIsStillToBeToldDoesNotStopTheNextEcho) {
  inSilence([] {
    EchoAnswerer answerer;
    std::string first;
    LinuxIcmp icmp = icmpWith(atEachWait({
        [&] { first = answerer.nextRequest(); },
        [] { std::this_thread::sleep_for(milliseconds(310)); },
        [&] { answerer.send(EchoAnswerer::replyTo(answerer.nextRequest())); },
    }));
    const Icmp::Handle handle = icmp.IcmpCreateFile();
    Outcome outcome;
    icmp.IcmpSendEcho(handle, inMemory(kThisMachine), kData, outcome.reply, kEchoReplySize, 300);
    ASSERT_NE(first, "");
    answerer.send(answerer.errorAbout(first, 3, 1));
    outcome.replies = icmp.IcmpSendEcho(handle, inMemory(kThisMachine), kData, outcome.reply,
                                        kEchoReplySize, kTimeout);
    expectReply(outcome);
    icmp.IcmpCloseHandle(handle);
  });
}

TEST_P(SocketEchoTest, AnEchoThatCannotBeSentEndsAtOnce) {
  allowed([] {
    LinuxIcmp icmp = icmpWith([](int, int) { ADD_FAILURE() << "waited"; });
    expectNoReply(echo(icmp, "198.51.100.1"), kIpNetUnreachable);
    expectNoReply(echo(icmp, "127.255.255.255"), kIpGeneralFailure);  // a broadcast
    expectNoReply(echo(icmp, "0.0.0.0"), kIpBadDestination);
  });
}

TEST_P(SocketEchoTest, AReplyThatDoesNotFitIsNone) {
  allowed([] {
    LinuxIcmp icmp = icmpWith();
    const Icmp::Handle handle = icmp.IcmpCreateFile();
    Outcome outcome;
    outcome.replies =
        icmp.IcmpSendEcho(handle, inMemory(kThisMachine), kData, outcome.reply, 57, kTimeout);
    expectNoReply(outcome, kIpBufferTooSmall);
    outcome.replies =
        icmp.IcmpSendEcho(handle, inMemory(kThisMachine), kData, outcome.reply, 58, kTimeout);
    expectReply(outcome);
    icmp.IcmpCloseHandle(handle);
  });
}

TEST_P(SocketEchoTest, TheRecordHoldsNoMoreThanItsDataHasRoomFor) {
  allowed([] {
    LinuxIcmp icmp = icmpWith();
    const Icmp::Handle handle = icmp.IcmpCreateFile();
    ICMP_ECHO_REPLY reply;
    EXPECT_EQ(icmp.IcmpSendEcho(handle, inMemory(kThisMachine), std::string(600, 'x'), reply, 1000,
                                kTimeout),
              1U);
    EXPECT_EQ(reply.DataSize, 600);
    EXPECT_EQ(reply.Data, std::string(250, 'x'));
    icmp.IcmpCloseHandle(handle);
  });
}

TEST_P(SocketEchoTest, AHandleCanBeClosedOnceAndSendsNothingBehindThat) {
  allowed([] {
    LinuxIcmp icmp = icmpWith([](int, int) { ADD_FAILURE() << "waited"; });
    const Icmp::Handle handle = icmp.IcmpCreateFile();
    EXPECT_TRUE(icmp.IcmpCloseHandle(handle));
    EXPECT_FALSE(icmp.IcmpCloseHandle(handle));
    Outcome outcome;
    outcome.replies = icmp.IcmpSendEcho(handle, inMemory(kThisMachine), kData, outcome.reply,
                                        kEchoReplySize, kTimeout);
    expectNoReply(outcome, kIpGeneralFailure);
  });
}

TEST_P(SocketEchoTest, FiftyEchoesLeaveNoDescriptorOpen) {
  allowed([] {
    LinuxIcmp icmp = icmpWith();
    expectReply(echo(icmp, kThisMachine));
    const std::size_t before = openDescriptors();
    for (int i = 0; i < 50; ++i) expectReply(echo(icmp, kThisMachine));
    EXPECT_EQ(openDescriptors(), before);
  });
}

// Which way is open may change from one echo to the next.
class EchoRightsTest : public testing::Test {
 protected:
  static void dropAllRights() {
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    const __user_cap_data_struct none[2]{};
    ASSERT_EQ(syscall(SYS_capset, &header, none), 0);
  }

  // A tool whose round trip is none that the kernel would tell of this machine.
  static void putTool(const ScratchFolder& folder) {
    folder.fill("ping",
                "#!/bin/sh\nprintf 'Reply from 127.0.0.1: bytes=30 time=77ms TTL=9\\r\\n'\n");
    std::filesystem::permissions(folder.path("ping"), std::filesystem::perms::owner_all);
  }
};

TEST_F(EchoRightsTest, TheRawSocketStandsInWhereTheKernelRefusesTheOther) {
  inOwnNetwork([] {
    LinuxIcmp icmp("");
    expectReply(echo(icmp, kThisMachine));
  });
}

TEST_F(EchoRightsTest, TheToolStandsInWhereTheKernelRefusesBoth) {
  inOwnNetwork([] {
    const ScratchFolder tools;
    putTool(tools);
    LinuxIcmp icmp(tools.folder());
    dropAllRights();
    const Outcome outcome = echo(icmp, kThisMachine);
    expectReply(outcome);
    EXPECT_EQ(outcome.reply.RoundTripTime, 77U);
  });
}

TEST_F(EchoRightsTest, OnceTheKernelAllowsItTheSocketIsTaken) {
  inOwnNetwork([] {
    const ScratchFolder tools;
    putTool(tools);
    LinuxIcmp icmp(tools.folder(), {}, {Way::Datagram, Way::Tool});
    EXPECT_EQ(echo(icmp, kThisMachine).reply.RoundTripTime, 77U);
    ASSERT_TRUE(allowEchoes());
    EXPECT_LT(echo(icmp, kThisMachine).reply.RoundTripTime, 77U);
  });
}

}  // namespace
}  // namespace veltrin
