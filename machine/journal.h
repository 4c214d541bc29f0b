// SPDX-License-Identifier: GPL-3.0-or-later
// The journal of a system, the log that its programs and its kernel write.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "machine/file_tree.h"

struct sd_journal;

namespace veltrin {

// An entry of the journal (systemd.journal-fields(7)).
struct JournalEvent {
  std::int64_t microseconds = 0;  // since 1970
  // What was said, on one line; nothing when the entry has no message. Of a longer one the
  // first kMostOfMessage bytes.
  std::optional<std::string> message;
  std::string source;  // the program's name for itself; empty when it is not told
  // What kind of program spoke and how grave it is, in the numbers of RFC 5424 section 6.2.1:
  // 0 (kernel) to 23, 0 (emergency) to 7 (debug). Nothing when it is not told.
  std::optional<std::uint64_t> facility;
  std::optional<std::uint64_t> priority;
};

// Reads from the newest entry on. What is not asked for is not read.
class Journal {
 public:
  // In bytes; as many as one text of an event may have on Windows (ReportEvent).
  static constexpr std::size_t kMostOfMessage = 31839;

  // The journal of this machine, as far as this user may read it; with a root folder of its
  // own, that of the tree below it, whatever machine wrote it.
  explicit Journal(const FileTree& files);

  // The next older entry; nothing when there is none, no journal, or one that cannot be read.
  std::optional<JournalEvent> previous();

 private:
  struct Closer {
    void operator()(sd_journal* journal) const;
  };

  std::unique_ptr<sd_journal, Closer> journal_;
};

}  // namespace veltrin
