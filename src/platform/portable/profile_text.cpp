// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portable/profile_text.h"

#include <algorithm>
#include <cstddef>

#include "text/strings.h"

namespace veltrin {
namespace {

// UTF-8's byte order mark (RFC 3629, section 6).
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// What counts as a blank around names and values. The last one is the end-of-file
// character that old editors left behind.
constexpr std::string_view kBlanks = " \t\v\f\x1A";

constexpr std::string_view kLineEnds = "\r\n";

enum class Kind { Other, Section, Key };

struct Line {
  std::size_t begin = 0;       // first byte
  std::size_t end = 0;         // behind the last byte, without the line break
  std::size_t next = 0;        // behind the line break
  Kind kind = Kind::Other;     // what the line holds
  std::string_view name;       // of the section or key, without blanks
  std::size_t valueBegin = 0;  // behind the '=' of a key
};

struct Section {
  std::size_t begin = 0;  // first byte of its own line
  std::size_t body = 0;   // behind its own line
  std::size_t end = 0;    // where the next section begins, or the end of the file
};

std::string_view trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string_view untilNul(std::string_view text) { return text.substr(0, text.find('\0')); }

std::size_t behindBreak(std::string_view text, std::size_t end) {
  if (end == text.size()) return end;
  return text.substr(end, 2) == "\r\n" ? end + 2 : end + 1;
}

// The line that starts at `begin`, which lies inside the text.
Line lineAt(std::string_view text, std::size_t begin) {
  Line line;
  line.begin = begin;
  line.end = std::min(text.find_first_of(kLineEnds, begin), text.size());
  line.next = behindBreak(text, line.end);

  const std::string_view content = trimmed(untilNul(text.substr(begin, line.end - begin)));
  if (content.empty() || content.front() == ';') return line;
  const auto closing = content.rfind(']');
  if (content.front() == '[' && closing != std::string_view::npos) {
    line.kind = Kind::Section;
    line.name = trimmed(content.substr(1, closing - 1));
    return line;
  }
  const auto equals = content.find('=');
  if (equals == std::string_view::npos) return line;
  line.kind = Kind::Key;
  line.name = trimmed(content.substr(0, equals));
  line.valueBegin = text.find('=', begin) + 1;
  return line;
}

std::size_t firstLine(std::string_view text) {
  return text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
}

std::optional<Section> findSection(std::string_view text, std::string_view name) {
  const std::string_view wanted = trimmed(name);
  std::optional<Section> found;
  for (std::size_t at = firstLine(text); at < text.size();) {
    const Line line = lineAt(text, at);
    at = line.next;
    if (line.kind != Kind::Section) continue;
    if (found) {
      found->end = line.begin;
      return found;
    }
    if (equalIgnoringCase(line.name, wanted)) found = {line.begin, line.next, text.size()};
  }
  return found;
}

std::optional<Line> findKey(std::string_view text, const Section& section, std::string_view name) {
  const std::string_view wanted = trimmed(name);
  for (std::size_t at = section.body; at < section.end;) {
    const Line line = lineAt(text, at);
    if (line.kind == Kind::Key && equalIgnoringCase(line.name, wanted)) return line;
    at = line.next;
  }
  return std::nullopt;
}

// Where the line of a new key goes: behind the last key, so that blank lines and a
// comment about the next section stay with that one.
std::size_t behindLastKey(std::string_view text, const Section& section) {
  std::size_t place = section.body;
  for (std::size_t at = section.body; at < section.end;) {
    const Line line = lineAt(text, at);
    at = line.next;
    if (line.kind == Kind::Key) place = line.next;
  }
  return place;
}

std::string_view storedValue(std::string_view text, const Line& line) {
  return trimmed(untilNul(text.substr(line.valueBegin, line.end - line.valueBegin)));
}

std::string_view withoutQuotes(std::string_view value) {
  const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                      (value.front() == '"' || value.front() == '\'');
  return quoted ? value.substr(1, value.size() - 2) : value;
}

// The file's own kind of line break, that of its first line.
std::string lineBreakOf(std::string_view text) {
  const auto end = text.find_first_of(kLineEnds);
  if (end == std::string_view::npos) return std::string(kLineBreak);
  return std::string(text.substr(end, behindBreak(text, end) - end));
}

std::string keyLine(std::string_view key, std::string_view value) {
  std::string line(trimmed(key));
  line += '=';
  line += value;
  return line;
}

std::string sectionLine(std::string_view section) {
  std::string line = "[";
  line += trimmed(section);
  line += ']';
  return line;
}

}  // namespace

std::vector<std::string> ProfileText::sections() const {
  std::vector<std::string> names;
  for (std::size_t at = firstLine(text_); at < text_.size();) {
    const Line line = lineAt(text_, at);
    at = line.next;
    if (line.kind == Kind::Section && !line.name.empty()) names.emplace_back(line.name);
  }
  return names;
}

std::vector<std::string> ProfileText::keys(std::string_view section) const {
  std::vector<std::string> names;
  const auto found = findSection(text_, section);
  if (!found) return names;
  for (std::size_t at = found->body; at < found->end;) {
    const Line line = lineAt(text_, at);
    at = line.next;
    if (line.kind == Kind::Key && !line.name.empty()) names.emplace_back(line.name);
  }
  return names;
}

bool ProfileText::hasSection(std::string_view section) const {
  return findSection(text_, section).has_value();
}

std::optional<std::string> ProfileText::value(std::string_view section,
                                              std::string_view key) const {
  const auto found = findSection(text_, section);
  if (!found) return std::nullopt;
  const auto line = findKey(text_, *found, key);
  if (!line) return std::nullopt;
  return std::string(withoutQuotes(storedValue(text_, *line)));
}

void ProfileText::set(std::string_view section, std::string_view key, std::string_view value) {
  const auto found = findSection(text_, section);
  if (!found) {
    insertLines(text_.size(), {sectionLine(section), keyLine(key, value)});
    return;
  }
  const auto line = findKey(text_, *found, key);
  if (!line) {
    insertLines(behindLastKey(text_, *found), {keyLine(key, value)});
    return;
  }
  if (storedValue(text_, *line) == trimmed(value)) return;
  text_.replace(line->valueBegin, line->end - line->valueBegin, value);
}

void ProfileText::removeKey(std::string_view section, std::string_view key) {
  const auto found = findSection(text_, section);
  if (!found) return;
  const auto line = findKey(text_, *found, key);
  if (line) text_.erase(line->begin, line->next - line->begin);
}

void ProfileText::removeSection(std::string_view section) {
  const auto found = findSection(text_, section);
  if (found) text_.erase(found->begin, found->end - found->begin);
}

void ProfileText::addSection(std::string_view section) {
  if (!hasSection(section)) insertLines(text_.size(), {sectionLine(section)});
}

// Inserts whole lines at the start of a line or at the end of the file, whose last
// line gets the line break that it may lack.
void ProfileText::insertLines(std::size_t position, const std::vector<std::string>& lines) {
  const std::string lineBreak = lineBreakOf(text_);
  std::string added;
  const bool lineOpen =
      position > firstLine(text_) && kLineEnds.find(text_[position - 1]) == std::string_view::npos;
  if (lineOpen) added += lineBreak;
  for (const auto& line : lines) added += line + lineBreak;
  text_.insert(position, added);
}

}  // namespace veltrin
