// SPDX-License-Identifier: GPL-3.0-or-later
// The disks of a Linux machine and what lies on them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "machine/file_tree.h"

namespace veltrin {

// By what a disk is connected.
enum class DiskBus {
  Ata,
  FireWire,
  Nvme,
  Scsi,
  Usb,
  Virtio,
  Other  // or not known
};

struct Disk {
  std::string name;   // the kernel's, "nvme0n1"
  std::string model;  // with its maker where that is told apart; empty when not known
  DiskBus bus = DiskBus::Other;

  // It comes and goes while the machine runs: a USB stick, a memory card.
  bool external = false;

  std::optional<std::uint64_t> bytes;        // nothing without a medium
  std::optional<std::uint64_t> sectorBytes;  // of a logical sector

  // Those that hold something; an extended one only holds others. A disk that is undivided
  // and bears a file system, or what one can lie on, has one.
  int partitions = 0;
};

// Those that are hardware, or that a virtual machine takes for it: no loop or RAM disks, no
// optical and floppy drives, and nothing that is put together from others (dm, md). Disks that
// come and go stand last, so that they change the places of no others; else they stand by the
// length of their names and their letters: sda, sdb, sdaa, nvme0n1.
std::vector<Disk> disksOf(const FileTree& files);

// The size in bytes of a block device, which its folder in /sys/class/block tells; nothing
// without a medium.
std::optional<std::uint64_t> bytesOfDevice(const FileTree& files, const std::string& name);

// The numbers of a block device, "8:2"; empty when there is none of this name.
std::string numbersOfDevice(const FileTree& files, const std::string& name);

// Whether all disks below a block device come and go. A partition is followed to its disk,
// and what is put together (LUKS, LVM, RAID) to its parts.
bool isExternal(const FileTree& files, const std::string& name);

}  // namespace veltrin
