// SPDX-License-Identifier: GPL-3.0-or-later
// What a program asked of the simulated platform, all parts in one order.
#pragma once

#include <string>
#include <vector>

namespace veltrin {

using Journal = std::vector<std::string>;

// A part of the simulated platform that enters what it is asked, when somebody keeps a
// journal.
class Journalled {
 public:
  Journal* journal = nullptr;

 protected:
  void note(const std::string& entry) const {
    if (journal != nullptr) journal->push_back(entry);
  }
};

}  // namespace veltrin
