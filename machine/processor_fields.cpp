// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/processor_fields.h"

#include <array>
#include <charconv>

#include "machine/fact_text.h"

namespace veltrin {
namespace {

// Who made an ARM processor, by its implementer code (MIDR_EL1 bits 31 to 24;
// arch/arm64/include/asm/cputype.h).
struct Implementer {
  std::uint64_t code;
  std::string_view name;
};

constexpr std::array kImplementers{
    Implementer{0x41, "ARM"},       Implementer{0x42, "Broadcom"},  Implementer{0x43, "Cavium"},
    Implementer{0x46, "Fujitsu"},   Implementer{0x48, "HiSilicon"}, Implementer{0x4E, "NVIDIA"},
    Implementer{0x50, "APM"},       Implementer{0x51, "Qualcomm"},  Implementer{0x53, "Samsung"},
    Implementer{0x56, "Marvell"},   Implementer{0x61, "Apple"},     Implementer{0x69, "Intel"},
    Implementer{0x6D, "Microsoft"}, Implementer{0x70, "Phytium"},   Implementer{0xC0, "Ampere"}};

std::string hexadecimal(std::uint64_t number) {
  std::array<char, 16> digits{};
  const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), number, 16);
  return upperCase({digits.data(), static_cast<std::size_t>(written.ptr - digits.data())});
}

// Two numbers of one byte each.
std::optional<std::uint64_t> joined(std::optional<std::uint64_t> high,
                                    std::optional<std::uint64_t> low) {
  constexpr std::uint64_t kByte = 0xFF;
  return high && low && *high <= kByte && *low <= kByte ? std::optional(*high << 8 | *low)
                                                        : std::nullopt;
}

// "Intel64 Family 6 Model 37 Stepping 5 GenuineIntel"; without a text for one that is no x86
// processor.
ProcessorIdentity x86Identity(const ProcessorFields& fields, const Kernel& kernel) {
  const std::string vendor = fields.text("vendor_id");
  const auto family = fields.number("cpu family");
  const auto model = fields.number("model");
  if (vendor.empty() || !family || !model) {
    return {};
  }
  std::string text = "x86";
  if (kernel.machine == "x86_64") {
    text = vendor == "GenuineIntel" ? "Intel64" : vendor == "AuthenticAMD" ? "AMD64" : "x64";
  }
  text += " Family " + std::to_string(*family) + " Model " + std::to_string(*model);
  const auto stepping = fields.number("stepping");
  if (stepping) {
    text += " Stepping " + std::to_string(*stepping);
  }
  return {text, vendor, joined(model, stepping)};
}

std::string implementerName(std::uint64_t code) {
  for (const Implementer& known : kImplementers) {
    if (known.code == code) {
      return std::string(known.name);
    }
  }
  return "Implementer " + hexadecimal(code);
}

// "ARMv8 (64-bit) Family 8 Model D08 Revision r0p3 ARM"; without a text for one that is no ARM
// processor.
ProcessorIdentity armIdentity(const ProcessorFields& fields, const Kernel& kernel) {
  const auto implementer = fields.code("CPU implementer");
  const auto part = fields.code("CPU part");
  const std::string family = fields.text("CPU architecture");
  if (!implementer || !part || family.empty()) {
    return {};
  }
  std::string text = "ARMv" + family;
  if (kernel.machine == "aarch64") {
    text += " (64-bit)";
  }
  text += " Family " + family + " Model " + hexadecimal(*part);
  const auto variant = fields.code("CPU variant");
  const auto revision = fields.number("CPU revision");
  if (variant && revision) {
    text += " Revision r" + std::to_string(*variant) + "p" + std::to_string(*revision);
  }
  return {text, implementerName(*implementer), joined(variant, revision)};
}

}  // namespace

std::string_view ProcessorFields::raw(std::string_view name) const {
  const auto found = fields_.find(name);
  return found == fields_.end() ? std::string_view() : found->second;
}

std::string ProcessorFields::text(std::string_view name) const { return printable(raw(name)); }

std::optional<std::uint64_t> ProcessorFields::number(std::string_view name) const {
  return wholeNumber(raw(name));
}

std::optional<std::uint64_t> ProcessorFields::code(std::string_view name) const {
  const std::string_view value = raw(name);
  return value.starts_with("0x") ? wholeNumber(value.substr(2), 16) : std::nullopt;
}

std::map<std::uint64_t, ProcessorFields> processorsIn(std::string_view text) {
  std::map<std::uint64_t, ProcessorFields> processors;
  ProcessorFields shared;
  ProcessorFields* block = &shared;
  LineReader lines(text);
  for (std::string_view line; lines.next(line);) {
    const std::size_t colon = line.find(':');
    if (trimmed(line).empty()) {
      block = &shared;
    }
    if (colon == std::string_view::npos) {
      continue;
    }
    const std::string_view name = trimmed(line.substr(0, colon));
    const std::string_view value = trimmed(line.substr(colon + 1));
    const auto number = name == "processor" ? wholeNumber(value) : std::nullopt;
    if (number) {
      block = &processors[*number];
    } else {
      block->add(name, value);
    }
  }
  for (auto& [number, fields] : processors) {
    fields.addMissing(shared);
  }
  return processors;
}

ProcessorIdentity identityOf(const ProcessorFields& fields, const Kernel& kernel) {
  for (const ProcessorIdentity& identity :
       {x86Identity(fields, kernel), armIdentity(fields, kernel)}) {
    if (!identity.text.empty()) {
      return identity;
    }
  }
  for (const char* name : {"model name", "cpu model", "uarch", "cpu", "isa"}) {
    if (std::string text = fields.text(name); !text.empty()) {
      return {text, "", std::nullopt};
    }
  }
  return {kernel.machine.empty() ? "N/A" : printable(kernel.machine), "", std::nullopt};
}

}  // namespace veltrin
