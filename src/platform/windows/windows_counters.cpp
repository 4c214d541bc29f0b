// SPDX-License-Identifier: GPL-3.0-or-later
#include <pdh.h>
#include <pdhmsg.h>
#include <windows.h>
// The macros would rename the operations of these names.
#undef PdhOpenQuery
#undef PdhEnumObjectItems

#include "platform/windows/code_page.h"
#include "platform/windows/windows_counters.h"

namespace veltrin {
namespace {

// What the query is opened with for the caller's own use; nothing looks at it.
constexpr DWORD_PTR kUserData = 1;

HANDLE native(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

}  // namespace

std::int32_t WindowsCounters::PdhOpenQuery(Query& query) {
  PDH_HQUERY opened = nullptr;
  const PDH_STATUS status = PdhOpenQueryA(nullptr, kUserData, &opened);
  if (status == ERROR_SUCCESS) query = reinterpret_cast<Query>(opened);
  return status;
}

// A machine goes by its name with two backslashes in front.
std::int32_t WindowsCounters::PdhEnumObjectItemsA(const std::string& machine,
                                                  const std::string& object, std::string& counters,
                                                  std::uint32_t& countersLength,
                                                  std::string& instances,
                                                  std::uint32_t& instancesLength,
                                                  std::uint32_t detail, std::uint32_t flags) {
  DWORD counterCount = countersLength;
  DWORD instanceCount = instancesLength;
  const std::string machineName = toAnsi(machine);
  const PDH_STATUS status = ::PdhEnumObjectItemsA(
      nullptr, machineName.empty() ? nullptr : machineName.c_str(), toAnsi(object).c_str(),
      counters.data(), &counterCount, instances.data(), &instanceCount, detail, flags);
  countersLength = counterCount;
  instancesLength = instanceCount;
  return status;
}

std::int32_t WindowsCounters::PdhVbAddCounter(Query query, const std::string& path,
                                              Counter& counter) {
  PDH_HCOUNTER added = nullptr;
  const PDH_STATUS status = PdhAddCounterA(native(query), toAnsi(path).c_str(), 0, &added);
  if (status == ERROR_SUCCESS) counter = reinterpret_cast<Counter>(added);
  return status;
}

std::int32_t WindowsCounters::PdhCollectQueryData(Query query) {
  return ::PdhCollectQueryData(native(query));
}

// Data that is new since the last look is as good as data that is not.
double WindowsCounters::PdhVbGetDoubleCounterValue(Counter counter, std::int32_t& status) {
  PDH_FMT_COUNTERVALUE value{};
  status = PdhGetFormattedCounterValue(native(counter), PDH_FMT_DOUBLE, nullptr, &value);
  if (status != ERROR_SUCCESS) return 0;
  if (value.CStatus != PDH_CSTATUS_NEW_DATA) status = static_cast<std::int32_t>(value.CStatus);
  return status == ERROR_SUCCESS ? value.doubleValue : 0;
}

}  // namespace veltrin
