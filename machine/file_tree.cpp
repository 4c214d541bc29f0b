// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/file_tree.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "machine/fact_text.h"

namespace veltrin {
namespace {

// More links in a row than these are taken for a circle (MAXSYMLINKS in
// include/linux/namei.h).
constexpr int kMostLinks = 40;

// Read at once of a file that tells no size, as those of /proc do, and the least of any other.
constexpr std::size_t kPiece = 65536;
constexpr std::size_t kLeastPiece = 4096;

struct FolderCloser {
  void operator()(DIR* folder) const { closedir(folder); }
};

// A plain file that is open for reading. Neither a device nor a pipe in its place
// is waited for.
class OpenFile {
 public:
  explicit OpenFile(const std::string& path)
      : file_(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)) {
    struct stat kind {};
    plain_ = file_ >= 0 && fstat(file_, &kind) == 0 && S_ISREG(kind.st_mode);
    size_ = plain_ ? static_cast<std::size_t>(kind.st_size) : 0;
  }

  ~OpenFile() {
    if (file_ >= 0) {
      close(file_);
    }
  }

  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;

  bool plain() const { return plain_; }
  int number() const { return file_; }
  std::size_t size() const { return size_; }

 private:
  int file_;
  bool plain_ = false;
  std::size_t size_ = 0;
};

}  // namespace

MappedFile::MappedFile(const std::string& path) {
  const OpenFile file(path);
  if (file.size() == 0) {
    return;
  }
  void* start = mmap(nullptr, file.size(), PROT_READ, MAP_PRIVATE, file.number(), 0);
  if (start != MAP_FAILED) {
    bytes_ = {static_cast<const char*>(start), file.size()};
  }
}

MappedFile::~MappedFile() {
  if (!bytes_.empty()) {
    munmap(const_cast<char*>(bytes_.data()), bytes_.size());
  }
}

std::optional<std::string> FileTree::read(const std::string& path, std::size_t most) const {
  const OpenFile file(root_ + path);
  if (!file.plain()) {
    return std::nullopt;
  }
  std::string bytes;
  while (bytes.size() < most) {
    const std::size_t held = bytes.size();
    const std::size_t piece = file.size() == 0 ? kPiece : std::max(kLeastPiece, file.size() + 1);
    bytes.resize(held + std::min(piece, most - held));
    const ssize_t size = ::read(file.number(), bytes.data() + held, bytes.size() - held);
    bytes.resize(held + static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
    if (size < 0 && errno == EINTR) {
      continue;
    }
    if (size < 0) {
      return std::nullopt;
    }
    if (size == 0) {
      break;
    }
  }
  return bytes;
}

bool FileTree::readLines(const std::string& path,
                         const std::function<void(std::string_view line)>& take) const {
  const OpenFile file(root_ + path);
  std::string piece(kPiece, '\0');
  std::size_t held = 0;  // bytes of a line whose end is not read yet
  while (file.plain()) {
    const ssize_t size = ::read(file.number(), piece.data() + held, piece.size() - held);
    if (size < 0 && errno == EINTR) {
      continue;
    }
    if (size < 0) {
      return false;
    }
    const std::string_view bytes(piece.data(), held + static_cast<std::size_t>(size));
    const std::size_t end = bytes.rfind('\n');
    const bool whole = size == 0 || (end == std::string_view::npos && bytes.size() == kPiece);
    // Nothing is left of a file's last line, nor of one that fills the piece.
    const std::size_t ready = whole ? bytes.size() : end == std::string_view::npos ? 0 : end + 1;
    LineReader lines(bytes.substr(0, ready));
    for (std::string_view line; lines.next(line);) {
      take(line);
    }
    if (size == 0) {
      return true;
    }
    held = bytes.size() - ready;
    std::memmove(piece.data(), bytes.data() + ready, held);
  }
  return false;
}

std::string FileTree::line(const std::string& path) const {
  const std::string all = text(path);
  std::string_view first;
  LineReader(all).next(first);
  return std::string(trimmed(first));
}

std::vector<std::string> FileTree::names(const std::string& folder) const {
  const std::unique_ptr<DIR, FolderCloser> open(opendir((root_ + folder).c_str()));
  std::vector<std::string> names;
  if (!open) {
    return names;
  }
  while (const dirent* entry = readdir(open.get())) {
    const std::string name = entry->d_name;
    if (name != "." && name != "..") {
      names.push_back(name);
    }
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string FileTree::linkTarget(const std::string& path) const {
  std::array<char, PATH_MAX> target{};
  const ssize_t size = readlink((root_ + path).c_str(), target.data(), target.size());
  return std::string(target.data(), static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
}

std::string FileTree::resolved(const std::string& path) const {
  std::string place = path;
  for (int links = 0; links <= kMostLinks; ++links) {
    const std::string target = linkTarget(place);
    if (target.empty()) {
      return place;
    }
    place.resize(target.starts_with('/') ? 0 : place.rfind('/') + 1);
    place += target;
  }
  return "";
}

std::optional<std::int64_t> FileTree::written(const std::string& path) const {
  struct stat facts {};
  if (stat((root_ + path).c_str(), &facts) != 0) {
    return std::nullopt;
  }
  return facts.st_mtim.tv_sec;
}

}  // namespace veltrin
