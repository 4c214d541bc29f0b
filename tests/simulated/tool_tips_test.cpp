// SPDX-License-Identifier: GPL-3.0-or-later
// The tool tips of all windows.
#include "frame/tool_tips.h"

#include <array>
#include <deque>
#include <gtest/gtest.h>
#include <map>
#include <ostream>
#include <string>
#include <vector>

#include "forms/label.h"
#include "frame/language.h"

namespace veltrin {
namespace {

const std::string kDesign = "tip of the design";
const std::string kCopyTip = "Copy Results to Clipbaord to paste in Document or Email";

class NoHost : public FormHost {
 public:
  void unload(Form&) override {}
};

// A window of a given name with given controls, each with a tip of its design. A
// name that ends in "()" is an array of two.
class NamedWindow : public Form {
 public:
  NamedWindow(const std::string& name, FormHost& host, const std::vector<std::string>& names)
      : Form(name, host) {
    for (const std::string& control : names) {
      if (control.ends_with("()")) {
        own(control.substr(0, control.size() - 2), arrays_.emplace_back());
      } else {
        own(control, labels_.emplace_back());
      }
    }
    for (Control* control : controls()) control->toolTip = kDesign;
  }

  // The tips that are not those of the design, by control.
  std::map<std::string, std::string> changedTips() const {
    std::map<std::string, std::string> tips;
    for (const Control* control : controls()) {
      if (control->toolTip == kDesign) continue;
      const std::string index =
          control->index() < 0 ? "" : "(" + std::to_string(control->index()) + ")";
      tips[control->name() + index] = control->toolTip;
    }
    return tips;
  }

 private:
  std::deque<Label> labels_;
  std::deque<std::array<Label, 2>> arrays_;
};

struct WindowTips {
  std::string window;
  std::vector<std::string> controls;
  std::map<std::string, std::string> english;
};

// Names a case of a failing test.
void PrintTo(const WindowTips& tips, std::ostream* out) { *out << tips.window; }

const std::vector<WindowTips> kWindows = {
    {"startup",
     {"Command1", "Command2", "Command3", "Command4", "Command5", "Command6", "Command7",
      "Command8", "Command9", "Command10", "Combo1", "Image1", "Image2", "Image3"},
     {{"Command10", "Monitor Recieved and Sent Bandwidth on Network"},
      {"Command2", "Monitor More in Depth Data of Network"},
      {"Command4", "Perform Ping Test of 1 to 5 locations"},
      {"Command1", "Run a Trace Route to a Given URL/Locations"},
      {"Command9", "Perform a HOP Stability Test"},
      {"Command8", "Look for and Trouble Shoot Internet Outages"},
      {"Command7", "Set MTU in Win XP"},
      {"Combo1",
       "Enter your ISP Rated Download Speed (Not the Turbo Speed) Do Not Set Higher the Rated "
       "Speed."},
      {"Image2", "Kestrimo"},
      {"Image1", "Click and Hold to Move"},
      {"Image3", "Tools"}}},
    {"frmNetwork",
     {"Logo", "NotOnTOP", "OnTopALL", "Timer1"},
     {{"Logo", "Click to Move, Right Click to Exit"},
      {"NotOnTOP", "Force Not ON TOP"},
      {"OnTopALL", "Force ON TOP ALL"}}},
    {"frmSysInfo",
     {"Label1", "Label2", "Command1", "Command2"},
     {{"Label1", "Select ALL Items"},
      {"Label2", "De-Select ALL Items"},
      {"Command1", "Get Detailed System Information"}}},
    {"MonOut",
     {"Command1", "Command2", "Check1", "Combo1", "Label4", "DosBox2"},
     {{"Command2", "Generate a Detailed Report"},
      {"Check1", "Show each event"},
      {"Combo1",
       "Set the Time in between each test, 5 to 10 seconds normal, 2 to 4 if intermitant quick "
       "outages"},
      {"Label4", "This Shows any Outages Detected"},
      {"DosBox2", "This Shows Traces and Data checked during an Outage"}}},
    {"pingtester",
     {"url()", "pingcur()", "pinglow()", "pingav()", "pinghi()", "packetloss()", "Combo1", "Combo2",
      "Command1", "Command2", "Command3"},
     {{"url(0)", ""},
      {"pingcur(0)", "Select Frequently Visited Sites or IPs if you Game"},
      {"pinglow(0)", "Lowest Ping"},
      {"pingav(0)", "Average Ping"},
      {"pinghi(0)", "Highest Ping"},
      {"packetloss(0)", "Number of Times Packet Loss Detected"},
      {"Combo1", "Select Number of Test to Run"},
      {"Combo2", "Set the Data Size to Use, Leave at 32 if Novice"},
      {"Command2", kCopyTip},
      {"Command3", "Save Results to File"}}},
    {"Stability",
     {"TestPoint", "Command1", "Command2", "Command3"},
     {{"TestPoint", "Enter URL/IP Destination to Test"},
      {"Command1", "Switch Pages of Data"},
      {"Command2", kCopyTip}}},
    {"trace",
     {"trace1", "trace2", "trace3", "trace4", "trace5", "Combo1", "copy1", "write1", "Command1"},
     {{"trace1", "Enter the URL/Destination to Test"},
      {"trace2", "Enter the URL/Destination to Test"},
      {"trace3", "Enter the URL/Destination to Test"},
      {"trace4", "Enter the URL/Destination to Test"},
      {"trace5", "Enter the URL/Destination to Test"},
      {"Combo1", "Set the Number for Test for each URL/IP"},
      {"copy1", kCopyTip},
      {"write1", "Save Results to File"}}},
};

class ToolTips : public ::testing::TestWithParam<WindowTips> {
 protected:
  std::map<std::string, std::string> tipsIn(const Loose& language) {
    NamedWindow window(GetParam().window, host, GetParam().controls);
    setToolTips(language, window);
    return window.changedTips();
  }

  NoHost host;
};

TEST_P(ToolTips, AreSetInEnglish) { EXPECT_EQ(tipsIn(kEnglish), GetParam().english); }

TEST_P(ToolTips, AreThoseOfTheDesignInDutch) { EXPECT_TRUE(tipsIn(kDutch).empty()); }

TEST_P(ToolTips, AreThoseOfTheDesignBeforeALanguageIsChosen) { EXPECT_TRUE(tipsIn({}).empty()); }

INSTANTIATE_TEST_SUITE_P(Windows, ToolTips, ::testing::ValuesIn(kWindows),
                         [](const auto& tips) { return tips.param.window; });

TEST(ToolTip, TheMtuEntryWindowGetsNoneInEnglish) {
  NoHost host;
  NamedWindow window("mtutest", host, {"testit"});
  setToolTips(kEnglish, window);
  EXPECT_TRUE(window.changedTips().empty());
}

TEST(ToolTip, AWindowWithoutTipsKeepsThoseOfItsDesign) {
  NoHost host;
  NamedWindow window("setlang", host, {"Command1", "Combo1", "Label1"});
  setToolTips(kEnglish, window);
  EXPECT_TRUE(window.changedTips().empty());
}

TEST(ToolTip, AControlThatIsMissingDisturbsNoOther) {
  NoHost host;
  NamedWindow window("frmNetwork", host, {"OnTopALL"});
  setToolTips(kEnglish, window);
  EXPECT_EQ(window.changedTips(),
            (std::map<std::string, std::string>{{"OnTopALL", "Force ON TOP ALL"}}));
}

}  // namespace
}  // namespace veltrin
