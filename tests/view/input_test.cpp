// SPDX-License-Identifier: GPL-3.0-or-later
// What the user does while a console tool is silent waits, and the window lives on.
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

#include <QLineEdit>
#include <QTimer>

#include "frame/DOSOutputs.h"
#include "view_test.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PaintCounter : public QObject {
 public:
  explicit PaintCounter(QWidget& widget) { widget.installEventFilter(this); }
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++count;
    return false;
  }
  int count = 0;
};

// A named pipe; a child that reads it is silent until the test speaks.
class Silence {
 public:
  Silence() {
    std::string pattern = (std::filesystem::temp_directory_path() / "silence-XXXXXX").string();
    folder_ = mkdtemp(pattern.data());
    pipe_ = folder_ / "pipe";
    EXPECT_EQ(mkfifo(pipe_.c_str(), 0600), 0);
    writer_ = open(pipe_.c_str(), O_RDWR | O_CLOEXEC);
  }
  ~Silence() {
    end("");
    std::filesystem::remove_all(folder_);
  }
  Silence(const Silence&) = delete;
  Silence& operator=(const Silence&) = delete;

  std::string commandLine() const { return "/bin/head -n 1 " + pipe_.string(); }

  // Lets the child print a line and end.
  void end(const std::string& line) {
    if (writer_ < 0) return;
    const std::string text = line + "\n";
    EXPECT_EQ(write(writer_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    if (line.empty()) close(std::exchange(writer_, -1));
  }

 private:
  std::filesystem::path folder_;
  std::filesystem::path pipe_;
  int writer_ = -1;
};

class InputTest : public ViewTest {
 protected:
  void SetUp() override {
    ViewTest::SetUp();
    form = shown<pingtester>();
    form->url[0].text = "";
    form->url[0].change = [this] { log.push_back("typed " + form->url[0].text.get()); };
    form->Command1.click = [this] { log.emplace_back("start"); };
    form->Command4.click = [this] { log.emplace_back("quit"); };
  }

  // A routine of the window that starts a silent child; `meanwhile` happens while
  // it blocks, and then the child speaks.
  template <class Meanwhile>
  void duringSilence(Meanwhile meanwhile) {
    soon([this, meanwhile] {
      meanwhile();
      soon([this] {
        logInSilence = log;
        silence.end("spoken");
      });
    });
    atRest([this] {
      events.gate().post([this] {
        DOSOutputs runner(platform);
        runner.ReceiveOutputs = [this](const std::string& chunk) {
          if (!chunk.empty()) log.push_back("received " + chunk);
        };
        runner.ExecuteCommand(silence.commandLine());
      });
    });
  }

  Silence silence;
  std::shared_ptr<pingtester> form;
  std::vector<std::string> log;
  std::vector<std::string> logInSilence;
};

TEST_F(InputTest, ClicksAndKeysWaitForASilentChildAndComeInTheirOrder) {
  duringSilence([this] {
    clickAt(widget("Command4"));
    clickAt(widget("url_0"));
    type("ab");
    clickAt(widget("Command1"));
  });

  EXPECT_THAT(logInSilence, IsEmpty());
  EXPECT_THAT(log, ElementsAre("received spoken\n", "quit", "typed a", "typed ab", "start"));
}

TEST_F(InputTest, TheWidgetsDoNotMoveUntilTheInputIsHandedOn) {
  QString shownInSilence = "?";
  widget("url_0")->setFocus();

  duringSilence([&] {
    type("x");
    shownInSilence = widget<QLineEdit>("url_0")->text();
  });

  EXPECT_EQ(shownInSilence, "");
  EXPECT_EQ(widget<QLineEdit>("url_0")->text(), "x");
}

TEST_F(InputTest, TheWindowIsPaintedWhileTheChildIsSilent) {
  PaintCounter paints(*window);
  int before = 0;
  int after = 0;

  duringSilence([&] {
    before = paints.count;
    window->repaint();
    after = paints.count;
  });

  EXPECT_GT(after, before);
}

TEST_F(InputTest, AFigureThatChangedBeforeTheSilenceIsPaintedDuringIt) {
  PaintCounter paints(*widget("pingcur_0"));
  int inSilence = 0;
  soon([this] { form->pingcur[0].caption = "12"; });

  duringSilence([&] {
    soon([&] { inSilence = paints.count; });
    events.sleep();
  });

  EXPECT_GT(inSilence, 0);
}

TEST_F(InputTest, NoTimerTicksWhileTheChildIsSilent) {
  int ticksInSilence = -1;
  int ticks = 0;
  form->Timer1.timer = [&] { ++ticks; };
  form->Timer1.interval = 1;

  duringSilence([&] {
    events.sleep();
    events.sleep();
    ticksInSilence = ticks;
  });
  events.pumpUntil([&] { return ticks > 0; });

  EXPECT_EQ(ticksInSilence, 0);
}

TEST_F(InputTest, TheCloseButtonWaitsForTheSilentChild) {
  program.show<setlang>();
  bool loadedInSilence = false;

  duringSilence([&] {
    QTest::qWait(0);
    window->windowHandle()->close();
    loadedInSilence = form->isLoaded();
  });

  EXPECT_TRUE(loadedInSilence);
  EXPECT_FALSE(form->isLoaded());
}

TEST_F(InputTest, ARoutineThatPumpsHandsOnTheRestOfTheInput) {
  form->Command1.click = [this] {
    log.emplace_back("start");
    events.DoEvents();
    log.emplace_back("started");
  };

  duringSilence([this] {
    clickAt(widget("Command1"));
    clickAt(widget("Command4"));
  });

  EXPECT_THAT(log, ElementsAre("received spoken\n", "start", "quit", "started"));
}

TEST_F(InputTest, InputForAWindowThatHasGoneMeanwhileIsDropped) {
  program.show<setlang>();
  form->Command4.click = [this] {
    log.emplace_back("quit");
    form->unload();
  };

  duringSilence([this] {
    clickAt(widget("Command4"));
    clickAt(widget("Command1"));
  });

  EXPECT_THAT(log, ElementsAre("received spoken\n", "quit"));
}

TEST_F(InputTest, InputForAWindowThatAMessageBlocksIsDropped) {
  form->Command4.click = [this] {
    soon(
        [] { QTest::keyClick(QApplication::activeModalWidget()->windowHandle(), Qt::Key_Return); });
    program.MsgBox("wait");
    log.emplace_back("quit");
  };

  duringSilence([this] {
    clickAt(widget("Command4"));
    clickAt(widget("Command1"));
  });

  EXPECT_THAT(log, ElementsAre("received spoken\n", "quit"));
}

TEST_F(InputTest, AClickThatWaitsEndsThePauseOfAWaitAtOnce) {
  const auto began = events.milliseconds();
  form->Command1.click = [this] { events.gate().end(); };

  atRest([this] {
    events.gate().post([this] {
      DOSOutputs runner(platform);
      soon([this] {
        clickAt(widget("Command1"));
        silence.end("spoken");
      });
      runner.ExecuteCommand(silence.commandLine());
      program.Wait(60'000);
    });
  });

  EXPECT_LT(events.milliseconds() - began, 60'000);
}

TEST_F(InputTest, AWaitSleepsUntilItsTimeIsUp) {
  bool ticked = false;
  QTimer clip;
  clip.callOnTimeout([&] { ticked = true; });
  clip.start(5);
  events.gate().post([this] {
    program.Wait(20);
    log.emplace_back("waited");
  });

  atRest([] {});

  EXPECT_THAT(log, ElementsAre("waited"));
  EXPECT_TRUE(ticked);
}

TEST_F(InputTest, ATimerOfOneWindowTicksWhileTheTickOfAnotherWaits) {
  int nested = 0;
  form->Timer1.interval = 1;
  form->Timer1.timer = [&] {
    form->Timer1.enabled = false;
    events.pumpUntil([&] { return nested > 0; });
    log.emplace_back("first");
  };
  Timer other;
  const auto second = std::make_shared<pingtester>(program);
  second->Timer1.interval = 1;
  second->Timer1.timer = [&] { ++nested; };
  second->load();
  events.timers().add(second);

  events.pumpUntil([&] { return !log.empty(); });
  events.timers().remove(*second);

  EXPECT_GT(nested, 0);
}

}  // namespace
}  // namespace veltrin
