// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/linux_files.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <dirent.h>
#include <filesystem>
#include <pwd.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "platform/portable/byte_file.h"
#include "platform/portable/file_failure.h"
#include "platform/portable/file_names.h"
#include "platform/portable/own_folder.h"
#include "platform/portable/regular_file.h"
#include "platform/portable/replacing_stream.h"
#include "text/statement.h"
#include "text/strings.h"

namespace veltrin {
namespace {

// Mode of folders made for the user (the XDG base directories).
constexpr mode_t kUserOnly = 0700;

bool isThere(const std::string& path) { return access(path.c_str(), F_OK) == 0; }

std::string withSlashes(std::string_view path) {
  std::string result(path);
  std::replace(result.begin(), result.end(), '\\', '/');
  return result;
}

// The entry of `folder` that differs from `name` in case only, the first of the
// alphabet; `name` itself when there is none.
std::string entryOf(const std::string& folder, const std::string& name) {
  std::string found;
  DIR* const entries = opendir(folder.c_str());
  if (entries == nullptr) return name;
  while (const dirent* entry = readdir(entries)) {
    const std::string candidate = entry->d_name;
    if (!equalIgnoringCase(candidate, name)) continue;
    if (found.empty() || candidate < found) found = candidate;
  }
  closedir(entries);
  return found.empty() ? name : found;
}

// The path `rest`, of either kind of slash, below `folder`, in the case in which
// it stands on the disk.
std::string below(const std::string& folder, std::string_view rest) {
  std::string path = folder;
  while (!rest.empty()) {
    const auto end = rest.find_first_of("\\/");
    const std::string name(rest.substr(0, end));
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    if (name.empty()) continue;
    const std::string folderHere = path;
    path.append("/").append(name);
    if (!isThere(path)) path = folderHere + "/" + entryOf(folderHere, name);
  }
  return path;
}

std::string withoutSlashAtEnd(std::string folder) {
  while (folder.size() > 1 && folder.back() == '/') folder.pop_back();
  return folder;
}

// The user's home folder, from the environment or else the user database.
std::string homeFolder() {
  const char* home = std::getenv("HOME");
  if (home != nullptr && *home == '/') return home;
  passwd entry{};
  passwd* found = nullptr;
  std::array<char, 16384> strings{};
  getpwuid_r(getuid(), &entry, strings.data(), strings.size(), &found);
  return found != nullptr ? found->pw_dir : "/";
}

std::string dataHome() {
  const char* variable = std::getenv("XDG_DATA_HOME");
  if (variable != nullptr && *variable == '/') return variable;
  return homeFolder() + "/.local/share";
}

// Makes `folder` and whatever is missing above it. What cannot be made shows
// when a file is to be written there.
void makeFolders(const std::string& folder) {
  for (auto end = folder.find('/', 1);; end = folder.find('/', end + 1)) {
    mkdir(folder.substr(0, end).c_str(), kUserOnly);
    if (end == std::string::npos) return;
  }
}

}  // namespace

LinuxFiles::Folders LinuxFiles::defaultFolders() {
  Folders folders;
  folders.data = withoutSlashAtEnd(dataHome()) + "/veltrin";
  makeFolders(folders.data + "/Files");
  std::error_code ignored;
  const auto executable = std::filesystem::read_symlink("/proc/self/exe", ignored);
  folders.share = executable.parent_path().parent_path() / "share" / "veltrin";
  return folders;
}

LinuxFiles::LinuxFiles(Folders folders)
    : folders_{withoutSlashAtEnd(std::move(folders.data)),
               withoutSlashAtEnd(std::move(folders.share))} {}

std::string LinuxFiles::programFolder() const { return folders_.data; }

std::string LinuxFiles::native(const std::string& path) const {
  std::string file = own(path);
  if (isThere(file) || !isOwn(path)) return file;
  std::string shared = below(folders_.share, std::string_view(path).substr(folders_.data.size()));
  return isThere(shared) ? shared : file;
}

std::string LinuxFiles::pathToWrite(const std::string& path) const {
  std::string file = own(path);
  const bool leadsOut = isOwn(path) && isThere(folders_.data) && !staysBelow(folders_.data, file);
  return leadsOut ? std::string() : file;
}

std::string LinuxFiles::requirePathToWrite(const std::string& path) const {
  std::string file = pathToWrite(path);
  if (file.empty()) failFile(std::make_error_code(std::errc::permission_denied));
  return file;
}

bool LinuxFiles::exists(const std::string& path) const {
  if (path.find('\0') != std::string::npos) return false;
  return isThere(isOwn(path) ? native(path) : path);
}

void LinuxFiles::CreateFolder(const std::string& path) {
  if (mkdir(requirePathToWrite(path).c_str(), kUserOnly) != 0) {
    throw StatementFailed("The folder cannot be made: " + path, kPathNotFound);
  }
}

std::unique_ptr<TextStream> LinuxFiles::OpenTextFile(const std::string& folder,
                                                     const std::string& name, FileMode mode,
                                                     bool create) {
  requireFileName(folder, name);
  return openReplacing(requirePathToWrite(folder + name), mode, create);
}

std::unique_ptr<TextStream> LinuxFiles::openOutput(const std::string& path) {
  return openReplacing(requirePathToWrite(path), FileMode::Writing, true);
}

std::string LinuxFiles::readText(const std::string& path) const {
  return readRegularFile(native(path));
}

std::unique_ptr<ByteStream> LinuxFiles::openBinary(const std::string& path) {
  return openInPlace(requirePathToWrite(path));
}

// A link is deleted itself, so only the folder in which it lies has to stay.
void LinuxFiles::Kill(const std::string& path) {
  const std::string file = own(path);
  const std::string folder = file.substr(0, file.rfind('/') + 1);
  const bool leadsOut = isOwn(path) && isThere(folder) && !staysBelow(folders_.data, folder);
  if (leadsOut) failFile(std::make_error_code(std::errc::permission_denied));
  deleteFile(file);
}

bool LinuxFiles::isOwn(std::string_view path) const {
  if (!path.starts_with(folders_.data)) return false;
  path.remove_prefix(folders_.data.size());
  return path.empty() || path.front() == '\\' || path.front() == '/';
}

std::string LinuxFiles::own(std::string_view path) const {
  if (!isOwn(path)) return withSlashes(path);
  return below(folders_.data, path.substr(folders_.data.size()));
}

}  // namespace veltrin
