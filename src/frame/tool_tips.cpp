// SPDX-License-Identifier: GPL-3.0-or-later
#include "frame/tool_tips.h"

#include <array>

#include "frame/window_name.h"

namespace veltrin {
namespace {

struct ToolTip {
  WindowName window;
  const char* control;
  int index;  // in a control array, else -1
  const char* text;
};

constexpr std::array<ToolTip, 44> kToolTips = {{
    {WindowName::startup, "Command10", -1, "Monitor Recieved and Sent Bandwidth on Network"},
    {WindowName::startup, "Command2", -1, "Monitor More in Depth Data of Network"},
    {WindowName::startup, "Command4", -1, "Perform Ping Test of 1 to 5 locations"},
    {WindowName::startup, "Command1", -1, "Run a Trace Route to a Given URL/Locations"},
    {WindowName::startup, "Command9", -1, "Perform a HOP Stability Test"},
    {WindowName::startup, "Command8", -1, "Look for and Trouble Shoot Internet Outages"},
    {WindowName::startup, "Command7", -1, "Set MTU in Win XP"},
    {WindowName::startup, "Combo1", -1,
     "Enter your ISP Rated Download Speed (Not the Turbo Speed) Do Not Set Higher the Rated "
     "Speed."},
    {WindowName::startup, "Image2", -1, "Kestrimo"},
    {WindowName::startup, "Image1", -1, "Click and Hold to Move"},
    {WindowName::startup, "Image3", -1, "Tools"},
    {WindowName::frmNetwork, "Logo", -1, "Click to Move, Right Click to Exit"},
    {WindowName::frmNetwork, "NotOnTOP", -1, "Force Not ON TOP"},
    {WindowName::frmNetwork, "OnTopALL", -1, "Force ON TOP ALL"},
    {WindowName::frmSysInfo, "Label1", -1, "Select ALL Items"},
    {WindowName::frmSysInfo, "Label2", -1, "De-Select ALL Items"},
    {WindowName::frmSysInfo, "Command1", -1, "Get Detailed System Information"},
    {WindowName::MonOut, "Command2", -1, "Generate a Detailed Report"},
    {WindowName::MonOut, "Check1", -1, "Show each event"},
    {WindowName::MonOut, "Combo1", -1,
     "Set the Time in between each test, 5 to 10 seconds normal, 2 to 4 if intermitant quick "
     "outages"},
    {WindowName::MonOut, "Label4", -1, "This Shows any Outages Detected"},
    {WindowName::MonOut, "DosBox2", -1, "This Shows Traces and Data checked during an Outage"},
    {WindowName::mtutest, "testit", -1,
     "Enter a Good/Close URL or IP. You can do a Trave Route and Select a close HOP, 2-5"},
    {WindowName::pingtester, "url", 0, ""},
    {WindowName::pingtester, "pingcur", 0, "Select Frequently Visited Sites or IPs if you Game"},
    {WindowName::pingtester, "pinglow", 0, "Lowest Ping"},
    {WindowName::pingtester, "pingav", 0, "Average Ping"},
    {WindowName::pingtester, "pinghi", 0, "Highest Ping"},
    {WindowName::pingtester, "packetloss", 0, "Number of Times Packet Loss Detected"},
    {WindowName::pingtester, "Combo1", -1, "Select Number of Test to Run"},
    {WindowName::pingtester, "Combo2", -1, "Set the Data Size to Use, Leave at 32 if Novice"},
    {WindowName::pingtester, "Command2", -1,
     "Copy Results to Clipbaord to paste in Document or Email"},
    {WindowName::pingtester, "Command3", -1, "Save Results to File"},
    {WindowName::Stability, "TestPoint", -1, "Enter URL/IP Destination to Test"},
    {WindowName::Stability, "Command1", -1, "Switch Pages of Data"},
    {WindowName::Stability, "Command2", -1,
     "Copy Results to Clipbaord to paste in Document or Email"},
    {WindowName::trace, "trace1", -1, "Enter the URL/Destination to Test"},
    {WindowName::trace, "trace2", -1, "Enter the URL/Destination to Test"},
    {WindowName::trace, "trace3", -1, "Enter the URL/Destination to Test"},
    {WindowName::trace, "trace4", -1, "Enter the URL/Destination to Test"},
    {WindowName::trace, "trace5", -1, "Enter the URL/Destination to Test"},
    {WindowName::trace, "Combo1", -1, "Set the Number for Test for each URL/IP"},
    {WindowName::trace, "copy1", -1, "Copy Results to Clipbaord to paste in Document or Email"},
    {WindowName::trace, "write1", -1, "Save Results to File"},
}};

// The language in which a window sets its tips. That of the MTU entry window is
// one that never occurs: its design keeps the tips it has.
Loose languageOfTips(const Form& form) {
  return form.name() == nameOf(WindowName::mtutest) ? Loose("14") : Loose("1");
}

}  // namespace

void setToolTips(const Loose& LanguageId, Form& form) {
  if (!(LanguageId == languageOfTips(form))) return;
  for (const ToolTip& tip : kToolTips) {
    if (nameOf(tip.window) != form.name()) continue;
    if (Control* control = form.find(tip.control, tip.index)) control->toolTip = tip.text;
  }
}

}  // namespace veltrin
