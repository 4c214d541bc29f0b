// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/wmi_variant.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "platform/windows/code_page.h"

namespace veltrin {
namespace {

std::string textOf(const wchar_t* text) {
  if (text == nullptr) return {};  // how an empty text may be handed over
  return fromWide({text, SysStringLen(const_cast<BSTR>(text))});  // NOLINT: only read
}

// The number that its shortest text tells: 0.1 in single precision is 0.1, not
// 0.10000000149.
double doubleOf(float number) {
  std::array<char, 32> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
  double same = number;  // stays for what has no digits
  std::from_chars(text.data(), end, same);
  return same;
}

const char* flagText(VARIANT_BOOL flag) { return flag == VARIANT_FALSE ? "False" : "True"; }

// Nothing for null, and for what is no number, flag or text.
std::optional<Loose> looseOf(const VARIANT& variant) {
  switch (V_VT(&variant)) {
    case VT_BOOL:
      return Loose(flagText(V_BOOL(&variant)));
    case VT_I1:
      return Loose(static_cast<int>(static_cast<signed char>(V_I1(&variant))));
    case VT_UI1:
      return Loose(static_cast<int>(V_UI1(&variant)));
    case VT_I2:
      return Loose(V_I2(&variant));
    case VT_UI2:
      return Loose(V_UI2(&variant));
    case VT_I4:
      return Loose(V_I4(&variant));
    case VT_UI4:
      return Loose(V_UI4(&variant));
    case VT_I8:
      return Loose(std::to_string(V_I8(&variant)));
    case VT_UI8:
      return Loose(std::to_string(V_UI8(&variant)));
    case VT_R4:
      return Loose(doubleOf(V_R4(&variant)));
    case VT_R8:
      return Loose(V_R8(&variant));
    case VT_BSTR:
      return Loose(textOf(V_BSTR(&variant)));
    default:
      return std::nullopt;
  }
}

// In a VARIANT, of any value that is looked at.
constexpr UINT kMostBytes = sizeof(VARIANT::llVal);

// One element of a table, as a value of its own.
class Element {
 public:
  Element(SAFEARRAY& table, VARTYPE type, LONG index) {
    VariantInit(&value_);
    if (FAILED(SafeArrayGetElement(&table, &index, &V_BYREF(&value_)))) return;
    V_VT(&value_) = type;
  }
  ~Element() { VariantClear(&value_); }
  Element(const Element&) = delete;
  Element& operator=(const Element&) = delete;

  const VARIANT& value() const { return value_; }

 private:
  VARIANT value_;
};

WmiValue tableValueOf(SAFEARRAY* table, VARTYPE type) {
  LONG first = 0;
  LONG last = 0;
  // A table may be of another type than it is said to be.
  if (table == nullptr || SafeArrayGetDim(table) != 1 || SafeArrayGetElemsize(table) > kMostBytes ||
      FAILED(SafeArrayGetLBound(table, 1, &first)) || FAILED(SafeArrayGetUBound(table, 1, &last))) {
    return {};
  }
  std::vector<Loose> elements;
  for (LONG index = first; index <= last; ++index) {
    const Element element(*table, type, index);
    const std::optional<Loose> value = looseOf(element.value());
    if (!value) return {};
    elements.push_back(*value);
  }
  return elements;
}

// Whether an element fits where a value stands in a VARIANT; others are no tables of values.
bool isTableOfValues(VARTYPE type) {
  return (type & VT_ARRAY) != 0 && (type & VT_BYREF) == 0 && (type & VT_TYPEMASK) != VT_VARIANT &&
         (type & VT_TYPEMASK) != VT_RECORD && (type & VT_TYPEMASK) != VT_DECIMAL;
}

}  // namespace

WmiValue wmiValueOf(const VARIANT& variant) {
  const VARTYPE type = V_VT(&variant);
  if (isTableOfValues(type)) return tableValueOf(V_ARRAY(&variant), type & VT_TYPEMASK);
  const std::optional<Loose> value = looseOf(variant);
  return value ? WmiValue(*value) : WmiValue();
}

}  // namespace veltrin
