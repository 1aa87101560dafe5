#include "runtime/Extension/External.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Error.h"
#include "runtime/Support/AsyncQueue.h"
#include "runtime/Support/DsMap.h"
#include "support/Fatal.h"

namespace {

const std::string LIBRARY = VELANT_TESTLIB_PATH;

// Calls a built-in by name and hands back its result.
RValue call(const char* name, std::vector<RValue> args) {
  RValue result;
  EXPECT_TRUE(builtin_call(name, result, nullptr, nullptr, static_cast<int>(args.size()), args.data())) << name;
  return result;
}

RValue text(const char* t) { return RValue::text(t); }
RValue number(double d) { return RValue::number(d); }

// external_define by name with the library of the tests, the default call
// kind, and the argument types given.
RValue define(const char* function, int result_type, std::vector<int> types) {
  std::vector<RValue> args{text(LIBRARY.c_str()), text(function), number(0), number(result_type),
                           number(static_cast<double>(types.size()))};
  for (int t : types) args.push_back(number(t));
  return call("external_define", std::move(args));
}

// external_call by name: the row index, then the arguments.
RValue call_row(const RValue& index, std::vector<RValue> args) {
  args.insert(args.begin(), index);
  return call("external_call", std::move(args));
}

double number_of(const RValue& v) {
  EXPECT_TRUE(v.is(Kind::Number)) << "kind " << kind_name(v.kind());
  return v.real;
}

std::string text_of(const RValue& v) {
  EXPECT_TRUE(v.is(Kind::String)) << "kind " << kind_name(v.kind());
  return std::string(v.string_view());
}

// What the debug stream receives while the capture lives.
class DebugCapture {
 public:
  DebugCapture() : file_(std::tmpfile()) { set_debug_output_file(file_); }
  ~DebugCapture() {
    set_debug_output_file(nullptr);
    std::fclose(file_);
  }
  std::string text() const {
    std::fflush(file_);
    std::rewind(file_);
    std::string all;
    for (int c; (c = std::fgetc(file_)) != EOF;) all.push_back(static_cast<char>(c));
    return all;
  }

 private:
  std::FILE* file_;
};

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
  EXPECT_FATAL(call("external_define", {text(LIBRARY.c_str()), text("velant_test_add"), number(0), number(0)}),
               "Wrong number of arguments to external_define()");
  // Two argument types announced, one given.
  EXPECT_FATAL(call("external_define", {text(LIBRARY.c_str()), text("velant_test_add"), number(0), number(0),
                                        number(2), number(0)}),
               "Wrong number of arguments to external_define()");
  EXPECT_FATAL(define("velant_test_sum16", 0, std::vector<int>(17, 0)), "DLL functions can have at most 16 arguments");
  EXPECT_FATAL(define("velant_test_sum16", 0, {0, 0, 0, 0, 1}),
               "DLL functions with more than 4 arguments cannot have string arguments");
  // Four arguments may carry strings; sixteen numbers are allowed.
  EXPECT_GE(number_of(define("velant_test_join_sdsd", 1, {1, 0, 1, 0})), 0);
  EXPECT_GE(number_of(define("velant_test_sum16", 0, std::vector<int>(16, 0))), 0);
}

TEST_F(External, LibraryThatDoesNotLoadIsFatalAfterItsDebugLine) {
  DebugCapture debug;
  EXPECT_FATAL(external_define("/nonexistent/velant_missing.so", "f", 0, {}), "Error defining an external function.");
  const std::string line = debug.text();
  const std::string head =
      "LoadLibraryW(\"/nonexistent/velant_missing.so\") for function \"f\" failed with error code 2 (\"";
  EXPECT_EQ(line.substr(0, head.size()), head);
  EXPECT_NE(line.find("No such file or directory"), std::string::npos) << line;
  EXPECT_EQ(line.substr(line.size() - 3), "\")\n");
}

#if defined(__x86_64__)
TEST_F(External, LibraryOfAnotherMachineNamesBothMachineTypes) {
  // The start of a 32-bit ELF file for the 386 (machine 3).
  const std::string path = ::testing::TempDir() + "velant_other_machine.so";
  std::FILE* file = std::fopen(path.c_str(), "wb");
  ASSERT_NE(file, nullptr);
  const unsigned char header[64] = {0x7F, 'E', 'L', 'F', 1, 1, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 3, 0, 3, 0};
  std::fwrite(header, 1, sizeof header, file);
  std::fclose(file);

  DebugCapture debug;
  EXPECT_FATAL(external_define(path, "f", 0, {}), "Error defining an external function.");
  const std::string line = debug.text();
  // The file opens, but its content can't be loaded: ENOEXEC.
  const std::string head = "LoadLibraryW(\"" + path + "\") for function \"f\" failed with error code 8 (\"";
  EXPECT_EQ(line.rfind(head, 0), 0u) << line;
  const std::string tail = "\") Machine type 3, game is type 62\n";
  ASSERT_GE(line.size(), tail.size());
  EXPECT_EQ(line.substr(line.size() - tail.size()), tail);
  std::remove(path.c_str());
}
#endif

TEST_F(External, NumbersOfEveryKindArriveAsDoubles) {
  const RValue answer = define("velant_test_answer", 0, {});
  EXPECT_EQ(number_of(call_row(answer, {})), 42);

  const RValue add = define("velant_test_add", 0, {0, 0});
  EXPECT_EQ(number_of(call_row(add, {number(2.5), number(4)})), 6.5);
  EXPECT_EQ(number_of(call_row(add, {RValue::int32(3), RValue::boolean(true)})), 4);
  EXPECT_EQ(number_of(call_row(add, {RValue::int64(5), RValue::ref(REF_DS_MAP, 7)})), 12);
  // A kind that isn't a number, string or pointer goes as 0.
  EXPECT_EQ(number_of(call_row(add, {RValue::undefined(), number(2)})), 2);

  const RValue sum = define("velant_test_sum16", 0, std::vector<int>(16, 0));
  std::vector<RValue> sixteen;
  for (int i = 1; i <= 16; ++i) sixteen.push_back(number(i));
  EXPECT_EQ(number_of(call_row(sum, sixteen)), 1496);  // the sum of i * i: each arrived in its place
}

TEST_F(External, TextsAndNumbersMixInAnyPositionAndTextsComeBack) {
  const RValue sdsd = define("velant_test_join_sdsd", 1, {1, 0, 1, 0});
  EXPECT_EQ(text_of(call_row(sdsd, {text("uno"), number(1.5), text("tre"), number(-4)})), "uno|1.5|tre|-4");
  const RValue dssd = define("velant_test_join_dssd", 1, {0, 1, 1, 0});
  EXPECT_EQ(text_of(call_row(dssd, {number(7), text("b"), text("c"), number(0.25)})), "7|b|c|0.25");
  const RValue ddds = define("velant_test_weigh_ddds", 0, {0, 0, 0, 1});
  EXPECT_EQ(number_of(call_row(ddds, {number(1), number(2), number(3), text("four")})), 4321);

  const RValue greet = define("velant_test_greet", 1, {1});
  const RValue greeting = call_row(greet, {text("mondo")});
  EXPECT_EQ(text_of(greeting), "ciao mondo");
  // The result is a copy of its own: the library's buffer changes with the next call.
  call_row(greet, {text("tutti")});
  EXPECT_EQ(text_of(greeting), "ciao mondo");

  double value = 12.75;
  const RValue read = define("velant_test_read_double", 0, {1});
  EXPECT_EQ(number_of(call_row(read, {RValue::pointer(&value)})), 12.75);
}

TEST_F(External, RoutineWithTheBuiltinSignatureIsCalledAsABuiltin) {
  const int index = external_define(LIBRARY, "velant_test_native", 0, std::vector<int32_t>{0, 0});
  ASSERT_GE(index, 0);
  EXPECT_EQ(external_row(index)->name_form, ExternalNameForm::Builtin);
  EXPECT_EQ(number_of(call_row(number(index), {number(1.5), number(2)})), 2003.5);
  // self and other reach the routine.
  int instance = 0;
  RValue args[] = {number(1), number(2)};
  EXPECT_EQ(number_of(external_call(index, 2, args, reinterpret_cast<CInstance*>(&instance))), 2103);
  // A plain routine keeps its own form.
  const int add = external_define(LIBRARY, "velant_test_add", 0, std::vector<int32_t>{0, 0});
  EXPECT_EQ(external_row(add)->name_form, ExternalNameForm::Plain);
}

TEST_F(External, CallsThatCannotHappenGiveMinusOneOrZero) {
  EXPECT_EQ(number_of(call_row(number(-1), {})), -1);
  EXPECT_EQ(number_of(call_row(number(99), {})), 0);

  ASSERT_GE(number_of(define("velant_test_RegisterCallbacks", 0, {1, 1, 1, 1})), 0);
  const RValue report = define("velant_test_report", 0, {0, 0, 1});
  // One argument short: no call, so nothing is reported.
  EXPECT_EQ(number_of(call_row(report, {number(70), number(1)})), 0);
  EXPECT_TRUE(async_events_take().empty());

  // A freed library leaves its rows without routine until they are defined again.
  const RValue add = define("velant_test_add", 0, {0, 0});
  call("external_free", {text(LIBRARY.c_str())});
  EXPECT_EQ(number_of(call_row(add, {number(1), number(2)})), 0);
  EXPECT_EQ(number_of(define("velant_test_add", 0, {0, 0})), add.real);
  EXPECT_EQ(number_of(call_row(add, {number(1), number(2)})), 3);
}

TEST_F(External, MissingFunctionGivesMinusOneAndADebugLine) {
  DebugCapture debug;
  EXPECT_EQ(number_of(define("velant_test_nothing", 0, {0, 1})), -1);
  EXPECT_EQ(debug.text(), "Could not find function \"velant_test_nothing\" in \"" + LIBRARY +
                              "\" with argument types [number, string].\n");
}

TEST_F(External, DefiningAgainReusesTheRowWithTheNewTypes) {
  const int first = external_define(LIBRARY, "velant_test_add", 0, std::vector<int32_t>{0, 0});
  const int other = external_define(LIBRARY, "velant_test_answer", 0, {});
  EXPECT_NE(first, other);
  EXPECT_EQ(external_define(LIBRARY, "velant_test_add", 1, std::vector<int32_t>{0}), first);
  const DLL_RFunction* row = external_row(first);
  EXPECT_EQ(row->argument_count, 1);
  EXPECT_EQ(row->result_type, 1);
  RValue two[] = {number(1), number(2)};
  EXPECT_EQ(number_of(external_call(first, 2, two)), 0);  // the old count no longer fits
}

TEST_F(External, BareLibraryNameIsFoundBesideTheExecutable) {
  // The tests and the library are built into the same folder.
  const std::string name = LIBRARY.substr(LIBRARY.rfind('/') + 1);
  const int index = external_define(name, "velant_test_answer", 0, {});
  ASSERT_GE(index, 0);
  EXPECT_EQ(external_row(index)->library, LIBRARY);
}

TEST_F(External, RegisterCallbacksLetsTheLibraryQueueAsyncEvents) {
  ASSERT_GE(number_of(define("velant_test_RegisterCallbacks", 0, {1, 1, 1, 1})), 0);
  const RValue report = define("velant_test_report", 0, {0, 0, 1});
  const double map = number_of(call_row(report, {number(70), number(2.5), text("fatto")}));
  ASSERT_GE(map, 0);

  const std::vector<AsyncEvent> events = async_events_take();
  ASSERT_EQ(events.size(), 1u);
  EXPECT_EQ(events[0].map_id, map);
  EXPECT_EQ(events[0].other_subtype, 70);
  const RValue handle = RValue::ref(REF_DS_MAP, events[0].map_id);
  EXPECT_EQ(ds_map_size(handle), 3);
  EXPECT_EQ(number_of(ds_map_find_value(handle, text("value"))), 2.5);
  EXPECT_EQ(text_of(ds_map_find_value(handle, text("text"))), "fatto");
  EXPECT_EQ(text_of(ds_map_find_value(handle, text("source"))), "testlib");
  ds_map_destroy(handle);
  EXPECT_TRUE(async_events_take().empty());
}
