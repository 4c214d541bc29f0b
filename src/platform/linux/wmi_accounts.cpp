// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/accounts.h"
#include "machine/fact_text.h"
#include "platform/linux/wmi_classes.h"

namespace veltrin {
namespace {

// SIDType of Win32_Account.
constexpr int kUser = 1;
constexpr int kGroup = 2;

// The account of a machine, whose name is the domain of its local accounts. A number of this
// system tells a user from others of the same machine alone, and is no SID.
WmiObject accountOf(const AccountFacts& facts, const std::string& host) {
  WmiObject account;
  account.properties["Caption"] = host + "\\" + facts.name;
  account.properties["Description"] = orNull(facts.description);  // passwd(5), GECOS
  account.properties["Domain"] = orNull(host);                    // uname(2)
  account.properties["LocalAccount"] = true;  // the files of the machine tell no other
  account.properties["Name"] = facts.name;
  account.properties["SID"] = WmiValue();
  account.properties["SIDType"] = facts.group ? kGroup : kUser;
  return account;
}

}  // namespace

std::unique_ptr<WmiObjects> win32Account(const WmiSources& sources) {
  return std::make_unique<FactObjects<AccountFacts>>(
      localAccounts(sources.files),
      [host = accountDomain(*sources.machine)](const AccountFacts& facts) {
        return accountOf(facts, host);
      });
}

}  // namespace veltrin
