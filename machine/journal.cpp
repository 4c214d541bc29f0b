// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/journal.h"

#include <cstddef>
#include <string_view>
#include <systemd/sd-journal.h>

#include "machine/fact_text.h"

namespace veltrin {
namespace {

// The start of a text, at most so many bytes and no half of a character of UTF-8.
std::string_view startOf(std::string_view text, std::size_t most) {
  if (text.size() <= most) {
    return text;
  }
  const auto continues = [&](std::size_t at) {
    return (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80;
  };
  // A character has at most three bytes behind its first one.
  std::size_t end = most;
  for (int i = 0; i < 3 && continues(end); ++i) {
    --end;
  }
  return text.substr(0, continues(end) ? most : end);
}

// A field of the entry that was reached. It is stored as "NAME=VALUE", and is the library's
// until the next call.
std::optional<std::string_view> fieldOf(sd_journal* journal, const char* name) {
  const void* data = nullptr;
  std::size_t size = 0;
  if (sd_journal_get_data(journal, name, &data, &size) < 0) {
    return std::nullopt;
  }
  const std::string_view field(static_cast<const char*>(data), size);
  const std::size_t sign = field.find('=');
  return sign == std::string_view::npos ? std::string_view() : field.substr(sign + 1);
}

std::optional<std::uint64_t> numberOf(sd_journal* journal, const char* name, std::uint64_t most) {
  const auto text = fieldOf(journal, name);
  const auto number = text ? wholeNumber(*text) : std::nullopt;
  return number && *number <= most ? number : std::nullopt;
}

// RFC 5424 section 6.2.1.
constexpr std::uint64_t kLastFacility = 23;
constexpr std::uint64_t kLastPriority = 7;

// The name under which a program speaks; a service's output has it from its unit.
constexpr std::size_t kMostOfSource = 256;

JournalEvent eventOf(sd_journal* journal) {
  JournalEvent event;
  std::uint64_t moment = 0;
  if (sd_journal_get_realtime_usec(journal, &moment) >= 0) {
    event.microseconds = static_cast<std::int64_t>(moment);
  }
  if (const auto message = fieldOf(journal, "MESSAGE")) {
    event.message = printable(startOf(*message, Journal::kMostOfMessage));
  }
  event.source =
      printable(startOf(fieldOf(journal, "SYSLOG_IDENTIFIER").value_or(""), kMostOfSource));
  event.facility = numberOf(journal, "SYSLOG_FACILITY", kLastFacility);
  event.priority = numberOf(journal, "PRIORITY", kLastPriority);
  return event;
}

sd_journal* openedIn(const FileTree& files) {
  sd_journal* journal = nullptr;
  const int failure =
      files.root().empty()
          ? sd_journal_open(&journal, SD_JOURNAL_LOCAL_ONLY)
          : sd_journal_open_directory(&journal, files.root().c_str(), SD_JOURNAL_OS_ROOT);
  return failure < 0 ? nullptr : journal;
}

}  // namespace

void Journal::Closer::operator()(sd_journal* journal) const { sd_journal_close(journal); }

Journal::Journal(const FileTree& files) : journal_(openedIn(files)) {
  // The threshold counts the field's name too. Fields that are stored compressed are unpacked
  // so far only.
  if (journal_ && (sd_journal_set_data_threshold(journal_.get(), kMostOfMessage + 64) < 0 ||
                   sd_journal_seek_tail(journal_.get()) < 0)) {
    journal_.reset();
  }
}

std::optional<JournalEvent> Journal::previous() {
  if (!journal_ || sd_journal_previous(journal_.get()) <= 0) {
    return std::nullopt;
  }
  return eventOf(journal_.get());
}

}  // namespace veltrin
