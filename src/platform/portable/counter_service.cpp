#include "platform/portable/counter_service.h"

#include <algorithm>
#include <utility>

#include "platform/portable/counter_path.h"
#include "text/strings.h"

namespace veltrin {
namespace {

using Instances = std::vector<CounterInstance>;

const CounterInstance* find(const Instances& instances, const std::string& name) {
  const auto found = std::find_if(
      instances.begin(), instances.end(),
      [&](const CounterInstance& instance) { return equalIgnoringCase(instance.name, name); });
  return found == instances.end() ? nullptr : &*found;
}

// Writes names into a buffer, each ended by a NUL and all of them by one more; the length is
// the buffer's, and then that of what was written or is to be.
bool writeNames(const std::vector<std::string>& names, std::string& buffer, std::uint32_t& length) {
  std::string list;
  for (const std::string& name : names) list += name + '\0';
  list += '\0';
  const bool fits = list.size() <= length && list.size() <= buffer.size();
  length = static_cast<std::uint32_t>(list.size());
  if (fits) list.copy(buffer.data(), list.size());
  return fits;
}

constexpr double kWhole = 100;  // percent

// The growth from one reading to the next; 0 with the status where it makes no sense.
double growthOf(const CounterReading& before, const CounterReading& last, std::int32_t& status) {
  const double growth = last.amount - before.amount;
  const double basis = last.basis - before.basis;
  status = 0;
  if (basis <= 0) status = kPdhNegativeDenominator;
  if (growth < 0) status = kPdhNegativeValue;
  return status == 0 ? growth / basis : 0;
}

}  // namespace

CounterService::CounterService(std::string machine, Sources sources)
    : machine_(std::move(machine)), sources_(std::move(sources)) {}

std::int32_t CounterService::PdhOpenQuery(Query& query) {
  query = ++queries_;
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
  std::vector<std::string> names;
  for (const CounterName& each : source->counters()) names.push_back(each.name);
  const bool namesFit = writeNames(names, counters, countersLength);
  names.clear();
  for (const CounterInstance& each : source->read()) {
    if (!each.name.empty()) names.push_back(each.name);
  }
  const bool instancesFit = writeNames(names, instances, instancesLength);
  return namesFit && instancesFit ? 0 : kPdhMoreData;
}

std::int32_t CounterService::PdhVbAddCounter(Query query, const std::string& path,
                                             Counter& counter) {
  if (!isQuery(query)) return kPdhInvalidHandle;
  const auto parts = splitCounterPath(path);
  if (!parts) return kPdhBadCounterName;
  if (parts->machine && !equalIgnoringCase(*parts->machine, machine_)) return kPdhNoMachine;
  Added added;
  added.query = query;
  added.source = sourceOf(parts->object);
  if (added.source == nullptr) return kPdhNoObject;
  const std::vector<CounterName> names = added.source->counters();
  const auto name = std::find_if(names.begin(), names.end(), [&](const CounterName& each) {
    return equalIgnoringCase(each.name, parts->counter);
  });
  if (name == names.end()) return kPdhNoCounter;
  added.instance = parts->instance.value_or("");
  if (find(added.source->read(), added.instance) == nullptr) return kPdhNoInstance;
  added.place = static_cast<std::size_t>(name - names.begin());
  added.kind = name->kind;
  added_.push_back(std::move(added));
  counter = static_cast<Counter>(added_.size());
  return 0;
}

std::int32_t CounterService::PdhCollectQueryData(Query query) {
  if (!isQuery(query)) return kPdhInvalidHandle;
  std::map<const CounterSource*, Instances> read;
  bool any = false;
  for (Added& added : added_) {
    if (added.query != query) continue;
    if (!read.contains(added.source)) read[added.source] = added.source->read();
    const CounterInstance* instance = find(read[added.source], added.instance);
    added.before = std::exchange(added.last, std::nullopt);
    if (instance == nullptr) continue;
    added.last = instance->readings.at(added.place);
    any = true;
  }
  return any ? 0 : kPdhNoData;
}

double CounterService::PdhVbGetDoubleCounterValue(Counter counter, std::int32_t& status) {
  status = kPdhInvalidHandle;
  if (counter < 1 || counter > static_cast<Counter>(added_.size())) return 0;
  const Added& added = added_[static_cast<std::size_t>(counter - 1)];
  status = kPdhInvalidData;
  if (!added.last) return 0;
  if (added.kind == CounterKind::Number) {
    status = 0;
    return added.last->amount;
  }
  if (!added.before) return 0;
  const double growth = growthOf(*added.before, *added.last, status);
  return added.kind == CounterKind::Share ? std::min(kWhole * growth, kWhole) : growth;
}

const CounterSource* CounterService::sourceOf(const std::string& object) const {
  const auto found = std::find_if(sources_.begin(), sources_.end(), [&](const auto& source) {
    return equalIgnoringCase(source->object(), object);
  });
  return found == sources_.end() ? nullptr : found->get();
}

}  // namespace veltrin
