// SPDX-License-Identifier: GPL-3.0-or-later
#include "monitor/CIpHelper.h"

#include <cstring>
#include <limits>
#include <string>
#include <utility>

#include "text/statement.h"

namespace veltrin {
namespace {

[[noreturn]] void failOutOfRange() {
  throw StatementFailed("Subscript out of range", kSubscriptOutOfRange);
}

// The record's numbers are read as signed ones.
std::int32_t number(std::uint32_t field) { return static_cast<std::int32_t>(field); }

std::int32_t sum(std::int32_t left, std::int32_t right) {
  const std::int64_t exact = std::int64_t{left} + right;
  if (exact > std::numeric_limits<std::int32_t>::max() ||
      exact < std::numeric_limits<std::int32_t>::min()) {
    throw StatementFailed("Overflow", kOverflow);
  }
  return static_cast<std::int32_t>(exact);
}

// A structure from somewhere in a buffer; the buffer ends where its size was told to.
template <class Structure>
Structure copyFrom(const std::vector<std::uint8_t>& buffer, std::size_t at) {
  Structure structure;
  if (at > buffer.size() || sizeof structure > buffer.size() - at) failOutOfRange();
  std::memcpy(&structure, buffer.data() + at, sizeof structure);
  return structure;
}

// The length counts the bytes of the text.
std::string descriptionIn(const MIB_IFROW& row) {
  const std::int32_t length = number(row.dwDescrLen);
  if (length < 0) {
    throw StatementFailed("Invalid procedure call or argument", kInvalidProcedureCall);
  }
  const std::string text(row.bDescr.begin(), row.bDescr.end());
  return text.substr(0, static_cast<std::size_t>(length));
}

// As the system shows it: 0 with two digits, what is below 16 with one.
std::string hexadecimal(std::uint8_t byte) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  constexpr std::uint8_t kBase = 16;
  if (byte == 0) return "00";
  std::string text;
  if (byte >= kBase) text += kDigits[byte / kBase];
  return text + kDigits[byte % kBase];
}

std::string addressIn(const MIB_IFROW& row) {
  std::string text;
  for (std::int32_t i = 0; i < number(row.dwPhysAddrLen); ++i) {
    const auto place = static_cast<std::size_t>(i);
    if (place >= row.bPhysAddr.size()) failOutOfRange();
    text += hexadecimal(row.bPhysAddr[place]) + "-";
  }
  return text.substr(0, text.empty() ? 0 : text.size() - 1);
}

// Each byte becomes the character of its number (U+0000 to U+00FF).
std::string nameIn(const MIB_IFROW& row) {
  constexpr unsigned kAscii = 0x80;
  constexpr unsigned kLead = 0xC0;
  constexpr unsigned kContinuation = 0x3F;
  std::string text;
  for (const unsigned byte : row.wszName) {
    if (byte < kAscii) {
      text += static_cast<char>(byte);
    } else {
      text += static_cast<char>(kLead | byte >> 6U);
      text += static_cast<char>(kAscii | (byte & kContinuation));
    }
  }
  return text;
}

void fillNumbers(CInterface& interface, const MIB_IFROW& row) {
  interface.OutputQueueLength = number(row.dwOutQLen);
  interface.OutgoingErrors = number(row.dwOutErrors);
  interface.DiscardedOutgoingPackets = number(row.dwOutDiscards);
  interface.NonunicastPacketsSent = number(row.dwOutNUcastPkts);
  interface.UnicastPacketsSent = number(row.dwOutUcastPkts);
  interface.OctetsSent = number(row.dwOutOctets);
  interface.UnknownProtocolPackets = number(row.dwInUnknownProtos);
  interface.IncomingErrors = number(row.dwInErrors);
  interface.DiscardedIncomingPackets = number(row.dwInDiscards);
  interface.NonunicastPacketsReceived = number(row.dwInNUcastPkts);
  interface.MaximumTransmissionUnit = number(row.dwMtu);
  interface.UnicastPacketsReceived = number(row.dwInUcastPkts);
  interface.OctetsReceived = number(row.dwInOctets);
  interface.OperationalStatus = number(row.dwOperStatus);
  interface.AdminStatus = number(row.dwAdminStatus);
  interface.Speed = number(row.dwSpeed);
  interface.InterfaceType = number(row.dwType);
  interface.InterfaceIndex = number(row.dwIndex);
}

}  // namespace

std::shared_ptr<CInterfaces> CIpHelper::Interfaces() {
  interfaces_ = std::make_shared<CInterfaces>();
  bytesReceived_ = 0;
  bytesSent_ = 0;
  refresh();
  return interfaces_;
}

void CIpHelper::Interfaces(std::shared_ptr<CInterfaces> interfaces) {
  interfaces_ = std::move(interfaces);
}

void CIpHelper::refresh() {
  constexpr bool kAsTheyCome = false;
  std::uint32_t size = 0;
  if (table_.GetIfTable(nullptr, size, kAsTheyCome) == kErrorNotSupported) return;
  std::vector<std::uint8_t> buffer(size);
  if (table_.GetIfTable(buffer.data(), size, kAsTheyCome) != 0) return;
  const auto count = copyFrom<std::int32_t>(buffer, 0);
  std::size_t at = sizeof count;
  for (std::int32_t i = 1; i <= count; ++i, at += sizeof(MIB_IFROW)) {
    readRow(copyFrom<MIB_IFROW>(buffer, at));
  }
}

void CIpHelper::readRow(const MIB_IFROW& row) {
  const auto interface = std::make_shared<CInterface>();
  interface->InterfaceDescription = descriptionIn(row);
  interface->AdapterAddress = addressIn(row);
  fillNumbers(*interface, row);
  interface->InterfaceName = nameIn(row);
  bytesReceived_ = sum(bytesReceived_, interface->OctetsReceived);
  bytesSent_ = sum(bytesSent_, interface->OctetsSent);
  interfaces_->Add(interface);
}

}  // namespace veltrin
