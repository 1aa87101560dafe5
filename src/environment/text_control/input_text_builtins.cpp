// obj_input_text as an object, its constructors, and the input_text_*
// built-ins through which the environment's screens and a user's program
// make and drive text boxes.
#include <algorithm>

#include "environment/text_control/edit_menu.h"
#include "environment/text_control/input_text.h"
#include "runtime/Code/Builtins.h"
#include "runtime/Font/TextLayout.h"
#include "runtime/Font/TextState.h"
#include "runtime/IO/Input.h"
#include "runtime/Object/Objects.h"
#include "runtime/Room/Room.h"

namespace {

int32_t g_object = -1;

ObjInputText* box_of(double id) {
  return dynamic_cast<ObjInputText*>(instance_find(static_cast<int32_t>(id)));
}

int32_t create(bool multiline, const RValue* a, bool full) {
  // The arguments by their place: x, y, width, [height,] font, then the rest.
  const double x = arg_real(a, 0), y = arg_real(a, 1), width = arg_real(a, 2);
  const double height = multiline ? arg_real(a, 3) : -1;
  int k = multiline ? 4 : 3;
  const auto font = static_cast<int32_t>(arg_real(a, k++));
  uint32_t color = 0;
  double alpha = 1, wrapping = -1, separation = -1;
  int max_length = -1, max_lines = -1, h_align = 0, v_align = 0, fit = 0;
  bool selection = true;
  if (!multiline && full) {
    color = static_cast<uint32_t>(arg_real(a, k++));
    alpha = arg_real(a, k++);
    max_length = arg_int32(a, k++);
  } else if (multiline) {
    if (full) {
      color = static_cast<uint32_t>(arg_real(a, k++));
      alpha = arg_real(a, k++);
    }
    wrapping = arg_real(a, k++);
    if (full) {
      max_length = arg_int32(a, k++);
      max_lines = arg_int32(a, k++);
      separation = arg_real(a, k++);
    }
  }
  if (full) {
    h_align = arg_int32(a, k++);
    v_align = arg_int32(a, k++);
    selection = arg_bool(a, k++);
    fit = arg_int32(a, k++);
  }
  ObjInputText* box = input_text_new(static_cast<float>(x), static_cast<float>(y));
  box->construct(multiline, width, height, font, color, alpha, wrapping, max_length, max_lines, separation, h_align,
                 v_align, selection, fit);
  return box->id;
}

BUILTIN_ADAPTER(input_text_create) {
  const RValue* a = args;
  ObjInputText* box = input_text_new(static_cast<float>(arg_real(a, 1)), static_cast<float>(arg_real(a, 2)));
  box->construct(arg_bool(a, 0), arg_real(a, 3), arg_real(a, 4), static_cast<int32_t>(arg_real(a, 5)),
                 static_cast<uint32_t>(arg_real(a, 6)), arg_real(a, 7), arg_real(a, 8), arg_int32(a, 9),
                 arg_int32(a, 10), arg_real(a, 11), arg_int32(a, 12), arg_int32(a, 13), arg_bool(a, 14),
                 arg_int32(a, 15));
  result = RValue::number(box->id);
}
BUILTIN_ADAPTER(input_text_create_multiline) { result = RValue::number(create(true, args, false)); }
BUILTIN_ADAPTER(input_text_create_multiline_ext) { result = RValue::number(create(true, args, true)); }
BUILTIN_ADAPTER(input_text_create_singleline) { result = RValue::number(create(false, args, false)); }
BUILTIN_ADAPTER(input_text_create_singleline_ext) { result = RValue::number(create(false, args, true)); }

BUILTIN_ADAPTER(input_text_get_text) {
  const ObjInputText* box = box_of(arg_real(args, 0));
  result = RValue::text(box ? box->text_utf8() : "");
}
BUILTIN_ADAPTER(input_text_get_text_width) {
  const ObjInputText* box = box_of(arg_real(args, 0));
  result = RValue::number(box ? box->text_width : 0);
}
BUILTIN_ADAPTER(input_text_get_text_height) {
  const ObjInputText* box = box_of(arg_real(args, 0));
  result = RValue::number(box ? box->text_height : 0);
}
BUILTIN_ADAPTER(input_text_set_text) {
  if (ObjInputText* box = box_of(arg_real(args, 0))) box->set_text_from_outside(arg_text(args, 1));
}
BUILTIN_ADAPTER(input_text_set_enabled) {
  ObjInputText* box = box_of(arg_real(args, 0));
  if (!box) return;
  if (arg_bool(args, 1)) {
    box->enable();
  } else {
    box->enabled = false;
  }
}
BUILTIN_ADAPTER(input_text_set_misc) {
  ObjInputText* box = box_of(arg_real(args, 0));
  if (!box) return;
  box->set_misc(arg_bool(args, 1), arg_int32(args, 3), arg_int32(args, 4), static_cast<uint32_t>(arg_real(args, 5)),
                arg_real(args, 6), static_cast<uint32_t>(arg_real(args, 7)), arg_real(args, 8), arg_bool(args, 9));
}
BUILTIN_ADAPTER(input_text_set_offset) {
  if (ObjInputText* box = box_of(arg_real(args, 0))) {
    box->offset_x = arg_real(args, 1);
    box->offset_y = arg_real(args, 2);
    box->update_surfaces = true;
  }
}
BUILTIN_ADAPTER(input_text_set_transformation) {
  ObjInputText* box = box_of(arg_real(args, 0));
  if (!box) return;
  box->x = static_cast<float>(arg_real(args, 1));
  box->y = static_cast<float>(arg_real(args, 2));
  box->global_scale_x = arg_real(args, 3);
  box->global_scale_y = arg_real(args, 4);
  box->image_angle = static_cast<float>(arg_real(args, 5));
  box->image_xscale = static_cast<float>(box->global_scale_x * box->local_scale_x);
  box->image_yscale = static_cast<float>(box->global_scale_y * box->local_scale_y);
  box->transformation_was_changed = true;
}

}  // namespace

void ObjInputText::construct(bool is_multiline, double box_width, double box_height, int32_t box_font,
                             uint32_t box_color, double box_alpha, double wrapping, int most_characters,
                             int most_lines, double separation, int horizontal, int vertical, bool selecting,
                             int fit) {
  multiline = is_multiline;
  width = box_width;
  height = box_height;
  font = box_font;
  color = box_color;
  alpha = box_alpha;
  wrapping_width = wrapping;
  max_length = most_characters;
  max_lines = most_lines;
  h_align = horizontal;
  v_align = vertical;
  selection_enabled = selecting;
  fit_style = fit;
  const int32_t previous = text_state().font;
  draw_set_font(font);
  char_height = string_height(" ");
  draw_set_font(previous);
  line_separation = separation == -1 ? char_height : separation;
  if (!multiline && height == -1) height = char_height;
  origin_x = h_align == 1 ? width / 2 : h_align == 2 ? width : 0;
  origin_y = v_align == 1 ? height / 2 : v_align == 2 ? height : 0;
  mouse_pressed_previous = -double_click_time;
  rebuild_lines();
  update_caret_offsets();
  update_surfaces = true;
}

void ObjInputText::enable() {
  // One box at a time takes the keys.
  if (const CObject* object = object_get(g_object)) {
    for (CInstance* other : object->instances) static_cast<ObjInputText*>(other)->enabled = false;
  }
  enabled = true;
  enabled_step = 0;
  set_keyboard_string("");
  cursor_timer = cursor_time;
}

void ObjInputText::set_misc(bool paste, int caret_style, int undo_states, uint32_t selection_background,
                            double selection_background_alpha, uint32_t selection_text,
                            double selection_text_alpha, bool use_shaders) {
  clipboard_pasting_enabled = paste;
  cursor_style = caret_style;
  max_undo_redo_states = undo_states;
  selection_color_background = selection_background;
  selection_alpha_background = selection_background_alpha;
  selection_color_text = selection_text;
  selection_alpha_text = selection_text_alpha;
  shaders = use_shaders;
  update_surfaces = true;
}

ObjInputText* input_text_new(float x, float y) {
  return static_cast<ObjInputText*>(instance_create(x, y, g_object, 0));
}

int32_t obj_input_text_object() { return g_object; }

int32_t define_obj_input_text() {
  g_object = ObjectDefinition<ObjInputText>("obj_input_text")
                 .on(ev::STEP, ev::STEP_NORMAL, &ObjInputText::step)
                 .on(ev::DRAW, ev::DRAW_NORMAL, &ObjInputText::draw)
                 .on(ev::DRAW, ev::DRAW_END, &ObjInputText::draw_at_end)
                 .on(ev::DESTROY, 0, &ObjInputText::destroy)
                 .flags(object_flag::VISIBLE)
                 .index();
  define_edit_menu();
  builtin_register("input_text_create", builtin_input_text_create, 16);
  builtin_register("input_text_create_multiline", builtin_input_text_create_multiline, 6);
  builtin_register("input_text_create_multiline_ext", builtin_input_text_create_multiline_ext, 15);
  builtin_register("input_text_create_singleline", builtin_input_text_create_singleline, 4);
  builtin_register("input_text_create_singleline_ext", builtin_input_text_create_singleline_ext, 11);
  builtin_register("input_text_get_text", builtin_input_text_get_text, 1);
  builtin_register("input_text_get_text_width", builtin_input_text_get_text_width, 1);
  builtin_register("input_text_get_text_height", builtin_input_text_get_text_height, 1);
  builtin_register("input_text_set_text", builtin_input_text_set_text, 2);
  builtin_register("input_text_set_enabled", builtin_input_text_set_enabled, 2);
  builtin_register("input_text_set_misc", builtin_input_text_set_misc, 10);
  builtin_register("input_text_set_offset", builtin_input_text_set_offset, 3);
  builtin_register("input_text_set_transformation", builtin_input_text_set_transformation, 6);
  return g_object;
}
