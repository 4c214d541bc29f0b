// SPDX-License-Identifier: GPL-3.0-or-later
// Facts about the machine, asked for in the query language of WMI.
#pragma once

#include <concepts>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "text/loose.h"
#include "text/statement.h"
#include "text/strings.h"

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
  requires(std::constructible_from<Loose, Value> && !std::same_as<Value, bool> &&
           !std::same_as<Value, Loose>) WmiValue(Value value)
      : value_(Loose(std::move(value))) {}

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

// Orders the names of properties, which the service takes for the same in any case.
struct WmiNameOrder {
  bool operator()(const std::string& left, const std::string& right) const {
    return LCase(left) < LCase(right);
  }
};

// One object of an answer: its properties by name.
class WmiObject {
 public:
  std::map<std::string, WmiValue, WmiNameOrder> properties;

  // Throws StatementFailed for a property that cannot be read.
  const WmiValue& value(const std::string& name) const {
    const auto found = properties.find(name);
    if (found == properties.end()) {
      throw StatementFailed("No such property", kInvalidProcedureCall);
    }
    return found->second;
  }
};

// The objects of an answer, handed over one by one as the service finds them. What nobody
// takes is not looked for.
class WmiObjects {
 public:
  virtual ~WmiObjects() = default;

  // The next object, or nothing behind the last; the service may take its time. Throws
  // StatementFailed when it fails on the way, and is not to be asked again then.
  virtual std::optional<WmiObject> next() = 0;
};

// Flags of ExecQuery: the call does not wait for the answer, and nobody goes back in it.
inline constexpr std::int32_t kWmiReturnImmediately = 16;
inline constexpr std::int32_t kWmiForwardOnly = 32;

// A connection to the service of one machine.
class WmiService {
 public:
  virtual ~WmiService() = default;

  // The answer to a query ("Select * from Win32_PhysicalMemory"), which may outlive the
  // connection. Without flags the service takes its own. Throws StatementFailed for a query
  // that the service refuses at once; one that it refuses later fails in the first object.
  virtual std::unique_ptr<WmiObjects> ExecQuery(const std::string& query,
                                                std::optional<std::int32_t> flags) = 0;
};

class Wmi {
 public:
  virtual ~Wmi() = default;

  // GetObject of a moniker ("winmgmts:\\NAME\root\cimv2"). Throws StatementFailed when the
  // service of that machine does not answer.
  virtual std::unique_ptr<WmiService> connect(const std::string& moniker) = 0;
};

}  // namespace veltrin
