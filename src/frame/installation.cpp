#include "frame/installation.h"

namespace veltrin {
namespace {

constexpr std::size_t kLongestSetting = 1024;

}  // namespace

Installation readInstallation(ProfileStore& profiles, const Files& files) {
  Installation installation;
  const std::string path = files.programFolder() + "\\installation.ini";
  const auto read = [&](const char* key, std::string& value) {
    value = profiles.read("Installation", key, value, kLongestSetting, path);
  };
  read("ProbeHost", installation.ProbeHost);
  return installation;
}

}  // namespace veltrin
