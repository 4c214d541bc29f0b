// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portable/replacing_stream.h"

#include <cerrno>
#include <cstdio>
#include <system_error>
#include <utility>

#include "platform/portable/atomic_file.h"
#include "platform/portable/file_failure.h"
#include "text/statement.h"

#ifdef _WIN32
#include <io.h>

#include "platform/windows/code_page.h"
#endif

namespace veltrin {
namespace {

// Number of a failure of files, as users of Basic know it.
constexpr int kBadFileMode = 54;

void throwOn(std::error_code error) {
  if (error) failFile(error);
}

// Whether there is a file that may be written; false when it is missing.
bool writableFileExists(const std::string& path) {
#ifdef _WIN32
  // To open a file that is marked read-only can succeed for an administrator.
  constexpr int kForWriting = 2;
  const std::wstring name = toWide(path);
  const bool marked = _waccess(name.c_str(), kForWriting) != 0;
  std::FILE* const file = marked ? nullptr : _wfopen(name.c_str(), L"r+b");
#else
  std::FILE* const file = std::fopen(path.c_str(), "r+be");
#endif
  if (file == nullptr && errno == ENOENT) return false;
  if (file == nullptr) failFile({errno, std::generic_category()});
  std::fclose(file);
  return true;
}

class ReplacingStream : public TextStream {
 public:
  ReplacingStream(std::string path, std::string content, TextEncoder encode)
      : path_(std::move(path)), content_(std::move(content)), encode_(std::move(encode)) {}

  ~ReplacingStream() override {
    skip([this] { finish(); });
  }
  ReplacingStream(const ReplacingStream&) = delete;
  ReplacingStream& operator=(const ReplacingStream&) = delete;

  void Write(const std::string& text) override {
    if (closed_) throw StatementFailed("Bad file mode", kBadFileMode);
    content_ += encode_ ? encode_(text) : text;
  }

  void Close() override { finish(); }

 private:
  // Only the first time: what could not be written is dropped.
  void finish() {
    if (closed_) return;
    closed_ = true;
    throwOn(replaceFile(path_, content_));
  }

  std::string path_;
  std::string content_;
  TextEncoder encode_;
  bool closed_ = false;
};

}  // namespace

std::unique_ptr<TextStream> openReplacing(const std::string& path, FileMode mode, bool create,
                                          TextEncoder encode) {
  if (mode == FileMode::Reading) throw StatementFailed("Bad file mode", kBadFileMode);
  const bool exists = writableFileExists(path);
  if (!exists && !create) throw StatementFailed("File not found", kFileNotFound);
  if (!exists) throwOn(replaceFile(path, {}));
  std::string content;
  if (mode == FileMode::Appending) throwOn(readWholeFile(path, content));
  return std::make_unique<ReplacingStream>(path, std::move(content), std::move(encode));
}

}  // namespace veltrin
