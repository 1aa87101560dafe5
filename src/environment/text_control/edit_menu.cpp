#include "environment/text_control/edit_menu.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "environment/text_control/input_text.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Font/TextLayout.h"
#include "runtime/Font/TextState.h"
#include "runtime/Function/StringFunctions.h"
#include "runtime/Function/SystemFunctions.h"
#include "runtime/Graphics/DrawState.h"
#include "runtime/Graphics/Primitives.h"
#include "runtime/Graphics/TextDrawing.h"
#include "runtime/IO/Input.h"
#include "runtime/IO/WindowFunctions.h"
#include "runtime/Object/Objects.h"
#include "runtime/Room/Room.h"

namespace {

constexpr int CURSOR_ARROW = -2, CURSOR_TEXT_BEAM = -4;
constexpr double ENTRY_WIDTH = 150, ENTRY_HEIGHT = 44, FAN_STEP = 25, ENTRY_GAP = 50;
constexpr float MENU_DEPTH = -999;
constexpr uint32_t BORDER = 0x8C8C8C, FACE = 0xFAFAFA, LABEL = 0x303030;

enum class Entry { Cut, Copy, Paste, Upper, Lower };
struct EntryLook {
  const char* object;
  const char* label;
  bool needs_selection;
};
constexpr std::array<EntryLook, 5> ENTRIES = {{{"tasto_taglia", "Taglia", true},
                                               {"tasto_copia", "Copia", true},
                                               {"tasto_incolla", "Incolla", false},
                                               {"tasto_maiusc", "MAIUSCOLO", true},
                                               {"tasto_minusc", "minuscolo", true}}};

std::array<int32_t, 5> g_objects{-1, -1, -1, -1, -1};

// The box's text with [from, to) replaced, the box giving up the keys until the next click in it.
void replace_in_box(ObjInputText& box, int from, int to, std::string_view utf8) {
  box.replace_from_outside(from, to, utf8);
  box.enabled = false;
}

class EditMenuEntry : public CInstance {
 public:
  using CInstance::CInstance;

  Entry entry = Entry::Copy;
  int32_t box = -1;
  double fan = 0, reach = 0, press_y = 0;

  ObjInputText* owner() const { return dynamic_cast<ObjInputText*>(instance_find(box)); }
  bool answers() const {
    const ObjInputText* b = owner();
    return b && (!ENTRIES[static_cast<size_t>(entry)].needs_selection || b->has_selection());
  }
  bool under_pointer() const {
    return mouse_x() >= x && mouse_x() <= x + ENTRY_WIDTH && mouse_y() >= y && mouse_y() <= y + ENTRY_HEIGHT;
  }

  void step() {
    fan = std::min(fan + FAN_STEP, reach);
    y = static_cast<float>(press_y + fan);
    if (under_pointer()) window_set_cursor(CURSOR_ARROW);
    if (mouse_button_pressed(MOUSE_LEFT) && under_pointer() && answers()) act(*owner());
    if (mouse_button_released(MOUSE_LEFT)) instance_destroy(*this);
  }

  void act(ObjInputText& b) {
    const int from = b.selection_start_ordered, to = b.selection_end_ordered;
    const std::string chosen = b.has_selection() ? utf8_of(b.text, static_cast<size_t>(from - 1), static_cast<size_t>(to - 1)) : "";
    switch (entry) {
      case Entry::Cut:
        clipboard_set_text(chosen);
        replace_in_box(b, from, to, "");
        break;
      case Entry::Copy: clipboard_set_text(chosen); break;
      case Entry::Paste: replace_in_box(b, b.caret(), b.caret(), clipboard_get_text()); break;
      case Entry::Upper: replace_in_box(b, from, to, value_to_text(rt::string_upper(chosen))); break;
      case Entry::Lower: replace_in_box(b, from, to, value_to_text(rt::string_lower(chosen))); break;
    }
  }

  void draw() {
    const double saved_alpha = draw_state().alpha;
    const uint32_t saved_colour = draw_state().colour;
    const TextState text = text_state();
    draw_state().alpha = answers() ? 1 : 0.5;
    draw_state().colour = FACE;
    draw_roundrect_ext(x, y, x + ENTRY_WIDTH, y + ENTRY_HEIGHT - 6, 8, 8, false);
    draw_state().colour = BORDER;
    draw_roundrect_ext(x, y, x + ENTRY_WIDTH, y + ENTRY_HEIGHT - 6, 8, 8, true);
    draw_state().colour = LABEL;
    draw_set_font(-1);
    draw_set_halign(0);
    draw_set_valign(0);
    // Centred on whole pixels, so that the letters keep even spaces.
    const char* label = ENTRIES[static_cast<size_t>(entry)].label;
    draw_text(std::round(x + (ENTRY_WIDTH - string_width(label)) / 2),
              std::round(y + (ENTRY_HEIGHT - 6 - string_height(label)) / 2), label);
    draw_set_font(text.font);
    draw_set_halign(text.halign);
    draw_set_valign(text.valign);
    draw_state().alpha = saved_alpha;
    draw_state().colour = saved_colour;
  }
};

}  // namespace

void edit_menu_open(ObjInputText& box, bool open_new) {
  for (const int32_t object : g_objects) {
    if (const CObject* o = object_get(object)) {
      for (CInstance* open : std::vector<CInstance*>(o->instances.begin(), o->instances.end())) instance_destroy(*open);
    }
  }
  if (!open_new || !box.selection_enabled || window_get_cursor() != CURSOR_TEXT_BEAM) return;
  for (size_t k = 0; k < ENTRIES.size(); ++k) {
    auto* made = static_cast<EditMenuEntry*>(instance_create(static_cast<float>(mouse_x()),
                                                             static_cast<float>(mouse_y()), g_objects[k], MENU_DEPTH));
    made->entry = static_cast<Entry>(k);
    made->box = box.id;
    made->press_y = mouse_y();
    made->reach = static_cast<double>(k) * ENTRY_GAP;
  }
}

bool edit_menu_is_open() {
  return std::any_of(g_objects.begin(), g_objects.end(), [](int32_t object) {
    const CObject* o = object_get(object);
    return o && !o->instances.empty();
  });
}

bool edit_menu_under_pointer() {
  for (const int32_t object : g_objects) {
    const CObject* o = object_get(object);
    if (!o) continue;
    for (const CInstance* open : o->instances) {
      if (static_cast<const EditMenuEntry*>(open)->under_pointer()) return true;
    }
  }
  return false;
}

void define_edit_menu() {
  for (size_t k = 0; k < ENTRIES.size(); ++k) {
    g_objects[k] = ObjectDefinition<EditMenuEntry>(ENTRIES[k].object)
                       .on(ev::STEP, ev::STEP_NORMAL, &EditMenuEntry::step)
                       .on(ev::DRAW, ev::DRAW_NORMAL, &EditMenuEntry::draw)
                       .flags(object_flag::VISIBLE)
                       .depth(MENU_DEPTH)
                       .index();
  }
}
