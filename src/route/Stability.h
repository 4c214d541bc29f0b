// SPDX-License-Identifier: GPL-3.0-or-later
// The Hop Stability Test: a hundred pings to each router of a path, and how far the
// replies of each stray from its own average.
#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "forms/command_button.h"
#include "forms/label.h"
#include "forms/list_box.h"
#include "forms/picture_box.h"
#include "forms/text_box.h"
#include "forms/timer.h"
#include "frame/program.h"
#include "frame/window_runner.h"
#include "ping/ping_values.h"
#include "route/Graphit.h"
#include "route/route_values.h"
#include "route/stability_values.h"

namespace veltrin {

class Stability : public Form {
 public:
  explicit Stability(Program& program);

  TextBox TestPoint;  // destination
  CommandButton StartIt{"Test"};
  CommandButton Command2{"Copy"};
  CommandButton Command1{"Page 1"};               // the page of graphs on show
  Label Label1;                                   // caption of the destination
  Label Label3;                                   // last reply time in ms
  Label Label4;                                   // remaining time of the run
  TextBox Text1;                                  // address under test, then the sum of its replies
  TextBox txtOutputs;                             // what the tools print, and lines of progress
  std::array<Label, Graphit::kHops> Label2;       // numbers of the hops
  std::array<PictureBox, Graphit::kHops> PGraph;  // their curves
  TextBox Text2;                                  // summary of all runs since the window was opened
  TextBox dosbox;                                 // nothing writes to it
  ListBox TestIPs;                                // addresses of the hops, in route order
  ListBox results;                                // reply times of the hop under test
  ListBox BadHops;                                // number of silent hops, if there are any
  Timer Timer1;                                   // seconds of the run

 private:
  void Form_Load() override;
  void Form_Unload() override;

  void StartIt_Click();
  void Command1_Click();
  void Command2_Click();
  void Timer1_Timer();
  void objDOS_ReceiveOutputs(const std::string& chunk);

  void ownControls();
  void HideAll();
  void showHops(std::size_t first, std::size_t end);

  void prepare();
  bool isReachable();
  void traceRoute();
  void listHops();
  void startEstimate();
  void reportHops();
  void showGraphs();
  void testHops();
  void testHop(const std::string& address);
  void pingHop();
  void judgeHop(const std::string& address);
  void sumUp();
  void countStrays();
  void finish();
  void showResults();
  void report(const std::string& text);

  std::size_t hops() const;

  Program& program_;
  PingValues& pings_;
  RouteValues& route_;
  InDepthValues& inDepth_;
  StabilityValues& run_;
  Graphit& graphs_;
  WindowRunner objDOS;
};

}  // namespace veltrin
