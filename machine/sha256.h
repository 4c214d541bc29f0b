// The hash SHA-256 (FIPS 180-4) and the keyed hash made of it (RFC 2104).
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace veltrin {

using Sha256 = std::array<std::uint8_t, 32>;

Sha256 sha256(std::string_view message);

// HMAC-SHA256.
Sha256 keyedSha256(std::string_view key, std::string_view message);

}  // namespace veltrin
