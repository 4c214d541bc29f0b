// SPDX-License-Identifier: GPL-3.0-or-later
#include "sysinfo/DosApp.h"

#include <memory>
#include <vector>

#include "sysinfo/memory_slots.h"
#include "sysinfo/report_catalogue.h"
#include "sysinfo/summary_reader.h"
#include "sysinfo/summary_settings.h"
#include "text/statement.h"
#include "text/strings.h"

namespace veltrin {
namespace {

// A text is short below so many lines, and read above them. One of exactly so many is
// neither.
constexpr std::size_t kFewLines = 10;

}  // namespace

DosApp::DosApp(Program& program)
    : Form(nameOf(WindowName::DosApp), program),
      program_(program),
      objDOSB(*this, program.platform,
              [this](const std::string& chunk) { objDOSB_ReceiveOutputs(chunk); }) {
  own("DosBox", DosBox);
  own("List1", List1);
  own("List2", List2);
  own("List3", List3);
  own("List4", List4);
  own("List5", List5);
  own("List6", List6);
  own("List7", List7);
  own("List8", List8);
}

void DosApp::SysInfo(const Loose& Mode) {
  // The collecting yields, and its user may close the window or open another.
  const std::shared_ptr<frmSysInfo> window = program_.shared<ReportValues>().window.lock();
  const double netCards = collect();
  if (Mode == "1") return;
  if (Mode == "3") {
    skip([&] { TEST("1"); });
    return;
  }
  if (!window) return;
  Report report(program_, *window, netCards);
  reportWindow_ = window;
  printReport(report, *this);
  reportWindow_.reset();
}

// Returns how many network cards there are.
double DosApp::collect() {
  ShortText = 0;
  runTool();
  fillLines();
  const double netCards = Val(readLines());
  adjustFields();
  getmem();
  storeSummary(program_);
  storeNetCards(program_, netCards);
  storeMemorySlots(program_);
  return netCards;
}

void DosApp::runTool() {
  program_.start.WinDir = program_.platform.environment.variable("WinDir");
  DosBox.text = "";
  List1.clear();
  objDOSB.run(program_.start.WinDir + "\\System32\\Systeminfo.exe");
}

void DosApp::objDOSB_ReceiveOutputs(const std::string& chunk) { DosBox.text += chunk; }

void DosApp::fillLines() {
  for (const std::string& piece : piecesOf(DosBox.text.get())) {
    if (!Trim(piece).empty()) List1.add(piece);
    program_.platform.events.DoEvents();
  }
}

// Returns the number of network cards as the lines tell it; empty when they do not.
std::string DosApp::readLines() {
  if (List1.count() < kFewLines) ShortText = 1;
  if (List1.count() <= kFewLines) return {};
  SummaryReader reader(program_.summary);
  for (std::size_t index = 0; index < List1.count(); ++index) reader.readLine(List1.item(index));
  for (const std::string& hotfix : reader.hotfixes()) List3.add(hotfix);
  return reader.cardCount();
}

// Of the processors the number stays, of the input locale its name.
void DosApp::adjustFields() {
  SystemSummary& summary = program_.summary;
  summary.CpuNum = Left(summary.CpuNum, 1);
  const std::int64_t separator = InStr(1, summary.Location, ";", Compare::IgnoreCase);
  if (separator > 0) summary.Location = Mid(summary.Location, separator + 1);
}

void DosApp::getmem() {
  ResultSet results(program_.platform.wmi, program_.shared<ReportValues>().ComputerName);
  results.ExecQuery("Select * from Win32_PhysicalMemory");
  std::vector<WmiObject> banks;
  results.forEach([&](const WmiObject& bank) { banks.push_back(bank); });
  fillMemorySlots(banks, program_.summary.MemSlot);
}

}  // namespace veltrin
