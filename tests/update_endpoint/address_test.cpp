// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/update_endpoint/address.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <vector>

namespace veltrin::endpoint {
namespace {

using Bytes = std::vector<std::uint8_t>;

Address parsed(const char* text) {
  const auto address = Address::parse(text);
  EXPECT_TRUE(address.has_value()) << text;
  return address.value_or(Address());
}

TEST(EndpointAddress, OfFourBytesIsDotted) {
  EXPECT_EQ(Address(Bytes{192, 0, 2, 1}).text(), "192.0.2.1");
}

TEST(EndpointAddress, OfSixteenBytesHasItsShortestForm) {
  EXPECT_EQ(Address(Bytes{0x20, 0x01, 0x0D, 0xB8, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xAB, 0xCD}).text(),
            "2001:db8::abcd");
}

TEST(EndpointAddress, OfVersion4InVersion6IsVersion4) {
  const Address address(Bytes{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF, 203, 0, 113, 9});
  EXPECT_FALSE(address.isV6());
  EXPECT_EQ(address.text(), "203.0.113.9");
}

TEST(EndpointAddress, ThatOnlyAlmostIsVersion4StaysVersion6) {
  const Address address(Bytes{0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0xFF, 0xFF, 203, 0, 113, 9});
  EXPECT_TRUE(address.isV6());
  EXPECT_EQ(address.text(), "::1:ffff:cb00:7109");
}

TEST(EndpointAddress, OfAnotherLengthIsRefused) {
  for (const std::size_t length : {0, 3, 5, 15, 17}) {
    EXPECT_THROW(Address(Bytes(length)), std::invalid_argument) << length;
  }
}

TEST(EndpointAddress, IsReadFromBothForms) {
  for (const char* text : {"0.0.0.0", "198.51.100.255", "::", "::1", "2001:db8:1::5"}) {
    EXPECT_EQ(parsed(text).text(), text);
  }
}

TEST(EndpointAddress, IsNotReadFromOtherTexts) {
  using std::string_view_literals::operator""sv;
  for (const std::string_view text : {""sv, "localhost"sv, "1.2.3"sv, "1.2.3.256"sv, " 1.2.3.4"sv,
                                      "1.2.3.4 "sv, "[::1]"sv, "fe80::1%lo"sv, "1.2.3.4\0"sv}) {
    EXPECT_EQ(Address::parse(text), std::nullopt) << text;
  }
}

TEST(EndpointAddress, OfVersion4IsAHouseholdByItself) {
  EXPECT_EQ(parsed("192.0.2.1").household(), parsed("192.0.2.1"));
  EXPECT_NE(parsed("192.0.2.1").household(), parsed("192.0.2.2").household());
}

TEST(EndpointAddress, OfVersion6SharesAHouseholdWithItsNetwork) {
  EXPECT_EQ(parsed("2001:db8:0:1::1").household(),
            parsed("2001:db8:0:1:ffff:ffff:ffff:ffff").household());
}

TEST(EndpointAddress, OfTheNextNetworkIsAnotherHousehold) {
  EXPECT_NE(parsed("2001:db8:0:1::1").household(), parsed("2001:db8:0:2::1").household());
}

TEST(EndpointAddress, OfVersion4IsNoneOfVersion6WithTheSameBytes) {
  EXPECT_NE(parsed("32.1.13.184"), parsed("2001:db8::"));
}

}  // namespace
}  // namespace veltrin::endpoint
