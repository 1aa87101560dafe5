#include "environment/editor_ctrl.h"

#include <fstream>
#include <iterator>

#include "environment/rooms.h"
#include "language/tokenizer/controllo_errori.h"
#include "runtime/Font/TextState.h"
#include "runtime/Graphics/Colour.h"
#include "runtime/Graphics/DrawState.h"
#include "runtime/Graphics/Primitives.h"
#include "runtime/Graphics/TextDrawing.h"
#include "runtime/Function/DialogFunctions.h"
#include "runtime/Function/SystemFunctions.h"
#include "runtime/IO/FileNames.h"
#include "runtime/IO/Input.h"
#include "runtime/IO/WholeFile.h"
#include "runtime/Object/Objects.h"
#include "runtime/Room/Room.h"

namespace {

int32_t g_editor_object = -1;

// Until the editor screen exists, the text a learner would find in it.
constexpr const char* FIRST_PROGRAM =
    "INIZIA\n"
    "conta = 0\n"
    "\n"
    "CICLO CONTINUO\n"
    "aumenta conta di 1\n"
    "disegna cerchio (X: 500, Y: 350, RAGGIO: 50 + conta / 3, COLORE: blu)\n";

constexpr int KEY_F5 = KEY_F1 + 4;

}  // namespace

EditorCtrl* editor_ctrl() {
  const CObject* object = object_get(g_editor_object);
  if (!object || object->instances.empty()) return nullptr;
  return static_cast<EditorCtrl*>(object->instances.front());
}

void EditorCtrl::create() {
  // The text of the last session is kept in backup.txt; without it, a first program.
  std::ifstream backup(file_folders().save_area + "backup.txt", std::ios::binary);
  std::string text = backup ? std::string(std::istreambuf_iterator<char>(backup), {}) : std::string(FIRST_PROGRAM);
  slide_text = {"", std::move(text)};
  n_slide = 1;
}

void EditorCtrl::draw() {
  // It stays through the runs, and shows only in its own room.
  if (current_room_index() != ROOM_EDITOR) return;
  draw_state().colour = 0;
  draw_set_halign(0);
  draw_set_valign(0);
  draw_text(50, 20, std::string("Velant ") + VELANT_VERSION + " - premi F5 per eseguire il programma, Esc per tornare qui");
  draw_state().colour = static_cast<uint32_t>(COLOUR_DARK_GREEN);
  draw_text(50, 60, slide_text.size() > 1 ? slide_text[1] : std::string());
}

void TastoEsegui::press() {
  if (object_find("pop_up") >= 0 && !object_get(object_find("pop_up"))->instances.empty()) return;
  if (object_find("update_ctrl") >= 0 && !object_get(object_find("update_ctrl"))->instances.empty()) return;
  alarm[0] = 1;
  esegui = 1;
}

void TastoEsegui::alarm_0() {
  const EditorCtrl* editor = editor_ctrl();
  str.clear();
  for (int k = 1; editor && k <= editor->n_slide && static_cast<size_t>(k) < editor->slide_text.size(); ++k) {
    str += editor->slide_text[static_cast<size_t>(k)];
  }
  original_str = str;
  str += "filler ";
  fatal_error = 0;
  // The check before the run: a failure keeps the program in the editor, a single run is a warning.
  const PreRunCheck check = controllo_errori(str, original_str, os_is_network_connected);
  if (!check.message.empty()) show_message(RValue::text(check.message));
  if (!check.passed) {
    fatal_error = 1;
    return;
  }
  // The whole hand-over to the run: the text in code.txt, written whole.
  // Without it the run would take an older program, so there is none.
  if (!file_write_whole(file_folders().save_area + "code.txt", original_str)) {
    show_message(RValue::text("Impossibile preparare l'esecuzione: il programma non si può scrivere su disco "
                              "(code.txt). Controlla lo spazio libero e riprova."));
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
  draw_set_halign(1);
  draw_text(width / 2, height / 2, "Interpretazione in corso ...");
  draw_set_halign(0);
  draw_state().alpha = alpha;
}

void TastoEsegui::draw_end() {
  if (esegui != 1) return;
  if (const Room* room = current_room()) draw_interpretation_notice(room->width, room->height, 0.9);
  esegui = 0;
}

int32_t define_editor_ctrl() {
  // The editor keeps its text while programs run: it lives for the whole process.
  g_editor_object = ObjectDefinition<EditorCtrl>("editor_ctrl")
                        .on(ev::CREATE, 0, &EditorCtrl::create)
                        .on(ev::DRAW, ev::DRAW_NORMAL, &EditorCtrl::draw)
                        .flags(object_flag::VISIBLE | object_flag::PERSISTENT)
                        .index();
  return g_editor_object;
}

int32_t define_tasto_esegui() {
  return ObjectDefinition<TastoEsegui>("tasto_esegui")
      .on(ev::KEYPRESS, KEY_F5, &TastoEsegui::press)
      .on(ev::ALARM, 0, &TastoEsegui::alarm_0)
      .on(ev::DRAW, ev::DRAW_END, &TastoEsegui::draw_end)
      .index();
}
