// SPDX-License-Identifier: GPL-3.0-or-later
#include "sysinfo/summary_reader.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "text/statement.h"
#include "text/strings.h"

namespace veltrin {
namespace {

constexpr std::int64_t kLabelLength = 27;
constexpr std::int64_t kDetailIndent = 33;
constexpr std::int64_t kUnitLength = 3;  // " MB"

struct Label {
  std::string_view text;
  std::string SystemSummary::*field;
  std::int64_t dropped;  // characters at the end of the value
  SummaryForm from;      // the least form that reads it
};

// In the order in which they are tried. The product identifier loses its last three
// characters like the two sizes of memory.
constexpr std::array<Label, 17> kLabels{{
    {"Product ID:                ", &SystemSummary::OsName, kUnitLength, SummaryForm::Short},
    {"Total Physical Memory:     ", &SystemSummary::TotalRam, kUnitLength, SummaryForm::Short},
    {"Available Physical Memory: ", &SystemSummary::AvailableRam, kUnitLength, SummaryForm::Short},
    {"OS Name:                   ", &SystemSummary::WinVersion, 0, SummaryForm::Short},
    {"Processor(s):              ", &SystemSummary::CpuNum, 0, SummaryForm::Short},
    {"System Model:              ", &SystemSummary::MbModel, 0, SummaryForm::Short},
    {"BIOS Version:              ", &SystemSummary::BiosVersion, 0, SummaryForm::Short},
    {"Input Locale:              ", &SystemSummary::Location, 0, SummaryForm::Short},
    {"System Manufacturer:       ", &SystemSummary::MbMan, 0, SummaryForm::Short},
    {"Boot Device:               ", &SystemSummary::BootDevice, 0, SummaryForm::Short},
    {"OS Version:                ", &SystemSummary::OsVersion, 0, SummaryForm::Short},
    {"Original Install Date:     ", &SystemSummary::Installed, 0, SummaryForm::Short},
    {"System Boot Time:          ", &SystemSummary::BootTime, 0, SummaryForm::Full},
    {"System Up Time:            ", &SystemSummary::UpTime, 0, SummaryForm::Full},
    {"Page File Location(s):     ", &SystemSummary::PageFile, 0, SummaryForm::Full},
    {"Domain:                    ", &SystemSummary::Domain, 0, SummaryForm::Full},
    {"Hotfix(s):                 ", &SystemSummary::HotfixWidth, 0, SummaryForm::Full},
}};
constexpr std::string_view kHotfixes = kLabels.back().text;
constexpr std::string_view kCards = "Network Card(s):           ";

static_assert(std::all_of(kLabels.begin(), kLabels.end(),
                          [](const Label& label) { return label.text.size() == kLabelLength; }));
static_assert(kCards.size() == kLabelLength);

// Width of a number of two or three digits on the hotfix line.
const char* const kTwoDigits = "2";
const char* const kThreeDigits = "3";

std::string blanks(std::int64_t count) { return std::string(static_cast<std::size_t>(count), ' '); }

bool startsWith(const std::string& line, const std::string& start) {
  return Left(line, Len(start)) == start;
}

// What follows the start of a line, when the line starts so.
bool take(const std::string& line, const std::string& start, std::string& value) {
  if (!startsWith(line, start)) return false;
  value = Mid(line, Len(start) + 1);
  return true;
}

// A number of at least two digits in brackets, as lists number their lines.
std::string bracketed(int number) {
  const std::string digits = std::to_string(number);
  return "[" + (digits.size() < 2 ? "0" + digits : digits) + "]: ";
}

// The place of the "H" of "Hotfix(s)" tells how many digits stand before it. The text of
// a single digit stays.
void judgeHotfixWidth(std::string& width) {
  if (Mid(width, 4, 1) == "H") {
    width = kTwoDigits;
  } else if (Mid(width, 5, 1) == "H") {
    width = kThreeDigits;
  }
}

}  // namespace

std::vector<std::string> piecesOf(std::string_view text) {
  std::vector<std::string> pieces;
  for (std::size_t end = text.find(kLineBreak); end != std::string_view::npos;
       end = text.find(kLineBreak)) {
    pieces.emplace_back(text.substr(0, end));
    text.remove_prefix(end + kLineBreak.size());
  }
  pieces.emplace_back(text);
  return pieces;
}

bool readLabelledLine(SummaryForm form, const std::string& line, SystemSummary& summary) {
  const std::string start = Left(line, kLabelLength);
  const auto label = std::find_if(kLabels.begin(), kLabels.end(), [&](const Label& candidate) {
    return candidate.from <= form && candidate.text == start;
  });
  if (label == kLabels.end()) return false;
  // A line too short for what its value drops leaves the field alone.
  skip([&] {
    summary.*(label->field) =
        Mid(line, kLabelLength + 1, Len(line) - kLabelLength - label->dropped);
  });
  return true;
}

void SummaryReader::readLine(const std::string& line) {
  if (readLabelledLine(SummaryForm::Full, line, summary_)) {
    if (Left(line, kLabelLength) != kHotfixes) return;
    judgeHotfixWidth(summary_.HotfixWidth);
    inHotfixes_ = true;
    return;
  }
  if (readHotfix(line)) return;
  if (readCardCount(line)) return;
  readCard(line);
}

// Only a list whose number has two digits is read. With another width the start is
// taken as 35 characters long against the 33 of the line that are compared, and never fits.
bool SummaryReader::readHotfix(const std::string& line) {
  if (!inHotfixes_) return false;
  ++hotfixLines_;
  if (summary_.HotfixWidth != kTwoDigits) return false;
  const std::string start = blanks(kLabelLength) + bracketed(hotfixLines_);
  // From the hundredth line on the number is too wide for its place.
  if (Len(start) != kDetailIndent || !startsWith(line, start)) return false;
  hotfixes_.push_back(Mid(line, kDetailIndent + 1));
  return true;
}

bool SummaryReader::readCardCount(const std::string& line) {
  if (Left(line, kLabelLength) != kCards) return false;
  inHotfixes_ = false;
  cardCount_ = Mid(line, kLabelLength + 1, 1);
  if (cardCount_ != "0") card_ = 1;
  return true;
}

void SummaryReader::readCard(const std::string& line) {
  if (card_ == 0) return;
  SystemSummary::NetCard& card = summary_.NetCards[static_cast<std::size_t>(card_ - 1)];
  const std::string indent = blanks(kDetailIndent);
  if (take(line, indent + "Connection Name: ", card.Connection)) return;
  if (take(line, indent + "DHCP Server:     ", card.Dhcp)) return;
  if (take(line, indent + bracketed(1), card.Ip)) {
    moveToNextCard();
    return;
  }
  take(line, blanks(kLabelLength) + bracketed(card_), card.Name);
}

// The first address is the last that is read of a card. A card without one never moves
// on, so that the next card's details land on it; with four cards or more the third
// takes those of all that follow.
void SummaryReader::moveToNextCard() {
  const std::string current = std::to_string(card_);
  if (card_ < static_cast<int>(summary_.NetCards.size())) {
    if (cardCount_ != current) ++card_;
  } else if (cardCount_ == current) {
    card_ = 0;
  }
}

}  // namespace veltrin
