// Surfaces, sprites, the screen and the device settings by name.
#include "runtime/Code/Array.h"
#include "runtime/Code/Builtins.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Code/Error.h"
#include "runtime/Code/Registration.h"
#include "runtime/Graphics/Colour.h"
#include "runtime/Graphics/DrawState.h"
#include "runtime/Graphics/Primitives.h"
#include "runtime/Graphics/Screen.h"
#include "runtime/Graphics/SpriteDrawing.h"
#include "runtime/Graphics/TextDrawing.h"
#include "runtime/Graphics/Surfaces.h"
#include "runtime/Object/Instance.h"
#include "runtime/Room/Room.h"
#include "runtime/Support/AssetIndex.h"

namespace {

double arg_or(RValue* args, int argc, int i, double fallback) { return i < argc ? arg_real(args, i) : fallback; }

// A sprite argument: a sprite ref or a number.
double arg_sprite(const RValue* args, int i) { return args[i].is(Kind::Ref) ? args[i].ref_index() : arg_real(args, i); }

BUILTIN_ADAPTER(surface_create) {
  result = RValue::number(surface_create(arg_real(args, 0), arg_real(args, 1), arg_or(args, argc, 2, 6)));
}
BUILTIN_ADAPTER(surface_exists) { result = RValue::boolean(surface_exists(arg_real(args, 0))); }
BUILTIN_ADAPTER(surface_get_width) { result = RValue::number(surface_get_width(arg_real(args, 0))); }
BUILTIN_ADAPTER(surface_get_height) { result = RValue::number(surface_get_height(arg_real(args, 0))); }
BUILTIN_ADAPTER(surface_get_texture) { result = RValue::number(surface_texture(arg_real(args, 0))); }
BUILTIN_ADAPTER(surface_set_target) { result = RValue::boolean(surface_set_target(arg_real(args, 0))); }
BUILTIN_ADAPTER(surface_reset_target) { surface_reset_target(); }
BUILTIN_ADAPTER(surface_free) { surface_free(arg_real(args, 0)); }
BUILTIN_ADAPTER(surface_resize) { surface_resize(arg_real(args, 0), arg_real(args, 1), arg_real(args, 2)); }
BUILTIN_ADAPTER(surface_getpixel) {
  result = RValue::number(surface_getpixel(arg_real(args, 0), arg_real(args, 1), arg_real(args, 2)));
}
BUILTIN_ADAPTER(surface_save) {
  result = RValue::boolean(surface_save(arg_real(args, 0), std::string(arg_text(args, 1))));
}
BUILTIN_ADAPTER(draw_surface) { draw_surface(arg_real(args, 0), arg_real(args, 1), arg_real(args, 2)); }
BUILTIN_ADAPTER(draw_surface_ext) {
  draw_surface_ext(arg_real(args, 0), arg_real(args, 1), arg_real(args, 2), arg_real(args, 3), arg_real(args, 4),
                   arg_real(args, 5), arg_real(args, 6), arg_real(args, 7));
}
BUILTIN_ADAPTER(draw_surface_stretched) {
  draw_surface_stretched(arg_real(args, 0), arg_real(args, 1), arg_real(args, 2), arg_real(args, 3), arg_real(args, 4));
}
BUILTIN_ADAPTER(draw_surface_part) {
  draw_surface_part(arg_real(args, 0), arg_real(args, 1), arg_real(args, 2), arg_real(args, 3), arg_real(args, 4),
                    arg_real(args, 5), arg_real(args, 6));
}
BUILTIN_ADAPTER(application_surface_enable) { application_surface_enable(arg_real(args, 0) > 0.5); }

BUILTIN_ADAPTER(sprite_add) {
  const int32_t index = sprite_add(std::string(arg_text(args, 0)), arg_real(args, 1), arg_bool(args, 2),
                                   arg_bool(args, 3), arg_real(args, 4), arg_real(args, 5));
  result = index < 0 ? RValue::number(-1) : RValue::ref(static_cast<uint32_t>(AssetKind::Sprite), index);
}
BUILTIN_ADAPTER(sprite_create_from_surface) {
  result = RValue::number(sprite_create_from_surface(arg_real(args, 0), arg_real(args, 1), arg_real(args, 2),
                                                     arg_real(args, 3), arg_real(args, 4), arg_bool(args, 5),
                                                     arg_bool(args, 6), arg_real(args, 7), arg_real(args, 8)));
}
BUILTIN_ADAPTER(sprite_delete) { sprite_delete(arg_sprite(args, 0)); }
BUILTIN_ADAPTER(sprite_collision_mask) {
  sprite_collision_mask(arg_sprite(args, 0), arg_real(args, 7), arg_real(args, 8));
}

// A subimage of -1 stands for the frame the calling instance shows.
double subimage(const RValue* args, int i, const CInstance* self) {
  const double frame = arg_real(args, i);
  return frame < 0 && self ? self->image_index : frame;
}
BUILTIN_ADAPTER(draw_sprite) {
  draw_sprite(arg_sprite(args, 0), subimage(args, 1, self), arg_real(args, 2), arg_real(args, 3));
}
BUILTIN_ADAPTER(draw_sprite_ext) {
  draw_sprite_ext(arg_sprite(args, 0), subimage(args, 1, self), arg_real(args, 2), arg_real(args, 3), arg_real(args, 4),
                  arg_real(args, 5), arg_real(args, 6), arg_real(args, 7), arg_real(args, 8));
}
BUILTIN_ADAPTER(draw_sprite_stretched) {
  draw_sprite_stretched(arg_sprite(args, 0), subimage(args, 1, self), arg_real(args, 2), arg_real(args, 3),
                        arg_real(args, 4), arg_real(args, 5));
}
BUILTIN_ADAPTER(draw_sprite_stretched_ext) {
  draw_sprite_stretched_ext(arg_sprite(args, 0), subimage(args, 1, self), arg_real(args, 2), arg_real(args, 3),
                            arg_real(args, 4), arg_real(args, 5), arg_real(args, 6), arg_real(args, 7));
}
BUILTIN_ADAPTER(draw_self) {
  if (self) draw_self(*self);
}

BUILTIN_ADAPTER(draw_getpixel) { result = RValue::number(draw_getpixel(arg_real(args, 0), arg_real(args, 1))); }
BUILTIN_ADAPTER(screen_save) { result = RValue::boolean(screen_save(std::string(arg_text(args, 0)))); }

BUILTIN_ADAPTER(gpu_set_texfilter) {
  if (argc != 1) return ReportError("gpu_set_texfilter() - should be passed a single parameter");
  set_texture_filter(arg_bool(args, 0));
}
BUILTIN_ADAPTER(gpu_set_blendmode_ext) {
  if (argc == 1 && args[0].is(Kind::Array)) {
    if (arg_array(args, 0)->length >= 2) {
      set_blend_mode(value_to_int32(array_get(args[0], 0)), value_to_int32(array_get(args[0], 1)));
    }
    return;
  }
  set_blend_mode(arg_int32(args, 0), arg_int32(args, 1));
}
BUILTIN_ADAPTER(matrix_set) {
  if (!args[1].is(Kind::Array)) return ReportError("Illegal argument type, expecting matrix");
  if (arg_array(args, 1)->length != 16) return ReportError("Illegal matrix");
  std::array<float, 16> m{};
  for (int32_t k = 0; k < 16; ++k) m[static_cast<size_t>(k)] = static_cast<float>(value_to_real(array_get(args[1], k)));
  DrawState& s = draw_state();
  switch (arg_int32(args, 0)) {
    case 0:
      s.view = m;
      break;
    case 1:
      s.projection = m;
      break;
    case 2:
      s.world = m;
      break;
    default:
      return;
  }
  apply_transform();
}

// The background colour of the running room.
BUILTIN_ADAPTER(__background_set_colour) {
  if (Room* room = current_room()) room->background_colour = static_cast<uint32_t>(arg_int64(args, 0)) & 0xFFFFFF;
}

}  // namespace

void register_graphics_builtins() {
  register_colour_builtins();
  register_primitive_builtins();
  register_text_drawing_builtins();
  builtin_register("surface_create", builtin_surface_create, -1);
  builtin_register("surface_exists", builtin_surface_exists, 1);
  builtin_register("surface_get_width", builtin_surface_get_width, 1);
  builtin_register("surface_get_height", builtin_surface_get_height, 1);
  builtin_register("surface_get_texture", builtin_surface_get_texture, 1);
  builtin_register("surface_set_target", builtin_surface_set_target, 1);
  builtin_register("surface_reset_target", builtin_surface_reset_target, 0);
  builtin_register("surface_free", builtin_surface_free, 1);
  builtin_register("surface_resize", builtin_surface_resize, 3);
  builtin_register("surface_getpixel", builtin_surface_getpixel, 3);
  builtin_register("surface_save", builtin_surface_save, 2);
  builtin_register("draw_surface", builtin_draw_surface, 3);
  builtin_register("draw_surface_ext", builtin_draw_surface_ext, 8);
  builtin_register("draw_surface_stretched", builtin_draw_surface_stretched, 5);
  builtin_register("draw_surface_part", builtin_draw_surface_part, 7);
  builtin_register("application_surface_enable", builtin_application_surface_enable, 1);
  builtin_register("sprite_add", builtin_sprite_add, 6);
  builtin_register("sprite_create_from_surface", builtin_sprite_create_from_surface, 9);
  builtin_register("sprite_delete", builtin_sprite_delete, 1);
  builtin_register("sprite_collision_mask", builtin_sprite_collision_mask, 9);
  builtin_register("draw_sprite", builtin_draw_sprite, 4);
  builtin_register("draw_sprite_ext", builtin_draw_sprite_ext, 9);
  builtin_register("draw_sprite_stretched", builtin_draw_sprite_stretched, 6);
  builtin_register("draw_sprite_stretched_ext", builtin_draw_sprite_stretched_ext, 8);
  builtin_register("draw_self", builtin_draw_self, 0);
  builtin_register("draw_getpixel", builtin_draw_getpixel, 2);
  builtin_register("screen_save", builtin_screen_save, 1);
  builtin_register("gpu_set_texfilter", builtin_gpu_set_texfilter, -1);
  builtin_register("gpu_set_blendmode_ext", builtin_gpu_set_blendmode_ext, -1);
  builtin_register("matrix_set", builtin_matrix_set, 2);
  builtin_register("__background_set_colour", builtin___background_set_colour, 1);
}
