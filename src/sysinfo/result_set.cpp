// SPDX-License-Identifier: GPL-3.0-or-later
#include "sysinfo/result_set.h"

#include "text/statement.h"

namespace veltrin {
namespace {

const char* const kNamespace = "\\root\\cimv2";

}  // namespace

std::string monikerOf(const std::string& computer) {
  return "winmgmts:\\\\" + computer + kNamespace;
}

void ResultSet::ExecQuery(const std::string& query) {
  ask(monikerOf(computer_), query, kQueryFlags);
}

void ResultSet::ExecQueryHere(const std::string& query) {
  ask(std::string("winmgmts: ") + "{impersonationLevel=impersonate}!\\\\" + "." + kNamespace, query,
      std::nullopt);
}

void ResultSet::ask(const std::string& moniker, const std::string& query,
                    std::optional<std::int32_t> flags) {
  skip([&] { service_ = wmi_.connect(moniker); });
  if (!service_) return;
  skip([&] {
    answer_ = service_->ExecQuery(query, flags);
    objects_.clear();
  });
}

// Null behind the last.
const WmiObject* ResultSet::object(std::size_t index) {
  if (index < objects_.size()) return &objects_[index];
  if (!answer_) return nullptr;
  std::optional<WmiObject> next;
  skip([&] { next = answer_->next(); });
  if (!next) {
    answer_.reset();
    return nullptr;
  }
  objects_.push_back(std::move(*next));
  return &objects_.back();
}

}  // namespace veltrin
