// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/journal.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "journal_file.h"
#include "machine/fact_text.h"
#include "printed_by.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;
using ::testing::Eq;
using ::testing::IsEmpty;
using ::testing::Optional;

class JournalTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!canMakeJournals()) {
      GTEST_SKIP() << "systemd-journal-remote is not installed";
    }
  }

  void put(const std::vector<std::string>& entries, const std::string& file = "system.journal") {
    ASSERT_TRUE(makeJournal(tree_, entries, file));
  }

  // The messages from the newest one on; "(none)" of an entry without one.
  std::vector<std::string> messages() const {
    std::vector<std::string> messages;
    Journal journal(tree_.files());
    while (const auto event = journal.previous()) {
      messages.push_back(event->message.value_or("(none)"));
    }
    return messages;
  }

  std::string messageOf(const std::string& bytes) {
    put({exportField("MESSAGE", bytes)});
    const auto event = Journal(tree_.files()).previous();
    return event ? event->message.value_or("(none)") : "(no event)";
  }

  TemporaryTree tree_;
};

TEST_F(JournalTest, IsReadFromTheNewestEntryOn) {
  put({"MESSAGE=first\n", "MESSAGE=second\n", "MESSAGE=third\n"});
  EXPECT_THAT(messages(), ElementsAre("third", "second", "first"));
}

TEST_F(JournalTest, TellsTheFieldsOfAnEntry) {
  put({"MESSAGE=Out of paper\nPRIORITY=4\nSYSLOG_FACILITY=3\nSYSLOG_IDENTIFIER=lpd\n"});
  const auto event = Journal(tree_.files()).previous();
  ASSERT_TRUE(event);
  EXPECT_EQ(event->microseconds, 1770027672123456);
  EXPECT_THAT(event->message, Optional(Eq("Out of paper")));
  EXPECT_EQ(event->source, "lpd");
  EXPECT_EQ(event->facility, 3);
  EXPECT_EQ(event->priority, 4);
}

TEST_F(JournalTest, LeavesOpenWhatAnEntryDoesNotTell) {
  put({"CODE_LINE=7\n"});
  const auto event = Journal(tree_.files()).previous();
  ASSERT_TRUE(event);
  EXPECT_EQ(event->message, std::nullopt);
  EXPECT_EQ(event->source, "");
  EXPECT_EQ(event->facility, std::nullopt);
  EXPECT_EQ(event->priority, std::nullopt);
}

TEST_F(JournalTest, TakesNumbersThatTheProtocolDoesNotKnowForNone) {
  put({"MESSAGE=a\nPRIORITY=8\nSYSLOG_FACILITY=24\n", "MESSAGE=b\nPRIORITY=7\nSYSLOG_FACILITY=23\n",
       "MESSAGE=c\nPRIORITY=-1\nSYSLOG_FACILITY=mail\n"});
  Journal journal(tree_.files());
  for (const auto& [facility, priority] :
       {std::pair<std::optional<std::uint64_t>, std::optional<std::uint64_t>>{},
        {23, 7},
        {std::nullopt, std::nullopt}}) {
    const auto event = journal.previous();
    ASSERT_TRUE(event);
    EXPECT_EQ(event->facility, facility);
    EXPECT_EQ(event->priority, priority);
  }
}

TEST_F(JournalTest, PutsSeveralFilesInOneOrder) {
  put({"MESSAGE=a1\n", "MESSAGE=a2\n", "MESSAGE=a3\n"});
  put({"MESSAGE=b1\n", "MESSAGE=b2\n"}, "user-1000.journal");
  EXPECT_THAT(messages(), ::testing::UnorderedElementsAre("a1", "a2", "a3", "b1", "b2"));
  EXPECT_EQ(messages().front(), "a3");
}

TEST_F(JournalTest, PutsAMessageOfSeveralLinesOnOne) {
  EXPECT_EQ(messageOf("one\ntwo\r\n\tthree\x1B[0m\n"), "one two   three [0m");
}

TEST_F(JournalTest, ShowsBytesThatAreNoTextAsQuestionMarks) {
  EXPECT_EQ(messageOf("caf\xE9 = caf\xC3\xA9"), "caf? = caf\xC3\xA9");
}

TEST_F(JournalTest, CutsAMessageOfManyMegabytes) {
  std::string message;
  message.resize(10'000'000, 'x');
  EXPECT_EQ(messageOf(message), std::string(31839, 'x'));
}

// The journal's own compression does not pay for such a message.
TEST_F(JournalTest, CutsALongMessageThatIsNotCompressed) {
  std::string message;
  std::uint32_t state = 7;
  while (message.size() < 200'000) {
    state = state * 1664525 + 1013904223;
    message += static_cast<char>('!' + (state >> 24) % 90);
  }
  EXPECT_EQ(messageOf(message), message.substr(0, 31839));
}

TEST_F(JournalTest, CutsBetweenCharacters) {
  EXPECT_EQ(messageOf(std::string(31838, 'x') + "\xE2\x82\xAC and more"), std::string(31838, 'x'));
}

TEST_F(JournalTest, TakesAMessageOfTheGreatestLengthWhole) {
  const std::string message = std::string(31836, 'x') + "\xE2\x82\xAC";
  EXPECT_EQ(messageOf(message), message);
}

TEST_F(JournalTest, IsEmptyWithoutFiles) {
  EXPECT_THAT(messages(), IsEmpty());
  tree_.makeFolder("/var/log/journal");
  EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(JournalTest, IsEmptyWhenItsFilesAreNone) {
  const std::string folder = "/var/log/journal/00112233445566778899aabbccddeeff/";
  tree_.put(folder + "system.journal", "");
  tree_.put(folder + "user-1.journal", std::string(100000, '\xFF'));
  tree_.makeFolder(folder + "user-2.journal");
  EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(JournalTest, ThatIsCutOffEndsInOrder) {
  std::vector<std::string> entries;
  entries.reserve(500);
  for (int i = 0; i < 500; ++i) {
    entries.push_back("MESSAGE=event " + std::to_string(i) + "\n");
  }
  put(entries);
  const std::string path =
      tree_.real("/var/log/journal/00112233445566778899aabbccddeeff/system.journal");
  const std::size_t whole = tree_.files().text(path.substr(tree_.files().root().size())).size();
  for (const std::size_t size : {whole / 2, whole / 8, std::size_t{4096}, std::size_t{100}}) {
    ASSERT_EQ(truncate(path.c_str(), static_cast<off_t>(size)), 0);
    EXPECT_LE(messages().size(), entries.size()) << size;
  }
}

// How many bytes of a file are in this process's mappings after it was read in part. The
// kernel maps pages around a read one, so this is more than was read.
std::size_t mappedBytes(const std::string& path) {
  std::size_t total = 0;
  bool inside = false;
  FileTree().readLines("/proc/self/smaps", [&](std::string_view line) {
    if (line.find('-') != std::string_view::npos && line.find(':') != std::string_view::npos &&
        line.find(" kB") == std::string_view::npos) {
      inside = line.ends_with(path);
    } else if (inside && line.starts_with("Rss:")) {
      const auto words = wordsOf(line);
      total += wholeNumber(words.at(1)).value_or(0) * 1024;
    }
  });
  return total;
}

TEST_F(JournalTest, ReadsNoMoreThanIsAskedFor) {
  constexpr int kEntries = 60000;
  std::vector<std::string> entries;
  entries.reserve(kEntries);
  for (int i = 0; i < kEntries; ++i) {
    entries.push_back("MESSAGE=event " + std::to_string(i) +
                      " of many, all different\nPRIORITY=6\n");
  }
  put(entries);
  const std::string path =
      tree_.real("/var/log/journal/00112233445566778899aabbccddeeff/system.journal");
  struct stat facts {};
  ASSERT_EQ(stat(path.c_str(), &facts), 0);
  Journal journal(tree_.files());
  for (int i = 1; i <= 201; ++i) {
    const auto event = journal.previous();
    ASSERT_TRUE(event);
    ASSERT_EQ(event->message, "event " + std::to_string(kEntries - i) + " of many, all different");
  }
  const std::size_t few = mappedBytes(path);
  int rest = 0;
  while (journal.previous()) {
    ++rest;
  }
  EXPECT_EQ(rest, kEntries - 201);
  EXPECT_GT(few, 0U);
  EXPECT_LT(few, static_cast<std::size_t>(facts.st_size) / 4);
}

// The newest messages as the system's own tool prints them and as they are read here, without
// regard to line breaks; nothing when the tool prints none, or when messages come in too
// quickly to compare them.
std::optional<std::pair<std::string, std::string>> printedAndRead(const std::string& where,
                                                                  const FileTree& files) {
  const std::string command = "journalctl -q -r -n 201 -o cat --no-pager " + where;
  for (int attempt = 0; attempt < 5; ++attempt) {
    const std::string before = printedBy(command);
    Journal journal(files);
    std::string read;
    for (int i = 0; i < 201; ++i) {
      const auto event = journal.previous();
      read += event ? event->message.value_or("") + "\n" : "";
    }
    if (!before.empty() && before == printedBy(command)) {
      return std::pair(printable(before), printable(read));
    }
  }
  return std::nullopt;
}

// Blanks at the ends of lines do not count.
std::string words(const std::string& text) {
  std::string joined;
  for (const std::string_view word : wordsOf(text)) {
    joined += std::string(word) + " ";
  }
  return joined;
}

TEST_F(JournalTest, HasTheMessagesThatTheSystemsToolPrints) {
  std::vector<std::string> entries;
  entries.reserve(300);
  for (int i = 0; i < 300; ++i) {
    entries.push_back(i % 7 == 0 ? "CODE_LINE=1\n"
                                 : exportField("MESSAGE", "event " + std::to_string(i) + "\nsays"));
  }
  put(entries);
  const auto both = printedAndRead(
      "--directory='" + tree_.real("/var/log/journal/00112233445566778899aabbccddeeff") + "'",
      tree_.files());
  if (!both) {
    GTEST_SKIP() << "journalctl does not run here";
  }
  EXPECT_EQ(words(both->second), words(both->first));
  EXPECT_THAT(words(both->first), ::testing::StartsWith("event 299 says event 298 says"));
}

TEST(JournalOfThisMachine, HasTheMessagesThatItsOwnToolPrints) {
  const auto both = printedAndRead("", FileTree());
  if (!both) {
    GTEST_SKIP() << "this machine has no journal, none for this user, or too busy a one";
  }
  EXPECT_EQ(words(both->second), words(both->first));
}

}  // namespace
}  // namespace veltrin
