#include "machine/processors.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include "machine/fact_text.h"

namespace veltrin {
namespace {

using Fields = std::map<std::string, std::string, std::less<>>;

// A number that no frequency in MHz exceeds.
constexpr double kMostMegahertz = 100'000;

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

std::string fieldOf(const Fields& fields, std::string_view name) {
  const auto found = fields.find(name);
  return found == fields.end() ? std::string() : found->second;
}

std::optional<std::uint64_t> numberOf(const Fields& fields, std::string_view name) {
  return wholeNumber(fieldOf(fields, name));
}

// A number after "0x".
std::optional<std::uint64_t> codeOf(const Fields& fields, std::string_view name) {
  const std::string text = fieldOf(fields, name);
  return text.starts_with("0x") ? wholeNumber(std::string_view(text).substr(2), 16) : std::nullopt;
}

// The fields of each processor of /proc/cpuinfo, by its number. A field that
// stands in a block without a processor, as some ARM kernels print them behind the
// last one, belongs to all that do not have it.
std::map<std::uint64_t, Fields> processorsIn(std::string_view text) {
  std::map<std::uint64_t, Fields> processors;
  Fields shared;
  Fields* block = &shared;
  LineReader lines(text);
  for (std::string_view line; lines.next(line);) {
    const std::size_t colon = line.find(':');
    if (trimmed(line).empty()) {
      block = &shared;
    }
    if (colon == std::string_view::npos) {
      continue;
    }
    const std::string name = printable(line.substr(0, colon));
    const std::string value = printable(line.substr(colon + 1));
    const auto number = name == "processor" ? wholeNumber(value) : std::nullopt;
    if (number) {
      block = &processors[*number];
    } else {
      block->emplace(name, value);
    }
  }
  for (auto& [number, fields] : processors) {
    fields.insert(shared.begin(), shared.end());
  }
  return processors;
}

std::string folderOf(std::uint64_t processor) {
  return "/sys/devices/system/cpu/cpu" + std::to_string(processor) + "/";
}

std::optional<std::uint64_t> packageOf(const FileTree& files, std::uint64_t processor,
                                       const Fields& fields) {
  if (const auto package = numberOf(fields, "physical id")) {
    return package;
  }
  return wholeNumber(files.line(folderOf(processor) + "topology/physical_package_id"));
}

// Reads a number at the start of a text.
std::optional<double> decimal(std::string_view text) {
  double number = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
  if (read.ec != std::errc{} || !(number > 0) || number > kMostMegahertz) {
    return std::nullopt;
  }
  return number;
}

// "Example CPU @ 2.67GHz" names its nominal frequency.
std::optional<double> megahertzInName(const std::string& name) {
  const std::size_t sign = name.rfind("@ ");
  if (sign == std::string::npos || !name.ends_with("GHz")) {
    return std::nullopt;
  }
  const auto gigahertz = decimal(std::string_view(name).substr(sign + 2));
  return gigahertz ? std::optional(*gigahertz * 1000) : std::nullopt;
}

std::optional<double> megahertzOf(const FileTree& files, std::uint64_t processor,
                                  const Fields& fields) {
  const std::string folder = folderOf(processor);
  const auto kilohertz = [&](const char* name) -> std::optional<double> {
    const auto number = wholeNumber(files.line(folder + "cpufreq/" + name));
    return number && *number > 0 ? std::optional(static_cast<double>(*number) / 1000)
                                 : std::nullopt;
  };
  if (const auto nominal = kilohertz("base_frequency")) {
    return nominal;
  }
  if (const auto nominal = decimal(files.line(folder + "acpi_cppc/nominal_freq"))) {
    return nominal;
  }
  if (const auto nominal = megahertzInName(fieldOf(fields, "model name"))) {
    return nominal;
  }
  if (const auto highest = kilohertz("cpuinfo_max_freq")) {
    return highest;
  }
  return decimal(fieldOf(fields, "cpu MHz"));
}

std::string hexadecimal(std::uint64_t number) {
  std::array<char, 16> digits{};
  const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), number, 16);
  return upperCase({digits.data(), static_cast<std::size_t>(written.ptr - digits.data())});
}

// "Intel64 Family 6 Model 37 Stepping 5 GenuineIntel"; empty for one that is no x86
// processor.
std::string x86Text(const Fields& fields, const Kernel& kernel) {
  const std::string vendor = fieldOf(fields, "vendor_id");
  const auto family = numberOf(fields, "cpu family");
  const auto model = numberOf(fields, "model");
  if (vendor.empty() || !family || !model) {
    return "";
  }
  std::string text = "x86";
  if (kernel.machine == "x86_64") {
    text = vendor == "GenuineIntel" ? "Intel64" : vendor == "AuthenticAMD" ? "AMD64" : "x64";
  }
  text += " Family " + std::to_string(*family) + " Model " + std::to_string(*model);
  if (const auto stepping = numberOf(fields, "stepping")) {
    text += " Stepping " + std::to_string(*stepping);
  }
  return text + " " + vendor;
}

std::string implementerName(std::uint64_t code) {
  for (const Implementer& known : kImplementers) {
    if (known.code == code) {
      return std::string(known.name);
    }
  }
  return "Implementer " + hexadecimal(code);
}

// "ARMv8 (64-bit) Family 8 Model D08 Revision r0p3 ARM"; empty for one that is no
// ARM processor.
std::string armText(const Fields& fields, const Kernel& kernel) {
  const auto implementer = codeOf(fields, "CPU implementer");
  const auto part = codeOf(fields, "CPU part");
  const std::string family = fieldOf(fields, "CPU architecture");
  if (!implementer || !part || family.empty()) {
    return "";
  }
  std::string text = "ARMv" + family;
  if (kernel.machine == "aarch64") {
    text += " (64-bit)";
  }
  text += " Family " + family + " Model " + hexadecimal(*part);
  const auto variant = codeOf(fields, "CPU variant");
  const auto revision = numberOf(fields, "CPU revision");
  if (variant && revision) {
    text += " Revision r" + std::to_string(*variant) + "p" + std::to_string(*revision);
  }
  return text + " " + implementerName(*implementer);
}

std::string identityOf(const Fields& fields, const Kernel& kernel) {
  for (const std::string& text : {x86Text(fields, kernel), armText(fields, kernel)}) {
    if (!text.empty()) {
      return text;
    }
  }
  for (const char* name : {"model name", "cpu model", "uarch", "cpu", "isa"}) {
    if (std::string text = fieldOf(fields, name); !text.empty()) {
      return text;
    }
  }
  return kernel.machine.empty() ? "N/A" : printable(kernel.machine);
}

}  // namespace

std::vector<std::string> processorFacts(const FileTree& files, const Kernel& kernel) {
  // The first processor of each package; those without one come last.
  std::map<std::pair<bool, std::uint64_t>, std::string> packages;
  for (const auto& [number, fields] : processorsIn(files.text("/proc/cpuinfo"))) {
    const auto package = packageOf(files, number, fields);
    const std::pair place(!package, package.value_or(number));
    if (packages.contains(place)) {
      continue;
    }
    std::string text = identityOf(fields, kernel);
    if (const auto megahertz = megahertzOf(files, number, fields)) {
      text += " ~" + std::to_string(std::lround(*megahertz)) + " Mhz";
    }
    packages.emplace(place, std::move(text));
  }
  std::vector<std::string> texts;
  texts.reserve(packages.size());
  for (const auto& [place, text] : packages) {
    texts.push_back(text);
  }
  return texts;
}

}  // namespace veltrin
