// SPDX-License-Identifier: GPL-3.0-or-later
#include "monitor/protocol_counters.h"

namespace veltrin {

void addProtocolCounters(Program& program, const std::string& protocol,
                         CounterValues::ProtocolHandles& handles) {
  const std::string object = "\\\\" + program.start.HostName + "\\" + protocol + "\\";
  for (std::size_t i = 0; i < handles.size(); ++i) {
    Counters::Counter added = 0;
    program.platform.counters.PdhVbAddCounter(program.start.PdhQuery, object + kProtocolCounters[i],
                                              added);
    handles[i] = added;
    program.platform.events.DoEvents();
  }
}

void readProtocolCounters(Program& program, const CounterValues::ProtocolHandles& handles,
                          CounterValues::ProtocolValues& values) {
  program.platform.counters.PdhCollectQueryData(program.start.PdhQuery);
  for (std::size_t i = 0; i < handles.size(); ++i) {
    std::int32_t status = 0;
    values[i] = program.platform.counters.PdhVbGetDoubleCounterValue(handles[i], status);
    program.platform.events.DoEvents();
  }
}

}  // namespace veltrin
