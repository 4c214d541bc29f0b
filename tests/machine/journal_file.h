// SPDX-License-Identifier: GPL-3.0-or-later
// A journal that a test makes up, written by the system's own tool.
#pragma once

#include <string>
#include <vector>

#include "temporary_tree.h"

namespace veltrin {

// Whether the tool that writes journals is installed.
bool canMakeJournals();

// Writes a journal of a machine into its folder below the root. Each entry is one in the
// journal's export form, without its moment: "MESSAGE=text\nPRIORITY=6\n". The entries are a
// second apart, the first at 2026-02-02 10:21:12.123456 UTC. False when the tool fails.
bool makeJournal(const TemporaryTree& tree, const std::vector<std::string>& entries,
                 const std::string& file = "system.journal");

// A field of any bytes in the export form.
std::string exportField(const std::string& name, const std::string& value);

}  // namespace veltrin
