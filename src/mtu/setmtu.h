// SPDX-License-Identifier: GPL-3.0-or-later
// The search of the MTU optimizer: the largest ping that passes without being cut, in seven
// large steps and then byte by byte.
#pragma once

#include <cstdint>
#include <string>

#include "forms/animation.h"
#include "forms/label.h"
#include "forms/text_box.h"
#include "forms/timer.h"
#include "frame/program.h"
#include "frame/window_runner.h"
#include "mtu/mtu_values.h"
#include "ping/ping_values.h"

namespace veltrin {

// Where the text of a ping tells, in any case of letters, that its packet is too long to
// pass whole; 0 where it does not. Counted from 1.
std::int64_t fragPosition(const std::string& text);

// Starts by itself and cannot be closed by its user.
class setmtu : public Form {
 public:
  explicit setmtu(Program& program);

  Animation playit;
  Timer Timer1;
  TextBox txtping;     // command of the probe
  TextBox txtOutputs;  // its text
  Label Label1;        // last round trip
  Label results;       // verdict of the last probe
  Label testmtu;       // what is being tested

  // One step of the search, with each tick.
  void runmtu();

 private:
  void Form_Load() override;

  void objDOS3_ReceiveOutputs(const std::string& chunk);
  void DisableWinClose3();
  void testCoarse();
  void testFine();
  bool probe(const Loose& size);
  void finishFine();
  void store();

  Program& program_;
  MtuValues& mtu_;
  PingValues& pings_;
  WindowRunner objDOS3;

  int MtuStep = 0;      // place in the table of coarse sizes; then bytes above one of them
  int MtuPhase = 0;     // 0 coarse, 1 fine
  Loose MtuCoarseSize;  // under test; then the last good one
  Loose MtuFineSize;    // under test
  Loose MtuFinal;       // to be stored
  Loose MtuFragPos;     // where the probe's text tells of fragments; 0 where it does not
  Loose MtuHost;        // destination of the probes: nobody names one
};

}  // namespace veltrin
