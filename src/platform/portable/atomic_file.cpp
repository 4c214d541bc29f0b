// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portable/atomic_file.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <memory>

#ifdef _WIN32
#include <windows.h>

#include "platform/windows/code_page.h"
#else
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace veltrin {
namespace {

#ifdef _WIN32
constexpr std::string_view kSeparators = "\\/";
#else
constexpr std::string_view kSeparators = "/";
#endif

// Other programs may own files of the chosen name; so many names are tried.
constexpr int kNameTries = 100;

std::error_code errorOf(int number) { return {number, std::generic_category()}; }

// The folder of a file with the separator behind it, empty for the current folder.
std::string folderOf(const std::string& path) {
  const auto separator = path.find_last_of(kSeparators);
  return separator == std::string::npos ? std::string() : path.substr(0, separator + 1);
}

// A name that this process has not used before.
std::string newName(const std::string& folder, unsigned long process) {
  static std::atomic<unsigned> count = 0;
  return folder + ".veltrin-" + std::to_string(process) + "-" + std::to_string(count++) + ".tmp";
}

}  // namespace

std::error_code readWholeFile(const std::string& path, std::string& content) {
  content.clear();
#ifdef _WIN32
  std::FILE* const opened = _wfopen(toWide(path).c_str(), L"rb");
#else
  std::FILE* const opened = std::fopen(path.c_str(), "rbe");
#endif
  if (opened == nullptr) return errorOf(errno);
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(opened, std::fclose);
  std::array<char, 65536> block;
  std::size_t count = 0;
  while ((count = std::fread(block.data(), 1, block.size(), file.get())) > 0) {
    content.append(block.data(), count);
  }
  return std::ferror(file.get()) != 0 ? errorOf(errno) : std::error_code();
}

#ifdef _WIN32
namespace {

std::error_code lastError() { return {static_cast<int>(GetLastError()), std::system_category()}; }

// The new file while it is being written. Destroying it takes it away again, unless
// it has been moved into its place.
class NewFile {
 public:
  NewFile() = default;
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;
  ~NewFile() {
    close();
    if (!name_.empty()) DeleteFileW(name_.c_str());
  }

  std::error_code create(const std::string& folder) {
    for (int tries = 0; tries < kNameTries; ++tries) {
      const std::wstring name = toWide(newName(folder, GetCurrentProcessId()));
      handle_ = CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                            FILE_ATTRIBUTE_NORMAL, nullptr);
      if (handle_ != INVALID_HANDLE_VALUE) {
        name_ = name;
        return {};
      }
      if (GetLastError() != ERROR_FILE_EXISTS) break;
    }
    return lastError();
  }

  std::error_code write(std::string_view content) {
    constexpr std::size_t kBlock = 1 << 20;
    while (!content.empty()) {
      DWORD written = 0;
      const auto count = static_cast<DWORD>(std::min(content.size(), kBlock));
      if (!WriteFile(handle_, content.data(), count, &written, nullptr)) return lastError();
      content.remove_prefix(written);
    }
    return FlushFileBuffers(handle_) ? std::error_code() : lastError();
  }

  std::error_code moveTo(const std::string& path) {
    close();
    if (!MoveFileExW(name_.c_str(), toWide(path).c_str(),
                     MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
      return lastError();
    }
    name_.clear();
    return {};
  }

 private:
  void close() {
    if (handle_ != INVALID_HANDLE_VALUE) CloseHandle(handle_);
    handle_ = INVALID_HANDLE_VALUE;
  }

  HANDLE handle_ = INVALID_HANDLE_VALUE;
  std::wstring name_;
};

// Whether the file at the path may be replaced: it is missing or an ordinary file
// that is not write-protected.
std::error_code checkReplaceable(const std::string& path) {
  const DWORD attributes = GetFileAttributesW(toWide(path).c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) return {};
  const bool refused = (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) != 0;
  return refused ? errorOf(EACCES) : std::error_code();
}

}  // namespace

std::error_code replaceFile(const std::string& path, std::string_view content) {
  if (const auto error = checkReplaceable(path)) return error;
  NewFile file;
  if (const auto error = file.create(folderOf(path))) return error;
  if (const auto error = file.write(content)) return error;
  return file.moveTo(path);
}

#else
namespace {

// Links in a row that are followed before they count as a circle.
constexpr int kLinkLimit = 40;

// Rights of a newly made file, less what the user's mask takes away.
constexpr mode_t kNewFileMode = 0666;

// The new file while it is being written. Destroying it takes it away again, unless
// it has been moved into its place.
class NewFile {
 public:
  NewFile() = default;
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;
  ~NewFile() {
    if (descriptor_ >= 0) ::close(descriptor_);
    if (!name_.empty()) ::unlink(name_.c_str());
  }

  std::error_code create(const std::string& folder) {
    for (int tries = 0; tries < kNameTries; ++tries) {
      const std::string name = newName(folder, static_cast<unsigned long>(::getpid()));
      descriptor_ = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kNewFileMode);
      if (descriptor_ >= 0) {
        name_ = name;
        return {};
      }
      if (errno != EEXIST) break;
    }
    return errorOf(errno);
  }

  // Takes over owner and mode of the file that is to be replaced. An owner that the
  // user may not set stays the user.
  std::error_code dressAs(const struct stat& old) {
    [[maybe_unused]] const int owned = ::fchown(descriptor_, old.st_uid, old.st_gid);
    return ::fchmod(descriptor_, old.st_mode & 07777) == 0 ? std::error_code() : errorOf(errno);
  }

  std::error_code write(std::string_view content) {
    while (!content.empty()) {
      const ssize_t written = ::write(descriptor_, content.data(), content.size());
      if (written < 0 && errno == EINTR) continue;
      if (written < 0) return errorOf(errno);
      content.remove_prefix(static_cast<std::size_t>(written));
    }
    return ::fsync(descriptor_) == 0 ? std::error_code() : errorOf(errno);
  }

  std::error_code moveTo(const std::string& path) {
    const int closed = ::close(descriptor_);
    descriptor_ = -1;
    if (closed != 0) return errorOf(errno);
    if (::rename(name_.c_str(), path.c_str()) != 0) return errorOf(errno);
    name_.clear();
    return {};
  }

 private:
  int descriptor_ = -1;
  std::string name_;
};

// Follows the links at `path` to the file that they lead to, which may be missing.
std::error_code followLinks(std::string& path) {
  for (int links = 0; links < kLinkLimit; ++links) {
    std::error_code error;
    const auto target = std::filesystem::read_symlink(path, error);
    if (error) return {};
    path = target.is_absolute() ? target.string() : folderOf(path) + target.string();
  }
  return errorOf(ELOOP);
}

// Brings the folder's new entry to the disk. The replacement has happened already;
// file systems that cannot do this are let be.
void syncFolder(const std::string& folder) {
  const int descriptor =
      ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  ::fsync(descriptor);
  ::close(descriptor);
}

}  // namespace

std::error_code replaceFile(const std::string& path, std::string_view content) {
  std::string target = path;
  if (const auto error = followLinks(target)) return error;

  struct stat old = {};
  const bool exists = ::stat(target.c_str(), &old) == 0;
  if (exists && S_ISDIR(old.st_mode)) return errorOf(EISDIR);
  if (exists && !S_ISREG(old.st_mode)) return errorOf(EINVAL);
  if (exists && ::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0) return errorOf(errno);

  const std::string folder = folderOf(target);
  NewFile file;
  if (const auto error = file.create(folder)) return error;
  if (exists) {
    if (const auto error = file.dressAs(old)) return error;
  }
  if (const auto error = file.write(content)) return error;
  if (const auto error = file.moveTo(target)) return error;
  syncFolder(folder);
  return {};
}
#endif

}  // namespace veltrin
