// The font and text built-ins that programs call by name.
#include <cmath>

#include "runtime/Code/Builtins.h"
#include "runtime/Font/Font.h"
#include "runtime/Font/TextLayout.h"
#include "runtime/Font/TextState.h"
#include "runtime/Code/Registration.h"
#include "runtime/Support/AssetIndex.h"

namespace {

constexpr auto REF_FONT = static_cast<uint32_t>(AssetKind::Font);

// The font id a value names: a font ref or a number.
int32_t font_index_of(const RValue& v) { return index_of_handle(v, REF_FONT); }

BUILTIN_ADAPTER(font_add) {
  const int32_t font = font_add(arg_text(args, 0), arg_real(args, 1), arg_bool(args, 2), arg_bool(args, 3),
                                arg_int32(args, 4), arg_int32(args, 5));
  result = RValue::ref(REF_FONT, font);
}

BUILTIN_ADAPTER(font_exists) { result = RValue::number(font_exists(font_index_of(args[0])) ? 1 : 0); }

BUILTIN_ADAPTER(font_delete) {
  font_delete(font_index_of(args[0]));
  result = RValue::number(1);
}

BUILTIN_ADAPTER(font_get_name) { result = RValue::text(font_get_name(font_index_of(args[0]))); }

BUILTIN_ADAPTER(font_get_size) {
  const int32_t font = font_index_of(args[0]);
  result = RValue::number(font_exists(font) ? font_get(font)->size : 0);
}

BUILTIN_ADAPTER(draw_set_font) { draw_set_font(font_index_of(args[0])); }

BUILTIN_ADAPTER(draw_set_halign) { draw_set_halign(arg_int32(args, 0)); }

BUILTIN_ADAPTER(draw_set_valign) { draw_set_valign(arg_int32(args, 0)); }

BUILTIN_ADAPTER(string_width) { result = RValue::number(string_width(arg_text(args, 0))); }

BUILTIN_ADAPTER(string_height) { result = RValue::number(string_height(arg_text(args, 0))); }

BUILTIN_ADAPTER(string_width_ext) {
  result = RValue::number(string_width_ext(arg_text(args, 0), arg_real(args, 1), arg_real(args, 2)));
}

BUILTIN_ADAPTER(string_height_ext) {
  result = RValue::number(string_height_ext(arg_text(args, 0), arg_real(args, 1), arg_real(args, 2)));
}

}  // namespace

void register_font_builtins() {
  builtin_register("font_add", builtin_font_add, 6);
  builtin_register("font_exists", builtin_font_exists, 1);
  builtin_register("font_delete", builtin_font_delete, 1);
  builtin_register("font_get_name", builtin_font_get_name, 1);
  builtin_register("font_get_size", builtin_font_get_size, 1);
  builtin_register("draw_set_font", builtin_draw_set_font, 1);
  builtin_register("draw_set_halign", builtin_draw_set_halign, 1);
  builtin_register("draw_set_valign", builtin_draw_set_valign, 1);
  builtin_register("string_width", builtin_string_width, 1);
  builtin_register("string_height", builtin_string_height, 1);
  builtin_register("string_width_ext", builtin_string_width_ext, 3);
  builtin_register("string_height_ext", builtin_string_height_ext, 3);
}
