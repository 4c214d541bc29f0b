// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portable/profile_file.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

#include "platform/portable/atomic_file.h"
#include "platform/portable/profile_text.h"
#include "text/strings.h"

namespace veltrin {
namespace {

std::string untilNul(const std::string& text) { return text.substr(0, text.find('\0')); }

std::string withoutBlanksAtTheEnd(const std::string& text) {
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

// A single value with its closing NUL in a buffer of `size` characters.
std::string cutValue(const std::string& value, std::size_t size) {
  return size == 0 ? std::string() : Left(value, static_cast<std::int64_t>(size) - 1);
}

// Names, each followed by a NUL, with one more NUL behind the last, in a buffer of
// `size` characters. A list that does not fit ends in the two NULs that close it.
std::string cutList(const std::vector<std::string>& names, std::size_t size) {
  std::string list;
  for (const auto& name : names) list += name + '\0';
  const auto room = static_cast<std::int64_t>(size);
  if (Len(list) < room) return list;
  return room < 2 ? std::string() : Left(list, room - 2);
}

bool hasLineBreak(const std::string& name) { return name.find_first_of("\r\n") != name.npos; }

}  // namespace

std::string ProfileEngine::read(const std::optional<std::string>& section,
                                const std::optional<std::string>& key, const std::string& fallback,
                                std::size_t size, const std::string& path) {
  const ProfileText profile(load(path).value_or(std::string()));
  const std::string otherwise = withoutBlanksAtTheEnd(untilNul(fallback));

  if (!section) return cutList(profile.sections(), size);
  if (!key) {
    const auto names = profile.keys(untilNul(*section));
    return names.empty() ? cutValue(otherwise, size) : cutList(names, size);
  }
  const auto value = profile.value(untilNul(*section), untilNul(*key));
  return cutValue(value.value_or(otherwise), size);
}

bool ProfileEngine::write(const std::string& section, const std::optional<std::string>& key,
                          const std::optional<std::string>& value, const std::string& path) {
  const std::string name = untilNul(section);
  if (hasLineBreak(name) || (key && hasLineBreak(untilNul(*key)))) return false;

  const std::optional<std::string> content = load(path);
  if (!content) return false;

  ProfileText profile(*content);
  if (!key) {
    profile.removeSection(name);
  } else if (!value) {
    profile.removeKey(name, untilNul(*key));
  } else {
    profile.set(name, untilNul(*key), untilNul(*value));
  }
  return profile.text() == *content || store(path, profile.text());
}

ProfileFile::ProfileFile(NativePath nativePath, NativePath pathToWrite)
    : nativePath_(std::move(nativePath)),
      pathToWrite_(pathToWrite ? std::move(pathToWrite) : nativePath_) {}

std::optional<std::string> ProfileFile::load(const std::string& path) {
  std::string content;
  const auto failure = readWholeFile(nativePath_(path), content);
  if (!failure) return content;
  if (failure == std::errc::no_such_file_or_directory) return std::string();
  return std::nullopt;
}

bool ProfileFile::store(const std::string& path, const std::string& content) {
  const std::string file = pathToWrite_(path);
  return !file.empty() && !replaceFile(file, content);
}

}  // namespace veltrin
