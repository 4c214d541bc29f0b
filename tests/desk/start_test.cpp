// SPDX-License-Identifier: GPL-3.0-or-later
// A person starts the program: for the first time, once more, twice at once, and when
// there is a newer version.
#include <gtest/gtest.h>
#include <regex>
#include <string>
#include <vector>

#include "desk/program_run.h"

namespace veltrin::desk {
namespace {

class StartOnADesk : public ProgramRun {
 protected:
  // Puts a program in front of PATH that keeps what it is asked to open.
  std::filesystem::path makeOpener() {
    const std::filesystem::path folder = data_ / "opener";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "xdg-open")
        << "#!/bin/sh\nprintf %s \"$1\" >'" << data_.string() << "/opened.new'\nmv '"
        << data_.string() << "/opened.new' '" << data_.string() << "/opened'\n";
    std::filesystem::permissions(folder / "xdg-open", std::filesystem::perms::owner_all);
    setenv("PATH", (folder.string() + ":" + std::getenv("PATH")).c_str(), 1);
    return data_ / "opened";
  }

  // The file that the opener was asked to open within half a minute.
  static std::filesystem::path openedFile(const std::filesystem::path& opened) {
    EXPECT_TRUE(eventually(milliseconds(30000), [&] { return std::filesystem::exists(opened); }));
    const std::string address = contentOf(opened);
    EXPECT_EQ(address.substr(0, 8), "file:///");
    return address.size() > 7 ? address.substr(7) : address;
  }
};

TEST_F(StartOnADesk, AFirstAndASecondStart) {
  start();
  ASSERT_TRUE(eventually(milliseconds(30000), [&] { return hasSplash(); }));
  desk_->photograph("start-splash");
  ASSERT_NO_FATAL_FAILURE(awaitMenu());
  desk_->photograph("start-menu");
  EXPECT_FALSE(hasSplash());
  EXPECT_TRUE(isShown(kMenu, "Version 1.03"));
  EXPECT_TRUE(isShown(kMenu, "Your IP - 192.0.2.2"));
  const std::string first = settings();
  for (const char* line :
       {"[SysInfo]\r\nInfo Check=", "\r\nTotal Ram=", "\r\nCPU Num=", "[InDepth]\r\nSource=\r\n",
        "\r\nVersion=1.03\r\n", "\r\nLang=1\r\n", "\r\nOS="}) {
    EXPECT_NE(first.find(line), std::string::npos) << line << "is not in\n" << first;
  }
  desk_->click(desk_->button(kMenu, "Exit"));
  EXPECT_EQ(program_->waitFor(milliseconds(30000)), 0);

  start();
  ASSERT_NO_FATAL_FAILURE(awaitMenu());
  std::string second = settings();
  const std::string speed = "Rated Speed=0\r\n";
  ASSERT_NE(second.find(speed), std::string::npos) << second;
  EXPECT_EQ(second.erase(second.find(speed), speed.size()), first);
  desk_->click(desk_->button(kMenu, "Exit"));
  EXPECT_EQ(program_->waitFor(milliseconds(30000)), 0);
}

TEST_F(StartOnADesk, TheMenuOpensAboutHelpAndTheHomePage) {
  const std::filesystem::path opened = makeOpener();
  start();
  ASSERT_NO_FATAL_FAILURE(awaitMenu());
  desk_->click(desk_->button(kMenu, "About"));
  const Element version = desk_->named("About", "Version: 1.03  5 Jan 2012");
  desk_->photograph("start-about");
  desk_->click(version);
  EXPECT_TRUE(eventually(milliseconds(20000), [&] { return !desk_->hasWindow("About"); }));

  desk_->click(desk_->button(kMenu, "Help"));
  const std::filesystem::path help = openedFile(opened);
  EXPECT_EQ(help.filename(), "index.html");
  EXPECT_TRUE(std::filesystem::exists(help)) << help;
  std::filesystem::remove(opened);
  desk_->click(desk_->named(kMenu, "Kestrimo, the maker"));
  const std::filesystem::path home = openedFile(opened);
  EXPECT_EQ(home.filename(), "home.html");
  EXPECT_TRUE(std::filesystem::exists(home)) << home;
}

TEST_F(StartOnADesk, TheGripMovesTheWindowWhenTheButtonIsReleased) {
  start();
  ASSERT_NO_FATAL_FAILURE(awaitMenu());
  const Element grip = desk_->placed(desk_->named(kMenu, "Grip that moves the window"));
  const std::string x = std::to_string(grip.left + 5);
  const std::string y = std::to_string(grip.top + 5);
  const auto windows = desk_->windowsOnScreen();
  outputOf({"xdotool", "mousemove", "--sync", x, y, "mousedown", "1"});
  // The drag begins where the mouse is when the program hears of the button; then there is a band.
  ASSERT_TRUE(eventually(milliseconds(20000), [&] { return desk_->windowsOnScreen() > windows; }));
  outputOf({"xdotool", "mousemove_relative", "--sync", "--", "-30", "20"});
  outputOf({"xdotool", "mousemove_relative", "--sync", "--", "-30", "20"});
  desk_->photograph("start-drag");
  const Element meanwhile = desk_->named(kMenu, "Grip that moves the window");
  EXPECT_EQ(meanwhile.left, grip.left);
  outputOf({"xdotool", "mouseup", "1"});
  EXPECT_TRUE(eventually(milliseconds(20000), [&] {
    const Element moved = desk_->named(kMenu, "Grip that moves the window");
    return moved.left == grip.left - 60 && moved.top == grip.top + 40 &&
           desk_->windowsOnScreen() == windows;
  }));
  desk_->photograph("start-dragged");
}

TEST_F(StartOnADesk, ToolsStayOpenWhenTheMenuIsClosedAndTheLastWindowEndsTheProgram) {
  ASSERT_NO_FATAL_FAILURE(startWith("Ping Test", "Ping Test"));
  EXPECT_FALSE(program_->waitFor(milliseconds(500)).has_value());
  desk_->click(desk_->button("Ping Test", "Quit"));
  EXPECT_EQ(program_->waitFor(milliseconds(30000)), 0);
}

TEST_F(StartOnADesk, ASecondCopySaysThatTheProgramRuns) {
  start();
  ASSERT_NO_FATAL_FAILURE(awaitMenu());
  Child second({VELTRIN_PROGRAM});
  const Element message = desk_->find("the message", [](const Element& element) {
    return element.role == "label" && element.name == "Veltrin is already Running";
  });
  desk_->photograph("start-twice");
  EXPECT_EQ(message.window, "Veltrin");
  outputOf({"xdotool", "search", "--sync", "--onlyvisible", "--all", "--pid",
            std::to_string(second.pid()), "--name", "^Veltrin$", "windowactivate", "--sync"});
  desk_->press("Return");
  EXPECT_EQ(second.waitFor(milliseconds(30000)), 0);
  EXPECT_FALSE(program_->waitFor(milliseconds(500)).has_value());
}

class UpdateOnADesk : public StartOnADesk {
 protected:
  void SetUp() override {
    StartOnADesk::SetUp();
    std::ofstream(data_ / "veltrin" / "installation.ini")
        << "[Installation]\r\nUpdateServer=127.0.0.1\r\n";
    endpoint_ = std::make_unique<Child>(std::vector<std::string>{VELTRIN_ENDPOINT, "1.04"});
  }

  void TearDown() override {
    endpoint_.reset();
    StartOnADesk::TearDown();
  }

  std::unique_ptr<Child> endpoint_;
};

TEST_F(UpdateOnADesk, NoGoesOnWithTheAddressThatTheEndpointSees) {
  start();
  EXPECT_EQ(readMessage("Update", "No"),
            "An update is available for Veltrin.\nWould you like to Download/Update it now?");
  ASSERT_NO_FATAL_FAILURE(awaitMenu());
  desk_->photograph("start-addresses");
  EXPECT_TRUE(isShown(kMenu, "Your IP - 127.0.0.1\nLocal - 192.0.2.2"));
}

TEST_F(UpdateOnADesk, YesStartsTheDownloaderAndEndsTheProgram) {
  const std::filesystem::path note = data_ / "downloader-ran";
  const std::filesystem::path downloader = data_ / "veltrin" / "Downloader.exe";
  std::ofstream(downloader) << "#!/bin/sh\nprintf '%s in %s' \"$*\" \"$(pwd)\" >'" << note.string()
                            << "'\n";
  std::filesystem::permissions(downloader, std::filesystem::perms::owner_all);
  start();
  readMessage("Update", "Yes");
  EXPECT_EQ(program_->waitFor(milliseconds(30000)), 0);
  const std::string expected = "-Veltrin in " + (data_ / "veltrin").string();
  EXPECT_TRUE(eventually(milliseconds(20000), [&] { return contentOf(note) == expected; }))
      << contentOf(note);
}

TEST_F(UpdateOnADesk, YesWithoutADownloaderEndsTheProgramQuietly) {
  start();
  readMessage("Update", "Yes");
  EXPECT_EQ(program_->waitFor(milliseconds(30000)), 0);
}

}  // namespace
}  // namespace veltrin::desk
