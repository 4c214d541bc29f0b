// SPDX-License-Identifier: GPL-3.0-or-later
#include "mtu/mtutest.h"

#include "frame/tool_tips.h"
#include "mtu/pingit.h"
#include "text/strings.h"

namespace veltrin {
namespace {

const char* const kLargest = "1500";

constexpr std::int64_t kShortestSite = 5;  // characters

const std::string kBreak(kLineBreak);

}  // namespace

mtutest::mtutest(Program& program)
    : Form(nameOf(WindowName::mtutest), program),
      program_(program),
      mtu_(program.shared<MtuValues>()) {
  own("Label2", Label2);
  own("testit", testit);
  own("Command3", Command3);
  caption = "MTU Test/Set";
  Label2.caption = "When setting the MTU you can use a general site like " +
                   program.installation.ProbeHost +
                   " or if you generally go to the same location, enter that location for the "
                   "test. You can enter a URL or an IP.";
  Command3.click = [this] { Command3_Click(); };
}

// The site of the last run is written over before it is read, also where the user does not
// want another run.
void mtutest::Form_Load() {
  program_.showInLoad(*this);
  mtu_.OriginalMtu = readMtu(program_);
  if (Left(mtu_.OriginalMtu.text(), Len(kLargest)) == kLargest) {
    program_.MsgBox(
        "The MTU value is set to maximum, 1500, the MTU test is not necessary." + kBreak,
        kMessageOk, kMtuTitle);
    unload();
    return;
  }
  if (!isWanted()) unload();
  program_.writeSetting(kMtuSection, kMtuSiteKey, testit.text.get());
  testit.text = program_.readSetting(kMtuSection, kMtuSiteKey);
  if (Len(testit.text.get()) < kShortestSite) testit.text = program_.installation.ProbeHost;
  setToolTips(program_.LanguageId, *this);
}

// Whether the search has not run yet, or the user wants it once more.
bool mtutest::isWanted() {
  if (Val(program_.readSetting(kMtuSection, kMtuDone)) != 1) return true;
  return program_.MsgBox("The MTU has already been set. Running it again is not necessary." +
                             kBreak + "Would you like to continue the MTU Test?" + kBreak,
                         kMessageYesNo, kMtuTitle) == kAnswerYes;
}

void mtutest::Command3_Click() {
  mtu_.MtuSite = testit.text;
  program_.writeSetting(kMtuSection, kMtuSiteKey, testit.text.get());
  unload();
  program_.showModal<pingit>();
}

}  // namespace veltrin
