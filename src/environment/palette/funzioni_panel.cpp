// The Funzioni panel in three levels: six group buttons (tasto_princ_funz),
// a group's categories (funzioni_int), a category's functions
// (funzione_int), whose press writes the call form. The Kit pronti panel
// is a column of the same function pills that open a ready kit instead.
#include <algorithm>

#include "environment/editor/art.h"
#include "environment/editor/editor_ctrl.h"
#include "environment/editor/environment_globals.h"
#include "environment/editor/header_buttons.h"
#include "environment/editor/pop_up.h"
#include "environment/palette/palette.h"
#include "environment/palette/palette_catalogue.h"
#include "environment/palette/palette_element.h"
#include "runtime/Font/TextLayout.h"
#include "runtime/Font/TextState.h"
#include "runtime/Graphics/Colour.h"
#include "runtime/Graphics/DrawState.h"
#include "runtime/Graphics/SpriteDrawing.h"
#include "runtime/Graphics/TextDrawing.h"
#include "runtime/IO/FileNames.h"
#include "runtime/IO/Input.h"
#include "runtime/Room/Collision.h"
#include "runtime/Room/Room.h"

namespace {

int32_t g_group = -1, g_category = -1, g_function = -1;

constexpr double GROUP_DX[] = {-80, 5, -80, 5, -80, 5}, GROUP_DY[] = {58, 58, 159, 159, 260, 260};
constexpr double CATEGORY_X = 525, CATEGORY_TOP = 80, CATEGORY_STEP = 55;
constexpr double FUNCTION_X = 830, FUNCTION_TOP = 70, FUNCTION_STEP = 50;
constexpr int MAX_FUNCTIONS = 15;
constexpr double PILL_BASE = 70, PILL_HEIGHT = 36, LABEL_SCALE = 0.95, WIDEST_LABEL = 430;
constexpr double NAME_COLOUR = 4210752;

// Each group's colour, which its categories share.
double group_colour(int group) {
  static const double COLOURS[FUNCTION_GROUPS] = {make_colour_rgb(240, 138, 36), make_colour_rgb(58, 124, 214),
                                                  make_colour_rgb(142, 84, 196), make_colour_rgb(52, 160, 90),
                                                  make_colour_rgb(24, 150, 160), make_colour_rgb(214, 64, 76)};
  return COLOURS[std::clamp(group, 0, FUNCTION_GROUPS - 1)];
}

int group_of(int category) {
  for (int g = 0; g < FUNCTION_GROUPS; ++g) {
    const CategoryRange r = group_categories(g);
    if (category >= r.first && category <= r.last) return g;
  }
  return 0;
}

// A press on a group or a category leaves the Funzioni panel open: it goes one level down.
bool pointer_on_category() {
  const auto mx = static_cast<float>(mouse_x()), my = static_cast<float>(mouse_y());
  return position_meeting(mx, my, g_group) || position_meeting(mx, my, g_category);
}

class FunctionLevel : public PaletteElement {
 public:
  using PaletteElement::PaletteElement;
  bool keeps_panel_open() const override { return pointer_on_category(); }
};

// A square button with its group's icon and name. The group and category buttons keep their number in
// image_index, so their picture is their mask, which no animation moves on.
class TastoPrincFunz : public FunctionLevel {
 public:
  using FunctionLevel::FunctionLevel;

  void press() override {
    instances_destroy(g_category);
    instances_destroy(g_function);
    const CategoryRange range = group_categories(static_cast<int>(image_index));
    for (int c = range.first; c <= range.last; ++c) {
      instance_create(static_cast<float>(CATEGORY_X), static_cast<float>(CATEGORY_TOP + CATEGORY_STEP * (c - range.first)),
                      g_category, 0, [c](CInstance& made) {
                        made.image_index = static_cast<float>(c);
                        made.image_speed = 0;
                        made.mask_index = panel_art("tasto_categoria");
                      });
    }
  }

  void draw() {
    const int group = static_cast<int>(image_index);
    const bool over = pointed();
    const double lift = over ? -2 : 0;
    draw_sprite_ext(mask_index, 0, x, y + lift, 1, 1, 0, group_colour(group), 1);
    draw_art("gruppo_" + std::to_string(group), x + 40, y + 38 + lift, 1, 1);
    draw_set_font(FONT_LABEL_BOLD);
    draw_set_halign(1);
    draw_set_valign(1);
    draw_state().colour = static_cast<uint32_t>(COLOUR_WHITE);
    const std::string name = group_name(group);
    const double scale = std::min(0.8, 68.0 / std::max(1, string_width(name)));
    draw_text_transformed(x + 40, y + 80 + lift, name, scale, scale, 0);
    draw_set_halign(0);
    draw_set_valign(0);
  }
};

// A function's pill, as wide as its label needs; in the Kit pronti panel a ready kit's.
class FunzioneInt : public PaletteElement {
 public:
  using PaletteElement::PaletteElement;

  void step() {
    PaletteElement::step();
    if (!sized) fit_label();
  }

  bool keeps_panel_open() const override { return gioco == 0 && pointer_on_category(); }

  void press() override {
    if (gioco == 0) {
      insert_at_caret(function_snippet(type, text) + " ");
    } else {
      open_kit();
    }
  }

  void draw() {
    if (!sized) fit_label();
    const double colour = gioco ? make_colour_rgb(232, 120, 40) : group_colour(group_of(type));
    draw_pill(x, y, PILL_BASE * image_xscale, PILL_HEIGHT, static_cast<uint32_t>(pointed() ? merge_colour(colour, COLOUR_WHITE, 0.2) : colour),
              text, label_scale);
  }

  int type = 0, i = 0, gioco = 0;

 private:
  void fit_label() {
    draw_set_font(FONT_LABEL_BOLD);
    label_scale = std::min(LABEL_SCALE, WIDEST_LABEL / std::max(1, string_width(text)));
    image_xscale = static_cast<float>(std::max(1.5, (string_width(text) * label_scale + 26) / PILL_BASE));
    mask_index = entry_mask(static_cast<int>(PILL_BASE), static_cast<int>(PILL_HEIGHT));
    set(instance_flag::BBOX_DIRTY, true);
    sized = true;
  }

  void open_kit() {
    const ReadyKit& kit = ready_kits()[static_cast<size_t>(i)];
    const std::string path = file_folders().bundle + "kit pronti/" + kit.file;
    EditorCtrl* editor = editor_ctrl();
    if (!editor) return;
    if (editor->unsaved()) {
      open_pop_up(PopUpKind::Kit).kit_file = path;
    } else {
      editor->open_ready_kit(path);
    }
  }

  bool sized = false;
  double label_scale = LABEL_SCALE;  // smaller for the longest labels, which would leave the window
};

// A category: its icon, and its name beside it while the pointer is on it.
class FunzioniInt : public FunctionLevel {
 public:
  using FunctionLevel::FunctionLevel;

  void step() {
    PaletteElement::step();
    if (pointed()) environment_globals().ms_enter = 1;
  }

  void press() override {
    const CObject* categories = object_get(g_category);
    for (CInstance* other : categories->instances) static_cast<FunzioniInt*>(other)->select = 0;
    select = 1;
    instances_destroy(g_function);
    const int category = static_cast<int>(image_index);
    const auto functions = category_functions(category);
    for (int i = 0; i < MAX_FUNCTIONS; ++i) {
      instance_create(static_cast<float>(FUNCTION_X), static_cast<float>(FUNCTION_TOP + FUNCTION_STEP * i), g_function, 0,
                      [&](CInstance& made) {
                        auto& function = static_cast<FunzioneInt&>(made);
                        function.type = category;
                        function.i = i;
                        if (i < static_cast<int>(functions.size())) function.text = functions[static_cast<size_t>(i)].label;
                      });
    }
    // The rows beyond the category's list have no function.
    for (CInstance* made : std::vector<CInstance*>(object_get(g_function)->instances)) {
      if (static_cast<PaletteElement*>(made)->text == "unknown function") instance_destroy(*made);
    }
  }

  void draw() {
    const int category = static_cast<int>(image_index);
    const double colour = group_colour(group_of(category));
    const bool over = pointed();
    if (select) draw_sprite_ext(mask_index, 0, x - 3, y - 3, 62.0 / 56, 56.0 / 50, 0, COLOUR_WHITE, 0.6);
    draw_sprite_ext(mask_index, 0, x, y, 1, 1, 0, select || over ? merge_colour(colour, COLOUR_WHITE, 0.2) : colour, 1);
    draw_art("categoria_" + std::to_string(category), x + 28, y + 25, 0.75, 1);
    if (!over && !select) return;
    draw_set_font(FONT_TITLE);
    draw_set_halign(0);
    draw_set_valign(0);
    draw_state().colour = static_cast<uint32_t>(NAME_COLOUR);
    draw_text_transformed(x + 65, y + 12, category_name(category), 0.35, 0.35, 0);
  }

  int select = 0;
};

}  // namespace

void fill_funzioni(double x, double y) {
  for (int group = 0; group < FUNCTION_GROUPS; ++group) {
    instance_create(static_cast<float>(x + GROUP_DX[group]), static_cast<float>(y + GROUP_DY[group]), g_group, 0,
                    [group](CInstance& made) {
                      made.image_index = static_cast<float>(group);
                      made.image_speed = 0;
                      made.mask_index = panel_art("tasto_gruppo");
                    });
  }
}

void fill_kit_pronti(double x, double y) {
  const auto kits = ready_kits();
  for (size_t k = 0; k < kits.size(); ++k) {
    const bool first_column = k < 9;
    const double left = first_column ? x - 60 : x + 160;
    const double top = y + 80 + 50 * static_cast<double>(first_column ? k : k - 9);
    instance_create(static_cast<float>(left), static_cast<float>(top), g_function, 0, [&](CInstance& made) {
      auto& kit = static_cast<FunzioneInt&>(made);
      kit.gioco = 1;
      kit.i = static_cast<int>(k);
      kit.text = kits[k].label;
    });
  }
}

void define_funzioni() {
  g_group = define_palette_element<TastoPrincFunz>("tasto_princ_funz").index();
  g_category = define_palette_element<FunzioniInt>("funzioni_int").index();
  g_function = define_palette_element<FunzioneInt>("funzione_int").index();
}
