// Facts about the machine, asked for in the query language of WMI.
#pragma once

#include <concepts>
#include <map>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "text/loose.h"
#include "text/statement.h"

namespace veltrin {

// The value of a property: null, a number or a text, or an array of those. A number of 64
// bits is a text, and so is a flag, "True" or "False".
class WmiValue {
 public:
  WmiValue() = default;  // null
  WmiValue(bool flag) : value_(Loose(flag ? "True" : "False")) {}
  WmiValue(Loose value) : value_(std::move(value)) {}
  WmiValue(std::vector<Loose> elements) : value_(std::move(elements)) {}
  template <class Value>
  requires(std::constructible_from<Loose, const Value&> && !std::same_as<Value, bool> &&
           !std::same_as<Value, Loose> && !std::same_as<Value, WmiValue>)
      WmiValue(const Value& value)
      : value_(Loose(value)) {}

  bool isNull() const { return std::holds_alternative<std::monostate>(value_); }
  bool isArray() const { return std::holds_alternative<std::vector<Loose>>(value_); }

  // As a text, and as a number; null is the empty text, and 0. Throw StatementFailed for an
  // array, the second also for a text that is no number.
  std::string text() const { return single().text(); }
  double number() const { return single().number(); }

  // Of an array. Throws StatementFailed for anything else.
  const std::vector<Loose>& elements() const {
    const auto* elements = std::get_if<std::vector<Loose>>(&value_);
    if (elements == nullptr) throw StatementFailed("Type mismatch", kTypeMismatch);
    return *elements;
  }

  // Null and arrays equal nothing.
  bool equals(const Loose& other) const {
    const auto* value = std::get_if<Loose>(&value_);
    return value != nullptr && *value == other;
  }

 private:
  Loose single() const {
    if (isArray()) throw StatementFailed("Type mismatch", kTypeMismatch);
    return isNull() ? Loose() : std::get<Loose>(value_);
  }

  std::variant<std::monostate, Loose, std::vector<Loose>> value_;
};

// One object of an answer: its properties by name.
class WmiObject {
 public:
  std::map<std::string, WmiValue> properties;

  // Throws StatementFailed for a property that cannot be read.
  const WmiValue& value(const std::string& name) const {
    const auto found = properties.find(name);
    if (found == properties.end()) {
      throw StatementFailed("No such property", kInvalidProcedureCall);
    }
    return found->second;
  }
};

class Wmi {
 public:
  virtual ~Wmi() = default;

  // The objects that a query ("Select * from Win32_PhysicalMemory") finds. Throws
  // StatementFailed when the service does not answer it.
  virtual std::vector<WmiObject> ExecQuery(const std::string& query) = 0;
};

}  // namespace veltrin
