// SPDX-License-Identifier: GPL-3.0-or-later
#include "sysinfo/DosFrm.h"

#include "sysinfo/summary_reader.h"
#include "sysinfo/summary_settings.h"
#include "text/strings.h"

namespace veltrin {
namespace {

constexpr std::size_t kFewestLines = 11;  // of a text that tells anything

}  // namespace

DosFrm::DosFrm(Program& program)
    : Form(nameOf(WindowName::DosFrm), program),
      program_(program),
      objDOS(*this, program.platform,
             [this](const std::string& chunk) { objDOS_ReceiveOutputs(chunk); }) {
  own("dosbox", dosbox);
  own("Buffer", Buffer);
  own("Label1", Label1);
  Label1.caption = "Loading Data";
}

void DosFrm::getinfo() {
  mousePointer = MousePointer::Hourglass;
  program_.start.WinDir = program_.platform.environment.variable("windir");
  dosbox.text = "";
  objDOS.run(toolPath());
  fillBuffer();
  if (Buffer.count() >= kFewestLines) {
    readBuffer();
    storeSummary(program_);
    program_.writeSetting("Settings", "OS", program_.summary.OsName);
  }
  mousePointer = MousePointer::Default;
}

// The first folder is no folder of Windows, unless somebody made one.
std::string DosFrm::toolPath() const {
  std::string preferred = program_.start.WinDir + "\\Sys64WOW\\Systeminfo.exe";
  if (program_.platform.files.exists(preferred)) return preferred;
  return program_.start.WinDir + "\\System32\\Systeminfo.exe";
}

void DosFrm::objDOS_ReceiveOutputs(const std::string& chunk) { dosbox.text += chunk; }

void DosFrm::fillBuffer() {
  for (const std::string& piece : piecesOf(dosbox.text.get())) {
    const std::string line = Trim(piece);
    if (!line.empty()) Buffer.add(line);
    program_.platform.events.DoEvents();
  }
}

void DosFrm::readBuffer() {
  for (std::size_t index = 0; index < Buffer.count(); ++index) {
    readLabelledLine(SummaryForm::Short, Buffer.item(index), program_.summary);
  }
}

}  // namespace veltrin
