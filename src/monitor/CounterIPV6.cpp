// SPDX-License-Identifier: GPL-3.0-or-later
#include "monitor/CounterIPV6.h"

#include "monitor/protocol_counters.h"

namespace veltrin {

void AddIPv6Counters(Program& program) {
  addProtocolCounters(program, "IPv6", program.shared<CounterValues>().IPv6Counter);
}

void ReadIPv6Counters(Program& program) {
  auto& values = program.shared<CounterValues>();
  readProtocolCounters(program, values.IPv6Counter, values.IPv6Value);
}

}  // namespace veltrin
