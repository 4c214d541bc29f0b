// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/hardware_database.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <tuple>
#include <utility>

#include "machine/fact_text.h"

namespace veltrin {
namespace {

// The file begins with a header of ten numbers of eight bytes: signature, version of
// the tool, sizes of the file, header, nodes, children and values, place of the root,
// and the lengths of two areas.
constexpr std::string_view kSignature = "KSLPHHRH";
constexpr std::size_t kHeader = 80;
constexpr std::size_t kFileSizeAt = 16;
constexpr std::size_t kNodeSizeAt = 32;
constexpr std::size_t kChildSizeAt = 40;
constexpr std::size_t kValueSizeAt = 48;
constexpr std::size_t kRootAt = 56;

// The least sizes of the structures: a node is the place of its text, the count of
// its children (one byte) and of its values; a child a character and the place of
// its node; a value the places of its name and its text. Newer files add to a value
// the place of its source's name, a line (four bytes) and a rank (two bytes).
constexpr std::size_t kNode = 24;
constexpr std::size_t kChild = 16;
constexpr std::size_t kValue = 16;
constexpr std::size_t kRankedValue = 32;

// No sound database is deeper or makes a search walk further.
constexpr int kDeepest = 512;
constexpr std::size_t kLongestPattern = 4096;
constexpr int kMostNodes = 20'000;

constexpr std::string_view kWildcards = "*?[";

bool isWildcard(char character) { return kWildcards.find(character) != std::string_view::npos; }

// What is found, with the rank and line of its source.
struct Property {
  std::uint64_t rank = 0;
  std::uint64_t line = 0;
  std::string value;
};

// One search through the tree.
class Search {
 public:
  Search(std::string_view bytes, std::string_view id)
      : bytes_(bytes),
        id_(id),
        nodeSize_(number(kNodeSizeAt)),
        childSize_(number(kChildSizeAt)),
        valueSize_(number(kValueSizeAt)) {}

  std::map<std::string, Property> run() {
    follow(number(kRootAt), id_, 0);
    return std::move(found_);
  }

 private:
  struct Node {
    std::string_view text;
    std::size_t children = 0;  // count
    std::size_t firstChild = 0;
    std::uint64_t values = 0;  // count
    std::size_t firstValue = 0;
  };

  std::size_t number(std::size_t at, std::size_t size = 8) const {
    return littleEndian(bytes_, at, size).value_or(0);
  }

  std::optional<std::string_view> textAt(std::size_t at) const {
    const std::size_t end = at < bytes_.size() ? bytes_.find('\0', at) : std::string_view::npos;
    if (end == std::string_view::npos) {
      return std::nullopt;
    }
    return bytes_.substr(at, end - at);
  }

  // Nothing when the node does not lie within the file, or the search is long
  // enough.
  std::optional<Node> nodeAt(std::size_t at) {
    if (at > bytes_.size() || nodeSize_ > bytes_.size() - at || ++nodes_ > kMostNodes) {
      return std::nullopt;
    }
    const auto text = textAt(number(at));
    const std::size_t room = bytes_.size() - at - nodeSize_;
    const std::size_t children = number(at + 8, 1);
    const std::uint64_t values = number(at + 16);
    const std::size_t childrenSize = children * childSize_;
    if (!text || childrenSize > room || values > (room - childrenSize) / valueSize_) {
      return std::nullopt;
    }
    const std::size_t firstChild = at + nodeSize_;
    return Node{*text, children, firstChild, values, firstChild + childrenSize};
  }

  // From a node that was reached by plain characters; `rest` is what of the ID is
  // not matched yet.
  void follow(std::size_t at, std::string_view rest, int depth) {
    const auto node = depth < kDeepest ? nodeAt(at) : std::nullopt;
    if (!node) {
      return;
    }
    const std::size_t wild = node->text.find_first_of(kWildcards);
    const std::string_view plain = node->text.substr(0, wild);
    if (!rest.starts_with(plain)) {
      return;
    }
    rest.remove_prefix(plain.size());
    if (wild != std::string_view::npos && node->text.size() <= kLongestPattern) {
      collect(*node, std::string(node->text.substr(wild)), rest, depth);
      return;
    }
    for (std::size_t i = 0; i < node->children; ++i) {
      const std::size_t child = node->firstChild + i * childSize_;
      const char character = bytes_[child];
      if (isWildcard(character)) {
        collectAt(number(child + 8), std::string(1, character), rest, depth + 1);
      } else if (!rest.empty() && rest[0] == character) {
        follow(number(child + 8), rest.substr(1), depth + 1);
      }
    }
    if (rest.empty()) {
      addValues(*node);
    }
  }

  void collectAt(std::size_t at, std::string pattern, std::string_view rest, int depth) {
    const auto node = depth < kDeepest ? nodeAt(at) : std::nullopt;
    if (node && node->text.size() <= kLongestPattern - pattern.size()) {
      pattern += node->text;
      collect(*node, pattern, rest, depth);
    }
  }

  // From the first wildcard on every pattern below is compared as a whole.
  void collect(const Node& node, const std::string& pattern, std::string_view rest, int depth) {
    if (node.values > 0 && fitsPattern(rest, pattern)) {
      addValues(node);
    }
    for (std::size_t i = 0; i < node.children; ++i) {
      const std::size_t child = node.firstChild + i * childSize_;
      if (pattern.size() < kLongestPattern) {
        collectAt(number(child + 8), pattern + bytes_[child], rest, depth + 1);
      }
    }
  }

  void addValues(const Node& node) {
    for (std::uint64_t i = 0; i < node.values; ++i) {
      addValue(node.firstValue + i * valueSize_);
    }
  }

  // A property's name begins with a blank; others are for other readers.
  void addValue(std::size_t at) {
    const auto name = textAt(number(at));
    const auto value = textAt(number(at + 8));
    if (!name || !value || !name->starts_with(" ")) {
      return;
    }
    Property property{0, 0, std::string(*value)};
    if (valueSize_ >= kRankedValue) {
      property.line = number(at + 24, 4);
      property.rank = number(at + 28, 2);
    }
    const auto [place, first] = found_.try_emplace(std::string(name->substr(1)), property);
    if (!first && std::tie(property.rank, property.line) >=
                      std::tie(place->second.rank, place->second.line)) {
      place->second = std::move(property);
    }
  }

  std::string_view bytes_;
  std::string_view id_;
  std::size_t nodeSize_;
  std::size_t childSize_;
  std::size_t valueSize_;
  int nodes_ = 0;
  std::map<std::string, Property> found_;
};

bool isSound(std::string_view bytes) {
  const auto number = [&](std::size_t at) { return littleEndian(bytes, at, 8).value_or(0); };
  const auto fits = [&](std::size_t at, std::size_t least) {
    return number(at) >= least && number(at) <= bytes.size();
  };
  return bytes.size() >= kHeader && bytes.starts_with(kSignature) &&
         number(kFileSizeAt) == bytes.size() && fits(kNodeSizeAt, kNode) &&
         fits(kChildSizeAt, kChild) && fits(kValueSizeAt, kValue);
}

// Whether a character is in the brackets that a pattern begins with, which are taken
// off the pattern. Brackets without an end stand for themselves.
bool takeBrackets(char character, std::string_view& pattern) {
  const std::size_t end = pattern.find(']', pattern.size() > 1 && pattern[1] == '!' ? 3 : 2);
  if (end == std::string_view::npos) {
    pattern.remove_prefix(1);
    return character == '[';
  }
  std::string_view set = pattern.substr(1, end - 1);
  pattern.remove_prefix(end + 1);
  const bool inverse = set.starts_with("!");
  set.remove_prefix(inverse ? 1 : 0);
  bool inside = false;
  for (std::size_t i = 0; i < set.size(); ++i) {
    const bool range = i + 2 < set.size() && set[i + 1] == '-';
    const char last = range ? set[i + 2] : set[i];
    inside = inside || (character >= set[i] && character <= last);
    i += range ? 2 : 0;
  }
  return inside != inverse;
}

// Takes one element other than "*" off a pattern; whether the character fits it.
bool takeElement(char character, std::string_view& pattern) {
  if (pattern[0] == '[') {
    return takeBrackets(character, pattern);
  }
  const char element = pattern[0];
  pattern.remove_prefix(1);
  return element == '?' || element == character;
}

}  // namespace

HardwareDatabase::HardwareDatabase(std::string_view bytes)
    : bytes_(isSound(bytes) ? bytes : std::string_view()) {}

std::map<std::string, std::string> HardwareDatabase::properties(std::string_view id) const {
  std::map<std::string, std::string> values;
  if (!bytes_.empty()) {
    for (auto& [name, property] : Search(bytes_, id).run()) {
      values.emplace(name, std::move(property.value));
    }
  }
  return values;
}

// Where an element does not fit, the last "*" before it takes one character more.
bool fitsPattern(std::string_view text, std::string_view pattern) {
  std::optional<std::pair<std::string_view, std::string_view>> star;
  while (!text.empty()) {
    if (pattern.starts_with("*")) {
      pattern.remove_prefix(1);
      star = {text, pattern};
      continue;
    }
    std::string_view rest = pattern;
    if (!rest.empty() && takeElement(text[0], rest)) {
      text.remove_prefix(1);
      pattern = rest;
      continue;
    }
    if (!star) {
      return false;
    }
    star->first.remove_prefix(1);
    text = star->first;
    pattern = star->second;
  }
  return pattern.find_first_not_of('*') == std::string_view::npos;
}

}  // namespace veltrin
