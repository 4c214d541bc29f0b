#include "text/strings.h"

#include <algorithm>

#include "text/statement.h"

namespace veltrin {
namespace {

char folded(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

void requireNotNegative(std::int64_t length) {
  if (length < 0) throw StatementFailed("Invalid length of a text", kInvalidProcedureCall);
}

void requirePosition(std::int64_t start) {
  if (start < 1) throw StatementFailed("Invalid position in a text", kInvalidProcedureCall);
}

}  // namespace

std::string Mid(std::string_view text, std::int64_t start) { return Mid(text, start, Len(text)); }

std::string Mid(std::string_view text, std::int64_t start, std::int64_t length) {
  requirePosition(start);
  requireNotNegative(length);
  if (start > Len(text)) return {};
  return std::string(
      text.substr(static_cast<std::size_t>(start - 1), static_cast<std::size_t>(length)));
}

std::string Left(std::string_view text, std::int64_t length) {
  requireNotNegative(length);
  return std::string(text.substr(0, static_cast<std::size_t>(length)));
}

std::string Right(std::string_view text, std::int64_t length) {
  requireNotNegative(length);
  const auto kept = std::min(static_cast<std::size_t>(length), text.size());
  return std::string(text.substr(text.size() - kept));
}

std::int64_t InStr(std::int64_t start, std::string_view text, std::string_view wanted,
                   Compare compare) {
  requirePosition(start);
  if (start > Len(text)) return 0;
  const auto same = [compare](char left, char right) {
    return compare == Compare::Exact ? left == right : folded(left) == folded(right);
  };
  const auto found =
      std::search(text.begin() + (start - 1), text.end(), wanted.begin(), wanted.end(), same);
  if (found == text.end() && !wanted.empty()) return 0;
  return found - text.begin() + 1;
}

std::int64_t Len(std::string_view text) { return static_cast<std::int64_t>(text.size()); }

std::string Trim(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

std::string LCase(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(), folded);
  return lower;
}

bool equalIgnoringCase(std::string_view left, std::string_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char a, char b) { return folded(a) == folded(b); });
}

}  // namespace veltrin
