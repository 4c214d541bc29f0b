// SPDX-License-Identifier: GPL-3.0-or-later
// Settings that the installation brings along.
#pragma once

#include <array>
#include <string>

#include "platform/platform.h"

namespace veltrin {

// Read once at start from the file "installation.ini" below the program folder,
// section "Installation"; what is missing there has the defaults below.
struct Installation {
  // A public web host that answers pings: the first default destination.
  std::string ProbeHost = "www.wikipedia.org";

  // The maker's host that tells the newest version; empty asks nobody.
  std::string UpdateServer;

  // Pages of the product: how to use each tool, and what it is. One that starts with a
  // backslash is a file below the program folder.
  std::string HelpPageUrl = "\\help\\index.html";
  std::string HomePageUrl = "\\help\\home.html";

  // DownloadTestUrl1 to DownloadTestUrl6: files that the download test reads, the first the
  // largest. Empty ones cannot be tested with.
  std::array<std::string, 6> DownloadTestUrl;
};

// The pages come as addresses that a browser opens.
Installation readInstallation(ProfileStore& profiles, const Files& files);

}  // namespace veltrin
