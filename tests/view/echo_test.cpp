// SPDX-License-Identifier: GPL-3.0-or-later
// What the user does while an echo has no answer waits, and the window lives on.
#include <arpa/inet.h>
#include <filesystem>

#include "platform/linux/linux_icmp.h"
#include "tests/platform/scratch_folder.h"
#include "view_test.h"

namespace veltrin {
namespace {

using testing::ElementsAre;

class PaintNotes : public QObject {
 public:
  PaintNotes(QWidget& widget, std::vector<std::string>& log) : log_(log) {
    widget.installEventFilter(this);
  }
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) log_.emplace_back("painted");
    return false;
  }

 private:
  std::vector<std::string>& log_;
};

// The echo goes to an address that nobody answers for: a tool of the test's own is silent.
class EchoTest : public ViewTest {
 protected:
  void SetUp() override {
    ViewTest::SetUp();
    tools.fill("ping", "#!/bin/sh\nexec sleep 1000\n");
    std::filesystem::permissions(tools.path("ping"), std::filesystem::perms::owner_all);
    form = shown<pingtester>();
    form->Command1.click = [this] { log.emplace_back("clicked"); };
  }

  // A routine of the window that waits for the echo's reply; `meanwhile` happens then.
  template <class Meanwhile>
  void duringEcho(Meanwhile meanwhile) {
    soon(meanwhile);
    atRest([this] {
      events.gate().post([this] {
        const Icmp::Handle handle = echoes.IcmpCreateFile();
        log.emplace_back("sent");
        echoes.IcmpSendEcho(handle, inet_addr("192.0.2.7"), "PING!", reply, kEchoReplySize, 20);
        log.emplace_back("no reply");
        echoes.IcmpCloseHandle(handle);
      });
    });
  }

  const ScratchFolder tools;
  LinuxIcmp echoes{tools.folder(),
                   [this](int descriptor, int milliseconds) {
                     sleepUntilReadable(events, descriptor, milliseconds);
                   },
                   {LinuxIcmp::Way::Tool}};
  ICMP_ECHO_REPLY reply;
  std::shared_ptr<pingtester> form;
  std::vector<std::string> log;
};

TEST_F(EchoTest, WhatComesInWaitsForTheEndOfTheEcho) {
  duringEcho([this] {
    clickAt(widget("Command1"));
    events.gate().post([this] { log.emplace_back("posted"); });
  });

  EXPECT_THAT(log, ElementsAre("sent", "no reply", "posted", "clicked"));
  EXPECT_EQ(reply.RoundTripTime, kNoReplyTime);
}

TEST_F(EchoTest, TheWindowIsPaintedDuringTheEcho) {
  const PaintNotes notes(*widget("pingcur_0"), log);

  // The paint event is the window system's next.
  duringEcho([this] { widget("pingcur_0")->update(); });

  EXPECT_THAT(log, ElementsAre("sent", "painted", "no reply"));
}

TEST_F(EchoTest, NoTimerTicksDuringTheEcho) {
  form->Timer1.timer = [this] {
    if (log.back() != "ticked") log.emplace_back("ticked");
  };

  duringEcho([this] { form->Timer1.interval = 1; });
  events.pumpUntil([this] { return log.back() == "ticked"; });

  EXPECT_THAT(log, ElementsAre("sent", "no reply", "ticked"));
}

// How the wait ends.
class SilentWaitTest : public ViewTest {
 protected:
  void SetUp() override { ASSERT_EQ(pipe(ends), 0); }
  void TearDown() override {
    close(ends[0]);
    close(ends[1]);
  }

  int ends[2]{};
};

TEST_F(SilentWaitTest, EndsWhenTheDescriptorCanBeRead) {
  ASSERT_EQ(write(ends[1], "x", 1), 1);
  sleepUntilReadable(events, ends[0], 3600000);
}

TEST_F(SilentWaitTest, EndsWhenTheTimeIsOverAndNotBefore) {
  const std::int64_t before = events.milliseconds();
  sleepUntilReadable(events, ends[0], 30);
  EXPECT_GE(events.milliseconds() - before, 29);
}

}  // namespace
}  // namespace veltrin
