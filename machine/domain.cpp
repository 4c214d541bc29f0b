// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/domain.h"

#include <algorithm>
#include <string_view>

#include "machine/fact_text.h"

namespace veltrin {
namespace {

std::string behindFirstPoint(std::string_view name) {
  const std::size_t point = name.find('.');
  return point == std::string_view::npos ? std::string() : std::string(name.substr(point + 1));
}

// The domain of the full name that stands first on a line with this name
// (hosts(5)). The names of the loopback address such as "localhost.localdomain" say
// nothing of the machine.
std::string domainInHosts(std::string_view text, const std::string& host) {
  LineReader lines(text);
  for (std::string_view line; lines.next(line);) {
    const auto words = wordsOf(line.substr(0, line.find('#')));
    if (words.size() < 2 || words[1].starts_with("localhost")) {
      continue;
    }
    const bool ours = std::find(words.begin() + 1, words.end(), host) != words.end();
    if (ours && words[1].starts_with(host + ".")) {
      return behindFirstPoint(words[1]);
    }
  }
  return "";
}

// The domain that the kernel keeps for NIS (domainname(1)).
std::string nisDomain(const FileTree& files) {
  const std::string domain = files.line("/proc/sys/kernel/domainname");
  return domain == "(none)" ? std::string() : domain;
}

std::string sambaSetting(const FileTree& files, std::string_view key) {
  return sectionValue(files.text("/etc/samba/smb.conf"), "global", key);
}

}  // namespace

std::string domainOf(const FileTree& files, const std::string& host) {
  std::string domain = behindFirstPoint(host);
  if (domain.empty() && !host.empty()) {
    domain = domainInHosts(files.text("/etc/hosts"), host);
  }
  if (domain.empty()) {
    domain = nisDomain(files);
  }
  if (domain.empty()) {
    domain = sambaSetting(files, "workgroup");
  }
  return printable(domain);
}

// smb.conf(5): "security" is "ads" or "domain" for a member. Any other word is no proof that it is
// none, as Samba need not know who else has joined the machine to a domain.
std::optional<bool> isMemberOfDomain(const FileTree& files) {
  if (!nisDomain(files).empty()) {
    return true;
  }
  const std::string security = lowerCase(sambaSetting(files, "security"));
  return security == "ads" || security == "domain" ? std::optional(true) : std::nullopt;
}

}  // namespace veltrin
