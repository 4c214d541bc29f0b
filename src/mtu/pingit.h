// SPDX-License-Identifier: GPL-3.0-or-later
// The MTU optimizer's look at the line before anything is changed: fifty pings to the
// chosen site, and what they are worth.
#pragma once

#include <array>
#include <string>

#include "forms/image.h"
#include "forms/label.h"
#include "forms/line.h"
#include "forms/list_box.h"
#include "forms/text_box.h"
#include "frame/program.h"
#include "frame/window_runner.h"
#include "mtu/mtu_values.h"
#include "ping/ping_values.h"

namespace veltrin {

// What a spread of the samples, in ms, is worth, as the user reads it.
std::string ratingOf(double spread);

class pingit : public Form {
 public:
  explicit pingit(Program& program);

  TextBox pingip;                  // the site
  Label pingtotal;                 // last sample
  ListBox List1{ListOrder::Text};  // samples, in the order of their texts
  std::array<Label, 8> lb;         // minimum, average, maximum, lost packets; what is tested;
                                   // pings to come and their caption; rating
  Image Image1;
  Image Image2;
  Line Line1;

  // The fifty pings, one a second, and what follows from them. Called once, by the load.
  void RunIt();

 private:
  void Form_Load() override;

  void objDOS2_ReceiveOutputs(const std::string& chunk);
  void ownControls();
  void takeSample();
  void showAverage();
  void judgeLoss();
  void final();
  void sumUp();
  void subtractExtremes();
  void warn();

  Program& program_;
  MtuValues& mtu_;
  PingValues& pings_;
  WindowRunner objDOS2;

  int PingCount = 1;  // number of the current ping
  Loose PingMin = 1000;
  Loose PingMax = 0;
  double PingSum = 0;
  double LostCount = 0;  // samples above 800 ms; in the end, the spread of the samples
  Loose LastPing;        // digits of the last reply
  Loose SavedLost;       // lost ones behind the last ping
  Loose Retested;        // 1 when the line lost too much
  std::string AverageText;
  std::string ListLow;
  std::string ListHigh;
};

}  // namespace veltrin
