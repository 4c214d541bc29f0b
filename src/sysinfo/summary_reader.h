// SPDX-License-Identifier: GPL-3.0-or-later
// The reading of the text in which the system's own tool tells about the machine.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "frame/system_summary.h"

namespace veltrin {

// The short form is read once, at the first start; the full form for every report.
enum class SummaryForm { Short, Full };

// The tool's text between its line breaks (CR LF), empty pieces included. A text
// without a line break is one piece.
std::vector<std::string> piecesOf(std::string_view text);

// Stores what stands behind a line's label in the label's field of the summary. False
// for a line that bears none of the form's labels. A label is its text padded with
// blanks to 27 characters, and the line has to start with all of them.
bool readLabelledLine(SummaryForm form, const std::string& line, SystemSummary& summary);

// Reads the lines of one text in the full form, with their indents: labels, names of
// hotfixes, network cards.
class SummaryReader {
 public:
  explicit SummaryReader(SystemSummary& summary) : summary_(summary) {}

  // Reads the next line.
  void readLine(const std::string& line);

  // The names of the hotfixes in the lines so far, in their order.
  const std::vector<std::string>& hotfixes() const { return hotfixes_; }

  // How many cards there are: the first character of what the text tells, so that 12
  // cards count as 1. Empty before that line.
  const std::string& cardCount() const { return cardCount_; }

 private:
  bool readHotfix(const std::string& line);
  bool readCardCount(const std::string& line);
  void readCard(const std::string& line);
  void moveToNextCard();

  SystemSummary& summary_;
  std::vector<std::string> hotfixes_;
  std::string cardCount_;
  bool inHotfixes_ = false;
  int hotfixLines_ = 0;  // since the start, also those that named none
  int card_ = 0;         // the card that the lines tell of, from 1; 0 for none
};

}  // namespace veltrin
