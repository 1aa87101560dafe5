// The entry point of every test program: tests run headless whatever the
// environment, with no sound device and an offscreen video driver.
#include <gtest/gtest.h>

#include <cstdlib>

#ifdef VELANT_NO_LEAK_CHECK
// Programs that open an OpenGL context meet Mesa's software driver, which
// leaves allocations behind at exit and unloads itself, so its frames can't
// be suppressed by name: leak checking is off for these programs alone.
extern "C" const char* __asan_default_options() { return "detect_leaks=0"; }
#endif

int main(int argc, char** argv) {
  setenv("VELANT_HEADLESS", "1", 0);
  setenv("SDL_VIDEODRIVER", "offscreen", 0);
  setenv("ALSOFT_DRIVERS", "null", 0);
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
