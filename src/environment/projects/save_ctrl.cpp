#include "environment/projects/save_ctrl.h"

#include "environment/editor/editor_ctrl.h"
#include "environment/editor/environment_globals.h"
#include "environment/editor/header_buttons.h"
#include "environment/rooms.h"
#include "environment/text_control/input_text.h"
#include "runtime/Font/TextState.h"
#include "runtime/Function/DialogFunctions.h"
#include "runtime/Graphics/Colour.h"
#include "runtime/Graphics/DrawState.h"
#include "runtime/Graphics/TextDrawing.h"
#include "runtime/IO/DesktopFunctions.h"
#include "runtime/IO/Input.h"
#include "runtime/IO/WholeFile.h"
#include "runtime/IO/WindowFunctions.h"
#include "runtime/Object/Objects.h"
#include "runtime/Room/Room.h"

namespace {

bool pointer_in(double x1, double y1, double x2, double y2) {
  const double mx = mouse_x(), my = mouse_y();
  return mx >= x1 && mx <= x2 && my >= y1 && my <= y2;
}

bool over_field() { return pointer_in(50, 55, 375, 93); }

}  // namespace

void SaveCtrl::create() {
  // Behind the cards and the name field.
  depth = 100;
  if (const EditorCtrl* editor = editor_ctrl()) str = editor->whole_program();
  window_set_cursor(0);
  read_index();
  alarm[0] = 1;
}

void SaveCtrl::alarm_0() { room_goto(ROOM_PROGETTI); alarm[1] = 3; }

void SaveCtrl::alarm_1() { make_name_field(60, 60, 300, environment_globals().nome_progetto); }

void SaveCtrl::alarm_2() { end_in_editor(); }

std::string SaveCtrl::typed_name() const {
  const ObjInputText* field = name_field();
  return field ? field->text_utf8() : std::string();
}

void SaveCtrl::step() {
  if (current_room_index() != ROOM_PROGETTI) return;
  pulse += pulse_step;
  if (pulse >= 2 || pulse <= -1) pulse_step = -pulse_step;
  scroll();
  window_set_cursor(over_field() ? -4 : -2);
  if (mouse_button_pressed(MOUSE_LEFT)) press();
}

void SaveCtrl::press() {
  if (ObjInputText* field = name_field()) {
    if (over_field()) {
      field->enable();
    } else {
      field->enabled = false;
    }
  }
  if (pointer_in(720, 40, 900, 100)) {
    back_to_editor(2);
    return;
  }
  titolo_safe = safe_title(typed_name());
  if (titolo_safe.empty()) return;
  if (pointer_in(950, 40, 1130, 100)) save_here();
  if (pointer_in(1175, 55, 1265, 93)) alarm[4] = 1;
}

void SaveCtrl::save_here() {
  if (!save_project(titolo_safe, str)) {
    show_message(RValue::text("Impossibile salvare il progetto in " + project_path(titolo_safe)));
    return;
  }
  environment_globals().nome_progetto = titolo_safe;
  back_to_editor(2);
}

// The chooser stands over the window on the desktop; the index doesn't
// learn of a project saved through it.
void SaveCtrl::alarm_4() {
  const std::string path = get_save_filename(PROJECT_FILES, environment_globals().nome_progetto);
  if (!path.empty()) {
    if (!file_write_whole(path, str)) {
      show_message(RValue::text("Impossibile salvare il progetto in " + path));
      return;
    }
    environment_globals().nome_progetto = titolo_safe;
  }
  back_to_editor(2);
}

void SaveCtrl::draw() {
  if (current_room_index() != ROOM_PROGETTI) return;
  answer_close_request();
  draw_ground();
  draw_cards(40, false, typed_name(), pulse);
  draw_name_frame(50, 55, 375, 93);
  draw_set_font(FONT_TITLE);
  draw_state().colour = static_cast<uint32_t>(COLOUR_WHITE);
  draw_text_transformed(55, 22, "Nome progetto", 0.4, 0.4, 0);
  const bool no_name = typed_name().empty();
  draw_button("Annulla", 810, "pulsante_grigio", 180, false);
  draw_button("Salva progetto", 1040, "pulsante_verde", 180, no_name);
  draw_button(". . .", 1220, "pulsante_blu", 90, no_name);
  if (environment_globals().attenua_colori == 1) draw_attenuation_veil(0.25);
}

int32_t define_save_ctrl() {
  return ObjectDefinition<SaveCtrl>("save_ctrl")
      .on(ev::CREATE, 0, &SaveCtrl::create)
      .on(ev::STEP, ev::STEP_NORMAL, &SaveCtrl::step)
      .on(ev::DRAW, ev::DRAW_NORMAL, &SaveCtrl::draw)
      .on(ev::ALARM, 0, &SaveCtrl::alarm_0)
      .on(ev::ALARM, 1, &SaveCtrl::alarm_1)
      .on(ev::ALARM, 2, &SaveCtrl::alarm_2)
      .on(ev::ALARM, 4, &SaveCtrl::alarm_4)
      .flags(object_flag::VISIBLE | object_flag::PERSISTENT)
      .index();
}
