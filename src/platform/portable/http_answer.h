// SPDX-License-Identifier: GPL-3.0-or-later
// The answer of a web server, read as it comes in.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace veltrin {

// Reads one answer of HTTP/1 to a GET (RFC 9112). Keeps no more of it than kMostHeadBytes:
// the body is handed on as it comes, packed or not.
class HttpAnswer {
 public:
  // Bytes of a head that never ends after which the answer has failed. Heads of interim
  // answers count, and fields behind a body are a head, too. Real ones have some hundreds;
  // servers that say a lot have some thousands.
  static constexpr std::size_t kMostHeadBytes = std::size_t{256} * 1024;

  // Handed the bytes of the body, in their order.
  using Body = std::function<void(std::string_view bytes)>;

  explicit HttpAnswer(Body body) : body_(std::move(body)) {}

  // Takes in what has come. Passes over what stands behind the answer. Throws what the body's
  // taker throws; the answer is then of no more use.
  void take(std::string_view bytes);

  // The server has ended the connection in good order, and what came before was taken in.
  // That is the end of a body without a length, and a failure wherever more had to come.
  void close();

  // Whether the status and the fields have come. An interim answer is passed over.
  bool hasHead() const { return hasHead_; }

  bool isWhole() const { return part_ == Part::Whole; }
  bool hasFailed() const { return part_ == Part::Failed; }

  // These are known once the head is. The status is a number of three digits.
  int status() const { return status_; }

  // Length of the body, as it was announced; -1 when none was, as for a chunked body.
  std::int64_t length() const { return isChunked_ ? -1 : length_; }

  // Where another answer stands; empty when the answer does not tell.
  const std::string& location() const { return location_; }

 private:
  enum class Part {
    Status,
    Fields,
    SizedBody,
    BodyToTheEnd,
    ChunkSize,
    ChunkBody,
    ChunkEnd,
    Trailer,
    Whole,
    Failed
  };

  bool hasEnded() const { return part_ == Part::Whole || part_ == Part::Failed; }
  bool isInBody() const;
  void takeBody(std::string_view& bytes);
  void takeLine(std::string_view& bytes);
  void readLine(std::string_view line);
  void readStatus(std::string_view line);
  void readField(std::string_view line);
  void readKnownField();
  void readLength(std::string_view value);
  void readChunkSize(std::string_view line);
  void endHead();
  void beginBody();
  void fail() { part_ = Part::Failed; }

  Body body_;
  Part part_ = Part::Status;
  std::string line_;           // what has come of one
  std::string field_;          // the last one, which may go on in the next line
  std::size_t headBytes_ = 0;  // that were taken in since the last one of a body
  bool hasHead_ = false;
  int status_ = 0;
  std::int64_t length_ = -1;
  std::string location_;
  bool isCoded_ = false;    // has a transfer coding, which is why a length means nothing
  bool isChunked_ = false;  // and this one is the last of them
  std::int64_t left_ = 0;   // bytes of the body, or of the chunk, that are still to come
};

}  // namespace veltrin
