// SPDX-License-Identifier: GPL-3.0-or-later
// A person reads the report of the system on a desk: from the menu through About, runs it,
// saves it, and finds no printer to print it on. It takes about 20 s.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "desk/program_run.h"

namespace veltrin::desk {
namespace {

constexpr milliseconds kSoon{20000};
constexpr milliseconds kReport{120000};

const char* const kReportWindow = "Detailed System Information";
const char* const kPrintWindow = "Print";

class ReportOnADesk : public ProgramRun {
 protected:
  // No printer server answers here, whatever this machine has.
  void SetUp() override {
    ASSERT_NO_FATAL_FAILURE(ProgramRun::SetUp());
    setenv("CUPS_SERVER", (data_ / "no-server").c_str(), 1);
  }

  void openReport() {
    start();
    ASSERT_NO_FATAL_FAILURE(awaitMenu());
    desk_->click(desk_->button(kMenu, "About"));
    ASSERT_TRUE(eventually(kSoon, [&] { return desk_->hasWindow("About"); }));
    desk_->click(desk_->button("About", "System Info"));
    ASSERT_TRUE(eventually(kSoon, [&] { return desk_->hasWindow(kReportWindow); }));
  }

  bool canPress(const std::string& button) const {
    const auto elements = elementsOf("veltrin");
    return std::any_of(elements.begin(), elements.end(), [&](const Element& element) {
      return element.window == kReportWindow && element.name == button && element.showing;
    });
  }

  void chooseOption(const std::string& entry) const {
    desk_->click(desk_->find("the menu", [](const Element& element) {
      return element.window == kReportWindow && element.name == "Options";
    }));
    desk_->click(desk_->find(entry, [&](const Element& element) {
      return element.name == entry && element.role == "menu item";
    }));
  }

  // The text of the message about a saved file, which is then answered. Its title is the menu's.
  std::string readSaved() {
    const Element message = desk_->find("message", [](const Element& element) {
      return element.role == "label" && element.name.starts_with("File Created");
    });
    desk_->photograph("message-saved");
    desk_->click(desk_->button(kMenu, "OK"));
    EXPECT_TRUE(eventually(kSoon, [&] { return !isShown(kMenu, "OK"); }));
    return message.name;
  }

  // What the kernel calls this machine's first processor; empty where it has no name.
  static std::string processorName() {
    std::ifstream list("/proc/cpuinfo");
    for (std::string line; std::getline(list, line);) {
      if (line.starts_with("model name")) return line.substr(line.find(": ") + 2);
    }
    return "";
  }

  // The one file in the program's folder that a report was saved to; empty without one.
  std::filesystem::path savedFile() const {
    for (const auto& entry : std::filesystem::directory_iterator(data_ / "veltrin")) {
      if (entry.path().filename().string().starts_with("SystemInfo (")) return entry.path();
    }
    return {};
  }
};

TEST_F(ReportOnADesk, TheReportIsRunSavedAndNotPrintedWithoutAPrinter) {
  ASSERT_NO_FATAL_FAILURE(openReport());
  desk_->photograph("report-empty");
  desk_->click(desk_->button(kReportWindow, "Get Info"));
  ASSERT_TRUE(eventually(kReport, [&] { return canPress("Operating System"); }));
  ASSERT_TRUE(
      eventually(kReport, [&] { return settings().find("Info Check=") != std::string::npos; }));
  desk_->photograph("report-filled");

  chooseOption("Save to Files");
  const std::string message = readSaved();
  const std::filesystem::path file = savedFile();
  ASSERT_FALSE(file.empty());
  EXPECT_EQ(message, "File Created: \n" + file.string());
  const std::string text = contentOf(file);
  EXPECT_EQ(text.find("\r\nSystem Information "), 0U) << text;
  EXPECT_NE(text.find("\r\nOperating System\r\nOS: "), std::string::npos) << text;
  EXPECT_NE(text.find("\r\nName: " + processorName() + "\r\nSpeed: "), std::string::npos) << text;
  EXPECT_NE(text.find("\r\nPhysical Hard Drive Information\r\n"), std::string::npos) << text;

  chooseOption("Print");
  ASSERT_TRUE(eventually(kSoon, [&] { return desk_->hasWindow(kPrintWindow); }));
  desk_->photograph("report-print");
  desk_->click(desk_->button(kPrintWindow, "Print"));
  EXPECT_EQ(readMessage("Printer Not Install"), "No Printer Detected");
  desk_->click(desk_->button(kPrintWindow, "Cancel"));
  EXPECT_TRUE(eventually(kSoon, [&] { return !desk_->hasWindow(kPrintWindow); }));

  chooseOption("Exit");
  EXPECT_TRUE(eventually(kSoon, [&] { return !desk_->hasWindow(kReportWindow); }));
}

}  // namespace
}  // namespace veltrin::desk
