// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/fsutil_facts.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string_view>

#include "machine/disks.h"
#include "machine/fact_text.h"
#include "machine/udev_record.h"

namespace veltrin {
namespace {

// /sys counts in these whatever the device's own sectors are.
constexpr std::uint64_t kSector = 512;

// A figure of "volume diskfree" stands behind 31 characters, the last two of them a colon and
// a blank: programs cut it off there.
constexpr std::size_t kLabel = 29;

std::string figure(std::string label, std::uint64_t bytes) {
  label.resize(kLabel, ' ');
  return label + ": " + std::to_string(bytes);
}

// "Label : value" lines. What is not known has none.
class Facts {
 public:
  void add(std::string_view label, const std::string& value) {
    if (!value.empty()) lines_.push_back(std::string(label) + " : " + value);
  }
  void add(std::string_view label, std::optional<std::uint64_t> value) {
    if (value) add(label, std::to_string(*value));
  }

  std::size_t size() const { return lines_.size(); }
  VolumeAnswer answer() const { return {lines_, ""}; }

 private:
  std::vector<std::string> lines_;
};

VolumeAnswer refusal(const std::string& sentence) { return {{}, sentence}; }

const std::string& typeOf(const AskedVolume& asked) { return asked.volume.mount.type; }

std::optional<FileSystemRoom> roomOf(const AskedVolume& asked) {
  return asked.rooms.of(asked.volume);
}

UdevRecord recordOf(const AskedVolume& asked) {
  return UdevRecord(asked.files, "b" + numbersOfDevice(asked.files, asked.volume.device));
}

// A number that the driver of ext2 to ext4 shows of a file system; nothing of any other.
std::optional<std::uint64_t> extNumber(const AskedVolume& asked, const std::string& name) {
  if (asked.volume.device.empty()) return std::nullopt;
  return wholeNumber(asked.files.line("/sys/fs/ext4/" + asked.volume.device + "/" + name));
}

// The lines that the kernel's driver of NTFS shows of a volume (ntfs3_volinfo in
// fs/ntfs3/super.c); empty without.
struct NtfsFacts {
  std::string version;  // "3.1"
  std::string clusterBytes;
  std::string clusters;
  std::string records;  // of the master file table
  std::string usedRecords;
  std::string state;  // "dirty" or "clean"
};

NtfsFacts ntfsFacts(const AskedVolume& asked) {
  const std::string text = asked.files.text("/proc/fs/ntfs3/" + asked.volume.device + "/volinfo");
  LineReader lines(text);
  const auto next = [&] {
    std::string_view line;
    return lines.next(line) ? printable(line) : std::string();
  };
  NtfsFacts facts;
  facts.version = next();
  if (facts.version.starts_with("ntfs")) facts.version.erase(0, 4);
  facts.clusterBytes = next();
  facts.clusters = next();
  facts.records = next();
  facts.usedRecords = next();
  facts.state = next();
  return facts;
}

// A driver outside of the kernel does not tell what it serves, but udev has looked.
bool isNtfs(const AskedVolume& asked) {
  const std::string& type = typeOf(asked);
  return type == "ntfs" || type == "ntfs3" ||
         (type == "fuseblk" && recordOf(asked).value("ID_FS_TYPE") == "ntfs");
}

// An option of the file system as it is mounted, NAME=VALUE; empty when it is not set.
std::string optionOf(std::string_view options, std::string_view name) {
  while (!options.empty()) {
    const std::size_t end = std::min(options.find(','), options.size());
    const std::string_view option = options.substr(0, end);
    if (option.starts_with(name) && option.size() > name.size() && option[name.size()] == '=') {
      return printable(option.substr(name.size() + 1));
    }
    options.remove_prefix(std::min(end + 1, options.size()));
  }
  return "";
}

bool isReadOnly(const AskedVolume& asked) {
  const std::string& options = asked.volume.mount.options;
  return options == "ro" || options.starts_with("ro,");
}

// Nothing for 0, which is how a file system without such a figure tells that.
std::optional<std::uint64_t> unlessZero(std::uint64_t number) {
  return number > 0 ? std::optional(number) : std::nullopt;
}

}  // namespace

VolumeAnswer freeRoom(const AskedVolume& asked) {
  const auto room = roomOf(asked);
  if (!room) return refusal("The room on " + asked.name + " is not told.");
  return {{figure("Total # of free bytes", room->free * room->block),
           figure("Total # of bytes", room->total * room->block),
           figure("Total # of avail free bytes", room->available * room->block)},
          ""};
}

VolumeAnswer volumeInfo(const AskedVolume& asked) {
  Facts facts;
  facts.add("Volume Name", labelOf(asked.files, asked.volume));
  facts.add("Volume Serial Number", printable(recordOf(asked).decoded("ID_FS_UUID_ENC")));
  if (const auto room = roomOf(asked)) {
    facts.add("Max Component Length", unlessZero(room->longestName));
  }
  facts.add("File System Name", printable(typeOf(asked)));
  facts.add("Device", printable(asked.volume.mount.source));
  facts.add("Mounted At", printable(asked.volume.mount.folder));
  facts.add("Read Only", isReadOnly(asked) ? "Yes" : "No");
  return facts.answer();
}

// The figures of the device are those of Documentation/block/stat.rst.
VolumeAnswer volumeStatistics(const AskedVolume& asked) {
  constexpr std::size_t kReads = 0;
  constexpr std::size_t kSectorsRead = 2;
  constexpr std::size_t kWrites = 4;
  constexpr std::size_t kSectorsWritten = 6;
  Facts facts;
  facts.add("File System Type", printable(typeOf(asked)));
  const std::string stat =
      asked.volume.device.empty()
          ? ""
          : asked.files.line("/sys/class/block/" + asked.volume.device + "/stat");
  const auto figures = wordsOf(stat);
  const auto add = [&](std::string_view label, std::size_t place, std::uint64_t unit) {
    const auto number = place < figures.size() ? wholeNumber(figures[place]) : std::nullopt;
    if (number) facts.add(label, *number * unit);
  };
  add("Disk Reads", kReads, 1);
  add("Disk Read Bytes", kSectorsRead, kSector);
  add("Disk Writes", kWrites, 1);
  add("Disk Write Bytes", kSectorsWritten, kSector);
  if (const auto written = extNumber(asked, "lifetime_write_kbytes")) {
    facts.add("Lifetime Write Bytes", *written * 1024);
  }
  const auto room = roomOf(asked);
  if (room && room->files > 0 && room->filesFree <= room->files) {
    facts.add("Files And Folders", room->files - room->filesFree);
    facts.add("Files And Folders At Most", room->files);
  }
  return facts.answer();
}

VolumeAnswer ntfsInfo(const AskedVolume& asked) {
  if (!isNtfs(asked)) {
    return refusal(asked.name + " holds no NTFS volume: its file system is " +
                   printable(typeOf(asked)) + ".");
  }
  const NtfsFacts told = ntfsFacts(asked);
  Facts facts;
  facts.add("NTFS Volume Serial Number", printable(recordOf(asked).decoded("ID_FS_UUID_ENC")));
  facts.add("NTFS Version", told.version);
  if (const auto bytes = bytesOfDevice(asked.files, asked.volume.device)) {
    facts.add("Number Sectors", *bytes / kSector);
  }
  facts.add("Total Clusters", told.clusters);
  facts.add("Bytes Per Cluster", told.clusterBytes);
  facts.add("Mft Records", told.records);
  facts.add("Mft Records In Use", told.usedRecords);
  return facts.answer();
}

VolumeAnswer dirtiness(const AskedVolume& asked) {
  const auto errors = extNumber(asked, "errors_count");
  const std::string state = isNtfs(asked) ? ntfsFacts(asked).state : "";
  if (!errors && state.empty()) {
    return refusal("Whether " + asked.name + " is dirty is not told by its file system, " +
                   printable(typeOf(asked)) + ".");
  }
  const bool isDirty = errors.value_or(0) > 0 || state == "dirty";
  return {{"Volume - " + asked.name + (isDirty ? " is Dirty" : " is NOT Dirty")}, ""};
}

VolumeAnswer repairState(const AskedVolume& asked) {
  Facts facts;
  facts.add("File System Name", printable(typeOf(asked)));
  facts.add("Errors Recorded", extNumber(asked, "errors_count"));
  facts.add("Action On Errors", optionOf(asked.volume.mount.options, "errors"));
  if (facts.size() > 1) return facts.answer();
  return refusal("What is done about errors on " + asked.name +
                 " is not told by its file system, " + printable(typeOf(asked)) + ".");
}

}  // namespace veltrin
