// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portable/counter_service.h"

#include <algorithm>
#include <utility>

#include "platform/portable/counter_path.h"
#include "text/strings.h"

namespace veltrin {
namespace {

// Collections that are not further apart belong together.
constexpr std::chrono::milliseconds kTogether{100};

constexpr double kWhole = 100;  // percent

using Instances = std::vector<CounterInstance>;

bool contains(const Instances& instances, const std::string& name) {
  return std::any_of(instances.begin(), instances.end(), [&](const CounterInstance& instance) {
    return equalIgnoringCase(instance.name, name);
  });
}

// Each ended by a NUL and all of them by one more; an empty list is two of them.
std::string listOf(const std::vector<std::string>& names) {
  std::string list;
  for (const std::string& name : names) list += name + '\0';
  if (names.empty()) list += '\0';
  return list + '\0';
}

// Writes a list into a buffer; the length is the buffer's, and then that of what was written
// or is to be.
bool write(const std::string& list, std::string& buffer, std::uint32_t& length) {
  const bool fits = list.size() <= length && list.size() <= buffer.size();
  length = static_cast<std::uint32_t>(list.size());
  if (fits) list.copy(buffer.data(), list.size());
  return fits;
}

// Growth over what it is counted by; 0 with the status where it makes no sense.
double quotient(double growth, double over, std::int32_t& status) {
  status = 0;
  if (over <= 0) status = kPdhNegativeDenominator;
  if (growth < 0) status = kPdhNegativeValue;
  return status == 0 ? growth / over : 0;
}

}  // namespace

CounterService::CounterService(std::string machine, Sources sources, Clock clock)
    : machine_(std::move(machine)), sources_(std::move(sources)), clock_(std::move(clock)) {}

std::int32_t CounterService::PdhOpenQuery(Query& query) {
  queries_.emplace_back();
  query = static_cast<Query>(queries_.size());
  return 0;
}

std::int32_t CounterService::PdhEnumObjectItemsA(
    const std::string& machine, const std::string& object, std::string& counters,
    std::uint32_t& countersLength, std::string& instances, std::uint32_t& instancesLength,
    std::uint32_t /*detail*/, std::uint32_t /*flags*/) {
  const std::string name =
      machine.substr(std::min(machine.find_first_not_of('\\'), machine.size()));
  if (!name.empty() && !equalIgnoringCase(name, machine_)) return kPdhNoMachine;
  const CounterSource* const source = sourceOf(object);
  if (source == nullptr) return kPdhNoObject;
  const Instances read = source->read();
  if (!source->hasInstances() && read.empty()) return kPdhNoObject;
  std::vector<std::string> counterNames;
  for (const CounterName& each : source->counters()) counterNames.push_back(each.name);
  std::vector<std::string> instanceNames;
  for (const CounterInstance& each : read) instanceNames.push_back(each.name);
  const bool countersFit = write(listOf(counterNames), counters, countersLength);
  const bool instancesFit = write(source->hasInstances() ? listOf(instanceNames) : std::string(),
                                  instances, instancesLength);
  return countersFit && instancesFit ? 0 : kPdhMoreData;
}

std::int32_t CounterService::PdhVbAddCounter(Query query, const std::string& path,
                                             Counter& counter) {
  if (!isQuery(query)) return kPdhInvalidHandle;
  const auto parts = splitCounterPath(path);
  if (!parts) return kPdhBadCounterName;
  if (parts->machine && !equalIgnoringCase(*parts->machine, machine_)) return kPdhNoMachine;
  const CounterSource* const source = sourceOf(parts->object);
  if (source == nullptr) return kPdhNoObject;
  const std::vector<CounterName> names = source->counters();
  const auto name = std::find_if(names.begin(), names.end(), [&](const CounterName& each) {
    return equalIgnoringCase(each.name, parts->counter);
  });
  if (name == names.end()) return kPdhNoCounter;
  const std::string instance = LCase(parts->instance.value_or(""));
  const Instances read = source->read();
  if (!source->hasInstances() && read.empty()) return kPdhNoObject;
  if (!contains(read, instance)) return kPdhNoInstance;
  auto& paths = queries_[static_cast<std::size_t>(query - 1)][source][instance];
  const auto place = static_cast<std::size_t>(name - names.begin());
  added_.push_back({pathOf(paths, place, name->kind), collections_});
  counter = static_cast<Counter>(added_.size());
  return 0;
}

// The path of an instance's counter, a new one unless it is there already.
std::size_t CounterService::pathOf(std::vector<std::size_t>& paths, std::size_t place,
                                   CounterKind kind) {
  const auto known = std::find_if(paths.begin(), paths.end(),
                                  [&](std::size_t path) { return paths_[path].place == place; });
  if (known != paths.end()) {
    paths_[*known].addedAgain = true;
    return *known;
  }
  Path path;
  path.place = place;
  path.kind = kind;
  paths_.push_back(path);
  paths.push_back(paths_.size() - 1);
  return paths.back();
}

std::int32_t CounterService::PdhCollectQueryData(Query query) {
  if (!isQuery(query)) return kPdhInvalidHandle;
  ++collections_;
  bool any = false;
  for (const auto& [source, paths] : queries_[static_cast<std::size_t>(query - 1)]) {
    any = collect(*source, paths) || any;
  }
  return any ? 0 : kPdhNoData;
}

// Samples the paths of one source. Those whose instance is not there have no samples any
// more. Whether any has one.
bool CounterService::collect(const CounterSource& source, const PathsOfInstance& paths) {
  const Moment moment = clock_();
  for (const CounterInstance& instance : source.read()) {
    const auto found = paths.find(LCase(instance.name));
    if (found == paths.end()) continue;
    for (const std::size_t each : found->second) {
      Path& path = paths_[each];
      if (path.last && path.last->collection == collections_) continue;
      take(path, {collections_, moment, instance.readings.at(path.place)});
    }
  }
  bool any = false;
  for (const auto& [name, ofInstance] : paths) {
    for (const std::size_t each : ofInstance) {
      Path& path = paths_[each];
      const bool taken = path.last && path.last->collection == collections_;
      if (!taken) path.base = path.mark = path.last = std::nullopt;
      any = any || taken;
    }
  }
  return any;
}

// A handle that was added between collections that belong together is to find a base that is
// its own as soon as the others do.
void CounterService::take(Path& path, const Sample& sample) {
  const bool apart = path.mark && sample.moment - path.mark->moment >= kTogether;
  if (apart) path.base = path.mark;
  if (!path.mark || apart || path.addedAgain) path.mark = sample;
  path.addedAgain = false;
  path.last = sample;
}

double CounterService::PdhVbGetDoubleCounterValue(Counter counter, std::int32_t& status) {
  status = kPdhInvalidHandle;
  if (counter < 1 || counter > static_cast<Counter>(added_.size())) return 0;
  const Added& added = added_[static_cast<std::size_t>(counter - 1)];
  const Path& path = paths_[added.path];
  status = kPdhInvalidData;
  if (!path.last || path.last->collection <= added.collections) return 0;
  const CounterReading& last = path.last->reading;
  if (path.kind == CounterKind::Number) {
    status = 0;
    return last.amount;
  }
  if (!path.base || path.base->collection <= added.collections) return 0;
  const double growth = last.amount - path.base->reading.amount;
  if (path.kind == CounterKind::Share) {
    const double share = quotient(growth, last.basis - path.base->reading.basis, status);
    return std::min(kWhole * share, kWhole);
  }
  const std::chrono::duration<double> seconds = path.last->moment - path.base->moment;
  return quotient(growth, seconds.count(), status);
}

bool CounterService::isQuery(Query query) const {
  return query >= 1 && query <= static_cast<Query>(queries_.size());
}

const CounterSource* CounterService::sourceOf(const std::string& object) const {
  const auto found = std::find_if(sources_.begin(), sources_.end(), [&](const auto& source) {
    return equalIgnoringCase(source->object(), object);
  });
  return found == sources_.end() ? nullptr : found->get();
}

}  // namespace veltrin
