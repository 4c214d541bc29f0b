// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portable/http_answer.h"

#include <algorithm>
#include <charconv>
#include <system_error>

#include "text/strings.h"

namespace veltrin {
namespace {

constexpr std::string_view kVersion = "HTTP/1.";
constexpr std::size_t kStatusLine = std::string_view("HTTP/1.1 200").size();

// RFC 9110, sections 15.2 to 15.4.
constexpr int kSwitchingProtocols = 101;
constexpr int kFirstFinal = 200;
constexpr int kNoContent = 204;
constexpr int kNotModified = 304;

bool isDigit(char character) { return character >= '0' && character <= '9'; }
bool isBlank(char character) { return character == ' ' || character == '\t'; }

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  return text;
}

// The number that a text begins with, and what stands behind it; -1 for none and for one
// that is too large.
std::int64_t numberAt(std::string_view& text, int base) {
  // A sign is none of it.
  if (text.empty() || text.front() == '-') return -1;
  std::int64_t number = -1;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
  if (error != std::errc()) return -1;
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return number;
}

}  // namespace

void HttpAnswer::take(std::string_view bytes) {
  while (!bytes.empty() && !hasEnded()) {
    if (isInBody()) {
      takeBody(bytes);
    } else {
      takeLine(bytes);
    }
  }
}

void HttpAnswer::close() {
  if (part_ == Part::BodyToTheEnd) {
    part_ = Part::Whole;
  } else if (!hasEnded()) {
    fail();
  }
}

bool HttpAnswer::isInBody() const {
  return part_ == Part::SizedBody || part_ == Part::BodyToTheEnd || part_ == Part::ChunkBody;
}

void HttpAnswer::takeBody(std::string_view& bytes) {
  std::string_view here = bytes;
  if (part_ != Part::BodyToTheEnd) {
    here = here.substr(
        0, static_cast<std::size_t>(std::min(left_, static_cast<std::int64_t>(here.size()))));
    left_ -= static_cast<std::int64_t>(here.size());
    if (left_ == 0) part_ = part_ == Part::SizedBody ? Part::Whole : Part::ChunkEnd;
  }
  headBytes_ = 0;
  bytes.remove_prefix(here.size());
  body_(here);
}

// Takes bytes to the end of a line, which is LF, with or without a CR before it (RFC 9112,
// section 2.2).
void HttpAnswer::takeLine(std::string_view& bytes) {
  const std::size_t end = bytes.find('\n');
  const std::size_t taken = end == std::string_view::npos ? bytes.size() : end + 1;
  headBytes_ += taken;
  if (headBytes_ > kMostHeadBytes) return fail();
  line_.append(bytes.substr(0, taken));
  bytes.remove_prefix(taken);

  // Whoever speaks another language may never end a line.
  const auto known = std::min(line_.size(), kVersion.size());
  if (part_ == Part::Status && !kVersion.starts_with(line_.substr(0, known))) return fail();
  if (end == std::string_view::npos) return;

  std::string line = std::move(line_);
  line_.clear();
  line.pop_back();
  if (line.ends_with('\r')) line.pop_back();
  readLine(line);
}

void HttpAnswer::readLine(std::string_view line) {
  switch (part_) {
    case Part::Status:
      return readStatus(line);
    case Part::Fields:
      return readField(line);
    case Part::ChunkSize:
      return readChunkSize(line);
    case Part::ChunkEnd:
      part_ = line.empty() ? Part::ChunkSize : Part::Failed;
      return;
    case Part::Trailer:
      if (line.empty()) part_ = Part::Whole;
      return;
    default:
      return;
  }
}

// Such as "HTTP/1.1 200 OK", of which the last part is for people.
void HttpAnswer::readStatus(std::string_view line) {
  const bool isOne = line.size() >= kStatusLine && isDigit(line[7]) && line[8] == ' ' &&
                     line[9] != '0' && isDigit(line[9]) && isDigit(line[10]) && isDigit(line[11]) &&
                     (line.size() == kStatusLine || line[12] == ' ');
  if (!isOne) return fail();
  status_ = (line[9] - '0') * 100 + (line[10] - '0') * 10 + (line[11] - '0');
  part_ = Part::Fields;
}

// A line that begins with a blank belongs to the field before it (RFC 9112, section 5.2).
void HttpAnswer::readField(std::string_view line) {
  if (!line.empty() && isBlank(line.front())) {
    field_.append(line);
    return;
  }
  readKnownField();
  field_ = line;
  if (part_ == Part::Fields && line.empty()) endHead();
}

void HttpAnswer::readKnownField() {
  const std::size_t colon = field_.find(':');
  if (colon == std::string::npos) return;
  const std::string_view name = std::string_view(field_).substr(0, colon);
  const std::string_view value = trimmed(std::string_view(field_).substr(colon + 1));
  if (equalIgnoringCase(name, "Content-Length")) {
    readLength(value);
  } else if (equalIgnoringCase(name, "Location")) {
    location_ = value;
  } else if (equalIgnoringCase(name, "Transfer-Encoding")) {
    const std::size_t comma = value.rfind(',');
    const std::string_view last =
        comma == std::string_view::npos ? value : trimmed(value.substr(comma + 1));
    isCoded_ = true;
    isChunked_ = equalIgnoringCase(last, "chunked");
  }
}

// Nobody can tell where a body of two lengths ends (RFC 9112, section 6.3).
void HttpAnswer::readLength(std::string_view value) {
  const std::int64_t length = numberAt(value, 10);
  if (length < 0 || !value.empty() || (length_ >= 0 && length_ != length)) return fail();
  length_ = length;
}

// What an interim answer told is of no use to anybody.
void HttpAnswer::endHead() {
  if (status_ == kSwitchingProtocols) return fail();
  if (status_ < kFirstFinal) {
    length_ = -1;
    location_.clear();
    isCoded_ = isChunked_ = false;
    part_ = Part::Status;
    return;
  }
  hasHead_ = true;
  beginBody();
}

void HttpAnswer::beginBody() {
  if (status_ == kNoContent || status_ == kNotModified) {
    part_ = Part::Whole;
  } else if (isChunked_) {
    headBytes_ = 0;
    part_ = Part::ChunkSize;
  } else if (isCoded_ || length_ < 0) {
    length_ = -1;
    part_ = Part::BodyToTheEnd;
  } else {
    left_ = length_;
    part_ = left_ == 0 ? Part::Whole : Part::SizedBody;
  }
}

// Such as "1a0;name=value", of which the part behind the semicolon says nothing that
// anybody knows. The last chunk has no bytes.
void HttpAnswer::readChunkSize(std::string_view line) {
  left_ = numberAt(line, 16);
  line = trimmed(line);
  if (left_ < 0 || (!line.empty() && line.front() != ';')) return fail();
  part_ = left_ == 0 ? Part::Trailer : Part::ChunkBody;
}

}  // namespace veltrin
