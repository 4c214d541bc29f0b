// SPDX-License-Identifier: GPL-3.0-or-later
// Whole machines in files of text, for tests: each tells what its kernel and its system keep in
// their files, and what else may be asked of it.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fake_machine.h"
#include "temporary_tree.h"

namespace veltrin {

// A machine as its file tells it. The file is made of sections; what belongs to one stands below
// it, two blanks in. Lines that begin with "#" are remarks.
//
//   file PATH [repeated 0-95]    a file of the lines below, the more often when repeated
//   bytes PATH                   a file of bytes: 00 ff "text" checksum  # a remark
//   in FOLDER                    small files and links of a folder, one in a line:
//                                  vendor 0x8086
//                                  driver -> ../../bus/pci/drivers/ahci
//   pci, usb, block, class ...   a device with the links that lead to it, as recorded_devices.h
//                                tells; below it what else its folder holds, as for "in"
//   link PATH -> TARGET          a symbolic link
//   folder PATH                  an empty folder
//   written PATH SECONDS         when a file was last written, since 1970
//   smbios TYPE HANDLE           a structure of the firmware's table; its fields stand below, as
//                                recording_bytes.h tells. All make /sys/firmware/dmi/tables/DMI.
//   hwdb PATTERN                 devices that the hardware database knows; NAME=VALUE below
//   journal [repeated 0-95]      messages of the journal, the oldest first, as
//                                  FACILITY PRIORITY PROGRAM: MESSAGE
//                                in the numbers of RFC 5424 section 6.2.1
//   host NAME                    what uname(2) tells
//   identity DIGITS              what programs are told of the machine's ID, 32 hexadecimal digits
//   kernel RELEASE VERSION
//   architecture NAME
//   clock SECONDS OFFSET ZONE    now, since 1970; the zone's minutes ahead of UTC, and its name
//   born SECONDS                 when the root folder was made
//   environment NAME=VALUE
//   interface INDEX NAME [KIND]  a network interface, with its addresses below:
//                                  192.0.2.7 lasting
//                                "running" stands below it, too, when it is
//   room FOLDER BLOCK TOTAL FREE AVAILABLE   the blocks of a file system
//   screen CARD CONNECTOR WIDTH HEIGHT REFRESH DEPTH
//   setting SCHEMA KEY VALUE     a setting of GNOME and its kin; a text stands as it is
//   printer NAME                 a printer; its description stands below
//
// PATH and FOLDER of file, in, link and folder may hold a range, /sys/cpu/cpu{0-95}, which stands
// for as many of them. There, and in what is repeated, {n} is the number, {n%48/2+1} something
// calculated of it, from the left to the right.
class RecordedMachine {
 public:
  // Reads a file. What is wrong in it fails the test with file and line.
  explicit RecordedMachine(const std::string& path);

  // Unpacks a text, the file of that name.
  RecordedMachine(std::string_view text, const std::string& name);

  FileTree files() const { return tree.files(); }

  // What is wrong, as "NAME:LINE: what".
  const std::vector<std::string>& mistakes() const { return mistakes_; }

  // What of it cannot be made on this computer, in words; empty when all is there.
  const std::string& lacks() const { return lacks_; }

  // A setting of GNOME and its kin by its schema and key; nothing when there is none.
  std::optional<std::string> setting(const std::string& schema, const std::string& key) const;

  TemporaryTree tree;
  FakeMachine machine;
  std::vector<std::pair<std::string, std::string>> printers;  // names and descriptions
  std::map<std::string, std::string> settings;                // by "SCHEMA KEY"

 private:
  void unpack(std::string_view text, const std::string& name);

  std::vector<std::string> mistakes_;
  std::string lacks_;
};

// The recorded machines of the tests by their names, "laptop", sorted.
std::vector<std::string> recordedMachines();

// The folder of the recordings among the sources, with a slash behind it.
std::string recordingsFolder();

}  // namespace veltrin
