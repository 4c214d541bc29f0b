// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/windows_clock.h"

#include <array>
#include <windows.h>

namespace veltrin {

DateTime WindowsClock::now() const {
  SYSTEMTIME parts{};
  GetLocalTime(&parts);
  DateTime moment;
  moment.year = parts.wYear;
  moment.month = parts.wMonth;
  moment.day = parts.wDay;
  moment.hour = parts.wHour;
  moment.minute = parts.wMinute;
  moment.second = parts.wSecond;
  moment.millisecond = parts.wMilliseconds;
  return moment;
}

std::string WindowsClock::shortTime() const {
  std::array<wchar_t, 128> wide{};
  // The count holds the closing NUL; 0 tells of a failure.
  const int units = GetTimeFormatW(LOCALE_USER_DEFAULT, TIME_NOSECONDS, nullptr, nullptr,
                                   wide.data(), static_cast<int>(wide.size()));
  if (units <= 1) return {};
  std::array<char, 3 * wide.size()> text{};  // a unit takes 3 bytes of UTF-8 at most
  const int length = WideCharToMultiByte(CP_UTF8, 0, wide.data(), units - 1, text.data(),
                                         static_cast<int>(text.size()), nullptr, nullptr);
  return {text.data(), static_cast<std::size_t>(length)};
}

}  // namespace veltrin
