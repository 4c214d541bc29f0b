// SPDX-License-Identifier: GPL-3.0-or-later
// The first window: prepares what the others need, asks for a newer version, and
// opens the main menu, which takes this window away.
#pragma once

#include <string>

#include "forms/animation.h"
#include "forms/label.h"
#include "frame/program.h"
#include "frame/winsock.h"

namespace veltrin {

class starter : public Form {
 public:
  explicit starter(Program& program);

  Label Label1;  // product, then the newest version
  Label Label2;  // version line
  Animation playit;
  Winsock Winsock1;  // to the update endpoint

  // Asks the update endpoint: on its first port, and after a while of silence on its
  // second one. Answers come as arrivals.
  void chk4up();

  // Acts on an answer: four characters of version ("1.03"), then the address of this
  // machine as the endpoint sees it. The program ends when the user wants the update.
  void chkupdate(std::string answer);

 private:
  void Form_Load() override;

  void Winsock1_DataArrival();
  void Winsock1_ConnectionRequest(std::intptr_t requestID);
  void Winsock1_Close();

  void takeOverOldSettings();
  void copyOldSetting(const char* oldName, const char* section, const char* key);
  void readSystemName();
  void openCounters();
  void startUpdate();

  Program& program_;
};

}  // namespace veltrin
