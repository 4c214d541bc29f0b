// SPDX-License-Identifier: GPL-3.0-or-later
// Looks up the names of many addresses at once, in threads of its own.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "console/network.h"

namespace veltrin {

// The system's resolver blocks for as long as it likes. Here it may: threads wait
// for it, and a program that ends does not wait for them. What they share with
// this object lives until the last of them is done.
class NameLookups {
 public:
  // Starts a lookup. With too many under way it waits for its turn.
  void begin(const Address& address);

  // What came of one that has ended; nothing when none has.
  std::optional<NameAnswer> take();

  // Readable while take has something to give; -1 before the first lookup.
  int file() const;

 private:
  struct Shared;
  static void work(const std::shared_ptr<Shared>& shared);

  std::shared_ptr<Shared> shared_;
};

// Whether a text has only what stands in names of hosts: letters, digits, hyphens, dots and
// underscores. Whoever holds an address also chooses its name. One with blanks, brackets or
// signs of control in it would say something else to whoever reads the tool's lines.
bool isHostName(std::string_view text);

// The name of an address as the system's resolver knows it; one that is no host name counts
// as none. Blocks.
std::optional<std::string> lookUpName(const Address& address);

}  // namespace veltrin
