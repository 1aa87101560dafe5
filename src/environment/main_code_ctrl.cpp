#include "environment/main_code_ctrl.h"

#include "environment/editor/run_button.h"

#include <cmath>
#include <functional>
#include <string>

#include "families/funzioni_di_casualita.h"
#include "families/funzioni_di_disegno.h"
#include "language/evaluation/error_frame.h"
#include "environment/measuring_aids.h"
#include "language/evaluation/numeric_expression.h"
#include "language/tokenizer/tokenization.h"
#include "runtime/Code/Builtins.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Code/Error.h"
#include "runtime/Extension/WindowHook.h"
#include "runtime/Font/TextState.h"
#include "runtime/Graphics/Colour.h"
#include "runtime/Graphics/DrawState.h"
#include "runtime/Graphics/Primitives.h"
#include "runtime/Graphics/SurfaceOverClear.h"
#include "runtime/Graphics/Surfaces.h"
#include "runtime/Graphics/TextDrawing.h"
#include "runtime/IO/FileNames.h"
#include "runtime/IO/Input.h"
#include "runtime/IO/WindowFunctions.h"
#include "runtime/Object/Objects.h"
#include "runtime/Room/Variables.h"
#include "runtime/Room/Room.h"
#include "runtime/Room/FrameState.h"

namespace {

std::vector<std::pair<std::string, std::string>>& run_variables() {
  static std::vector<std::pair<std::string, std::string>> variables;
  return variables;
}

constexpr double ROOM_SPEED = 30;

double global_number(const char* name) {
  RValue value;
  variable_get(global_object(), variable_id(name), NO_ARRAY_INDEX, value);
  return value.is(Kind::Number) || value.is(Kind::Bool) ? value.real : 0;
}

void go_to_editor() {
  // Sounds stop with the run; without the sound module there is nothing to stop.
  RValue none;
  builtin_call("audio_stop_all", none, nullptr, nullptr, 0, nullptr);
  end_run(RunEnd::ToEditor);
}

}  // namespace

const std::vector<std::pair<std::string, std::string>>& last_run_variables() { return run_variables(); }

MainCodeCtrl::MainCodeCtrl(float x, float y, int32_t id, int32_t object)
    : CInstance(x, y, id, object), program_(std::make_unique<ProgramInstance>(*this, false)) {}

MainCodeCtrl::~MainCodeCtrl() {
  if (main_program() == program_.get()) set_main_program(nullptr);
}

void MainCodeCtrl::create() {
  ProgramInstance& p = *program_;
  set_main_program(&p);
  set_run_stopped_by_error(false);
  if (Room* room = current_room()) {
    room->width = static_cast<int32_t>(RUN_WINDOW_WIDTH);
    room->height = static_cast<int32_t>(RUN_WINDOW_HEIGHT);
    room->background_colour = static_cast<uint32_t>(COLOUR_OLIVE);
  }
  set_circle_precision(64);
  // Every run begins with chance from the same seed.
  ripristina_casualita_di_avvio();
  if (tokenization(p.program, file_folders().save_area) == TokenizationResult::DivisionByZero) {
    // Its messages have been shown; the start goes on, and the run ends
    // at the end of this frame, before "INIZIA".
    set_run_stopped_by_error(true);
    end_run(RunEnd::ToEditor);
  }
  // The first values of the variables are tried now: their errors show at the start.
  guarded_run([&] { p.var_inizialization(0); });
  p.mem_function(0, p.program.totale_tok);
  alarm[0] = 1;
  p.time = step_count = 0;
  drawing_run_start(p);
  // A click on the close button ends the run, not the environment.
  window_command_hook(WINDOW_COMMAND_CLOSE);
}

void MainCodeCtrl::run_block(int from, int to) {
  guarded_run([&] { program_->execute_function_ext(from, to); });
}

void MainCodeCtrl::alarm_0() { run_block(program_->program.INIZIA, program_->program.DISEGNA); }

void MainCodeCtrl::step() {
  ProgramInstance& p = *program_;
  if (window_command_check(WINDOW_COMMAND_CLOSE)) return go_to_editor();
  keep_stamps_surface(p);
  ++step_count;
  // "timer 1" to "timer 8" count seconds down to 0.
  for (int n = 1; n <= 8; ++n) {
    const int k = p.find_variable("timer_" + std::to_string(n));
    if (k < 0) continue;
    double value = string_is_real(p.val[static_cast<size_t>(k)].is(Kind::String) ? p.val[static_cast<size_t>(k)].string_view()
                                                                                  : std::string_view());
    if (value > 0) value -= 1 / ROOM_SPEED;
    if (value < 0) value = 0;
    if (std::fabs((value - std::floor(value)) - 0.98) < 0.00001) value = std::round(value);
    p.val[static_cast<size_t>(k)] = RValue::text(value_to_text(RValue::number(value)));
  }
}

void MainCodeCtrl::draw_begin() { keep_grid_picture(*program_); }

void MainCodeCtrl::draw() {
  ProgramInstance& p = *program_;
  draw_set_font(-1);
  draw_grid_picture(p);
  if (++p.time > 1) run_block(p.program.DISEGNA, p.program.totale_tok);
  if (Room* room = current_room()) {
    room->width = static_cast<int32_t>(p.larghezza_finestra);
    room->height = static_cast<int32_t>(p.altezza_finestra);
    room->background_colour = static_cast<uint32_t>(p.colore_sfondo) & 0xFFFFFF;
  }
  draw_line_colour(p.larghezza_finestra, 0, p.larghezza_finestra, p.altezza_finestra, 255, 255);
  if (fullscreen == 0) {
    window_set_size(static_cast<int>(p.larghezza_finestra), static_cast<int>(p.altezza_finestra));
  } else {
    window_set_fullscreen(true);
  }
  if (!p.nome_finestra.empty() && window_get_caption() != p.nome_finestra) window_set_caption(p.nome_finestra);
}

void MainCodeCtrl::draw_end() {
  ProgramInstance& p = *program_;
  const FrameState& frame = frame_state();
  // Pressing Alt while releasing Ctrl switches the list of tokens and variables.
  if (key_down(KEY_ALT) && key_released(KEY_CONTROL)) debug = !debug;
  if (debug && p.time > 10) {
    if (key_down(KEY_UP)) debug_scroll += 20;
    if (key_down(KEY_DOWN)) debug_scroll -= 20;
    draw_state().colour = 0;
    for (int k = 0; k < p.program.totale_tok; ++k) {
      draw_text(10, debug_scroll + 20.0 * k, std::to_string(k) + "_" + std::string(p.token_text(k)));
    }
    for (int k = 0; k < p.vari_size && static_cast<size_t>(k) < p.val.size(); ++k) {
      draw_text(400, debug_scroll + 20.0 * k,
                std::to_string(k) + "_" + std::string(p.vari[static_cast<size_t>(k)].string_view()) + "=" +
                    value_to_text(p.val[static_cast<size_t>(k)]));
    }
    draw_text(0, 0, std::to_string(frame.fps) + " _ " + std::to_string(frame.fps));
  }
  // The speed warning, once a second has been measured.
  if (frame.fps > 0 && frame.fps < 15 && object_find("gif_ctrl") < 0) {
    draw_state().colour = static_cast<uint32_t>(COLOUR_RED);
    draw_set_halign(0);
    draw_text(40, 8,
              "Atenzione! L'esecuzione del tuo codice è troppo pesante su questo computer!\n" +
                  std::to_string(frame.fps) + "/30 FPS, il programma è più lento del " +
                  std::to_string(static_cast<int>(100 - frame.fps / 30.0 * 100)) + "% rispetto al normale.");
  }
  if (restart == 1) {
    draw_interpretation_notice(p.larghezza_finestra, p.altezza_finestra, 1);
    if (++restart_time > 1) room_restart();
  }
  draw_stamps(p);
  const double mx = mouse_x(), my = mouse_y();
  if (global_number("righelli") > 0.5) draw_rulers(p.larghezza_finestra, p.altezza_finestra, mx, my);
  if (global_number("goniometro") > 0.5) {
    if (mouse_button_released(1)) {
      variable_set(global_object(), variable_id("goniometro_x"), NO_ARRAY_INDEX, RValue::number(mx));
      variable_set(global_object(), variable_id("goniometro_y"), NO_ARRAY_INDEX, RValue::number(my));
    }
    draw_protractor(global_number("goniometro_x"), global_number("goniometro_y"), mx, my);
  }
}

void MainCodeCtrl::draw_gui_end() {
  if (global_number("attenua_colori") != 1) return;
  const int window_width = window_get_width(), window_height = window_get_height();
  const double colour = make_colour_hsv(35, 200, 200);
  const double alpha = draw_state().alpha;
  draw_state().alpha = 0.25;
  draw_rectangle_colour(0, 0, window_width, window_height, colour, colour, colour, colour, false);
  draw_state().alpha = alpha;
}

void MainCodeCtrl::room_end() {
  auto& variables = run_variables();
  variables.clear();
  const ProgramInstance& p = *program_;
  for (int k = 0; k < p.vari_size && static_cast<size_t>(k) < p.val.size(); ++k) {
    variables.emplace_back(value_to_text(p.vari[static_cast<size_t>(k)]), value_to_text(p.val[static_cast<size_t>(k)]));
  }
  drawing_run_end(*program_);
  if (main_program() == program_.get()) set_main_program(nullptr);
}

void MainCodeCtrl::key_escape() { go_to_editor(); }

int32_t define_main_code_ctrl() {
  return ObjectDefinition<MainCodeCtrl>("main_code_ctrl")
      .on(ev::CREATE, 0, &MainCodeCtrl::create)
      .on(ev::ALARM, 0, &MainCodeCtrl::alarm_0)
      .on(ev::STEP, ev::STEP_NORMAL, &MainCodeCtrl::step)
      .on(ev::DRAW, ev::DRAW_BEGIN, &MainCodeCtrl::draw_begin)
      .on(ev::DRAW, ev::DRAW_NORMAL, &MainCodeCtrl::draw)
      .on(ev::DRAW, ev::DRAW_END, &MainCodeCtrl::draw_end)
      .on(ev::DRAW, ev::DRAW_GUI_END, &MainCodeCtrl::draw_gui_end)
      .on(ev::OTHER, ev::OTHER_ROOM_END, &MainCodeCtrl::room_end)
      .on(ev::KEYPRESS, KEY_ESCAPE, &MainCodeCtrl::key_escape)
      .index();
}
