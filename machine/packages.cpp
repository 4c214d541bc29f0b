// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/packages.h"

#include <algorithm>
#include <array>
#include <functional>
#include <string_view>
#include <tuple>
#include <utility>

#include "machine/fact_text.h"

namespace veltrin {
namespace {

// A package as a database describes it.
struct Record {
  std::string name;
  std::string version;
  std::string architecture;
  std::string status;
};

// What the lines of a database that matter begin with.
struct FieldMarks {
  std::string_view name;
  std::string_view version;
  std::string_view architecture;
  std::string_view status;  // empty where the database holds installed packages alone
};

// dpkg-query(1), and the installed database of apk-tools (apk-v2(5)).
constexpr FieldMarks kDpkgMarks{"Package:", "Version:", "Architecture:", "Status:"};
constexpr FieldMarks kApkMarks{"P:", "V:", "A:", ""};

// As much of a package's description by pacman as its name and version may take. They are the
// first that stands there.
constexpr std::size_t kStartOfDescription = 4096;

// Takes a database of records, each ended by an empty line, line by line. A record without
// that end is not whole.
class RecordReader {
 public:
  using Take = std::function<void(Record&&)>;

  RecordReader(const FieldMarks& marks, Take take) : marks_(marks), take_(std::move(take)) {}

  void takeLine(std::string_view line) {
    if (!line.empty()) {
      takeField(line);
    } else if (!record_.name.empty()) {
      take_(std::exchange(record_, Record()));
    } else {
      record_ = Record();
    }
  }

 private:
  void takeField(std::string_view line) {
    for (const auto& [mark, value] :
         {std::pair(marks_.name, &record_.name), std::pair(marks_.version, &record_.version),
          std::pair(marks_.architecture, &record_.architecture),
          std::pair(marks_.status, &record_.status)}) {
      if (!mark.empty() && line.starts_with(mark)) {
        *value = printable(line.substr(mark.size()));
        return;
      }
    }
  }

  FieldMarks marks_;
  Take take_;
  Record record_;
};

void readRecords(const FileTree& files, const std::string& path, const FieldMarks& marks,
                 RecordReader::Take take) {
  RecordReader reader(marks, std::move(take));
  files.readLines(path, [&](std::string_view line) { reader.takeLine(line); });
}

// "WANTED ERROR STATE" (dpkg(1)). A package that waits for triggers has been set up; what
// its owner wants of it, such as to hold it back, does not change that it is there.
bool isInstalled(std::string_view status) {
  constexpr std::array<std::string_view, 3> kStates{"installed", "triggers-awaited",
                                                    "triggers-pending"};
  const auto words = wordsOf(status);
  return words.size() == 3 && std::find(kStates.begin(), kStates.end(), words[2]) != kStates.end();
}

// dpkg itself is always of the system's own architecture.
std::string ownArchitecture(const std::vector<Record>& records) {
  const auto dpkg = std::find_if(records.begin(), records.end(),
                                 [](const Record& record) { return record.name == "dpkg"; });
  return dpkg == records.end() ? "" : dpkg->architecture;
}

void addOfDpkg(const FileTree& files, std::vector<PackageFacts>& packages) {
  std::vector<Record> records;
  readRecords(files, "/var/lib/dpkg/status", kDpkgMarks, [&](Record&& record) {
    if (isInstalled(record.status)) {
      records.push_back(std::move(record));
      records.back().status = {};
    }
  });
  const std::string own = ownArchitecture(records);
  for (Record& record : records) {
    const std::string& architecture = record.architecture;
    if (!own.empty() && !architecture.empty() && architecture != own && architecture != "all") {
      record.name += ":" + architecture;
    }
    packages.push_back({std::move(record.name), std::move(record.version)});
  }
}

void addOfApk(const FileTree& files, std::vector<PackageFacts>& packages) {
  readRecords(files, "/lib/apk/db/installed", kApkMarks, [&](Record&& record) {
    packages.push_back({std::move(record.name), std::move(record.version)});
  });
}

// The line behind a %HEADING%; empty when there is none.
std::string_view behind(std::string_view description, std::string_view heading) {
  LineReader lines(description);
  std::string_view line;
  while (lines.next(line)) {
    if (line == heading) {
      return lines.next(line) ? line : "";
    }
  }
  return {};
}

// Each package has a folder "NAME-VERSION", by which a description that is not whole shows.
void addOfPacman(const FileTree& files, std::vector<PackageFacts>& packages) {
  const std::string database = "/var/lib/pacman/local/";
  for (const std::string& folder : files.names(database)) {
    const std::string description =
        files.read(database + folder + "/desc", kStartOfDescription).value_or("");
    const std::string name(behind(description, "%NAME%"));
    const std::string version(behind(description, "%VERSION%"));
    if (std::string(name).append("-").append(version) == folder) {
      packages.push_back({printable(name), printable(version)});
    }
  }
}

}  // namespace

std::vector<PackageFacts> installedPackages(const FileTree& files) {
  std::vector<PackageFacts> packages;
  addOfDpkg(files, packages);
  addOfPacman(files, packages);
  addOfApk(files, packages);
  std::sort(packages.begin(), packages.end(),
            [](const PackageFacts& left, const PackageFacts& right) {
              return std::tie(left.name, left.version) < std::tie(right.name, right.version);
            });
  return packages;
}

}  // namespace veltrin
