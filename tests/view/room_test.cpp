// SPDX-License-Identifier: GPL-3.0-or-later
// Every text of the windows has room, also in a window at its smallest, at each scale of
// the screen. The suite runs at 100, 150 and 200 percent.
#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QStyleOptionComboBox>

#include "all_windows.h"

namespace veltrin {
namespace {

using testing::IsEmpty;

bool isCut(const QLabel& label) {
  if (label.text().isEmpty()) return false;
  if (label.wordWrap()) return label.heightForWidth(label.width()) > label.height();
  const QSize text = label.fontMetrics().size(Qt::TextShowMnemonic, label.text());
  const QRect room = label.contentsRect();
  return text.width() > room.width() || text.height() > room.height();
}

bool isCut(const QAbstractButton& button) {
  const QSize wanted = button.sizeHint();
  return wanted.width() > button.width() || wanted.height() > button.height();
}

bool isCut(const QLineEdit& line) {
  constexpr int kCaret = 2;  // pixels
  const QMargins margins = line.textMargins();
  const int room = line.width() - margins.left() - margins.right() - kCaret;
  return line.fontMetrics().horizontalAdvance(line.text()) > room;
}

// Where the text of a box stands, in pixels.
int roomOf(const QComboBox& box) {
  if (box.lineEdit() != nullptr) return box.lineEdit()->width();
  constexpr int kMargins = 4;
  QStyleOptionComboBox option;
  option.initFrom(&box);
  option.subControls = QStyle::SC_All;
  return box.style()
             ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &box)
             .width() -
         kMargins;
}

bool isCut(const QComboBox& box) {
  for (int item = 0; item < box.count(); ++item) {
    if (box.fontMetrics().horizontalAdvance(box.itemText(item)) > roomOf(box)) return true;
  }
  return false;
}

bool isCut(const QWidget& widget) {
  if (const auto* label = qobject_cast<const QLabel*>(&widget)) return isCut(*label);
  if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) return isCut(*button);
  if (const auto* line = qobject_cast<const QLineEdit*>(&widget)) return isCut(*line);
  if (const auto* box = qobject_cast<const QComboBox*>(&widget)) return isCut(*box);
  return false;
}

class Room : public AllWindows {
 protected:
  // The visible widgets of the smallest window that cut their texts.
  std::vector<std::string> cut() {
    window->resize(1, 1);
    atRest([] {});
    std::vector<std::string> names;
    for (const QWidget* child : window->findChildren<QWidget*>()) {
      if (child->isVisible() && isCut(*child)) names.push_back(fromQt(child->objectName()));
    }
    return names;
  }
};

TEST_F(Room, EveryWindowAsItIsMade) {
  inEachFullWindow([&](Form&) { EXPECT_THAT(cut(), IsEmpty()); });
}

TEST_F(Room, Splash) {
  const auto form = look<starter>();
  form->Label1.caption = "Current Version: 1.03";
  form->Label2.caption = "Your Version 1.03  -  Dated 5 Jan 2012";

  EXPECT_THAT(cut(), IsEmpty());
}

TEST_F(Room, MenuWithTheLongestAddresses) {
  program.start.LocalIp = "fd00:1234:5678:9abc:def0:1234:5678:9abc";
  program.start.PublicIp = "2001:db8:85a3:8d3:1319:8a2e:370:7348";
  shown<startup>();

  EXPECT_THAT(cut(), IsEmpty());
}

TEST_F(Room, AboutWindow) {
  shown<About>();

  EXPECT_THAT(cut(), IsEmpty());
}

TEST_F(Room, LanguageWindow) {
  shown<setlang>();

  EXPECT_THAT(cut(), IsEmpty());
}

TEST_F(Room, PingTest) {
  const auto form = shown<pingtester>();
  for (std::size_t row = 0; row < form->pinghi.size(); ++row) {
    for (Label* figure : {&form->pingcur[row], &form->pinglow[row], &form->pingav[row],
                          &form->pinghi[row], &form->packetloss[row]}) {
      figure->caption = "99999";
    }
  }
  form->Label9.caption = "Test Remaining = 9999";

  EXPECT_THAT(cut(), IsEmpty());
}

TEST_F(Room, PingTestInDutch) {
  speak(kDutch);
  shown<pingtester>();

  EXPECT_THAT(cut(), IsEmpty());
}

TEST_F(Room, TraceRoute) {
  const auto form = shown<trace>();
  form->Text1.text = "tracert www.wikipedia.org";

  EXPECT_THAT(cut(), IsEmpty());
}

TEST_F(Room, StabilityTest) {
  const auto form = shown<Stability>();
  form->height = 7550;
  form->Command1.visible = true;
  form->TestPoint.text = "www.wikipedia.org";
  form->Text1.text = "255.255.255.255";
  form->Label3.caption = "99999";
  form->Label4.caption = "Estimated Time Remaining 54:28";

  EXPECT_THAT(cut(), IsEmpty());
}

TEST_F(Room, OutageMonitor) {
  const auto form = shown<MonOut>();
  form->Label1.caption = "28 May 28 at 20:08:48";
  form->Label4.caption = "99999";
  form->Label6.caption = "698";
  form->Label7.caption = "Run Time: 1 year 364 days 23 hrs 59 mins 59 sec";
  form->Label8.caption = "Testing to IP: 255.255.255.255";

  EXPECT_THAT(cut(), IsEmpty());
}

TEST_F(Room, InDepth) {
  shown<indepth>();

  EXPECT_THAT(cut(), IsEmpty());
}

TEST_F(Room, InDepthAfterAHopStabilityTest) {
  const auto form = look<indepth2>();
  form->PingL.caption = "99999";
  form->PingH.caption = "99999";

  EXPECT_THAT(cut(), IsEmpty());
}

TEST_F(Room, EntryOfTheMtuOptimizer) {
  const auto form = look<mtutest>();
  form->testit.text = "a-host-with-a-long-name.of-its-own.example.org";

  EXPECT_THAT(cut(), IsEmpty());
}

TEST_F(Room, PingsBeforeTheMtuSearch) {
  const auto form = look<pingit>();
  form->pingtotal.caption = "999999";
  form->lb[0].caption = "Min Ping Result = 999999 ms";
  form->lb[1].caption = "Average Ping = 999999 ms";
  form->lb[2].caption = "Max Ping Result = 999999 ms";
  form->lb[3].caption = "Lost Packets = 50";

  for (const char* line : {"Ping Test Results are Excellent", "Ping Test Results are Below Average",
                           "Retesting due to Packet Loss"}) {
    form->lb[7].caption = line;
    EXPECT_THAT(cut(), IsEmpty()) << line;
  }
}

TEST_F(Room, MtuSearch) {
  const auto form = look<setmtu>();
  form->Label1.caption = "999999 ms";
  form->testmtu.caption = "Fine Test of MTU setting of 99999";

  for (const char* line :
       {"Fine Test of MTU setting of 99999 test Good", "Course Test of MTU 99999 test Bad",
        "Highest MTU for your system is 99999"}) {
    form->results.caption = line;
    EXPECT_THAT(cut(), IsEmpty()) << line;
  }
}

TEST_F(Room, DownloadTest) {
  const auto form = look<testdl>();
  form->lb1.caption = "Testing Internet Connection";
  form->lb2.caption = "2,147,483,647 of 2,147,483,647";
  form->Label4.caption = "Graph 0 to 100 Mbps";
  form->Label5.caption = "Downloaded 2,147,484Kb in 1439:86399.999";

  for (const char* caption : {"Cancel", "Done"}) {
    form->Command1.caption = caption;
    EXPECT_THAT(cut(), IsEmpty()) << caption;
  }
}

TEST_F(Room, TheDownloadTestKeepsItsSizeWhateverItTells) {
  const auto form = look<testdl>();
  const QSize size = window->size();
  form->lb1.caption = "Testing Internet Connection";
  form->Label4.caption = "Graph 0 to 100 Mbps";
  form->picGraph[3].visible = true;
  for (int row = 0; row < 13; ++row) form->summ.add("Total Bytes Received = 10485760");
  form->Command1.caption = "Done";
  atRest([] {});

  EXPECT_EQ(window->size(), size);
}

TEST_F(Room, SystemReport) {
  shown<frmSysInfo>();

  EXPECT_THAT(cut(), IsEmpty());
}

TEST_F(Room, Printing) {
  printers.names = {"Laser printer of the first floor", "Print to a file"};
  printers.defaultName = printers.names.front();
  shown<frmPrint>();

  EXPECT_THAT(cut(), IsEmpty());
}

TEST_F(Room, BandwidthMonitor) {
  shown<frmNetwork>();

  EXPECT_THAT(cut(), IsEmpty());
}

TEST_F(Room, ProtocolMonitorWithTheLargestFigures) {
  const auto form = shown<frmIP>();
  for (frmIP::Column* column : {&form->LeftVal, &form->RightVal}) {
    for (Label& value : *column) value.caption = "4,294,967,295";
    column->front().caption = "99,999,999 sec";
  }

  EXPECT_THAT(cut(), IsEmpty());
}

// It does not change its size with what it tells.
TEST_F(Room, ThePingBaselineKeepsItsSizeWithTheLongestTexts) {
  const auto pings = look<pingit>();
  const QSize size = window->size();
  pings->pingtotal.caption = "999999";
  pings->lb[2].caption = "Max Ping Result = 999999 ms";
  pings->lb[7].caption = "Ping Test Results are Below Average";
  atRest([] {});
  EXPECT_EQ(window->size(), size);
}

TEST_F(Room, EveryExplanationOfTheInDepthOptionsIsSeenAsAWhole) {
  const auto form = shown<indepth>();
  window->resize(1, 1);
  atRest([] {});
  const LanguageTexts& texts = program.texts;

  for (const std::string& text :
       {texts.TipNoResolve, texts.TipRouteRsvp, texts.TipDeviceRsvp, texts.TipPriorityTag,
        texts.TipForceIpv4, texts.TipForceIpv6, texts.TipPeriod, texts.TipQueries}) {
    form->info.text = text;
    EXPECT_EQ(widget<QPlainTextEdit>("info")->verticalScrollBar()->maximum(), 0) << text;
  }
}

}  // namespace
}  // namespace veltrin
