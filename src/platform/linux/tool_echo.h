// SPDX-License-Identifier: GPL-3.0-or-later
// Echoes through the console tool `ping`, which may have the right that the program lacks.
#pragma once

#include <string>

#include "platform/linux/echo_way.h"
#include "platform/linux/linux_processes.h"

namespace veltrin {

// Starts the tool once for each echo. It fills the echo with letters of its own, as many as
// the question's data has. A tool that stays longer than it should is ended.
class ToolEcho : public EchoWay {
 public:
  ToolEcho(std::string program, Wait wait);

  bool exchange(const EchoQuestion& question, ICMP_ECHO_REPLY& reply) override;

 private:
  std::string program_;  // path of the tool
  Wait wait_;
  LinuxProcesses pipes_{std::string()};
};

}  // namespace veltrin
