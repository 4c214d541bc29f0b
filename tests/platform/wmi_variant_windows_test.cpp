// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "platform/windows/wmi_variant.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A VARIANT that is cleared at its end.
class Variant {
 public:
  explicit Variant(VARTYPE type = VT_EMPTY) {
    VariantInit(&value_);
    V_VT(&value_) = type;
  }
  ~Variant() { VariantClear(&value_); }
  Variant(const Variant&) = delete;
  Variant& operator=(const Variant&) = delete;

  VARIANT* operator->() { return &value_; }
  VARIANT& operator*() { return value_; }

 private:
  VARIANT value_;
};

// The texts of the elements of a value.
std::vector<std::string> texts(const WmiValue& value) {
  std::vector<std::string> texts;
  for (const Loose& element : value.elements()) texts.push_back(element.text());
  return texts;
}

// A table of that type, from those elements.
template <class Type>
void fill(Variant& variant, VARTYPE type, const std::vector<Type>& elements, LONG first = 0) {
  SAFEARRAYBOUND bound{static_cast<ULONG>(elements.size()), first};
  SAFEARRAY* table = SafeArrayCreate(type, 1, &bound);
  ASSERT_NE(table, nullptr);
  void* places = nullptr;
  ASSERT_EQ(SafeArrayAccessData(table, &places), S_OK);
  std::copy(elements.begin(), elements.end(), static_cast<Type*>(places));
  SafeArrayUnaccessData(table);
  V_VT(&*variant) = VT_ARRAY | type;
  V_ARRAY(&*variant) = table;
}

TEST(WmiVariantTest, NullIsNull) { EXPECT_TRUE(wmiValueOf(*Variant(VT_NULL)).isNull()); }

TEST(WmiVariantTest, NothingIsNull) { EXPECT_TRUE(wmiValueOf(*Variant(VT_EMPTY)).isNull()); }

TEST(WmiVariantTest, AnObjectWithinAnObjectIsNull) {
  EXPECT_TRUE(wmiValueOf(*Variant(VT_UNKNOWN)).isNull());
}

TEST(WmiVariantTest, ADateIsNull) {
  Variant date(VT_DATE);
  V_DATE(&*date) = 45000.5;
  EXPECT_TRUE(wmiValueOf(*date).isNull());
}

TEST(WmiVariantTest, ACurrencyIsNull) {
  Variant currency(VT_CY);
  V_CY(&*currency).int64 = 12345;
  EXPECT_TRUE(wmiValueOf(*currency).isNull());
}

TEST(WmiVariantTest, ADecimalIsNull) {
  Variant decimal;
  ASSERT_EQ(VarDecFromI4(7, &V_DECIMAL(&*decimal)), S_OK);
  V_VT(&*decimal) = VT_DECIMAL;
  EXPECT_TRUE(wmiValueOf(*decimal).isNull());
}

TEST(WmiVariantTest, AReferenceToANumberIsNull) {
  LONG number = 7;
  Variant reference(VT_BYREF | VT_I4);
  V_I4REF(&*reference) = &number;
  EXPECT_TRUE(wmiValueOf(*reference).isNull());
}

TEST(WmiVariantTest, AFlagIsTrueOrFalse) {
  Variant flag(VT_BOOL);
  V_BOOL(&*flag) = VARIANT_TRUE;
  EXPECT_EQ(wmiValueOf(*flag).text(), "True");
  V_BOOL(&*flag) = VARIANT_FALSE;
  EXPECT_EQ(wmiValueOf(*flag).text(), "False");
}

TEST(WmiVariantTest, ANumberOf8BitsIsANumber) {
  Variant number(VT_UI1);
  V_UI1(&*number) = 200;
  EXPECT_EQ(wmiValueOf(*number).number(), 200);
  Variant withSign(VT_I1);
  V_I1(&*withSign) = static_cast<char>(-3);
  EXPECT_EQ(wmiValueOf(*withSign).number(), -3);
}

TEST(WmiVariantTest, ANumberOf16BitsIsANumber) {
  Variant number(VT_I2);
  V_I2(&*number) = -30000;
  EXPECT_EQ(wmiValueOf(*number).number(), -30000);
  Variant withoutSign(VT_UI2);
  V_UI2(&*withoutSign) = 60000;
  EXPECT_EQ(wmiValueOf(*withoutSign).number(), 60000);
}

TEST(WmiVariantTest, ANumberOf32BitsIsANumber) {
  Variant number(VT_I4);
  V_I4(&*number) = -2000000000;
  EXPECT_EQ(wmiValueOf(*number).number(), -2000000000);
  Variant withoutSign(VT_UI4);
  V_UI4(&*withoutSign) = 4000000000U;
  EXPECT_EQ(wmiValueOf(*withoutSign).number(), 4000000000);
}

TEST(WmiVariantTest, ANumberOf64BitsIsATextOfAllItsDigits) {
  Variant number(VT_I8);
  V_I8(&*number) = -9007199254740993;  // one more than a double can tell
  EXPECT_EQ(wmiValueOf(*number).text(), "-9007199254740993");
  Variant withoutSign(VT_UI8);
  V_UI8(&*withoutSign) = 18446744073709551615ULL;
  EXPECT_EQ(wmiValueOf(*withoutSign).text(), "18446744073709551615");
}

TEST(WmiVariantTest, ARealIsANumber) {
  Variant number(VT_R8);
  V_R8(&*number) = 2.25;
  EXPECT_EQ(wmiValueOf(*number).number(), 2.25);
}

TEST(WmiVariantTest, ARealOfSinglePrecisionHasTheDigitsThatItWasWrittenWith) {
  Variant number(VT_R4);
  V_R4(&*number) = 0.1F;
  EXPECT_EQ(wmiValueOf(*number).number(), 0.1);
}

TEST(WmiVariantTest, ATextIsUtf8) {
  Variant text(VT_BSTR);
  V_BSTR(&*text) = SysAllocString(L"Gr\u00F6\u00DFe \u65E5\u672C");
  EXPECT_EQ(wmiValueOf(*text).text(),
            "Gr\xC3\xB6\xC3\x9F"
            "e \xE6\x97\xA5\xE6\x9C\xAC");
}

TEST(WmiVariantTest, ATextThatIsNotThereIsEmptyAndNotNull) {
  Variant text(VT_BSTR);
  V_BSTR(&*text) = nullptr;
  EXPECT_FALSE(wmiValueOf(*text).isNull());
  EXPECT_EQ(wmiValueOf(*text).text(), "");
}

TEST(WmiVariantTest, ATextKeepsWhatStandsBehindANul) {
  Variant text(VT_BSTR);
  V_BSTR(&*text) = SysAllocStringLen(L"a\0b", 3);
  EXPECT_EQ(wmiValueOf(*text).text(), std::string("a\0b", 3));
}

TEST(WmiVariantTest, ATableOfNumbersIsItsElements) {
  Variant table;
  fill<LONG>(table, VT_I4, {3, -5, 7});
  EXPECT_THAT(texts(wmiValueOf(*table)), ElementsAre("3", "-5", "7"));
}

TEST(WmiVariantTest, ATableOfBytesIsItsElements) {
  Variant table;
  fill<BYTE>(table, VT_UI1, {0, 255});
  EXPECT_THAT(texts(wmiValueOf(*table)), ElementsAre("0", "255"));
}

TEST(WmiVariantTest, ATableOfFlagsIsItsElements) {
  Variant table;
  fill<VARIANT_BOOL>(table, VT_BOOL, {VARIANT_TRUE, VARIANT_FALSE});
  EXPECT_THAT(texts(wmiValueOf(*table)), ElementsAre("True", "False"));
}

TEST(WmiVariantTest, ATableOfTextsIsItsElements) {
  Variant table;
  fill<BSTR>(table, VT_BSTR, {SysAllocString(L"one"), nullptr, SysAllocString(L"three")});
  EXPECT_THAT(texts(wmiValueOf(*table)), ElementsAre("one", "", "three"));
}

TEST(WmiVariantTest, ATableMayBeginAtAnyNumber) {
  Variant table;
  fill<LONG>(table, VT_I4, {8, 9}, 5);
  EXPECT_THAT(texts(wmiValueOf(*table)), ElementsAre("8", "9"));
}

TEST(WmiVariantTest, ATableWithoutElementsIsATable) {
  Variant table;
  fill<LONG>(table, VT_I4, {});
  EXPECT_THAT(wmiValueOf(*table).elements(), IsEmpty());
}

TEST(WmiVariantTest, ATableOfObjectsIsNull) {
  Variant table;
  fill<IUnknown*>(table, VT_UNKNOWN, {nullptr, nullptr});
  EXPECT_TRUE(wmiValueOf(*table).isNull());
}

TEST(WmiVariantTest, ATableOfVariantsIsNull) {
  SAFEARRAYBOUND bound{2, 0};
  Variant table(VT_ARRAY | VT_VARIANT);
  V_ARRAY(&*table) = SafeArrayCreate(VT_VARIANT, 1, &bound);
  EXPECT_TRUE(wmiValueOf(*table).isNull());
}

TEST(WmiVariantTest, ATableOfDatesIsNull) {
  Variant table;
  fill<DATE>(table, VT_DATE, {45000.5, 45001});
  EXPECT_TRUE(wmiValueOf(*table).isNull());
}

TEST(WmiVariantTest, ATableWhoseElementsAreLargerThanAnyValueIsNullWhateverItsTypeSays) {
  SAFEARRAYBOUND bound{2, 0};
  Variant table(VT_ARRAY | VT_I4);
  V_ARRAY(&*table) = SafeArrayCreate(VT_DECIMAL, 1, &bound);
  ASSERT_NE(V_ARRAY(&*table), nullptr);
  EXPECT_TRUE(wmiValueOf(*table).isNull());
}

TEST(WmiVariantTest, ATableOfTwoDimensionsIsNull) {
  std::array<SAFEARRAYBOUND, 2> bounds{{{2, 0}, {2, 0}}};
  Variant table(VT_ARRAY | VT_I4);
  V_ARRAY(&*table) = SafeArrayCreate(VT_I4, 2, bounds.data());
  EXPECT_TRUE(wmiValueOf(*table).isNull());
}

TEST(WmiVariantTest, ATableThatIsNotThereIsNull) {
  Variant table(VT_ARRAY | VT_I4);
  V_ARRAY(&*table) = nullptr;
  EXPECT_TRUE(wmiValueOf(*table).isNull());
}

}  // namespace
}  // namespace veltrin
