// Binary buffers: creation, every data type, alignment, the fixed, grow,
// wrap and fast rules, copies, fills, the id table and the calls by name.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "runtime/Buffer/Buffer.h"
#include "runtime/Buffer/BufferValue.h"
#include "runtime/Buffer/IBuffer.h"
#include "runtime/Code/Builtins.h"
#include "runtime/Code/Conversions.h"
#include "support/CallBuiltin.h"
#include "support/DebugLines.h"
#include "support/Fatal.h"

namespace {

// A buffer deleted at the end of the test, so that tests don't see each other's ids.
struct ScopedBuffer {
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
Bytes first_bytes(int32_t id, int count) { return Bytes(bytes_of(id), bytes_of(id) + count); }

// The first bytes of a buffer, its position, used size and size, compared together.
struct State {
  Bytes bytes;
  int32_t tell, used, size;
  bool operator==(const State&) const = default;
  friend std::ostream& operator<<(std::ostream& out, const State& s) {
    for (int b : s.bytes) out << b << ' ';
    return out << "at " << s.tell << ", used " << s.used << " of " << s.size;
  }
};
State state(int32_t id, int count) {
  return {first_bytes(id, count), buffer_tell(id), buffer_get_used_size(id), buffer_get_size(id)};
}

// One value to write, with its data type.
struct Value {
  Value(int32_t t, double number) : type(t), value(RValue::number(number)) {}
  Value(int32_t t, const char* text) : type(t), value(RValue::text(text)) {}
  Value(int32_t t, RValue v) : type(t), value(std::move(v)) {}
  int32_t type;
  RValue value;
};
using Results = std::vector<int32_t>;
// Writes the values in turn; gives each write's result.
Results write(int32_t id, const std::vector<Value>& values) {
  Results results;
  for (const Value& v : values) results.push_back(buffer_write(id, v.type, v.value));
  return results;
}

}  // namespace

TEST(BufferCreate, RejectsIllegalSizeAlignmentAndTypeWithExactWords) {
  struct Case { int32_t size, type, alignment; std::string words; };
  const Case cases[] = {
      {-3, buffer_fixed, 1, "buffer_create: Illegal size -3"},
      {8, buffer_fixed, 0, "buffer_create: Illegal alignment size 0"},
      {8, buffer_fixed, 1025, "buffer_create: Illegal alignment size 1025"},
      {8, 4, 1, "Unknown buffer type, should be one of buffer_fixed, buffer_grow, buffer_wrap, buffer_fast, buffer_vbuffer"},
  };
  for (const Case& c : cases) {
    EXPECT_FATAL(buffer_create(c.size, c.type, c.alignment), c.words);
    SuppressErrors quiet;
    EXPECT_EQ(buffer_create(c.size, c.type, c.alignment), -1) << c.words;
    EXPECT_TRUE(quiet.error_happened());
  }
}

TEST(BufferCreate, MakesZeroedMemoryAtAnAlignedAddress) {
  ScopedBuffer b(64, buffer_fixed, 1000);  // rounded up to 1024
  EXPECT_EQ(buffer_lookup(b)->alignment(), 1024);
  EXPECT_EQ(reinterpret_cast<uintptr_t>(bytes_of(b)) % 1024, 0u);
  EXPECT_EQ(state(b, 64), (State{Bytes(64, 0), 0, 0, 64}));
}

TEST(BufferReadWrite, EveryDataTypeRoundTripsWithItsResultKind) {
  // The text form of what is read back, and its kind.
  struct Case { int32_t data_type; RValue written; Kind read_kind; std::string read_text; };
  const auto n = [](double d) { return RValue::number(d); };
  const Case cases[] = {
      {buffer_u8, n(255), Kind::Int32, "255"}, {buffer_s8, n(-100), Kind::Int32, "-100"},
      {buffer_u16, n(65535), Kind::Int32, "65535"}, {buffer_s16, n(-30000), Kind::Int32, "-30000"},
      {buffer_u32, n(4e9), Kind::Int64, "4000000000"}, {buffer_s32, n(-2e9), Kind::Int32, "-2000000000"},
      {buffer_f16, n(-1.5), Kind::Number, "-1.50"}, {buffer_f32, n(0.25), Kind::Number, "0.25"},
      {buffer_f64, n(0.1), Kind::Number, "0.10"}, {buffer_bool, RValue::boolean(true), Kind::Int32, "1"},
      {buffer_string, RValue::text("ciao"), Kind::String, "ciao"}, {buffer_u64, RValue::int64(-2), Kind::Int64, "-2"},
      {buffer_text, RValue::text("fine"), Kind::String, "fine"},
  };
  ScopedBuffer b(0, buffer_grow);
  for (const Case& c : cases) EXPECT_EQ(buffer_write(b, c.data_type, c.written), 0) << "type " << c.data_type;
  EXPECT_EQ(buffer_get_used_size(b), 1 + 1 + 2 + 2 + 4 + 4 + 2 + 4 + 8 + 1 + 5 + 8 + 4);
  buffer_seek(b, buffer_seek_start, 0);
  for (const Case& c : cases) {
    SCOPED_TRACE(c.data_type);
    const RValue v = buffer_read(b, c.data_type);
    EXPECT_EQ(v.kind(), c.read_kind);
    EXPECT_EQ(value_to_text(v), c.read_text);
  }
  // buffer_text wrote no zero: the read stops at the fresh zero byte after it and moves past it.
  EXPECT_EQ(buffer_tell(b), 47);
}

// A new buffer, its writes from a start position, then reads from positions.
TEST(BufferReadWrite, EachBufferTypePlacesValuesByItsRules) {
  constexpr int32_t FIXED = buffer_fixed, GROW = buffer_grow, WRAP = buffer_wrap, FAST = buffer_fast, THEN = -1;
  struct Read { int32_t from, type; Kind kind; std::string text; int32_t tell; };  // from THEN: where the last ended
  struct Case { const char* what; int32_t size, type, alignment, start; std::vector<Value> writes; Results results;
                State after; std::vector<Read> reads; };
  const Case cases[] = {
      // The low byte only, a text read as an integer, any true value as 1, a number as its text form; an
      // unknown data type writes nothing, and a fixed buffer takes no value past its end.
      {"values go through the conversions", 7, FIXED, 1, 0,
       {{buffer_u8, 300}, {buffer_u8, "7"}, {buffer_bool, 5}, {buffer_text, 0.5}, {14, 1}, {buffer_u8, 1}},
       {0, 0, 0, 0, -1, -2}, {{44, 7, 1, '0', '.', '5', '0'}, 7, 7, 7}, {}},
      {"values start at a multiple of the alignment", 16, FIXED, 4, 0,
       {{buffer_u8, 9}, {buffer_u16, 0x0201}, {buffer_u8, 3}}, {0, 0, 0}, {{9, 0, 0, 0, 1, 2, 0, 0, 3}, 9, 9, 16},
       {{1, buffer_u16, Kind::Int32, "513", 6}, {THEN, buffer_u8, Kind::Int32, "3", 9}}},
      // Six bytes with alignment 4: each turn shifts the grid by 6 mod 4, so
      // stream offset 8 is byte 2, and offset 12 byte 0 again.
      {"a wrap buffer keeps the grid across turns", 6, WRAP, 4, 0,
       {{buffer_u8, 1}, {buffer_u16, 0x0302}, {buffer_u8, 9}, {buffer_u8, 7}}, {0, 0, 0, 0}, {{7, 0, 9, 0, 2, 3}, 1, 6, 6}, {}},
      {"a wrap buffer's values go round the end", 5, WRAP, 1, 3, {{buffer_u32, 0x04030201}}, {0},
       {{3, 4, 0, 1, 2}, 2, 5, 5}, {{3, buffer_u32, Kind::Int64, "67305985", 2}}},
      {"a grow buffer starts at 4 bytes", 0, GROW, 1, 0, {{buffer_u8, 1}}, {0}, {{1}, 1, 1, 4}, {}},
      {"and doubles until it reaches a position far beyond its end", 3, GROW, 1, 20, {{buffer_u8, 1}}, {0},
       {{0, 0, 0}, 21, 21, 24}, {{20, buffer_u8, Kind::Int32, "1", 21}}},
      // "cd" is read up to the zero of the empty string; the last byte is still zero, as "xy" doesn't fit whole.
      {"strings end in a zero, texts don't", 7, FIXED, 1, 0,
       {{buffer_string, "ab"}, {buffer_text, "cd"}, {buffer_string, ""}, {buffer_string, "xy"}}, {0, 0, 0, -2},
       {{'a', 'b', 0, 'c', 'd', 0}, 6, 6, 7},
       {{0, buffer_text, Kind::String, "ab", 3}, {THEN, buffer_text, Kind::String, "cd", 6},
        {THEN, buffer_string, Kind::String, "", 7}}},
      {"a text read stops at the end", 3, FIXED, 1, 0, {{buffer_text, "xyz"}}, {0}, {{'x', 'y', 'z'}, 3, 3, 3},
       {{1, buffer_string, Kind::String, "yz", 3}}},
      // Reads past the end or of other types give the number 0, without a report.
      {"a fast buffer takes single bytes, without alignment", 2, FAST, 4, 0,
       {{buffer_u16, 1}, {buffer_u8, 258}, {buffer_u8, 3}, {buffer_u8, 4}}, {-4, 0, 0, -2}, {{2, 3}, 2, 2, 2},
       {{2, buffer_u8, Kind::Number, "0", 2}, {0, buffer_u16, Kind::Number, "0", 0}, {THEN, buffer_u8, Kind::Int32, "2", 1}}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    ScopedBuffer b(c.size, c.type, c.alignment);
    buffer_seek(b, buffer_seek_start, c.start);
    EXPECT_EQ(write(b, c.writes), c.results);
    EXPECT_EQ(state(b, static_cast<int>(c.after.bytes.size())), c.after);
    for (const Read& r : c.reads) {
      if (r.from != THEN) buffer_seek(b, buffer_seek_start, r.from);
      const RValue v = buffer_read(b, r.type);
      EXPECT_EQ(v.kind(), r.kind) << r.text;
      EXPECT_EQ(value_to_text(v), r.text);
      EXPECT_EQ(buffer_tell(b), r.tell) << r.text;
    }
  }
  ScopedBuffer c(16, buffer_fixed);
  EXPECT_FATAL(buffer_write(c, buffer_u8, RValue::text("abc")), "unable to convert string \"abc\" to integer");
}

TEST(BufferReadWrite, HalvesRoundToNearestEven) {
  struct Case { float value; uint16_t half; bool exact; };  // exact: the half reads back as the same value
  const Case cases[] = {
      {1.0f, 0x3C00, true}, {65504.0f, 0x7BFF, true}, {1e6f, 0x7C00, false}, {-INFINITY, 0xFC00, true},
      {65520.0f, 0x7C00, false},                                                   // rounds up to infinity
      {std::ldexp(1.0f, -24), 0x0001, true}, {std::ldexp(1023.0f, -24), 0x03FF, true},  // smallest, largest subnormal
      {std::ldexp(1.0f, -25), 0x0000, false}, {std::ldexp(1.5f, -25), 0x0001, false},  // the tie goes to even
      {1.0f + std::ldexp(1.0f, -11), 0x3C00, false}, {1.0f + 3 * std::ldexp(1.0f, -11), 0x3C02, false},  // ties
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
}

TEST(BufferSeek, EachBaseMovesThePositionByItsRule) {
  constexpr int32_t START = buffer_seek_start, RELATIVE = buffer_seek_relative, END = buffer_seek_end;
  struct Step { bool wrap; int32_t base, offset, position; };  // on a wrap buffer of 8 bytes, or a fixed one of 10
  const Step steps[] = {
      {false, START, -5, 0}, {false, END, 3, 7}, {false, END, 20, 0}, {false, END, -5, 10}, {false, START, 3, 3},
      {false, RELATIVE, 4, 7}, {false, RELATIVE, -20, 0}, {false, 7, 2, 0} /* unknown base */, {true, START, 6, 6},
      {true, RELATIVE, 4, 2}, {true, RELATIVE, -3, 7}, {true, RELATIVE, 17, 0},
  };
  ScopedBuffer fixed(10, buffer_fixed), wrap(8, buffer_wrap);
  for (const Step& s : steps) {
    const int32_t id = s.wrap ? wrap.id : fixed.id;
    SCOPED_TRACE(testing::Message() << (s.wrap ? "wrap " : "fixed ") << s.base << " " << s.offset);
    EXPECT_EQ(buffer_seek(id, s.base, s.offset), s.position);
    EXPECT_EQ(buffer_tell(id), s.position);
  }
}

TEST(BufferRead, PastTheEndIsFatalAndGivesZero) {
  const std::string outside = "Attempting to read from outside the buffer, returning 0";
  ScopedBuffer b(4, buffer_fixed);
  buffer_seek(b, buffer_seek_start, 2);
  EXPECT_FATAL(buffer_read(b, buffer_u32), outside);  // only partly inside
  SuppressErrors quiet;
  buffer_seek(b, buffer_seek_start, 4);
  const RValue v = buffer_read(b, buffer_u8);
  EXPECT_TRUE(quiet.error_happened());
  EXPECT_EQ(v.kind(), Kind::Number);
  EXPECT_EQ(v.real, 0.0);
}

TEST(BufferResize, KeepsOldBytesZeroesTheRestAndCutsTheUsedSize) {
  ScopedBuffer b(4, buffer_fixed);
  write(b, {{buffer_u8, 1}, {buffer_u8, 2}, {buffer_u8, 3}, {buffer_u8, 4}});
  buffer_seek(b, buffer_seek_start, 3);
  buffer_resize(b, 8);
  EXPECT_EQ(state(b, 8), (State{{1, 2, 3, 4, 0, 0, 0, 0}, 3, 4, 8}));
  buffer_resize(b, 2);  // the position at or past the new end goes to 0
  EXPECT_EQ(state(b, 2), (State{{1, 2}, 0, 2, 2}));
  buffer_resize(b, -1);  // ignored
  buffer_resize(b, 5);
  EXPECT_EQ(first_bytes(b, 5), (Bytes{1, 2, 0, 0, 0}));
  // The used size only rises, and stays within the size.
  const std::pair<int32_t, int32_t> raises[] = {{0, 2}, {3, 3}, {100, 5}};  // asked, then used
  for (const auto& [asked, used] : raises) {
    buffer_set_used_size(b, asked);
    EXPECT_EQ(buffer_get_used_size(b), used) << asked;
  }
  buffer_seek(b, buffer_seek_start, 0);
  buffer_write(b, buffer_u8, RValue::number(1));
  EXPECT_EQ(buffer_get_used_size(b), 5);
  EXPECT_FATAL(buffer_set_used_size(b, -1), "Illegal size passed to buffer_set_used_size -1");
}

TEST(BufferCopy, TakesWhatTheSourceHasWrittenByTheRulesOfTheDestination) {
  ScopedBuffer src(8, buffer_fixed), dst(8, buffer_fixed);
  write(src, {{buffer_u8, 1}, {buffer_u8, 2}, {buffer_u8, 3}});
  buffer_seek(dst, buffer_seek_start, 6);
  buffer_copy(src, 0, 8, dst, 2);
  EXPECT_EQ(state(dst, 8), (State{{0, 0, 1, 2, 3, 0, 0, 0}, 6, 5, 8}));
  EXPECT_EQ(buffer_tell(src), 3);

  // Raising the source's used size lets all of it through; the fixed destination keeps what fits.
  for (int i = 0; i < 8; ++i) bytes_of(src)[i] = static_cast<uint8_t>(1 + i);
  buffer_set_used_size(src, 8);
  buffer_copy(src, 0, 8, dst, 4);
  EXPECT_EQ(state(dst, 8), (State{{0, 0, 1, 2, 1, 2, 3, 4}, 6, 8, 8}));

  // Empty ranges copy nothing.
  ScopedBuffer untouched(4, buffer_fixed);
  for (const int32_t offset : {8, -1}) buffer_copy(src, offset, 4, untouched, 0);
  for (const int32_t to : {4, -1}) buffer_copy(src, 0, 4, untouched, to);
  EXPECT_EQ(state(untouched, 4), (State{{0, 0, 0, 0}, 0, 0, 4}));

  ScopedBuffer wrap(4, buffer_wrap);
  buffer_copy(src, 0, 3, wrap, 3);
  EXPECT_EQ(state(wrap, 4), (State{{2, 3, 0, 1}, 0, 4, 4}));
  buffer_copy(src, 0, 6, wrap, 0);  // more than the size: the last bytes win
  EXPECT_EQ(first_bytes(wrap, 4), (Bytes{5, 6, 3, 4}));
  ScopedBuffer grow(2, buffer_grow);
  buffer_copy(src, 0, 6, grow, 3);
  EXPECT_EQ(state(grow, 9), (State{{0, 0, 0, 1, 2, 3, 4, 5, 6}, 0, 9, 16}));

  EXPECT_FATAL(buffer_copy(src, 0, 4, src, 0), "Source and Destination buffers can't be the same");
  EXPECT_FATAL(buffer_copy(-7, 0, 4, src, 0), "Illegal Source Buffer Index -7");
  EXPECT_FATAL(buffer_copy(src, 0, 4, 5000, 0), "Illegal Destination Buffer Index 5000");
}

TEST(BufferFill, RepeatsTheValueOverTheRange) {
  ScopedBuffer b(10, buffer_fixed);
  buffer_seek(b, buffer_seek_start, 3);
  buffer_fill(b, 1, buffer_u32, RValue::number(-1), 7);  // room for one whole value only
  EXPECT_EQ(state(b, 10), (State{{0, 255, 255, 255, 255, 0, 0, 0, 0, 0}, 3, 5, 10}));
  buffer_fill(b, 6, buffer_u16, RValue::number(0x0201), 100);  // clipped at the end
  EXPECT_EQ(first_bytes(b, 10), (Bytes{0, 255, 255, 255, 255, 0, 1, 2, 1, 2}));

  ScopedBuffer aligned(10, buffer_fixed, 4);
  buffer_fill(aligned, 0, buffer_u8, RValue::number(5), 10);
  EXPECT_EQ(first_bytes(aligned, 10), (Bytes{5, 0, 0, 0, 5, 0, 0, 0, 5, 0}));

  ScopedBuffer grow(0, buffer_grow);
  buffer_fill(grow, 0, buffer_string, RValue::text("ab"), 6);
  EXPECT_EQ(state(grow, 7), (State{{'a', 'b', 0, 'a', 'b', 0, 0}, 0, 6, 8}));

  // A fast buffer takes bytes alone, without alignment.
  ScopedBuffer fast(2, buffer_fast, 4);
  buffer_fill(fast, 0, buffer_u16, RValue::number(9), 2);
  buffer_fill(fast, 1, buffer_u8, RValue::number(9), 1);
  EXPECT_EQ(first_bytes(fast, 2), (Bytes{0, 9}));
}

TEST(BufferTable, NewBuffersTakeTheLowestFreeSlot) {
  ScopedBuffer a(1, buffer_fixed), b(1, buffer_fixed);
  EXPECT_LT(a.id, b.id);
  buffer_delete(a);
  EXPECT_EQ(buffer_exists(b).real, 1.0);
  ScopedBuffer reused(1, buffer_fixed);
  EXPECT_EQ(reused.id, a.id);

  // Past the first 32 slots the table doubles and ids go on counting.
  std::vector<int32_t> many;
  for (int i = 0; i < 70; ++i) many.push_back(buffer_create(1, buffer_grow, 1));
  for (size_t i = 1; i < many.size(); ++i) EXPECT_EQ(many[i], many[i - 1] + 1);
  for (int32_t id : many) buffer_delete(id);
  for (const int32_t id : {many.back(), -1, 100000}) EXPECT_EQ(buffer_exists(id).real, 0.0) << id;
}

TEST(BufferTable, EveryOperationReportsAnIllegalIndex) {
  const std::function<void()> operations[] = {
      [] { buffer_tell(999); },          [] { buffer_seek(999, 0, 0); },        [] { buffer_get_size(999); },
      [] { buffer_get_used_size(999); }, [] { buffer_get_address(999); },       [] { buffer_resize(999, 4); },
      [] { buffer_set_used_size(999, 4); }, [] { buffer_read(999, buffer_u8); }, [] { buffer_delete(999); },
      [] { buffer_write(999, buffer_u8, RValue::number(1)); },
      [] { buffer_fill(999, 0, buffer_u8, RValue::number(1), 1); },
  };
  for (const auto& operation : operations) EXPECT_FATAL(operation(), "Illegal Buffer Index 999");

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
  EXPECT_EQ(buffer_lookup(id), nullptr);
  EXPECT_FALSE(buffer_add_user(id));
  EXPECT_FATAL(buffer_delete(id), "Illegal Buffer Index " + std::to_string(id));
  borrowed[3] = 42;  // still the sound's memory (the sanitizer build would catch a free)
  EXPECT_EQ(borrowed[3], 42);

  // The slot stays taken while borrowed. Only removing a user that is not
  // there writes a debug line.
  std::optional<ScopedBuffer> other, reused;
  EXPECT_EQ(debug_lines([&] {
              buffer_remove_user(id);
              other.emplace(1, buffer_fixed);
              EXPECT_NE(other->id, id);
              buffer_remove_user(id);
              reused.emplace(1, buffer_fixed);
              EXPECT_EQ(reused->id, id);
              buffer_remove_user(*reused);
            }),
            "Decrementing buffer ref count to less than zero\n");
  EXPECT_EQ(buffer_lookup(*reused)->users(), 0);
}

TEST(BufferBuiltins, AreCalledByNameWithTheirArgumentsInOrderAndTheirResultKinds) {
  register_runtime_builtins();
  const auto n = [](double d) { return RValue::number(d); };
  const RValue id = call_builtin("buffer_create", {n(8), n(buffer_grow), n(1)});
  ASSERT_EQ(id.kind(), Kind::Number);
  ScopedBuffer target(8, buffer_fixed);
  // In turn; a call without a result has no kind here. Fill's offset and size
  // differ, and so do copy's offsets, so that a swap shows.
  struct Call { const char* name; std::vector<RValue> args; Kind kind; const char* text; };
  const Call calls[] = {
      {"buffer_write", {id, n(buffer_s16), RValue::text("-5")}, Kind::Number, "0"},
      {"buffer_tell", {id}, Kind::Number, "2"}, {"buffer_seek", {id, n(buffer_seek_start), n(0)}, Kind::Number, "0"},
      {"buffer_read", {id, n(buffer_s16)}, Kind::Int32, "-5"},
      {"buffer_fill", {id, n(2), n(buffer_u8), n(6), n(3)}, Kind::Undefined, nullptr},
      {"buffer_set_used_size", {id, n(6)}, Kind::Undefined, nullptr}, {"buffer_get_used_size", {id}, Kind::Number, "6"},
      {"buffer_resize", {id, n(20)}, Kind::Undefined, nullptr}, {"buffer_get_size", {id}, Kind::Number, "20"},
      {"buffer_copy", {id, n(0), n(4), n(target.id), n(1)}, Kind::Undefined, nullptr},
      {"buffer_exists", {id}, Kind::Bool, "1"},
  };
  for (const Call& c : calls) {
    const RValue result = call_builtin(c.name, c.args);
    if (!c.text) continue;
    EXPECT_EQ(result.kind(), c.kind) << c.name;
    EXPECT_EQ(value_to_text(result), c.text) << c.name;
  }
  const RValue address = call_builtin("buffer_get_address", {id});
  EXPECT_EQ(address.kind(), Kind::Ptr);
  EXPECT_EQ(first_bytes(static_cast<int32_t>(id.real), 6), (Bytes{0xFB, 0xFF, 6, 6, 6, 0}));
  EXPECT_EQ(address.ptr, bytes_of(static_cast<int32_t>(id.real)));
  EXPECT_EQ(first_bytes(target, 5), (Bytes{0, 0xFB, 0xFF, 6, 6}));
  call_builtin("buffer_delete", {id});
  EXPECT_EQ(call_builtin("buffer_exists", {id}).real, 0.0);

  EXPECT_FATAL(call_builtin("buffer_create", {RValue::text("otto"), n(0), n(1)}),
               "buffer_create argument 1 incorrect type (string) expecting a Number (QvGI32)");
}
