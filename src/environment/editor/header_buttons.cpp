#include "environment/editor/header_buttons.h"

#include <cmath>
#include <string>

#include "environment/editor/art.h"
#include "environment/editor/editor_ctrl.h"
#include "environment/editor/environment_globals.h"
#include "environment/editor/pop_up.h"
#include "environment/editor/project_screens.h"
#include "environment/palette/palette.h"
#include "environment/text_control/input_text.h"
#include "runtime/Font/TextState.h"
#include "runtime/Graphics/Colour.h"
#include "runtime/Graphics/DrawState.h"
#include "runtime/Graphics/Primitives.h"
#include "runtime/Graphics/TextDrawing.h"
#include "runtime/IO/DesktopOpen.h"
#include "runtime/IO/FileNames.h"
#include "runtime/IO/Input.h"
#include "runtime/Object/Objects.h"
#include "runtime/Room/Room.h"

namespace {

constexpr double BUTTON_Y = 23, BUTTON_SCALE = 0.75, BUTTON_ALPHA = 0.9, LABEL_Y = 14, LABEL_SCALE = 0.3;
constexpr double ICON_SIZE = 48;  // the theme's icons are 48 pixels square

struct HeaderEntry {
  const char* object;
  int image_index;
  double x;
  const char* label;
  double label_x;  // a negative one stands that far right of the button
  int EnvironmentGlobals::*shown;  // null: always shown
  const char* art;
};

constexpr HeaderEntry HEADER[] = {
    {"tasto_esegui", 0, 25, "Esegui codice", 180, nullptr, "tasto_esegui"},
    {"tasto_carica", 0, 70, "Apri progetto", 180, nullptr, "tasto_carica"},
    {"tasto_salva", 0, 110, "Salva progetto", 180, nullptr, "tasto_salva"},
    {"tasto_opzioni", 0, 150, "Nuovo progetto", 180, nullptr, "tasto_opzioni"},
    {"icona_gen", 7, 330, "Kit pronti", 440, &EnvironmentGlobals::kit_pronti, "icona_kit_pronti"},
    {"icona_gen", 0, 370, "Costrutti", 440, &EnvironmentGlobals::ico_costrutti, "icona_costrutti"},
    {"icona_gen", 1, 410, "Funzioni", 440, &EnvironmentGlobals::ico_funzioni, "icona_funzioni"},
    {"icona_gen", 2, 550, "Colori", -25, &EnvironmentGlobals::ico_colori, "icona_colori"},
    {"icona_gen", 3, 590, "Note musicali", 740, &EnvironmentGlobals::ico_note_musicali, "icona_note_musicali"},
    {"icona_gen", 4, 630, "Suoni", 740, &EnvironmentGlobals::ico_suoni, "icona_suoni"},
    {"icona_gen", 5, 670, "Tipi di carattere", 740, &EnvironmentGlobals::ico_font, "icona_font"},
    {"icona_gen", 6, 710, "Variabili", 740, &EnvironmentGlobals::ico_variabili, "icona_variabili"},
    {"icona_gen", 10, 910, "Esporta come immagine", 1020, &EnvironmentGlobals::ico_esporta_immagine,
     "icona_esporta_immagine"},
    {"icona_gen", 8, 950, "Tastiera simboli", 1020, &EnvironmentGlobals::ico_tastiera_simboli,
     "icona_tastiera_simboli"},
    {"icona_gen", 9, 990, "Annulla", 1020, nullptr, "icona_annulla"},
    {"folder_int", 0, 1255, "Apri cartella risorse", 1075, nullptr, "folder_int"},
};

const HeaderEntry& entry_of(const HeaderButton& button) { return HEADER[button.entry]; }

// New project: at once for work that is saved, after a question otherwise.
class TastoOpzioni : public HeaderButton {
 public:
  using HeaderButton::HeaderButton;
  void press() override {
    EditorCtrl* editor = editor_ctrl();
    if (!editor) return;
    if (editor->unsaved()) {
      open_pop_up(PopUpKind::Nuovo);
    } else {
      editor->new_project();
    }
  }
};

// Open a project: the project list, once the learner knows the work on screen goes.
class TastoCarica : public HeaderButton {
 public:
  using HeaderButton::HeaderButton;
  void press() override {
    const EditorCtrl* editor = editor_ctrl();
    // Without the project list in the build there is nothing to open, and nothing to ask.
    if (object_find("load_ctrl") < 0) return;
    if (editor && editor->unsaved()) {
      open_pop_up(PopUpKind::Apri);
    } else {
      open_project_screen("load_ctrl");
    }
  }
};

// A palette icon: its press opens its panel; while a panel is open the code box takes no keys, and the
// icon of the open panel stands on a light tile, with a pointer under the icons whose panel hangs below.
class IconaGen : public HeaderButton {
 public:
  using HeaderButton::HeaderButton;
  void press() override { open_palette_panel(static_cast<int>(image_index), x, y); }
  void draw() {
    if (environment_globals().ico_select == 1) {
      if (EditorCtrl* editor = editor_ctrl()) editor->box().enabled = false;
    }
    if (select == 1) {
      draw_state().colour = static_cast<uint32_t>(COLOUR_WHITE);
      const double alpha = draw_state().alpha;
      draw_state().alpha = 0.45;
      draw_roundrect_ext(x - 21, y - 21, x + 21, y + 21, 10, 10, false);
      draw_state().alpha = alpha;
      const int panel = static_cast<int>(image_index);
      if (panel == PANEL_FUNZIONI || panel == PANEL_COLORI || panel == PANEL_TASTIERA) {
        draw_triangle(x - 6, y + 16, x + 6, y + 16, x, y + 22, false);
      }
    }
    HeaderButton::draw();
  }

 private:
  static constexpr int PANEL_FUNZIONI = 1, PANEL_COLORI = 2, PANEL_TASTIERA = 8;
};

class TastoSalva : public HeaderButton {
 public:
  using HeaderButton::HeaderButton;
  void press() override { save_program(); }
};

// The resource folder: the save area's pictures, in the desktop's file manager.
class FolderInt : public HeaderButton {
 public:
  using HeaderButton::HeaderButton;
  void press() override { folder_open(file_folders().save_area + "Immagini"); }
};

template <class T>
int32_t define_button(const char* name) {
  return ObjectDefinition<T>(name)
      .on(ev::STEP, ev::STEP_NORMAL, &T::step)
      .on(ev::DRAW, ev::DRAW_NORMAL, &T::draw)
      .flags(object_flag::VISIBLE)
      .index();
}

}  // namespace

bool HeaderButton::hovered() const {
  const double half = ICON_SIZE * BUTTON_SCALE / 2;
  return std::abs(mouse_x() - x) < half && std::abs(mouse_y() - y) < half;
}

void HeaderButton::press() {}

void HeaderButton::step() {
  const HeaderEntry& e = entry_of(*this);
  const EditorCtrl* editor = editor_ctrl();
  const bool tutorial_hides = editor && editor->tutorial_mode && !shown_in_tutorial(object_index, image_index);
  set(instance_flag::VISIBLE, (!e.shown || environment_globals().*e.shown == 1) && !tutorial_hides);
  if (has(instance_flag::VISIBLE) && !editor_modal() && mouse_button_pressed(MOUSE_LEFT) && hovered()) press();
}

void HeaderButton::draw() {
  const HeaderEntry& e = entry_of(*this);
  draw_art(e.art, x, y, BUTTON_SCALE, BUTTON_ALPHA);
  if (!hovered()) return;
  draw_set_font(FONT_TITLE);
  draw_set_halign(0);
  draw_set_valign(0);
  draw_state().colour = static_cast<uint32_t>(COLOUR_WHITE);
  draw_text_transformed(e.label_x < 0 ? x - e.label_x : e.label_x, LABEL_Y, e.label, LABEL_SCALE, LABEL_SCALE, 0);
}

bool shown_in_tutorial(int32_t object, float image_index) {
  const CObject* o = object_get(object);
  if (!o) return true;
  if (o->name == "folder_int") return false;
  return o->name != "icona_gen" || image_index == 2;
}

void create_header_buttons() {
  for (size_t k = 0; k < std::size(HEADER); ++k) {
    const HeaderEntry& e = HEADER[k];
    instance_create(static_cast<float>(e.x), static_cast<float>(BUTTON_Y), object_find(e.object), 0,
                    [k, &e](CInstance& made) {
                      auto& button = static_cast<HeaderButton&>(made);
                      button.entry = static_cast<int>(k);
                      button.image_index = static_cast<float>(e.image_index);
                      button.image_speed = 0;
                    });
  }
}

int32_t define_header_buttons() {
  define_button<TastoCarica>("tasto_carica");
  define_button<TastoSalva>("tasto_salva");
  define_button<TastoOpzioni>("tasto_opzioni");
  define_button<IconaGen>("icona_gen");
  return define_button<FolderInt>("folder_int");
}
