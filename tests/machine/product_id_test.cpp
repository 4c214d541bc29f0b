#include "machine/product_id.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "temporary_tree.h"

namespace veltrin {
namespace {

constexpr const char* kMachine = "00112233445566778899aabbccddeeff\n";

std::string idOf(const std::string& machine) {
  const TemporaryTree tree;
  tree.put("/etc/machine-id", machine);
  return productId(tree.files());
}

// The first hundred bits of the HMAC-SHA256 whose key is the machine ID, worked out
// by another implementation of it.
TEST(ProductId, IsAKeyedHashOfTheMachineId) {
  EXPECT_EQ(idOf(kMachine), "970ZA-6XH19-AV4NR-53B5X");
}

TEST(ProductId, DiffersFromMachineToMachine) {
  EXPECT_NE(idOf("00112233445566778899aabbccddeefe\n"), idOf(kMachine));
}

TEST(ProductId, ShowsNoPieceOfTheMachineId) {
  EXPECT_THAT(idOf("77777777777777777777777777777777\n"),
              ::testing::Not(::testing::HasSubstr("7777")));
}

TEST(ProductId, TakesTheIdOfTheMessageBusWhereThereIsNoOther) {
  const TemporaryTree tree;
  tree.put("/var/lib/dbus/machine-id", kMachine);
  EXPECT_EQ(productId(tree.files()), "970ZA-6XH19-AV4NR-53B5X");
}

TEST(ProductId, IsEmptyWithoutAMachineId) { EXPECT_EQ(productId(TemporaryTree().files()), ""); }

TEST(ProductId, IsEmptyWithOneThatIsNone) {
  for (const char* text :
       {"", "uninitialized\n", "00000000000000000000000000000000\n",
        "00112233445566778899aabbccddeef\n", "00112233445566778899aabbccddeeff0\n",
        "00112233445566778899aabbccddeexf\n", "\xFF\xFE\x00garbage"}) {
    EXPECT_EQ(idOf(text), "") << text;
  }
}

}  // namespace
}  // namespace veltrin
