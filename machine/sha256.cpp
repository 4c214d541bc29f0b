#include "machine/sha256.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <string>

namespace veltrin {
namespace {

constexpr std::size_t kBlock = 64;  // bytes that are hashed at once

// FIPS 180-4 section 4.2.2.
constexpr std::array<std::uint32_t, 64> kRoundConstants{
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

// Section 5.3.3.
constexpr std::array<std::uint32_t, 8> kStart{0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                              0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};

using State = std::array<std::uint32_t, 8>;

// The words of a block and those that grow out of them (section 6.2.2 step 1).
std::array<std::uint32_t, 64> scheduleOf(std::string_view block) {
  std::array<std::uint32_t, 64> words{};
  for (std::size_t i = 0; i < kBlock; ++i) {
    words[i / 4] = words[i / 4] << 8 | static_cast<unsigned char>(block[i]);
  }
  for (std::size_t t = 16; t < words.size(); ++t) {
    const std::uint32_t early = words[t - 15];
    const std::uint32_t late = words[t - 2];
    words[t] = (std::rotr(late, 17) ^ std::rotr(late, 19) ^ late >> 10) + words[t - 7] +
               (std::rotr(early, 7) ^ std::rotr(early, 18) ^ early >> 3) + words[t - 16];
  }
  return words;
}

void addBlock(State& state, std::string_view block) {
  const auto words = scheduleOf(block);
  auto [a, b, c, d, e, f, g, h] = state;
  for (std::size_t t = 0; t < words.size(); ++t) {
    const std::uint32_t first = h + (std::rotr(e, 6) ^ std::rotr(e, 11) ^ std::rotr(e, 25)) +
                                ((e & f) ^ (~e & g)) + kRoundConstants[t] + words[t];
    const std::uint32_t second =
        (std::rotr(a, 2) ^ std::rotr(a, 13) ^ std::rotr(a, 22)) + ((a & b) ^ (a & c) ^ (b & c));
    h = g;
    g = f;
    f = e;
    e = d + first;
    d = c;
    c = b;
    b = a;
    a = first + second;
  }
  const State worked{a, b, c, d, e, f, g, h};
  std::transform(state.begin(), state.end(), worked.begin(), state.begin(), std::plus<>());
}

// A one bit, zeros, and the length in bits fill up the last block (section 5.1.1).
std::string padded(std::string_view message) {
  std::string text(message);
  text += '\x80';
  while (text.size() % kBlock != kBlock - 8) {
    text += '\0';
  }
  const std::uint64_t bits = std::uint64_t{message.size()} * 8;
  for (int shift = 56; shift >= 0; shift -= 8) {
    text += static_cast<char>(bits >> shift & 0xFF);
  }
  return text;
}

std::string_view viewOf(const Sha256& hash) {
  return {reinterpret_cast<const char*>(hash.data()), hash.size()};
}

}  // namespace

Sha256 sha256(std::string_view message) {
  const std::string text = padded(message);
  State state = kStart;
  for (std::size_t at = 0; at < text.size(); at += kBlock) {
    addBlock(state, std::string_view(text).substr(at, kBlock));
  }
  Sha256 hash{};
  for (std::size_t i = 0; i < hash.size(); ++i) {
    hash[i] = static_cast<std::uint8_t>(state[i / 4] >> (24 - 8 * (i % 4)));
  }
  return hash;
}

Sha256 keyedSha256(std::string_view key, std::string_view message) {
  const Sha256 shortened = key.size() > kBlock ? sha256(key) : Sha256{};
  std::string inner(key.size() > kBlock ? viewOf(shortened) : key);
  inner.resize(kBlock, '\0');
  std::string outer = inner;
  for (std::size_t i = 0; i < kBlock; ++i) {
    inner[i] = static_cast<char>(inner[i] ^ 0x36);
    outer[i] = static_cast<char>(outer[i] ^ 0x5C);
  }
  inner += message;
  const Sha256 first = sha256(inner);
  outer += viewOf(first);
  return sha256(outer);
}

}  // namespace veltrin
