#include "environment/palette/palette.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <unordered_map>
#include <vector>

#include "environment/editor/editor_ctrl.h"
#include "environment/editor/environment_globals.h"
#include "environment/editor/header_buttons.h"
#include "environment/palette/palette_element.h"
#include "environment/text_control/input_text.h"
#include "runtime/Font/TextLayout.h"
#include "runtime/Font/TextState.h"
#include "runtime/Graphics/Colour.h"
#include "runtime/Graphics/DrawState.h"
#include "runtime/Graphics/Primitives.h"
#include "runtime/Graphics/TextDrawing.h"
#include "runtime/IO/Input.h"
#include "runtime/Room/Collision.h"
#include "runtime/Room/Room.h"
#include "runtime/Sprite/Sprite.h"

namespace {

constexpr int GRACE_STEPS = 10;
constexpr int ICON_UNDO = 9, ICON_SCREENSHOT = 10;

int32_t g_sensor = -1;

void set_icons_selected(bool selected, double x, double y) {
  const CObject* icons = object_get(object_find("icona_gen"));
  if (!icons) return;
  for (CInstance* icon : icons->instances) {
    static_cast<HeaderButton*>(icon)->select = selected && icon->x == x && icon->y == y ? 1 : 0;
  }
}

// mouse_sensor: a point that follows the pointer, so that an element under it meets it.
class MouseSensor : public CInstance {
 public:
  using CInstance::CInstance;
  void step_begin() {
    x = static_cast<float>(mouse_x());
    y = static_cast<float>(mouse_y());
    set(instance_flag::BBOX_DIRTY, true);
    // The elements under the pointer say so again in their Step.
    environment_globals().ms_enter = 0;
  }
};

}  // namespace

void PaletteElement::step() {
  ++time;
  if (environment_globals().ico_select == 0) instance_destroy(*this);
}

void PaletteElement::left_pressed() {
  if (has(instance_flag::VISIBLE) && !editor_modal()) press();
}

void PaletteElement::global_left_pressed() {
  if (time > GRACE_STEPS && !keeps_panel_open()) close_palette();
}

void PaletteElement::press() { insert_at_caret(text + " "); }

bool PaletteElement::keeps_panel_open() const { return false; }

bool PaletteElement::pointed() const {
  return g_sensor >= 0 && place_meeting(const_cast<PaletteElement&>(*this), x, y, g_sensor);
}

bool palette_panel_shown() {
  return std::any_of(std::begin(PANEL_OBJECTS), std::end(PANEL_OBJECTS),
                     [](const char* object) { return first_active_instance(object_find(object)) != nullptr; });
}

void insert_at_caret(std::string_view snippet) {
  EditorCtrl* editor = editor_ctrl();
  if (!editor) return;
  ObjInputText& box = editor->box();
  // A snippet that would take the page past its lines goes on over the next pages, whole.
  const auto feeds = std::count(box.text.begin(), box.text.end(), U'\n') + std::count(snippet.begin(), snippet.end(), '\n');
  if (feeds >= SLIDE_LINES) {
    editor->insert_across_slides(snippet);
    return;
  }
  box.replace_from_outside(box.caret(), box.caret(), snippet);
}

void close_palette() {
  environment_globals().ico_select = 0;
  set_icons_selected(false, 0, 0);
  for (const char* object : PANEL_OBJECTS) instances_destroy(object_find(object));
}

void open_palette_panel(int image_index, double x, double y) {
  for (const char* object : PANEL_OBJECTS) instances_destroy(object_find(object));
  if (first_active_instance(g_sensor) == nullptr) {
    instance_create(0, 0, g_sensor, 0, [](CInstance& sensor) { sensor.mask_index = entry_mask(1, 1); });
  }
  set_icons_selected(true, x, y);
  EnvironmentGlobals& g = environment_globals();
  g.ico_select = 1;
  switch (image_index) {
    case 0: fill_costrutti(x, y); break;
    case 1: fill_funzioni(x, y); break;
    case 2: fill_colori(x, y); break;
    case 3: fill_note_musicali(x, y); break;
    case 4: fill_suoni(x, y); break;
    case 5: fill_tipi_di_carattere(x, y); break;
    case 6: fill_variabili(x, y); break;
    case 7: fill_kit_pronti(x, y); break;
    case 8: fill_tastiera_simboli(x, y); break;
    case ICON_UNDO:
      // The button only gives the box back: the box undoes on the click itself.
      g.ico_select = 0;
      set_icons_selected(false, 0, 0);
      break;
    case ICON_SCREENSHOT:
      if (const int32_t screenshot = object_find("screenshot_ctrl"); screenshot >= 0) instance_create(0, 0, screenshot, 0);
      break;
    default: break;
  }
}

void draw_pill(double x, double y, double width, double height, uint32_t colour, const std::string& label,
               double scale) {
  const double radius = height / 2;
  DrawState& state = draw_state();
  // A soft shadow, the face with a lighter top half, and the edge.
  state.colour = 0;
  const double alpha = state.alpha;
  state.alpha = alpha * 0.2;
  draw_roundrect_ext(x + 1, y + 3, x + width + 1, y + height + 3, radius, radius, false);
  state.alpha = alpha;
  draw_roundrect_colour_ext(x, y, x + width, y + height, radius, radius, merge_colour(colour, COLOUR_WHITE, 0.25),
                            merge_colour(colour, 0, 0.15), false);
  state.colour = static_cast<uint32_t>(merge_colour(colour, 0, 0.35));
  draw_roundrect_ext(x, y, x + width, y + height, radius, radius, true);
  draw_set_font(FONT_LABEL_BOLD);
  draw_set_halign(0);
  draw_set_valign(1);
  // The label over a dark outline: five copies around it, then the label.
  state.colour = static_cast<uint32_t>(merge_colour(colour, 0, 0.6));
  const double left = x + radius * 0.6, middle = y + height / 2;
  for (int k = 0; k < 5; ++k) {
    const double angle = k * 72 * 3.14159265358979 / 180;
    draw_text_transformed(left + std::cos(angle), middle + std::sin(angle), label, scale, scale, 0);
  }
  state.colour = static_cast<uint32_t>(COLOUR_WHITE);
  draw_text_transformed(left, middle, label, scale, scale, 0);
  draw_set_valign(0);
}

int32_t entry_mask(int width, int height) {
  static std::unordered_map<std::string, int32_t> made;
  const std::string name = "palette_mask_" + std::to_string(width) + "x" + std::to_string(height);
  // A sprite table cleared since (a test) gets the mask again.
  if (auto found = made.find(name); found != made.end() && sprite_exists(found->second)) return found->second;
  return made[name] = sprite_add_shape(name, width, height, 0, 0);
}

void define_palette() {
  g_sensor = ObjectDefinition<MouseSensor>("mouse_sensor")
                 .on(ev::STEP, ev::STEP_BEGIN, &MouseSensor::step_begin)
                 .flags(object_flag::PERSISTENT)
                 .index();
  define_costrutti();
  define_funzioni();
  define_colori();
  define_note_musicali();
  define_entry_lists();
  define_tastiera_simboli();
  define_direction_game();
}
