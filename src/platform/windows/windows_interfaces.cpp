// SPDX-License-Identifier: GPL-3.0-or-later
// Each of these stands on the one before.
// clang-format off
#include <winsock2.h>
#include <iphlpapi.h>
// clang-format on

#include "platform/windows/windows_interfaces.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "platform/windows/code_page.h"

namespace veltrin {

static_assert(sizeof(::MIB_IFROW) == sizeof(MIB_IFROW));
static_assert(kErrorNotSupported == ERROR_NOT_SUPPORTED);
static_assert(kErrorInsufficientBuffer == ERROR_INSUFFICIENT_BUFFER);

std::uint32_t WindowsInterfaces::GetIfTable(std::uint8_t* table, std::uint32_t& size, bool order) {
  ULONG length = size;
  const DWORD answer =
      ::GetIfTable(reinterpret_cast<MIB_IFTABLE*>(table), &length, order ? TRUE : FALSE);
  size = length;
  if (answer != NO_ERROR || table == nullptr) return answer;
  std::uint32_t count = 0;
  std::memcpy(&count, table, sizeof count);
  for (std::uint8_t* at = table + sizeof count; count > 0; --count, at += sizeof(MIB_IFROW)) {
    MIB_IFROW row;
    std::memcpy(&row, at, sizeof row);
    translateDescription(row);
    std::memcpy(at, &row, sizeof row);
  }
  return answer;
}

void translateDescription(MIB_IFROW& row) {
  const auto end = row.bDescr.begin() + std::min<std::size_t>(row.dwDescrLen, row.bDescr.size());
  const std::string ansi(row.bDescr.begin(), end);
  const std::string text = fromAnsi(ansi);
  if (text == ansi) return;
  const std::string_view kept =
      withoutCutCharacter(std::string_view(text).substr(0, row.bDescr.size()), CP_UTF8);
  row.bDescr.fill(0);
  std::copy(kept.begin(), kept.end(), row.bDescr.begin());
  row.dwDescrLen = static_cast<std::uint32_t>(kept.size());
}

}  // namespace veltrin
