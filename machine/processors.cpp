// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/processors.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <map>
#include <string_view>
#include <system_error>
#include <utility>

#include "machine/fact_text.h"

namespace veltrin {
namespace {

// A number that no frequency in MHz exceeds.
constexpr double kMostMegahertz = 100'000;

using Processors = std::map<std::uint64_t, ProcessorFields>;
using Processor = Processors::value_type;

std::string folderOf(const Processor& processor) {
  return "/sys/devices/system/cpu/cpu" + std::to_string(processor.first) + "/";
}

std::optional<std::uint64_t> packageOf(const FileTree& files, const Processor& processor) {
  if (const auto package = processor.second.number("physical id")) {
    return package;
  }
  return wholeNumber(files.line(folderOf(processor) + "topology/physical_package_id"));
}

// The processors of each package; those without one come last.
std::vector<std::vector<const Processor*>> packagesOf(const FileTree& files,
                                                      const Processors& processors) {
  std::map<std::pair<bool, std::uint64_t>, std::vector<const Processor*>> packages;
  for (const Processor& processor : processors) {
    const auto package = packageOf(files, processor);
    packages[{!package, package.value_or(processor.first)}].push_back(&processor);
  }
  std::vector<std::vector<const Processor*>> ordered;
  ordered.reserve(packages.size());
  for (auto& [place, members] : packages) {
    ordered.push_back(std::move(members));
  }
  return ordered;
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
std::optional<double> megahertzInName(std::string_view name) {
  const std::size_t sign = name.rfind("@ ");
  if (sign == std::string_view::npos || !name.ends_with("GHz")) {
    return std::nullopt;
  }
  const auto gigahertz = decimal(name.substr(sign + 2));
  return gigahertz ? std::optional(*gigahertz * 1000) : std::nullopt;
}

// A frequency that the governor tells in kHz (Documentation/admin-guide/pm/cpufreq.rst).
std::optional<double> governed(const FileTree& files, const Processor& processor,
                               const char* name) {
  const auto number = wholeNumber(files.line(folderOf(processor) + "cpufreq/" + name));
  const double megahertz = number ? static_cast<double>(*number) / 1000 : 0;
  return megahertz > 0 && megahertz <= kMostMegahertz ? std::optional(megahertz) : std::nullopt;
}

std::optional<double> nominalOf(const FileTree& files, const Processor& processor) {
  if (const auto nominal = governed(files, processor, "base_frequency")) {
    return nominal;
  }
  if (const auto nominal = decimal(files.line(folderOf(processor) + "acpi_cppc/nominal_freq"))) {
    return nominal;
  }
  return megahertzInName(processor.second.raw("model name"));
}

std::optional<double> presentOf(const FileTree& files, const Processor& processor) {
  if (const auto listed = decimal(processor.second.raw("cpu MHz"))) {
    return listed;
  }
  return governed(files, processor, "scaling_cur_freq");
}

// The nominal frequency or what stands for it.
std::optional<double> megahertzOf(const FileTree& files, const Processor& processor) {
  if (const auto nominal = nominalOf(files, processor)) {
    return nominal;
  }
  if (const auto highest = governed(files, processor, "cpuinfo_max_freq")) {
    return highest;
  }
  return decimal(processor.second.raw("cpu MHz"));
}

std::string nameOf(const FileTree& files, const Processor& processor) {
  for (const char* field : {"model name", "cpu model", "uarch", "cpu"}) {
    if (std::string name = processor.second.text(field); !name.empty()) {
      return name;
    }
  }
  // A device tree names its processors by what they are compatible with: "arm,cortex-a72".
  const std::string compatible = files.text(folderOf(processor) + "of_node/compatible");
  return printable(std::string_view(compatible).substr(0, compatible.find('\0')));
}

// "lm" stands for the long mode of x86 processors.
bool hasLongMode(std::string_view flags) {
  const auto words = wordsOf(flags);
  return std::find(words.begin(), words.end(), "lm") != words.end();
}

std::optional<std::uint64_t> widthOf(const ProcessorFields& fields, const Kernel& kernel) {
  constexpr std::uint64_t kWide = 64;
  constexpr std::uint64_t kNarrow = 32;
  const std::string_view machine = kernel.machine;
  if (machine.ends_with("64") || machine.ends_with("64le") || machine == "s390x" ||
      machine == "armv8l") {
    return kWide;
  }
  if (const std::string_view flags = fields.raw("flags"); !flags.empty()) {
    return hasLongMode(flags) ? kWide : kNarrow;
  }
  // The eighth architecture of ARM is a wide one, but for a few small processors.
  constexpr std::uint64_t kFirstWideArm = 8;
  const auto arm = fields.number("CPU architecture");
  return arm && *arm < kFirstWideArm ? std::optional(kNarrow) : std::nullopt;
}

// The highest of the frequencies that the processors of a package tell, in whole MHz.
template <class Read>
std::optional<std::uint64_t> highestOf(const std::vector<const Processor*>& package,
                                       const Read& read) {
  std::optional<double> highest;
  for (const Processor* processor : package) {
    if (const auto megahertz = read(*processor)) {
      highest = std::max(highest.value_or(0), *megahertz);
    }
  }
  return highest ? std::optional(static_cast<std::uint64_t>(std::llround(*highest))) : std::nullopt;
}

ProcessorPackage factsOf(const FileTree& files, const Kernel& kernel,
                         const std::vector<const Processor*>& members) {
  const Processor& first = *members.front();
  ProcessorPackage package;
  package.name = nameOf(files, first);
  package.identity = identityOf(first.second, kernel);
  package.width = widthOf(first.second, kernel);
  for (const Processor* member : members) {
    package.processors.push_back(member->first);
  }
  package.highest = highestOf(members, [&](const Processor& processor) {
    return governed(files, processor, "cpuinfo_max_freq");
  });
  if (!package.highest) {
    package.highest =
        highestOf(members, [&](const Processor& processor) { return nominalOf(files, processor); });
  }
  package.present =
      highestOf(members, [&](const Processor& processor) { return presentOf(files, processor); });
  return package;
}

}  // namespace

std::vector<ProcessorPackage> processorPackages(const FileTree& files, const Kernel& kernel) {
  const std::string text = files.text("/proc/cpuinfo");
  const Processors processors = processorsIn(text);
  std::vector<ProcessorPackage> packages;
  for (const auto& members : packagesOf(files, processors)) {
    packages.push_back(factsOf(files, kernel, members));
  }
  return packages;
}

std::vector<std::string> processorFacts(const FileTree& files, const Kernel& kernel) {
  const std::string text = files.text("/proc/cpuinfo");
  const Processors processors = processorsIn(text);
  std::vector<std::string> texts;
  for (const auto& members : packagesOf(files, processors)) {
    const Processor& first = *members.front();
    const ProcessorIdentity identity = identityOf(first.second, kernel);
    std::string fact = identity.text;
    if (!identity.maker.empty()) {
      fact += " " + identity.maker;
    }
    if (const auto megahertz = megahertzOf(files, first)) {
      fact += " ~" + std::to_string(std::lround(*megahertz)) + " Mhz";
    }
    texts.push_back(fact);
  }
  return texts;
}

}  // namespace veltrin
