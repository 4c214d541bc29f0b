// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/fsutil.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "console/fsutil_facts.h"
#include "machine/fact_text.h"

namespace veltrin {
namespace {

constexpr std::string_view kUsage =
    "\r\n"
    "Usage: fsutil dirty query place\r\n"
    "       fsutil fsinfo volumeinfo | statistics | ntfsinfo place\r\n"
    "       fsutil repair query place\r\n"
    "       fsutil volume diskfree place\r\n"
    "\r\n"
    "Tells facts of a drive and of the file system on it. It changes nothing and\r\n"
    "needs no privilege; a fact that is not known is left out.\r\n"
    "\r\n"
    "Commands:\r\n"
    "    dirty query          Whether the file system has come upon errors that\r\n"
    "                         were not repaired yet. Only ext2, ext3, ext4 and the\r\n"
    "                         kernel's NTFS tell.\r\n"
    "    fsinfo volumeinfo    The volume's name, serial number, file system,\r\n"
    "                         device and folder.\r\n"
    "    fsinfo statistics    What was read and written since the system started,\r\n"
    "                         and the number of files.\r\n"
    "    fsinfo ntfsinfo      The figures of an NTFS volume.\r\n"
    "    repair query         The errors that the file system knows of, and what\r\n"
    "                         it does when it comes upon one.\r\n"
    "    volume diskfree      The free bytes, all bytes, and those that this user\r\n"
    "                         may take. All bytes are those of the whole device.\r\n"
    "\r\n"
    "A place is a folder, or a drive:\r\n"
    "    A: and B:    Floppy drives.\r\n"
    "    C:           The root.\r\n"
    "    from D: on   Other file systems on built-in disks, by their folders; then\r\n"
    "                 CD and DVD drives, file systems of the network, and those\r\n"
    "                 on disks that come and go.\r\n"
    "\r\n"
    "Options:\r\n"
    "    -?    Show these lines.\r\n";

using Ask = VolumeAnswer (*)(const AskedVolume& asked);

struct Question {
  std::string_view group;
  std::string_view name;
  Ask ask;
};
constexpr std::array kQuestions{
    Question{"dirty", "query", dirtiness},
    Question{"fsinfo", "ntfsinfo", ntfsInfo},
    Question{"fsinfo", "statistics", volumeStatistics},
    Question{"fsinfo", "volumeinfo", volumeInfo},
    Question{"repair", "query", repairState},
    Question{"volume", "diskfree", freeRoom},
};

// A folder begins with "/", so that only these two ask for help here.
bool asksForHelp(const std::string& word) { return word == "-?" || word == "/?"; }

bool isWithin(const std::string& folder, const std::string& above) {
  return above == "/" || folder == above || folder.starts_with(above + "/");
}

}  // namespace

// What a command line asks for.
struct FsUtil::Command {
  Ask ask = nullptr;
  std::string place;
  bool usage = false;
  std::string problem;  // the first mistake; empty when there is none
};

FsUtil::Command FsUtil::readCommand(const std::vector<std::string>& arguments) {
  if (std::any_of(arguments.begin(), arguments.end(), asksForHelp)) return {nullptr, "", true, ""};
  std::vector<std::string> words(arguments);
  words.resize(std::max<std::size_t>(words.size(), 3));
  const std::string group = lowerCase(words[0]);
  const std::string name = lowerCase(words[1]);
  const auto isOfGroup = [&](const Question& each) { return each.group == group; };
  const auto* found = std::find_if(kQuestions.begin(), kQuestions.end(), [&](const Question& each) {
    return isOfGroup(each) && each.name == name;
  });
  if (group.empty()) return {nullptr, "", true, "A command must be specified."};
  if (std::none_of(kQuestions.begin(), kQuestions.end(), isOfGroup)) {
    return {nullptr, "", true, "Bad command " + printable(words[0]) + "."};
  }
  if (name.empty()) {
    return {nullptr, "", true, "A command must be specified behind " + group + "."};
  }
  if (found == kQuestions.end()) {
    return {nullptr, "", true, "Bad command " + group + " " + printable(words[1]) + "."};
  }
  if (words[2].empty()) return {nullptr, "", false, "A drive or folder must be specified."};
  if (words.size() > 3) return {nullptr, "", false, "Bad parameter " + printable(words[3]) + "."};
  return {found->ask, words[2], false, ""};
}

int FsUtil::run(const std::vector<std::string>& arguments) {
  const Command command = readCommand(arguments);
  if (command.ask == nullptr) return print(command.problem, {}, command.usage);
  const std::string problem = findVolume(command.place);
  if (!problem.empty()) return print(problem, {}, false);
  const VolumeAnswer answer = command.ask({files_, rooms_, volume_, place_});
  return print(answer.problem, answer.lines, false);
}

int FsUtil::print(const std::string& problem, const std::vector<std::string>& lines, bool usage) {
  bool told = problem.empty() || output_.write(problem + "\r\n");
  for (const std::string& line : lines) {
    told = told && output_.write(line + "\r\n");
  }
  told = told && (!usage || output_.write(kUsage));
  return told && problem.empty() ? kFsUtilTold : kFsUtilFailed;
}

// Returns the sentence that tells why there is none; empty when it is found.
std::string FsUtil::findVolume(const std::string& place) {
  return isDriveText(place) ? findDrive(place) : findFolder(place);
}

std::string FsUtil::findDrive(const std::string& drive) {
  place_ = upperCase(printable(drive.substr(0, 2)));
  auto volume = volumeAt(files_, drive);
  if (!volume) return "There is no drive " + place_ + ".";
  if (volume->mount.folder.empty()) return "There is no medium in drive " + place_ + ".";
  volume_ = *std::move(volume);
  return "";
}

// A folder is on what is mounted nearest above it.
std::string FsUtil::findFolder(const std::string& folder) {
  place_ = printable(folder);
  const auto real = resolveInTime(folder);
  if (real && real->empty()) return "There is no folder " + place_ + ".";
  for (Mount& mount : real ? mountsOf(files_) : std::vector<Mount>()) {
    if (isWithin(*real, mount.folder) && mount.folder.size() >= volume_.mount.folder.size()) {
      volume_.mount = std::move(mount);
    }
  }
  if (volume_.mount.folder.empty()) return "What " + place_ + " lies on is not told.";
  volume_.device = blockDeviceOf(files_, volume_.mount);
  return "";
}

// The way to a folder may lead over a server that is gone: then nothing.
std::optional<std::string> FsUtil::resolveInTime(const std::string& folder) const {
  const auto answer = std::make_shared<std::string>();
  const auto question = [resolve = resolve_, folder, answer] { *answer = resolve(folder); };
  return questions_.ask("the folder " + folder, question) ? std::optional(*answer) : std::nullopt;
}

}  // namespace veltrin
