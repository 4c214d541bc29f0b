// SPDX-License-Identifier: GPL-3.0-or-later
// Printers that are gone, refuse, or stay silent.
#include <arpa/inet.h>
#include <array>
#include <netinet/in.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QTimer>
#include <QWidget>

#include "machine/linux_machine.h"
#include "platform/linux/wmi_classes.h"
#include "tests/printing/printing_test.h"

extern char** environ;

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

// A place where calls are taken by the system and nobody ever answers.
class SilentPlace {
 public:
  SilentPlace() {
    address_.sin_family = AF_INET;
    address_.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address_;
    auto* address = reinterpret_cast<sockaddr*>(&address_);
    isThere_ = bind(socket_, address, size) == 0 && listen(socket_, 64) == 0 &&
               getsockname(socket_, address, &size) == 0;
  }
  ~SilentPlace() { close(socket_); }
  SilentPlace(const SilentPlace&) = delete;
  SilentPlace& operator=(const SilentPlace&) = delete;

  bool isThere() const { return isThere_; }
  std::string name() const { return "127.0.0.1:" + std::to_string(ntohs(address_.sin_port)); }

 private:
  int socket_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address_{};
  bool isThere_ = false;
};

class PrinterListTest : public PrintingTest {
 protected:
  const ScratchFolder home_;
};

TEST_F(PrinterListTest, NamesEveryPrinterAndTheDefaultOne) {
  serve({{"Plain"}, {"Other"}});
  EXPECT_THAT(printers.deviceNames(), UnorderedElementsAre("Plain", "Other"));
  EXPECT_EQ(printers.defaultDeviceName(), "Plain");
}

TEST_F(PrinterListTest, WithoutADefaultPrinterItsNameIsEmpty) {
  serve({{"Plain"}}, false);
  EXPECT_THAT(printers.deviceNames(), ElementsAre("Plain"));
  EXPECT_EQ(printers.defaultDeviceName(), "");
}

// What the system report tells of the printers.
class PrinterReportTest : public PrinterListTest {
 protected:
  // "NAME: DESCRIPTION" of each.
  std::vector<std::string> told() {
    const WmiSources sources{FileTree(), std::make_shared<LinuxMachine>(),
                             [this] { return printers.facts(); }};
    std::vector<std::string> lines;
    for (const WmiObject& printer : win32Printer(sources)) {
      lines.push_back(printer.value("Name").text() + ": " + printer.value("Description").text());
    }
    return lines;
  }
};

TEST_F(PrinterReportTest, NamesEveryPrinterWithItsOwnersDescription) {
  serve(
      {{"Plain", "A4", false, "The printer by the window"}, {"Other", "A4", false, "Spare, 2nd"}});
  EXPECT_THAT(told(),
              UnorderedElementsAre("Plain: The printer by the window", "Other: Spare, 2nd"));
}

TEST_F(PrinterReportTest, NamesPrintersWhoseDescriptionsAreLate) {
  serve({{"Plain", "A4", false, "The printer by the window"}});
  ASSERT_THAT(printers.deviceNames(), ElementsAre("Plain"));
  server->silence();
  const int asked = millisecondsOf([&] { EXPECT_THAT(told(), ElementsAre("Plain: ")); });
  EXPECT_GE(asked, 1400);
  EXPECT_LT(asked, 2500);
}

TEST_F(PrinterReportTest, IsEmptyInTimeWhenTheServerStaysSilent) {
  const SilentPlace place;
  ASSERT_TRUE(place.isThere());
  usePrintServer(place.name(), home_.path(""));
  EXPECT_LT(millisecondsOf([&] { EXPECT_THAT(told(), IsEmpty()); }), 2500);
}

TEST_F(PrinterListTest, IsEmptyWithoutPrinters) {
  serve({});
  EXPECT_THAT(printers.deviceNames(), IsEmpty());
  EXPECT_EQ(printers.defaultDeviceName(), "");
  EXPECT_THROW(printers.open("Plain"), StatementFailed);
}

TEST_F(PrinterListTest, IsEmptyAtOnceWithoutAServer) {
  serve({{"Plain"}});
  server->stop();
  EXPECT_LT(millisecondsOf([&] { EXPECT_THAT(printers.deviceNames(), IsEmpty()); }), 1400);
  EXPECT_THROW(printers.open("Plain"), StatementFailed);
}

TEST_F(PrinterListTest, IsEmptyInTimeWhenTheServerStaysSilent) {
  const SilentPlace place;
  ASSERT_TRUE(place.isThere());
  usePrintServer(place.name(), home_.path(""));
  const int asked = millisecondsOf([&] { EXPECT_THAT(printers.deviceNames(), IsEmpty()); });
  EXPECT_GE(asked, 1400);
  EXPECT_LT(asked, 2500);
  EXPECT_LT(millisecondsOf([&] { EXPECT_EQ(printers.defaultDeviceName(), ""); }), 500);
}

TEST_F(PrinterListTest, OpeningFailsInTimeWhenTheServerStaysSilent) {
  const SilentPlace place;
  ASSERT_TRUE(place.isThere());
  usePrintServer(place.name(), home_.path(""));
  EXPECT_LT(millisecondsOf([&] { EXPECT_THROW(printers.open("Plain"), StatementFailed); }), 8000);
}

TEST_F(PrinterListTest, WhatTheServerTellsLateIsTheAnswerToTheNextCall) {
  serve({{"Plain"}});
  server->silence();
  EXPECT_THAT(printers.deviceNames(), IsEmpty());
  server->goOn();
  constexpr int kTries = 500;
  std::vector<std::string> names;
  for (int wait = 0; wait < kTries && names.empty(); ++wait) {
    usleep(10'000);
    names = printers.deviceNames();
  }
  EXPECT_THAT(names, ElementsAre("Plain"));
}

class PaintNotes : public QWidget {
 public:
  int paints = 0;

 protected:
  void paintEvent(QPaintEvent*) override { ++paints; }
};

TEST_F(PrinterListTest, WhileTheServerIsSilentWindowsArePaintedAndNoRoutineRuns) {
  const SilentPlace place;
  ASSERT_TRUE(place.isThere());
  usePrintServer(place.name(), home_.path(""));
  PaintNotes window;
  window.show();
  events.DoEvents();
  bool hasRun = false;
  int paints = 0;
  QTimer meanwhile;
  meanwhile.callOnTimeout([&] {
    if (paints == 0) paints = window.paints;
    events.gate().post([&] { hasRun = true; });
    window.update();
  });
  meanwhile.start(100);
  printers.deviceNames();
  meanwhile.stop();
  EXPECT_GT(window.paints, paints);
  EXPECT_FALSE(hasRun);
  events.DoEvents();
  EXPECT_TRUE(hasRun);
}

TEST_F(PrinterListTest, TheProgramEndsAlthoughTheServerStaysSilent) {
  const SilentPlace place;
  ASSERT_TRUE(place.isThere());
  usePrintServer(place.name(), home_.path(""));
  std::string program = PRINTER_NAMES;
  std::array<char*, 2> words{program.data(), nullptr};
  pid_t process = 0;
  int status = -1;
  const int lasted = millisecondsOf([&] {
    ASSERT_EQ(posix_spawn(&process, program.c_str(), nullptr, nullptr, words.data(), environ), 0);
    waitpid(process, &status, 0);
  });
  EXPECT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 0);
  EXPECT_GE(lasted, 1400);
  EXPECT_LT(lasted, 10'000);
}

class RefusalTest : public PrintingTest {};

TEST_F(RefusalTest, APrinterThatIsNotThereCannotBeOpened) {
  serve({{"Plain"}});
  EXPECT_THROW(printers.open("Missing"), StatementFailed);
}

TEST_F(RefusalTest, APrinterThatIsTakenAwayRefusesTheJob) {
  serve({{"Plain"}, {"Other"}});
  const auto printer = printers.open("Plain");
  ASSERT_EQ(server->command("lpadmin -x Plain"), 0);
  printer->Print("text\r\n");
  EXPECT_THROW(printer->EndDoc(), StatementFailed);
  EXPECT_EQ(server->waitingJobs(), 0);
}

TEST_F(RefusalTest, WhatWasRefusedIsDropped) {
  serve({{"Plain"}});
  const auto printer = printers.open("Plain");
  ASSERT_EQ(server->command("cupsreject Plain"), 0);
  printer->Print("refused\r\n");
  EXPECT_THROW(printer->EndDoc(), StatementFailed);
  ASSERT_EQ(server->command("cupsaccept Plain"), 0);
  printer->EndDoc();
  printer->Print("taken\r\n");
  printer->EndDoc();
  const auto jobs = server->paper(1);
  ASSERT_EQ(jobs.size(), 1U);
  EXPECT_THAT(wordsOn(jobs[0]), ElementsAre("taken", "---"));
}

TEST_F(RefusalTest, AServerThatIsGoneRefusesTheJob) {
  serve({{"Plain"}});
  const auto printer = printers.open("Plain");
  server->stop();
  printer->Print("text\r\n");
  EXPECT_LT(millisecondsOf([&] { EXPECT_THROW(printer->EndDoc(), StatementFailed); }), 9000);
}

TEST_F(RefusalTest, AServerThatFallsSilentDoesNotHoldTheProgramUp) {
  serve({{"Plain"}});
  const auto printer = printers.open("Plain");
  server->silence();
  printer->Print("text\r\n");
  const int lasted = millisecondsOf([&] { EXPECT_THROW(printer->EndDoc(), StatementFailed); });
  EXPECT_GE(lasted, 9900);
  EXPECT_LT(lasted, 13'000);
}

TEST_F(RefusalTest, AJobWaitsAtAPrinterThatPausesAndIsPrintedWhenItGoesOn) {
  serve({{"Plain"}});
  ASSERT_EQ(server->command("cupsdisable Plain"), 0);
  print("Plain", "patient\r\n");
  EXPECT_EQ(server->waitingJobs(), 1);
  EXPECT_THAT(server->paper(0), IsEmpty());
  ASSERT_EQ(server->command("cupsenable Plain"), 0);
  const auto jobs = server->paper(1);
  ASSERT_EQ(jobs.size(), 1U);
  EXPECT_THAT(wordsOn(jobs[0]), ElementsAre("patient", "---"));
}

}  // namespace
}  // namespace veltrin
