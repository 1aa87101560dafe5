// SHA-1 of a byte string, for the built-in sha1_string_utf8.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace rt {

using Sha1Digest = std::array<uint8_t, 20>;

// The 20-byte SHA-1 digest of `bytes`.
Sha1Digest sha1(std::string_view bytes);

}  // namespace rt
