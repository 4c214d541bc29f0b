#include "frame/tool_tips.h"

#include <array>
#include <string_view>

namespace veltrin {
namespace {

struct ToolTip {
  std::string_view window;
  const char* control;
  int index;  // in a control array, else -1
  const char* text;
};

constexpr std::array<ToolTip, 44> kToolTips = {{
    {"startup", "Command10", -1, "Monitor Recieved and Sent Bandwidth on Network"},
    {"startup", "Command2", -1, "Monitor More in Depth Data of Network"},
    {"startup", "Command4", -1, "Perform Ping Test of 1 to 5 locations"},
    {"startup", "Command1", -1, "Run a Trace Route to a Given URL/Locations"},
    {"startup", "Command9", -1, "Perform a HOP Stability Test"},
    {"startup", "Command8", -1, "Look for and Trouble Shoot Internet Outages"},
    {"startup", "Command7", -1, "Set MTU in Win XP"},
    {"startup", "Combo1", -1,
     "Enter your ISP Rated Download Speed (Not the Turbo Speed) Do Not Set Higher the Rated "
     "Speed."},
    {"startup", "Image2", -1, "Kestrimo"},
    {"startup", "Image1", -1, "Click and Hold to Move"},
    {"startup", "Image3", -1, "Tools"},
    {"frmNetwork", "Logo", -1, "Click to Move, Right Click to Exit"},
    {"frmNetwork", "NotOnTOP", -1, "Force Not ON TOP"},
    {"frmNetwork", "OnTopALL", -1, "Force ON TOP ALL"},
    {"frmSysInfo", "Label1", -1, "Select ALL Items"},
    {"frmSysInfo", "Label2", -1, "De-Select ALL Items"},
    {"frmSysInfo", "Command1", -1, "Get Detailed System Information"},
    {"MonOut", "Command2", -1, "Generate a Detailed Report"},
    {"MonOut", "Check1", -1, "Show each event"},
    {"MonOut", "Combo1", -1,
     "Set the Time in between each test, 5 to 10 seconds normal, 2 to 4 if intermitant quick "
     "outages"},
    {"MonOut", "Label4", -1, "This Shows any Outages Detected"},
    {"MonOut", "DosBox2", -1, "This Shows Traces and Data checked during an Outage"},
    {"mtutest", "testit", -1,
     "Enter a Good/Close URL or IP. You can do a Trave Route and Select a close HOP, 2-5"},
    {"pingtester", "url", 0, ""},
    {"pingtester", "pingcur", 0, "Select Frequently Visited Sites or IPs if you Game"},
    {"pingtester", "pinglow", 0, "Lowest Ping"},
    {"pingtester", "pingav", 0, "Average Ping"},
    {"pingtester", "pinghi", 0, "Highest Ping"},
    {"pingtester", "packetloss", 0, "Number of Times Packet Loss Detected"},
    {"pingtester", "Combo1", -1, "Select Number of Test to Run"},
    {"pingtester", "Combo2", -1, "Set the Data Size to Use, Leave at 32 if Novice"},
    {"pingtester", "Command2", -1, "Copy Results to Clipbaord to paste in Document or Email"},
    {"pingtester", "Command3", -1, "Save Results to File"},
    {"Stability", "TestPoint", -1, "Enter URL/IP Destination to Test"},
    {"Stability", "Command1", -1, "Switch Pages of Data"},
    {"Stability", "Command2", -1, "Copy Results to Clipbaord to paste in Document or Email"},
    {"trace", "trace1", -1, "Enter the URL/Destination to Test"},
    {"trace", "trace2", -1, "Enter the URL/Destination to Test"},
    {"trace", "trace3", -1, "Enter the URL/Destination to Test"},
    {"trace", "trace4", -1, "Enter the URL/Destination to Test"},
    {"trace", "trace5", -1, "Enter the URL/Destination to Test"},
    {"trace", "Combo1", -1, "Set the Number for Test for each URL/IP"},
    {"trace", "copy1", -1, "Copy Results to Clipbaord to paste in Document or Email"},
    {"trace", "write1", -1, "Save Results to File"},
}};

// The language in which a window sets its tips. That of the MTU entry window is
// one that never occurs: its design keeps the tips it has.
Loose languageOfTips(std::string_view window) {
  return window == "mtutest" ? Loose("14") : Loose("1");
}

}  // namespace

void setToolTips(const Loose& LanguageId, Form& form) {
  if (!(LanguageId == languageOfTips(form.name()))) return;
  for (const ToolTip& tip : kToolTips) {
    if (tip.window != form.name()) continue;
    if (Control* control = form.find(tip.control, tip.index)) control->toolTip = tip.text;
  }
}

}  // namespace veltrin
