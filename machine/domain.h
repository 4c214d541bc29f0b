// SPDX-License-Identifier: GPL-3.0-or-later
// The domain that a machine belongs to.
#pragma once

#include <optional>
#include <string>

#include "machine/file_tree.h"

namespace veltrin {

// The domain of the machine's full name, which the name itself or /etc/hosts tells;
// else its NIS domain, else the workgroup that Samba names. Empty when it belongs
// to none that is told.
std::string domainOf(const FileTree& files, const std::string& host);

// Whether the machine is a member of a domain that knows its users: of a NIS domain, or by
// Samba's word of a domain of Windows. Nothing when neither tells.
std::optional<bool> isMemberOfDomain(const FileTree& files);

}  // namespace veltrin
