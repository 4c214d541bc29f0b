// SPDX-License-Identifier: GPL-3.0-or-later
// The performance counters of Windows.
#pragma once

#include "platform/counters.h"

namespace veltrin {

// The calls of the Performance Data Helper. Its variants for Basic are in no header of
// the system; PdhAddCounterA and PdhGetFormattedCounterValue are what they stand for.
class WindowsCounters : public Counters {
 public:
  std::int32_t PdhOpenQuery(Query& query) override;
  std::int32_t PdhEnumObjectItemsA(const std::string& machine, const std::string& object,
                                   std::string& counters, std::uint32_t& countersLength,
                                   std::string& instances, std::uint32_t& instancesLength,
                                   std::uint32_t detail, std::uint32_t flags) override;
  std::int32_t PdhVbAddCounter(Query query, const std::string& path, Counter& counter) override;
  std::int32_t PdhCollectQueryData(Query query) override;
  double PdhVbGetDoubleCounterValue(Counter counter, std::int32_t& status) override;
};

}  // namespace veltrin
