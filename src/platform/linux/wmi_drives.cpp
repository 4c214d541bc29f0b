// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>

#include "machine/disks.h"
#include "machine/fact_text.h"
#include "machine/volumes.h"
#include "platform/linux/wmi_classes.h"

namespace veltrin {
namespace {

// --- Logical drives ---

// Numbers of the class's MediaType. A volume on a stick or a memory card counts as one on a
// fixed disk, which it is made like: 11 is read as a drive for discs everywhere. A floppy's
// number is that of a drive whose medium nobody has looked at, 720 kB, the smallest of the 3.5
// inch ones. What lies in memory, or a container's root, has no number.
WmiValue mediaTypeOf(VolumeKind kind) {
  constexpr int kNetwork = 0;
  constexpr int kFloppy = 5;
  constexpr int kOptical = 11;
  constexpr int kFixed = 12;
  switch (kind) {
    case VolumeKind::Disk:
      return kFixed;
    case VolumeKind::Optical:
      return kOptical;
    case VolumeKind::Floppy:
      return kFloppy;
    case VolumeKind::Network:
      return kNetwork;
    case VolumeKind::Unknown:
      break;
  }
  return {};
}

// Sources: /proc/self/mountinfo and /sys/block for the drives (machine/volumes.h tells who
// has which letter); /run/udev/data or /dev/disk/by-label for the name.
WmiObject logicalDisk(const FileTree& files, const Volume& volume) {
  const std::string name = std::string(1, volume.letter) + ":";
  return {{{"Caption", name},
           {"DeviceID", name},
           {"MediaType", mediaTypeOf(volume.kind)},
           {"VolumeName", orNull(labelOf(files, volume))}}};
}

// --- Disks ---

// The geometry by which the class counts: a convention, as the disks of today have none.
constexpr std::uint64_t kHeads = 255;
constexpr std::uint64_t kSectorsPerTrack = 63;

// Sizes are whole cylinders of the usual sectors, also on a disk of larger ones: partitions
// are compared with disks by these.
constexpr std::uint64_t kCylinder = kHeads * kSectorsPerTrack * 512;

// A disk of less than a cylinder keeps its bytes.
std::uint64_t wholeCylinders(std::uint64_t bytes) {
  return bytes < kCylinder ? bytes : bytes / kCylinder * kCylinder;
}

// The words of the class are "SCSI", "HDC", "IDE", "USB" and "1394". For NVMe and VirtIO,
// which came later, the class says "SCSI", as it sees them through a driver that acts as one.
WmiValue interfaceOf(DiskBus bus) {
  switch (bus) {
    case DiskBus::Ata:
      return "IDE";
    case DiskBus::FireWire:
      return "1394";
    case DiskBus::Nvme:
    case DiskBus::Scsi:
    case DiskBus::Virtio:
      return "SCSI";
    case DiskBus::Usb:
      return "USB";
    case DiskBus::Other:
      break;
  }
  return {};
}

// A number of 64 bits is a text.
WmiValue longNumber(std::optional<std::uint64_t> number) {
  return number ? WmiValue(std::to_string(*number)) : WmiValue();
}

// Sources, in /sys/class/block/NAME: size; queue/logical_block_size; partition of each part;
// device/vendor and device/model, or ID_MODEL_ENC of udev; the path of the link itself for
// the interface. There is no \\.\PHYSICALDRIVE0 here: a disk goes by its own name in /dev.
// Without a medium a disk has no size and none of the figures that are counted from it.
WmiObject diskDrive(const Disk& disk, int index) {
  std::optional<std::uint64_t> cylinders;
  if (disk.bytes && disk.sectorBytes.value_or(0) > 0) {
    cylinders = *disk.bytes / (kHeads * kSectorsPerTrack * *disk.sectorBytes);
  }
  const auto geometry = [&](std::uint64_t number) {
    return cylinders ? WmiValue(number) : WmiValue();
  };
  std::string device = "/dev/" + disk.name;
  std::replace(device.begin() + 5, device.end(), '!', '/');
  return {{{"Index", index},
           {"DeviceID", printable(device)},
           {"Model", orNull(disk.model)},
           {"InterfaceType", interfaceOf(disk.bus)},
           {"Size", disk.bytes ? longNumber(wholeCylinders(*disk.bytes)) : WmiValue()},
           {"Partitions", disk.partitions},
           {"BytesPerSector", orNull(disk.sectorBytes)},
           {"SectorsPerTrack", geometry(kSectorsPerTrack)},
           {"TotalCylinders", longNumber(cylinders)},
           {"TotalTracks", cylinders ? longNumber(*cylinders * kHeads) : WmiValue()},
           {"TracksPerCylinder", geometry(kHeads)},
           {"TotalHeads", geometry(kHeads)}}};
}

}  // namespace

WmiAnswer win32LogicalDisk(const WmiSources& sources) {
  WmiAnswer answer;
  for (const Volume& volume : volumesOf(sources.files)) {
    answer.push_back(logicalDisk(sources.files, volume));
  }
  return answer;
}

WmiAnswer win32DiskDrive(const WmiSources& sources) {
  WmiAnswer answer;
  for (const Disk& disk : disksOf(sources.files)) {
    answer.push_back(diskDrive(disk, static_cast<int>(answer.size())));
  }
  return answer;
}

}  // namespace veltrin
