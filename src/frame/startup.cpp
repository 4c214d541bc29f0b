// SPDX-License-Identifier: GPL-3.0-or-later
#include "frame/startup.h"

#include "frame/About.h"
#include "frame/browser.h"
#include "frame/modIsItRunning.h"
#include "frame/starter.h"
#include "frame/tool_tips.h"
#include "text/statement.h"
#include "text/strings.h"

namespace veltrin {
namespace {

constexpr int kBandWidth = 4;      // pixels of the rubber band
constexpr int kShortestSpeed = 3;  // characters; a shorter one is none

const std::vector<std::string> kSpeeds = {
    "256",    "512",    "768",    "1,000",  "1,200",  "1,500",  "2,000",  "2,500",  "3,000",
    "3,500",  "4,000",  "4,500",  "5,000",  "6,000",  "7,000",  "7,500",  "8,000",  "9,000",
    "10,000", "11,000", "12,000", "13,000", "14,000", "15,000", "20,000", "25,000", "30,000",
    "35,000", "40,000", "45,000", "50,000", "55,000", "60,000", "65,000", "70,000", "75,000",
    "80,000", "85,000", "90,000", "95,000", "100,000"};

}  // namespace

startup::startup(Program& program) : Form(nameOf(WindowName::startup), program), program_(program) {
  own("Command4", Command4);
  own("Command1", Command1);
  own("Command9", Command9);
  own("Command8", Command8);
  own("Command2", Command2);
  own("Command7", Command7);
  own("Command10", Command10);
  own("Command12", Command12);
  own("Image3", Image3);
  own("Combo1", Combo1);
  own("Command5", Command5);
  own("Command6", Command6);
  own("Command3", Command3);
  own("Command11", Command11);
  own("Command13", Command13);
  own("Label1", Label1);
  own("Label2", Label2);
  own("Label3", Label3);
  own("Label4", Label4);
  own("Image1", Image1);
  own("Image2", Image2);

  Label1.caption = "Veltrin";
  Label3.caption = "Rated Download Speed in KB";
  Command11.visible = false;
  Command13.visible = false;
  wireTools();

  Command3.click = [this] { unload(); };
  Command5.click = [this] { openHelpPage(program_); };
  Command6.click = [this] { program_.showModal<About>(); };
  Combo1.lostFocus = [this] { Combo1_LostFocus(); };
  Image2.click = [this] { Image2_Click(); };
  Image1.mouseDown = [this](MouseButton button) { Image1_MouseDown(button); };
  Image1.mouseMove = [this](MouseButton button) { Image1_MouseMove(button); };
  Image1.mouseUp = [this](MouseButton button) { Image1_MouseUp(button); };
  mouseMove = [this](MouseButton) { mousePointer = MousePointer::Default; };
  Label1.mouseMove = mouseMove;
  Label2.mouseMove = mouseMove;
}

// What each control opens, and how: beside the menu, above it until the tool is closed, or
// in the menu's place.
void startup::wireTools() {
  const auto beside = [this](WindowName tool) { program_.tools.show(tool); };
  const auto above = [this](WindowName tool) { program_.tools.showModal(tool); };
  const auto instead = [this](WindowName tool) { openInPlaceOfMenu(tool); };
  const auto opens = [this](auto& control, WindowName tool, auto open) {
    control.enabled = program_.tools.has(tool);
    control.click = [open, tool] { open(tool); };
  };
  opens(Command1, WindowName::trace, beside);
  opens(Command2, WindowName::indepth, beside);
  opens(Command4, WindowName::pingtester, beside);
  opens(Command10, WindowName::frmNetwork, beside);
  opens(Command12, WindowName::frmIP, beside);
  opens(Command13, WindowName::Stability, beside);
  opens(Command7, WindowName::mtutest, above);
  opens(Command9, WindowName::Stability, above);
  opens(Image3, WindowName::testdl, above);
  opens(Command8, WindowName::MonOut, instead);
}

void startup::Form_Load() {
  program_.unload<starter>();
  endIfRunning();
  program_.platform.events.DoEvents();
  showChanges();
  caption = "Veltrin";
  Combo1.items = kSpeeds;
  loadRatedSpeed();
  program_.LanguageId = kEnglish;
  program_.writeSetting("Settings", "Lang", program_.LanguageId);
  chooseLanguage(program_.LanguageId, program_.texts);
  showAddresses();
  Label2.caption = "Version " + program_.start.AppVersion;
  program_.platform.desktop.setApplicationTitle("Veltrin");
  judgeSystem();
  setToolTips(program_.LanguageId, *this);
}

void startup::endIfRunning() {
  if (runningWindow(program_.platform.desktop, "Veltrin") == 0) return;
  program_.MsgBox("Veltrin is already Running");
  program_.end();
}

// The list of changes waits for a version that wants it read: nothing asks for it now.
void startup::showChanges() {
  const std::string wanted;
  if (wanted != "6") return;
  program_.platform.shell.run(program_.platform.environment.systemFolder() + "\\notepad.exe " +
                                  program_.programFolder + "\\Changes.txt",
                              kShowNormal);
}

void startup::loadRatedSpeed() {
  program_.menu.RatedSpeed = program_.readSetting("Settings", "Rated Speed");
  program_.summary.OsName = program_.readSetting("Settings", "OS");
  if (Len(program_.menu.RatedSpeed) < kShortestSpeed) program_.menu.RatedSpeed = "0";
  Combo1.text = program_.menu.RatedSpeed;
  // A text that is no number stays as it is.
  skip([&] { program_.menu.RatedSpeed = Format(toNumber(program_.menu.RatedSpeed), "#"); });
}

void startup::showAddresses() {
  const std::string& local = program_.start.LocalIp;
  const std::string& seen = program_.start.PublicIp;
  if (local == seen || seen.empty()) {
    Label4.caption = "Your IP - " + local;
  } else {
    Label4.caption = "Your IP - " + seen + std::string(kLineBreak) + "Local - " + local;
  }
}

// Systems on which an MTU is not set this way, by their names.
void startup::judgeSystem() {
  program_.menu.PostVistaOs = 0;
  for (const char* name : {"Windows 7", "Vista"}) {
    if (InStr(1, program_.summary.OsName, name, Compare::IgnoreCase) == 0) continue;
    Command7.enabled = false;
    program_.menu.PostVistaOs = 1;
  }
}

void startup::Form_Unload() {
  endDrag();
  program_.writeSetting("Settings", "Rated Speed", Combo1.text.get());
}

void startup::Combo1_LostFocus() {
  program_.writeSetting("Settings", "Rated Speed", Combo1.text.get());
}

void startup::Image2_Click() {
  skip([&] {
    program_.platform.shell.run(
        browserPath(program_.platform.environment) + " " + program_.installation.HomePageUrl,
        kShowMaximized);
  });
}

// The menu comes back as soon as the tool's window has gone, also while a test of that
// window goes on and keeps this routine on the stack.
void startup::openInPlaceOfMenu(WindowName window) {
  program_.platform.desktop.hide(*this);
  program_.tools.showModal(window, [this] {
    if (isLoaded()) program_.platform.desktop.show(*this);
  });
}

// Only the band follows the mouse. The window itself moves when the button is released. A
// press whose release never came is followed by another one, which begins anew.
void startup::Image1_MouseDown(MouseButton button) {
  if (button != MouseButton::Left) return;
  endDrag();
  drag_.begin(program_.platform.desktop, *this);
  if (!drag_.Dragging) return;
  band_ = drag_.DragRect;
  drawBand(band_);
}

void startup::Image1_MouseMove(MouseButton button) {
  mousePointer = MousePointer::SizeAll;
  if (button != MouseButton::Left || !drag_.Dragging) return;
  const ScreenRectangle place = drag_.place(program_.platform.desktop);
  drawBand(band_);
  drawBand(place);
  band_ = place;
}

void startup::Image1_MouseUp(MouseButton button) {
  if (button != MouseButton::Left || !drag_.Dragging) return;
  endDrag();
  program_.platform.desktop.moveWindow(*this, band_);
}

void startup::endDrag() {
  if (drag_.Dragging) drawBand(band_);
  drag_.Dragging = false;
}

// Borders inside each other make one band. Drawn again at its place, it is gone.
void startup::drawBand(const ScreenRectangle& place) {
  ScreenRectangle border = place;
  for (int line = 0; line < kBandWidth; ++line) {
    program_.platform.desktop.drawFocusRectangle(border);
    border = {border.left + 1, border.top + 1, border.right - 1, border.bottom - 1};
  }
}

}  // namespace veltrin
