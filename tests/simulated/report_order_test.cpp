// SPDX-License-Identifier: GPL-3.0-or-later
// The order of the report, what gates its sections, and the modes of the routine that prints
// it.
#include "simulated/catalogue_run.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A machine with two network cards and ten hotfixes.
const ReportText kSystem{
    headingLine("Operating System", 26),
    boldLine("OS: Example Desktop 7   6.1.7601 Service Pack 1 Build 7601"),
    plainLine("   Installed: 1/30/2026, 3:22:51 PM   BootTime: 3/7/2026, 8:01:12 AM"),
    plainLine("   Product ID: 12345-678-9012345-67")};
const ReportText kProcessors{kGap, headingLine("Processors", 1),
                             boldLine("Number of CPUs: 2     Cores: 4"), headingLine("Cache", 9)};
const ReportText kMemory{kGap, headingLine("Physical Memory", 20),
                         boldLine("Total Memory: 3,957MB  Free: 2,046MB")};
const ReportText kDrives{headingLine("     ", 0),
                         headingLine("Physical Hard Drive Information", 0),
                         kGap,
                         headingLine("                  Logical Drive Information", 0),
                         headingLine(" ", 0),
                         headingLine("C:   (Empty)", 16),
                         headingLine(" ", 0),
                         headingLine("                  Detailed Physical Drive Information", 0)};
const ReportText kBoard{kGap,
                        headingLine("MotherBoard", 20),
                        plainLine("Board 7 "),
                        plainLine("    Example Boards"),
                        boldLine("   Bios Version: Example Bios A05, 8/10/2025"),
                        boldLine("   Slots:"),
                        boldLine("HD Controller:"),
                        boldLine("Floppy Controller:")};
const ReportText kVideo{kGap, headingLine("Video Card", 4), headingLine("Monitor", 23)};
const ReportText kPeripherals{kGap,
                              headingLine("Sound", 33),
                              headingLine("Keyboard", 19),
                              headingLine("Mouse - Pointer", 24),
                              headingLine("Printer", 29),
                              headingLine("Net Card", 6),
                              boldLine(" Card 1"),
                              boldLine("    Connection: Connection 1"),
                              boldLine("    IP: 192.0.2.1"),
                              boldLine("    DHCP: 198.51.100.1"),
                              boldLine(" Card 2"),
                              boldLine("    Connection: Connection 2"),
                              boldLine("    IP: 192.0.2.2"),
                              boldLine("    DHCP: 198.51.100.2"),
                              headingLine("USB", 34),
                              headingLine("PnP Signed", 0)};
const ReportText kComputer{headingLine("System", 35)};
const ReportText kDesktop{kGap, headingLine("DeskTOP", 10)};
const ReportText kStartup{kGap,
                          headingLine("Start UP", 36),
                          kGap,
                          headingLine("Running Processes", 13),
                          boldLine("explorer.exe"),
                          kGap,
                          kGap,
                          headingLine("User Processes anf Threads", 13)};
const ReportText kDrivers{kGap, headingLine("System Drivers", 36)};
const ReportText kSoftware{kGap, headingLine("Installed Software", 36)};
const ReportText kUsers{kGap, headingLine("Users", 2)};
const ReportText kHotfixes{kGap,
                           headingLine("HOT Fixes", 0),
                           plainLine("HotFix1: KB1"),
                           plainLine("HotFix2: KB2"),
                           plainLine("HotFix3: KB3"),
                           plainLine("HotFix4: KB4"),
                           plainLine("HotFix5: KB5"),
                           plainLine("HotFix6: KB6"),
                           plainLine("HotFix7: KB7"),
                           plainLine("HotFix8: KB8"),
                           plainLine("HotFix9: KB9"),
                           plainLine("HotFix10: KB10")};
const ReportText kErrors{kGap, headingLine("Windows Errors", 2)};

// Tells what comes into the list of the report, in the order of all else that is asked.
class ListObserver : public ListViewScreen {
 public:
  ListObserver(ListView& list, Journal& journal) : list_(list), journal_(journal) {}

  void noteInserted(std::size_t index) override {
    journal_.push_back("line " + list_.line(index).Text);
  }
  void noteRemoved(std::size_t /*index*/) override {}
  void noteChanged(std::size_t /*index*/) override {}
  void noteReset() override {}
  void noteSelection() override {}
  void EnsureVisible(std::size_t /*index*/) override {}
  void StartLabelEdit(std::size_t /*index*/) override {}
  void lockDrawing(bool /*locked*/) override {}
  void Refresh() override {}
  std::uintptr_t hWnd() const override { return 0; }

 private:
  ListView& list_;
  Journal& journal_;
};

class ReportOrder : public CatalogueRun {
 protected:
  ReportOrder() {
    prints(printed(desktop(10, 2)));
    answer("Select * from Win32_LogicalDisk",
           {{{{"Caption", "C:"}, {"MediaType", 5}, {"VolumeName", ""}}}});
    answer("Select * from Win32_DiskDrive", {});
    simulation.processList.processes = {{7, "C:\\Windows\\Explorer.EXE", {}, true}};
  }

  std::shared_ptr<DosApp> buffers = program.keep<DosApp>();
};

TEST_F(ReportOrder, OfAllSections) {
  tickAll();
  EXPECT_EQ(press(), joinedLines({kSystem,
                                  kProcessors,
                                  kMemory,
                                  kDrives,
                                  kBoard,
                                  kVideo,
                                  kPeripherals,
                                  {kGap},
                                  kComputer,
                                  {kGap},
                                  kDesktop,
                                  kStartup,
                                  kDrivers,
                                  kSoftware,
                                  kUsers,
                                  kHotfixes,
                                  kErrors}));
}

TEST_F(ReportOrder, OfTheQueries) {
  for (const ReportBox box :
       {ReportBox::Users, ReportBox::Processors, ReportBox::Memory, ReportBox::Board,
        ReportBox::Video, ReportBox::Peripherals, ReportBox::Software, ReportBox::Startup,
        ReportBox::Drivers, ReportBox::Hotfixes, ReportBox::Errors, ReportBox::Desktop,
        ReportBox::System}) {
    tick({box});
  }
  press();
  std::vector<std::string> queries;
  queries.reserve(kReportClasses.size());
  for (const std::string& name : kReportClasses) queries.push_back("Select * from " + name);
  EXPECT_EQ(simulation.wmi.queries, queries);
}

TEST_F(ReportOrder, AHeadingStandsBeforeItsQueryAndItsLinesBeforeTheNext) {
  prints("");
  answer("Select * from Win32_videocontroller", {{{{"CurrentBitsPerPixel", 32}}}});
  answer("Select * from Win32_DesktopMonitor", {{{{"Caption", "Example 24"}}}});
  tick({ReportBox::Video});
  ListObserver observer(window->SYSView.ListView1, simulation.journal);
  window->SYSView.ListView1.setScreen(&observer);
  simulation.wmi.journal = &simulation.journal;
  press();
  window->SYSView.ListView1.setScreen(nullptr);
  EXPECT_THAT(
      simulation.journal,
      ElementsAre("connect winmgmts:\\\\KITCHEN\\root\\cimv2",
                  "query Select * from Win32_PhysicalMemory", "line Operating System",
                  "line OS:    ", "line    Installed:    BootTime: ", "line    Product ID: ",
                  "line     ", "line Video Card", "connect winmgmts:\\\\KITCHEN\\root\\cimv2",
                  "query Select * from Win32_videocontroller", "line     Bits Per Pixel: 32",
                  "line Monitor", "connect winmgmts:\\\\KITCHEN\\root\\cimv2",
                  "query Select * from Win32_DesktopMonitor", "line     Example 24", "line     ",
                  "line     "));
}

TEST_F(ReportOrder, NothingTickedPrintsTheSystemAndTwoGaps) {
  EXPECT_EQ(press(), joinedLines({kSystem, {kGap, kGap}}));
}

TEST_F(ReportOrder, NothingTickedAsksForTheMemoryAlone) {
  press();
  EXPECT_THAT(simulation.wmi.queries, ElementsAre("Select * from Win32_PhysicalMemory"));
}

TEST_F(ReportOrder, EachBoxOfTheEarlierSectionsPrintsItsOwn) {
  const std::vector<std::pair<ReportBox, ReportText>> early{
      {ReportBox::Processors, kProcessors}, {ReportBox::Memory, kMemory},
      {ReportBox::HardDrives, kDrives},     {ReportBox::Board, kBoard},
      {ReportBox::Video, kVideo},           {ReportBox::Peripherals, kPeripherals}};
  for (const auto& [box, section] : early) {
    tick({box});
    EXPECT_EQ(press(), joinedLines({kSystem, section, {kGap, kGap}})) << static_cast<int>(box);
    window->Showme[static_cast<std::size_t>(box)].value = kUnchecked;
  }
}

TEST_F(ReportOrder, TheBoxOfTheComputerPrintsItBetweenTheGaps) {
  tick({ReportBox::System});
  EXPECT_EQ(press(), joinedLines({kSystem, {kGap}, kComputer, {kGap}}));
}

TEST_F(ReportOrder, EachBoxOfTheLaterSectionsPrintsItsOwn) {
  const std::vector<std::pair<ReportBox, ReportText>> late{
      {ReportBox::Desktop, kDesktop}, {ReportBox::Startup, kStartup},
      {ReportBox::Drivers, kDrivers}, {ReportBox::Software, kSoftware},
      {ReportBox::Users, kUsers},     {ReportBox::Errors, kErrors}};
  for (const auto& [box, section] : late) {
    tick({box});
    EXPECT_EQ(press(), joinedLines({kSystem, {kGap, kGap}, section})) << static_cast<int>(box);
    window->Showme[static_cast<std::size_t>(box)].value = kUnchecked;
  }
}

TEST_F(ReportOrder, TheBoxOfTheHotfixesPrintsThem) {
  tick({ReportBox::Hotfixes});
  EXPECT_EQ(press(), joinedLines({kSystem, {kGap, kGap}, kHotfixes}));
}

TEST_F(ReportOrder, ABoxIsTickedWithTheValueOneAlone) {
  for (CheckBox& box : window->Showme) box.value = 2;
  EXPECT_EQ(press(), joinedLines({kSystem, {kGap, kGap}}));
}

TEST_F(ReportOrder, BoxesCountAsTheyAreBehindTheTool) {
  onStart = [this] { tick({ReportBox::Users}); };
  EXPECT_EQ(press(), joinedLines({kSystem, {kGap, kGap}, kUsers}));
}

TEST_F(ReportOrder, ItsTextIsTheSame) {
  tick({ReportBox::Memory, ReportBox::Users});
  press();
  EXPECT_EQ(window->Text1.text.get(),
            "\r\nSystem Information KITCHEN\r\n"
            "Operating System\r\n"
            "OS: Example Desktop 7   6.1.7601 Service Pack 1 Build 7601\r\n"
            "   Installed: 1/30/2026, 3:22:51 PM   BootTime: 3/7/2026, 8:01:12 AM\r\n"
            "   Product ID: 12345-678-9012345-67\r\n"
            "    \r\n"
            "Physical Memory\r\n"
            "Total Memory: 3,957MB  Free: 2,046MB\r\n"
            "    \r\n"
            "    \r\n"
            "    \r\n"
            "Users\r\n");
}

// --- Modes ---

TEST_F(ReportOrder, ModeOneWritesTheKeysAndPrintsNothing) {
  tickAll();
  buffers->SysInfo("1");
  EXPECT_THAT(lines(*window), IsEmpty());
  EXPECT_EQ(simulation.settings(),
            "[SysInfo]\r\n"
            "Info Check=07 Mar 2026\r\n"
            "Win Version=Example Desktop 7\r\n"
            "OS Version=6.1.7601 Service Pack 1 Build 7601\r\n"
            "Total Ram=3,957\r\n"
            "Available Ram=2,046\r\n"
            "CPU Num=2\r\n"
            "CPU Cores=4\r\n"
            "MB Model=Board 7\r\n"
            "MB Man=Example Boards\r\n"
            "Location=Dutch (Netherlands)\r\n"
            "Bios=Example Bios A05, 8/10/2025\r\n"
            "Boot=\\Device\\HarddiskVolume1\r\n"
            "Installed=1/30/2026, 3:22:51 PM\r\n"
            "Net Card 1=Card 1\r\n"
            "Net Card 1 DHCP=198.51.100.1\r\n"
            "Net Card 1 IP=192.0.2.1\r\n"
            "Net Card 1 Connect=Connection 1\r\n"
            "Net Card 2=Card 2\r\n"
            "Net Card 2 DHCP=198.51.100.2\r\n"
            "Net Card 2 IP=192.0.2.2\r\n"
            "Net Card 2 Connect=Connection 2\r\n");
}

TEST_F(ReportOrder, ModesOneAndThreePrintNothingAsNumbersToo) {
  tickAll();
  for (const Loose& mode : {Loose("3"), Loose(1), Loose(3)}) buffers->SysInfo(mode);
  EXPECT_THAT(lines(*window), IsEmpty());
}

TEST_F(ReportOrder, AnyOtherModePrints) {
  for (const Loose& mode : {Loose("0"), Loose("2"), Loose("x"), Loose(), Loose(0), Loose("01")}) {
    window->SYSView.Clear();
    buffers->SysInfo(mode);
    EXPECT_EQ(lines(*window), joinedLines({kSystem, {kGap, kGap}})) << mode.text();
  }
}

TEST_F(ReportOrder, WithoutAWindowNothingIsAskedForTheReport) {
  program.unload<frmSysInfo>();
  buffers->SysInfo("0");
  EXPECT_THAT(lines(*window), IsEmpty());
  EXPECT_THAT(simulation.wmi.queries, ElementsAre("Select * from Win32_PhysicalMemory"));
}

}  // namespace
}  // namespace veltrin
