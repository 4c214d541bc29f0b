// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/autostart.h"
#include "machine/enabled_units.h"
#include "platform/linux/wmi_classes.h"

namespace veltrin {
namespace {

// A desktop's file of a program: its keys Name, Comment and Exec.
WmiObject commandOf(const AutostartFacts& program) {
  WmiObject command;
  command.properties["Caption"] = program.caption;
  command.properties["Command"] = program.command;
  command.properties["Description"] = orNull(program.comment);
  command.properties["Location"] = program.folder;
  command.properties["Name"] = program.file;
  return command;
}

// A unit may run many commands or none.
WmiObject commandOf(const UnitFacts& unit) {
  WmiObject command;
  command.properties["Caption"] = unit.name;
  command.properties["Command"] = WmiValue();
  command.properties["Description"] = orNull(unit.description);
  command.properties["Location"] = unit.folder;
  command.properties["Name"] = unit.name;
  return command;
}

}  // namespace

WmiAnswer win32StartupCommand(const WmiSources& sources) {
  WmiAnswer answer;
  for (const AutostartFacts& program : autostartPrograms(sources.files, *sources.machine)) {
    answer.push_back(commandOf(program));
  }
  for (const UnitFacts& unit : enabledUnits(sources.files, *sources.machine)) {
    answer.push_back(commandOf(unit));
  }
  return answer;
}

}  // namespace veltrin
