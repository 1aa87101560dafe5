// Binary buffers: creation, every data type, alignment, the fixed, grow,
// wrap and fast rules, copies, fills, the id table and the calls by name.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "runtime/Buffer/Buffer.h"
#include "runtime/Buffer/BufferValue.h"
#include "runtime/Buffer/IBuffer.h"
#include "runtime/Code/Builtins.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Code/Error.h"

namespace {

// The short message of the fatal report that `body` raises, or "no error".
std::string fatal_message(const std::function<void()>& body) {
  try {
    body();
  } catch (const QvScriptException& e) {
    return e.message;
  }
  return "no error";
}

// A buffer deleted at the end of the test, so that tests don't see each other's ids.
class ScopedBuffer {
 public:
  ScopedBuffer(int32_t size, int32_t type, int32_t alignment = 1) : id(buffer_create(size, type, alignment)) {}
  ~ScopedBuffer() {
    if (buffer_exists(id).real != 0.0) buffer_delete(id);
  }
  ScopedBuffer(const ScopedBuffer&) = delete;
  ScopedBuffer& operator=(const ScopedBuffer&) = delete;
  operator int32_t() const { return id; }
  const int32_t id;
};

uint8_t* bytes_of(int32_t id) { return static_cast<uint8_t*>(buffer_get_address(id).ptr); }

using Bytes = std::vector<int>;

Bytes first_bytes(int32_t id, int count) {
  const uint8_t* data = bytes_of(id);
  return Bytes(data, data + count);
}

}  // namespace

TEST(BufferCreate, RejectsIllegalSizeAlignmentAndTypeWithExactWords) {
  EXPECT_EQ(fatal_message([] { buffer_create(-3, buffer_fixed, 1); }), "buffer_create: Illegal size -3");
  EXPECT_EQ(fatal_message([] { buffer_create(8, buffer_fixed, 0); }), "buffer_create: Illegal alignment size 0");
  EXPECT_EQ(fatal_message([] { buffer_create(8, buffer_fixed, 1025); }),
            "buffer_create: Illegal alignment size 1025");
  EXPECT_EQ(fatal_message([] { buffer_create(8, 4, 1); }),
            "Unknown buffer type, should be one of buffer_fixed, buffer_grow, buffer_wrap, buffer_fast, "
            "buffer_vbuffer");
  EXPECT_EQ(fatal_message([] { buffer_create(8, -1, 1); }).substr(0, 19), "Unknown buffer type");

  SuppressErrors quiet;
  EXPECT_EQ(buffer_create(-1, buffer_grow, 1), -1);
  EXPECT_TRUE(quiet.error_happened());
  EXPECT_EQ(buffer_create(4, buffer_grow, 2000), -1);
  EXPECT_EQ(buffer_create(4, 9, 1), -1);
}

TEST(BufferCreate, MakesZeroedMemoryAtAnAlignedAddress) {
  ScopedBuffer empty(0, buffer_fixed);
  EXPECT_EQ(buffer_get_size(empty), 0);

  ScopedBuffer b(64, buffer_fixed, 1000);  // rounded up to 1024
  ASSERT_GE(b.id, 0);
  EXPECT_EQ(buffer_lookup(b)->alignment(), 1024);
  EXPECT_EQ(reinterpret_cast<uintptr_t>(bytes_of(b)) % 1024, 0u);
  EXPECT_EQ(buffer_get_size(b), 64);
  EXPECT_EQ(buffer_tell(b), 0);
  EXPECT_EQ(buffer_get_used_size(b), 0);
  for (int i = 0; i < 64; ++i) ASSERT_EQ(bytes_of(b)[i], 0) << "byte " << i;
}

TEST(BufferReadWrite, EveryDataTypeRoundTripsWithItsResultKind) {
  struct Case {
    int32_t data_type;
    RValue written;
    Kind read_kind;
    std::string read_text;  // the text form of what is read back
  };
  const Case cases[] = {
      {buffer_u8, RValue::number(255), Kind::Int32, "255"},
      {buffer_s8, RValue::number(-100), Kind::Int32, "-100"},
      {buffer_u16, RValue::number(65535), Kind::Int32, "65535"},
      {buffer_s16, RValue::number(-30000), Kind::Int32, "-30000"},
      {buffer_u32, RValue::number(4000000000.0), Kind::Int64, "4000000000"},
      {buffer_s32, RValue::number(-2000000000), Kind::Int32, "-2000000000"},
      {buffer_f16, RValue::number(-1.5), Kind::Number, "-1.50"},
      {buffer_f32, RValue::number(0.25), Kind::Number, "0.25"},
      {buffer_f64, RValue::number(0.1), Kind::Number, "0.10"},
      {buffer_bool, RValue::boolean(true), Kind::Int32, "1"},
      {buffer_string, RValue::text("ciao"), Kind::String, "ciao"},
      {buffer_u64, RValue::int64(-2), Kind::Int64, "-2"},
      {buffer_text, RValue::text("fine"), Kind::String, "fine"},
  };
  ScopedBuffer b(0, buffer_grow);
  for (const Case& c : cases) EXPECT_EQ(buffer_write(b, c.data_type, c.written), 0) << "type " << c.data_type;
  EXPECT_EQ(buffer_get_used_size(b), 1 + 1 + 2 + 2 + 4 + 4 + 2 + 4 + 8 + 1 + 5 + 8 + 4);

  buffer_seek(b, buffer_seek_start, 0);
  for (const Case& c : cases) {
    const RValue v = buffer_read(b, c.data_type);
    EXPECT_EQ(v.kind(), c.read_kind) << "type " << c.data_type;
    EXPECT_EQ(value_to_text(v), c.read_text) << "type " << c.data_type;
  }
  // buffer_text wrote no zero: the read stops at the fresh zero byte after it and moves past it.
  EXPECT_EQ(buffer_tell(b), 47);

  ScopedBuffer f(12, buffer_fixed);
  buffer_write(f, buffer_f32, RValue::number(0.1));
  buffer_write(f, buffer_f64, RValue::number(0.1));
  buffer_seek(f, buffer_seek_start, 0);
  EXPECT_EQ(buffer_read(f, buffer_f32).real, static_cast<double>(0.1f));
  EXPECT_EQ(buffer_read(f, buffer_f64).real, 0.1);

  // Unknown data types write nothing.
  ScopedBuffer unknown(8, buffer_fixed);
  for (const int32_t type : {0, 14}) EXPECT_EQ(buffer_write(unknown, type, RValue::number(1)), -1) << type;
  EXPECT_EQ(buffer_tell(unknown), 0);
  EXPECT_EQ(buffer_get_used_size(unknown), 0);
}

TEST(BufferReadWrite, ValuesAreLittleEndianInMemory) {
  ScopedBuffer b(32, buffer_fixed);
  buffer_write(b, buffer_u32, RValue::number(0x11223344));
  buffer_write(b, buffer_s16, RValue::number(-2));
  buffer_write(b, buffer_f64, RValue::number(1.0));
  buffer_write(b, buffer_u64, RValue::int64(0x0102030405060708LL));
  EXPECT_EQ(first_bytes(b, 22),
            (Bytes{0x44, 0x33, 0x22, 0x11, 0xFE, 0xFF, 0, 0, 0, 0, 0, 0, 0xF0, 0x3F, 8, 7, 6, 5, 4, 3, 2, 1}));
}

TEST(BufferReadWrite, WrittenValuesGoThroughTheValueConversions) {
  ScopedBuffer b(16, buffer_fixed);
  buffer_write(b, buffer_u8, RValue::number(300));        // low byte only
  buffer_write(b, buffer_u8, RValue::text("7"));          // integer conversion of text
  buffer_write(b, buffer_u8, RValue::number(2.9));        // truncated
  buffer_write(b, buffer_bool, RValue::number(5));        // any true value is 1
  buffer_write(b, buffer_text, RValue::number(12));       // the number's text form
  buffer_write(b, buffer_text, RValue::number(0.5));
  EXPECT_EQ(first_bytes(b, 10), (Bytes{44, 7, 2, 1, '1', '2', '0', '.', '5', '0'}));
  EXPECT_EQ(fatal_message([&] { buffer_write(b, buffer_u8, RValue::text("abc")); }),
            "unable to convert string \"abc\" to integer");
  EXPECT_EQ(fatal_message([&] { buffer_write(b, buffer_f32, RValue::undefined()); }),
            "REAL argument incorrect type undefined");
}

TEST(BufferReadWrite, HalfPrecisionRoundsToNearestEven) {
  struct Case {
    float value;
    uint16_t half;
    bool exact;  // the half reads back as the same value
  };
  const Case cases[] = {
      {1.0f, 0x3C00, true},     {-2.0f, 0xC000, true},     {65504.0f, 0x7BFF, true},
      {INFINITY, 0x7C00, true}, {-INFINITY, 0xFC00, true}, {65520.0f, 0x7C00, false},  // rounds up to infinity
      {std::ldexp(1.0f, -24), 0x0001, true},           // smallest subnormal
      {std::ldexp(1023.0f, -24), 0x03FF, true},        // largest subnormal
      {std::ldexp(1.0f, -25), 0x0000, false},          // the tie goes to even
      {std::ldexp(1.5f, -25), 0x0001, false},
      {1.0f + std::ldexp(1.0f, -11), 0x3C00, false},      // tie, down to even
      {1.0f + 3 * std::ldexp(1.0f, -11), 0x3C02, false},  // tie, up to even
      {std::ldexp(1.0f, -30), 0x0000, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.value);
    EXPECT_EQ(float_to_half(c.value), c.half);
    if (c.exact) {
      EXPECT_EQ(half_to_float(c.half), c.value);
    }
  }
  EXPECT_EQ(float_to_half(NAN) & 0x7C00, 0x7C00);
  EXPECT_NE(float_to_half(NAN) & 0x3FF, 0);
  EXPECT_TRUE(std::isnan(half_to_float(0x7E00)));

  ScopedBuffer b(2, buffer_fixed);
  buffer_write(b, buffer_f16, RValue::number(1.0 / 3.0));
  buffer_seek(b, buffer_seek_start, 0);
  EXPECT_EQ(buffer_read(b, buffer_f16).real, 0.333251953125);
}

TEST(BufferAlignment, ReadsAndWritesStartAtAMultipleOfTheAlignment) {
  ScopedBuffer b(16, buffer_fixed, 4);
  buffer_write(b, buffer_u8, RValue::number(9));
  EXPECT_EQ(buffer_tell(b), 1);
  buffer_write(b, buffer_u16, RValue::number(0x0201));
  EXPECT_EQ(buffer_tell(b), 6);
  buffer_write(b, buffer_u8, RValue::number(3));
  EXPECT_EQ(first_bytes(b, 9), (Bytes{9, 0, 0, 0, 1, 2, 0, 0, 3}));
  EXPECT_EQ(buffer_get_used_size(b), 9);

  buffer_seek(b, buffer_seek_start, 1);
  EXPECT_EQ(buffer_read(b, buffer_u16).i32, 0x0201);
  EXPECT_EQ(buffer_read(b, buffer_u8).i32, 3);

  // Alignment 3 counts as 4.
  ScopedBuffer c(8, buffer_fixed, 3);
  buffer_write(c, buffer_u8, RValue::number(1));
  buffer_write(c, buffer_u8, RValue::number(2));
  EXPECT_EQ(buffer_tell(c), 5);
}

TEST(BufferAlignment, WrapBufferKeepsTheGridAcrossTurns) {
  // Six bytes with alignment 4: after one turn the grid is shifted by 6 mod 4.
  ScopedBuffer b(6, buffer_wrap, 4);
  buffer_write(b, buffer_u8, RValue::number(1));       // at 0
  buffer_write(b, buffer_u16, RValue::number(0x0302));  // at 4
  buffer_write(b, buffer_u8, RValue::number(9));       // stream offset 8 is byte 2
  EXPECT_EQ(first_bytes(b, 6), (Bytes{1, 0, 9, 0, 2, 3}));
  EXPECT_EQ(buffer_tell(b), 3);
  buffer_write(b, buffer_u8, RValue::number(7));       // stream offset 12 is byte 0 again
  EXPECT_EQ(bytes_of(b)[0], 7);
  EXPECT_EQ(buffer_tell(b), 1);
}

TEST(BufferFixed, WriteBeyondTheEndFailsAndKeepsThePosition) {
  ScopedBuffer b(4, buffer_fixed);
  for (int i = 0; i < 4; ++i) EXPECT_EQ(buffer_write(b, buffer_u8, RValue::number(i + 1)), 0);
  EXPECT_LT(buffer_write(b, buffer_u8, RValue::number(5)), 0);
  EXPECT_EQ(buffer_tell(b), 4);
  EXPECT_EQ(buffer_get_size(b), 4);
  EXPECT_EQ(first_bytes(b, 4), (Bytes{1, 2, 3, 4}));

  buffer_seek(b, buffer_seek_start, 2);
  EXPECT_EQ(buffer_write(b, buffer_u32, RValue::number(-1)), -2);  // doesn't fit whole
  EXPECT_EQ(first_bytes(b, 4), (Bytes{1, 2, 3, 4}));
}

TEST(BufferSeek, EachBaseMovesThePositionByItsRule) {
  ScopedBuffer b(10, buffer_fixed);
  EXPECT_EQ(buffer_seek(b, buffer_seek_start, -5), 0);
  EXPECT_EQ(buffer_seek(b, buffer_seek_start, 6), 6);
  EXPECT_EQ(buffer_seek(b, buffer_seek_end, 0), 10);
  EXPECT_EQ(buffer_tell(b), 10);
  EXPECT_EQ(buffer_seek(b, buffer_seek_end, 3), 7);
  EXPECT_EQ(buffer_seek(b, buffer_seek_end, 20), 0);
  EXPECT_EQ(buffer_seek(b, buffer_seek_end, -5), 10);
  EXPECT_EQ(buffer_seek(b, buffer_seek_start, 3), 3);
  EXPECT_EQ(buffer_seek(b, buffer_seek_relative, 4), 7);
  EXPECT_EQ(buffer_seek(b, buffer_seek_relative, -20), 0);  // stops at 0
  EXPECT_EQ(buffer_seek(b, buffer_seek_start, 5), 5);
  EXPECT_EQ(buffer_seek(b, 7, 2), 5);  // unknown base leaves the position
  EXPECT_EQ(buffer_tell(b), 5);

  ScopedBuffer w(8, buffer_wrap);
  buffer_seek(w, buffer_seek_start, 6);
  EXPECT_EQ(buffer_seek(w, buffer_seek_relative, 4), 2);
  EXPECT_EQ(buffer_seek(w, buffer_seek_relative, -3), 7);
  EXPECT_EQ(buffer_seek(w, buffer_seek_relative, 17), 0);
}

TEST(BufferGrow, SizeDoublesUntilTheValueFits) {
  ScopedBuffer b(0, buffer_grow);
  EXPECT_EQ(buffer_write(b, buffer_u8, RValue::number(1)), 0);
  EXPECT_EQ(buffer_get_size(b), 4);
  EXPECT_EQ(buffer_write(b, buffer_u32, RValue::number(0x05040302)), 0);
  EXPECT_EQ(buffer_get_size(b), 8);
  EXPECT_EQ(first_bytes(b, 5), (Bytes{1, 2, 3, 4, 5}));
  EXPECT_EQ(buffer_write(b, buffer_text, RValue::text("abcdefghijklmnopqrst")), 0);  // 5 + 20 bytes
  EXPECT_EQ(buffer_get_size(b), 32);
  EXPECT_EQ(buffer_tell(b), 25);
  EXPECT_EQ(buffer_get_used_size(b), 25);
  EXPECT_EQ(first_bytes(b, 6), (Bytes{1, 2, 3, 4, 5, 'a'}));

  // A position far beyond the end grows the buffer to reach it.
  ScopedBuffer c(3, buffer_grow);
  buffer_seek(c, buffer_seek_start, 20);
  EXPECT_EQ(buffer_write(c, buffer_u8, RValue::number(1)), 0);
  EXPECT_EQ(buffer_get_size(c), 24);
  EXPECT_EQ(bytes_of(c)[20], 1);
}

TEST(BufferWrap, ReadsAndWritesGoRoundTheEnd) {
  ScopedBuffer b(5, buffer_wrap);
  buffer_seek(b, buffer_seek_start, 3);
  EXPECT_EQ(buffer_write(b, buffer_u32, RValue::number(0x04030201)), 0);
  EXPECT_EQ(first_bytes(b, 5), (Bytes{3, 4, 0, 1, 2}));
  EXPECT_EQ(buffer_tell(b), 2);
  EXPECT_EQ(buffer_get_used_size(b), 5);

  buffer_seek(b, buffer_seek_start, 3);
  RValue v = buffer_read(b, buffer_u32);
  EXPECT_EQ(v.kind(), Kind::Int64);
  EXPECT_EQ(v.i64, 0x04030201);
  EXPECT_EQ(buffer_tell(b), 2);

  // At the end the next value starts again at 0.
  buffer_seek(b, buffer_seek_end, 0);
  EXPECT_EQ(buffer_write(b, buffer_u8, RValue::number(77)), 0);
  EXPECT_EQ(bytes_of(b)[0], 77);
  buffer_seek(b, buffer_seek_end, 0);
  EXPECT_EQ(buffer_read(b, buffer_u8).i32, 77);
  EXPECT_EQ(buffer_tell(b), 1);
}

TEST(BufferRead, PastTheEndIsFatalAndGivesZero) {
  const std::string outside = "Attempting to read from outside the buffer, returning 0";
  ScopedBuffer b(4, buffer_fixed);
  buffer_write(b, buffer_u32, RValue::number(123));
  EXPECT_EQ(fatal_message([&] { buffer_read(b, buffer_u8); }), outside);
  buffer_seek(b, buffer_seek_start, 2);
  EXPECT_EQ(fatal_message([&] { buffer_read(b, buffer_u32); }), outside);  // only partly inside

  ScopedBuffer g(2, buffer_grow);
  buffer_seek(g, buffer_seek_start, 2);
  EXPECT_EQ(fatal_message([&] { buffer_read(g, buffer_string); }), outside);
  EXPECT_EQ(buffer_get_size(g), 2);  // reading never grows

  SuppressErrors quiet;
  buffer_seek(b, buffer_seek_start, 4);
  RValue v = buffer_read(b, buffer_u8);
  EXPECT_TRUE(quiet.error_happened());
  EXPECT_EQ(v.kind(), Kind::Number);
  EXPECT_EQ(v.real, 0.0);
}

TEST(BufferRead, TextStopsAtTheZeroByteOrTheEnd) {
  ScopedBuffer b(7, buffer_fixed);
  EXPECT_EQ(buffer_write(b, buffer_string, RValue::text("ab")), 0);
  EXPECT_EQ(buffer_tell(b), 3);
  EXPECT_EQ(buffer_write(b, buffer_text, RValue::text("cd")), 0);
  EXPECT_EQ(buffer_tell(b), 5);
  EXPECT_EQ(buffer_write(b, buffer_string, RValue::text("")), 0);
  EXPECT_EQ(buffer_tell(b), 6);
  EXPECT_EQ(first_bytes(b, 6), (Bytes{'a', 'b', 0, 'c', 'd', 0}));
  EXPECT_EQ(buffer_write(b, buffer_string, RValue::text("xy")), -2);  // 3 bytes in 1

  buffer_seek(b, buffer_seek_start, 0);
  EXPECT_EQ(buffer_read(b, buffer_string).string_view(), "ab");
  EXPECT_EQ(buffer_tell(b), 3);
  EXPECT_EQ(buffer_read(b, buffer_text).string_view(), "cd");  // up to the zero of the empty string
  EXPECT_EQ(buffer_tell(b), 6);
  EXPECT_EQ(buffer_read(b, buffer_string).string_view(), "");  // the last byte is still zero
  EXPECT_EQ(buffer_tell(b), 7);

  ScopedBuffer t(3, buffer_fixed);
  buffer_write(t, buffer_text, RValue::text("xyz"));
  buffer_seek(t, buffer_seek_start, 1);
  EXPECT_EQ(buffer_read(t, buffer_string).string_view(), "yz");
  EXPECT_EQ(buffer_tell(t), 3);
}

TEST(BufferResize, KeepsOldBytesAndZeroesTheRest) {
  ScopedBuffer b(4, buffer_fixed);
  for (int i = 1; i <= 4; ++i) buffer_write(b, buffer_u8, RValue::number(i));
  buffer_seek(b, buffer_seek_start, 3);
  buffer_resize(b, 8);
  EXPECT_EQ(buffer_get_size(b), 8);
  EXPECT_EQ(buffer_tell(b), 3);
  EXPECT_EQ(buffer_get_used_size(b), 4);
  EXPECT_EQ(first_bytes(b, 8), (Bytes{1, 2, 3, 4, 0, 0, 0, 0}));

  buffer_resize(b, 2);  // the position at or past the new end goes to 0
  EXPECT_EQ(buffer_tell(b), 0);
  EXPECT_EQ(buffer_get_used_size(b), 2);
  EXPECT_EQ(first_bytes(b, 2), (Bytes{1, 2}));
  buffer_resize(b, 5);
  EXPECT_EQ(first_bytes(b, 5), (Bytes{1, 2, 0, 0, 0}));

  ScopedBuffer a(8, buffer_fixed, 64);
  buffer_resize(a, 100);
  EXPECT_EQ(reinterpret_cast<uintptr_t>(bytes_of(a)) % 64, 0u);
}

TEST(BufferUsedSize, OnlyRisesAndStaysWithinTheSize) {
  ScopedBuffer b(16, buffer_fixed);
  for (int i = 0; i < 10; ++i) buffer_write(b, buffer_u8, RValue::number(i));
  EXPECT_EQ(buffer_get_used_size(b), 10);
  buffer_set_used_size(b, 0);
  EXPECT_EQ(buffer_get_used_size(b), 10);
  buffer_set_used_size(b, 12);
  EXPECT_EQ(buffer_get_used_size(b), 12);
  buffer_set_used_size(b, 100);
  EXPECT_EQ(buffer_get_used_size(b), 16);
  buffer_seek(b, buffer_seek_start, 0);
  buffer_write(b, buffer_u8, RValue::number(1));
  EXPECT_EQ(buffer_get_used_size(b), 16);
  EXPECT_EQ(fatal_message([&] { buffer_set_used_size(b, -1); }), "Illegal size passed to buffer_set_used_size -1");
}

TEST(BufferCopy, TakesOnlyWhatTheSourceHasWritten) {
  ScopedBuffer src(8, buffer_fixed);
  ScopedBuffer dst(8, buffer_fixed);
  for (int i = 1; i <= 3; ++i) buffer_write(src, buffer_u8, RValue::number(i));
  buffer_seek(dst, buffer_seek_start, 6);
  buffer_copy(src, 0, 8, dst, 2);
  EXPECT_EQ(first_bytes(dst, 8), (Bytes{0, 0, 1, 2, 3, 0, 0, 0}));
  EXPECT_EQ(buffer_get_used_size(dst), 5);
  EXPECT_EQ(buffer_tell(dst), 6);
  EXPECT_EQ(buffer_tell(src), 3);

  buffer_copy(src, 1, 1, dst, 0);
  EXPECT_EQ(bytes_of(dst)[0], 2);
  EXPECT_EQ(bytes_of(dst)[1], 0);

  // Raising the source's used size lets all of it through; the fixed destination keeps what fits.
  for (int i = 0; i < 8; ++i) bytes_of(src)[i] = static_cast<uint8_t>(10 + i);
  buffer_set_used_size(src, 8);
  buffer_copy(src, 0, 8, dst, 4);
  EXPECT_EQ(first_bytes(dst, 8), (Bytes{2, 0, 1, 2, 10, 11, 12, 13}));
  EXPECT_EQ(buffer_get_used_size(dst), 8);

  // Empty ranges copy nothing.
  ScopedBuffer untouched(4, buffer_fixed);
  buffer_copy(src, 8, 4, untouched, 0);
  buffer_copy(src, 0, 0, untouched, 0);
  buffer_copy(src, -1, 4, untouched, 0);
  buffer_copy(src, 0, 4, untouched, 4);
  EXPECT_EQ(first_bytes(untouched, 4), (Bytes{0, 0, 0, 0}));
  EXPECT_EQ(buffer_get_used_size(untouched), 0);
}

TEST(BufferCopy, FollowsTheRulesOfTheDestination) {
  ScopedBuffer src(6, buffer_fixed);
  for (int i = 1; i <= 6; ++i) buffer_write(src, buffer_u8, RValue::number(i));

  ScopedBuffer wrap(4, buffer_wrap);
  buffer_copy(src, 0, 3, wrap, 3);
  EXPECT_EQ(first_bytes(wrap, 4), (Bytes{2, 3, 0, 1}));
  EXPECT_EQ(buffer_get_used_size(wrap), 4);
  buffer_copy(src, 0, 6, wrap, 0);  // more than the size: the last bytes win
  EXPECT_EQ(first_bytes(wrap, 4), (Bytes{5, 6, 3, 4}));

  ScopedBuffer grow(2, buffer_grow);
  buffer_copy(src, 0, 6, grow, 3);
  EXPECT_EQ(buffer_get_size(grow), 16);
  EXPECT_EQ(first_bytes(grow, 9), (Bytes{0, 0, 0, 1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(buffer_get_used_size(grow), 9);

  ScopedBuffer fast(4, buffer_fast);
  buffer_copy(src, 2, 6, fast, 0);
  EXPECT_EQ(first_bytes(fast, 4), (Bytes{3, 4, 5, 6}));
  ScopedBuffer back(4, buffer_fixed);
  buffer_copy(fast, 0, 4, back, 0);
  EXPECT_EQ(first_bytes(back, 4), (Bytes{3, 4, 5, 6}));
}

TEST(BufferCopy, ReportsWrongIdsAndTheSameBuffer) {
  ScopedBuffer b(4, buffer_fixed);
  EXPECT_EQ(fatal_message([&] { buffer_copy(b, 0, 4, b, 0); }), "Source and Destination buffers can't be the same");
  EXPECT_EQ(fatal_message([&] { buffer_copy(-7, 0, 4, b, 0); }), "Illegal Source Buffer Index -7");
  EXPECT_EQ(fatal_message([&] { buffer_copy(b, 0, 4, 5000, 0); }), "Illegal Destination Buffer Index 5000");
}

TEST(BufferFill, RepeatsTheValueOverTheRange) {
  ScopedBuffer b(10, buffer_fixed);
  buffer_seek(b, buffer_seek_start, 3);
  buffer_fill(b, 0, buffer_u16, RValue::number(0x0201), 10);
  EXPECT_EQ(first_bytes(b, 10), (Bytes{1, 2, 1, 2, 1, 2, 1, 2, 1, 2}));
  EXPECT_EQ(buffer_tell(b), 3);
  EXPECT_EQ(buffer_get_used_size(b), 10);

  ScopedBuffer part(10, buffer_fixed);
  buffer_fill(part, 1, buffer_u32, RValue::number(-1), 7);  // room for one whole value only
  EXPECT_EQ(first_bytes(part, 10), (Bytes{0, 255, 255, 255, 255, 0, 0, 0, 0, 0}));
  EXPECT_EQ(buffer_get_used_size(part), 5);
  buffer_fill(part, 6, buffer_u8, RValue::number(7), 100);  // clipped at the end
  EXPECT_EQ(first_bytes(part, 10), (Bytes{0, 255, 255, 255, 255, 0, 7, 7, 7, 7}));

  ScopedBuffer aligned(10, buffer_fixed, 4);
  buffer_fill(aligned, 0, buffer_u8, RValue::number(5), 10);
  EXPECT_EQ(first_bytes(aligned, 10), (Bytes{5, 0, 0, 0, 5, 0, 0, 0, 5, 0}));

  ScopedBuffer grow(0, buffer_grow);
  buffer_fill(grow, 0, buffer_string, RValue::text("ab"), 6);
  EXPECT_EQ(buffer_get_size(grow), 8);
  EXPECT_EQ(first_bytes(grow, 7), (Bytes{'a', 'b', 0, 'a', 'b', 0, 0}));
}

TEST(BufferFast, TakesSingleBytesOnlyAndFailsQuietly) {
  ScopedBuffer b(2, buffer_fast, 4);
  EXPECT_EQ(buffer_write(b, buffer_u16, RValue::number(1)), -4);
  EXPECT_EQ(buffer_write(b, buffer_u8, RValue::number(258)), 0);
  EXPECT_EQ(buffer_write(b, buffer_u8, RValue::number(3)), 0);  // no alignment
  EXPECT_EQ(buffer_tell(b), 2);
  EXPECT_EQ(buffer_write(b, buffer_u8, RValue::number(4)), -2);
  EXPECT_EQ(buffer_get_used_size(b), 2);
  EXPECT_EQ(first_bytes(b, 2), (Bytes{2, 3}));

  RValue v;
  EXPECT_EQ(fatal_message([&] { v = buffer_read(b, buffer_u8); }), "no error");
  EXPECT_EQ(v.kind(), Kind::Number);
  EXPECT_EQ(v.real, 0.0);
  buffer_seek(b, buffer_seek_start, 0);
  v = buffer_read(b, buffer_u16);
  EXPECT_EQ(v.kind(), Kind::Number);
  EXPECT_EQ(v.real, 0.0);
  EXPECT_EQ(buffer_tell(b), 0);
  v = buffer_read(b, buffer_u8);
  EXPECT_EQ(v.kind(), Kind::Int32);
  EXPECT_EQ(v.i32, 2);

  buffer_fill(b, 0, buffer_u16, RValue::number(9), 2);  // not a byte: nothing
  EXPECT_EQ(first_bytes(b, 2), (Bytes{2, 3}));
  buffer_fill(b, 0, buffer_u8, RValue::number(9), 2);
  EXPECT_EQ(first_bytes(b, 2), (Bytes{9, 9}));
}

TEST(BufferTable, NewBuffersTakeTheLowestFreeSlot) {
  ScopedBuffer a(1, buffer_fixed);
  ScopedBuffer b(1, buffer_fixed);
  ScopedBuffer c(1, buffer_fixed);
  EXPECT_LT(a.id, b.id);
  EXPECT_LT(b.id, c.id);
  buffer_delete(b);
  RValue exists = buffer_exists(b);
  EXPECT_EQ(exists.kind(), Kind::Bool);
  EXPECT_EQ(exists.real, 0.0);
  EXPECT_EQ(buffer_exists(a).real, 1.0);
  EXPECT_EQ(fatal_message([&] { buffer_delete(b); }), "Illegal Buffer Index " + std::to_string(b.id));
  ScopedBuffer reused(1, buffer_fixed);
  EXPECT_EQ(reused.id, b.id);

  // Past the first 32 slots the table doubles and ids go on counting.
  std::vector<int32_t> many;
  for (int i = 0; i < 70; ++i) many.push_back(buffer_create(1, buffer_grow, 1));
  for (size_t i = 1; i < many.size(); ++i) EXPECT_EQ(many[i], many[i - 1] + 1);
  EXPECT_GE(many.back(), 64);
  for (int32_t id : many) buffer_delete(id);
  EXPECT_EQ(buffer_exists(many.back()).real, 0.0);
  EXPECT_EQ(buffer_exists(-1).real, 0.0);
  EXPECT_EQ(buffer_exists(100000).real, 0.0);
}

TEST(BufferTable, EveryOperationReportsAnIllegalIndex) {
  const std::string words = "Illegal Buffer Index 999";
  EXPECT_EQ(fatal_message([] { buffer_tell(999); }), words);
  EXPECT_EQ(fatal_message([] { buffer_seek(999, 0, 0); }), words);
  EXPECT_EQ(fatal_message([] { buffer_get_size(999); }), words);
  EXPECT_EQ(fatal_message([] { buffer_get_used_size(999); }), words);
  EXPECT_EQ(fatal_message([] { buffer_get_address(999); }), words);
  EXPECT_EQ(fatal_message([] { buffer_resize(999, 4); }), words);
  EXPECT_EQ(fatal_message([] { buffer_set_used_size(999, 4); }), words);
  EXPECT_EQ(fatal_message([] { buffer_read(999, buffer_u8); }), words);
  EXPECT_EQ(fatal_message([] { buffer_write(999, buffer_u8, RValue::number(1)); }), words);
  EXPECT_EQ(fatal_message([] { buffer_fill(999, 0, buffer_u8, RValue::number(1), 1); }), words);
  EXPECT_EQ(fatal_message([] { buffer_delete(999); }), words);

  SuppressErrors quiet;
  EXPECT_EQ(buffer_write(999, buffer_u8, RValue::number(1)), -1);
  EXPECT_EQ(buffer_get_address(999).ptr, nullptr);
  EXPECT_TRUE(quiet.error_happened());
}

TEST(BufferTable, BorrowedBufferKeepsItsBytesUntilTheLastUserLeaves) {
  const int32_t id = buffer_create(4, buffer_fixed, 1);
  ASSERT_TRUE(buffer_add_user(id));
  ASSERT_TRUE(buffer_add_user(id));
  uint8_t* borrowed = bytes_of(id);
  buffer_delete(id);
  EXPECT_EQ(buffer_exists(id).real, 0.0);
  EXPECT_EQ(buffer_lookup(id), nullptr);
  EXPECT_FALSE(buffer_add_user(id));
  borrowed[3] = 42;  // still the sound's memory (the sanitizer build would catch a free)
  EXPECT_EQ(borrowed[3], 42);

  ScopedBuffer other(1, buffer_fixed);
  EXPECT_NE(other.id, id);  // the slot stays taken while borrowed
  buffer_remove_user(id);
  ScopedBuffer still_other(1, buffer_fixed);
  EXPECT_NE(still_other.id, id);
  buffer_remove_user(id);
  ScopedBuffer reused(1, buffer_fixed);
  EXPECT_EQ(reused.id, id);
}

TEST(BufferTable, RemovingAUserThatIsNotThereWritesADebugLine) {
  ScopedBuffer b(4, buffer_fixed);
  std::FILE* log = std::tmpfile();
  ASSERT_NE(log, nullptr);
  set_debug_output_file(log);
  buffer_add_user(b);
  buffer_remove_user(b);
  buffer_remove_user(b);
  set_debug_output_file(nullptr);
  std::rewind(log);
  char line[128] = {};
  ASSERT_NE(std::fgets(line, sizeof line, log), nullptr);
  EXPECT_STREQ(line, "Decrementing buffer ref count to less than zero\n");
  EXPECT_EQ(std::fgets(line, sizeof line, log), nullptr);  // only for the second call
  std::fclose(log);
  EXPECT_EQ(buffer_lookup(b)->users(), 0);
}

TEST(BufferBuiltins, AreCalledByNameWithTheirResultKinds) {
  register_runtime_builtins();
  const auto call = [](const char* name, std::vector<RValue> args) {
    RValue result;
    EXPECT_TRUE(builtin_call(name, result, nullptr, nullptr, static_cast<int>(args.size()), args.data())) << name;
    return result;
  };
  const auto n = [](double d) { return RValue::number(d); };
  RValue result = call("buffer_create", {n(8), n(buffer_grow), n(1)});
  ASSERT_EQ(result.kind(), Kind::Number);
  const int32_t id = static_cast<int32_t>(result.real);

  EXPECT_EQ(call("buffer_write", {n(id), n(buffer_s16), RValue::text("-5")}).real, 0.0);
  EXPECT_EQ(call("buffer_tell", {n(id)}).real, 2.0);
  EXPECT_EQ(call("buffer_seek", {n(id), n(buffer_seek_start), n(0)}).real, 0.0);
  result = call("buffer_read", {n(id), n(buffer_s16)});
  EXPECT_EQ(result.kind(), Kind::Int32);
  EXPECT_EQ(result.i32, -5);

  call("buffer_fill", {n(id), n(2), n(buffer_u8), n(6), n(3)});  // offset and size apart, so a swap shows
  call("buffer_set_used_size", {n(id), n(6)});
  EXPECT_EQ(call("buffer_get_used_size", {n(id)}).real, 6.0);
  result = call("buffer_get_address", {n(id)});
  EXPECT_EQ(result.kind(), Kind::Ptr);
  EXPECT_EQ(result.ptr, bytes_of(id));
  EXPECT_EQ(first_bytes(id, 6), (Bytes{0xFB, 0xFF, 6, 6, 6, 0}));

  call("buffer_resize", {n(id), n(20)});
  EXPECT_EQ(call("buffer_get_size", {n(id)}).real, 20.0);
  ScopedBuffer target(8, buffer_fixed);
  call("buffer_copy", {n(id), n(0), n(4), n(target.id), n(1)});
  EXPECT_EQ(first_bytes(target, 5), (Bytes{0, 0xFB, 0xFF, 6, 6}));

  result = call("buffer_exists", {n(id)});
  EXPECT_EQ(result.kind(), Kind::Bool);
  EXPECT_EQ(result.real, 1.0);
  call("buffer_delete", {n(id)});
  EXPECT_EQ(call("buffer_exists", {n(id)}).real, 0.0);

  EXPECT_EQ(fatal_message([&] { call("buffer_create", {RValue::text("otto"), n(0), n(1)}); }),
            "buffer_create argument 1 incorrect type (string) expecting a Number (QvGI32)");
}
