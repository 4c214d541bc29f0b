// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/windows_profile_store.h"

#include <windows.h>

#include "platform/windows/code_page.h"

namespace veltrin {
namespace {

constexpr std::size_t kClosingNuls = 2;  // behind a list; a single value has one

// A text of the call's, or the null pointer where there is none.
class Argument {
 public:
  explicit Argument(const std::optional<std::string>& text)
      : given_(text.has_value()), ansi_(text ? toAnsi(*text) : std::string()) {}

  const char* pointer() const { return given_ ? ansi_.c_str() : nullptr; }

 private:
  bool given_;
  std::string ansi_;
};

}  // namespace

std::string WindowsProfileStore::read(const std::optional<std::string>& section,
                                      const std::optional<std::string>& key,
                                      const std::string& fallback, std::size_t size,
                                      const std::string& path) {
  std::string buffer(size, ' ');
  const DWORD copied = GetPrivateProfileStringA(
      Argument(section).pointer(), Argument(key).pointer(), Argument(fallback).pointer(),
      buffer.data(), static_cast<DWORD>(size), Argument(nativePath_(path)).pointer());
  buffer.resize(copied);
  // What filled the buffer may have been cut inside a character of several bytes.
  const bool mayBeCut = copied + kClosingNuls >= size;
  return fromAnsi(mayBeCut ? withoutCutCharacter(buffer, CP_ACP) : std::string_view(buffer));
}

bool WindowsProfileStore::write(const std::string& section, const std::optional<std::string>& key,
                                const std::optional<std::string>& value, const std::string& path) {
  return mayWrite_(path) &&
         WritePrivateProfileStringA(Argument(section).pointer(), Argument(key).pointer(),
                                    Argument(value).pointer(), Argument(path).pointer()) != FALSE;
}

}  // namespace veltrin
