// SPDX-License-Identifier: GPL-3.0-or-later
// The entry of the MTU optimizer: whether it is needed at all, and which site it asks.
#pragma once

#include "forms/command_button.h"
#include "forms/label.h"
#include "forms/text_box.h"
#include "frame/program.h"
#include "mtu/mtu_values.h"

namespace veltrin {

class mtutest : public Form {
 public:
  explicit mtutest(Program& program);

  Label Label2;
  TextBox testit;  // the site, a host's name or address
  CommandButton Command3{"OK"};

 private:
  void Form_Load() override;

  void Command3_Click();
  bool isWanted();

  Program& program_;
  MtuValues& mtu_;
};

}  // namespace veltrin
