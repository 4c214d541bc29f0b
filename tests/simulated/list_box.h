// SPDX-License-Identifier: GPL-3.0-or-later
// A list box on the simulated platform, and what it tells whoever shows it.
#pragma once

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "controls/LVListBox.h"
#include "support/simulation.h"

namespace veltrin {

using Texts = std::vector<std::string>;

// Keeps what it is told, in order, and the selection that it sees then.
class ListScreen : public ListViewScreen {
 public:
  Texts told;
  std::uintptr_t handle = 0;

  void noteInserted(std::size_t index) override { tell("inserted", index); }
  void noteRemoved(std::size_t index) override { tell("removed", index); }
  void noteChanged(std::size_t index) override { tell("changed", index); }
  void noteReset() override { told.emplace_back("reset"); }
  void noteSelection() override { told.emplace_back("selection"); }
  void EnsureVisible(std::size_t index) override { tell("visible", index); }
  void StartLabelEdit(std::size_t index) override { tell("edit", index); }
  void lockDrawing(bool locked) override { told.emplace_back(locked ? "locked" : "unlocked"); }
  void Refresh() override { told.emplace_back("refresh"); }
  std::uintptr_t hWnd() const override { return handle; }

 private:
  void tell(const std::string& what, std::size_t index) {
    told.push_back(what + " " + std::to_string(index));
  }
};

class ListBoxTest : public testing::Test {
 protected:
  // Adds lines with these texts, and forgets what the screen was told of it.
  void fill(const Texts& lines) {
    for (const std::string& line : lines) list.AddItem(line);
    screen.told.clear();
  }

  const ListLine& line(std::size_t index) const { return list.ListView1.line(index); }
  std::uint64_t life() const { return list.ListView1.life(); }

  Texts texts() const {
    Texts all;
    for (std::size_t index = 0; index < list.ListView1.count(); ++index) {
      all.push_back(line(index).Text);
    }
    return all;
  }

  // The texts of the selected lines.
  Texts selected() const {
    Texts all;
    for (std::size_t index = 0; index < list.ListView1.count(); ++index) {
      if (line(index).Selected) all.push_back(line(index).Text);
    }
    return all;
  }

  Simulation simulation;
  LVListBox list{simulation.platform};
  ListScreen screen;

  void SetUp() override { list.ListView1.setScreen(&screen); }
};

}  // namespace veltrin
