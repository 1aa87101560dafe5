#include "runtime/Support/DsMap.h"
#include "runtime/Support/DsPriority.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Conversions.h"
#include "support/CallBuiltin.h"
#include "support/Fatal.h"

namespace {

RValue text(const char* t) { return RValue::text(t); }
RValue num(double d) { return RValue::number(d); }

// The size built-in of the kind that `create` makes ("ds_grid_width" for grids).
const char* step_name_of(const char* create) {
  const std::string kind = create;
  if (kind == "ds_grid_create") return "ds_grid_width";
  return kind == "ds_list_create" ? "ds_list_size" : "ds_priority_size";
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
  for (const auto& row : rows) EXPECT_EQ(call_shown(row.name, row.args), row.answer) << row.name;

  EXPECT_FATAL(call_shown("ds_map_add", {next, RValue::pointer(nullptr), num(1)}), "Illegal key type for ds_map");
  EXPECT_FATAL(call_shown("ds_map_size", {map}), "ds_map_size argument 1 invalid reference to (ds_map)");
  EXPECT_FATAL(call_shown("ds_map_size", {num(100000)}), "ds_map_size argument 1 invalid reference to (ds_map)");
  EXPECT_FATAL(call_shown("ds_map_size", {RValue::ref(REF_SPRITE, 0)}),
               "ds_map_size argument 1 incorrect type (ref) expecting a ds_map");
  // The lowest free slot is taken again, by an empty map that a plain number names too.
  const RValue again = ds_map_create();
  EXPECT_EQ(again.ref_index(), map.ref_index());
  EXPECT_EQ(call_shown("ds_map_size", {num(again.ref_index())}), "number:0");
  ds_map_destroy(again);

  // Workers and library callbacks add only new text keys to live maps, and never meet a fatal report.
  EXPECT_TRUE(ds_map_add_from_worker(next.ref_index(), "status", num(1)));
  EXPECT_FALSE(ds_map_add_from_worker(next.ref_index(), "status", num(2)));
  EXPECT_FALSE(ds_map_add_from_worker(-1, "status", num(1)));
  EXPECT_FALSE(ds_map_add_from_worker(next.ref_index() + 1000, "status", num(1)));
  EXPECT_EQ(call_shown("ds_map_find_value", {next, text("status")}), "number:1");
  ds_map_destroy(next);
  EXPECT_FALSE(ds_map_add_from_worker(next.ref_index(), "status", num(1)));
}

// Each row: a built-in called by name on the structure made at the start of
// its test, with the kind and text form of its answer ("*" for any answer).
namespace {

struct Step {
  const char* name;
  std::vector<RValue> args;
  const char* answer;
};

void play(const char* create, std::vector<RValue> create_args, const std::vector<Step>& steps) {
  register_runtime_builtins();
  RValue made;
  ASSERT_TRUE(builtin_call(create, made, nullptr, nullptr, static_cast<int>(create_args.size()), create_args.data()));
  for (const Step& step : steps) {
    std::vector<RValue> args = {made};
    args.insert(args.end(), step.args.begin(), step.args.end());
    const std::string answer = call_shown(step.name, args);
    EXPECT_TRUE(std::string(step.answer) == "*" || answer == step.answer) << step.name << " gave " << answer;
  }
  call_builtin(std::string(create).substr(0, std::string(create).rfind('_')) + "_destroy", {made});
  EXPECT_FATAL(call_shown(step_name_of(create), {made}), std::string(step_name_of(create)) + " argument 1 invalid reference to (" +
                                                       std::string(ref_type_name(made.ref_type())) + ")");
}

}  // namespace

TEST(DsPriority, TheHighestPriorityFirstOfEqualOnesAndDeleteSwapsInTheLast) {
  play("ds_priority_create", {},
       {{"ds_priority_find_max", {}, "undefined:undefined"},
        {"ds_priority_delete_max", {}, "number:0"},
        {"ds_priority_add", {text("a"), num(1)}, "*"},
        {"ds_priority_add", {text("b"), num(2)}, "*"},
        {"ds_priority_add", {text("c"), num(2.000000001)}, "*"},  // equal to 2 within 1e-08
        {"ds_priority_find_max", {}, "string:b"},
        {"ds_priority_delete_max", {}, "string:b"},
        {"ds_priority_find_max", {}, "string:c"},
        {"ds_priority_find_priority", {text("a")}, "number:1"},
        {"ds_priority_find_priority", {text("z")}, "undefined:undefined"},
        {"ds_priority_size", {}, "number:2"},
        {"ds_priority_empty", {}, "number:0"},
        {"ds_priority_clear", {}, "*"},
        {"ds_priority_empty", {}, "number:1"}});
  // The slot of a destroyed queue is the next one's.
  const RValue first = ds_priority_create();
  ds_priority_destroy(first);
  EXPECT_EQ(ds_priority_create().ref_index(), first.ref_index());
}

TEST(DsList, IndicesOutOfRangeChangeNothing) {
  play("ds_list_create", {},
       {{"ds_list_add", {num(10), num(20)}, "*"},
        {"ds_list_insert", {num(0), text("primo")}, "*"},
        {"ds_list_insert", {num(3), num(30)}, "*"},
        {"ds_list_insert", {num(9), num(99)}, "*"},
        {"ds_list_delete", {num(-1)}, "*"},
        {"ds_list_delete", {num(4)}, "*"},
        {"ds_list_size", {}, "number:4"},
        {"ds_list_find_index", {num(20.000000001)}, "number:2"},
        {"ds_list_find_index", {num(7)}, "number:-1"},
        {"ds_list_replace", {num(1), num(11)}, "*"},
        {"ds_list_delete", {num(2)}, "*"},
        {"ds_list_find_value", {num(1)}, "number:11"},
        {"ds_list_find_value", {num(2)}, "number:30"},
        {"ds_list_find_value", {num(3)}, "undefined:undefined"},
        {"ds_list_clear", {}, "*"},
        {"ds_list_size", {}, "number:0"}});
}

TEST(DsGrid, CellsStartAtZeroAndCellsOutsideReadUndefined) {
  play("ds_grid_create", {num(3), num(2)},
       {{"ds_grid_width", {}, "number:3"},
        {"ds_grid_height", {}, "number:2"},
        {"ds_grid_get", {num(2), num(1)}, "number:0"},
        {"ds_grid_set", {num(2), num(1), text("x")}, "*"},
        {"ds_grid_set", {num(3), num(0), text("fuori")}, "*"},
        {"ds_grid_get", {num(2), num(1)}, "string:x"},
        {"ds_grid_get", {num(0), num(2)}, "undefined:undefined"}});
}
