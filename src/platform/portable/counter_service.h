// SPDX-License-Identifier: GPL-3.0-or-later
// Performance counters for a system that has no service for them.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
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
//
// Whoever reads many counters may collect once for each of them, so that collections follow
// each other within microseconds. Those of a tenth of a second are looked at as one: a rate
// is counted from the first sample of an earlier tenth, never over less time than that.
// Counters of one path share their samples, as they are added again and again and none is
// ever taken away.
class CounterService : public Counters {
 public:
  using Sources = std::vector<std::unique_ptr<CounterSource>>;
  using Moment = std::chrono::steady_clock::time_point;
  using Clock = std::function<Moment()>;

  // `machine` is the name of this computer, the only one whose counters there are.
  CounterService(std::string machine, Sources sources,
                 Clock clock = std::chrono::steady_clock::now);

  std::int32_t PdhOpenQuery(Query& query) override;

  // kPdhNoMachine or kPdhNoObject for what is not there; a machine's name may stand with or
  // without its backslashes, and none means this one. The length of the instances is 0 for
  // an object without instances, and 2, for an empty list, when there are none now.
  std::int32_t PdhEnumObjectItemsA(const std::string& machine, const std::string& object,
                                   std::string& counters, std::uint32_t& countersLength,
                                   std::string& instances, std::uint32_t& instancesLength,
                                   std::uint32_t detail, std::uint32_t flags) override;

  // kPdhInvalidHandle for no query, kPdhBadCounterName for a text that is no path,
  // kPdhNoMachine, kPdhNoObject, kPdhNoCounter or kPdhNoInstance for what is not there.
  std::int32_t PdhVbAddCounter(Query query, const std::string& path, Counter& counter) override;

  // kPdhNoData when no counter of the query could be read. Each source is read once.
  std::int32_t PdhCollectQueryData(Query query) override;

  // Statuses besides 0: kPdhInvalidHandle; kPdhInvalidData without enough samples since
  // the counter was added; kPdhNegativeValue and kPdhNegativeDenominator when a reading has
  // gone back, as after the counters of a device start anew.
  double PdhVbGetDoubleCounterValue(Counter counter, std::int32_t& status) override;

 private:
  // What one collection has read of one path.
  struct Sample {
    std::uint64_t collection = 0;  // its number
    Moment moment;
    CounterReading reading;
  };

  struct Path {
    std::size_t place = 0;  // among the source's counters
    CounterKind kind = CounterKind::Number;
    std::optional<Sample> base;  // from which growth is counted
    std::optional<Sample> mark;  // will be the base once a tenth of a second has passed
    std::optional<Sample> last;
    bool addedAgain = false;  // since the last sample
  };

  // A handle sees the samples of its path that were taken since it was added.
  struct Added {
    std::size_t path = 0;
    std::uint64_t collections = 0;  // that there had been by then
  };

  using PathsOfInstance = std::unordered_map<std::string, std::vector<std::size_t>>;
  using PathsOfQuery = std::map<const CounterSource*, PathsOfInstance>;

  bool isQuery(Query query) const;
  const CounterSource* sourceOf(const std::string& object) const;
  std::size_t pathOf(std::vector<std::size_t>& paths, std::size_t place, CounterKind kind);
  bool collect(const CounterSource& source, const PathsOfInstance& paths);
  static void take(Path& path, const Sample& sample);

  std::string machine_;
  Sources sources_;
  Clock clock_;
  std::uint64_t collections_ = 0;
  std::vector<PathsOfQuery> queries_;  // handles of queries run from 1
  std::vector<Path> paths_;
  std::vector<Added> added_;  // handles of counters run from 1
};

}  // namespace veltrin
