// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/windows_files.h"

#include <shlobj.h>
#include <utility>
#include <windows.h>

#include "platform/portable/byte_file.h"
#include "platform/portable/file_failure.h"
#include "platform/portable/file_names.h"
#include "platform/portable/own_folder.h"
#include "platform/portable/regular_file.h"
#include "platform/portable/replacing_stream.h"
#include "platform/windows/code_page.h"
#include "platform/windows/longest_system_path.h"
#include "text/statement.h"

namespace veltrin {
namespace {

bool isThere(const std::string& path) {
  return GetFileAttributesA(toAnsi(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

// The folder for what a program keeps for the user on this computer; empty where the user
// has none.
std::string localApplicationData() {
  PWSTR folder = nullptr;
  std::string found;
  if (SUCCEEDED(SHGetKnownFolderPath(FOLDERID_LocalAppData, 0, nullptr, &folder))) {
    found = fromWide(folder);
  }
  CoTaskMemFree(folder);
  return found;
}

}  // namespace

std::string WindowsFiles::executableFolder() {
  std::wstring path(kLongestSystemPath, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), kLongestSystemPath));
  const auto separator = path.find_last_of(L'\\');
  return fromWide(std::wstring_view(path).substr(0, separator));
}

WindowsFiles::Folders WindowsFiles::foldersOf(const std::string& installation,
                                              const std::string& userData) {
  if (userData.empty() || !isThere(installation + kForAllUsers)) return {installation, ""};
  const std::string data = userData + "\\Veltrin";
  // What cannot be made shows when a file is to be written there.
  CreateDirectoryW(toWide(data).c_str(), nullptr);
  CreateDirectoryW(toWide(data + "\\Files").c_str(), nullptr);
  return {data, installation};
}

WindowsFiles::WindowsFiles()
    : WindowsFiles(foldersOf(executableFolder(), localApplicationData())) {}

WindowsFiles::WindowsFiles(Folders folders) : folders_(std::move(folders)) {}

WindowsFiles::WindowsFiles(std::string programFolder)
    : WindowsFiles(Folders{std::move(programFolder), ""}) {}

std::string WindowsFiles::programFolder() const { return folders_.data; }

bool WindowsFiles::isOwn(const std::string& path) const {
  return path.starts_with(folders_.data + "\\");
}

bool WindowsFiles::mayWrite(const std::string& path) const {
  return !isOwn(path) || !isThere(folders_.data) || staysBelow(folders_.data + "\\", path);
}

void WindowsFiles::requireMayWrite(const std::string& path) const {
  if (!mayWrite(path)) failFile(std::make_error_code(std::errc::permission_denied));
}

std::string WindowsFiles::native(const std::string& path) const {
  if (folders_.share.empty() || !isOwn(path) || isThere(path)) return path;
  const std::string shared = folders_.share + path.substr(folders_.data.size());
  return isThere(shared) ? shared : path;
}

bool WindowsFiles::exists(const std::string& path) const {
  if (path.find('\0') != std::string::npos) return false;
  return isThere(native(path));
}

void WindowsFiles::CreateFolder(const std::string& path) {
  requireMayWrite(path);
  if (CreateDirectoryW(toWide(path).c_str(), nullptr) == FALSE) {
    throw StatementFailed("The folder cannot be made: " + path, kPathNotFound);
  }
}

std::unique_ptr<TextStream> WindowsFiles::OpenTextFile(const std::string& folder,
                                                       const std::string& name, FileMode mode,
                                                       bool create) {
  requireFileName(folder, name);
  requireMayWrite(folder + name);
  return openReplacing(folder + name, mode, create, toAnsi);
}

std::unique_ptr<TextStream> WindowsFiles::openOutput(const std::string& path) {
  requireMayWrite(path);
  return openReplacing(path, FileMode::Writing, true, toAnsi);
}

std::string WindowsFiles::readText(const std::string& path) const {
  return fromAnsi(readRegularFile(path));
}

std::unique_ptr<ByteStream> WindowsFiles::openBinary(const std::string& path) {
  requireMayWrite(path);
  return openInPlace(path);
}

// A link is deleted itself, so only the folder in which it lies has to stay.
void WindowsFiles::Kill(const std::string& path) {
  const std::string folder = path.substr(0, path.rfind('\\') + 1);
  if (isThere(folder)) requireMayWrite(folder);
  deleteFile(path);
}

}  // namespace veltrin
