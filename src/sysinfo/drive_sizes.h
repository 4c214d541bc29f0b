// SPDX-License-Identifier: GPL-3.0-or-later
// Texts of drives' sizes, in decimal units.
#pragma once

#include <string>

namespace veltrin {

// "75 GB   (75,000,000,000 Bytes)": whole terabytes, gigabytes or megabytes, and the bytes.
std::string sizeText(double bytes);

// The same, but below a megabyte the bytes alone: "999,999 Bytes".
std::string longSizeText(double bytes);

// The free room and the size of a drive as short texts, both in the unit that suits the
// free room: "62 GB", "120 GB".
struct ShortSizes {
  std::string free;
  std::string total;
};
ShortSizes shortSizes(double free, double total);

}  // namespace veltrin
