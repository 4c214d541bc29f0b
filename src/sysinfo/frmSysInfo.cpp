// SPDX-License-Identifier: GPL-3.0-or-later
#include "sysinfo/frmSysInfo.h"

#include <algorithm>
#include <cstddef>

#include "frame/result_file.h"
#include "frame/tool_tips.h"
#include "sysinfo/DosApp.h"
#include "sysinfo/frmPrint.h"
#include "sysinfo/report_pictures.h"
#include "text/statement.h"
#include "text/strings.h"

namespace veltrin {
namespace {

// The least size, in twips, and how far from the window's edges the controls stay.
constexpr int kLeastWidth = 10890;
constexpr int kLeastHeight = 7330;
constexpr int kBesideList = 2235;
constexpr int kBelowList = 1270;
constexpr int kColumn = 1890;       // of the check boxes
constexpr int kSecondLabel = 1170;  // within that column
constexpr int kButtonRow = 1645;
constexpr int kLabelRow = 2005;

struct Section {
  const char* caption;
  int value;
};

// In the order of their numbers.
constexpr std::array<Section, 14> kSections{{
    {"Users", kUnchecked},
    {"CPU", kChecked},
    {"Memory", kChecked},
    {"Hard Drive", kChecked},
    {"MotherBoard", kChecked},
    {"Video", kChecked},
    {"Peripheals", kChecked},
    {"Install Software", kUnchecked},
    {"Startup/Processes", kUnchecked},
    {"Drivers", kUnchecked},
    {"Hot Fixes", kUnchecked},
    {"Errors", kUnchecked},
    {"Destop ", kUnchecked},
    {"System", kUnchecked},
}};

constexpr std::int32_t colourNumber(int red, int green, int blue) {
  return red | green << 8 | blue << 16;
}

// From number 1 on.
constexpr std::array<std::int32_t, 6> kLineColours{
    colourNumber(0, 128, 0), colourNumber(192, 64, 0),  colourNumber(255, 0, 0),
    colourNumber(192, 0, 0), colourNumber(192, 0, 192), colourNumber(0, 192, 192)};

std::int32_t lineColour(std::int16_t number) {
  if (number == 0) return kLineColours[0];
  const auto index = static_cast<std::size_t>(number) - 1;
  return index < kLineColours.size() ? kLineColours[index] : 0;
}

}  // namespace

frmSysInfo::frmSysInfo(Program& program)
    : Form(nameOf(WindowName::frmSysInfo), program),
      SYSView(program.platform),
      program_(program),
      report_(program.shared<ReportValues>()) {
  own("SYSView", SYSView);
  own("Text1", Text1);
  ownFromLast("Showme", Showme);
  own("Label1", Label1);
  own("Label2", Label2);
  own("Command1", Command1);
  own("ImageList1", ImageList1);
  own("mnuOpt", mnuOpt);
  own("mnuSave", mnuSave);
  own("mnuPrint", mnuPrint);
  own("mnuExit", mnuExit);
  caption = "Detailed System Information";
  Label1.caption = "ALL";
  Label2.caption = "None";
  Text1.visible = false;  // a store: the list shows the same
  for (std::size_t index = 0; index < Showme.size(); ++index) {
    Showme[index].caption = kSections[index].caption;
    Showme[index].value = kSections[index].value;
  }
  for (const ReportPicture& picture : kReportPictures) {
    ImageList1.pictures.push_back({picture.name, picture.meaning});
  }
  width = kLeastWidth;
  height = kLeastHeight;
  resize = [this] { Form_Resize(); };
  Command1.click = [this] { Command1_Click(); };
  Label1.click = [this] { tickAll(kChecked); };
  Label2.click = [this] { tickAll(kUnchecked); };
  mnuSave.click = [this] { mnuSave_Click(); };
  mnuPrint.click = [this] { mnuPrint_Click(); };
  mnuExit.click = [this] { unload(); };
}

void frmSysInfo::Form_Load() {
  const Environment& environment = program_.platform.environment;
  report_.window = std::static_pointer_cast<frmSysInfo>(shared_from_this());
  report_.ComputerName = environment.variable("Computername");
  program_.summary.CpuCores = environment.variable("NUMBER_OF_PROCESSORS");
  Form_Resize();
  program_.showInLoad(*this);
  Text1.text = std::string(kLineBreak);
  Text1.text += "System Information " + report_.ComputerName + std::string(kLineBreak);
  setToolTips(program_.LanguageId, *this);
  skip([&] { program_.Wait(10); });
}

void frmSysInfo::Form_Unload() { report_.window.reset(); }

void frmSysInfo::LogEvents(const std::string& Text, std::int16_t Icon, std::int16_t Color,
                           bool Bold) {
  SYSView.setImageList(&ImageList1);
  SYSView.AddItem(Text, Icon, lineColour(Color), Bold);
  SYSView.setListIndex(SYSView.ListCount());
  SYSView.Refresh();
  Text1.text += Text + std::string(kLineBreak);
}

// A run stays in the window that it was begun in, whatever its user does meanwhile, and may
// be begun again in one of its own yields.
void frmSysInfo::Command1_Click() {
  mousePointer = MousePointer::Hourglass;
  SYSView.Clear();
  program_.keep<DosApp>()->SysInfo("0");
  SYSView.setListIndex(1);
  SYSView.ListView1.ensureVisible(0);  // the line above it, too: the view is at the top
  SYSView.Refresh();
  mousePointer = MousePointer::Default;
}

void frmSysInfo::tickAll(int value) {
  for (CheckBox& box : Showme) box.value = value;
}

void frmSysInfo::Form_Resize() {
  width = std::max(width.get(), kLeastWidth);
  height = std::max(height.get(), kLeastHeight);
  SYSView.width = width - kBesideList;
  SYSView.height = height - kBelowList;
  for (CheckBox& box : Showme) box.left = width - kColumn;
  Command1.left = width - kColumn;
  Command1.top = height - kButtonRow;
  Label1.left = width - kColumn;
  Label1.top = height - kLabelRow;
  Label2.left = width - kSecondLabel;
  Label2.top = height - kLabelRow;
}

// The name's bracket is never closed. One file a day: a later one takes its place.
void frmSysInfo::mnuSave_Click() {
  Files& files = program_.platform.files;
  auto& result = program_.shared<ResultValues>();
  const std::string name =
      "\\SystemInfo (" + Format(program_.platform.clock.now(), "ddmmmyyy") + ".txt";
  writeFile(files, result.ResultStream, program_.programFolder, name, FileMode::Writing,
            Text1.text.get());
  program_.MsgBox("File Created: " + std::string(kLineBreak) +
                  files.native(program_.programFolder + name));
}

void frmSysInfo::mnuPrint_Click() {
  report_.PrintSource = 1;
  program_.showModal<frmPrint>();
}

}  // namespace veltrin
