// A person reads the report of the system on a desk: from the menu through About, runs it,
// saves it, and finds no printer to print it on. It takes about 20 s.
#include <algorithm>
#include <filesystem>
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

  // The entry of the window's menu, by its place from the top.
  void chooseOption(int place) const {
    desk_->bringToFront(kReportWindow);
    desk_->press("F10");
    for (int step = 0; step < place; ++step) desk_->press("Down");
    desk_->press("Return");
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

  chooseOption(1);
  const std::string message = readMessage("Veltrin");
  const std::filesystem::path file = savedFile();
  ASSERT_FALSE(file.empty());
  EXPECT_EQ(message, "File Created: \n" + file.string());
  const std::string text = contentOf(file);
  EXPECT_EQ(text.find("\r\nSystem Information "), 0U) << text;
  EXPECT_NE(text.find("\r\nOperating System\r\nOS: "), std::string::npos) << text;

  chooseOption(2);
  ASSERT_TRUE(eventually(kSoon, [&] { return desk_->hasWindow(kPrintWindow); }));
  desk_->photograph("report-print");
  desk_->click(desk_->button(kPrintWindow, "Print"));
  EXPECT_EQ(readMessage("Printer Not Install"), "No Printer Detected");
  desk_->click(desk_->button(kPrintWindow, "Cancel"));
  EXPECT_TRUE(eventually(kSoon, [&] { return !desk_->hasWindow(kPrintWindow); }));

  chooseOption(3);
  EXPECT_TRUE(eventually(kSoon, [&] { return !desk_->hasWindow(kReportWindow); }));
}

}  // namespace
}  // namespace veltrin::desk
