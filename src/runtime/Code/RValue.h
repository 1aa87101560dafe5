// RValue: the one dynamic value of the runtime.
//
// A 16-byte record: a 64-bit payload, a flags word carried along on every
// copy, and a kind word whose low 24 bits name the kind. Strings and arrays
// are reference counted bodies (RefString, RefArray); copying a value takes
// a reference, destroying it releases one. Text is never changed in place:
// every string operation makes a new RefString.
//
// Conversions, operators and comparison live in Conversions.h and
// Operators.h; the array rules in Array.h.
#pragma once

#include <cstdint>
#include <string_view>

struct RefString;
struct RefArray;
class QvObjectBase;
class CInstance;

enum class Kind : uint32_t {
  Number = 0,
  String = 1,
  Array = 2,
  Ptr = 3,
  Vec3 = 4,
  Undefined = 5,
  Object = 6,
  Int32 = 7,
  Vec4 = 8,
  Vec44 = 9,
  Int64 = 10,
  Accessor = 11,
  Null = 12,
  Bool = 13,
  Iterator = 14,
  Ref = 15,
  Unset = 0xFFFFFF,
};

inline constexpr uint32_t KIND_MASK = 0xFFFFFF;
// Flag bit on a ptr value that owns its object: the object is destroyed
// through its virtual destructor when the value is released.
inline constexpr uint32_t FLAG_OWNS_POINTER = 8;
class OwnedObject {
 public:
  virtual ~OwnedObject() = default;
};

// The name a kind has in messages ("number", "string", ... "unknown").
const char* kind_name(Kind kind);

// Reference type codes of kind Ref, and their names in text.
inline constexpr uint32_t REF_SPRITE = 0x1000001;
inline constexpr uint32_t REF_SOUND = 0x1000002;
inline constexpr uint32_t REF_INSTANCE = 0x4000001;
const char* ref_type_name(uint32_t type_code);
// A compiled asset constant: top byte the type's low byte, low 24 bits the index.
struct RValue;
RValue asset_constant(uint32_t word);

// Reference-counted UTF-8 text. Owned text lives in the same allocation,
// right behind the header; a negative size marks text the record doesn't own
// (a constant of the program), which is never freed.
struct RefString {
  const char* text;
  int32_t refcount;
  int32_t size;
  // The number the text reads as, once a reading has worked it out: the text
  // never changes, so neither does its number. Constants keep none.
  double number = 0;
  bool number_known = false;
  // The text is the number's own digits (a minus sign, no zeros in front, at
  // most 15 digits): who wrote it so can read the number without the text.
  bool number_is_digits = false;

  uint32_t length() const { return static_cast<uint32_t>(size) & 0x7FFFFFFFu; }
  std::string_view view() const { return text ? std::string_view(text, length()) : std::string_view(); }

  // New owned text, copied, refcount 0 (the holding value takes the first reference).
  static RefString* make(std::string_view text);
  // Room for `capacity` bytes plus the NUL, to be filled through data().
  static RefString* allocate(uint32_t capacity);
  // Sets the final length of an allocated string and gives back unused room.
  static RefString* finish(RefString* s, uint32_t length);
  // As finish, for a string that used all of its room: nothing to give back, no realloc.
  static RefString* finish_in_place(RefString* s, uint32_t length) {
    s->data()[length] = '\0';
    s->size = static_cast<int32_t>(length);
    s->number_known = false;
    s->number_is_digits = false;
    return s;
  }
  // Keeps `n` as the number of the text, unless the text is a constant.
  void remember_number(double n) {
    if (size < 0) return;
    number = n;
    number_known = true;
  }
  char* data() { return reinterpret_cast<char*>(this + 1); }
};

// A constant string of the program: built once, never freed.
struct RefStringConstant {
  RefString record;
  explicit constexpr RefStringConstant(std::string_view text)
      : record{text.data(), 1, static_cast<int32_t>(static_cast<uint32_t>(text.size()) | 0x80000000u)} {}
};

struct RValue {
  union {
    double real;
    int32_t i32;
    int64_t i64;
    void* ptr;
    RefString* str;
    RefArray* arr;
    QvObjectBase* obj;
  };
  uint32_t flags;
  uint32_t kind_word;

  // A fresh value is unset, as locals and temporaries begin.
  RValue() : i64(0), flags(0), kind_word(KIND_MASK) {}
  RValue(const RValue& other) : i64(other.i64), flags(other.flags), kind_word(other.kind_word) {
    // A string's count goes up here; the rare kinds go the long way.
    if (kind() == Kind::String) {
      if (str) ++str->refcount;
    } else {
      take_reference();
    }
  }
  RValue(RValue&& other) noexcept;
  RValue& operator=(const RValue& other);
  RValue& operator=(RValue&& other) noexcept;
  ~RValue() {
    // A string that others hold too only loses a count: the commonest release, kept inline.
    if (kind() == Kind::String && str && str->refcount > 1) {
      --str->refcount;
      return;
    }
    if (kind() != Kind::Number) release();
  }

  static RValue number(double d) { return RValue(Kind::Number, d); }
  static RValue boolean(bool b) { return RValue(Kind::Bool, b ? 1.0 : 0.0); }
  static RValue int32(int32_t v);
  static RValue int64(int64_t v);
  static RValue pointer(void* p);
  // A ptr value that owns `object` and destroys it on release.
  static RValue owned_pointer(OwnedObject* object);
  static RValue undefined();
  static RValue ref(uint32_t type_code, int32_t index);
  static RValue text(std::string_view text);
  static RValue constant(RefStringConstant& c);
  // Makes this value the text `text` standing for `number`, which the text
  // must read back as exactly. A string of the same length that nobody else
  // holds is written over in place, without a new allocation.
  // `digits`: the text is the number's own digits (see RefString::number_is_digits).
  void set_number_text(std::string_view text, double number, bool digits = false);
  // Takes a fresh RefString (refcount 0) made by RefString::make/allocate.
  static RValue adopt(RefString* s);
  // Takes an array body; raises its refcount.
  static RValue array(RefArray* a);

  Kind kind() const { return static_cast<Kind>(kind_word & KIND_MASK); }
  bool is(Kind k) const { return kind() == k; }
  // Strings, arrays and objects need work on copy and release (mask 70 on the low 5 bits).
  bool is_managed() const { return ((1u << (kind_word & 31)) & 70u) != 0; }

  // The text of a string value (empty for a null string); only for kind String.
  std::string_view string_view() const { return str ? str->view() : std::string_view(); }
  const char* c_str() const { return str && str->text ? str->text : ""; }

  // The reference type code and index of a ref value.
  uint32_t ref_type() const { return static_cast<uint32_t>(static_cast<uint64_t>(i64) >> 32); }
  int32_t ref_index() const { return i32; }

  // Releases what the value holds and leaves it the given kind with payload 0.
  void clear(Kind k = Kind::Unset);

 private:
  RValue(Kind k, double d) : real(d), flags(0), kind_word(static_cast<uint32_t>(k)) {}
  void take_reference();
  void release();
};

static_assert(sizeof(RValue) == 16, "an RValue is a 16-byte record");

// The array owner token: every compiled function sets it to its `self` on
// entry and restores the previous one on every exit. Arrays claimed by a
// different owner are copied before they are written (copy on write).
uintptr_t current_array_owner();
class ArrayOwnerScope {
 public:
  explicit ArrayOwnerScope(const void* owner);
  ~ArrayOwnerScope();
  ArrayOwnerScope(const ArrayOwnerScope&) = delete;
  ArrayOwnerScope& operator=(const ArrayOwnerScope&) = delete;

 private:
  uintptr_t previous_;
};
