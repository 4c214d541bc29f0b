// SPDX-License-Identifier: GPL-3.0-or-later
#include "mtu/pingit.h"

#include "mtu/setmtu.h"
#include "ping/pingmod.h"
#include "text/statement.h"
#include "text/strings.h"

namespace veltrin {
namespace {

constexpr int kPings = 50;
constexpr int kPauseBehindPing = 1000;  // ms
constexpr double kLost = 800;           // ms; a slower sample counts as lost
constexpr double kMostLost = 2;         // with more of them the search is not for this line
constexpr double kLostToWarn = 1;
constexpr double kSpreadToWarn = 50;  // ms
constexpr int kPauseToRead = 3000;    // ms

// Rows of the sorted list that the closing average counts, and the one taken for the
// highest, which lies behind its end.
constexpr std::size_t kFirstRow = 1;
constexpr std::size_t kLastRow = 48;
constexpr std::size_t kHighestRow = 99;
constexpr double kCountedRows = 48;  // also where the list is shorter

constexpr Colour kGreen{0x00, 0x80, 0x00};
constexpr Colour kNavy{0x00, 0x00, 0x80};
constexpr Colour kPurple{0x80, 0x00, 0x80};
constexpr Colour kDarkRed{0x80, 0x00, 0x00};
constexpr Colour kRed{0xFF, 0x00, 0x00};

const std::string kBreak(kLineBreak);

}  // namespace

std::string ratingOf(double spread) {
  std::string worth = "Below Average";
  if (spread < 40) worth = "Average";
  if (spread < 30) worth = "Good";
  if (spread < 20) worth = "Excellent";
  return "Ping Test Results are " + worth;
}

pingit::pingit(Program& program)
    : Form(nameOf(WindowName::pingit), program),
      program_(program),
      mtu_(program.shared<MtuValues>()),
      pings_(program.shared<PingValues>()),
      objDOS2(*this, program.platform,
              [this](const std::string& chunk) { objDOS2_ReceiveOutputs(chunk); }) {
  ownControls();
  caption = "Verifying Ping/Packet Loss";
  pingip.visible = false;
  List1.visible = false;
  lb[0].foreColour = kGreen;
  lb[1].foreColour = kNavy;
  lb[2].foreColour = kPurple;
  lb[3].foreColour = kDarkRed;
  lb[4].caption = "Testing Ping to Test Location";
  lb[5].caption = "50";
  lb[6].caption = "Ping Testing Remaining";
  lb[7].foreColour = kRed;
}

void pingit::ownControls() {
  own("Image1", Image1);
  own("lb", lb);
  own("pingtotal", pingtotal);
  own("Line1", Line1);
  own("Image2", Image2);
  own("pingip", pingip);
  own("List1", List1);
}

void pingit::Form_Load() {
  mousePointer = MousePointer::Hourglass;
  pingip.text = mtu_.MtuSite;
  program_.showInLoad(*this);
  RunIt();
}

void pingit::objDOS2_ReceiveOutputs(const std::string& chunk) {
  if (const auto read = readTail(chunk, pings_.PingTime)) LastPing = *read;
}

// A window that the user closes ends its run.
void pingit::RunIt() {
  for (;;) {
    objDOS2.run("ping " + pingip.text.get() + " -n 1");
    skip([&] { program_.Wait(kPauseBehindPing); });
    if (!objDOS2) return;
    takeSample();
    if (PingCount >= kPings) {
      judgeLoss();
      return;
    }
    ++PingCount;
    lb[5].caption = std::to_string(kPings - PingCount);
  }
}

// A ping without a reply counts as the one before it. The first lost one is not listed.
void pingit::takeSample() {
  const double sample = Val(LastPing);
  pingtotal.caption = LastPing.text();
  if (sample <= kLost || LostCount != 0) List1.add(LastPing.text());
  if (sample < Val(PingMin)) PingMin = LastPing;
  lb[0].caption = "Min Ping Result = " + PingMin.text() + " ms";
  if (sample > Val(PingMax)) PingMax = LastPing;
  lb[2].caption = "Max Ping Result = " + PingMax.text() + " ms";
  showAverage();
  if (sample > kLost) ++LostCount;
  lb[3].caption = "Lost Packets = " + toText(LostCount);
}

void pingit::showAverage() {
  PingSum = 0;
  for (std::size_t row = 0; row < List1.count(); ++row) PingSum += Val(List1.item(row));
  if (List1.count() == 0) return;
  lb[1].caption =
      "Average Ping = " + Format(PingSum / static_cast<double>(List1.count()), "###") + " ms";
}

// With too many lost ones the run stops at the line that promises another one.
void pingit::judgeLoss() {
  SavedLost = LostCount;
  if (Val(SavedLost) <= kMostLost) return final();
  PingCount = 0;
  PingMin = 1000;
  PingMax = 0;
  PingSum = 0;
  LostCount = 0;
  List1.clear();
  if (Retested == 1) {
    program_.MsgBox(
        "You had excessive packet loss, or dropped ping response. Wait a few minutes and try "
        "again. Also read the packet loss information on the main menu.",
        kMessageOk, kMtuTitle);
    unload();
  }
  Retested = 1;
  lb[7].caption = "Retesting due to Packet Loss";
}

// A window that the loss has taken away leads to the search all the same, one that its user
// closes does not.
void pingit::final() {
  sumUp();
  subtractExtremes();
  warn();
  subtractExtremes();
  lb[7].caption = ratingOf(LostCount);
  const bool stands = isLoaded();
  skip([&] { program_.Wait(kPauseToRead); });
  if (stands && !isLoaded()) return;
  program_.showModal<setmtu>();
}

void pingit::sumUp() {
  ListLow = List1.item(0);
  ListHigh = List1.item(kHighestRow);
  PingSum = 0;
  for (std::size_t row = kFirstRow; row <= kLastRow; ++row) PingSum += Val(List1.item(row));
  AverageText = Format(PingSum / kCountedRows, "###");
  lb[1].caption = "Average Ping = " + AverageText + " ms";
}

// The spread of the samples takes the place of the count of lost ones. An extreme that is
// no number leaves that count in its place.
void pingit::subtractExtremes() {
  skip([&] { LostCount = toNumber(ListHigh) - toNumber(ListLow); });
}

// What is said first is said again with what follows. The run goes on whatever the answer.
void pingit::warn() {
  std::string text;
  if (LostCount > kSpreadToWarn) {
    mousePointer = MousePointer::Default;
    text = "The Ping Test did not appear to be stable. The differents between the" + kBreak +
           "High and Low results was " + toText(LostCount) + kBreak +
           "It would be better to run the optimizer at a time when your ping is more stable." +
           kBreak + "Would you like to exit the optimizer?" + kBreak;
    if (program_.MsgBox(text, kMessageYesNo, kMtuTitle) == kAnswerYes) unload();
  }
  if (Val(SavedLost) <= kLostToWarn) return;
  mousePointer = MousePointer::Default;
  const std::string& host = program_.installation.ProbeHost;
  text += "During the Ping Test you experienced packet loss, or dropped information." + kBreak +
          "You cannot continue with these results. Fix this issue before continuing." + kBreak +
          "Open up a command prompt and run a ping test to " + host + " by typing" + kBreak +
          "ping " + host + " -t   " + kBreak +
          "After a few minutes hit  Ctrl and C to stop the test and obtain the results.   " +
          kBreak;
  program_.MsgBox(text, kMessageOk, kMtuTitle);
  unload();
}

}  // namespace veltrin
