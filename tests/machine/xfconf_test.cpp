// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/xfconf.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veltrin {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

TEST(Xfconf, NamesValuesByTheirPaths) {
  EXPECT_THAT(xfconfValues(R"(<?xml version="1.0" encoding="UTF-8"?>

<channel name="xfce4-desktop" version="1.0">
  <property name="backdrop" type="empty">
    <property name="screen0" type="empty">
      <property name="last-image" type="string" value="/home/anna/a.png"/>
      <property name="image-style" type="int" value="5"/>
    </property>
    <property name="single" type="bool" value="true"/>
  </property>
  <property name="last" type="int" value="7"/>
</channel>
)"),
              ElementsAre(Pair("/backdrop/screen0/image-style", "5"),
                          Pair("/backdrop/screen0/last-image", "/home/anna/a.png"),
                          Pair("/backdrop/single", "true"), Pair("/last", "7")));
}

TEST(Xfconf, APropertyMayHaveAValueAndOthersBelowIt) {
  EXPECT_THAT(xfconfValues(R"(<property name="a" type="bool" value="true">
                              <property name="b" type="int" value="1"/></property>)"),
              ElementsAre(Pair("/a", "true"), Pair("/a/b", "1")));
}

TEST(Xfconf, DecodesTheNamesOfCharacters) {
  EXPECT_THAT(xfconfValues(
                  R"(<property name="a&amp;b" value="&lt;x&gt; &quot;y&apos; &amp;lt; &other;"/>)"),
              ElementsAre(Pair("/a&b", "<x> \"y' &lt; &other;")));
}

TEST(Xfconf, ATagEndsBehindItsValues) {
  EXPECT_THAT(xfconfValues(R"(<property name="a" value="x > y"/><property name="b" value="1"/>)"),
              ElementsAre(Pair("/a", "x > y"), Pair("/b", "1")));
}

TEST(Xfconf, LeavesOutListsAndRemarks) {
  EXPECT_THAT(xfconfValues(R"(<property name="list" type="array">
                                <value type="string" value="one"/>
                              </property>
                              <!-- <property name="no" value="1"/><property name="none" value="1"/> -->
                              <property name="yes" value="2"/>)"),
              ElementsAre(Pair("/yes", "2")));
}

TEST(Xfconf, LeavesOutPropertiesWithoutAValue) {
  EXPECT_THAT(xfconfValues(R"(<property name="a" type="string" value=""/><property name="b"/>)"),
              IsEmpty());
}

TEST(Xfconf, ReadsWhatIsCutOffAsFarAsItGoes) {
  EXPECT_THAT(
      xfconfValues(R"(</property><property name="a" value="1"/><property name="b" value=")"),
      ElementsAre(Pair("/a", "1")));
  for (const char* text : {"", "<", "<!--", "<property", "text", "<property >", "</property>"}) {
    EXPECT_THAT(xfconfValues(text), IsEmpty()) << text;
  }
}

TEST(Xfconf, LeavesOutWhatIsNestedBeyondReason) {
  std::string text;
  for (int depth = 0; depth < 100'000; ++depth) {
    text += R"(<property name="x" value="1">)";
  }
  EXPECT_EQ(xfconfValues(text).size(), 32U);
}

}  // namespace
}  // namespace veltrin
