// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/product_id.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_machine.h"

namespace veltrin {
namespace {

std::string idOf(const Id128& told) {
  FakeMachine machine;
  machine.ids[kProductApplication] = told;
  return productId(machine);
}

// The hundred bits were taken apart by hand.
TEST(ProductId, WritesAHundredBitsInGroupsOfFiveSymbols) {
  EXPECT_EQ(idOf({0x00, 0x11, 0x22, 0x33, 0x44, 0x55, 0x46, 0x77, 0x88, 0x99, 0xAA, 0xBB, 0xCC,
                  0xDD, 0xEE, 0xFF}),
            "008J4-CT4AN-VSKAN-VSKEY");
}

TEST(ProductId, ShowsAllOfASymbolsBits) {
  Id128 all{};
  all.fill(0xFF);
  EXPECT_EQ(idOf(all), "ZZZZZ-ZZZZZ-ZZZZZ-ZZZZZ");
  EXPECT_EQ(idOf({}), "00000-00000-00000-00000");
}

TEST(ProductId, LeavesOutTheBitsThatEveryIdHas) {
  Id128 marked{};
  marked[6] = 0x4F;
  marked[8] = 0xBF;
  EXPECT_EQ(idOf(marked), idOf({}));
}

TEST(ProductId, AsksWithTheConstantOfThisProgramAlone) {
  FakeMachine machine;
  machine.ids[Id128{}] = Id128{};
  EXPECT_EQ(productId(machine), "");
}

TEST(ProductId, IsEmptyOfAMachineWithoutAnId) { EXPECT_EQ(productId(FakeMachine()), ""); }

}  // namespace
}  // namespace veltrin
