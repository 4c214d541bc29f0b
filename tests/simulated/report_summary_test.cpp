// SPDX-License-Identifier: GPL-3.0-or-later
// The sections of the report that the machine's summary feeds.
#include "simulated/catalogue_run.h"

namespace veltrin {
namespace {

class ReportSummary : public CatalogueRun {
 protected:
  // The bank that the service tells of.
  void bankOf(const std::string& capacity) {
    answer("Select * from Win32_PhysicalMemory", {{{{"DeviceLocator", "A1_DIMM0"},
                                                    {"Capacity", capacity},
                                                    {"Speed", 1333},
                                                    {"BankLabel", "BANK 0"}}}});
  }

  // The report on memory of a machine with one module.
  ReportText withModule(const std::string& text) const {
    return before({kGap, headingLine("Physical Memory", 20), boldLine("Total Memory: MB  Free: MB"),
                   plainLine("   " + text)});
  }

  // The report on the network cards of a machine that the tool describes so.
  ReportText cardsOf(const std::vector<CardText>& cards) {
    prints(printed(joined({Lines(10, "filled"), networkCards(cards)})));
    tick({ReportBox::Peripherals});
    return press();
  }

  static ReportText withCards(const ReportText& cards) {
    return before(joinedLines({{kGap, headingLine("Sound", 33), headingLine("Keyboard", 19),
                                headingLine("Mouse - Pointer", 24), headingLine("Printer", 29),
                                headingLine("Net Card", 6)},
                               cards,
                               {headingLine("USB", 34), headingLine("PnP Signed", 0)}}));
  }

  static ReportText usualCardLines(const std::string& number) {
    return {boldLine(" Card " + number), boldLine("    Connection: Connection " + number),
            boldLine("    IP: 192.0.2." + number), boldLine("    DHCP: 198.51.100." + number)};
  }
};

// --- The system ---

TEST_F(ReportSummary, AMachineWithoutAnUpTimeShowsItsBootTime) {
  summary.Installed = "1/30/2026";
  summary.BootTime = "3/7/2026";
  EXPECT_EQ(press(), (ReportText{headingLine("Operating System", 26), boldLine("OS:    "),
                                 plainLine("   Installed: 1/30/2026   BootTime: 3/7/2026"),
                                 plainLine("   Product ID: "), kGap, kGap}));
}

TEST_F(ReportSummary, AMachineWithAnUpTimeShowsIt) {
  summary.Installed = "1/30/2026";
  summary.BootTime = "3/7/2026";
  summary.UpTime = "3 Days";
  EXPECT_EQ(press(), (ReportText{headingLine("Operating System", 26), boldLine("OS:    "),
                                 plainLine("   Installed: 1/30/2026   UP Time: 3 Days"),
                                 plainLine("   Product ID: "), kGap, kGap}));
}

TEST_F(ReportSummary, TheCoresAreThoseOfTheSurroundings) {
  summary.CpuNum = "8 Processor(s)";
  summary.CpuCores = "16";
  tick({ReportBox::Processors});
  EXPECT_EQ(press(),
            before({kGap, headingLine("Processors", 1), boldLine("Number of CPUs: 8     Cores: 16"),
                    headingLine("Cache", 9)}));
}

// The first character of the text may be a blank.
TEST_F(ReportSummary, TheNumberOfProcessorsIsTrimmed) {
  summary.CpuNum = " 8";
  tick({ReportBox::Processors});
  EXPECT_EQ(press(), before({kGap, headingLine("Processors", 1),
                             boldLine("Number of CPUs:      Cores: 4"), headingLine("Cache", 9)}));
}

// --- Memory ---

TEST_F(ReportSummary, FourGibibytesAreFourGigabytes) {
  bankOf("4294967296");
  tick({ReportBox::Memory});
  EXPECT_EQ(press(), withModule("Slot 1:   4 GB  Speed: 1333 Mhz   (BANK 0)"));
}

TEST_F(ReportSummary, OneGibibyteIsOneGigabyte) {
  bankOf("1073741824");
  tick({ReportBox::Memory});
  EXPECT_EQ(press(), withModule("Slot 1:   1 GB  Speed: 1333 Mhz   (BANK 0)"));
}

TEST_F(ReportSummary, ABillionBytesAre977Megabytes) {
  bankOf("1000000000");
  tick({ReportBox::Memory});
  EXPECT_EQ(press(), withModule("Slot 1:   977 MB  Speed: 1333 Mhz   (BANK 0)"));
}

TEST_F(ReportSummary, SlotsThatAreFilledPrintUnderThePictureOfMemory) {
  summary.MemSlot = {"one", "two", "three", "four"};
  tick({ReportBox::Memory});
  EXPECT_EQ(press(), before({kGap, headingLine("Physical Memory", 21),
                             boldLine("Total Memory: MB  Free: MB"), plainLine("   one"),
                             plainLine("   two"), plainLine("   three"), plainLine("   four")}));
}

TEST_F(ReportSummary, AnEmptySecondSlotMakesThePictureThatOfABoard) {
  summary.MemSlot = {"one", "", "three", "four"};
  tick({ReportBox::Memory});
  EXPECT_EQ(press(), before({kGap, headingLine("Physical Memory", 20),
                             boldLine("Total Memory: MB  Free: MB"), plainLine("   one"),
                             plainLine("   three"), plainLine("   four")}));
}

TEST_F(ReportSummary, SizesOfMemoryHaveCommasAndNoFractions) {
  summary.TotalRam = "1048576.5";
  summary.AvailableRam = "0";
  tick({ReportBox::Memory});
  EXPECT_EQ(press(), before({kGap, headingLine("Physical Memory", 20),
                             boldLine("Total Memory: 1,048,577MB  Free: MB")}));
}

TEST_F(ReportSummary, SizesOfMemoryThatAreNoNumbersStayAsTheyAre) {
  summary.TotalRam = "N/A";
  summary.AvailableRam = "2 046";
  tick({ReportBox::Memory});
  EXPECT_EQ(press(), before({kGap, headingLine("Physical Memory", 20),
                             boldLine("Total Memory: N/AMB  Free: 2 046MB")}));
}

// --- Network cards ---

TEST_F(ReportSummary, NoCards) { EXPECT_EQ(cardsOf({}), withCards({})); }

TEST_F(ReportSummary, OneCard) {
  EXPECT_EQ(cardsOf(usualCards(1)), withCards(usualCardLines("1")));
}

TEST_F(ReportSummary, ThreeCards) {
  EXPECT_EQ(
      cardsOf(usualCards(3)),
      withCards(joinedLines({usualCardLines("1"), usualCardLines("2"), usualCardLines("3")})));
}

TEST_F(ReportSummary, OfFourCardsTheThirdHasTheNameAloneOfItsOwn) {
  EXPECT_EQ(cardsOf(usualCards(4)),
            withCards(joinedLines(
                {usualCardLines("1"),
                 usualCardLines("2"),
                 {boldLine(" Card 3"), boldLine("    Connection: Connection 4"),
                  boldLine("    IP: 192.0.2.4"), boldLine("    DHCP: 198.51.100.4")}})));
}

TEST_F(ReportSummary, CardsOfAnEarlierRunAreNotThoseOfThisOne) {
  cardsOf(usualCards(2));
  EXPECT_EQ(cardsOf({}), withCards({}));
}

TEST_F(ReportSummary, CardsOfARunWhoseTextTellsNoneAreNotPrinted) {
  cardsOf(usualCards(2));
  prints("");
  EXPECT_EQ(press(), withCards({}));
}

}  // namespace
}  // namespace veltrin
