// Settings that the installation brings along.
#pragma once

#include <string>

#include "platform/platform.h"

namespace veltrin {

// Read once at start from the file "installation.ini" below the program folder,
// section "Installation"; what is missing there has the defaults below.
struct Installation {
  // A public web host that answers pings: the first default destination.
  std::string ProbeHost = "www.wikipedia.org";
};

Installation readInstallation(ProfileStore& profiles, const Files& files);

}  // namespace veltrin
