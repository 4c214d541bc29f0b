// SPDX-License-Identifier: GPL-3.0-or-later
// The built tools, with the right to raw sockets on a copy of each or started by the
// superuser, as the kernel sees them while they wait for a host that is silent. To put that
// right on a file takes a superuser.
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <linux/capability.h>
#include <optional>
#include <sstream>
#include <string>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <vector>

#include "program.h"

namespace veltrin {
namespace {

namespace fs = std::filesystem;

// The broadcast address of the loopback: no Linux answers an echo to it, unless told to.
const std::string kSilentHost = "127.255.255.255";

// A user without rights, whom every system has ("nobody").
const std::string kNobody = "65534";

constexpr std::uint64_t kNetRaw = std::uint64_t{1} << CAP_NET_RAW;

struct Tool {
  const char* name;
  const char* path;
  const char* firstWords;  // once its sockets are open
};

std::ostream& operator<<(std::ostream& out, const Tool& tool) { return out << tool.name; }

// What stands behind a name in /proc/PID/status (proc(5)).
std::string statusOf(pid_t process, const std::string& name) {
  std::ifstream status("/proc/" + std::to_string(process) + "/status");
  for (std::string key, line; status >> key && std::getline(status, line);) {
    if (key == name + ":") return line.substr(line.find_first_not_of(" \t"));
  }
  return "there is no " + name;
}

// Whether the system lets nobody but the superuser look into a process: the files that tell
// of it are then root's. That is so after a start that lent rights, and stays (prctl(2),
// PR_SET_DUMPABLE).
bool isClosedToItsUser(pid_t process) {
  struct stat file {};
  return stat(("/proc/" + std::to_string(process) + "/status").c_str(), &file) == 0 &&
         file.st_uid == 0;
}

// Lends a capability to whoever starts a file. 0, or the error of the system.
int lendOnStart(const fs::path& file, std::uint64_t capability) {
  vfs_cap_data rights{};
  rights.magic_etc = VFS_CAP_REVISION_2 | VFS_CAP_FLAGS_EFFECTIVE;
  rights.data[0].permitted = static_cast<__le32>(capability);
  return setxattr(file.c_str(), "security.capability", &rights, XATTR_CAPS_SZ_2, 0) == 0 ? 0
                                                                                         : errno;
}

class PrivilegesOf : public ::testing::TestWithParam<Tool> {
 protected:
  void SetUp() override {
    if (geteuid() != 0) GTEST_SKIP() << "only a superuser can lend a right to a file";
    std::string made = (fs::temp_directory_path() / "veltrin-rights-XXXXXX").string();
    ASSERT_NE(mkdtemp(made.data()), nullptr);
    folder_ = made;
    fs::permissions(folder_, fs::perms::owner_all | fs::perms::others_exec);
  }
  void TearDown() override {
    if (!folder_.empty()) fs::remove_all(folder_);
  }

  // A copy that others may start, and that has the right to raw sockets.
  fs::path lentCopy() const {
    fs::path copy = folder_ / GetParam().name;
    fs::copy_file(GetParam().path, copy);
    fs::permissions(copy, fs::perms::others_exec | fs::perms::others_read, fs::perm_options::add);
    return copy;
  }

  // Words of setpriv. What it starts is a program without any right, which starts the tool.
  static std::vector<std::string> asNobody(const fs::path& tool) {
    return {"--reuid=" + kNobody, "--regid=" + kNobody, "--clear-groups",
            "/usr/bin/env",       tool.string(),        kSilentHost};
  }

  static void awaitFirstWords(Program& tool) {
    std::string text;
    tool.readUntil(GetParam().firstWords, text);
    ASSERT_NE(text.find(GetParam().firstWords), std::string::npos) << text << tool.readErrors();
  }

  static void expectNoRights(pid_t process) {
    for (const char* set : {"CapPrm", "CapEff", "CapInh", "CapAmb"}) {
      EXPECT_EQ(statusOf(process, set), "0000000000000000") << set;
    }
    EXPECT_EQ(statusOf(process, "NoNewPrivs"), "1");
  }

  fs::path folder_;
};

TEST_P(PrivilegesOf, AFileThatLendsThemAreGoneWhileTheToolWaits) {
  const fs::path copy = lentCopy();
  if (const int failure = lendOnStart(copy, kNetRaw); failure != 0) {
    GTEST_SKIP() << "no right can be lent here: " << std::strerror(failure);
  }
  Program tool("/usr/bin/setpriv", asNobody(copy));
  ASSERT_NO_FATAL_FAILURE(awaitFirstWords(tool));
  ASSERT_TRUE(isClosedToItsUser(tool.process())) << "the file lent nothing";
  EXPECT_EQ(statusOf(tool.process(), "Uid"), "65534\t65534\t65534\t65534");
  expectNoRights(tool.process());
}

TEST_P(PrivilegesOf, ASuperuserAreGoneWhileTheToolWaits) {
  Program tool(GetParam().path, {kSilentHost});
  ASSERT_NO_FATAL_FAILURE(awaitFirstWords(tool));
  EXPECT_EQ(statusOf(tool.process(), "Uid"), "0\t0\t0\t0");
  expectNoRights(tool.process());
}

// A file that lends the rights of its owner gives the tool a user too many.
TEST_P(PrivilegesOf, AnOwnerWhomTheFileLendsAreGoneWhileTheToolWaits) {
  const fs::path copy = lentCopy();
  ASSERT_EQ(chmod(copy.c_str(), S_ISUID | 0755), 0);
  Program tool("/usr/bin/setpriv", asNobody(copy));
  ASSERT_NO_FATAL_FAILURE(awaitFirstWords(tool));
  ASSERT_TRUE(isClosedToItsUser(tool.process())) << "the file lent nothing";
  EXPECT_EQ(statusOf(tool.process(), "Uid"), "65534\t65534\t65534\t65534");
  expectNoRights(tool.process());
}

INSTANTIATE_TEST_SUITE_P(Tools, PrivilegesOf,
                         ::testing::Values(Tool{"ping", VELTRIN_PING, "bytes of data"},
                                           Tool{"tracert", VELTRIN_TRACERT, "maximum of 30 hops"},
                                           Tool{"pathping", VELTRIN_PATHPING,
                                                "maximum of 30 hops"}),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace veltrin
