// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/name_lookups.h"

#include <gtest/gtest.h>
#include <string>

namespace veltrin {
namespace {

using namespace std::string_literals;

TEST(HostName, HasLettersDigitsHyphensDotsAndUnderscores) {
  for (const char* name : {"localhost", "core-1.example.net", "ae0_1.R2.example", "1.2.0.192.in"}) {
    EXPECT_TRUE(isHostName(name)) << name;
  }
}

TEST(HostName, IsNothingThatALineOfATraceWouldBeMisreadFor) {
  for (const std::string& text :
       {""s, "a [203.0.113.9]"s, "x]"s, "a b"s, "a\r\nTrace complete."s, "a\x1B[2J"s, "a\0b"s,
        "<b>a</b>"s, "-n;id$(id)"s, "\xC3\xA9.example"s, "a\tb"s, "x%s"s}) {
    EXPECT_FALSE(isHostName(text)) << text;
  }
}

}  // namespace
}  // namespace veltrin
