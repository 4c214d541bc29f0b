// SPDX-License-Identifier: GPL-3.0-or-later
#include "frame/installation.h"

#include <algorithm>
#include <cctype>
#include <string_view>

namespace veltrin {
namespace {

constexpr std::size_t kLongestSetting = 1024;

// RFC 3986, section 2.3: what stands in an address as it is; with what divides paths.
bool isPlain(unsigned char character) {
  return std::isalnum(character) != 0 ||
         std::string_view("-._~/:").find(static_cast<char>(character)) != std::string_view::npos;
}

// The address of a page by the form of RFC 8089 when it is a file of the program's.
std::string pageAddress(const std::string& page, const Files& files) {
  if (page.empty() || page.front() != '\\') return page;
  std::string path = files.native(files.programFolder() + page);
  std::replace(path.begin(), path.end(), '\\', '/');
  std::string address = path.front() == '/' ? "file://" : "file:///";
  for (const char character : path) {
    const auto byte = static_cast<unsigned char>(character);
    if (isPlain(byte)) {
      address += character;
    } else {
      constexpr std::string_view kDigits = "0123456789ABCDEF";
      address += {'%', kDigits[byte / 16], kDigits[byte % 16]};
    }
  }
  return address;
}

}  // namespace

Installation readInstallation(ProfileStore& profiles, const Files& files) {
  Installation installation;
  const std::string path = files.programFolder() + "\\installation.ini";
  const auto read = [&](const std::string& key, std::string& value) {
    value = profiles.read("Installation", key, value, kLongestSetting, path);
  };
  read("ProbeHost", installation.ProbeHost);
  read("UpdateServer", installation.UpdateServer);
  read("HelpPageUrl", installation.HelpPageUrl);
  read("HomePageUrl", installation.HomePageUrl);
  for (std::size_t place = 0; place < installation.DownloadTestUrl.size(); ++place) {
    read("DownloadTestUrl" + std::to_string(place + 1), installation.DownloadTestUrl[place]);
  }
  installation.HelpPageUrl = pageAddress(installation.HelpPageUrl, files);
  installation.HomePageUrl = pageAddress(installation.HomePageUrl, files);
  return installation;
}

}  // namespace veltrin
