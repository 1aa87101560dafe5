// The entry point of every test program: tests run headless whatever the
// environment, with no sound device and an offscreen video driver.
#include <gtest/gtest.h>

#include <cstdlib>

#include "runtime/Platform/Window.h"

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
  const int result = RUN_ALL_TESTS();
#ifdef __SANITIZE_ADDRESS__
  // For the same reason, a test program of another folder that opened a
  // window (and with it Mesa) ends without the leak check at exit; ctest
  // runs each test alone, so only the tests that draw go unchecked.
  if (platform::window_if_made()) std::_Exit(result);
#endif
  return result;
}
