// SPDX-License-Identifier: GPL-3.0-or-later
// A platform that is simulated but for what a test has real.
#pragma once

#include "frame/language.h"
#include "support/simulation.h"
#include "toolbox/toolbox.h"

namespace veltrin {

inline Platform partlyReal(Simulation& all, Processes& processes, Wmi& wmi, Drives& drives) {
  return {all.loop,       all.loop,     all.clock,    all.desktop,     all.files,
          processes,      all.profiles, all.registry, all.shell,       all.environment,
          all.sockets,    all.counters, wmi,          all.icmp,        all.downloads,
          all.interfaces, all.printers, drives,       all.processList, "Veltrin"};
}

// As the program's start leaves it, in English.
inline void prepare(Program& program) {
  program.LanguageId = kEnglish;
  chooseLanguage(program.LanguageId, program.texts);
  provideTools(program);
}

}  // namespace veltrin
