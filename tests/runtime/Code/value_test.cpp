#include <gtest/gtest.h>

#include "runtime/Code/Array.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Code/RValue.h"

TEST(Value, FreshValueIsUnsetAndZeroedRecordIsNumberZero) {
  RValue fresh;
  EXPECT_EQ(fresh.kind(), Kind::Unset);
  RValue arr = array_create(3);
  const RValue& gap = arr.arr->elements[1];
  EXPECT_EQ(gap.kind(), Kind::Number);
  EXPECT_EQ(gap.real, 0.0);
}

TEST(Value, ConstructorsGiveTheirKinds) {
  EXPECT_EQ(RValue::number(2.5).kind(), Kind::Number);
  EXPECT_EQ(RValue::boolean(true).kind(), Kind::Bool);
  EXPECT_EQ(RValue::boolean(true).real, 1.0);
  EXPECT_EQ(RValue::int64(1LL << 40).i64, 1LL << 40);
  EXPECT_EQ(RValue::int32(-7).i32, -7);
  EXPECT_EQ(RValue::undefined().kind(), Kind::Undefined);
  EXPECT_EQ(RValue::undefined().i64, 0);
  EXPECT_EQ(RValue::text("ciao").string_view(), "ciao");
  RValue r = RValue::ref(REF_SOUND, 3);
  EXPECT_EQ(r.ref_type(), REF_SOUND);
  EXPECT_EQ(r.ref_index(), 3);
}

TEST(Value, ManagedKindsAreStringArrayAndObjectOnly) {
  EXPECT_TRUE(RValue::text("x").is_managed());
  EXPECT_TRUE(array_create(1).is_managed());
  EXPECT_FALSE(RValue::number(1).is_managed());
  EXPECT_FALSE(RValue::ref(REF_SPRITE, 1).is_managed());
  EXPECT_FALSE(RValue().is_managed());
}

TEST(Value, StringsAreSharedByCountAndReleased) {
  RValue a = RValue::text("condiviso");
  EXPECT_EQ(a.str->refcount, 1);
  {
    RValue b = a;
    EXPECT_EQ(b.str, a.str);
    EXPECT_EQ(a.str->refcount, 2);
    RValue c;
    c = b;
    EXPECT_EQ(a.str->refcount, 3);
  }
  EXPECT_EQ(a.str->refcount, 1);
  a = a;  // self-assignment changes nothing
  EXPECT_EQ(a.str->refcount, 1);
  EXPECT_EQ(a.string_view(), "condiviso");
  a = RValue::number(1);
  EXPECT_EQ(a.kind(), Kind::Number);
}

TEST(Value, ConstantStringsAreNeverFreed) {
  static RefStringConstant hello("ciao");
  {
    RValue a = RValue::constant(hello);
    RValue b = a;
    EXPECT_EQ(b.string_view(), "ciao");
    EXPECT_LT(hello.record.size, 0);
  }
  EXPECT_EQ(hello.record.refcount, 1);
  EXPECT_EQ(hello.record.length(), 4u);
}

TEST(Value, AssigningAnElementToItsOnlyArraysHolderKeepsTheElement) {
  RValue outer = array_create(1);
  *array_slot(outer, 0) = array_create(2, RValue::text("x"));
  // `outer` is the only holder of the outer array, and the outer array the
  // only holder of the inner one.
  outer = outer.arr->elements[0];
  ASSERT_TRUE(outer.is(Kind::Array));
  EXPECT_EQ(outer.arr->length, 2);
  EXPECT_EQ(outer.arr->refcount, 1);
  EXPECT_EQ(outer.arr->elements[1].string_view(), "x");
}

namespace {
struct Counted : OwnedObject {
  explicit Counted(int& deaths) : deaths_(deaths) {}
  ~Counted() override { ++deaths_; }
  int& deaths_;
};
}  // namespace

TEST(Value, OwnedPointerIsDestroyedOnRelease) {
  int deaths = 0;
  {
    RValue p = RValue::owned_pointer(new Counted(deaths));
    EXPECT_EQ(p.kind(), Kind::Ptr);
    EXPECT_NE(p.flags & FLAG_OWNS_POINTER, 0u);
  }
  EXPECT_EQ(deaths, 1);
  { RValue plain = RValue::pointer(&deaths); }
  EXPECT_EQ(deaths, 1);
}

TEST(Value, KindAndReferenceNames) {
  EXPECT_STREQ(kind_name(Kind::Object), "struct");
  EXPECT_STREQ(kind_name(Kind::Vec44), "vec44");
  EXPECT_STREQ(kind_name(static_cast<Kind>(99)), "unknown");
  EXPECT_STREQ(ref_type_name(0x2000020), "ds_priority");
  EXPECT_STREQ(ref_type_name(0x4000010), "particle type");
  EXPECT_STREQ(ref_type_name(0x3000000), "unknown");
  // Sprite 7 as a compiled constant: type byte 1 in the top byte.
  RValue sprite = asset_constant((1u << 24) | 7u);
  EXPECT_EQ(sprite.ref_type(), REF_SPRITE);
  EXPECT_EQ(sprite.ref_index(), 7);
  EXPECT_EQ(value_to_text(sprite), "ref sprite 7");
}
