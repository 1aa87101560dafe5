#include "runtime/Graphics/SurfaceOverClear.h"

#include <array>

#include "runtime/Graphics/Batch.h"
#include "runtime/Graphics/DrawState.h"
#include "runtime/Graphics/Primitives.h"
#include "runtime/Graphics/Surfaces.h"

namespace {

// What the kept picture was made from: while all of it stays the same, so
// do the picture's pixels.
struct Recipe {
  int32_t source = NO_SURFACE;
  uint64_t source_version = 0;
  ClearTarget clear;
  double alpha = 1;
  int blend_source = 0, blend_destination = 0;
  bool filter = false;

  bool operator==(const Recipe&) const = default;
};

struct KeptPicture {
  Recipe recipe;
  int32_t surface = NO_SURFACE;
  uint64_t version = 0;  // the picture's own, as it was made: drawing on it spoils it
};

KeptPicture& kept() {
  static KeptPicture picture;
  return picture;
}

// Whether drawing coordinates are the target's pixels, the only case the picture stands for.
bool untransformed() {
  const DrawState& d = draw_state();
  return d.world == identity_matrix() && d.view == identity_matrix();
}

// Makes the kept picture as `recipe` says: the clear, then the surface drawn on it.
void make_picture(KeptPicture& picture, const Recipe& recipe) {
  const int width = recipe.clear.width, height = recipe.clear.height;
  if (!surface_exists(picture.surface) || surface_get_width(picture.surface) != width ||
      surface_get_height(picture.surface) != height) {
    surface_free(picture.surface);
    picture.surface = surface_create(width, height);
  }
  surface_set_target(picture.surface);
  draw_clear_alpha(recipe.clear.colour, recipe.clear.alpha);
  draw_surface(recipe.source, 0, 0);
  surface_reset_target();
  picture.recipe = recipe;
  picture.version = surface_version(picture.surface);
}

}  // namespace

void draw_surface_over_clear(double surface) {
  Recipe recipe;
  if (!surface_exists(surface) || !untransformed() || !target_holds_its_clear(recipe.clear)) {
    return draw_surface(surface, 0, 0);
  }
  DrawState& d = draw_state();
  recipe.source = static_cast<int32_t>(surface);
  recipe.source_version = surface_version(surface);
  recipe.alpha = d.alpha;
  recipe.blend_source = d.blend_source;
  recipe.blend_destination = d.blend_destination;
  recipe.filter = d.texture_filter;
  KeptPicture& picture = kept();
  if (!(picture.recipe == recipe) || !surface_exists(picture.surface) ||
      surface_version(picture.surface) != picture.version) {
    make_picture(picture, recipe);
  }
  // The copy: the picture's pixels replace the target's, alpha and all; by
  // the device's own copy between render targets where it can, else drawn
  // without blending.
  batch_flush();
  if (platform::gpu().copy_target(surface_texture(picture.surface))) return;
  const double alpha = d.alpha;
  d.alpha = 1;
  set_blend_mode(2, 1);
  draw_surface(picture.surface, 0, 0);
  set_blend_mode(recipe.blend_source, recipe.blend_destination);
  d.alpha = alpha;
}
