// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portable/byte_file.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <utility>

#include "platform/portable/file_failure.h"
#include "text/statement.h"

#ifdef _WIN32
#include <io.h>

#include "platform/windows/code_page.h"
#else
#include <unistd.h>
#endif

namespace veltrin {
namespace {

std::error_code lastError() { return {errno, std::generic_category()}; }

#ifdef _WIN32
std::filesystem::path nativePath(const std::string& path) { return toWide(path); }

// Mode of _waccess.
constexpr int kForWriting = 2;

// Null where the system refuses it, as for a missing file that is not to be made. A file
// that is marked as read-only stays as it is, whoever asks.
std::FILE* open(const std::string& path, bool make) {
  const std::wstring name = toWide(path);
  if (!make && _waccess(name.c_str(), kForWriting) != 0) return nullptr;
  return _wfopen(name.c_str(), make ? L"wb" : L"r+b");
}

bool unlinkFile(const std::string& path) { return _wunlink(toWide(path).c_str()) == 0; }
#else
std::filesystem::path nativePath(const std::string& path) { return path; }

// Null where the system refuses it, as for a missing file that is not to be made.
std::FILE* open(const std::string& path, bool make) {
  return std::fopen(path.c_str(), make ? "wbe" : "r+be");
}

bool unlinkFile(const std::string& path) { return unlink(path.c_str()) == 0; }
#endif

class ByteFile : public ByteStream {
 public:
  explicit ByteFile(std::FILE* file) : file_(file) { std::setvbuf(file_, nullptr, _IONBF, 0); }
  ~ByteFile() override {
    if (file_ != nullptr) std::fclose(file_);
  }
  ByteFile(const ByteFile&) = delete;
  ByteFile& operator=(const ByteFile&) = delete;

  void Put(std::string_view bytes) override {
    if (file_ == nullptr) throw StatementFailed("Bad file name or number", kBadFileName);
    if (std::fwrite(bytes.data(), 1, bytes.size(), file_) != bytes.size()) failFile(lastError());
  }

  void Close() override {
    if (file_ == nullptr) return;
    if (std::fclose(std::exchange(file_, nullptr)) != 0) failFile(lastError());
  }

 private:
  std::FILE* file_;
};

// The systems would take what stands before the NUL for the path.
bool hasNul(const std::string& path) { return path.find('\0') != std::string::npos; }

}  // namespace

std::unique_ptr<ByteStream> openInPlace(const std::string& path) {
  if (hasNul(path)) throw StatementFailed("Bad file name or number", kBadFileName);
  std::FILE* file = open(path, false);
  if (file == nullptr && errno == ENOENT) file = open(path, true);
  if (file == nullptr) failFile(lastError());
  return std::make_unique<ByteFile>(file);
}

void deleteFile(const std::string& path) {
  std::error_code ignored;
  const bool isNoFile = hasNul(path) || std::filesystem::is_directory(nativePath(path), ignored);
  if (!isNoFile && unlinkFile(path)) return;
  if (isNoFile || errno == ENOENT || errno == ENOTDIR) {
    throw StatementFailed("File not found", kFileNotFound);
  }
  failFile(lastError());
}

}  // namespace veltrin
