// Test helper: a Velant program made by the tokeniser and run by a
// ProgramInstance over an instance in a running room, with the messages it
// shows recorded.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "language/evaluation/numeric_expression.h"
#include "language/evaluation/program_instance.h"
#include "language/tokenizer/sound_assets.h"
#include "language/tokenizer/tokenization.h"
#include "runtime/Code/Builtins.h"
#include "runtime/Function/StringFunctions.h"
#include "runtime/IO/Input.h"
#include "runtime/Object/Objects.h"
#include "runtime/Platform/Dialogs.h"
#include "runtime/Room/Room.h"
#include "runtime/Run/Frame.h"
#include "support/MessageRecorder.h"
#include "support/RunEnds.h"
#include "support/TempFolder.h"

class ProgramTest : public ::testing::Test {
 protected:
  static constexpr int ROOM_WIDTH = 800, ROOM_HEIGHT = 600;

  void SetUp() override {
    register_runtime_builtins();
    register_language_sounds();
    rooms_clear();
    objects_clear();
    input_reset();
    dir_ = std::filesystem::temp_directory_path() /
           ("velant_prog_" + std::to_string(::getpid()) + "_" +
            ::testing::UnitTest::GetInstance()->current_test_info()->name());
    std::filesystem::create_directories(dir_);
    platform::set_dialogs(std::make_unique<MessageRecorder>(&messages_));
    object_ = object_add("main_code_ctrl");
    room_add(RoomDescription{"main_room", ROOM_WIDTH, ROOM_HEIGHT});
    record_run_ends();
    objects_prepare();
    set_room_target(0);
    room_change(true);
  }
  void TearDown() override {
    programs_.clear();
    game_finish();
    rooms_clear();
    objects_clear();
    input_reset();
    platform::set_dialogs(nullptr);
    std::filesystem::remove_all(dir_);
  }

  // A new instance in the room, at (x, y).
  CInstance& instance(float x = 0, float y = 0) { return *instance_create(x, y, object_, 0); }

  // A program over a new instance, tokenised from `text`, with its table
  // made; the first program made becomes that of main_code_ctrl.
  ProgramInstance& program(const std::string& text) {
    ProgramInstance& p = bare_program();
    tokenise(p, text);
    p.var_inizialization(0);
    return p;
  }

  // A program over a new instance, without tokens or variables; the first
  // one that isn't an esemplare becomes the program of main_code_ctrl.
  ProgramInstance& bare_program(bool esemplare = false) {
    programs_.push_back(std::make_unique<ProgramInstance>(instance(), esemplare));
    ProgramInstance& p = *programs_.back();
    if (!esemplare && !main_program()) set_main_program(&p);
    return p;
  }

  // A program ready to run: tokens, variables and statement positions.
  ProgramInstance& runnable(const std::string& text) {
    ProgramInstance& p = program(text);
    p.mem_function(0, p.program.totale_tok);
    return p;
  }
  // The programs made so far go, so that the next one made is that of main_code_ctrl.
  void forget_programs() {
    programs_.clear();
    set_main_program(nullptr);
  }
  // The program of `text` ready to run, alone as a run has it.
  ProgramInstance& sole_program(const std::string& text) {
    forget_programs();
    return runnable(text);
  }
  // The program of examples/`name`, alone and ready to run.
  ProgramInstance& example(std::string_view name) {
    return sole_program(read_whole_file(std::filesystem::path(VELANT_SOURCE_DIR) / "examples" / name));
  }
  // A program of `statements` in its block INIZIA, run once as a run starts.
  ProgramInstance& started(const std::string& statements) {
    ProgramInstance& p = runnable("INIZIA\n" + statements + "\nCICLO CONTINUO\n");
    run_inizia(p);
    return p;
  }
  // The block "INIZIA", as the run does once at the start.
  static void run_inizia(ProgramInstance& p) { p.execute_function_ext(p.program.INIZIA, p.program.DISEGNA); }
  // The block "CICLO CONTINUO", as each frame runs it.
  static void run_frame(ProgramInstance& p) { p.execute_function_ext(p.program.DISEGNA, p.program.totale_tok); }

  void tokenise(ProgramInstance& p, const std::string& text) {
    std::ofstream(dir_ / "code.txt", std::ios::binary) << text;
    ASSERT_EQ(tokenization(p.program, dir_.string() + "/"), TokenizationResult::Ready);
  }

  // The position of the first token `text` at or after `from`, or -1.
  static int position(const ProgramInstance& p, std::string_view text, int from = 0) {
    for (int k = from; k < p.program.totale_tok; ++k) {
      if (p.token_text(k) == text) return k;
    }
    return -1;
  }

  // `n` frames of the running room.
  static void frames(int n) {
    for (int k = 0; k < n; ++k) frame_run();
  }

  // Runs every plain assignment of the program in order, as the statement walk would.
  static void run_assignments(ProgramInstance& p) {
    for (int k = 0; k + 1 < p.program.totale_tok; ++k) {
      if (p.token_text(k + 1) == "=") p.var_update_direct(p.token_text(k), k);
    }
  }

  // The value text of variable `name` in `p`'s own table, or "absent".
  static std::string stored(const ProgramInstance& p, std::string_view name) {
    const int k = p.find_variable(name);
    return k < 0 ? "absent" : std::string(p.val[static_cast<size_t>(k)].string_view());
  }
  // The stored texts of `names` in `p`, to be compared at once.
  static std::vector<std::string> stored(const ProgramInstance& p, std::initializer_list<const char*> names) {
    std::vector<std::string> values;
    for (const char* name : names) values.push_back(stored(p, name));
    return values;
  }
  // The number of variable `name` of `p`.
  static double number(const ProgramInstance& p, std::string_view name) { return string_is_real(stored(p, name)); }
  // The 30-decimal text of a number, as the exact form stores it.
  static std::string exact(double x) { return std::string(rt::string_format(x, -1, 30).string_view()); }

  std::filesystem::path dir_;
  int32_t object_ = -1;
  std::vector<std::unique_ptr<ProgramInstance>> programs_;
  std::vector<std::string> messages_;
};
