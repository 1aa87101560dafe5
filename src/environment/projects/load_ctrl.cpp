#include "environment/projects/load_ctrl.h"

#include "environment/editor/art.h"
#include "environment/editor/editor_ctrl.h"
#include "environment/editor/environment_globals.h"
#include "environment/editor/header_buttons.h"
#include "environment/editor/pop_up.h"
#include "environment/editor/settings.h"
#include "environment/rooms.h"
#include "environment/text_control/input_text.h"
#include "runtime/Font/TextState.h"
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

// The icons' top left corners, and the label's right end, from the card's corner.
constexpr double ICON_SIZE = 26, RENAME_DX = 440, DELETE_DX = 470, ICONS_DY = 55, LABEL_DX = 430, LABEL_DY = 60;

int32_t g_object = -1;

bool pointer_on_icon(double left, double top) {
  return mouse_x() >= left && mouse_x() <= left + ICON_SIZE && mouse_y() >= top && mouse_y() <= top + ICON_SIZE;
}

}  // namespace

void LoadCtrl::create() {
  depth = 100;
  window_set_cursor(0);
  read_index();
  alarm[0] = 1;
}

void LoadCtrl::alarm_0() { room_goto(ROOM_PROGETTI); }

void LoadCtrl::alarm_2() { end_in_editor(); }

void LoadCtrl::alarm_3() {
  if (EditorCtrl* editor = editor_ctrl()) editor->load(opened);
  write_setting_text("nome_ultimo_progetto", environment_globals().nome_progetto);
  end_in_editor();
}

void LoadCtrl::step() {
  if (current_room_index() != ROOM_PROGETTI) return;
  scroll();
  if (pop_up_exists()) return;
  const int under = card_under_pointer();
  rinomina = under >= 0 && pointer_on_icon(card_left(under) + RENAME_DX, card_top(under) + ICONS_DY);
  elimina = under >= 0 && pointer_on_icon(card_left(under) + DELETE_DX, card_top(under) + ICONS_DY);
  window_set_cursor(under >= 0 ? -21 : -2);
  if (mouse_button_pressed(MOUSE_LEFT)) press();
}

void LoadCtrl::press() {
  if (mouse_y() >= 40 && mouse_y() <= 100 && mouse_x() >= 950 && mouse_x() <= 1130) {
    back_to_editor(2);
    return;
  }
  if (mouse_x() >= 1175 && mouse_x() <= 1265 && mouse_y() >= 55 && mouse_y() <= 93) {
    alarm[4] = 1;
    return;
  }
  const int under = card_under_pointer();
  if (under < 0) return;
  mouse_clear(MOUSE_LEFT);
  if (rinomina) {
    ask_rename(under);
  } else if (elimina) {
    ask_delete(under);
  } else {
    open_card(under);
  }
}

void LoadCtrl::open_card(int index) {
  const std::string& titolo = progetto[static_cast<size_t>(index)].titolo;
  environment_globals().nome_progetto = titolo;
  if (file_read_whole(project_path(titolo), opened)) back_to_editor(3);
}

void LoadCtrl::alarm_4() {
  const std::string path = get_open_filename(PROJECT_FILES, "");
  back_to_editor(!path.empty() && file_read_whole(path, opened) ? 3 : 2);
}

void LoadCtrl::ask_rename(int index) {
  const std::string& titolo = progetto[static_cast<size_t>(index)].titolo;
  PopUp& box = open_pop_up(PopUpKind::RinominaFile);
  box.text = "Stai per rinominare il progetto \r\n'" + titolo + "' in:";
  box.text2 = "";
  box.file_index = index;
  ObjInputText& field = make_name_field(box.x - 190, box.y + 80, 380, titolo);
  field.draw_end = true;
  field.depth = box.depth - 1;
}

void LoadCtrl::ask_delete(int index) {
  PopUp& box = open_pop_up(PopUpKind::EliminaFile);
  box.text = "Sei sicuro di voler eliminare \r\nquesto progetto?";
  box.text2 = progetto[static_cast<size_t>(index)].titolo;
  box.file_index = index;
}

void LoadCtrl::delete_card(int index) {
  if (index < 0 || index >= static_cast<int>(progetto.size())) return;
  delete_project(progetto[static_cast<size_t>(index)]);
  read_index();
}

bool LoadCtrl::rename_card(int index) {
  ObjInputText* field = name_field();
  if (!field || index < 0 || index >= static_cast<int>(progetto.size())) return true;
  if (!rename_project(progetto[static_cast<size_t>(index)], field->text_utf8())) return false;
  close_name_field();
  read_index();
  return true;
}

void LoadCtrl::draw_card_icons(int index) const {
  const double left = card_left(index), top = card_top(index);
  constexpr double HALF = ICON_SIZE / 2;
  draw_art("icona_rinomina", left + RENAME_DX + HALF, top + ICONS_DY + HALF, ICON_SIZE / 48, 1);
  draw_art("icona_elimina", left + DELETE_DX + HALF, top + ICONS_DY + HALF, ICON_SIZE / 48, 1);
  if (!rinomina && !elimina) return;
  draw_set_font(FONT_LABEL);
  draw_set_halign(TEXT_ALIGN_END);
  draw_state().colour = 0;
  draw_text(left + LABEL_DX, top + LABEL_DY, rinomina ? "Rinomina" : "Elimina");
  draw_set_halign(TEXT_ALIGN_START);
}

void LoadCtrl::draw() {
  if (current_room_index() != ROOM_PROGETTI) return;
  if (!pop_up_exists()) answer_close_request();
  draw_ground();
  draw_cards(145, !pop_up_exists(), "", 0);
  const int under = pop_up_exists() ? -1 : card_under_pointer();
  if (under >= 0) draw_card_icons(under);
  draw_set_font(FONT_TITLE);
  draw_state().colour = static_cast<uint32_t>(COLOUR_WHITE);
  draw_text_transformed(80, 55, "Apri un progetto salvato", 0.5, 0.5, 0);
  draw_button("Annulla", 1040, "pulsante_grigio", 180, false);
  draw_button(". . .", 1220, "pulsante_blu", 90, false);
  if (environment_globals().attenua_colori == 1) draw_attenuation_veil(0.25);
}

LoadCtrl* load_ctrl() { return static_cast<LoadCtrl*>(first_active_instance(g_object)); }

int32_t define_load_ctrl() {
  g_object = ObjectDefinition<LoadCtrl>("load_ctrl")
                 .on(ev::CREATE, 0, &LoadCtrl::create)
                 .on(ev::STEP, ev::STEP_NORMAL, &LoadCtrl::step)
                 .on(ev::DRAW, ev::DRAW_NORMAL, &LoadCtrl::draw)
                 .on(ev::ALARM, 0, &LoadCtrl::alarm_0)
                 .on(ev::ALARM, 2, &LoadCtrl::alarm_2)
                 .on(ev::ALARM, 3, &LoadCtrl::alarm_3)
                 .on(ev::ALARM, 4, &LoadCtrl::alarm_4)
                 .flags(object_flag::VISIBLE | object_flag::PERSISTENT)
                 .index();
  return g_object;
}
