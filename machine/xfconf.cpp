// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/xfconf.h"

#include <array>
#include <cstddef>
#include <utility>
#include <vector>

#include "machine/fact_text.h"

namespace veltrin {
namespace {

// Deeper than any setting lies; what is deeper is left out.
constexpr std::size_t kDeepest = 32;

// Undoes the five names of characters that XML writes in values (XML 1.0, section 4.6).
std::string decoded(std::string_view text) {
  constexpr std::array<std::pair<std::string_view, char>, 5> kNames{
      {{"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}}};
  std::string value;
  while (!text.empty()) {
    std::size_t length = 1;
    char character = text[0];
    for (const auto& [name, meant] : kNames) {
      if (text.starts_with(name)) {
        length = name.size();
        character = meant;
      }
    }
    value += character;
    text.remove_prefix(length);
  }
  return value;
}

// The value of name="value" in a tag; null when there is none.
std::string_view attributeIn(std::string_view tag, std::string_view name) {
  const std::string start = " " + std::string(name) + "=\"";
  const std::size_t at = tag.find(start);
  if (at == std::string_view::npos) {
    return {};
  }
  tag.remove_prefix(at + start.size());
  return tag.substr(0, tag.find('"'));
}

// The end of a tag: the next ">" that stands in no value.
std::size_t endOfTag(std::string_view text) {
  bool quoted = false;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] == '"') {
      quoted = !quoted;
    } else if (text[at] == '>' && !quoted) {
      return at;
    }
  }
  return std::string_view::npos;
}

// Takes what stands between the next "<" and its ">" out of a text; a remark is a tag, too. False
// when none that is closed is left.
bool takeTag(std::string_view& text, std::string_view& tag) {
  const std::size_t start = text.find('<');
  if (start == std::string_view::npos) {
    return false;
  }
  text.remove_prefix(start + 1);
  const std::size_t end = text.starts_with("!--") ? text.find("-->") : endOfTag(text);
  if (end == std::string_view::npos) {
    return false;
  }
  tag = text.substr(0, end);
  text.remove_prefix(end);
  return true;
}

// Collects the values of properties that lie in one another.
class Properties {
 public:
  void take(std::string_view tag) {
    if (tag.starts_with("property ")) {
      open(tag);
    } else if (tag.starts_with("/property") && !path_.empty()) {
      path_.pop_back();
    }
  }

  std::map<std::string, std::string> values() && { return std::move(values_); }

 private:
  void open(std::string_view tag) {
    const bool isTooDeep = path_.size() >= kDeepest;
    const std::string own =
        (path_.empty() ? "" : path_.back()) + "/" + decoded(attributeIn(tag, "name"));
    const std::string value = decoded(attributeIn(tag, "value"));
    if (!value.empty() && !isTooDeep) {
      values_[own] = value;
    }
    if (!tag.ends_with('/')) {
      path_.push_back(isTooDeep ? "" : own);
    }
  }

  std::map<std::string, std::string> values_;
  std::vector<std::string> path_;  // of the properties that are open
};

}  // namespace

std::map<std::string, std::string> xfconfValues(std::string_view text) {
  Properties properties;
  for (std::string_view tag; takeTag(text, tag);) {
    properties.take(tag);
  }
  return std::move(properties).values();
}

}  // namespace veltrin
