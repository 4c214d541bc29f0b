// SPDX-License-Identifier: GPL-3.0-or-later
#include "truth/json.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace veltrin {
namespace {

TEST(Json, HasMembersAndItems) {
  const Json value = Json::parse(R"( {"a": [1, -2.5, true, null, "x"], "b": {}} )");
  ASSERT_EQ(value.at("a").items.size(), 5U);
  EXPECT_EQ(value.at("a").items[1].text, "-2.5");
  EXPECT_EQ(value.at("a").items[2].text, "true");
  EXPECT_EQ(value.at("a").items[3].text, "");
  EXPECT_EQ(value.at("a").items[4].text, "x");
  EXPECT_TRUE(value.at("b").items.empty());
  EXPECT_EQ(value.names, (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(value.at("c").text, "");
}

TEST(Json, UndoesEscapes) {
  EXPECT_EQ(Json::parse(R"("\"\\\/\b\f\n\r\t")").text, "\"\\/\b\f\n\r\t");
  EXPECT_EQ(Json::parse(R"("\u0041\u00e9\u20ac\ud83d\ude00")").text,
            "A\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
}

TEST(Json, RefusesOtherTexts) {
  for (const char* text :
       {"", "{", "[1", "[1,]", "{\"a\"}", "{\"a\":}", "\"a", "\"\\u12\"", "1 2"}) {
    EXPECT_THROW(Json::parse(text), std::runtime_error) << text;
  }
  EXPECT_THROW(Json::parse(std::string(1000, '[')), std::runtime_error);
}

}  // namespace
}  // namespace veltrin
