// SPDX-License-Identifier: GPL-3.0-or-later
#include "monitor/frmIP.h"

#include "monitor/CounterIPV4.h"
#include "monitor/CounterIPV6.h"
#include "text/numbers.h"
#include "text/statement.h"

namespace veltrin {
namespace {

constexpr int kInterval = 1000;  // ms

// Places of the first row, in twips, and what a row adds.
constexpr int kFirstTop = 660;
constexpr int kLeftCaptions = 240;
constexpr int kLeftValues = 3780;
constexpr int kRightCaptions = 5880;
constexpr int kRightValues = 9420;
constexpr int kRowStep = 300;
constexpr int kBelowLastTop = 450;  // from the top of the last row to the window's end

struct Row {
  const char* caption;
  bool isRate;
};
constexpr std::array<Row, CounterValues::kProtocolCounters> kRows = {
    {{"Datagrams", true},
     {"Datagrams Rec", true},
     {"Datagrams Rec Header Errors", false},
     {"Datagrams Rec Address Errors", false},
     {"Datagrams Forwarded", true},
     {"Datagrams Rec Unknown Protocol", false},
     {"Datagrams Rec Discarded", false},
     {"Datagrams Rec Delivered", true},
     {"Datagrams Sent", true},
     {"Datagrams Outbound Discarded", false},
     {"Datagrams Outbound No Route", false},
     {"Fragments Rec", true},
     {"Fragments Re-assembled", true},
     {"Fragment Re-assembly Failures", false},
     {"Fragmented Datagrams", true},
     {"Fragmentation Failures", false},
     {"Fragments Created", true}}};

// The first row is there before all others.
void place(frmIP::Column& labels, int left) {
  for (Label& label : labels) label.visible = false;
  labels[0].visible = true;
  labels[0].left = left;
  labels[0].top = kFirstTop;
}

}  // namespace

frmIP::frmIP(Program& program)
    : Form(nameOf(WindowName::frmIP), program),
      program_(program),
      counters_(program.shared<CounterValues>()) {
  own("Label1", Label1);
  own("LeftCap", LeftCap);
  own("LeftVal", LeftVal);
  own("RightCap", RightCap);
  own("RightVal", RightVal);
  own("Timer1", Timer1);
  own("mnuopt", mnuopt);
  own("mnuset", mnuset);
  own("mnuhide", mnuhide);
  own("mnucloseme", mnucloseme);
  own("mnusp1", mnusp1);
  own("mnuquit", mnuquit);

  caption = "Indepth Internet Monitor";
  Label1.caption = std::string(15, ' ') + "Internet Protocal Version 4" + std::string(32, ' ') +
                   "Internet Protocal Version 6";
  place(LeftCap, kLeftCaptions);
  place(LeftVal, kLeftValues);
  place(RightCap, kRightCaptions);
  place(RightVal, kRightValues);
  mnuopt.visible = false;
  Timer1.timer = [this] { Timer1_Timer(); };
}

void frmIP::Form_Load() {
  CounterTotal = 34;
  RowCount = 17;
  RowsRight = 17;
  FormName = "NetProtocol";
  ValueColumn = 11;
  AddIPv4Counters(program_);
  AddIPv6Counters(program_);
  LayoutRows();
  Timer1_Timer();
  Timer1.interval = kInterval;
}

void frmIP::LayoutRows() {
  for (int row = 1; row < RowCount; ++row) addRow(LeftCap, LeftVal, row);
  for (int row = 1; row < RowsRight; ++row) addRow(RightCap, RightVal, row);
  for (std::size_t row = 0; row < kRows.size(); ++row) LeftCap[row].caption = kRows[row].caption;
  for (std::size_t row = 0; row < kRows.size(); ++row) RightCap[row].caption = kRows[row].caption;
}

// The window ends below its newest row.
void frmIP::addRow(Column& captions, Column& values, int row) {
  const int top = elementOf(captions, row - 1).top + kRowStep;
  for (Column* labels : {&captions, &values}) {
    Label& label = elementOf(*labels, row);
    label.left = (*labels)[0].left.get();
    label.top = top;
    label.visible = true;
  }
  height = top + kBelowLastTop;
}

void frmIP::Timer1_Timer() {
  ReadIPv4Counters(program_);
  ReadIPv6Counters(program_);
  for (std::size_t row = 0; row < kRows.size(); ++row) {
    showValue(LeftVal[row], counters_.IPv4Value[row], row);
    showValue(RightVal[row], counters_.IPv6Value[row], row);
  }
}

void frmIP::showValue(Label& label, double value, std::size_t row) {
  label.caption = FormatNumber(value) + (kRows[row].isRate ? " sec" : "");
  program_.platform.events.DoEvents();
}

}  // namespace veltrin
