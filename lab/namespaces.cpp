// SPDX-License-Identifier: GPL-3.0-or-later
#include "lab/namespaces.h"

#include <array>
#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <sched.h>
#include <sstream>
#include <string>
#include <sys/mount.h>
#include <sys/stat.h>
#include <utility>
#include <vector>

#include "lab/descriptor.h"
#include "lab/installation.h"

namespace veltrin::lab {
namespace {

constexpr int kWalls = CLONE_NEWNET | CLONE_NEWNS;

// Where the private files are laid down for a moment. It exists on every system,
// and what it holds outside stays untouched.
constexpr const char* kScratch = "/tmp";

void writeFile(const std::string& path, const std::string& text, int flags = 0) {
  const Descriptor file(open(path.c_str(), O_WRONLY | O_CLOEXEC | flags, 0644));
  if (file.get() < 0) failWithErrno("cannot open " + path);
  if (write(file.get(), text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
    failWithErrno("cannot write " + path);
  }
}

bool exists(const char* path) { return access(path, F_OK) == 0; }

void mountFresh(const char* folder) {
  if (mount("tmpfs", folder, "tmpfs", MS_NOSUID | MS_NODEV, "mode=755") != 0) {
    failWithErrno(std::string("cannot mount a private folder on ") + folder);
  }
}

// In a user namespace of its own a process keeps its user and group.
void enterThroughUserNamespace() {
  const std::string user = std::to_string(geteuid());
  const std::string group = std::to_string(getegid());
  if (unshare(CLONE_NEWUSER | kWalls) != 0) {
    failWithErrno("cannot make namespaces, neither directly nor through a user namespace");
  }
  writeFile("/proc/self/setgroups", "deny");
  writeFile("/proc/self/uid_map", user + ' ' + user + " 1");
  writeFile("/proc/self/gid_map", group + ' ' + group + " 1");
}

// The groups whose members may open ICMP sockets: all, or the only one that a
// user namespace knows.
void allowEchoes(bool userNamespace) {
  const std::string group = std::to_string(getegid());
  writeFile("/proc/sys/net/ipv4/ping_group_range",
            userNamespace ? group + ' ' + group : std::string("0 2147483647"));
}

// A file that gets another text inside the lab. Opened before the scratch folder covers
// what lies below it.
struct ReplacedFile {
  std::string path;
  std::string text;
  Descriptor place;
};

void add(std::vector<ReplacedFile>& files, const std::string& path, const std::string& text) {
  Descriptor place(open(path.c_str(), O_PATH | O_CLOEXEC));
  if (place.get() < 0) failWithErrno("cannot find " + path);
  files.push_back({path, text, std::move(place)});
}

// Puts private files in place of those. Their names below the scratch folder do not matter.
void replace(const std::vector<ReplacedFile>& files) {
  mountFresh(kScratch);
  for (const ReplacedFile& file : files) {
    const std::string number = std::to_string(file.place.get());
    const std::string source = std::string(kScratch) + '/' + number;
    const std::string target = "/proc/self/fd/" + number;
    writeFile(source, file.text, O_CREAT | O_EXCL);
    if (mount(source.c_str(), target.c_str(), nullptr, MS_BIND, nullptr) != 0) {
      failWithErrno("cannot put the lab's own file in place of " + file.path);
    }
  }
  if (umount2(kScratch, MNT_DETACH) != 0) failWithErrno("cannot clear the private folder");
}

std::string textOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string hostsText() {
  std::array<char, HOST_NAME_MAX + 1> name{};
  gethostname(name.data(), name.size() - 1);
  return "127.0.0.1 localhost\n::1 localhost\n127.0.1.1 " + std::string(name.data()) + '\n';
}

std::string resolverText(const Scenario& scenario) {
  std::string text;
  for (const IpAddress& server : scenario.dns) text += "nameserver " + server.text() + '\n';
  return text + "search .\n";
}

// The system's name service settings, with host names from files and the DNS
// alone: other services would ask the machine outside.
std::string nameServiceText(const char* path) {
  std::ifstream present(path);
  std::ostringstream text;
  for (std::string line; std::getline(present, line);) {
    if (!line.starts_with("hosts:")) text << line << '\n';
  }
  text << "hosts: files dns\n";
  return text.str();
}

}  // namespace

void enterNamespaces() {
  bool userNamespace = geteuid() != 0;
  if (!userNamespace && unshare(kWalls) != 0) {
    if (errno != EPERM) failWithErrno("cannot make namespaces");
    userNamespace = true;
  }
  if (userNamespace) enterThroughUserNamespace();
  if (mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) {
    failWithErrno("cannot keep mounts to the lab");
  }
  allowEchoes(userNamespace);
}

void installFiles(const Scenario& scenario, const std::filesystem::path& installation) {
  static constexpr const char* kNameService = "/etc/nsswitch.conf";
  // The name service cache answers through a socket in its folder.
  for (const char* cache : {"/run/nscd", "/var/run/nscd"}) {
    if (exists(cache)) mountFresh(cache);
  }
  std::vector<ReplacedFile> files;
  add(files, "/etc/resolv.conf", resolverText(scenario));
  add(files, "/etc/hosts", hostsText());
  if (exists(kNameService)) add(files, kNameService, nameServiceText(kNameService));
  if (!scenario.installation.empty() && exists(installation.c_str())) {
    add(files, installation, withSettings(textOf(installation), scenario.installation));
  }
  replace(files);
  for (const char* setting : {"LOCALDOMAIN", "RES_OPTIONS", "HOSTALIASES"}) unsetenv(setting);
}

}  // namespace veltrin::lab
