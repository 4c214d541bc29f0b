// SPDX-License-Identifier: GPL-3.0-or-later
#include "lab/behaviour.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "lab/values.h"

namespace veltrin::lab {
namespace {

constexpr std::uint64_t kMostErrors = 1'000'000;  // a second: as good as no limit
constexpr std::uint64_t kLeastMtu = 68;           // passes every IPv4 link (RFC 791 section 3.2)
constexpr std::uint64_t kMostMtu = 65535;         // longest IPv4 packet (RFC 791 section 3.1)

Beyond readBeyond(std::string_view text) {
  if (text == "passes") return Beyond::Passes;
  if (text == "lost") return Beyond::Lost;
  if (text == "host-unreachable") return Beyond::HostUnreachable;
  if (text == "net-unreachable") return Beyond::NetUnreachable;
  throw std::invalid_argument(
      "expected \"passes\", \"lost\", \"host-unreachable\" or \"net-unreachable\", found \"" +
      std::string(text) + '"');
}

std::uint32_t readWord(std::string_view text, std::uint64_t least, std::uint64_t most) {
  return static_cast<std::uint32_t>(readNumber(text, least, most));
}

struct Key {
  std::string_view name;
  bool routersOnly;
  void (*set)(Behaviour&, std::string_view);
};

using Text = std::string_view;

constexpr std::array kKeys{
    Key{"delay", false, [](Behaviour& node, Text text) { node.delay = readDuration(text); }},
    Key{"jitter", false, [](Behaviour& node, Text text) { node.jitter = readDuration(text); }},
    Key{"loss", false, [](Behaviour& node, Text text) { node.loss.share = readPercentage(text); }},
    Key{"loss-pattern", false,
        [](Behaviour& node, Text text) { node.loss.pattern = readPattern(text); }},
    Key{"twice", false, [](Behaviour& node, Text text) { node.twice = readPattern(text); }},
    Key{"late", false,
        [](Behaviour& node, Text text) {
          const DelayedPattern late = readDelayedPattern(text);
          node.late = late.pattern;
          node.lateBy = late.delay;
        }},
    Key{"silent", false, [](Behaviour& node, Text text) { node.silent = readYesNo(text); }},
    Key{"link-delay", false,
        [](Behaviour& node, Text text) { node.linkDelay = readDuration(text); }},
    Key{"link-loss", false,
        [](Behaviour& node, Text text) { node.linkLoss.share = readPercentage(text); }},
    Key{"link-loss-pattern", false,
        [](Behaviour& node, Text text) { node.linkLoss.pattern = readPattern(text); }},
    Key{"rate-limit", true,
        [](Behaviour& node, Text text) { node.rateLimit = readWord(text, 1, kMostErrors); }},
    Key{"mtu", true,
        [](Behaviour& node, Text text) { node.mtu = readWord(text, kLeastMtu, kMostMtu); }},
    Key{"beyond", true, [](Behaviour& node, Text text) { node.beyond = readBeyond(text); }},
};

void checkLoss(const Loss& loss, const std::string& key) {
  if (loss.share > 0 && loss.pattern.picked > 0) {
    throw std::invalid_argument("has both " + key + " and " + key + "-pattern");
  }
}

}  // namespace

bool setBehaviour(Behaviour& behaviour, bool router, std::string_view key, std::string_view value) {
  const auto known =
      std::find_if(kKeys.begin(), kKeys.end(), [&](const Key& each) { return each.name == key; });
  if (known == kKeys.end() || (known->routersOnly && !router)) return false;
  known->set(behaviour, value);
  return true;
}

std::string behaviourKeys(bool router) {
  std::string names;
  for (const Key& key : kKeys) {
    if (key.routersOnly && !router) continue;
    if (!names.empty()) names += ", ";
    names += key.name;
  }
  return names;
}

void checkBehaviour(const Behaviour& behaviour) {
  if (behaviour.jitter > behaviour.delay) {
    throw std::invalid_argument("has a jitter longer than its delay");
  }
  checkLoss(behaviour.loss, "loss");
  checkLoss(behaviour.linkLoss, "link-loss");
}

}  // namespace veltrin::lab
