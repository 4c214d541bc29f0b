// SPDX-License-Identifier: GPL-3.0-or-later
#include "lab/names.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

#include "text/strings.h"

namespace veltrin::lab {
namespace {

// Layout and codes of a message: RFC 1035 sections 4.1.1, 3.2.2 and 3.2.4, and
// RFC 3596 section 2.1.
constexpr std::size_t kHeader = 12;
constexpr std::size_t kLongestName = 255;
constexpr std::size_t kLongestLabel = 63;
constexpr std::uint8_t kIsAnswer = 0x80;
constexpr std::uint8_t kOpcodeMask = 0x78;
constexpr std::uint8_t kAuthoritative = 0x04;
constexpr std::uint8_t kRecursionDesired = 0x01;
constexpr std::uint8_t kRecursionAvailable = 0x80;
constexpr std::uint16_t kTypeA = 1;
constexpr std::uint16_t kTypePtr = 12;
constexpr std::uint16_t kTypeAaaa = 28;
constexpr std::uint16_t kTypeAny = 255;
constexpr std::uint16_t kClassInternet = 1;
constexpr std::uint16_t kClassAny = 255;
constexpr std::uint16_t kPointerToQuestion = 0xC000 | kHeader;

// Seconds for which a resolver may keep a record.
constexpr std::uint16_t kKeepSeconds = 60;

// Last labels of names that are none of the Internet outside.
constexpr std::array<std::string_view, 6> kSetAside = {"arpa",  "example",   "invalid",
                                                       "local", "localhost", "test"};

enum Outcome : std::uint8_t {
  kNoError = 0,
  kFormatError = 1,
  kNameError = 3,
  kNotImplemented = 4,
  kRefused = 5
};

std::uint16_t wordAt(Bytes bytes, std::size_t at) {
  return static_cast<std::uint16_t>(bytes[at] << 8 | bytes[at + 1]);
}

void addWord(Packet& message, std::size_t value) {
  message.push_back(static_cast<std::uint8_t>(value >> 8));
  message.push_back(static_cast<std::uint8_t>(value));
}

// Adds one record about the name in question and counts it in the header.
void addRecord(Packet& reply, std::uint16_t type, Bytes data) {
  addWord(reply, kPointerToQuestion);
  addWord(reply, type);
  addWord(reply, kClassInternet);
  addWord(reply, 0);
  addWord(reply, kKeepSeconds);
  addWord(reply, data.size());
  reply.insert(reply.end(), data.begin(), data.end());
  ++reply[7];
}

Packet encodeName(std::string_view name) {
  Packet encoded;
  while (!name.empty()) {
    const std::string_view label = name.substr(0, name.find('.'));
    encoded.push_back(static_cast<std::uint8_t>(label.size()));
    encoded.insert(encoded.end(), label.begin(), label.end());
    name.remove_prefix(std::min(name.size(), label.size() + 1));
  }
  encoded.push_back(0);
  return encoded;
}

Packet startReply(Bytes query, Outcome outcome) {
  Packet reply(kHeader);
  reply[0] = query[0];
  reply[1] = query[1];
  reply[2] = static_cast<std::uint8_t>(kIsAnswer | kAuthoritative |
                                       (query[2] & (kOpcodeMask | kRecursionDesired)));
  reply[3] = static_cast<std::uint8_t>(kRecursionAvailable | outcome);
  return reply;
}

}  // namespace

// The one question of a message.
struct Names::Question {
  std::string name;  // lower case, labels joined by dots
  std::uint16_t type = 0;
  std::uint16_t group = 0;  // the class, such as the Internet
  std::size_t end = 0;      // offset behind it in the message

  bool wants(std::uint16_t record) const { return type == record || type == kTypeAny; }

  // Nothing when the message does not hold it whole.
  static std::optional<Question> read(Bytes query) {
    Question question;
    std::size_t at = kHeader;
    while (true) {
      if (at >= query.size() || at - kHeader >= kLongestName) return std::nullopt;
      const std::size_t length = query[at++];
      if (length == 0) break;
      if (length > kLongestLabel || at + length > query.size()) return std::nullopt;
      if (!question.name.empty()) question.name += '.';
      for (const std::uint8_t letter : query.subspan(at, length)) {
        question.name += static_cast<char>(letter);
      }
      at += length;
    }
    if (at + 4 > query.size()) return std::nullopt;
    question.name = LCase(question.name);
    question.type = wordAt(query, at);
    question.group = wordAt(query, at + 2);
    question.end = at + 4;
    return question;
  }
};

void Names::add(std::string_view name, std::span<const IpAddress> addresses) {
  const std::string key = LCase(name);
  auto& known = addresses_[key];
  known.insert(known.end(), addresses.begin(), addresses.end());
  for (const IpAddress& address : addresses) reverse_[address.reverseName()] = name;
}

void Names::addPublicHost(std::span<const IpAddress> addresses) {
  publicHosts_.emplace_back(addresses.begin(), addresses.end());
}

bool Names::isPublic(std::string_view name) {
  const std::size_t dot = name.rfind('.');
  return dot != std::string_view::npos &&
         std::find(kSetAside.begin(), kSetAside.end(), name.substr(dot + 1)) == kSetAside.end();
}

// What a name of the Internet outside has of its host's addresses.
std::vector<IpAddress> Names::addressesFor(std::string_view name,
                                           const std::vector<IpAddress>& host) {
  std::vector<IpAddress> chosen = host;
  if (name.starts_with("ipv4.")) {
    std::erase_if(chosen, [](const IpAddress& address) { return address.family() != Family::V4; });
  }
  return chosen.empty() ? host : chosen;
}

// A public name becomes known by being asked for.
bool Names::isKnown(const std::string& name) {
  if (addresses_.contains(name) || reverse_.contains(name)) return true;
  if (publicHosts_.empty() || publicNames_ == kMostPublicNames || !isPublic(name)) return false;
  addresses_[name] = addressesFor(name, publicHosts_[publicNames_++ % publicHosts_.size()]);
  return true;
}

Packet Names::answer(Bytes query) {
  if (query.size() < kHeader || (query[2] & kIsAnswer) != 0) return {};
  if ((query[2] & kOpcodeMask) != 0) return startReply(query, kNotImplemented);
  const auto question = wordAt(query, 4) == 1 ? Question::read(query) : std::optional<Question>();
  if (!question) return startReply(query, kFormatError);
  if (question->group != kClassInternet && question->group != kClassAny) {
    return startReply(query, kRefused);
  }

  Packet reply = startReply(query, isKnown(question->name) ? kNoError : kNameError);
  reply[5] = 1;
  reply.insert(reply.end(), query.begin() + kHeader,
               query.begin() + static_cast<std::ptrdiff_t>(question->end));
  addRecords(*question, reply);
  return reply;
}

void Names::addRecords(const Question& question, Packet& reply) const {
  if (const auto known = addresses_.find(question.name); known != addresses_.end()) {
    for (const IpAddress& address : known->second) {
      const std::uint16_t type = address.family() == Family::V4 ? kTypeA : kTypeAaaa;
      if (question.wants(type)) addRecord(reply, type, address.bytes());
    }
  }
  if (const auto known = reverse_.find(question.name);
      known != reverse_.end() && question.wants(kTypePtr)) {
    addRecord(reply, kTypePtr, encodeName(known->second));
  }
}

}  // namespace veltrin::lab
