// SPDX-License-Identifier: GPL-3.0-or-later
#include "route/trace.h"

#include "frame/copy_text.h"
#include "frame/growing_text.h"
#include "frame/mcolor.h"
#include "frame/result_file.h"
#include "frame/tool_tips.h"
#include "text/statement.h"
#include "text/strings.h"

namespace veltrin {
namespace {

constexpr int kPauseAtStart = 10;      // ms
constexpr int kPauseBehindTool = 500;  // ms
constexpr int kMenuColour = 1;         // option of the buttons' colour

const std::vector<std::string> kPasses = {"1", "2", "3", "4",  "5",  "6",
                                          "7", "8", "9", "10", "11", "12"};

}  // namespace

trace::trace(Program& program)
    : Form(nameOf(WindowName::trace), program),
      program_(program),
      boxes_{&trace1, &trace2, &trace3, &trace4, &trace5},
      destinations_(program, "Trace", "Trace", boxes_),
      run_(program.shared<RouteValues>()),
      objDOS(*this, program.platform,
             [this](const std::string& chunk) { objDOS_ReceiveOutputs(chunk); }) {
  own("menuclear", menuclear);
  own("menudef", menudef);
  own("Label1", Label1);
  own("trace1", trace1);
  own("Label2", Label2);
  own("trace2", trace2);
  own("Label4", Label4);
  own("trace3", trace3);
  own("Label5", Label5);
  own("trace4", trace4);
  own("Label6", Label6);
  own("trace5", trace5);
  own("Label3", Label3);
  own("Combo1", Combo1);
  own("startit", startit);
  own("copy1", copy1);
  own("write1", write1);
  own("Command1", Command1);
  own("Text1", Text1);
  own("txtOutputs", txtOutputs);

  caption = "Trace Route Test";
  Label1.caption = "1";
  Label2.caption = "2";
  Label3.caption = "Number of Passes";
  Label4.caption = "3";
  Label5.caption = "4";
  Label6.caption = "5";
  destinations_.setDefaults();

  for (TextBox* box : boxes_) box->dblClick = [box] { box->text = ""; };
  menuclear.click = [this] { destinations_.clear(); };
  menudef.click = [this] { destinations_.setDefaults(); };
  startit.click = [this] { startit_Click(); };
  copy1.click = [this] { copy1_Click(); };
  write1.click = [this] { write1_Click(); };
  Command1.click = [this] { Command1_Click(); };
  txtOutputs.change = [this] { followText(program_, txtOutputs); };
}

void trace::Form_Load() {
  txtOutputs.text = "";
  menuColour(program_.platform.desktop, *this, kMenuColour);
  Combo1.text = "1";
  Combo1.items = kPasses;
  destinations_.recall();
  setToolTips(program_.LanguageId, *this);
}

void trace::startit_Click() {
  enableButtons(false);
  clearOldText();
  mousePointer = MousePointer::Hourglass;
  run_.RoutePasses = Combo1.text.get();
  txtOutputs.text += run_.RoutePasses.text() + program_.texts.TextPassesRun;
  skip([&] { program_.Wait(kPauseAtStart); });
  runPasses();
  txtOutputs.text += program_.texts.TextTestComplete;
  mousePointer = MousePointer::Default;
  enableButtons(true);
}

void trace::enableButtons(bool enabled) {
  startit.enabled = enabled;
  copy1.enabled = enabled;
  write1.enabled = enabled;
  Command1.enabled = enabled;
}

void trace::clearOldText() {
  dropIntroduction(txtOutputs);
  if (txtOutputs.text == "") return;
  if (program_.MsgBox(program_.texts.TextClearData, kMessageYesNo, "Trace Routes") == kAnswerYes) {
    txtOutputs.text = "";
  } else {
    txtOutputs.text += kLineBreak;
  }
}

// Passes that are no number fail the head of the loop: its body is carried out once,
// with the counter as the loop before left it.
void trace::runPasses() {
  double passes = 0;
  if (!skip([&] { passes = run_.RoutePasses.number(); })) {
    runPass();
    return;
  }
  for (run_.RoutePass = 1; objDOS && run_.RoutePass <= passes; ++run_.RoutePass) {
    runPass();
  }
}

// Each box is read when its turn comes. The first destination is traced even if its box
// is empty.
void trace::runPass() {
  for (const TextBox* box : boxes_) {
    if (!objDOS) return;
    if (box == &trace1 || !(box->text == "")) traceTo(*box);
  }
}

void trace::traceTo(const TextBox& destination) {
  runTool("ping ", destination);
  skip([&] { program_.Wait(kPauseBehindTool); });
  txtOutputs.text += program_.texts.TextTracePass + std::to_string(run_.RoutePass) + " to " +
                     destination.text.get() + std::string(kLineBreak);
  runTool("tracert ", destination);
  skip([&] { program_.Wait(kPauseBehindTool); });
}

void trace::runTool(const std::string& tool, const TextBox& destination) {
  Text1.text = tool + destination.text.get();
  objDOS.run(Text1.text);
}

void trace::objDOS_ReceiveOutputs(const std::string& chunk) {
  txtOutputs.text += chunk;
  program_.platform.events.DoEvents();
}

void trace::copy1_Click() { copyText(program_, txtOutputs.text, "Trace Route"); }

void trace::write1_Click() {
  saveResult(program_,
             {"\\Traceroute_ ", trace1.text, "Trace Routes", program_.texts.TextFileCreated},
             txtOutputs.text);
}

void trace::Command1_Click() {
  destinations_.remember();
  unload();
}

}  // namespace veltrin
