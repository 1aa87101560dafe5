#include "runtime/Platform/Window.h"

#include <SDL.h>
#include <SDL_opengl.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

#include "runtime/IO/Input.h"
#include "runtime/Platform/sdl/SdlWindow.h"

namespace {

using platform::Window;

// Tests never show a window: a system window goes to the offscreen driver.
class WindowTest : public ::testing::Test {
 protected:
  void SetUp() override {
    setenv("SDL_VIDEODRIVER", "offscreen", 1);
    input_reset();
  }
};

Window& headless_window(int width = 320, int height = 240) {
  Window& w = platform::make_window(true);
  EXPECT_TRUE(w.create(width, height, "Velant", {}));
  return w;
}

TEST_F(WindowTest, HeadlessWindowKeepsSizeCaptionPositionAndFullScreen) {
  Window& w = headless_window(800, 600);
  EXPECT_EQ(&platform::window(), &w);
  EXPECT_EQ(w.size().width, 800);
  EXPECT_EQ(w.size().height, 600);
  EXPECT_EQ(w.caption(), "Velant");
  EXPECT_FALSE(w.fullscreen());
  w.set_size(1024, 700);
  w.set_caption("Velant - progetto");
  w.set_position(15, 25);
  w.set_fullscreen(true);
  w.set_cursor(platform::CursorShape::None);
  EXPECT_EQ(w.size().width, 1024);
  EXPECT_EQ(w.size().height, 700);
  EXPECT_EQ(w.caption(), "Velant - progetto");
  EXPECT_EQ(w.position().x, 15);
  EXPECT_EQ(w.position().y, 25);
  EXPECT_TRUE(w.fullscreen());
  EXPECT_FALSE(w.cursor_visible());
  EXPECT_TRUE(w.has_focus());
  EXPECT_FALSE(w.take_resized()) << "the runtime's own resize brings no notice";
}

TEST_F(WindowTest, HeldCloseIsReportedOnceAndUnheldCloseQuits) {
  Window& w = headless_window();
  w.hold_close(true);
  EXPECT_TRUE(w.close_held());
  w.simulate_close_request();
  w.simulate_close_request();
  w.poll_events();
  EXPECT_TRUE(w.close_requested());
  EXPECT_FALSE(w.should_quit());
  EXPECT_TRUE(w.take_close_request());
  EXPECT_FALSE(w.close_requested());
  EXPECT_FALSE(w.take_close_request()) << "two clicks before the check are one report";

  w.hold_close(false);
  w.simulate_close_request();
  EXPECT_FALSE(w.take_close_request());
  EXPECT_TRUE(w.should_quit());
}

// GL 1.0 entry points, fetched through SDL so that the test needs no GL library of its own.
TEST_F(WindowTest, HeadlessWindowClearsItsOffscreenSurface) {
  Window& w = headless_window(64, 48);
  if (!w.gl_context_ready()) GTEST_SKIP() << "no offscreen OpenGL context on this system";
  auto clear_color = reinterpret_cast<void (*)(GLfloat, GLfloat, GLfloat, GLfloat)>(
      SDL_GL_GetProcAddress("glClearColor"));
  auto clear = reinterpret_cast<void (*)(GLbitfield)>(SDL_GL_GetProcAddress("glClear"));
  auto read_pixels = reinterpret_cast<void (*)(GLint, GLint, GLsizei, GLsizei, GLenum, GLenum, void*)>(
      SDL_GL_GetProcAddress("glReadPixels"));
  auto get_integer = reinterpret_cast<void (*)(GLenum, GLint*)>(SDL_GL_GetProcAddress("glGetIntegerv"));
  ASSERT_TRUE(clear_color && clear && read_pixels && get_integer);
  GLint major = 0, minor = 0, profile = 0;
  get_integer(GL_MAJOR_VERSION, &major);
  get_integer(GL_MINOR_VERSION, &minor);
  get_integer(GL_CONTEXT_PROFILE_MASK, &profile);
  EXPECT_GE(major * 10 + minor, 33);
  EXPECT_TRUE(profile & GL_CONTEXT_CORE_PROFILE_BIT) << "a core profile context";

  clear_color(1.0f, 0.5f, 0.0f, 1.0f);
  clear(GL_COLOR_BUFFER_BIT);
  unsigned char pixel[4] = {};
  read_pixels(10, 20, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, pixel);
  EXPECT_EQ(pixel[0], 255);
  EXPECT_NEAR(pixel[1], 128, 1);
  EXPECT_EQ(pixel[2], 0);
  EXPECT_EQ(pixel[3], 255);
  w.swap();
  EXPECT_TRUE(w.gl_context_ready());
}

// Pushes one SDL event for the window to take.
void push(SDL_Event event) { ASSERT_EQ(SDL_PushEvent(&event), 1) << SDL_GetError(); }

SDL_Event key(Uint32 type, SDL_Keycode code) {
  SDL_Event e{};
  e.type = type;
  e.key.state = type == SDL_KEYDOWN ? SDL_PRESSED : SDL_RELEASED;
  e.key.keysym.sym = code;
  return e;
}

SDL_Event window_event(SDL_WindowEventID id) {
  SDL_Event e{};
  e.type = SDL_WINDOWEVENT;
  e.window.event = id;
  return e;
}

TEST_F(WindowTest, SystemWindowTurnsEventsIntoInputAndNotes) {
  Window& w = platform::make_window(false);
  if (!w.create(640, 480, "Velant", {})) GTEST_SKIP() << "no video driver: " << SDL_GetError();
  EXPECT_EQ(w.size().width, 640);
  EXPECT_EQ(w.size().height, 480);
  EXPECT_EQ(w.caption(), "Velant");
  w.set_caption("Editor");
  EXPECT_EQ(w.caption(), "Editor");
  w.poll_events();  // what creating the window brought

  push(key(SDL_KEYDOWN, SDLK_a));
  push(key(SDL_KEYDOWN, SDLK_RSHIFT));
  push(key(SDL_KEYUP, SDLK_RSHIFT));
  SDL_Event text{};
  text.type = SDL_TEXTINPUT;
  std::strcpy(text.text.text, "à");
  push(text);
  SDL_Event button{};
  button.type = SDL_MOUSEBUTTONDOWN;
  button.button.button = SDL_BUTTON_RIGHT;
  button.button.x = 33;
  button.button.y = 44;
  push(button);
  SDL_Event wheel{};
  wheel.type = SDL_MOUSEWHEEL;
  wheel.wheel.y = -1;
  wheel.wheel.direction = SDL_MOUSEWHEEL_NORMAL;
  push(wheel);
  push(window_event(SDL_WINDOWEVENT_RESIZED));
  push(window_event(SDL_WINDOWEVENT_FOCUS_LOST));
  w.poll_events();
  input_begin_frame();

  EXPECT_TRUE(key_pressed(65));
  EXPECT_TRUE(key_down(65));
  EXPECT_TRUE(key_pressed(KEY_SHIFT));
  EXPECT_TRUE(key_released(KEY_SHIFT));
  EXPECT_EQ(keyboard_string(), "à");
  EXPECT_TRUE(mouse_button_pressed(MOUSE_RIGHT));
  EXPECT_EQ(mouse_x(), 33);
  EXPECT_EQ(mouse_y(), 44);
  EXPECT_TRUE(wheel_down());
  EXPECT_FALSE(wheel_up());
  EXPECT_TRUE(w.take_resized());
  EXPECT_FALSE(w.take_resized());
  EXPECT_FALSE(w.has_focus());

  w.set_size(500, 400);
  w.poll_events();
  EXPECT_FALSE(w.take_resized()) << "the runtime's own resize brings no notice";

  w.hold_close(true);
  push(window_event(SDL_WINDOWEVENT_CLOSE));
  w.poll_events();
  EXPECT_FALSE(w.should_quit());
  EXPECT_TRUE(w.take_close_request());
  EXPECT_FALSE(w.take_close_request());
  w.hold_close(false);
  push(window_event(SDL_WINDOWEVENT_CLOSE));
  w.poll_events();
  EXPECT_TRUE(w.should_quit());
}

TEST(WindowSizeTest, SidesLongerThanTheScreenAreCut) {
  platform::WindowSize s = platform::fit_window_size(800, 600, 1920, 1040, false);
  EXPECT_EQ(s.width, 800);
  EXPECT_EQ(s.height, 600);
  s = platform::fit_window_size(2000, 600, 1000, 1040, false);
  EXPECT_EQ(s.width, 1000);
  EXPECT_EQ(s.height, 600);
  s = platform::fit_window_size(2000, 600, 1000, 1040, true);
  EXPECT_EQ(s.width, 1000);
  EXPECT_EQ(s.height, 300);
  s = platform::fit_window_size(1600, 1200, 1920, 600, true);
  EXPECT_EQ(s.width, 800);
  EXPECT_EQ(s.height, 600);
  s = platform::fit_window_size(4000, 2000, 1000, 400, true);
  EXPECT_EQ(s.width, 800) << "both cuts apply in turn";
  EXPECT_EQ(s.height, 400);
}

TEST(SdlKeyTableTest, SdlKeysGetTheRuntimeCodes) {
  using platform::key_code_from_sdl;
  EXPECT_EQ(key_code_from_sdl(SDLK_BACKSPACE), 8);
  EXPECT_EQ(key_code_from_sdl(SDLK_TAB), 9);
  EXPECT_EQ(key_code_from_sdl(SDLK_RETURN), 13);
  EXPECT_EQ(key_code_from_sdl(SDLK_KP_ENTER), 13);
  EXPECT_EQ(key_code_from_sdl(SDLK_LSHIFT), 16);
  EXPECT_EQ(key_code_from_sdl(SDLK_RSHIFT), 16);
  EXPECT_EQ(key_code_from_sdl(SDLK_LCTRL), 17);
  EXPECT_EQ(key_code_from_sdl(SDLK_RCTRL), 17);
  EXPECT_EQ(key_code_from_sdl(SDLK_LALT), 18);
  EXPECT_EQ(key_code_from_sdl(SDLK_ESCAPE), 27);
  EXPECT_EQ(key_code_from_sdl(SDLK_SPACE), 32);
  EXPECT_EQ(key_code_from_sdl(SDLK_PAGEUP), 33);
  EXPECT_EQ(key_code_from_sdl(SDLK_PAGEDOWN), 34);
  EXPECT_EQ(key_code_from_sdl(SDLK_END), 35);
  EXPECT_EQ(key_code_from_sdl(SDLK_HOME), 36);
  EXPECT_EQ(key_code_from_sdl(SDLK_LEFT), 37);
  EXPECT_EQ(key_code_from_sdl(SDLK_UP), 38);
  EXPECT_EQ(key_code_from_sdl(SDLK_RIGHT), 39);
  EXPECT_EQ(key_code_from_sdl(SDLK_DOWN), 40);
  EXPECT_EQ(key_code_from_sdl(SDLK_INSERT), 45);
  EXPECT_EQ(key_code_from_sdl(SDLK_DELETE), 46);
  for (int i = 0; i < 10; ++i) EXPECT_EQ(key_code_from_sdl(SDLK_0 + i), 48 + i);
  for (int i = 0; i < 26; ++i) EXPECT_EQ(key_code_from_sdl(SDLK_a + i), 65 + i);
  const SDL_Keycode numpad[] = {SDLK_KP_0, SDLK_KP_1, SDLK_KP_2, SDLK_KP_3, SDLK_KP_4,
                                SDLK_KP_5, SDLK_KP_6, SDLK_KP_7, SDLK_KP_8, SDLK_KP_9};
  for (int i = 0; i < 10; ++i) EXPECT_EQ(key_code_from_sdl(numpad[i]), 96 + i);
  const SDL_Keycode function_keys[] = {SDLK_F1, SDLK_F2, SDLK_F3, SDLK_F4,  SDLK_F5,  SDLK_F6,
                                       SDLK_F7, SDLK_F8, SDLK_F9, SDLK_F10, SDLK_F11, SDLK_F12};
  for (int i = 0; i < 12; ++i) EXPECT_EQ(key_code_from_sdl(function_keys[i]), 112 + i);
  EXPECT_EQ(key_code_from_sdl(SDLK_F5), 116);
  EXPECT_EQ(key_code_from_sdl(SDLK_SEMICOLON), 186);
  EXPECT_EQ(key_code_from_sdl(SDLK_EQUALS), 187);
  EXPECT_EQ(key_code_from_sdl(SDLK_COMMA), 188);
  EXPECT_EQ(key_code_from_sdl(SDLK_MINUS), 189);
  EXPECT_EQ(key_code_from_sdl(SDLK_PERIOD), 190);
  EXPECT_EQ(key_code_from_sdl(SDLK_SLASH), 191);
  EXPECT_EQ(key_code_from_sdl(SDLK_BACKQUOTE), 192);
  EXPECT_EQ(key_code_from_sdl(SDLK_LEFTBRACKET), 219);
  EXPECT_EQ(key_code_from_sdl(SDLK_BACKSLASH), 220);
  EXPECT_EQ(key_code_from_sdl(SDLK_RIGHTBRACKET), 221);
  EXPECT_EQ(key_code_from_sdl(SDLK_QUOTE), 222);
  EXPECT_EQ(key_code_from_sdl(0xE8), 186) << "è of an Italian keyboard";
  EXPECT_EQ(key_code_from_sdl(0xF2), 192) << "ò of an Italian keyboard";
  EXPECT_EQ(key_code_from_sdl(SDLK_VOLUMEUP), 0);
  EXPECT_EQ(key_code_from_sdl(SDLK_UNKNOWN), 0);

  EXPECT_EQ(platform::mouse_button_from_sdl(SDL_BUTTON_LEFT), 1);
  EXPECT_EQ(platform::mouse_button_from_sdl(SDL_BUTTON_RIGHT), 2);
  EXPECT_EQ(platform::mouse_button_from_sdl(SDL_BUTTON_MIDDLE), 3);
  EXPECT_EQ(platform::mouse_button_from_sdl(SDL_BUTTON_X1), 0);
}

}  // namespace
