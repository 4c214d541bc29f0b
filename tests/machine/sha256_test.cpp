#include "machine/sha256.h"

#include <gtest/gtest.h>
#include <string>

namespace veltrin {
namespace {

std::string inHexadecimal(const Sha256& hash) {
  constexpr const char* kDigits = "0123456789abcdef";
  std::string text;
  for (const std::uint8_t byte : hash) {
    text += kDigits[byte >> 4];
    text += kDigits[byte & 0xF];
  }
  return text;
}

TEST(Sha256Hash, IsThatOfTheStandardsExamples) {
  EXPECT_EQ(inHexadecimal(sha256("")),
            "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
  EXPECT_EQ(inHexadecimal(sha256("abc")),
            "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
}

TEST(Sha256Hash, FillsUpTheLastBlockAtEveryEdge) {
  EXPECT_EQ(inHexadecimal(sha256(std::string(55, 'a'))),
            "9f4390f8d30c2dd92ec9f095b65e2b9ae9b0a925a5258e241c9f1e910f734318");
  EXPECT_EQ(inHexadecimal(sha256(std::string(56, 'a'))),
            "b35439a4ac6f0948b6d6f9e3c6af0f5f590ce20f1bde7090ef7970686ec6738a");
  EXPECT_EQ(inHexadecimal(sha256(std::string(64, 'a'))),
            "ffe054fe7ae0cb6dc65c3af9b61d5209f439851db43d0ba5997337df154668eb");
}

// RFC 4231 sections 4.2 and 4.7.
TEST(KeyedSha256Hash, IsThatOfTheStandardsExamples) {
  EXPECT_EQ(inHexadecimal(keyedSha256(std::string(20, '\x0B'), "Hi There")),
            "b0344c61d8db38535ca8afceaf0bf12b881dc200c9833da726e9376c2e32cff7");
  EXPECT_EQ(inHexadecimal(keyedSha256(std::string(131, '\xAA'),
                                      "Test Using Larger Than Block-Size Key - Hash Key First")),
            "60e431591ee0b67f0d8a26aacbf5b77f8e0bc6213728c5140546040f0ee37f54");
}

}  // namespace
}  // namespace veltrin
