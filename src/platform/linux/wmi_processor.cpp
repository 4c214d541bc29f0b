// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "machine/caches.h"
#include "machine/processors.h"
#include "machine/smbios.h"
#include "platform/linux/wmi_classes.h"

namespace veltrin {
namespace {

using Number = std::optional<std::uint64_t>;

// What runs the system is a central processor (ProcessorType).
constexpr std::uint64_t kCentralProcessor = 3;

constexpr std::uint64_t kSecondLevel = 2;

Number unlessZero(Number number) { return number == 0U ? std::nullopt : number; }

// What the firmware tells of a processor (DSP0134 section 7.5).
struct SocketFacts {
  std::string socket;   // 0x04
  std::string maker;    // 0x07
  std::string version;  // 0x10: the name by which it is sold
  Number type;          // 0x05, whose codes are those of ProcessorType
  Number highest;       // 0x14, MHz
  Number present;       // 0x16, MHz
  Number secondLevel;   // kB of the cache that 0x1C refers to
};

Number kilobytesOf(const SmbiosTable& table, const Number& handle) {
  const std::vector<SmbiosStructure> structures = table.all(SmbiosType::Cache);
  const std::vector<CacheFacts> caches = cachesIn(table);
  for (std::size_t i = 0; i < caches.size(); ++i) {
    if (structures[i].handle() == handle) {
      return caches[i].kilobytes;
    }
  }
  return std::nullopt;
}

// Sockets that a central processor sits in. The kernel counts its packages in their order.
std::vector<SocketFacts> socketsIn(const SmbiosTable& table) {
  constexpr std::uint64_t kSocketIsFilled = 0x40;  // of the status, 0x18
  std::vector<SocketFacts> sockets;
  for (const SmbiosStructure& processor : table.all(SmbiosType::Processor)) {
    const Number type = processor.number(0x05);
    const bool filled = (processor.number(0x18).value_or(kSocketIsFilled) & kSocketIsFilled) != 0;
    if (type == kCentralProcessor && filled) {
      sockets.push_back({processor.text(0x04), processor.text(0x07), processor.text(0x10), type,
                         unlessZero(processor.number(0x14, 2)),
                         unlessZero(processor.number(0x16, 2)),
                         kilobytesOf(table, processor.number(0x1C, 2))});
    }
  }
  return sockets;
}

WmiValue firstText(const std::string& first, const std::string& second) {
  return orNull(first.empty() ? second : first);
}

// kB in the second level of all cores of a package.
Number secondLevelOf(const FileTree& files, const ProcessorPackage& package) {
  for (const CacheFacts& cache : cachesOf(files, package.processors)) {
    if (cache.level == kSecondLevel) {
      return cache.kilobytes;
    }
  }
  return std::nullopt;
}

// The kernel's word goes before that of the firmware, which is root's to read.
WmiObject processorObject(const FileTree& files, std::size_t number,
                          const ProcessorPackage& package, const SocketFacts& socket) {
  const Number highest = package.highest ? package.highest : socket.highest;
  WmiObject object;
  auto& properties = object.properties;
  properties["DeviceID"] = "CPU" + std::to_string(number);
  properties["Name"] = firstText(package.name, socket.version);
  properties["Manufacturer"] = firstText(package.identity.maker, socket.maker);
  properties["Description"] = orNull(package.identity.text);
  properties["Revision"] = orNull(package.identity.revision);
  properties["MaxClockSpeed"] = orNull(highest);
  properties["CurrentClockSpeed"] = orNull(package.present ? package.present : socket.present);
  properties["DataWidth"] = orNull(package.width);
  const Number secondLevel = secondLevelOf(files, package);
  properties["L2CacheSize"] = orNull(secondLevel ? secondLevel : socket.secondLevel);
  properties["SocketDesignation"] = orNull(socket.socket);
  properties["ProcessorType"] = socket.type.value_or(kCentralProcessor);
  return object;
}

// Level: 3 is the primary one, 5 the tertiary one; 1 stands for any other.
Number levelCode(Number level) {
  constexpr std::uint64_t kPrimary = 3;
  constexpr std::uint64_t kOther = 1;
  constexpr std::uint64_t kLastNamed = 3;
  if (!level) {
    return std::nullopt;
  }
  return *level >= 1 && *level <= kLastNamed ? kPrimary + *level - 1 : kOther;
}

WmiObject cacheObject(const CacheFacts& cache) {
  WmiObject object;
  auto& properties = object.properties;
  properties["Level"] = orNull(levelCode(cache.level));
  properties["Location"] = orNull(cache.location);  // the codes are the same
  properties["MaxCacheSize"] = orNull(cache.kilobytes);
  properties["Status"] = cache.enabled == true ? WmiValue("OK") : WmiValue();
  return object;
}

// An x86 processor tells the kernel the caches that are its own (CPUID, leaf 4).
bool tellsOwnCaches(const Kernel& kernel) {
  return kernel.machine == "x86_64" ||
         (kernel.machine.size() == 4 && kernel.machine[0] == 'i' && kernel.machine.ends_with("86"));
}

std::vector<CacheFacts> cachesOfKernel(const WmiSources& sources) {
  const Kernel kernel = sources.machine->kernel();
  std::vector<CacheFacts> caches;
  for (const ProcessorPackage& package : processorPackages(sources.files, kernel)) {
    for (CacheFacts cache : cachesOf(sources.files, package.processors)) {
      if (tellsOwnCaches(kernel)) {
        cache.location = 0;
      }
      caches.push_back(cache);
    }
  }
  return caches;
}

}  // namespace

WmiAnswer win32Processor(const WmiSources& sources) {
  const std::vector<SocketFacts> sockets = socketsIn(SmbiosTable(sources.files));
  WmiAnswer answer;
  for (const ProcessorPackage& package :
       processorPackages(sources.files, sources.machine->kernel())) {
    const std::size_t number = answer.size();
    answer.push_back(processorObject(sources.files, number, package,
                                     number < sockets.size() ? sockets[number] : SocketFacts()));
  }
  return answer;
}

// In the order of the firmware's table where this user may read it, else as the kernel lists them.
WmiAnswer win32CacheMemory(const WmiSources& sources) {
  std::vector<CacheFacts> caches = cachesIn(SmbiosTable(sources.files));
  if (caches.empty()) {
    caches = cachesOfKernel(sources);
  }
  WmiAnswer answer;
  for (const CacheFacts& cache : caches) {
    answer.push_back(cacheObject(cache));
  }
  return answer;
}

}  // namespace veltrin
