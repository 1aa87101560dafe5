// SHA-1: 512-bit blocks, eighty rounds each, the length in bits appended
// big-endian to the padding.
#include "runtime/Function/Sha1.h"

#include <bit>
#include <cstring>

namespace rt {
namespace {

uint32_t load_big_endian(const unsigned char* p) {
  return (uint32_t{p[0]} << 24) | (uint32_t{p[1]} << 16) | (uint32_t{p[2]} << 8) | uint32_t{p[3]};
}

void compress(uint32_t state[5], const unsigned char* block) {
  uint32_t w[80];
  for (int i = 0; i < 16; ++i) w[i] = load_big_endian(block + 4 * i);
  for (int i = 16; i < 80; ++i) w[i] = std::rotl(w[i - 3] ^ w[i - 8] ^ w[i - 14] ^ w[i - 16], 1);

  uint32_t a = state[0], b = state[1], c = state[2], d = state[3], e = state[4];
  for (int i = 0; i < 80; ++i) {
    uint32_t f, k;
    if (i < 20) {
      f = (b & c) | (~b & d);
      k = 0x5A827999;
    } else if (i < 40) {
      f = b ^ c ^ d;
      k = 0x6ED9EBA1;
    } else if (i < 60) {
      f = (b & c) | (b & d) | (c & d);
      k = 0x8F1BBCDC;
    } else {
      f = b ^ c ^ d;
      k = 0xCA62C1D6;
    }
    const uint32_t t = std::rotl(a, 5) + f + e + k + w[i];
    e = d;
    d = c;
    c = std::rotl(b, 30);
    b = a;
    a = t;
  }
  state[0] += a;
  state[1] += b;
  state[2] += c;
  state[3] += d;
  state[4] += e;
}

}  // namespace

Sha1Digest sha1(std::string_view bytes) {
  uint32_t state[5] = {0x67452301, 0xEFCDAB89, 0x98BADCFE, 0x10325476, 0xC3D2E1F0};
  const auto* p = reinterpret_cast<const unsigned char*>(bytes.data());
  size_t left = bytes.size();
  for (; left >= 64; left -= 64, p += 64) compress(state, p);

  // The tail, the 0x80 marker and the bit length fill one block, or two when
  // fewer than nine bytes are left after the tail.
  unsigned char tail[128] = {};
  if (left > 0) std::memcpy(tail, p, left);
  tail[left] = 0x80;
  const size_t tail_size = left + 9 <= 64 ? 64 : 128;
  const uint64_t bits = static_cast<uint64_t>(bytes.size()) * 8;
  for (int i = 0; i < 8; ++i) tail[tail_size - 1 - i] = static_cast<unsigned char>(bits >> (8 * i));
  compress(state, tail);
  if (tail_size == 128) compress(state, tail + 64);

  Sha1Digest digest;
  for (int i = 0; i < 5; ++i) {
    for (int j = 0; j < 4; ++j) digest[4 * i + j] = static_cast<unsigned char>(state[i] >> (24 - 8 * j));
  }
  return digest;
}

}  // namespace rt
