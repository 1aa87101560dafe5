#include "environment/editor/pop_up.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "environment/editor/art.h"
#include "environment/editor/editor_ctrl.h"
#include "environment/editor/header_buttons.h"
#include "environment/editor/project_screens.h"
#include "environment/editor/settings.h"
#include "environment/projects/load_ctrl.h"
#include "environment/text_control/input_text.h"
#include "runtime/Font/TextState.h"
#include "runtime/Graphics/Colour.h"
#include "runtime/Graphics/DrawState.h"
#include "runtime/Graphics/Primitives.h"
#include "runtime/Graphics/TextDrawing.h"
#include "runtime/IO/Input.h"
#include "runtime/Object/Objects.h"
#include "runtime/Room/Room.h"

struct PopUpButton {
  const char* label;
  double label_dx;          // the label's centre, from the box's centre
  double from_dx, to_dx;    // where a press answers
  const char* art;
};

namespace {

int32_t g_object = -1;


constexpr PopUpButton QUESTION_BUTTONS[] = {
    {"Salva", 220, 150, 290, "pulsante_verde"},
    {"Annulla", 50, -20, 120, "pulsante_grigio"},
    {"Elimina", -220, -290, -150, "pulsante_rosso"},
};
constexpr PopUpButton NOTICE_BUTTONS[] = {{"Ok", 0, -68, 68, "pulsante_blu"}};
constexpr PopUpButton DELETE_BUTTONS[] = {
    {"Annulla", 100, 30, 170, "pulsante_grigio"},
    {"Elimina", -100, -170, -30, "pulsante_rosso"},
};
constexpr PopUpButton RENAME_BUTTONS[] = {
    {"Annulla", 100, 30, 170, "pulsante_grigio"},
    {"Rinomina", -100, -170, -30, "pulsante_verde"},
};

// What stands under the name field when the new name can't be taken.
constexpr const char* NAME_REFUSED = "Nome non valido o già in uso";

constexpr double BUTTONS_TOP = 170, BUTTONS_BOTTOM = 227, LABEL_DY = 182, BUTTON_DY = 198.5;
constexpr uint32_t TEXT2_COLOUR = 4210752;

const PopUpButton* button_under_pointer(const PopUp& box) {
  const double dx = mouse_x() - box.x, dy = mouse_y() - box.y;
  if (dy < BUTTONS_TOP || dy > BUTTONS_BOTTOM) return nullptr;
  for (const PopUpButton& b : box.buttons()) {
    if (dx >= b.from_dx && dx <= b.to_dx) return &b;
  }
  return nullptr;
}

PopUp* the_pop_up() { return static_cast<PopUp*>(first_active_instance(g_object)); }

void draw_centred(double x, double y, const std::string& text, double scale, double colour) {
  draw_state().colour = static_cast<uint32_t>(colour);
  draw_text_transformed(x, y, text, scale, scale, 0);
}

}  // namespace

void PopUp::create() {
  text = "Se crei un nuovo progetto il tuo\r\nlavoro attuale verrà cancellato";
  text2 = "Vuoi salvare il lavoro attuale?";
  // Nothing to recover while the learner answers: the work on screen is the question.
  write_setting("Crash", 0);
}

void PopUp::destroy() { write_setting("Crash", 1); }

void PopUp::step() {
  if (EditorCtrl* editor = editor_ctrl()) editor->box().enabled = false;
  if (!mouse_button_pressed(MOUSE_LEFT)) return;
  if (const PopUpButton* pressed = button_under_pointer(*this)) {
    mouse_clear(MOUSE_LEFT);
    answer(pressed->label);
  }
}

std::span<const PopUpButton> PopUp::buttons() const {
  if (recupero) return NOTICE_BUTTONS;
  if (elimina_file) return DELETE_BUTTONS;
  if (rinomina_file) return RENAME_BUTTONS;
  return QUESTION_BUTTONS;
}

void PopUp::answer_about_file(const std::string& label) {
  LoadCtrl* screen = load_ctrl();
  if (screen && label == "Elimina") screen->delete_card(file_index);
  if (screen && label == "Rinomina" && !screen->rename_card(file_index)) {
    text2 = NAME_REFUSED;
    return;
  }
  if (screen) screen->close_name_field();
  instance_destroy(*this);
}

void PopUp::answer(const std::string& label) {
  if (elimina_file || rinomina_file) {
    answer_about_file(label);
    return;
  }
  EditorCtrl* editor = editor_ctrl();
  if (label == "Salva") {
    // The save goes on alone; what had been asked for waits for a new request.
    save_program();
  } else if (label == "Elimina" && editor) {
    if (chiudi) {
      game_end();
      return;
    }
    // The work on screen goes; then what was asked for.
    editor->blank_slides();
    if (nuovo) {
      editor->new_project();
      write_setting_text("nome_ultimo_progetto", "");
    }
    if (apri) open_project_screen("load_ctrl");
    if (kit) editor->open_ready_kit(kit_file);
  }
  instance_destroy(*this);
}

void PopUp::draw_end() {
  const Room* room = current_room();
  if (!room) return;
  const double saved_alpha = draw_state().alpha;
  draw_state().alpha = 0.7;
  draw_rectangle_colour(0, 0, room->width, room->height, COLOUR_DARK_GREY, COLOUR_DARK_GREY, 0, 0, false);
  draw_state().alpha = 1;
  draw_art(notice() ? "pop_up_avviso" : "pop_up_domanda", x, y, 1, 1);

  draw_set_font(FONT_TITLE);
  draw_set_halign(1);
  draw_set_valign(1);
  if (recupero) {
    draw_centred(x, y - 75, text, 0.75, COLOUR_WHITE);
    draw_centred(x, y + 60, text2, 0.7, TEXT2_COLOUR);
  } else {
    draw_centred(x, y - 90, text, 0.6, COLOUR_WHITE);
    if (!rinomina_file) draw_centred(x, y + 80, text2, 0.7, TEXT2_COLOUR);
  }
  if (rinomina_file) {
    // The frame round the name field, and why a name was refused.
    draw_state().colour = static_cast<uint32_t>(COLOUR_WHITE);
    draw_roundrect_ext(x - 200, y + 75, x + 200, y + 115, 12, 12, false);
    draw_state().colour = 8421504;
    draw_roundrect_ext(x - 200, y + 75, x + 200, y + 115, 12, 12, true);
    draw_centred(x, y + 140, text2, 0.4, COLOUR_WHITE);
  }
  draw_set_valign(0);
  for (const PopUpButton& b : buttons()) {
    draw_art(b.art, x + (b.from_dx + b.to_dx) / 2, y + BUTTON_DY, 1, 1);
    draw_centred(x + b.label_dx, y + LABEL_DY, b.label, 0.5, COLOUR_WHITE);
  }
  draw_set_halign(0);
  draw_state().alpha = saved_alpha;
}

PopUp& open_pop_up(PopUpKind kind) {
  const Room* room = current_room();
  auto* box = static_cast<PopUp*>(instance_create(room ? room->width / 2.0F : 0, room ? room->height / 2.0F : 0,
                                                  g_object, -1000000000));
  switch (kind) {
    case PopUpKind::Nuovo: box->nuovo = 1; break;
    case PopUpKind::Chiudi:
      box->text = "Se chiudi senza salvare il tuo\r\nlavoro attuale verrà cancellato";
      box->chiudi = 1;
      break;
    case PopUpKind::Apri:
      box->text = "Se apri un altro progetto il tuo\r\nlavoro attuale verrà cancellato";
      box->apri = 1;
      break;
    case PopUpKind::Kit:
      box->text = "Se apri un kit pronto il tuo\r\nlavoro attuale verrà cancellato";
      box->kit = 1;
      break;
    case PopUpKind::EliminaFile: box->elimina_file = 1; break;
    case PopUpKind::RinominaFile: box->rinomina_file = 1; break;
    case PopUpKind::Recupero:
      box->text = "Ops... Qualcosa è andato storto...";
      box->text2 = "Ma abbiamo recuperato \r\nil tuo codice!";
      box->recupero = 1;
      break;
  }
  return *box;
}

bool pop_up_exists() { return the_pop_up() != nullptr; }

int pop_up_cursor() {
  const PopUp* box = the_pop_up();
  return box && button_under_pointer(*box) ? -21 : 0;
}

int32_t define_pop_up() {
  g_object = ObjectDefinition<PopUp>("pop_up")
                 .on(ev::CREATE, 0, &PopUp::create)
                 .on(ev::DESTROY, 0, &PopUp::destroy)
                 .on(ev::STEP, ev::STEP_NORMAL, &PopUp::step)
                 .on(ev::DRAW, ev::DRAW_END, &PopUp::draw_end)
                 .flags(object_flag::VISIBLE)
                 .index();
  return g_object;
}
