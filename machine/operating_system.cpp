// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/operating_system.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "machine/fact_text.h"
#include "machine/moments.h"

namespace veltrin {
namespace {

// Kinds of computers by the kernel's word for them.
struct ComputerType {
  std::string_view machine;
  std::string_view name;
};

constexpr std::array kComputerTypes{
    ComputerType{"x86_64", "x64-based PC"},   ComputerType{"i386", "X86-based PC"},
    ComputerType{"i486", "X86-based PC"},     ComputerType{"i586", "X86-based PC"},
    ComputerType{"i686", "X86-based PC"},     ComputerType{"aarch64", "ARM64-based PC"},
    ComputerType{"armv8l", "ARM64-based PC"}, ComputerType{"armv7l", "ARM-based PC"},
    ComputerType{"armv6l", "ARM-based PC"}};

// The part of a name "cpe:/o:vendor:product:version" that names the vendor, or of
// "cpe:2.3:o:vendor:..." (NISTIR 7695 section 6).
std::string vendorInCpe(std::string_view name) {
  for (const std::string_view start : {"cpe:/o:", "cpe:2.3:o:"}) {
    if (name.starts_with(start)) {
      name.remove_prefix(start.size());
      return std::string(name.substr(0, name.find(':')));
    }
  }
  return "";
}

// The vendor of the packages of this system (deb-origin(5)).
std::string vendorOfPackages(const FileTree& files) {
  const std::string text = files.text("/etc/dpkg/origins/default");
  LineReader lines(text);
  for (std::string_view line; lines.next(line);) {
    constexpr std::string_view kField = "Vendor:";
    if (line.starts_with(kField)) {
      return std::string(line.substr(kField.size()));
    }
  }
  return "";
}

std::string manufacturerOf(const FileTree& files, const std::string& release) {
  for (const std::string& name : {shellValue(release, "VENDOR_NAME"), vendorOfPackages(files),
                                  vendorInCpe(shellValue(release, "CPE_NAME"))}) {
    if (std::string vendor = printable(name); !vendor.empty()) {
      return vendor;
    }
  }
  return "";
}

// The kernel's version begins with the number of its build, and the words behind it
// say what it was built for (init/Makefile).
std::string buildTypeOf(const std::string& version) {
  const auto words = wordsOf(version);
  if (words.empty() || !words[0].starts_with("#")) {
    return "";
  }
  const bool several = std::find(words.begin(), words.end(), "SMP") != words.end();
  return several ? "Multiprocessor" : "Uniprocessor";
}

// The oldest file that the Debian or Ubuntu installer left when it had done.
std::optional<std::int64_t> writtenByInstaller(const FileTree& files) {
  constexpr const char* kFolder = "/var/log/installer/";
  std::optional<std::int64_t> oldest;
  for (const std::string& name : files.names(kFolder)) {
    const auto written = files.written(kFolder + name);
    if (written && (!oldest || *written < *oldest)) {
      oldest = written;
    }
  }
  return oldest;
}

// pacman's log goes back to the installation, which pacman itself has carried out.
std::optional<std::int64_t> startOfPacman(const FileTree& files) {
  constexpr std::size_t kFirstLine = 256;
  return momentInLog(files.read("/var/log/pacman.log", kFirstLine).value_or(""));
}

std::string installedText(const FileTree& files, const Machine& machine) {
  // The root file system is made by the installation. Some image builders stamp it
  // with no time or one of the future, which tells nothing.
  for (const auto& moment : {machine.born("/"), writtenByInstaller(files), startOfPacman(files)}) {
    if (moment && *moment > 0 && *moment <= machine.now()) {
      return momentText(machine, *moment);
    }
  }
  return "";
}

std::string bootedText(const FileTree& files, const Machine& machine) {
  const std::string text = files.text("/proc/stat");
  LineReader lines(text);
  for (std::string_view line; lines.next(line);) {
    const auto words = wordsOf(line);
    if (words.size() != 2 || words[0] != "btime") {
      continue;
    }
    const auto seconds = wholeNumber(words[1]);
    const auto now = static_cast<std::uint64_t>(machine.now());
    return seconds && *seconds > 0 && *seconds <= now
               ? momentText(machine, static_cast<std::int64_t>(*seconds))
               : "";
  }
  return "";
}

}  // namespace

std::string computerType(const std::string& machine) {
  for (const ComputerType& type : kComputerTypes) {
    if (type.machine == machine) {
      return std::string(type.name);
    }
  }
  return machine.empty() ? "" : printable(machine) + "-based computer";
}

OperatingSystemFacts operatingSystemFacts(const FileTree& files, const Machine& machine) {
  const Kernel kernel = machine.kernel();
  const std::string release =
      files.read("/etc/os-release").value_or(files.text("/usr/lib/os-release"));
  OperatingSystemFacts facts;
  facts.name = printable(shellValue(release, "PRETTY_NAME"));
  if (facts.name.empty()) {
    // What os-release(5) gives for a name that is not set.
    facts.name = "Linux";
  }
  facts.version = printable(kernel.release + " " + kernel.version);
  facts.manufacturer = manufacturerOf(files, release);
  facts.configuration = printable(shellValue(release, "VARIANT"));
  facts.buildType = buildTypeOf(kernel.version);
  facts.installed = installedText(files, machine);
  facts.booted = bootedText(files, machine);
  facts.computerType = computerType(kernel.machine);
  return facts;
}

}  // namespace veltrin
