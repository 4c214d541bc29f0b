// SPDX-License-Identifier: GPL-3.0-or-later
#include "route/indepth_window.h"

#include <cmath>

#include "frame/busy_clip.h"
#include "frame/copy_text.h"
#include "frame/growing_text.h"
#include "frame/result_file.h"
#include "text/statement.h"
#include "text/strings.h"

namespace veltrin {
namespace {

constexpr int kPause = 2;                 // ms, around the ping
constexpr double kFirstTextOfTools = 30;  // s; text that comes later is the closing table
constexpr std::string_view kLinkRemark = "  Overall Loss/Congestion - Possibly Causing Redirect";

const char* const kSection = "InDepth";
const char* const kTitle = "InDepth Internet Analysis";

std::vector<std::string> steps(int first, int last, int step) {
  std::vector<std::string> texts;
  for (int value = first; value <= last; value += step) texts.push_back(std::to_string(value));
  return texts;
}

// pathping ends each row of its table that is about a link, and not about a hop, in a
// bar. The remark stands in its place, whatever the row's figures are.
std::string withRemarks(const std::string& chunk) {
  std::string text;
  for (const char character : chunk) {
    if (character == '|') {
      text += kLinkRemark;
    } else {
      text += character;
    }
  }
  return text;
}

}  // namespace

indepth_window::indepth_window(WindowName name, Program& program)
    : Form(nameOf(name), program),
      program_(program),
      run_(program.shared<InDepthValues>()),
      objDOS6(*this, program.platform,
              [this](const std::string& chunk) { objDOS6_ReceiveOutputs(chunk); }) {
  ownControls();
  caption = kTitle;
  Label1.caption = "Analyze to:";
  Label2.caption = "Queries Each Hop";
  Label3.caption = "Time Between Test in MS";
  Text1.text = program.installation.ProbeHost;
  text3.text = "100";
  text4.text = "250";
  Command3.enabled = false;
  Command4.enabled = false;

  Text1.dblClick = [this] { Text1.text = ""; };
  Command1.click = [this] { Command1_Click(); };
  Command2.click = [this] { unload(); };
  Command3.click = [this] { Command3_Click(); };
  Command4.click = [this] { Command4_Click(); };
  Command5.click = [this] { Command5_Click(); };
  dosbox.change = [this] { followText(program_, dosbox); };
  wireHelp();
}

void indepth_window::ownControls() {
  own("Label1", Label1);
  own("Text1", Text1);
  own("Label2", Label2);
  own("text3", text3);
  own("Label3", Label3);
  own("text4", text4);
  own("Check1", Check1);
  own("Check2", Check2);
  own("Check3", Check3);
  own("Check4", Check4);
  own("Check5", Check5);
  own("Check6", Check6);
  own("Command1", Command1);
  own("Command3", Command3);
  own("Command4", Command4);
  own("Command5", Command5);
  own("Command2", Command2);
  own("dosbox", dosbox);
  own("info", info);
  own("playit", playit);
}

void indepth_window::wireHelp() {
  explain(Check1, &LanguageTexts::TipNoResolve);
  explain(Check2, &LanguageTexts::TipRouteRsvp);
  explain(Check3, &LanguageTexts::TipDeviceRsvp);
  explain(Check4, &LanguageTexts::TipPriorityTag);
  explain(Check5, &LanguageTexts::TipForceIpv4);
  explain(Check6, &LanguageTexts::TipForceIpv6);
  explain(Label2, &LanguageTexts::TipQueries);
  explain(text3, &LanguageTexts::TipQueries);
  explain(Label3, &LanguageTexts::TipPeriod);
  explain(text4, &LanguageTexts::TipPeriod);
  mouseMove = [this](MouseButton) {
    if (run_.InDepthRunning == 0) info.text = "Veltrin";
  };
}

void indepth_window::explain(Control& control, std::string LanguageTexts::*text) {
  control.mouseMove = [this, text](MouseButton) {
    if (run_.InDepthRunning == 0) info.text = program_.texts.*text;
  };
}

void indepth_window::Form_Load() {
  chooseLanguage(program_.LanguageId, program_.texts);
  dosbox.text = program_.texts.TextInDepthIntro;
  text3.items = steps(10, 100, 10);
  text4.items = steps(100, 500, 25);
  loadValues();
  if (program_.menu.PostVistaOs != 1) return;
  for (CheckBox* missing : {&Check3, &Check4}) {
    missing->value = kUnchecked;
    missing->visible = false;
  }
}

void indepth_window::Command1_Click() {
  beginTest();
  rememberValues();
  dosbox.text += "Test Started at " + program_.platform.clock.shortTime() + std::string(kLineBreak);
  skip([&] { program_.Wait(kPause); });
  Command3.enabled = true;
  Command4.enabled = true;
  objDOS6.run("ping " + Text1.text.get() + " -n 10");
  skip([&] { program_.Wait(kPause); });
  run_.InDepthOptions = options();
  objDOS6.run("pathping " + run_.InDepthOptions + " " + Text1.text.get());
  endTest();
}

void indepth_window::beginTest() {
  mousePointer = MousePointer::Hourglass;
  playBusyClip(program_, playit);
  info.visible = false;
  Command5.visible = false;
  run_.InDepthStart = secondsSinceMidnight(program_.platform.clock.now());
  run_.InDepthRunning = 1;
}

void indepth_window::endTest() {
  run_.InDepthRunning = 0;
  playit.stop();
  info.visible = true;
  mousePointer = MousePointer::Default;
}

void indepth_window::rememberValues() {
  program_.writeSetting(kSection, "Source", Text1.text.get());
  program_.writeSetting(kSection, "Queries", text3.text.get());
  program_.writeSetting(kSection, "Period", text4.text.get());
}

// The arguments of pathping, always in one order. Nothing keeps the user from options
// that contradict each other.
std::string indepth_window::options() const {
  std::string composed = "-q " + text3.text.get() + " -p " + text4.text.get();
  const auto add = [&composed](const CheckBox& box, const char* option) {
    if (box.value == kChecked) composed += option;
  };
  add(Check1, " -n");
  add(Check2, " -P");
  add(Check3, " -R");
  add(Check4, " -T");
  add(Check5, " -4");
  add(Check6, " -6");
  return composed;
}

// Seconds since the test began, to the millisecond. Over midnight a test is younger than it
// was when it began, and nothing is replaced.
double indepth_window::age() const {
  constexpr double kThousandths = 1000;
  const double seconds = secondsSinceMidnight(program_.platform.clock.now()) - run_.InDepthStart;
  return std::nearbyint(seconds * kThousandths) / kThousandths;
}

void indepth_window::objDOS6_ReceiveOutputs(const std::string& chunk) {
  dosbox.text += age() > kFirstTextOfTools ? withRemarks(chunk) : chunk;
  program_.platform.events.DoEvents();
}

void indepth_window::Command3_Click() { copyText(program_, dosbox.text, kTitle); }

void indepth_window::Command4_Click() {
  saveResult(program_, {"\\InDepthAnalysis_ ", Text1.text, kTitle, program_.texts.TextFileCreated},
             dosbox.text);
}

void indepth_window::Command5_Click() { dosbox.text = program_.texts.TextInDepthAbout; }

}  // namespace veltrin
