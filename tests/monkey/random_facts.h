// SPDX-License-Identifier: GPL-3.0-or-later
// A machine that tells something else each time: answers of any length to any query, with
// properties that are missing, null, arrays, or of the wrong kind.
#pragma once

#include <random>

#include "platform/wmi.h"

namespace veltrin {

class RandomFacts : public Wmi {
 public:
  explicit RandomFacts(std::mt19937& random) : random_(random) {}

  std::unique_ptr<WmiService> connect(const std::string& moniker) override;

 private:
  class Service;
  class Objects;

  WmiObject object();
  WmiValue value();
  Loose single();
  std::uint32_t below(std::uint32_t limit) { return random_() % limit; }

  std::mt19937& random_;
};

}  // namespace veltrin
