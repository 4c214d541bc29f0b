// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/code_page.h"

#include <algorithm>
#include <windows.h>

namespace veltrin {
namespace {

std::wstring decoded(UINT codePage, std::string_view bytes) {
  const int count = static_cast<int>(bytes.size());
  if (count == 0) return {};
  const int length = MultiByteToWideChar(codePage, 0, bytes.data(), count, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(length), L'\0');
  MultiByteToWideChar(codePage, 0, bytes.data(), count, wide.data(), length);
  return wide;
}

std::string encoded(UINT codePage, std::wstring_view wide) {
  const int count = static_cast<int>(wide.size());
  if (count == 0) return {};
  const int length =
      WideCharToMultiByte(codePage, 0, wide.data(), count, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(length), '\0');
  WideCharToMultiByte(codePage, 0, wide.data(), count, bytes.data(), length, nullptr, nullptr);
  return bytes;
}

bool isWhole(std::string_view bytes, UINT codePage) {
  return bytes.empty() || MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, bytes.data(),
                                              static_cast<int>(bytes.size()), nullptr, 0) != 0;
}

}  // namespace

std::wstring toWide(std::string_view utf8) { return decoded(CP_UTF8, utf8); }

std::string fromWide(std::wstring_view wide) { return encoded(CP_UTF8, wide); }

std::string toAnsi(std::string_view utf8) { return encoded(CP_ACP, decoded(CP_UTF8, utf8)); }

std::string fromAnsi(std::string_view ansi) { return encoded(CP_UTF8, decoded(CP_ACP, ansi)); }

std::string_view withoutCutCharacter(std::string_view bytes, unsigned codePage) {
  constexpr std::size_t kMostCutBytes = 3;  // of the four of a long character of UTF-8
  const std::size_t most = std::min(bytes.size(), kMostCutBytes);
  for (std::size_t cut = 0; cut <= most; ++cut) {
    const std::string_view kept = bytes.substr(0, bytes.size() - cut);
    if (isWhole(kept, codePage)) return kept;
    // The bytes with which a character of several begins are none of ASCII.
    if (static_cast<unsigned char>(kept.back()) < 0x80) break;
  }
  return bytes;
}

}  // namespace veltrin
