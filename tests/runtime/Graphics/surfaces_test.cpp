// Surfaces: ids, nested targets, freeing, resizing, saving, and their fatal words.
#include <filesystem>

#include "graphics_fixture.h"
#include "runtime/Graphics/ImageFile.h"
#include "support/Fatal.h"

namespace {

TEST_F(GraphicsTest, SurfaceIdsComeFromACounterAndFreedOnesStayFree) {
  const int32_t a = surface_create(8, 8);
  const int32_t b = surface_create(16, 4);
  EXPECT_EQ(b, a + 1);
  EXPECT_TRUE(surface_exists(a));
  EXPECT_EQ(surface_get_width(b), 16);
  EXPECT_EQ(surface_get_height(b), 4);
  surface_free(a);
  EXPECT_FALSE(surface_exists(a));
  EXPECT_EQ(surface_get_width(a), -1);
  EXPECT_EQ(surface_create(8, 8), b + 1) << "a freed id isn't given again";
  surface_free(-1);  // nothing
  surface_resize(b, 32, 20);
  EXPECT_EQ(surface_get_width(b), 32);
  EXPECT_EQ(surface_get_height(b), 20);
}

TEST_F(GraphicsTest, TargetsNestAndEachSurfaceKeepsWhatWasDrawnOnIt) {
  const int32_t outer = canvas(32, 32);
  draw_state().colour = 255;
  draw_rectangle(0, 0, 9, 9, false);
  const int32_t inner = canvas(16, 16);
  draw_state().colour = 16711680;
  draw_rectangle(0, 0, 15, 15, false);
  EXPECT_TRUE(is(pixel(2, 2), 0, 0, 255));
  surface_reset_target();
  // Back on the outer surface, with its own projection: 20, 20 is inside it.
  draw_state().colour = 65280;
  draw_rectangle(20, 20, 25, 25, false);
  EXPECT_TRUE(is(pixel(2, 2), 255, 0, 0));
  EXPECT_TRUE(is(pixel(22, 22), 0, 255, 0));
  // A surface drawn on another one.
  draw_surface(inner, 10, 0);
  EXPECT_TRUE(is(pixel(12, 2), 0, 0, 255));
  surface_reset_target();
  EXPECT_EQ(surface_stack_depth(), 0u);
  EXPECT_EQ(surface_getpixel(outer, 22, 22), 65280);
  EXPECT_EQ(surface_getpixel(inner, 5, 5), 16711680);
  EXPECT_EQ(surface_getpixel(inner, 50, 5), 0) << "outside the surface";
}

TEST_F(GraphicsTest, SurfaceMistakesAreFatalWithTheirWords) {
  EXPECT_FATAL(surface_create(0, 10),
               "Can't create a surface with either a width or height with a value less than or equal to zero");
  EXPECT_FATAL(surface_create(10, 10, 3), "Surface can't be created with format 3\n");
  EXPECT_FATAL(surface_reset_target(), "Unbalanced surface stack. you are trying to pop a surface that has not been set.");
  EXPECT_FATAL(surface_set_target(12345), "Trying to set a surface target that does not exist.");
  const int32_t s = surface_create(8, 8);
  EXPECT_FATAL(surface_resize(s, 0, 8), "Invalid surface dimensions");
  EXPECT_FATAL(surface_resize(s, 8, 9000), "Invalid surface dimensions");
  EXPECT_FATAL(surface_resize(12345, 8, 8), "Surface does not exist");
  surface_set_target(s);
  EXPECT_FATAL(surface_free(s),
               "Surface in use via surface_set_target(). It can not be freed until it has been removed from the "
               "surface stack.");
  EXPECT_FATAL(surface_resize(s, 4, 4),
               "Surface in use via surface_set_target(). It can not be resized until it has been removed from the "
               "surface stack.");
  // A frame that ends with a target still set.
  EXPECT_FATAL(set_base_target(NO_SURFACE, WINDOW_WIDTH, WINDOW_HEIGHT),
               "Unbalanced surface stack. You MUST use surface_reset_target() for each set.");
  EXPECT_EQ(surface_stack_depth(), 0u);
}

TEST_F(GraphicsTest, SurfacesAreSavedAsPngFiles) {
  const int32_t s = canvas(20, 10);
  draw_state().colour = 65535;
  draw_rectangle(0, 0, 4, 9, false);
  surface_reset_target();
  const std::string saved = file("surface.png");
  ASSERT_TRUE(surface_save(s, saved));
  Image image;
  ASSERT_TRUE(image_load(saved, image));
  EXPECT_EQ(image.width, 20);
  EXPECT_EQ(image.height, 10);
  EXPECT_EQ(image.rgba[0], 255);
  EXPECT_EQ(image.rgba[1], 255);
  EXPECT_EQ(image.rgba[2], 0);
  EXPECT_EQ(image.rgba[(5 * 20 + 10) * 4 + 0], 0) << "the black part";
  EXPECT_FALSE(surface_save(12345, file("none.png")));
  EXPECT_FALSE(std::filesystem::exists(file("none.png")));
}

TEST_F(GraphicsTest, SurfacesOfAnEarlierContextAreGone) {
  const int32_t s = surface_create(8, 8);
  ASSERT_TRUE(surface_exists(s));
  // A new window brings a new context: what the device held is lost.
  platform::Window& w = platform::make_window(true);
  ASSERT_TRUE(w.create(WINDOW_WIDTH, WINDOW_HEIGHT, "again", {}));
  EXPECT_FALSE(surface_exists(s));
  // Made again, a surface works as before.
  const int32_t again = canvas(8, 8);
  draw_rectangle(0, 0, 7, 7, false);
  EXPECT_TRUE(is(pixel(3, 3), 255, 255, 255));
  surface_reset_target();
  EXPECT_GT(again, s);
}

}  // namespace
