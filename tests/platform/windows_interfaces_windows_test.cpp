// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <vector>
#include <windows.h>

#include "platform/windows/code_page.h"
#include "platform/windows/windows_interfaces.h"

namespace veltrin {
namespace {

constexpr std::uint32_t kLoopback = 24;  // IF_TYPE_SOFTWARE_LOOPBACK

struct Table {
  std::uint32_t answer = 0;
  std::uint32_t size = 0;
  std::vector<MIB_IFROW> rows;
};

Table tableNow(bool order) {
  WindowsInterfaces interfaces;
  Table table;
  EXPECT_EQ(interfaces.GetIfTable(nullptr, table.size, order), kErrorInsufficientBuffer);
  table.size += 4 * sizeof(MIB_IFROW);  // one may come meanwhile
  std::vector<std::uint8_t> bytes(table.size, 0xEE);
  table.answer = interfaces.GetIfTable(bytes.data(), table.size, order);
  if (table.answer != 0) return table;
  std::uint32_t count = 0;
  std::memcpy(&count, bytes.data(), sizeof count);
  table.rows.resize(count);
  std::memcpy(table.rows.data(), bytes.data() + sizeof count, count * sizeof(MIB_IFROW));
  return table;
}

TEST(WindowsInterfacesTest, HaveTheLoopback) {
  const Table table = tableNow(false);

  ASSERT_EQ(table.answer, 0U);
  const auto loopback = std::find_if(table.rows.begin(), table.rows.end(),
                                     [](const auto& row) { return row.dwType == kLoopback; });
  ASSERT_NE(loopback, table.rows.end());
  EXPECT_NE(loopback->dwIndex, 0U);
  EXPECT_GT(loopback->dwDescrLen, 0U);
  EXPECT_LE(loopback->dwDescrLen, 256U);
}

TEST(WindowsInterfacesTest, ComeByTheirIndexesWhenAsked) {
  const Table table = tableNow(true);

  ASSERT_EQ(table.answer, 0U);
  EXPECT_TRUE(std::is_sorted(
      table.rows.begin(), table.rows.end(),
      [](const auto& left, const auto& right) { return left.dwIndex < right.dwIndex; }));
}

TEST(WindowsInterfacesTest, WantMoreThanATableThatIsTooSmall) {
  WindowsInterfaces interfaces;
  std::vector<std::uint8_t> table(4, 0xEE);
  std::uint32_t size = 4;

  EXPECT_EQ(interfaces.GetIfTable(table.data(), size, false), kErrorInsufficientBuffer);

  EXPECT_GE(size, 4U + 860U);
}

MIB_IFROW described(const std::string& bytes) {
  MIB_IFROW row;
  std::copy(bytes.begin(), bytes.end(), row.bDescr.begin());
  row.dwDescrLen = static_cast<std::uint32_t>(bytes.size());
  return row;
}

std::string descriptionOf(const MIB_IFROW& row) {
  return {row.bDescr.begin(), row.bDescr.begin() + row.dwDescrLen};
}

TEST(WindowsInterfacesTest, LeaveAPlainDescriptionAsItIs) {
  MIB_IFROW row = described(std::string("Card\0", 5));
  translateDescription(row);
  EXPECT_EQ(descriptionOf(row), std::string("Card\0", 5));
}

TEST(WindowsInterfacesTest, DescribeInUtf8WhatTheSystemDescribesInItsCodePage) {
  const std::string text = "R\u00E9seau";
  if (fromAnsi(toAnsi(text)) != text) GTEST_SKIP() << "the code page has no such letter";
  MIB_IFROW row = described(toAnsi(text));

  translateDescription(row);

  EXPECT_EQ(descriptionOf(row), text);
}

TEST(WindowsInterfacesTest, CutADescriptionThatGrowsBeyondItsFieldBehindAWholeCharacter) {
  const std::string text = "x\u00E9";
  if (fromAnsi(toAnsi(text)) != text) GTEST_SKIP() << "the code page has no such letter";
  std::string whole = "x";
  for (int i = 0; i < 255; ++i) whole += "\u00E9";
  MIB_IFROW row = described(toAnsi(whole));

  translateDescription(row);

  EXPECT_EQ(row.dwDescrLen, 255U);
  EXPECT_EQ(descriptionOf(row), whole.substr(0, 255));
}

}  // namespace
}  // namespace veltrin
