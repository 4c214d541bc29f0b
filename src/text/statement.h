// SPDX-License-Identifier: GPL-3.0-or-later
// Statements that may fail, and the rule by which most routines go on after one.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace veltrin {

// One statement could not be carried out: a text that is no number, a position
// outside a text, a file that cannot be opened. `number` and `source` tell which
// failure it was and who raised it; what() is the description.
class StatementFailed : public std::runtime_error {
 public:
  explicit StatementFailed(const std::string& description, int number = 5, std::string source = {})
      : std::runtime_error(description), number_(number), source_(std::move(source)) {}

  int number() const { return number_; }
  const std::string& source() const { return source_; }

 private:
  int number_;
  std::string source_;
};

// Numbers of the failures that the text rules raise, as users of Basic know them.
inline constexpr int kInvalidProcedureCall = 5;
inline constexpr int kOverflow = 6;
inline constexpr int kSubscriptOutOfRange = 9;
inline constexpr int kDivisionByZero = 11;
inline constexpr int kTypeMismatch = 13;
inline constexpr int kBadFileName = 52;
inline constexpr int kFileNotFound = 53;
inline constexpr int kDiskFull = 61;
inline constexpr int kPermissionDenied = 70;
inline constexpr int kPathNotFound = 76;

// Runs one statement; when it fails, execution goes on behind it.
// Returns whether the statement was carried out.
template <class Statement>
bool skip(Statement&& statement) {
  try {
    std::forward<Statement>(statement)();
    return true;
  } catch (const StatementFailed&) {
    return false;
  }
}

// Evaluates the condition of a test. A condition that fails counts as true:
// execution goes on with the next statement, which is the first of the body.
template <class Condition>
bool holds(Condition&& condition) {
  try {
    return std::forward<Condition>(condition)();
  } catch (const StatementFailed&) {
    return true;
  }
}

}  // namespace veltrin
