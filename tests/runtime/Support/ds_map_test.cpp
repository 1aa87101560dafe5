#include "runtime/Support/DsMap.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "runtime/Code/Builtins.h"
#include "support/Fatal.h"

namespace {

RValue call(const char* name, std::vector<RValue> args) {
  register_runtime_builtins();
  RValue result;
  EXPECT_TRUE(builtin_call(name, result, nullptr, nullptr, static_cast<int>(args.size()), args.data())) << name;
  return result;
}

RValue text(const char* t) { return RValue::text(t); }
RValue number(double d) { return RValue::number(d); }

}  // namespace

TEST(DsMap, KeysAreNumbersOrTextsAndMissingKeysReadUndefined) {
  const RValue map = call("ds_map_create", {});
  ASSERT_TRUE(map.is(Kind::Ref));
  EXPECT_EQ(map.ref_type(), REF_DS_MAP);

  EXPECT_TRUE(call("ds_map_add", {map, text("id"), number(7)}).real);
  EXPECT_TRUE(call("ds_map_add", {map, number(1), text("uno")}).real);
  // The text "1" is another key than the number 1; an existing key stays.
  EXPECT_TRUE(call("ds_map_add", {map, text("1"), text("testo")}).real);
  const RValue refused = call("ds_map_add", {map, text("id"), number(8)});
  EXPECT_TRUE(refused.is(Kind::Bool));
  EXPECT_EQ(refused.real, 0.0);

  EXPECT_EQ(call("ds_map_size", {map}).real, 3);
  EXPECT_EQ(call("ds_map_find_value", {map, text("id")}).real, 7);
  EXPECT_EQ(call("ds_map_find_value", {map, number(1)}).string_view(), "uno");
  EXPECT_EQ(call("ds_map_find_value", {map, text("1")}).string_view(), "testo");
  // Number keys within 1e-08 are one key; farther ones are not.
  EXPECT_EQ(call("ds_map_find_value", {map, number(1 + 1e-9)}).string_view(), "uno");
  EXPECT_TRUE(call("ds_map_find_value", {map, number(1 + 1e-6)}).is(Kind::Undefined));
  EXPECT_TRUE(call("ds_map_find_value", {map, text("assente")}).is(Kind::Undefined));

  const RValue exists = call("ds_map_exists", {map, text("id")});
  EXPECT_TRUE(exists.is(Kind::Bool));
  EXPECT_EQ(exists.real, 1.0);
  EXPECT_EQ(call("ds_map_exists", {map, text("ID")}).real, 0.0);
  call("ds_map_destroy", {map});
}

TEST(DsMap, DestroyedSlotIsTakenByTheNextMapAndRefusedMeanwhile) {
  const RValue first = ds_map_create();
  const RValue second = ds_map_create();
  EXPECT_EQ(second.ref_index(), first.ref_index() + 1);
  ds_map_destroy(first);
  EXPECT_FATAL(call("ds_map_find_value", {first, text("x")}), "ds_map_find_value argument 1 invalid reference to (ds_map)");
  EXPECT_FATAL(call("ds_map_size", {number(100000)}), "ds_map_size argument 1 invalid reference to (ds_map)");
  EXPECT_FATAL(call("ds_map_size", {RValue::ref(REF_SPRITE, first.ref_index())}),
               "ds_map_size argument 1 incorrect type (ref) expecting a ds_map");
  const RValue again = ds_map_create();
  EXPECT_EQ(again.ref_index(), first.ref_index());
  // A map made in a reused slot starts empty; a plain number names it too.
  EXPECT_EQ(call("ds_map_size", {number(again.ref_index())}).real, 0);
  ds_map_destroy(again);
  ds_map_destroy(second);
}

TEST(DsMap, KeyOfAnotherKindIsFatalAndWorkersMeetNoFatal) {
  const RValue map = ds_map_create();
  EXPECT_FATAL(call("ds_map_add", {map, RValue::undefined(), number(1)}), "Illegal key type for ds_map");
  EXPECT_FATAL(call("ds_map_find_value", {map, RValue::pointer(nullptr)}), "Illegal key type for ds_map");

  EXPECT_TRUE(ds_map_add_from_worker(map.ref_index(), "status", RValue::number(1)));
  EXPECT_FALSE(ds_map_add_from_worker(map.ref_index(), "status", RValue::number(2)));
  EXPECT_FALSE(ds_map_add_from_worker(-1, "status", RValue::number(1)));
  EXPECT_FALSE(ds_map_add_from_worker(map.ref_index() + 1000, "status", RValue::number(1)));
  EXPECT_EQ(ds_map_find_value(map, text("status")).real, 1);
  ds_map_destroy(map);
  EXPECT_FALSE(ds_map_add_from_worker(map.ref_index(), "status", RValue::number(1)));
}
