// SPDX-License-Identifier: GPL-3.0-or-later
#include "monkey/random_facts.h"

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace veltrin {
namespace {

// Properties that the report asks for, those first of which much depends.
constexpr std::array kProperties = {"Caption",
                                    "Description",
                                    "Name",
                                    "Size",
                                    "VolumeName",
                                    "MediaType",
                                    "Manufacturer",
                                    "DeviceID",
                                    "InterfaceType",
                                    "Index",
                                    "Partitions",
                                    "Capacity",
                                    "BankLabel",
                                    "DeviceLocator",
                                    "Availability",
                                    "MaxCacheSize",
                                    "Level",
                                    "PowerState",
                                    "ThermalState",
                                    "Model",
                                    "SystemType",
                                    "Version",
                                    "DeviceClass",
                                    "ConnectorType",
                                    "SlotDesignation",
                                    "MaxDataWidth",
                                    "Speed",
                                    "EventCode",
                                    "Message",
                                    "Type",
                                    "SIDType",
                                    "SID",
                                    "LocalAccount",
                                    "DeviceInterface",
                                    "NumberOfButtons",
                                    "CurrentRefreshRate",
                                    "MinRefreshRate",
                                    "ProcessorType",
                                    "L2CacheSize",
                                    "MaxClockSpeed",
                                    "TotalHeads",
                                    "TotalCylinders",
                                    "BytesPerSector",
                                    "PNPDeviceID",
                                    "WakeUpType",
                                    "PowerManagementCapabilities",
                                    "SystemStartupOptions",
                                    "VccMixedVoltageSupport"};

constexpr std::array kTexts = {"",   "C:",           "D:",        "USB",  "IDE",    "RAMDisk",
                               "12", "500107862016", "NET\\0001", "True", "BANK 0", "x"};

}  // namespace

class RandomFacts::Objects : public WmiObjects {
 public:
  Objects(RandomFacts& facts, std::uint32_t count) : facts_(facts), left_(count) {}

  std::optional<WmiObject> next() override {
    if (facts_.below(60) == 0) throw StatementFailed("Broke off", kInvalidProcedureCall);
    if (left_ == 0) return std::nullopt;
    --left_;
    return facts_.object();
  }

 private:
  RandomFacts& facts_;
  std::uint32_t left_;
};

class RandomFacts::Service : public WmiService {
 public:
  explicit Service(RandomFacts& facts) : facts_(facts) {}

  std::unique_ptr<WmiObjects> ExecQuery(const std::string& /*query*/,
                                        std::optional<std::int32_t> /*flags*/) override {
    if (facts_.below(8) == 0) throw StatementFailed("No answer", kInvalidProcedureCall);
    return std::make_unique<Objects>(facts_, facts_.below(5));
  }

 private:
  RandomFacts& facts_;
};

std::unique_ptr<WmiService> RandomFacts::connect(const std::string& /*moniker*/) {
  if (below(12) == 0) throw StatementFailed("No service", kInvalidProcedureCall);
  return std::make_unique<Service>(*this);
}

WmiObject RandomFacts::object() {
  WmiObject made;
  for (const char* property : kProperties) {
    if (below(3) != 0) made.properties.emplace(property, value());
  }
  return made;
}

WmiValue RandomFacts::value() {
  switch (below(8)) {
    case 0:
      return {};
    case 1: {
      std::vector<Loose> elements;
      for (std::uint32_t count = below(4); count > 0; --count) elements.push_back(single());
      return WmiValue(std::move(elements));
    }
    default:
      return WmiValue(single());
  }
}

Loose RandomFacts::single() {
  constexpr std::uint32_t kCodes = 30;
  if (below(2) == 0) return Loose(static_cast<double>(below(kCodes)));
  return Loose(std::string(kTexts[below(kTexts.size())]));
}

}  // namespace veltrin
