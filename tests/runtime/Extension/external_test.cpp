#include "runtime/Extension/External.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Code/Error.h"
#include "runtime/Support/AsyncQueue.h"
#include "runtime/Support/DsMap.h"
#include "support/DebugLines.h"
#include "support/Fatal.h"
#include "support/TempFolder.h"
#include "support/CallBuiltin.h"

namespace {

const std::string LIBRARY = VELANT_TESTLIB_PATH;
RValue text(const char* t) { return RValue::text(t); }
RValue num(double d) { return RValue::number(d); }

// The external_define arguments for velant_test_<function> of the tests' library, default
// call kind; `announced` stands for the count of argument types where it differs.
std::vector<RValue> definition(const char* function, int result_type, std::vector<int> types, int announced = -1) {
  std::vector<RValue> args{text(LIBRARY.c_str()), RValue::text("velant_test_" + std::string(function)), num(0),
                           num(result_type), num(announced < 0 ? double(types.size()) : announced)};
  for (int t : types) args.push_back(num(t));
  return args;
}

// The row index external_define gives.
double define(const char* function, int result_type, std::vector<int> types) {
  return call_builtin("external_define", definition(function, result_type, std::move(types))).real;
}

// external_call by name: the row index, then the arguments.
RValue call_row(double index, std::vector<RValue> args) {
  args.insert(args.begin(), num(index));
  return call_builtin("external_call", std::move(args));
}

class External : public ::testing::Test {
 protected:
  void SetUp() override {
    register_runtime_builtins();
    external_free();
    async_events_take();
  }
  void TearDown() override { external_free(); }
};

}  // namespace

TEST_F(External, DefineRefusesWrongArgumentListsWithItsOwnWords) {
  const char* wrong_count = "Wrong number of arguments to external_define()";
  const struct { std::vector<RValue> args; const char* fatal; } rows[] = {
      {{text(LIBRARY.c_str()), text("velant_test_add"), num(0), num(0)}, wrong_count},
      {definition("add", 0, {0}, 2), wrong_count},  // two types announced, one given
      {definition("sum16", 0, std::vector<int>(17, 0)), "DLL functions can have at most 16 arguments"},
      {definition("sum16", 0, {0, 0, 0, 0, 1}),
       "DLL functions with more than 4 arguments cannot have string arguments"},
  };
  for (const auto& row : rows) EXPECT_FATAL(call_builtin("external_define", row.args), row.fatal);
}

TEST_F(External, EverySignatureGetsItsArgumentsInPlaceAndItsResultBack) {
  double value = 12.75;
  const RValue pointer = RValue::pointer(&value);
  std::vector<RValue> sixteen;
  for (int i = 1; i <= 16; ++i) sixteen.push_back(num(i));
  // Numbers of every kind arrive as doubles; a kind that isn't a number,
  // string or pointer goes as 0. Texts mix with numbers in up to four places.
  const struct { const char* function; int result_type; std::vector<int> types; std::vector<RValue> args;
                 const char* answer; } rows[] = {
      {"answer", 0, {}, {}, "number:42"}, {"greet", 1, {1}, {text("mondo")}, "string:ciao mondo"},
      {"add", 0, {0, 0}, {num(2.5), num(4)}, "number:6.50"}, {"read_double", 0, {1}, {pointer}, "number:12.75"},
      {"add", 0, {0, 0}, {RValue::undefined(), num(2)}, "number:2"},
      {"add", 0, {0, 0}, {RValue::int32(3), RValue::boolean(true)}, "number:4"},
      {"add", 0, {0, 0}, {RValue::int64(5), RValue::ref(REF_DS_MAP, 7)}, "number:12"},
      {"sum16", 0, std::vector<int>(16, 0), sixteen, "number:1496"},  // the sum of i * i
      {"join_sdsd", 1, {1, 0, 1, 0}, {text("uno"), num(1.5), text("tre"), num(-4)}, "string:uno|1.5|tre|-4"},
      {"join_dssd", 1, {0, 1, 1, 0}, {num(7), text("b"), text("c"), num(0.25)}, "string:7|b|c|0.25"},
      {"weigh_ddds", 0, {0, 0, 0, 1}, {num(1), num(2), num(3), text("four")}, "number:4321"},
      // The argument count times 1000 plus the numbers: called as a built-in.
      {"native", 0, {0, 0}, {num(1.5), num(2)}, "number:2003.50"},
  };
  std::vector<RValue> results;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.function);
    results.push_back(call_row(define(row.function, row.result_type, row.types), row.args));
    EXPECT_EQ(shown(results.back()), row.answer);
  }
  // Texts are copies of their own: the library's buffer has changed since.
  for (size_t i = 0; i < results.size(); ++i) EXPECT_EQ(shown(results[i]), rows[i].answer) << rows[i].function;
  // Found by its built-in signature, a routine gets the caller's self too (100 more).
  int instance = 0;
  RValue two[] = {num(1), num(2)};
  const int native = int(define("native", 0, {0, 0}));
  EXPECT_EQ(shown(external_call(native, 2, two, reinterpret_cast<CInstance*>(&instance))), "number:2103");
}

TEST_F(External, LibraryThatDoesNotLoadIsFatalAfterADebugLineWithTheReason) {
  // The start of a 32-bit ELF file for the 386 (machine 3): it opens, but can't be loaded (ENOEXEC).
  const char elf[64] = {0x7F, 'E', 'L', 'F', 1, 1, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 3, 0, 3, 0};
  TempFolder folder;
  const struct { std::string path; int code; const char* tail; } rows[] = {
      {"/nonexistent/velant_missing.so", 2, "No such file or directory\")\n"},
#if defined(__x86_64__)
      {folder.write("other_machine.so", std::string(elf, sizeof elf)), 8, "\") Machine type 3, game is type 62\n"},
#endif
  };
  for (const auto& row : rows) {
    const std::string line = debug_lines(
        [&] { EXPECT_FATAL(external_define(row.path, "f", 0, {}), "Error defining an external function."); });
    const std::string head = "LoadLibraryW(\"" + row.path + "\") for function \"f\" failed with error code ";
    EXPECT_EQ(line.rfind(head + std::to_string(row.code) + " (\"", 0), 0u) << line;
    EXPECT_TRUE(line.ends_with(row.tail)) << line;
  }
}

TEST_F(External, LibraryIsFoundBesideTheExecutableAndAMissingFunctionGivesMinusOne) {
  EXPECT_EQ(debug_lines([] { EXPECT_EQ(define("nothing", 0, {0, 1}), -1); }),
            "Could not find function \"velant_test_nothing\" in \"" + LIBRARY +
                "\" with argument types [number, string].\n");
  // The tests and the library are built into the same folder.
  const int index = external_define(LIBRARY.substr(LIBRARY.rfind('/') + 1), "velant_test_answer", 0, {});
  ASSERT_GE(index, 0);
  EXPECT_EQ(external_row(index)->library, LIBRARY);
}

TEST_F(External, CallsThatCannotHappenGiveMinusOneOrZero) {
  EXPECT_EQ(shown(call_row(-1, {})), "number:-1");
  EXPECT_EQ(shown(call_row(99, {})), "number:0");
  // A freed library leaves its rows without routine until they are defined again.
  const double add = define("add", 0, {0, 0});
  call_builtin("external_free", {text(LIBRARY.c_str())});
  EXPECT_EQ(shown(call_row(add, {num(1), num(2)})), "number:0");
  EXPECT_EQ(define("add", 0, {0, 0}), add);
  EXPECT_EQ(shown(call_row(add, {num(1), num(2)})), "number:3");

  // Defining again reuses the row with the new types: the old count no longer fits.
  EXPECT_NE(define("answer", 0, {}), add);
  EXPECT_EQ(define("add", 1, {0}), add);
  EXPECT_EQ(external_row(int(add))->result_type, 1);
  EXPECT_EQ(shown(call_row(add, {num(1), num(2)})), "number:0");
}

TEST_F(External, RegisterCallbacksLetsTheLibraryQueueAsyncEvents) {
  ASSERT_GE(define("RegisterCallbacks", 0, {1, 1, 1, 1}), 0);
  const double report = define("report", 0, {0, 0, 1});
  const std::string map = shown(call_row(report, {num(70), num(2.5), text("fatto")}));
  const std::vector<AsyncEvent> events = async_events_take();
  ASSERT_EQ(events.size(), 1u);
  EXPECT_EQ(map, "number:" + std::to_string(events[0].map_id));
  EXPECT_EQ(events[0].other_subtype, 70);
  const RValue handle = RValue::ref(REF_DS_MAP, events[0].map_id);
  EXPECT_EQ(ds_map_size(handle), 3);
  EXPECT_EQ(shown(ds_map_find_value(handle, text("value"))), "number:2.50");
  EXPECT_EQ(shown(ds_map_find_value(handle, text("text"))), "string:fatto");
  ds_map_destroy(handle);
  // One argument short: no call, so nothing is reported.
  EXPECT_EQ(shown(call_row(report, {num(70), num(1)})), "number:0");
  EXPECT_TRUE(async_events_take().empty());
}
