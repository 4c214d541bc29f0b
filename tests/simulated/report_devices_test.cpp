// SPDX-License-Identifier: GPL-3.0-or-later
// What the report tells of caches, slots, controllers and video cards, one behind the other.
#include "simulated/catalogue_run.h"

namespace veltrin {
namespace {

class ReportDevices : public CatalogueRun {
 protected:
  ReportText reportOn(ReportBox box, const std::string& query,
                      const std::vector<WmiObject>& objects) {
    answer(query, objects);
    tick({box});
    return press();
  }

  ReportText caches(const std::vector<WmiObject>& objects) {
    return reportOn(ReportBox::Processors, "Select * from Win32_CacheMemory", objects);
  }
  static ReportText withCaches(const ReportText& lines, const std::string& cores = "4") {
    return before(
        joinedLines({{kGap, headingLine("Processors", 1),
                      boldLine("Number of CPUs:      Cores: " + cores), headingLine("Cache", 9)},
                     lines}));
  }

  ReportText slots(const std::vector<WmiObject>& objects) {
    return reportOn(ReportBox::Board, "Select * from Win32_SystemSlot", objects);
  }
  static ReportText withBoard(const ReportText& slots, const ReportText& controllers = {}) {
    return before(
        joinedLines({{kGap, headingLine("MotherBoard", 20), plainLine(" "), plainLine("    "),
                      boldLine("   Bios Version: "), boldLine("   Slots:")},
                     slots,
                     {boldLine("HD Controller:")},
                     controllers,
                     {boldLine("Floppy Controller:")}}));
  }

  ReportText controllers(const std::vector<WmiObject>& objects) {
    return reportOn(ReportBox::Board, "Select * from Win32_IDEController", objects);
  }

  ReportText cards(const std::vector<WmiObject>& objects) {
    return reportOn(ReportBox::Video, "Select * from Win32_videocontroller", objects);
  }
  static ReportText withCards(const ReportText& lines) {
    return before(
        joinedLines({{kGap, headingLine("Video Card", 4)}, lines, {headingLine("Monitor", 23)}}));
  }
  static WmiObject card(const std::string& number) {
    return {{{"Caption", "Card " + number},
             {"VideoProcessor", "Chip " + number},
             {"MaxRefreshRate", number}}};
  }
  std::vector<std::string> chips() const {
    const auto& slots = program.shared<ReportValues>().VideoProcessors;
    return {slots.begin(), slots.end()};
  }
};

// --- Processors ---

TEST_F(ReportDevices, ASpeedMayBeATextWithBlanksAndOneThatIsNoNumberStays) {
  EXPECT_EQ(reportOn(ReportBox::Processors, "Select * from Win32_Processor",
                     {{{{"MaxClockSpeed", " 12000 "}, {"CurrentClockSpeed", " fast "}}}}),
            before({kGap, headingLine("Processors", 1), boldLine("Number of CPUs:      Cores: 4"),
                    boldLine("Speed: 12,000 MHz"), plainLine("    CurrentClockSpeed: fast MHz"),
                    headingLine("Cache", 9)}));
}

TEST_F(ReportDevices, ASpeedOfNothingIsEmpty) {
  EXPECT_EQ(reportOn(ReportBox::Processors, "Select * from Win32_Processor",
                     {{{{"MaxClockSpeed", 0}, {"CurrentClockSpeed", 999}}}}),
            before({kGap, headingLine("Processors", 1), boldLine("Number of CPUs:      Cores: 4"),
                    boldLine("Speed:  MHz"), plainLine("    CurrentClockSpeed: 999 MHz"),
                    headingLine("Cache", 9)}));
}

// --- Caches ---

TEST_F(ReportDevices, CachesAreLevelsByTheirPlaceAndFromTheFifthOnHaveNoSize) {
  const WmiObject cache{{{"MaxCacheSize", 2048}, {"Status", "OK"}}};
  const ReportLine status = plainLine("    Status: OK");
  EXPECT_EQ(caches({cache, cache, cache, cache, cache, cache}),
            withCaches({plainLine("L1: 2048 KB"), status, plainLine("L1: 2048 KB"), status,
                        plainLine("L2: 2048 KB"), status, plainLine("L3: 8192 KB"), status, status,
                        status}));
}

TEST_F(ReportDevices, TheThirdLevelOfAnUnknownNumberOfCoresHasNoSize) {
  summary.CpuCores = "";
  const WmiObject cache{{{"MaxCacheSize", 2048}}};
  EXPECT_EQ(
      caches({cache, cache, cache, cache}),
      withCaches({plainLine("L1: 2048 KB"), plainLine("L1: 2048 KB"), plainLine("L2: 2048 KB")},
                 ""));
}

TEST_F(ReportDevices, ThirdLevelsWhoseSizeIsNullSayNone) {
  const WmiObject cache{{{"MaxCacheSize", WmiValue()}}};
  EXPECT_EQ(caches({cache, cache, cache, cache}),
            withCaches({plainLine("L1:  KB"), plainLine("L1:  KB"), plainLine("L2:  KB"),
                        plainLine("L3:  KB")}));
}

TEST_F(ReportDevices, ACacheThatTellsNothingCountsAllTheSame) {
  const WmiObject cache{{{"MaxCacheSize", 64}}};
  EXPECT_EQ(caches({{}, {}, cache}), withCaches({plainLine("L2: 64 KB")}));
}

TEST_F(ReportDevices, CodesOfCachesHaveTheirNumberBeforeTheWord) {
  EXPECT_EQ(
      caches({{{{"Location", 2}, {"Level", 5}}}, {{{"Location", 9}, {"Level", 0}}}}),
      withCaches({plainLine("    Location: 2 (reserved)"), plainLine("    Level: 5 (tertiary)"),
                  plainLine("    Location: 9"), plainLine("    Level: 0")}));
}

// --- Slots ---

TEST_F(ReportDevices, AnUnknownWidthOfASlotIsThatOfTheSlotBefore) {
  EXPECT_EQ(slots({{{{"MaxDataWidth", 2}}}, {{{"MaxDataWidth", 8}}}}),
            withBoard({plainLine("            Max Data Width: 32"),
                       plainLine("            Max Data Width: 32")}));
}

TEST_F(ReportDevices, ArraysWithoutAKnownCodeAreEmptyWords) {
  EXPECT_EQ(slots({{{{"MaxDataWidth", 2},
                     {"VccMixedVoltageSupport", std::vector<Loose>{9}},
                     {"ConnectorType", std::vector<Loose>{}}}}}),
            withBoard({plainLine("            Max Data Width: 32"),
                       plainLine("            Voltage Supported: "),
                       plainLine("            Connector Type: ")}));
}

TEST_F(ReportDevices, ASingleCodeIsNoArrayAndDropsItsLine) {
  EXPECT_EQ(
      slots(
          {{{{"SlotDesignation", "PCI 1"}, {"VccMixedVoltageSupport", 3}, {"ConnectorType", 43}}}}),
      withBoard({plainLine("    PCI 1")}));
}

TEST_F(ReportDevices, AnArrayThatIsToBeATextDropsItsLine) {
  EXPECT_EQ(slots({{{{"SlotDesignation", std::vector<Loose>{"PCI 1"}}, {"MaxDataWidth", 0}}}}),
            withBoard({plainLine("            Max Data Width: 8")}));
}

// --- Controllers ---

TEST_F(ReportDevices, AnUnknownProtocolIsWhatTheCapabilitiesLeft) {
  EXPECT_EQ(controllers({{{{"PowerManagementCapabilities", 1}, {"ProtocolSupported", 39}}}}),
            withBoard({}, {plainLine("       ProtocolSupported: Not Supported")}));
}

TEST_F(ReportDevices, AnUnknownProtocolBehindAnArrayOfCapabilitiesIsWhatAnEarlierLineLeft) {
  EXPECT_EQ(controllers({{{{"Availability", 7},
                           {"PowerManagementCapabilities", std::vector<Loose>{1}},
                           {"ProtocolSupported", 39}}}}),
            withBoard({}, {plainLine("       Availability: 7 (pwr off)"),
                           plainLine("       ProtocolSupported: 7 (pwr off)")}));
}

TEST_F(ReportDevices, AKnownProtocolReplacesTheCapabilities) {
  EXPECT_EQ(controllers({{{{"PowerManagementCapabilities", 1}, {"ProtocolSupported", 49}}}}),
            withBoard({}, {plainLine("       ProtocolSupported: ST506")}));
}

TEST_F(ReportDevices, CapabilitiesThatWereLookedUpStayWhenTheProtocolCannotBeRead) {
  EXPECT_EQ(
      controllers({{{{"PowerManagementCapabilities", 5}}}, {{{"ConfigManagerErrorCode", 99}}}}),
      withBoard({}, {plainLine("       ConfigManagerErrorCode: Power State Settable")}));
}

TEST_F(ReportDevices, TheBoardIsTheSummarysAndNotTheServices) {
  summary.MbModel = "Board 7";
  summary.MbMan = "Example Boards";
  summary.BiosVersion = "A05";
  answer("Select * from Win32_BaseBoard",
         {{{{"SlotDesignation", "board"}, {"Caption", "other"}, {"Model", "other"}}}});
  answer("Select * from Win32_SystemSlot", {});
  tick({ReportBox::Board});
  EXPECT_EQ(press(), before({kGap, headingLine("MotherBoard", 20), plainLine("Board 7 "),
                             plainLine("    Example Boards"), boldLine("   Bios Version: A05"),
                             boldLine("   Slots:"), boldLine("HD Controller:"),
                             boldLine("Floppy Controller:")}));
  EXPECT_EQ(simulation.wmi.taken["Select * from Win32_BaseBoard"], 0U);
}

// --- Video cards ---

TEST_F(ReportDevices, AFifthVideoCardHasNoName) {
  EXPECT_EQ(
      cards({card("1"), card("2"), card("3"), card("4"), card("5")}),
      withCards({boldLine("Card 1 "), plainLine("    Chip 1"), plainLine("    Max Refresh: 1"),
                 boldLine("Card 2 "), plainLine("    Chip 2"), plainLine("    Max Refresh: 2"),
                 boldLine("Card 3 "), plainLine("    Chip 3"), plainLine("    Max Refresh: 3"),
                 boldLine("Card 4 "), plainLine("    Chip 4"), plainLine("    Max Refresh: 4"),
                 plainLine("    Max Refresh: 5")}));
  EXPECT_EQ(chips(), (std::vector<std::string>{"Chip 1", "Chip 2", "Chip 3", "Chip 4"}));
}

TEST_F(ReportDevices, VideoCardsOfAllRunsCount) {
  cards({card("1"), card("2"), card("3")});
  EXPECT_EQ(
      cards({card("1"), card("2"), card("3")}),
      withCards({boldLine("Card 1 "), plainLine("    Chip 1"), plainLine("    Max Refresh: 1"),
                 plainLine("    Max Refresh: 2"), plainLine("    Max Refresh: 3")}));
  EXPECT_EQ(chips(), (std::vector<std::string>{"Chip 1", "Chip 2", "Chip 3", "Chip 1"}));
}

TEST_F(ReportDevices, ACardWithoutAProcessorLeavesItsSlotToTheNext) {
  const WmiObject unknown{{{"Caption", "Card"}, {"VideoProcessor", WmiValue()}}};
  const WmiObject silent{{{"Caption", "Card"}}};
  EXPECT_EQ(cards({unknown, silent, card("1")}),
            withCards({boldLine("Card "), plainLine("    "), boldLine("Card "), boldLine("Card 1 "),
                       plainLine("    Chip 1"), plainLine("    Max Refresh: 1")}));
  EXPECT_EQ(chips(), (std::vector<std::string>{"Chip 1", "", "", ""}));
}

// --- The computer ---

TEST_F(ReportDevices, AComputerWithoutStartupOptionsHasNoLinesOfThem) {
  answer("Select * from Win32_ComputerSystem",
         {{{{"SystemStartupOptions", std::vector<Loose>{}}, {"WakeUpType", 6}}}});
  tick({ReportBox::System});
  EXPECT_EQ(press(), between({headingLine("System", 35), plainLine("    AdminPassword: "),
                              plainLine("    WakeUpType: Power Switch")}));
}

TEST_F(ReportDevices, TheSecondAdminPasswordIsWhateverTheWorkingTextSays) {
  answer("Select * from Win32_ComputerSystem", {{{{"PowerSupplyState", 3}}}, {}});
  tick({ReportBox::System});
  EXPECT_EQ(press(), between({headingLine("System", 35), plainLine("    AdminPassword: "),
                              plainLine("    PowerSupplyState: Save"),
                              plainLine("    AdminPassword: Save")}));
}

TEST_F(ReportDevices, TheWorkingTextOutlivesTheReport) {
  answer("Select * from Win32_ComputerSystem", {{{{"ThermalState", 3}}}});
  tick({ReportBox::System});
  press();
  EXPECT_EQ(press(), between({headingLine("System", 35), plainLine("    AdminPassword: Safe"),
                              plainLine("    ThermalState: Safe")}));
}

}  // namespace
}  // namespace veltrin
