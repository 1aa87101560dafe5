// Construction, copy, assignment and release of values; the names of kinds
// and reference types.
#include "runtime/Code/RValue.h"

#include <cstdlib>
#include <cstring>
#include <new>

#include "runtime/Code/Array.h"

namespace {
uintptr_t g_array_owner = 0;
}  // namespace

uintptr_t current_array_owner() { return g_array_owner; }

ArrayOwnerScope::ArrayOwnerScope(const void* owner) : previous_(g_array_owner) {
  g_array_owner = reinterpret_cast<uintptr_t>(owner);
}
ArrayOwnerScope::~ArrayOwnerScope() { g_array_owner = previous_; }

const char* kind_name(Kind kind) {
  switch (kind) {
    case Kind::Number: return "number";
    case Kind::String: return "string";
    case Kind::Array: return "array";
    case Kind::Ptr: return "ptr";
    case Kind::Vec3: return "vec3";
    case Kind::Undefined: return "undefined";
    case Kind::Object: return "struct";
    case Kind::Int32: return "int32";
    case Kind::Vec4: return "vec4";
    case Kind::Vec44: return "vec44";
    case Kind::Int64: return "int64";
    case Kind::Accessor: return "accessor";
    case Kind::Null: return "null";
    case Kind::Bool: return "bool";
    case Kind::Iterator: return "iterator";
    case Kind::Ref: return "ref";
    case Kind::Unset: return "unset";
  }
  return "unknown";
}

const char* ref_type_name(uint32_t code) {
  switch (code) {
    case 0x1000000: return "object";
    case 0x1000001: return "sprite";
    case 0x1000002: return "sound";
    case 0x1000003: return "room";
    case 0x1000004: return "background";
    case 0x1000005: return "path";
    case 0x1000006: return "script";
    case 0x1000007: return "font";
    case 0x1000008: return "timeline";
    case 0x1000009: return "tiles";
    case 0x100000A: return "shader";
    case 0x100000B: return "sequence";
    case 0x100000C: return "animcurve";
    case 0x100000D: return "particle system resource";
    case 0x2000001: return "ds_list";
    case 0x2000002: return "ds_map";
    case 0x2000004: return "ds_grid";
    case 0x2000008: return "ds_queue";
    case 0x2000010: return "ds_stack";
    case 0x2000020: return "ds_priority";
    case 0x4000001: return "instance";
    case 0x4000002: return "dbgref";
    case 0x4000004: return "particle system instance";
    case 0x4000008: return "particle emitter";
    case 0x4000010: return "particle type";
  }
  return "unknown";
}

RValue asset_constant(uint32_t word) {
  return RValue::ref(0x1000000u + (word >> 24), static_cast<int32_t>(word & 0xFFFFFF));
}

// ---------------------------------------------------------------------------
// RefString

RefString* RefString::allocate(uint32_t capacity) {
  void* block = std::malloc(sizeof(RefString) + capacity + 1);
  if (!block) throw std::bad_alloc();
  auto* s = static_cast<RefString*>(block);
  s->text = s->data();
  s->refcount = 0;
  s->size = 0;
  s->number_known = false;
  s->number_is_digits = false;
  s->data()[0] = '\0';
  return s;
}

RefString* RefString::finish(RefString* s, uint32_t length) {
  finish_in_place(s, length);
  void* block = std::realloc(s, sizeof(RefString) + length + 1);
  if (block) {
    s = static_cast<RefString*>(block);
    s->text = s->data();
  }
  return s;
}

RefString* RefString::make(std::string_view text) {
  RefString* s = allocate(static_cast<uint32_t>(text.size()));
  if (!text.empty()) std::memcpy(s->data(), text.data(), text.size());
  s->data()[text.size()] = '\0';
  s->size = static_cast<int32_t>(text.size());
  return s;
}

// ---------------------------------------------------------------------------
// RValue

RValue RValue::int32(int32_t v) {
  RValue r;
  r.i64 = 0;
  r.i32 = v;
  r.kind_word = static_cast<uint32_t>(Kind::Int32);
  return r;
}

RValue RValue::int64(int64_t v) {
  RValue r;
  r.i64 = v;
  r.kind_word = static_cast<uint32_t>(Kind::Int64);
  return r;
}

RValue RValue::pointer(void* p) {
  RValue r;
  r.ptr = p;
  r.kind_word = static_cast<uint32_t>(Kind::Ptr);
  return r;
}

RValue RValue::owned_pointer(OwnedObject* object) {
  RValue r = pointer(object);
  r.flags |= FLAG_OWNS_POINTER;
  return r;
}

RValue RValue::undefined() {
  RValue r;
  r.kind_word = static_cast<uint32_t>(Kind::Undefined);
  return r;
}

RValue RValue::ref(uint32_t type_code, int32_t index) {
  RValue r;
  r.i64 = static_cast<int64_t>((static_cast<uint64_t>(type_code) << 32) | static_cast<uint32_t>(index));
  r.kind_word = static_cast<uint32_t>(Kind::Ref);
  return r;
}

RValue RValue::text(std::string_view text) { return adopt(RefString::make(text)); }

void RValue::set_number_text(std::string_view text, double number, bool digits) {
  if (!(is(Kind::String) && str && str->refcount == 1 && str->size == static_cast<int32_t>(text.size()))) {
    *this = RValue::text(text);
  } else {
    std::memcpy(str->data(), text.data(), text.size());
  }
  str->remember_number(number);
  str->number_is_digits = digits;
}

RValue RValue::constant(RefStringConstant& c) {
  RValue r;
  r.str = &c.record;
  r.kind_word = static_cast<uint32_t>(Kind::String);
  r.take_reference();
  return r;
}

RValue RValue::adopt(RefString* s) {
  RValue r;
  r.str = s;
  r.kind_word = static_cast<uint32_t>(Kind::String);
  r.take_reference();
  return r;
}

RValue RValue::array(RefArray* a) {
  RValue r;
  r.arr = a;
  r.kind_word = static_cast<uint32_t>(Kind::Array);
  r.take_reference();
  return r;
}

RValue::RValue(RValue&& other) noexcept : i64(other.i64), flags(other.flags), kind_word(other.kind_word) {
  // A move is a copy followed by the release of the source: the counts stay,
  // but an unclaimed array is claimed by the current owner as both would do.
  if (kind() == Kind::Array && arr && arr->owner == 0) arr->owner = current_array_owner();
  other.i64 = 0;
  other.kind_word = static_cast<uint32_t>(Kind::Unset);
}

RValue& RValue::operator=(const RValue& other) {
  if (this == &other) return *this;
  // The source may live inside what the target holds (an element of the
  // target's array): read it and raise its array's count before the target
  // is released, so that the release can't free it.
  const int64_t payload = other.i64;
  const uint32_t other_flags = other.flags;
  const uint32_t other_kind = other.kind_word;
  RefArray* const source_array = other.kind() == Kind::Array ? other.arr : nullptr;
  if (source_array) ++source_array->refcount;
  release();
  i64 = payload;
  flags = other_flags;
  kind_word = other_kind;
  take_reference();
  if (source_array) --source_array->refcount;
  return *this;
}

RValue& RValue::operator=(RValue&& other) noexcept {
  if (this == &other) return *this;
  // Take the source out first: it may live inside what the target holds.
  const int64_t payload = other.i64;
  const uint32_t other_flags = other.flags;
  const uint32_t other_kind = other.kind_word;
  other.i64 = 0;
  other.kind_word = static_cast<uint32_t>(Kind::Unset);
  release();
  i64 = payload;
  flags = other_flags;
  kind_word = other_kind;
  if (kind() == Kind::Array && arr && arr->owner == 0) arr->owner = current_array_owner();
  return *this;
}

void RValue::clear(Kind k) {
  release();
  i64 = 0;
  flags = 0;
  kind_word = static_cast<uint32_t>(k);
}

void RValue::take_reference() {
  switch (kind()) {
    case Kind::String:
      if (str) ++str->refcount;
      break;
    case Kind::Array:
      if (arr) {
        ++arr->refcount;
        if (arr->owner == 0) arr->owner = current_array_owner();
      }
      break;
    default:
      break;
  }
}

// Values belong to the main thread: the interpreter, the operators and the
// frame loop all run there, and other threads receive copied text or
// numbers. So the counts need no lock.
void RValue::release() {
  switch (kind()) {
    case Kind::String:
      if (str && --str->refcount <= 0 && str->size >= 0) std::free(str);
      str = nullptr;
      break;
    case Kind::Array:
      if (arr) {
        if (--arr->refcount <= 0) {
          RefArray::destroy(arr);
        } else if (arr->owner == 0) {
          arr->owner = current_array_owner();
        }
      }
      arr = nullptr;
      break;
    case Kind::Ptr:
      if ((flags & FLAG_OWNS_POINTER) && ptr) {
        delete static_cast<OwnedObject*>(ptr);
      }
      break;
    default:
      break;
  }
}
