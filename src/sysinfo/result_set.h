// SPDX-License-Identifier: GPL-3.0-or-later
// What a routine got when it last asked about the machine.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/wmi.h"

namespace veltrin {

// The moniker of the service of a machine, by the machine's name.
std::string monikerOf(const std::string& computer);

// How its answers are asked for: at once, and to be walked from first to last.
inline constexpr std::int32_t kQueryFlags = kWmiReturnImmediately + kWmiForwardOnly;

// The connection and the answer of one routine, which each query makes anew. What fails of
// that leaves what the one before it left: without a new connection the old one is asked, and
// without a new answer the old one is walked once more; at the start there is none. A routine
// of the report has a set of its own, new with each call.
class ResultSet {
 public:
  // A set about the machine of that name.
  ResultSet(Wmi& wmi, std::string computer) : wmi_(wmi), computer_(std::move(computer)) {}

  // Asks the machine by its name.
  void ExecQuery(const std::string& query);

  // Asks this machine, whatever its name.
  void ExecQueryHere(const std::string& query);

  // Visits the objects of the answer from the first on, so many at most. The others are not
  // waited for.
  template <class Visit>
  void forFirst(std::size_t most, Visit&& visit) {
    for (std::size_t index = 0; index < most; ++index) {
      const WmiObject* found = object(index);
      if (found == nullptr) return;
      visit(*found);
    }
  }

  // Visits all of them. An answer that breaks off ends there.
  template <class Visit>
  void forEach(Visit&& visit) {
    forFirst(static_cast<std::size_t>(-1), std::forward<Visit>(visit));
  }

 private:
  void ask(const std::string& moniker, const std::string& query, std::optional<std::int32_t> flags);
  const WmiObject* object(std::size_t index);

  Wmi& wmi_;
  std::string computer_;
  std::unique_ptr<WmiService> service_;
  std::unique_ptr<WmiObjects> answer_;  // what of it is still to come; null behind its end

  // The service hands each object over once; these are for the next walk.
  std::vector<WmiObject> objects_;
};

}  // namespace veltrin
