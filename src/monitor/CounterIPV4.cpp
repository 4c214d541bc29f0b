// SPDX-License-Identifier: GPL-3.0-or-later
#include "monitor/CounterIPV4.h"

#include "monitor/protocol_counters.h"

namespace veltrin {

void AddIPv4Counters(Program& program) {
  addProtocolCounters(program, "IPv4", program.shared<CounterValues>().IPv4Counter);
}

void ReadIPv4Counters(Program& program) {
  auto& values = program.shared<CounterValues>();
  readProtocolCounters(program, values.IPv4Counter, values.IPv4Value);
}

}  // namespace veltrin
