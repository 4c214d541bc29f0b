// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/linux_shell.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/linux/programs.h"
#include "platform/portable/command_limits.h"
#include "platform/portable/command_line.h"
#include "text/statement.h"
#include "text/strings.h"

namespace veltrin {
namespace {

constexpr const char* kOpener = "xdg-open";

bool isBlank(char c) { return c == ' ' || c == '\t'; }

bool holdsNul(std::string_view text) { return text.find('\0') != std::string_view::npos; }

// Whether a file has that name, in any case and folder.
bool isNamed(std::string_view file, std::string_view name) {
  const auto folder = file.find_last_of("/\\");
  if (folder != std::string_view::npos) file.remove_prefix(folder + 1);
  return equalIgnoringCase(file, name);
}

bool isBrowser(std::string_view file) { return isNamed(file, "iexplore.exe"); }
bool isNotepad(std::string_view file) { return isNamed(file, "notepad.exe"); }

// Whether a text is an address that may be handed to another program.
bool isAddress(std::string_view text) {
  constexpr std::array<std::string_view, 3> kSchemes = {"http://", "https://", "file://"};
  const bool printable = std::none_of(text.begin(), text.end(), [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte <= ' ' || byte == 0x7F;
  });
  return printable && std::any_of(kSchemes.begin(), kSchemes.end(), [&](std::string_view scheme) {
           return text.size() > scheme.size() &&
                  equalIgnoringCase(text.substr(0, scheme.size()), scheme);
         });
}

// The words of what follows a program in a command line.
std::vector<std::string> wordsBehind(const std::string& program, const std::string& rest) {
  std::vector<std::string> words = splitCommandLine(" " + rest);
  words.front() = program;
  return words;
}

Started startDetached(const std::string& path, std::vector<std::string> arguments,
                      const std::string& folder) {
  Start what;
  what.path = path;
  what.arguments = std::move(arguments);
  what.folder = folder;
  what.ownSession = true;
  return startProgram(std::move(what));
}

std::string absolute(const std::string& path) {
  std::error_code failed;
  const auto whole = std::filesystem::absolute(path, failed);
  return failed ? std::string() : whole.string();
}

// Hands a page or a document over. False when the desktop has no opener.
bool open(const std::string& target) {
  const std::string opener = findInPath(kOpener);
  return !opener.empty() && startDetached(opener, {kOpener, target}, {}).process != 0;
}

bool openPage(const std::string& parameters) {
  const std::vector<std::string> words = wordsBehind({}, parameters);
  const auto page = std::find_if(words.begin(), words.end(), isAddress);
  return page != words.end() && open(*page);
}

}  // namespace

bool LinuxShell::execute(const std::string& verb, const std::string& file,
                         const std::string& parameters, const std::string& folder, int /*show*/) {
  if (!verb.empty() && !equalIgnoringCase(verb, "open")) return false;
  if (holdsNul(file) || holdsNul(parameters) || holdsNul(folder)) return false;
  if (isBrowser(file)) return openPage(parameters);
  if (isAddress(file)) return open(file);
  const std::string path = locate(file);
  if (path.empty()) return false;
  if (isExecutable(path)) {
    const std::string place = folder.empty() ? folder : files_.native(folder);
    const Started started = startDetached(path, wordsBehind(path, parameters), place);
    // Where every file counts as executable, a document shows itself by not being one.
    if (started.error != ENOEXEC) return started.process != 0;
  }
  return open(path);
}

void LinuxShell::run(const std::string& commandLine, int /*show*/) {
  if (!acceptableCommandLine(commandLine)) {
    throw StatementFailed("Invalid procedure call", kInvalidProcedureCall);
  }
  const std::string_view line = commandLine;
  if (line.front() == '"') {
    const auto end = std::min(line.find('"', 1), line.size());
    const std::string_view rest = line.substr(std::min(end + 1, line.size()));
    if (startPiece(std::string(line.substr(1, end - 1)), std::string(rest))) return;
    throw StatementFailed("File not found", kFileNotFound);
  }
  for (std::size_t end = 1; end <= line.size(); ++end) {
    const bool ends = (end == line.size() || isBlank(line[end])) && !isBlank(line[end - 1]);
    if (!ends) continue;
    if (startPiece(std::string(line.substr(0, end)), std::string(line.substr(end)))) return;
  }
  throw StatementFailed("File not found", kFileNotFound);
}

// Notepad takes all that follows it as one file, blanks and all.
bool LinuxShell::startPiece(const std::string& program, const std::string& rest) const {
  if (isBrowser(program)) return openPage(rest);
  if (isNotepad(program)) {
    const std::string document = locate(Trim(rest));
    return !document.empty() && open(document);
  }
  const std::string path = locate(program);
  if (path.empty() || !isExecutable(path)) return false;
  return startDetached(path, wordsBehind(program, rest), {}).process != 0;
}

// The whole path of a file that is there; empty when there is none.
std::string LinuxShell::locate(const std::string& file) const {
  if (file.empty()) return {};
  if (files_.exists(file)) return absolute(files_.native(file));
  if (file.find_first_of("/\\") != std::string::npos) return {};
  const std::string found = findInPath(file);
  return found.empty() ? found : absolute(found);
}

}  // namespace veltrin
