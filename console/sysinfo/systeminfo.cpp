// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/sysinfo/systeminfo.h"

#include <string_view>

#include "console/options.h"
#include "console/sysinfo/report.h"
#include "console/sysinfo/system_facts.h"

namespace veltrin {
namespace {

constexpr std::string_view kUsage =
    "\r\n"
    "Usage: systeminfo [-?]\r\n"
    "\r\n"
    "Shows what this machine is made of and how its system is set up. What\r\n"
    "cannot be known, or not by this user, shows as N/A.\r\n"
    "\r\n"
    "Options:\r\n"
    "    -?    Show these lines.\r\n"
    "\r\n"
    "What some of the lines stand for on Linux:\r\n"
    "    Product ID      A number of this installation. It is made of the machine\r\n"
    "                    ID by a keyed hash and does not tell that ID.\r\n"
    "    Original Install Date\r\n"
    "                    When the root file system was made. Where that is not\r\n"
    "                    kept: when the installer wrote its logs.\r\n"
    "    Time Zone       With the distance from UTC that holds now.\r\n"
    "    Virtual Memory  Main memory and swap space together.\r\n"
    "    Hotfix(s)       Installed packages whose version has replaced an older\r\n"
    "                    or other one, as far back as the text logs of dpkg or\r\n"
    "                    pacman go. N/A where there is no such log.\r\n"
    "    DHCP            A line is left out when its fact is not known.\r\n";

// What a command line asks for.
struct Command {
  bool usage = false;
  std::string problem;  // the first mistake; empty when there is none
};

Command readCommand(const std::vector<std::string>& arguments) {
  OptionReader reader(arguments);
  while (reader.next()) {
    if (!reader.isOption()) {
      reader.badParameter();
    } else if (reader.letter() == '?') {
      return {true, ""};
    } else {
      reader.badOption();
    }
  }
  return {reader.wantsUsage(), reader.problem()};
}

}  // namespace

int SystemInfo::run(const std::vector<std::string>& arguments) {
  const Command command = readCommand(arguments);
  if (!command.usage && command.problem.empty()) {
    return tell();
  }
  const std::string problem = command.problem.empty() ? "" : command.problem + "\r\n";
  const bool told =
      (problem.empty() || output_.write(problem)) && (!command.usage || output_.write(kUsage));
  return told && problem.empty() ? kSystemInfoTold : kSystemInfoFailed;
}

int SystemInfo::tell() {
  for (const std::string& line : reportLines(gatherFacts(files_, machine_))) {
    if (!output_.write(line + "\r\n")) {
      return kSystemInfoFailed;
    }
  }
  return kSystemInfoTold;
}

}  // namespace veltrin
