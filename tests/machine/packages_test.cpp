// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/packages.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "machine/fact_text.h"
#include "printed_by.h"
#include "temporary_tree.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;

constexpr const char* kDpkg = "/var/lib/dpkg/status";
constexpr const char* kApk = "/lib/apk/db/installed";

// "NAME VERSION" of each package.
std::vector<std::string> texts(const FileTree& files) {
  std::vector<std::string> texts;
  for (const PackageFacts& package : installedPackages(files)) {
    texts.push_back(package.name + " " + package.version);
  }
  return texts;
}

std::vector<std::string> textsOf(const std::string& path, const std::string& database) {
  const TemporaryTree tree;
  tree.put(path, database);
  return texts(tree.files());
}

std::string record(const std::string& name, const std::string& version,
                   const std::string& architecture = "amd64",
                   const std::string& status = "install ok installed") {
  return "Package: " + name + "\nStatus: " + status +
         "\nPriority: optional\nArchitecture: " + architecture + "\nVersion: " + version +
         "\nDescription: of it\n Package: none\n .\n\n";
}

TEST(DpkgPackages, AreTheInstalledOnesByName) {
  EXPECT_THAT(textsOf(kDpkg, record("zlib1g", "1:1.2-3") + record("adduser", "3.134", "all") +
                                 record("bash", "5.2.15-2+b7")),
              ElementsAre("adduser 3.134", "bash 5.2.15-2+b7", "zlib1g 1:1.2-3"));
}

TEST(DpkgPackages, AreNotThoseThatAreRemovedOrHalfInstalled) {
  EXPECT_THAT(
      textsOf(kDpkg, record("a", "1", "all", "deinstall ok config-files") +
                         record("b", "1", "all", "install ok half-installed") +
                         record("c", "1", "all", "install ok unpacked") +
                         record("d", "1", "all", "install ok half-configured") +
                         record("e", "1", "all", "unknown ok not-installed") +
                         record("f", "1", "all", "installed") + record("g", "1", "all", "")),
      ElementsAre());
}

TEST(DpkgPackages, AreInstalledTooWhenHeldBackOrWaitingForTriggers) {
  EXPECT_THAT(textsOf(kDpkg, record("a", "1", "all", "hold ok installed") +
                                 record("b", "2", "all", "install ok triggers-awaited") +
                                 record("c", "3", "all", "install ok triggers-pending")),
              ElementsAre("a 1", "b 2", "c 3"));
}

TEST(DpkgPackages, NameAForeignArchitecture) {
  EXPECT_THAT(textsOf(kDpkg, record("libc6", "2.36", "amd64") + record("libc6", "2.36", "i386") +
                                 record("base", "1", "all") + record("dpkg", "1.21", "amd64")),
              ElementsAre("base 1", "dpkg 1.21", "libc6 2.36", "libc6:i386 2.36"));
}

TEST(DpkgPackages, NameNoArchitectureWhereTheOwnOneIsNotKnown) {
  EXPECT_THAT(textsOf(kDpkg, record("libc6", "2.36", "arm64")), ElementsAre("libc6 2.36"));
}

// Cut off at every place of the second record, up to the empty line that ends it.
TEST(DpkgPackages, OfADatabaseThatIsCutOffAreTheWholeOnes) {
  const std::string first = record("bash", "5.2");
  const std::string second = record("zlib1g", "1.2");
  for (std::size_t size = 0; size < second.size(); ++size) {
    ASSERT_THAT(textsOf(kDpkg, first + second.substr(0, size)), ElementsAre("bash 5.2")) << size;
  }
  EXPECT_THAT(textsOf(kDpkg, first + second), ElementsAre("bash 5.2", "zlib1g 1.2"));
}

TEST(DpkgPackages, KeepNothingOfARecordWithoutAName) {
  EXPECT_THAT(textsOf(kDpkg,
                      "Status: install ok installed\nVersion: 7\n\n"
                      "Package: bash\nStatus: install ok installed\n\n"),
              ElementsAre("bash "));
}

TEST(DpkgPackages, AreReadFromAFileWithTheLineEndsOfWindows) {
  EXPECT_THAT(textsOf(kDpkg,
                      "Package: bash\r\nStatus: install ok installed\r\nVersion: 5.2\r\n"
                      "\r\n"),
              ElementsAre("bash 5.2"));
}

TEST(DpkgPackages, ShowBytesThatAreNoTextAsQuestionMarks) {
  EXPECT_THAT(textsOf(kDpkg, record("b\xFFsh",
                                    "5.\x01"
                                    "2")),
              ElementsAre("b?sh 5. 2"));
}

TEST(PacmanPackages, AreThoseWithADescriptionOfTheirOwn) {
  const TemporaryTree tree;
  tree.put("/var/lib/pacman/local/ALPM_DB_VERSION", "9\n");
  tree.put("/var/lib/pacman/local/zlib-1:1.3.1-2/desc",
           "%NAME%\nzlib\n\n%VERSION%\n1:1.3.1-2\n\n%DESC%\nA library\n\n");
  tree.put("/var/lib/pacman/local/bash-5.2.026-2/desc",
           "%NAME%\r\nbash\r\n\r\n%VERSION%\r\n5.2.026-2\r\n\r\n");
  tree.makeFolder("/var/lib/pacman/local/empty-1-1");
  EXPECT_THAT(texts(tree.files()), ElementsAre("bash 5.2.026-2", "zlib 1:1.3.1-2"));
}

TEST(PacmanPackages, AreNotThoseWhoseDescriptionIsCutOff) {
  const std::string description = "%NAME%\nbash\n\n%VERSION%\n5.2-2";
  for (std::size_t size = 0; size < description.size(); ++size) {
    ASSERT_THAT(textsOf("/var/lib/pacman/local/bash-5.2-2/desc", description.substr(0, size)),
                ElementsAre())
        << size;
  }
}

TEST(ApkPackages, AreTheRecordsOfItsDatabase) {
  EXPECT_THAT(textsOf(kApk,
                      "C:Q1xyz=\nP:zlib\nV:1.3.1-r0\nA:x86_64\nF:lib\nR:libz.so.1\n\n"
                      "P:busybox\nV:1.36.1-r5\nA:x86_64\np:P:none\n\nP:half\nV:1"),
              ElementsAre("busybox 1.36.1-r5", "zlib 1.3.1-r0"));
}

TEST(Packages, OfSeveralManagersStandInOneOrder) {
  const TemporaryTree tree;
  tree.put(kDpkg, record("bash", "5"));
  tree.put(kApk, "P:apk\nV:2\n\nP:bash\nV:3\n\n");
  tree.put("/var/lib/pacman/local/b-1-1/desc", "%NAME%\nb\n\n%VERSION%\n1-1\n");
  EXPECT_THAT(texts(tree.files()), ElementsAre("apk 2", "b 1-1", "bash 3", "bash 5"));
}

TEST(Packages, AreNoneWithoutADatabaseAndInOneThatIsEmptyOrNoText) {
  EXPECT_THAT(texts(TemporaryTree().files()), ElementsAre());
  for (const std::string& bytes : {std::string(), std::string("\n\n\n"), std::string(100000, '\0'),
                                   std::string(100000, '\xFF'), std::string("Package:\n\n")}) {
    EXPECT_THAT(textsOf(kDpkg, bytes), ElementsAre());
    EXPECT_THAT(textsOf(kApk, bytes), ElementsAre());
  }
}

std::vector<std::string> printedLines(const std::string& command) {
  const std::string text = printedBy(command);
  std::vector<std::string> lines;
  LineReader reader(text);
  for (std::string_view line; reader.next(line);) {
    lines.emplace_back(line);
  }
  return lines;
}

TEST(Packages, OfThisMachineAreThoseThatItsManagerPrints) {
  const auto own = printedLines("dpkg --print-architecture");
  const auto told = printedLines(
      "dpkg-query -W -f '${db:Status-Status}|${Package}|${Architecture}|${Version}\\n' "
      "2>/dev/null");
  if (own.empty() || told.empty()) {
    GTEST_SKIP() << "dpkg does not run here";
  }
  std::vector<std::string> expected;
  for (const std::string& line : told) {
    std::vector<std::string> fields;
    for (std::size_t at = 0; at <= line.size();) {
      const std::size_t end = std::min(line.find('|', at), line.size());
      fields.push_back(line.substr(at, end - at));
      at = end + 1;
    }
    ASSERT_EQ(fields.size(), 4U) << line;
    if (fields[0] == "installed" || fields[0].starts_with("triggers-")) {
      const bool foreign = fields[2] != own[0] && fields[2] != "all";
      expected.push_back(fields[1] + (foreign ? ":" + fields[2] : "") + " " + fields[3]);
    }
  }
  const auto found = texts(FileTree());
  EXPECT_THAT(found, ::testing::UnorderedElementsAreArray(expected));
}

}  // namespace
}  // namespace veltrin
