#include "environment/editor/run_button.h"

#include "environment/editor/editor_ctrl.h"
#include "environment/editor/slide_tabs.h"
#include "environment/rooms.h"
#include "language/tokenizer/controllo_errori.h"
#include "runtime/Font/TextState.h"
#include "runtime/Function/DialogFunctions.h"
#include "runtime/Function/SystemFunctions.h"
#include "runtime/Graphics/Colour.h"
#include "runtime/Graphics/DrawState.h"
#include "runtime/Graphics/Primitives.h"
#include "runtime/Graphics/TextDrawing.h"
#include "runtime/IO/FileNames.h"
#include "runtime/IO/Input.h"
#include "runtime/IO/WholeFile.h"
#include "runtime/Object/Objects.h"
#include "runtime/Room/Room.h"

namespace {

constexpr int KEY_F5 = KEY_F1 + 4;
constexpr double NOTICE_SCALE = 0.5;

}  // namespace

void TastoEsegui::press() {
  if (editor_modal()) return;
  alarm[0] = 1;
  esegui = 1;
}

void TastoEsegui::key_f5() { press(); }

void TastoEsegui::alarm_0() {
  const EditorCtrl* editor = editor_ctrl();
  if (!editor) return;
  str = editor->whole_program();
  original_str = str;
  // The check reads past the last word of the program.
  str += "filler ";
  fatal_error = 0;
  // The check before the run: a failure keeps the program in the editor, a single run is a warning.
  const PreRunCheck check = controllo_errori(str, original_str, os_is_network_connected);
  if (!check.message.empty()) show_message(RValue::text(check.message));
  if (!check.passed) {
    fatal_error = 1;
    show_tabs(true);
    return;
  }
  // The whole hand-over to the run: the text in code.txt, written whole.
  // Without it the run would take an older program, so there is none.
  if (!file_write_whole(file_folders().save_area + "code.txt", original_str)) {
    show_message(RValue::text("Impossibile preparare l'esecuzione: il programma non si può scrivere su disco "
                              "(code.txt). Controlla lo spazio libero e riprova."));
    show_tabs(true);
    return;
  }
  room_goto(ROOM_MAIN);
}

void draw_interpretation_notice(double width, double height, double veil_alpha) {
  const double alpha = draw_state().alpha;
  draw_state().alpha = veil_alpha;
  draw_rectangle_colour(0, 0, width, height, COLOUR_DARK_GREY, COLOUR_DARK_GREY, 0, 0, false);
  draw_state().alpha = 1;
  draw_state().colour = static_cast<uint32_t>(COLOUR_WHITE);
  draw_set_font(FONT_TITLE);
  draw_set_halign(1);
  draw_set_valign(1);
  draw_text_transformed(width / 2, height / 2, "Interpretazione in corso ...", NOTICE_SCALE, NOTICE_SCALE, 0);
  draw_set_halign(0);
  draw_set_valign(0);
  draw_state().alpha = alpha;
}

void TastoEsegui::draw_end() {
  if (esegui != 1) return;
  show_tabs(false);
  if (const Room* room = current_room()) draw_interpretation_notice(room->width, room->height, 1);
  esegui = 0;
}

// Back from a run, or from a project screen: the tabs show again.
void TastoEsegui::room_start() { show_tabs(true); }

int32_t define_tasto_esegui() {
  return ObjectDefinition<TastoEsegui>("tasto_esegui")
      .on(ev::STEP, ev::STEP_NORMAL, &TastoEsegui::step)
      .on(ev::DRAW, ev::DRAW_NORMAL, &TastoEsegui::draw)
      .on(ev::KEYPRESS, KEY_F5, &TastoEsegui::key_f5)
      .on(ev::ALARM, 0, &TastoEsegui::alarm_0)
      .on(ev::DRAW, ev::DRAW_END, &TastoEsegui::draw_end)
      .on(ev::OTHER, ev::OTHER_ROOM_START, &TastoEsegui::room_start)
      .flags(object_flag::VISIBLE)
      .index();
}
