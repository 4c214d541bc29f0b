// SPDX-License-Identifier: GPL-3.0-or-later
// Where a console tool's lines go.
#pragma once

#include <string_view>

namespace veltrin {

class Output {
 public:
  virtual ~Output() = default;

  // Writes a text at once and as one piece. False when nobody reads any more;
  // a tool then ends without another word.
  virtual bool write(std::string_view text) = 0;

  // Gives a reader that is at work a moment to take what was written so far, so
  // that the next text reaches it as a piece of its own.
  virtual void letReaderCatchUp() = 0;
};

// An open file: each text is one write to it. Does not close it.
class FileOutput : public Output {
 public:
  explicit FileOutput(int file) : file_(file) {}

  bool write(std::string_view text) override;

  // Waits until a pipe is empty, about 50 ms at most; with any other file it does
  // not wait at all.
  void letReaderCatchUp() override;

 private:
  int file_;
};

}  // namespace veltrin
