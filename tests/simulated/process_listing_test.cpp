// SPDX-License-Identifier: GPL-3.0-or-later
// The listing of processes in the system report.
#include "simulated/reported_run.h"
#include "sysinfo/modTasks.h"

namespace veltrin {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class ProcessListing : public ReportedRun {
 protected:
  using Process = SimulatedProcessList::Process;

  // The lines behind the heading of the second list.
  ReportLines modulesPrinted() {
    modTasks(program, window.get());
    const ReportLines all = lines();
    const auto heading = std::find(all.begin(), all.end(), "13 drive: User Processes anf Threads");
    return heading == all.end() ? ReportLines{"no heading"} : ReportLines(heading + 1, all.end());
  }

  // How one module's path is printed.
  std::string lineOf(const std::string& path) {
    window->SYSView.Clear();
    list.processes = {{1, "x.exe", {path}}};
    return modulesPrinted().at(0);
  }

  std::int32_t count() { return program.shared<TaskValues>().ProcessCount; }

  SimulatedProcessList& list = simulation.processList;
};

TEST_F(ProcessListing, OfAMachineIsPrintedWhole) {
  list.processes = {
      {0, "[System Process]", {}, true},
      {4, "System", {"\\SystemRoot\\System32\\ntoskrnl.exe"}},
      {620, "C:\\Windows\\Explorer.EXE", {"C:\\Windows\\Explorer.EXE", "C:\\Windows\\a.dll"}},
  };
  modTasks(program, window.get());
  EXPECT_THAT(lines(), ElementsAre("0 plain:     ",                                 //
                                   "13 drive: Running Processes",                   //
                                   "0 bold: [system process]",                      //
                                   "0 bold: system",                                //
                                   "0 bold: explorer.exe",                          //
                                   "0 plain:     ",                                 //
                                   "0 plain:     ",                                 //
                                   "13 drive: User Processes anf Threads",          //
                                   "0 bold: \\SystemRoot\\System32\\ntoskrnl.exe",  //
                                   "0 bold: C:\\Windows\\Explorer.EXE",             //
                                   "0 plain: C:\\Windows\\a.dll          "));
  EXPECT_EQ(count(), 3);
}

TEST_F(ProcessListing, AsksForProcessesByTheirNumbers) {
  list.processes = {{7, "x.exe", {}}, {8, "y.exe", {}, true}};
  modTasks(program, window.get());
  EXPECT_THAT(list.calls,
              ElementsAre("CreateToolhelp32Snapshot 2 0", "CloseHandle 1", "EnumProcesses 4096",
                          "OpenProcess 1040 0 7", "CloseHandle 2", "OpenProcess 1040 0 8"));
  EXPECT_EQ(list.openHandles, 0);
}

TEST_F(ProcessListing, CountsEachListingAnew) {
  list.processes = {{1, "x.exe", {}}};
  modTasks(program, window.get());
  modTasks(program, window.get());
  EXPECT_EQ(count(), 1);
}

TEST_F(ProcessListing, WithoutAWindowCountsAndPrintsNothing) {
  list.processes = {{1, "x.exe", {"C:\\x.exe"}}};
  modTasks(program, nullptr);
  EXPECT_EQ(count(), 1);
  EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(ProcessListing, TakesTheNameBehindTheLastBackslash) {
  list.processes = {{1, "a\\B\\C.exe", {}}, {2, "d\\", {}}, {3, "/E/f", {}}};
  modTasks(program, window.get());
  const ReportLines all = lines();
  EXPECT_THAT(ReportLines(all.begin() + 2, all.begin() + 5),
              ElementsAre("0 bold: c.exe", "0 bold: ", "0 bold: /e/f"));
}

// --- Paths ---

TEST_F(ProcessListing, APathInUpperCaseIsBoldAndKeepsItsCase) {
  EXPECT_EQ(lineOf("C:\\PROGRAMS\\X.EXE"), "0 bold: C:\\PROGRAMS\\X.EXE");
}

TEST_F(ProcessListing, LibrariesArePlainWithTenBlanksBehindThem) {
  for (const char* path : {"C:\\a.dll", "C:\\a.DRV", "C:\\a.tmp"}) {
    EXPECT_EQ(lineOf(path), "0 plain: " + std::string(path) + "          ");
  }
}

TEST_F(ProcessListing, AModuleWithoutAnEndingIsPlainWithTenBlanksBehindIt) {
  EXPECT_EQ(lineOf("C:\\Windows\\screen.scr"), "0 plain: C:\\Windows\\screen.scr          ");
  EXPECT_EQ(lineOf("x"), "0 plain: x          ");
  EXPECT_EQ(lineOf(".ex"), "0 plain: .ex          ");
}

TEST_F(ProcessListing, TheFirstEndingInAPathDecides) {
  EXPECT_EQ(lineOf("C:\\setup.exe.d\\a.dll"), "0 bold: C:\\setup.exe.d\\a.dll");
  EXPECT_EQ(lineOf("C:\\my.tmp\\a.exe"), "0 plain: C:\\my.tmp\\a.exe          ");
}

TEST_F(ProcessListing, CountsCharactersOfAForeignPath) {
  EXPECT_EQ(lineOf("C:\\H\xC3\xB6he\\x.Exe"), "0 bold: C:\\H\xC3\xB6he\\x.Exe");
}

// --- Failures ---

TEST_F(ProcessListing, AProcessThatRefusesStandsInTheFirstListAlone) {
  list.processes = {{1, "own.exe", {"C:\\own.exe"}}, {2, "other.exe", {"C:\\other.exe"}, true}};
  EXPECT_THAT(modulesPrinted(), ElementsAre("0 bold: C:\\own.exe"));
  EXPECT_THAT(lines(), Contains("0 bold: other.exe"));
}

TEST_F(ProcessListing, AProcessThatHidesItsModulesIsClosedAndPassedOver) {
  list.processes = {{1, "x.exe", {"C:\\x.exe"}, false, true}, {2, "y.exe", {"C:\\y.exe"}}};
  EXPECT_THAT(modulesPrinted(), ElementsAre("0 bold: C:\\y.exe"));
  EXPECT_EQ(list.openHandles, 0);
}

TEST_F(ProcessListing, WithoutASnapshotTheFirstListIsEmpty) {
  list.processes = {{1, "x.exe", {"C:\\x.exe"}}};
  list.refusesSnapshot = true;
  EXPECT_THAT(modulesPrinted(), ElementsAre("0 bold: C:\\x.exe"));
  EXPECT_EQ(count(), 0);
}

TEST_F(ProcessListing, TheFirstEntryThatFailsEndsTheFirstList) {
  list.processes = {{1, "x.exe", {}}, {2, "y.exe", {}}, {3, "z.exe", {}}};
  list.snapshotEnd = 1;
  modTasks(program, window.get());
  EXPECT_EQ(lines().size(), 2U + 1U + 3U);
  EXPECT_EQ(count(), 1);
}

TEST_F(ProcessListing, WithoutIdsTheSecondListIsEmpty) {
  list.processes = {{1, "x.exe", {"C:\\x.exe"}}};
  list.refusesEnumeration = true;
  EXPECT_THAT(modulesPrinted(), IsEmpty());
}

TEST_F(ProcessListing, AModuleThatTellsNoNameIsUnknown) {
  EXPECT_EQ(lineOf(""), "0 plain: unknown          ");
}

// --- Many ---

TEST_F(ProcessListing, OfThreeThousandProcessesAllAreListedAndThoseOfTheTableLookedInto) {
  for (std::uint32_t id = 1; id <= 3000; ++id) {
    list.processes.push_back({id, "P.exe", {"C:\\" + std::to_string(id) + ".exe"}});
  }
  const ReportLines printed = modulesPrinted();
  EXPECT_EQ(count(), 3000);
  ASSERT_EQ(printed.size(), 1024U);
  EXPECT_EQ(printed.front(), "0 bold: C:\\1.exe");
  EXPECT_EQ(printed.back(), "0 bold: C:\\1024.exe");
  EXPECT_EQ(list.openHandles, 0);
}

TEST_F(ProcessListing, OfMoreModulesThanTheTableHoldsTheRestIsUnknown) {
  list.processes = {{1, "x.exe", std::vector<std::string>(1026, "C:\\x.exe")}};
  const ReportLines printed = modulesPrinted();
  ASSERT_EQ(printed.size(), 1026U);
  EXPECT_EQ(printed[1023], "0 bold: C:\\x.exe");
  EXPECT_EQ(printed[1024], "0 plain: unknown          ");
  EXPECT_EQ(printed[1025], "0 plain: unknown          ");
}

TEST_F(ProcessListing, ALongPathIsCutAt400Characters) {
  EXPECT_EQ(lineOf(std::string(500, 'x')), "0 plain: " + std::string(400, 'x') + "          ");
}

}  // namespace
}  // namespace veltrin
