// Performance counters for a system that has no service for them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/counters.h"
#include "platform/portable/counter_source.h"

namespace veltrin {

// Statuses of the Performance Data Helper that are given here, by their documented
// numbers.
inline constexpr std::int32_t kPdhNoMachine = static_cast<std::int32_t>(0x800007D0U);
inline constexpr std::int32_t kPdhNoInstance = static_cast<std::int32_t>(0x800007D1U);
inline constexpr std::int32_t kPdhNoData = static_cast<std::int32_t>(0x800007D5U);
inline constexpr std::int32_t kPdhNegativeDenominator = static_cast<std::int32_t>(0x800007D6U);
inline constexpr std::int32_t kPdhNegativeValue = static_cast<std::int32_t>(0x800007D8U);
inline constexpr std::int32_t kPdhNoObject = static_cast<std::int32_t>(0xC0000BB8U);
inline constexpr std::int32_t kPdhNoCounter = static_cast<std::int32_t>(0xC0000BB9U);
inline constexpr std::int32_t kPdhInvalidHandle = static_cast<std::int32_t>(0xC0000BBCU);
inline constexpr std::int32_t kPdhBadCounterName = static_cast<std::int32_t>(0xC0000BC0U);
inline constexpr std::int32_t kPdhInvalidData = static_cast<std::int32_t>(0xC0000BC6U);

// Answers the calls from the readings of its sources. Names are compared without case.
class CounterService : public Counters {
 public:
  using Sources = std::vector<std::unique_ptr<CounterSource>>;

  // `machine` is the name of this computer, the only one whose counters there are.
  CounterService(std::string machine, Sources sources);

  std::int32_t PdhOpenQuery(Query& query) override;

  // kPdhNoMachine or kPdhNoObject for what is not there; a machine's name may stand with or
  // without its backslashes, and none means this one.
  std::int32_t PdhEnumObjectItemsA(const std::string& machine, const std::string& object,
                                   std::string& counters, std::uint32_t& countersLength,
                                   std::string& instances, std::uint32_t& instancesLength,
                                   std::uint32_t detail, std::uint32_t flags) override;

  // kPdhInvalidHandle for no query, kPdhBadCounterName for a text that is no path,
  // kPdhNoMachine, kPdhNoObject, kPdhNoCounter or kPdhNoInstance for what is not there.
  std::int32_t PdhVbAddCounter(Query query, const std::string& path, Counter& counter) override;

  // kPdhNoData when no counter of the query could be read. Each source is read once.
  std::int32_t PdhCollectQueryData(Query query) override;

  // Statuses besides 0: kPdhInvalidHandle; kPdhInvalidData without enough readings;
  // kPdhNegativeValue and kPdhNegativeDenominator when a reading has gone back, as
  // after the counters of a device start anew.
  double PdhVbGetDoubleCounterValue(Counter counter, std::int32_t& status) override;

 private:
  struct Added {
    Query query = 0;
    const CounterSource* source = nullptr;
    std::string instance;
    std::size_t place = 0;  // among the source's counters
    CounterKind kind = CounterKind::Number;
    std::optional<CounterReading> before;
    std::optional<CounterReading> last;
  };

  bool isQuery(Query query) const { return query >= 1 && query <= queries_; }
  const CounterSource* sourceOf(const std::string& object) const;

  std::string machine_;
  Sources sources_;
  Query queries_ = 0;         // handles of queries run from 1
  std::vector<Added> added_;  // handles of counters run from 1
};

}  // namespace veltrin
