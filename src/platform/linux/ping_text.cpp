// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/ping_text.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <charconv>
#include <string>
#include <utility>

namespace veltrin {
namespace {

using Sentence = std::pair<std::string_view, std::uint32_t>;

// What a line may begin with that tells of no answer at all.
constexpr std::array<Sentence, 3> kNoAnswer{{
    {"Request timed out.", kIpTimedOut},
    {"Packet needs to be fragmented but DF set.", kIpPacketTooBig},
    {"PING: ", kIpGeneralFailure},
}};

// What a host may reply in place of the echo.
constexpr std::array<Sentence, 8> kRefusals{{
    {"Destination net unreachable.", kIpNetUnreachable},
    {"Destination host unreachable.", kIpHostUnreachable},
    {"Destination protocol unreachable.", kIpProtocolUnreachable},
    {"Destination port unreachable.", kIpPortUnreachable},
    {"Packet too big.", kIpPacketTooBig},
    {"TTL expired in transit.", kIpHopsExceeded},
    {"TTL expired during reassembly.", kIpReassemblyExceeded},
    {"The packet's header was refused.", kIpBadParameter},
}};

template <std::size_t kCount>
std::optional<std::uint32_t> statusIn(const std::array<Sentence, kCount>& sentences,
                                      std::string_view line) {
  const auto* const found =
      std::find_if(sentences.begin(), sentences.end(),
                   [line](const Sentence& sentence) { return line.starts_with(sentence.first); });
  if (found == sentences.end()) return std::nullopt;
  return found->second;
}

// The number behind `before` and in front of `behind`.
template <class Number>
std::optional<Number> numberBetween(std::string_view line, std::string_view before,
                                    std::string_view behind) {
  const auto at = line.find(before);
  if (at == std::string_view::npos) return std::nullopt;
  line.remove_prefix(at + before.size());
  Number number{};
  const auto [end, failure] = std::from_chars(line.data(), line.data() + line.size(), number);
  if (failure != std::errc()) return std::nullopt;
  line.remove_prefix(static_cast<std::size_t>(end - line.data()));
  if (!line.starts_with(behind)) return std::nullopt;
  return number;
}

std::optional<std::uint32_t> timeIn(std::string_view answer) {
  if (answer.find(" time<1ms") != std::string_view::npos) return 0;
  return numberBetween<std::uint32_t>(answer, " time=", "ms");
}

// What the host at an address has answered, with the blank that stands before each figure.
PingOutcome answerOf(std::uint32_t address, std::string_view answer) {
  PingOutcome outcome;
  outcome.address = address;
  if (const auto time = timeIn(answer)) {
    outcome.milliseconds = *time;
    outcome.ttl = numberBetween<std::uint8_t>(answer, " TTL=", "").value_or(0);
  } else {
    outcome.status = statusIn(kRefusals, answer.substr(1)).value_or(kIpGeneralFailure);
  }
  return outcome;
}

std::optional<PingOutcome> outcomeOf(std::string_view line) {
  if (const auto status = statusIn(kNoAnswer, line)) {
    PingOutcome outcome;
    outcome.status = *status;
    return outcome;
  }
  static constexpr std::string_view kReply = "Reply from ";
  if (!line.starts_with(kReply)) return std::nullopt;
  line.remove_prefix(kReply.size());
  const auto end = line.find(": ");
  in_addr address{};
  if (end == std::string_view::npos ||
      inet_pton(AF_INET, std::string(line.substr(0, end)).c_str(), &address) != 1) {
    return std::nullopt;
  }
  return answerOf(address.s_addr, line.substr(end + 1));
}

}  // namespace

std::optional<PingOutcome> readPingOutcome(std::string_view text) {
  for (auto end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
    if (const auto outcome = outcomeOf(text.substr(0, end))) return outcome;
    text.remove_prefix(end + 1);
  }
  return std::nullopt;
}

}  // namespace veltrin
