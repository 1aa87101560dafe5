#include "runtime/Support/DsMap.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Conversions.h"
#include "support/Fatal.h"

namespace {

RValue text(const char* t) { return RValue::text(t); }
RValue num(double d) { return RValue::number(d); }

// Calls a built-in by name; the answer is the kind and text form of its result.
std::string call(const char* name, std::vector<RValue> args) {
  RValue result;
  EXPECT_TRUE(builtin_call(name, result, nullptr, nullptr, static_cast<int>(args.size()), args.data())) << name;
  return kind_name(result.kind()) + (":" + value_to_text(result));
}

}  // namespace

TEST(DsMap, KeysAreNumbersOrTextsSlotsAreReusedAndWorkersMeetNoFatal) {
  register_runtime_builtins();
  RValue map;
  ASSERT_TRUE(builtin_call("ds_map_create", map, nullptr, nullptr, 0, nullptr));
  EXPECT_EQ(value_to_text(map), "ref ds_map " + std::to_string(map.ref_index()));
  const RValue next = ds_map_create();
  EXPECT_EQ(next.ref_index(), map.ref_index() + 1);
  const struct { const char* name; std::vector<RValue> args; const char* answer; } rows[] = {
      {"ds_map_add", {map, text("id"), num(7)}, "bool:1"}, {"ds_map_add", {map, num(1), text("uno")}, "bool:1"},
      // The text "1" is another key than the number 1; an existing key stays.
      {"ds_map_add", {map, text("1"), text("testo")}, "bool:1"}, {"ds_map_add", {map, text("id"), num(8)}, "bool:0"},
      {"ds_map_size", {map}, "number:3"}, {"ds_map_find_value", {map, text("id")}, "number:7"},
      {"ds_map_find_value", {map, num(1)}, "string:uno"}, {"ds_map_find_value", {map, text("1")}, "string:testo"},
      // Number keys within 1e-08 are one key; farther ones are not.
      {"ds_map_find_value", {map, num(1 + 1e-9)}, "string:uno"},
      {"ds_map_find_value", {map, num(1 + 1e-6)}, "undefined:undefined"},
      {"ds_map_find_value", {map, text("assente")}, "undefined:undefined"},
      {"ds_map_exists", {map, text("id")}, "bool:1"}, {"ds_map_exists", {map, text("ID")}, "bool:0"},
      {"ds_map_destroy", {map}, "undefined:undefined"},
  };
  for (const auto& row : rows) EXPECT_EQ(call(row.name, row.args), row.answer) << row.name;

  EXPECT_FATAL(call("ds_map_add", {next, RValue::pointer(nullptr), num(1)}), "Illegal key type for ds_map");
  EXPECT_FATAL(call("ds_map_size", {map}), "ds_map_size argument 1 invalid reference to (ds_map)");
  EXPECT_FATAL(call("ds_map_size", {num(100000)}), "ds_map_size argument 1 invalid reference to (ds_map)");
  EXPECT_FATAL(call("ds_map_size", {RValue::ref(REF_SPRITE, 0)}),
               "ds_map_size argument 1 incorrect type (ref) expecting a ds_map");
  // The lowest free slot is taken again, by an empty map that a plain number names too.
  const RValue again = ds_map_create();
  EXPECT_EQ(again.ref_index(), map.ref_index());
  EXPECT_EQ(call("ds_map_size", {num(again.ref_index())}), "number:0");
  ds_map_destroy(again);

  // Workers and library callbacks add only new text keys to live maps, and never meet a fatal report.
  EXPECT_TRUE(ds_map_add_from_worker(next.ref_index(), "status", num(1)));
  EXPECT_FALSE(ds_map_add_from_worker(next.ref_index(), "status", num(2)));
  EXPECT_FALSE(ds_map_add_from_worker(-1, "status", num(1)));
  EXPECT_FALSE(ds_map_add_from_worker(next.ref_index() + 1000, "status", num(1)));
  EXPECT_EQ(call("ds_map_find_value", {next, text("status")}), "number:1");
  ds_map_destroy(next);
  EXPECT_FALSE(ds_map_add_from_worker(next.ref_index(), "status", num(1)));
}
