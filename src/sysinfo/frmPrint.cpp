// SPDX-License-Identifier: GPL-3.0-or-later
#include "sysinfo/frmPrint.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "sysinfo/frmSysInfo.h"
#include "sysinfo/summary_reader.h"
#include "text/statement.h"
#include "text/strings.h"

namespace veltrin {
namespace {

constexpr const char* kSection = "Printer";
constexpr const char* kFontName = "Times New Roman";
constexpr const char* kUpright = "1";
constexpr const char* kAcross = "2";

// Blank lines at the head of each page, which count as none; one more from that size on.
constexpr int kTopLines = 4;
constexpr double kLargeSize = 16;
constexpr const char* kLeftMargin = "     ";

// Lines that fill a page of either orientation. A size that is not here never fills one.
struct PageLength {
  const char* size;  // points
  int upright;
  int across;
};
constexpr std::array<PageLength, 5> kPageLengths{
    {{"8", 70, 55}, {"10", 57, 44}, {"12", 46, 34}, {"14", 39, 28}, {"16", 36, 27}}};

// Throws StatementFailed for a text that is no number of 16 bits.
std::int16_t toShort(const std::string& text) {
  const std::int32_t number = toLong(toNumber(text));
  const auto shorter = static_cast<std::int16_t>(number);
  if (shorter != number) throw StatementFailed("Overflow", kOverflow);
  return shorter;
}

}  // namespace

frmPrint::frmPrint(Program& program)
    : Form(nameOf(WindowName::frmPrint), program),
      program_(program),
      report_(program.shared<ReportValues>()) {
  own("lblPrinter", lblPrinter);
  own("cboPrinter", cboPrinter);
  own("Label1", Label1);
  own("Combo1", Combo1);
  own("Label2", Label2);
  own("Combo2", Combo2);
  own("Label3", Label3);
  own("Picture1", Picture1);
  own("Option1", Option1);
  own("Picture2", Picture2);
  own("Option2", Option2);
  own("rtfLap1", rtfLap1);
  own("rtfLap2", rtfLap2);
  own("cmdPrint", cmdPrint);
  own("cmdExit", cmdExit);
  caption = "Print";
  lblPrinter.caption = "Select Printer";
  Label1.caption = "Copies";
  Label2.caption = "Font Size";
  Label3.caption = "Orientation";
  cboPrinter.pickOnly = true;
  Combo1.pickOnly = true;
  Combo2.pickOnly = true;
  rtfLap1.visible = false;
  rtfLap2.visible = false;
  cmdPrint.click = [this] { cmdPrint_Click(); };
  cmdExit.click = [this] { unload(); };
}

void frmPrint::Form_Load() {
  showPrinters();
  if (const auto window = report_.window.lock()) rtfLap1.text = window->Text1.text.get();
  readSettings();
}

void frmPrint::showPrinters() {
  Printers& printers = program_.platform.printers;
  skip([&] { cboPrinter.items = printers.deviceNames(); });
  skip([&] { cboPrinter.text = printers.defaultDeviceName(); });
}

void frmPrint::readSettings() {
  if (program_.readSetting(kSection, "Printer").empty()) {
    skip([&] {
      program_.writeSetting(kSection, "Printer", program_.platform.printers.defaultDeviceName());
    });
    program_.writeSetting(kSection, "Copies", "1");
    program_.writeSetting(kSection, "Orientation", kUpright);
    program_.writeSetting(kSection, "Size", "12");
  }
  cboPrinter.text = program_.readSetting(kSection, "Printer");
  report_.PrintOrientation = program_.readSetting(kSection, "Orientation");
  (report_.PrintOrientation == kUpright ? Option1 : Option2).choose();
  Combo1.items = {"1", "2", "3", "4", "5"};
  Combo1.text = program_.readSetting(kSection, "Copies");
  Combo2.items = {"8", "10", "12", "14", "16"};
  Combo2.text = program_.readSetting(kSection, "Size");
}

void frmPrint::cmdPrint_Click() {
  if (cboPrinter.text.get().empty()) {
    program_.MsgBox("No Printer Detected", kMessageWarning, "Printer Not Install");
    return;
  }
  if (rtfLap1.text.get().empty()) {
    program_.MsgBox("No Data to Print", kMessageCritical, "Print");
    return;
  }
  // A printer that fails ends the routine, and the window stays.
  skip([&] {
    writeSettings();
    printPages();
    unload();
  });
}

// The orientation is written twice: as it was, and as it now is.
void frmPrint::writeSettings() {
  program_.writeSetting(kSection, "Printer", cboPrinter.text.get());
  program_.writeSetting(kSection, "Copies", Combo1.text.get());
  program_.writeSetting(kSection, "Orientation", report_.PrintOrientation);
  report_.PrintOrientation = orientation();
  program_.writeSetting(kSection, "Orientation", report_.PrintOrientation);
  program_.writeSetting(kSection, "Size", Combo2.text.get());
}

// A piece without anything but blanks is not printed. The last page may be a margin alone.
void frmPrint::printPages() {
  const auto printer = program_.platform.printers.open(cboPrinter.text.get());
  printer->setProperties(properties());
  startPage();
  int lines = 0;
  for (const std::string& piece : piecesOf(rtfLap1.text.get())) {
    if (Trim(piece).empty()) continue;
    ++lines;
    rtfLap2.text += kLeftMargin + piece + std::string(kLineBreak);
    if (lines != linesOfPage()) continue;
    endPage(*printer);
    startPage();
    lines = 0;
  }
  endPage(*printer);
}

void frmPrint::startPage() {
  const int lines = toNumber(Combo2.text.get()) >= kLargeSize ? kTopLines + 1 : kTopLines;
  std::string margin;
  for (int line = 0; line < lines; ++line) margin += kLineBreak;
  rtfLap2.text = margin;
}

void frmPrint::endPage(Printer& printer) {
  printer.setProperties(properties());
  printer.Print(rtfLap2.text.get());
  printer.EndDoc();
}

PrinterProperties frmPrint::properties() const {
  PrinterProperties properties;
  properties.FontName = kFontName;
  properties.Copies = toShort(Combo1.text.get());
  properties.FontSize = toNumber(Combo2.text.get());
  properties.Orientation = Option1.value() ? kPortrait : kLandscape;
  return properties;
}

std::string frmPrint::orientation() const { return Option1.value() ? kUpright : kAcross; }

int frmPrint::linesOfPage() const {
  for (const PageLength& length : kPageLengths) {
    if (Combo2.text == length.size) return Option1.value() ? length.upright : length.across;
  }
  return 0;
}

}  // namespace veltrin
