#include "runtime/Platform/Window.h"

#include <SDL.h>
#include <SDL_opengl.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <functional>
#include <utility>

#include "runtime/Platform/KeyCodes.h"
#include "runtime/Platform/sdl/SdlWindow.h"

namespace {

using platform::Window;

// Tests never show a window: a system window goes to the offscreen driver.
class WindowTest : public ::testing::Test {
 protected:
  void SetUp() override {
    setenv("SDL_VIDEODRIVER", "offscreen", 1);
  }
};

// What the window handed on, one line an event.
struct RecordedInput final : platform::InputListener {
  std::vector<std::string> events;
  void key(int code, bool down) override { add("key", code, down); }
  void text(const char* utf8) override { events.push_back(std::string("text ") + utf8); }
  void mouse_move(int x, int y) override { add("move", x, y); }
  void mouse_button(int button, bool down) override { add("button", button, down); }
  void wheel(int dy) override { add("wheel", dy, 0); }
  void add(const char* what, int a, int b) {
    events.push_back(std::string(what) + " " + std::to_string(a) + " " + std::to_string(b));
  }
};

Window& headless_window(int width = 320, int height = 240) {
  Window& w = platform::make_window(true);
  EXPECT_TRUE(w.create(width, height, "Velant", {}));
  return w;
}

std::pair<int, int> sides(platform::WindowSize s) { return {s.width, s.height}; }

TEST_F(WindowTest, HeadlessWindowKeepsSizeCaptionPositionAndFullScreen) {
  Window& w = headless_window(800, 600);
  EXPECT_EQ(&platform::window(), &w);
  EXPECT_EQ(sides(w.size()), std::pair(800, 600));
  EXPECT_EQ(w.caption(), "Velant");
  EXPECT_FALSE(w.fullscreen());
  w.set_size(1024, 700);
  w.set_caption("Velant - progetto");
  w.set_position(15, 25);
  w.set_fullscreen(true);
  w.set_cursor(platform::CursorShape::None);
  EXPECT_EQ(sides(w.size()), std::pair(1024, 700));
  EXPECT_EQ(w.caption(), "Velant - progetto");
  EXPECT_EQ(w.position().x, 15);
  EXPECT_EQ(w.position().y, 25);
  EXPECT_TRUE(w.fullscreen());
  EXPECT_FALSE(w.cursor_visible());
  EXPECT_TRUE(w.has_focus());
  EXPECT_FALSE(w.take_resized()) << "the runtime's own resize brings no notice";
}

TEST_F(WindowTest, HeldCloseIsReportedOnceAndUnheldCloseQuits) {
  RecordedInput input;
  Window& w = headless_window();
  w.hold_close(true);
  EXPECT_TRUE(w.close_held());
  w.simulate_close_request();
  w.simulate_close_request();
  w.poll_events(input);
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

// Pushes one SDL event of `type`, filled in by `fill`, for the window to take.
void push(Uint32 type, const std::function<void(SDL_Event&)>& fill = nullptr) {
  SDL_Event e{};
  e.type = type;
  if (fill) fill(e);
  ASSERT_EQ(SDL_PushEvent(&e), 1) << SDL_GetError();
}

void push_key(Uint32 type, SDL_Keycode code) {
  push(type, [&](SDL_Event& e) {
    e.key.state = type == SDL_KEYDOWN ? SDL_PRESSED : SDL_RELEASED;
    e.key.keysym.sym = code;
  });
}

void push_window_event(SDL_WindowEventID id) {
  push(SDL_WINDOWEVENT, [&](SDL_Event& e) { e.window.event = id; });
}

TEST_F(WindowTest, SystemWindowTurnsEventsIntoInputAndNotes) {
  RecordedInput input;
  Window& w = platform::make_window(false);
  if (!w.create(640, 480, "Velant", {})) GTEST_SKIP() << "no video driver: " << SDL_GetError();
  EXPECT_EQ(sides(w.size()), std::pair(640, 480));
  EXPECT_EQ(w.caption(), "Velant");
  w.set_caption("Editor");
  EXPECT_EQ(w.caption(), "Editor");
  w.poll_events(input);  // what creating the window brought

  push_key(SDL_KEYDOWN, SDLK_a);
  push_key(SDL_KEYDOWN, SDLK_RSHIFT);
  push_key(SDL_KEYUP, SDLK_RSHIFT);
  push(SDL_TEXTINPUT, [](SDL_Event& e) { std::strcpy(e.text.text, "à"); });
  push(SDL_MOUSEBUTTONDOWN, [](SDL_Event& e) {
    e.button.button = SDL_BUTTON_RIGHT;
    e.button.x = 33;
    e.button.y = 44;
  });
  push(SDL_MOUSEWHEEL, [](SDL_Event& e) {
    e.wheel.y = -1;
    e.wheel.direction = SDL_MOUSEWHEEL_NORMAL;
  });
  push_window_event(SDL_WINDOWEVENT_RESIZED);
  push_window_event(SDL_WINDOWEVENT_FOCUS_LOST);
  input.events.clear();
  w.poll_events(input);

  const std::vector<std::string> expected = {
      "key 65 1", "key 16 1", "key 16 0", "text à", "move 33 44", "button 2 1", "wheel -1 0"};
  EXPECT_EQ(input.events, expected);
  EXPECT_TRUE(w.take_resized());
  EXPECT_FALSE(w.take_resized());
  EXPECT_FALSE(w.has_focus());

  w.set_size(500, 400);
  w.poll_events(input);
  EXPECT_FALSE(w.take_resized()) << "the runtime's own resize brings no notice";

  // The system's close button goes the same way as the headless one.
  w.hold_close(true);
  push_window_event(SDL_WINDOWEVENT_CLOSE);
  w.poll_events(input);
  EXPECT_FALSE(w.should_quit());
  EXPECT_TRUE(w.take_close_request());
  w.hold_close(false);
  push_window_event(SDL_WINDOWEVENT_CLOSE);
  w.poll_events(input);
  EXPECT_TRUE(w.should_quit());
}

TEST(WindowSizeTest, SidesLongerThanTheScreenAreCut) {
  struct Case {
    int width, height, area_width, area_height;
    bool keep_aspect;
    int fitted_width, fitted_height;
  };
  const Case cases[] = {
      {800, 600, 1920, 1040, false, 800, 600},    // fits: unchanged
      {2000, 600, 1000, 1040, false, 1000, 600},  // only the long side is cut
      {2000, 600, 1000, 1040, true, 1000, 300},   // the other side follows
      {1600, 1200, 1920, 600, true, 800, 600},
      {4000, 2000, 1000, 400, true, 800, 400},    // both cuts apply in turn
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << c.width << "x" << c.height << " in " << c.area_width << "x" << c.area_height);
    EXPECT_EQ(sides(platform::fit_window_size(c.width, c.height, c.area_width, c.area_height, c.keep_aspect)),
              std::pair(c.fitted_width, c.fitted_height));
  }
}

TEST(SdlKeyTableTest, SdlKeysGetTheRuntimeCodes) {
  using platform::key_code_from_sdl;
  const std::pair<SDL_Keycode, int> keys[] = {
      {SDLK_BACKSPACE, 8},  {SDLK_TAB, 9},          {SDLK_RETURN, 13},      {SDLK_KP_ENTER, 13},
      {SDLK_LSHIFT, 16},    {SDLK_RSHIFT, 16},      {SDLK_LCTRL, 17},       {SDLK_RCTRL, 17},
      {SDLK_LALT, 18},      {SDLK_ESCAPE, 27},      {SDLK_SPACE, 32},       {SDLK_PAGEUP, 33},
      {SDLK_PAGEDOWN, 34},  {SDLK_END, 35},         {SDLK_HOME, 36},        {SDLK_LEFT, 37},
      {SDLK_UP, 38},        {SDLK_RIGHT, 39},       {SDLK_DOWN, 40},        {SDLK_INSERT, 45},
      {SDLK_DELETE, 46},    {SDLK_SEMICOLON, 186},  {SDLK_EQUALS, 187},     {SDLK_COMMA, 188},
      {SDLK_MINUS, 189},    {SDLK_PERIOD, 190},     {SDLK_SLASH, 191},      {SDLK_BACKQUOTE, 192},
      {SDLK_LEFTBRACKET, 219}, {SDLK_BACKSLASH, 220}, {SDLK_RIGHTBRACKET, 221}, {SDLK_QUOTE, 222},
      {0xE8, 186},  // è of an Italian keyboard
      {0xF2, 192},  // ò of an Italian keyboard
      {SDLK_VOLUMEUP, 0},   {SDLK_UNKNOWN, 0},
  };
  for (const auto& [sdl, code] : keys) EXPECT_EQ(key_code_from_sdl(sdl), code) << "SDL key " << sdl;
  for (int i = 0; i < 10; ++i) EXPECT_EQ(key_code_from_sdl(SDLK_0 + i), 48 + i);
  for (int i = 0; i < 26; ++i) EXPECT_EQ(key_code_from_sdl(SDLK_a + i), 65 + i);
  const SDL_Keycode numpad[] = {SDLK_KP_0, SDLK_KP_1, SDLK_KP_2, SDLK_KP_3, SDLK_KP_4,
                                SDLK_KP_5, SDLK_KP_6, SDLK_KP_7, SDLK_KP_8, SDLK_KP_9};
  for (int i = 0; i < 10; ++i) EXPECT_EQ(key_code_from_sdl(numpad[i]), 96 + i);
  const SDL_Keycode function_keys[] = {SDLK_F1, SDLK_F2, SDLK_F3, SDLK_F4,  SDLK_F5,  SDLK_F6,
                                       SDLK_F7, SDLK_F8, SDLK_F9, SDLK_F10, SDLK_F11, SDLK_F12};
  for (int i = 0; i < 12; ++i) EXPECT_EQ(key_code_from_sdl(function_keys[i]), 112 + i);

  EXPECT_EQ(platform::mouse_button_from_sdl(SDL_BUTTON_LEFT), 1);
  EXPECT_EQ(platform::mouse_button_from_sdl(SDL_BUTTON_RIGHT), 2);
  EXPECT_EQ(platform::mouse_button_from_sdl(SDL_BUTTON_MIDDLE), 3);
  EXPECT_EQ(platform::mouse_button_from_sdl(SDL_BUTTON_X1), 0);
}

}  // namespace
