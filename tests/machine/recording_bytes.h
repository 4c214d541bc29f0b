// SPDX-License-Identifier: GPL-3.0-or-later
// Bytes in the text of a recorded machine.
#pragma once

#include <string>

#include "recording_text.h"

namespace veltrin {

// The bytes of lines such as
//   00 ff "DELL" 0a checksum  # the name
// that is bytes in two hexadecimal digits, texts in double quotes, and the byte that brings the
// sum of all before it to a multiple of 256. Behind "#" stands a remark.
std::string bytesIn(const std::vector<RecordingLine>& lines);

// A structure of the table of firmware (SMBIOS, DSP0134 section 6.1), whose head is
//   smbios TYPE HANDLE [repeated 0-3]
// and whose fields stand in lines of their own, each at its offset in the structure:
//   0x0C word 16384 behind the number is a remark
//   0x10 text ChannelA-DIMM0
//   0x13 bytes 01 "AB"
//   length 0x28
// Numbers are a byte, a word, a dword (32 bits) or a qword. A structure is as long as its last
// field unless it is told to be longer; what no field covers is 0. With repetition the handle
// counts on, too.
std::string smbiosStructures(const RecordingSection& section);

// What stands behind the last structure.
std::string smbiosEnd();

}  // namespace veltrin
