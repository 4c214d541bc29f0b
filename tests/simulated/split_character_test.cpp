// SPDX-License-Identifier: GPL-3.0-or-later
// A character that the bound of a read cuts in two.
#include <map>
#include <string>

#include "route/trace.h"
#include "simulated/route_run.h"

namespace veltrin {
namespace {

// As many bytes as one read takes, less one, and behind them a letter of two.
const std::string kFilling(kReadGrain - 1, 'x');
const std::string kWhole = kFilling + "\u00E9 z\r\n";

class SplitCharacter : public RouteRun {
 protected:
  SplitCharacter() {
    script = [](const std::string&) { return std::vector<ToolWrite>{{kToolTime, kWhole}}; };
  }
};

TEST_F(SplitCharacter, ComesInTwoChunksAndIsWholeInTheOutputs) {
  DOSOutputs runner(simulation.platform);
  std::vector<std::string> chunks;
  runner.ReceiveOutputs = [&](const std::string& chunk) { chunks.push_back(chunk); };
  EXPECT_EQ(runner.ExecuteCommand("tracert near.example"), kWhole);
  EXPECT_EQ(chunks, (std::vector<std::string>{kFilling + "\xC3", "\xA9 z\r\n", ""}));
}

TEST_F(SplitCharacter, IsWholeInTheWindowItsFileAndOnTheClipboard) {
  const auto window = simulation.program().show<trace>();
  simulation.desktop.choose(window->menuclear);
  simulation.desktop.type(window->trace1, "near.example");
  simulation.desktop.type(window->Combo1, "1");
  simulation.desktop.click(window->startit);
  const std::string text = "1 passes will be run" + kWhole +
                           "Performing Trace Route - Pass 1 to near.example\r\n" + kWhole +
                           "******* Test is Complete ********* ";
  EXPECT_EQ(window->txtOutputs.text.get(), text);
  simulation.desktop.click(window->write1);
  ASSERT_EQ(simulation.files.contents.size(), 1U);
  EXPECT_EQ(simulation.files.contents.begin()->second, text);
  simulation.desktop.click(window->copy1);
  EXPECT_EQ(simulation.desktop.clipboard, text);
}

}  // namespace
}  // namespace veltrin
