// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/simulated_downloads.h"

#include <cstring>

#include "text/statement.h"

namespace veltrin {
namespace {

// What the window holds of a read.
class SimulatedRead : public Downloads::Read {
 public:
  explicit SimulatedRead(std::shared_ptr<SimulatedDownloads::Asked> asked)
      : asked_(std::move(asked)) {}
  ~SimulatedRead() override { asked_->givenUp = true; }
  SimulatedRead(const SimulatedRead&) = delete;
  SimulatedRead& operator=(const SimulatedRead&) = delete;

 private:
  std::shared_ptr<SimulatedDownloads::Asked> asked_;
};

}  // namespace

void SimulatedDownloads::Asked::comeProgress(std::int64_t bytes, std::int64_t size) {
  if (givenUp) return;
  AsyncProperty property;
  property.PropertyName = propertyName;
  property.BytesRead = countIn32Bits(bytes);
  property.BytesMax = countIn32Bits(size);
  property.arrived = bytes;
  routines_.progress(property);
}

void SimulatedDownloads::Asked::comeBody(std::vector<std::string> pieces) {
  if (givenUp) return;
  AsyncProperty property;
  property.PropertyName = propertyName;
  for (const std::string& piece : pieces) {
    property.arrived += static_cast<std::int64_t>(piece.size());
  }
  property.BytesRead = countIn32Bits(property.arrived);
  property.BytesMax = property.BytesRead;
  property.Value = std::move(pieces);
  routines_.complete(std::move(property));
}

void SimulatedDownloads::Asked::comeFailure(std::int64_t bytes) {
  if (givenUp) return;
  AsyncProperty property;
  property.PropertyName = propertyName;
  property.BytesRead = countIn32Bits(bytes);
  property.arrived = bytes;
  routines_.complete(std::move(property));
}

std::unique_ptr<Downloads::Read> SimulatedDownloads::AsyncRead(const std::string& target,
                                                               int asyncType,
                                                               const std::string& propertyName,
                                                               int options, Routines routines) {
  note("read " + target);
  if (refuse || target.empty()) {
    throw StatementFailed("Invalid procedure call or argument", kInvalidProcedureCall);
  }
  asked.push_back(
      std::make_shared<Asked>(target, asyncType, propertyName, options, std::move(routines)));
  return std::make_unique<SimulatedRead>(asked.back());
}

std::uint32_t SimulatedInterfaces::GetIfTable(std::uint8_t* table, std::uint32_t& size,
                                              bool order) {
  orders.push_back(order);
  if (!answers.empty()) {
    const std::uint32_t answer = answers.front();
    answers.erase(answers.begin());
    if (answer != 0) return answer;
  }
  const auto count = static_cast<std::uint32_t>(rows.size());
  const auto wanted = static_cast<std::uint32_t>(sizeof count + rows.size() * sizeof(MIB_IFROW));
  if (table == nullptr || size < wanted) {
    size = wanted;
    return kErrorInsufficientBuffer;
  }
  std::memcpy(table, &count, sizeof count);
  if (count > 0) std::memcpy(table + sizeof count, rows.data(), rows.size() * sizeof(MIB_IFROW));
  return 0;
}

}  // namespace veltrin
