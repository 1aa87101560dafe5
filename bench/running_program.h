// The program of main_code_ctrl in a running room, as the run room holds it,
// for the benchmarks of the language.
#pragma once

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "families/families.h"
#include "language/evaluation/program_instance.h"
#include "language/tokenizer/sound_assets.h"
#include "language/tokenizer/tokenization.h"
#include "runtime/Code/Builtins.h"
#include "runtime/Object/Objects.h"
#include "runtime/Room/Room.h"

class RunningProgram {
 public:
  RunningProgram() {
    register_runtime_builtins();
    register_language_sounds();
    register_families();
    rooms_clear();
    objects_clear();
    const int32_t object = object_add("main_code_ctrl");
    room_add(RoomDescription{"main_room"});
    room_add(RoomDescription{"Editor"});
    objects_prepare();
    set_room_target(0);
    room_change(true);
    instance_ = instance_create(0, 0, object, 0);
    program_ = std::make_unique<ProgramInstance>(*instance_, false);
    set_main_program(program_.get());
  }
  ~RunningProgram() {
    set_main_program(nullptr);
    program_.reset();
    game_finish();
    rooms_clear();
    objects_clear();
  }
  RunningProgram(const RunningProgram&) = delete;
  RunningProgram& operator=(const RunningProgram&) = delete;

  ProgramInstance& program() { return *program_; }

  // Makes `text` the program of a fresh main_code_ctrl, ready to run, as a
  // run's Create event does; false when it can't run.
  bool load(const std::string& text) {
    program_ = std::make_unique<ProgramInstance>(*instance_, false);
    set_main_program(program_.get());
    const auto dir = std::filesystem::temp_directory_path() / ("velant_bench_" + std::to_string(::getpid()));
    std::filesystem::create_directories(dir);
    std::ofstream(dir / "code.txt", std::ios::binary) << text;
    const bool ready = tokenization(program_->program, dir.string() + "/") == TokenizationResult::Ready;
    std::filesystem::remove_all(dir);
    if (!ready) return false;
    program_->var_inizialization(0);
    program_->mem_function(0, program_->program.totale_tok);
    return true;
  }

 private:
  CInstance* instance_ = nullptr;
  std::unique_ptr<ProgramInstance> program_;
};
