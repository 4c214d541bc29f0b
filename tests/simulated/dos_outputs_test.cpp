// SPDX-License-Identifier: GPL-3.0-or-later
// The console runner: its steps, its chunks, its failures.
#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "frame/DOSOutputs.h"
#include "support/simulation.h"

namespace veltrin {
namespace {

using Texts = std::vector<std::string>;

// Writes down the operations on the pipe in the order in which they are asked for.
class RecordingProcesses : public SimulatedProcesses {
 public:
  using SimulatedProcesses::SimulatedProcesses;

  Texts operations;

  bool CreatePipe(Handle& readEnd, Handle& writeEnd) override {
    operations.push_back("pipe");
    return SimulatedProcesses::CreatePipe(readEnd, writeEnd);
  }
  int CreateProcess(const std::string& commandLine, Handle writeEnd,
                    ProcessInformation& started) override {
    operations.push_back("start " + commandLine);
    const int result = SimulatedProcesses::CreateProcess(commandLine, writeEnd, started);
    return startResult.value_or(result);
  }
  bool ReadFile(Handle readEnd, std::array<char, kReadGrain>& buffer, std::size_t& count) override {
    operations.push_back("read");
    return SimulatedProcesses::ReadFile(readEnd, buffer, count);
  }
  void fromCodePage(std::string& bytes) const override { bytes = decoded + bytes; }
  void CloseHandle(Handle handle) override {
    SimulatedProcesses::CloseHandle(handle);
    operations.push_back("close " + closed.back());
  }

  std::optional<int> startResult;  // instead of 1 or 0
  std::string decoded;             // what the code page makes of every piece, in front of it
};

class DosOutputs : public ::testing::Test {
 protected:
  DosOutputs() {
    runner.ReceiveOutputs = [this](const std::string& chunk) { chunks.push_back(chunk); };
    says({});
  }

  // What every command writes.
  void says(const std::vector<ToolWrite>& writes) {
    processes.tool = [writes](const std::string&) { return writes; };
  }

  Simulation simulation;
  RecordingProcesses processes{simulation.loop};
  Platform platform{simulation.loop,        simulation.loop,
                    simulation.clock,       simulation.desktop,
                    simulation.files,       processes,
                    simulation.profiles,    simulation.registry,
                    simulation.shell,       simulation.environment,
                    simulation.sockets,     simulation.counters,
                    simulation.wmi,         simulation.icmp,
                    simulation.downloads,   simulation.interfaces,
                    simulation.printers,    simulation.drives,
                    simulation.processList, "Veltrin"};
  DOSOutputs runner{platform};
  Texts chunks;
};

// --- The command line ---

TEST_F(DosOutputs, RunsTheCommandLineForAnEmptyArgument) {
  runner.CommandLine = "ping near.example -n 1";
  runner.ExecuteCommand();
  ASSERT_EQ(processes.starts.size(), 1U);
  EXPECT_EQ(processes.starts[0].commandLine, "ping near.example -n 1");
}

TEST_F(DosOutputs, AnArgumentReplacesTheCommandLine) {
  runner.CommandLine = "ping near.example -n 1";
  runner.ExecuteCommand("tracert far.example");
  ASSERT_EQ(processes.starts.size(), 1U);
  EXPECT_EQ(processes.starts[0].commandLine, "tracert far.example");
  EXPECT_EQ(runner.CommandLine, "tracert far.example");
}

TEST_F(DosOutputs, AnArgumentReplacesTheCommandLineAlsoWhenTheRunFails) {
  processes.failPipes = true;
  runner.ExecuteCommand("tracert far.example");
  EXPECT_EQ(runner.CommandLine, "tracert far.example");
}

TEST_F(DosOutputs, AnEmptyCommandLineShowsACriticalMessageUnderTheApplicationsTitle) {
  EXPECT_EQ(runner.ExecuteCommand(), "");
  ASSERT_EQ(simulation.desktop.messages.size(), 1U);
  EXPECT_EQ(simulation.desktop.messages[0].text, "Command Line empty");
  EXPECT_EQ(simulation.desktop.messages[0].style, 16);
  EXPECT_EQ(simulation.desktop.messages[0].title, "Veltrin");
}

TEST_F(DosOutputs, AnEmptyCommandLineMakesNoHandlesAndRaisesNoEvent) {
  runner.ExecuteCommand();
  EXPECT_EQ(processes.operations, Texts{});
  EXPECT_EQ(chunks, Texts{});
}

// --- The order of steps ---

TEST_F(DosOutputs, ClosesTheWriteEndBeforeTheFirstReadAndTheOthersBehindTheLast) {
  says({{10, "one"}, {10, "two"}});
  runner.ExecuteCommand("tool");
  EXPECT_EQ(processes.operations, (Texts{"pipe", "start tool", "close write", "read", "read",
                                         "read", "close process", "close thread", "close read"}));
}

TEST_F(DosOutputs, LeavesNoHandleOpenBehindARun) {
  says({{10, "text"}});
  runner.ExecuteCommand("tool");
  EXPECT_EQ(processes.openHandles(), 0U);
}

TEST_F(DosOutputs, ClosesItsHandlesWhenTheProgramEndsInsideAHandler) {
  says({{10, "text"}});
  runner.ReceiveOutputs = [](const std::string&) { throw ProgramEnded{}; };
  EXPECT_THROW(runner.ExecuteCommand("tool"), ProgramEnded);
  EXPECT_EQ(processes.closed, (Texts{"write", "process", "thread", "read"}));
}

TEST_F(DosOutputs, ReturnsTheWholeTextOfTheRun) {
  says({{10, "one "}, {10, "two"}});
  EXPECT_EQ(runner.ExecuteCommand("tool"), "one two");
  EXPECT_EQ(runner.Outputs(), "one two");
}

TEST_F(DosOutputs, StartsEachRunWithEmptyOutputs) {
  says({{10, "first"}});
  runner.ExecuteCommand("tool");
  says({{10, "second"}});
  EXPECT_EQ(runner.ExecuteCommand("tool"), "second");
}

TEST_F(DosOutputs, TheOutputsOfTheRunBeforeAreGoneBeforeTheFirstEvent) {
  says({{10, "first"}});
  runner.ExecuteCommand("tool");
  says({});
  std::string seen = "unset";
  runner.ReceiveOutputs = [&](const std::string&) { seen = runner.Outputs(); };
  runner.ExecuteCommand("tool");
  EXPECT_EQ(seen, "");
}

TEST_F(DosOutputs, RunsWithoutAHandler) {
  says({{10, "text"}});
  runner.ReceiveOutputs = nullptr;
  EXPECT_EQ(runner.ExecuteCommand("tool"), "text");
}

// --- Chunks ---

TEST_F(DosOutputs, ACommandThatPrintsNothingRaisesOneEmptyChunkAndReturnsNothing) {
  EXPECT_EQ(runner.ExecuteCommand("tool"), "");
  EXPECT_EQ(chunks, Texts{""});
}

TEST_F(DosOutputs, ExactlyTheGrainIsOneChunkAndThenTheEmptyOne) {
  says({{10, std::string(256, 'x')}});
  runner.ExecuteCommand("tool");
  EXPECT_EQ(chunks, (Texts{std::string(256, 'x'), ""}));
}

TEST_F(DosOutputs, OneByteMoreThanTheGrainIsTwoChunks) {
  says({{10, std::string(257, 'x')}});
  runner.ExecuteCommand("tool");
  EXPECT_EQ(chunks, (Texts{std::string(256, 'x'), "x", ""}));
}

TEST_F(DosOutputs, BoundsOfChunksFallWhereTheWritesPutThemAndNotAtLineEnds) {
  says({{10, "Minimum = 2ms, Aver"}, {10, "age = 3ms\r\nDo"}, {10, "ne\r\n"}});
  runner.ExecuteCommand("tool");
  EXPECT_EQ(chunks, (Texts{"Minimum = 2ms, Aver", "age = 3ms\r\nDo", "ne\r\n", ""}));
}

TEST_F(DosOutputs, WritesOfOneMomentArriveInOneChunk) {
  says({{10, "one\r\n"}, {0, "two\r\n"}});
  runner.ExecuteCommand("tool");
  EXPECT_EQ(chunks, (Texts{"one\r\ntwo\r\n", ""}));
}

TEST_F(DosOutputs, OutputsIncludeTheChunkWhenItsHandlerRuns) {
  says({{10, "one "}, {10, "two"}});
  Texts seen;
  runner.ReceiveOutputs = [&](const std::string&) { seen.push_back(runner.Outputs()); };
  runner.ExecuteCommand("tool");
  EXPECT_EQ(seen, (Texts{"one ", "one two", "one two"}));
}

TEST_F(DosOutputs, AHandlerHasReturnedBeforeTheNextRead) {
  says({{10, "one"}, {10, "two"}});
  std::vector<std::size_t> reads;
  const auto count = [this] {
    return static_cast<std::size_t>(
        std::count(processes.operations.begin(), processes.operations.end(), "read"));
  };
  runner.ReceiveOutputs = [&](const std::string&) { reads.push_back(count()); };
  runner.ExecuteCommand("tool");
  EXPECT_EQ(reads, (std::vector<std::size_t>{1, 2, 3}));
}

TEST_F(DosOutputs, KeepsNulCharactersOfTheOutput) {
  const std::string text("a\0b", 3);
  says({{10, text}});
  EXPECT_EQ(runner.ExecuteCommand("tool"), text);
}

TEST_F(DosOutputs, HandsOnWhatTheCodePageMakesOfThePiece) {
  says({{10, "text"}});
  processes.decoded = "~";
  runner.ExecuteCommand("tool");
  EXPECT_EQ(chunks, (Texts{"~text", "~"}));
}

TEST_F(DosOutputs, TheRunLastsUntilThePipeEndsAndNotUntilTheLastText) {
  says({{10, "text"}, {5000, ""}});
  runner.ExecuteCommand("tool");
  EXPECT_EQ(simulation.loop.milliseconds(), 5010);
}

// --- Events meanwhile ---

TEST_F(DosOutputs, NoEventIsDeliveredWhileTheToolIsSilent) {
  says({{3000, "text"}});
  std::int64_t delivered = -1;
  simulation.loop.at(1000, [&] { delivered = simulation.loop.milliseconds(); });
  simulation.loop.at(0, [&] { runner.ExecuteCommand("tool"); });
  simulation.run(10000);
  EXPECT_EQ(delivered, 3000);
}

TEST_F(DosOutputs, AHandlerThatYieldsLetsEventsRunInsideTheRun) {
  says({{1000, "one"}, {1000, "two"}});
  runner.ReceiveOutputs = [&](const std::string&) { simulation.loop.DoEvents(); };
  bool running = false;
  bool deliveredInside = false;
  simulation.loop.at(500, [&] { deliveredInside = running; });
  simulation.loop.at(0, [&] {
    running = true;
    runner.ExecuteCommand("tool");
    running = false;
  });
  simulation.run(10000);
  EXPECT_TRUE(deliveredInside);
}

TEST_F(DosOutputs, ARunStartedInsideARunEndsFirstAndTheOuterOneAppendsToItsText) {
  processes.tool = [](const std::string& command) {
    return command == "inner" ? std::vector<ToolWrite>{{10, "inner "}}
                              : std::vector<ToolWrite>{{10, "lost "}, {10, "outer"}};
  };
  std::string inner;
  runner.ReceiveOutputs = [&](const std::string& chunk) {
    if (chunk == "lost ") inner = runner.ExecuteCommand("inner");
  };
  EXPECT_EQ(runner.ExecuteCommand("outer"), "inner outer");
  EXPECT_EQ(inner, "inner ");
}

TEST_F(DosOutputs, ARunStartedInsideARunHasHandlesOfItsOwn) {
  says({{10, "text"}});
  bool nested = false;
  runner.ReceiveOutputs = [&](const std::string&) {
    if (std::exchange(nested, true)) return;
    runner.ExecuteCommand("inner");
  };
  runner.ExecuteCommand("outer");
  EXPECT_EQ(processes.closed,
            (Texts{"write", "write", "process", "thread", "read", "process", "thread", "read"}));
  EXPECT_EQ(processes.openHandles(), 0U);
}

// --- Failures ---

TEST_F(DosOutputs, WithoutAPipeTheResultIsEmptyAndNothingIsSaid) {
  processes.failPipes = true;
  EXPECT_EQ(runner.ExecuteCommand("tool"), "");
  EXPECT_TRUE(simulation.desktop.messages.empty());
  EXPECT_EQ(processes.operations, Texts{"pipe"});
  EXPECT_EQ(chunks, Texts{});
}

TEST_F(DosOutputs, AMissingProgramShowsOneCriticalMessageAndRaisesNoEvent) {
  processes.tool = [](const std::string&) { return std::nullopt; };
  EXPECT_EQ(runner.ExecuteCommand("nowhere.exe"), "");
  ASSERT_EQ(simulation.desktop.messages.size(), 1U);
  EXPECT_EQ(simulation.desktop.messages[0].text, "File or command not found");
  EXPECT_EQ(simulation.desktop.messages[0].style, 16);
  EXPECT_EQ(simulation.desktop.messages[0].title, "Veltrin");
  EXPECT_EQ(chunks, Texts{});
}

TEST_F(DosOutputs, AMissingProgramLeavesBothEndsOfThePipeOpen) {
  processes.tool = [](const std::string&) { return std::nullopt; };
  runner.ExecuteCommand("nowhere.exe");
  EXPECT_EQ(processes.closed, Texts{});
  EXPECT_EQ(processes.openHandles(), 2U);
}

TEST_F(DosOutputs, AStartWithAnotherResultThanOneCountsAsFailed) {
  processes.startResult = 2;
  EXPECT_EQ(runner.ExecuteCommand("tool"), "");
  ASSERT_EQ(simulation.desktop.messages.size(), 1U);
  EXPECT_EQ(simulation.desktop.messages[0].text, "File or command not found");
}

class DosOutputsAfterARun : public DosOutputs {
 protected:
  DosOutputsAfterARun() {
    says({{10, "earlier text"}});
    runner.ExecuteCommand("tool");
  }
};

TEST_F(DosOutputsAfterARun, AnEmptyCommandLineLeavesTheOutputs) {
  runner.CommandLine.clear();
  EXPECT_EQ(runner.ExecuteCommand(), "");
  EXPECT_EQ(runner.Outputs(), "earlier text");
}

TEST_F(DosOutputsAfterARun, AMissingPipeLeavesTheOutputs) {
  processes.failPipes = true;
  EXPECT_EQ(runner.ExecuteCommand(), "");
  EXPECT_EQ(runner.Outputs(), "earlier text");
}

TEST_F(DosOutputsAfterARun, AMissingProgramLeavesTheOutputs) {
  processes.tool = [](const std::string&) { return std::nullopt; };
  EXPECT_EQ(runner.ExecuteCommand(), "");
  EXPECT_EQ(runner.Outputs(), "earlier text");
}

TEST_F(DosOutputs, AReadErrorMidwayEndsTheRunWithItsEventAndTheTextSoFar) {
  says({{10, "one "}, {10, "two "}, {10, "never read"}});
  processes.readsBeforeError = 2;
  EXPECT_EQ(runner.ExecuteCommand("tool"), "one two ");
  EXPECT_EQ(chunks, (Texts{"one ", "two ", ""}));
  EXPECT_EQ(processes.openHandles(), 0U);
  EXPECT_TRUE(simulation.desktop.messages.empty());
}

}  // namespace
}  // namespace veltrin
