// SPDX-License-Identifier: GPL-3.0-or-later
// The rows that a benchmark adds to the table of all of them, which bench/run.sh makes.
#pragma once

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>

namespace veltrin {

// What the exit code of a benchmark says beside EXIT_SUCCESS and EXIT_FAILURE: that all
// went well but a figure falls short of its goal, and that it, or a peer, cannot run here.
constexpr int kGoalMissed = 2;
constexpr int kCannotRun = 77;

// A number for people, of about three digits.
inline std::string rounded(double value) {
  const double size = std::abs(value);
  const char* form = "%.3g";
  if (size >= 100) {
    form = "%.0f";
  } else if (size >= 10) {
    form = "%.1f";
  } else if (size >= 1 || size == 0) {
    form = "%.2f";
  }
  char text[32];
  std::snprintf(text, sizeof text, form, value);
  return text;
}

// What a figure is held to: a bound that it may reach.
struct Goal {
  double bound = 0;
  bool isMost = true;

  bool isMetBy(double figure) const { return isMost ? figure <= bound : figure >= bound; }
  std::string text(const std::string& unit) const {
    char number[32];
    std::snprintf(number, sizeof number, bound < 1 ? "%.2g" : "%.6g", bound);
    return number + (unit.empty() ? std::string() : " " + unit) +
           (isMost ? " or less" : " or more");
  }
};
inline Goal atMost(double bound) { return {bound, true}; }
inline Goal atLeast(double bound) { return {bound, false}; }

// A row. The goal is one of the ratio where there is a peer, else of our own figure.
struct Row {
  std::string what;
  double ours = 0;
  std::string unit;              // of both figures; empty for a mere number
  std::string peer;              // beside whom; empty when there is nobody
  std::optional<double> theirs;  // nothing when the peer is not here
  std::optional<Goal> goal;
};

// Prints rows as those of a Markdown table of six columns: what, ours, peer, ratio, goal,
// and whether the goal is met. Whatever else a benchmark prints begins otherwise.
class Table {
 public:
  // Nothing is judged in a smoke run, which says only that a benchmark works.
  explicit Table(bool isJudged) : isJudged_(isJudged) {}

  void add(const Row& row) {
    const bool hasPeer = !row.peer.empty();
    const bool isWhole = !hasPeer || row.theirs;
    const double figure = hasPeer && row.theirs ? row.ours / *row.theirs : row.ours;
    std::string verdict;
    if (row.goal && isWhole && isJudged_) {
      const bool isMet = row.goal->isMetBy(figure);  // false for what is no number
      if (!isMet) hasMissed_ = true;
      verdict = isMet ? "met" : "missed";
    } else if (row.goal) {
      verdict = "not judged";
    }
    if (!isWhole) lacksPeer_ = true;
    const std::string theirs =
        !hasPeer ? "" : row.peer + (row.theirs ? ": " + inUnit(*row.theirs, row) : " is not here");
    print(row.what, inUnit(row.ours, row), theirs, hasPeer && isWhole ? rounded(figure) : "",
          row.goal ? row.goal->text(hasPeer ? "" : row.unit) : "", verdict);
  }

  // A row of what cannot be measured here, and why.
  void cannot(const std::string& what, const std::string& why) {
    lacksPeer_ = true;
    print(what, "not measured", why, "", "", "");
  }

  bool isJudged() const { return isJudged_; }

  // When all else went well.
  int exitCode() const {
    if (hasMissed_) return kGoalMissed;
    return lacksPeer_ ? kCannotRun : EXIT_SUCCESS;
  }

 private:
  static std::string inUnit(double value, const Row& row) {
    return rounded(value) + (row.unit.empty() ? "" : " " + row.unit);
  }

  static void print(const std::string& what, const std::string& ours, const std::string& theirs,
                    const std::string& ratio, const std::string& goal, const std::string& verdict) {
    std::printf("| %s | %s | %s | %s | %s | %s |\n", what.c_str(), ours.c_str(), theirs.c_str(),
                ratio.c_str(), goal.c_str(), verdict.c_str());
    std::fflush(stdout);
  }

  bool isJudged_;
  bool hasMissed_ = false;
  bool lacksPeer_ = false;
};

}  // namespace veltrin
