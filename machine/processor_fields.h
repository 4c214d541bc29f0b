// SPDX-License-Identifier: GPL-3.0-or-later
// What the kernel's list of processors tells of each.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "machine/machine.h"

namespace veltrin {

// The fields of one processor, by their names. They see the text that they were read from.
class ProcessorFields {
 public:
  // Nothing is replaced by a field that comes twice.
  void add(std::string_view name, std::string_view value) { fields_.emplace(name, value); }
  void addMissing(const ProcessorFields& others) {
    fields_.insert(others.fields_.begin(), others.fields_.end());
  }

  // As it stands there without the blanks around it; empty when there is none.
  std::string_view raw(std::string_view name) const;

  // In printable form.
  std::string text(std::string_view name) const;

  std::optional<std::uint64_t> number(std::string_view name) const;

  // A number after "0x".
  std::optional<std::uint64_t> code(std::string_view name) const;

 private:
  std::map<std::string_view, std::string_view> fields_;
};

// The fields of each processor of /proc/cpuinfo, by its number. A field that stands in a block
// without a processor, as some ARM kernels print them behind the last one, belongs to all that do
// not have it.
std::map<std::uint64_t, ProcessorFields> processorsIn(std::string_view text);

// What names a processor by its maker's numbers.
struct ProcessorIdentity {
  std::string text;   // "Intel64 Family 6 Model 37 Stepping 5"
  std::string maker;  // "GenuineIntel", "ARM"; empty where it is not told

  // Model and stepping of an x86 processor, variant and revision of an ARM one: the first in the
  // high byte, the second in the low one.
  std::optional<std::uint64_t> revision;
};

ProcessorIdentity identityOf(const ProcessorFields& fields, const Kernel& kernel);

}  // namespace veltrin
