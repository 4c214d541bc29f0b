// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/computer_states.h"

#include <gtest/gtest.h>

#include "smbios_table.h"

namespace veltrin {
namespace {

ComputerStates statesOf(const SmbiosPart& part) {
  return statesIn(SmbiosTable(smbiosTable({part})));
}

TEST(ComputerStates, TellWhatStartedTheComputer) {
  EXPECT_EQ(statesOf(SmbiosPart(1, 0x19).number(0x18, 6)).wakeUp, 6U);
}

TEST(ComputerStates, TellTheEnclosure) {
  const ComputerStates states =
      statesOf(SmbiosPart(3, 0x0D).number(0x09, 4).number(0x0A, 5).number(0x0B, 3));
  EXPECT_EQ(states.enclosure, 4U);
  EXPECT_EQ(states.powerSupply, 5U);
  EXPECT_EQ(states.thermal, 3U);
}

TEST(ComputerStates, TellTheHardwareSecurity) {
  const ComputerStates states = statesOf(SmbiosPart(24, 0x05).number(0x04, 0b01'10'00'11));
  EXPECT_EQ(states.powerOnPassword, 1U);
  EXPECT_EQ(states.keyboardPassword, 2U);
  EXPECT_EQ(states.administratorPassword, 0U);
  EXPECT_EQ(states.frontPanelReset, 3U);
}

TEST(ComputerStates, TellTheReset) {
  const ComputerStates states = statesOf(SmbiosPart(23, 0x0D).number(4, 0x01).number(0x0B, 300, 2));
  EXPECT_EQ(states.resetEnabled, true);
  EXPECT_EQ(states.resetTimeout, 300U);
  EXPECT_EQ(statesOf(SmbiosPart(23, 0x0D).number(4, 0xFE)).resetEnabled, false);
}

TEST(ComputerStates, LeaveOutWhatOldStructuresAreTooShortFor) {
  EXPECT_EQ(statesOf(SmbiosPart(1, 0x08)), ComputerStates());
  EXPECT_EQ(statesOf(SmbiosPart(3, 0x09)), ComputerStates());
  EXPECT_EQ(statesOf(SmbiosPart(23, 0x04)), ComputerStates());
  EXPECT_EQ(statesOf(SmbiosPart(24, 0x04)), ComputerStates());
}

TEST(ComputerStates, AreUnknownWithoutATable) {
  EXPECT_EQ(statesIn(SmbiosTable(std::string())), ComputerStates());
}

}  // namespace
}  // namespace veltrin
