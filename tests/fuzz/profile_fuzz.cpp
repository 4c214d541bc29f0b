// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as a profile file, changed by any operations: what was written is read
// again, and a change touches its own lines only.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fuzzer/FuzzedDataProvider.h>
#include <string>
#include <vector>

#include "platform/portable/profile_text.h"

namespace {

using veltrin::ProfileText;
using Lines = std::vector<std::string>;

// Enough for short texts to meet again and again.
constexpr std::size_t kLongestName = 6;
constexpr std::size_t kLongestValue = 40;

void check(bool holds) {
  if (!holds) std::abort();
}

// The lines of a text but the empty ones, whatever they end with. A byte order mark stays
// at the beginning of the file, whatever becomes of its first line.
Lines linesOf(const std::string& text) {
  const std::string mark = "\xEF\xBB\xBF";
  Lines lines;
  for (std::size_t at = text.starts_with(mark) ? mark.size() : 0; at < text.size();) {
    const auto end = std::min(text.find_first_of("\r\n", at), text.size());
    if (end > at) lines.push_back(text.substr(at, end - at));
    at = end + 1;
  }
  return lines;
}

// How many lines of `before` are no longer there, in one run, if `after` differs
// from it in one place only.
std::size_t lostLines(const Lines& before, const Lines& after) {
  const auto shorter = std::min(before.size(), after.size());
  std::size_t front = 0;
  while (front < shorter && before[front] == after[front]) ++front;
  std::size_t back = 0;
  while (back < shorter - front &&
         before[before.size() - 1 - back] == after[after.size() - 1 - back]) {
    ++back;
  }
  return before.size() - front - back;
}

bool isPlain(const std::string& text, const std::string& special) {
  const auto control = [](char c) { return (c >= 0 && c < ' ') || c == '\x7F'; };
  return std::none_of(text.begin(), text.end(), control) &&
         text.find_first_of(special) == std::string::npos;
}

bool hasBlankOrQuoteAtAnEnd(const std::string& value) {
  const std::string odd = " \"'";
  return !value.empty() && (odd.find(value.front()) != std::string::npos ||
                            odd.find(value.back()) != std::string::npos);
}

void checkSet(ProfileText& profile, const std::string& section, const std::string& key,
              const std::string& value) {
  const Lines before = linesOf(profile.text());
  profile.set(section, key, value);
  check(lostLines(before, linesOf(profile.text())) <= 1);

  const bool canBeRead = isPlain(section, "") && isPlain(key, "=;[") && isPlain(value, "");
  if (!canBeRead || hasBlankOrQuoteAtAnEnd(value)) return;
  check(profile.hasSection(section));
  check(profile.value(section, key) == value);
  const std::string once = profile.text();
  profile.set(section, key, value);
  check(profile.text() == once);
}

void checkRemoveKey(ProfileText& profile, const std::string& section, const std::string& key) {
  const Lines before = linesOf(profile.text());
  const bool existed = profile.value(section, key).has_value();
  profile.removeKey(section, key);
  const Lines after = linesOf(profile.text());
  check(lostLines(before, after) == before.size() - after.size());
  check(before.size() - after.size() == (existed ? 1U : 0U));
}

void checkRemoveSection(ProfileText& profile, const std::string& section) {
  const Lines before = linesOf(profile.text());
  profile.removeSection(section);
  const Lines after = linesOf(profile.text());
  check(lostLines(before, after) == before.size() - after.size());
}

void checkLists(const ProfileText& profile) {
  for (const auto& section : profile.sections()) {
    check(profile.hasSection(section));
    for (const auto& key : profile.keys(section)) check(profile.value(section, key).has_value());
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider choices(data, size);
  ProfileText profile(choices.ConsumeRandomLengthString(size));
  while (choices.remaining_bytes() > 0) {
    const int operation = choices.ConsumeIntegralInRange(0, 3);
    const std::string section = choices.ConsumeRandomLengthString(kLongestName);
    const std::string key = choices.ConsumeRandomLengthString(kLongestName);
    if (operation == 0) checkRemoveKey(profile, section, key);
    if (operation == 1) checkRemoveSection(profile, section);
    if (operation == 2) profile.addSection(section);
    if (operation == 3) {
      checkSet(profile, section, key, choices.ConsumeRandomLengthString(kLongestValue));
    }
    checkLists(profile);
  }
  return 0;
}
