#include "runtime/Platform/Window.h"

#include <SDL.h>
#include <SDL_opengl.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "runtime/Platform/KeyCodes.h"
#include "runtime/Platform/sdl/SdlWindow.h"

namespace {

using platform::Window;

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

std::pair<int, int> sides(platform::WindowSize s) { return {s.width, s.height}; }

// GL entry points come through SDL, so that the test needs no GL library of its own.
template <class Function>
Function* gl(const char* name) {
  return reinterpret_cast<Function*>(SDL_GL_GetProcAddress(name));
}

// Two clicks on the close button, held back or not: held back they are one
// request, taken once; otherwise the program is to quit.
void expect_close_requests(Window& w, const std::function<void()>& click) {
  RecordedInput input;
  for (const bool held : {true, false}) {
    w.hold_close(held);
    EXPECT_EQ(w.close_held(), held);
    click();
    click();
    w.poll_events(input);
    EXPECT_EQ(w.close_requested(), held);
    EXPECT_EQ(w.should_quit(), !held);
    EXPECT_EQ(w.take_close_request(), held);
    EXPECT_FALSE(w.close_requested());
    EXPECT_FALSE(w.take_close_request()) << "two clicks before the check are one report";
  }
}

TEST(WindowTest, HeadlessWindowKeepsItsStateAndDrawsOffscreen) {
  Window& w = platform::make_window(true);
  ASSERT_TRUE(w.create(800, 600, "Velant", {}));
  EXPECT_EQ(&platform::window(), &w);
  EXPECT_EQ(sides(w.size()), std::pair(800, 600));
  EXPECT_EQ(w.caption(), "Velant");
  EXPECT_FALSE(w.fullscreen());
  w.set_size(1024, 700);
  w.set_fullscreen(true);
  w.set_cursor(platform::CursorShape::None);
  EXPECT_EQ(sides(w.size()), std::pair(1024, 700));
  EXPECT_TRUE(w.fullscreen());
  EXPECT_FALSE(w.cursor_visible());
  EXPECT_TRUE(w.has_focus());
  EXPECT_FALSE(w.take_resized()) << "the runtime's own resize brings no notice";
  expect_close_requests(w, [&w] { w.simulate_close_request(); });

  if (!w.gl_context_ready()) GTEST_SKIP() << "no offscreen OpenGL context on this system";
  const auto get_integer = gl<void(GLenum, GLint*)>("glGetIntegerv");
  GLint major = 0, minor = 0, profile = 0;
  get_integer(GL_MAJOR_VERSION, &major);
  get_integer(GL_MINOR_VERSION, &minor);
  get_integer(GL_CONTEXT_PROFILE_MASK, &profile);
  EXPECT_GE(major * 10 + minor, 33);
  EXPECT_TRUE(profile & GL_CONTEXT_CORE_PROFILE_BIT);
  gl<void(GLfloat, GLfloat, GLfloat, GLfloat)>("glClearColor")(1.0f, 0.5f, 0.0f, 1.0f);
  gl<void(GLbitfield)>("glClear")(GL_COLOR_BUFFER_BIT);
  unsigned char pixel[4] = {};
  gl<void(GLint, GLint, GLsizei, GLsizei, GLenum, GLenum, void*)>("glReadPixels")(10, 20, 1, 1, GL_RGBA,
                                                                                  GL_UNSIGNED_BYTE, pixel);
  EXPECT_EQ((std::vector<int>{pixel[0], pixel[2], pixel[3]}), (std::vector<int>{255, 0, 255}));
  EXPECT_NEAR(pixel[1], 128, 1);
  w.swap();
  EXPECT_TRUE(w.gl_context_ready());
}

// Pushes one SDL event of `type`, filled in by `fill`, for the window to take.
void push(Uint32 type, const std::function<void(SDL_Event&)>& fill) {
  SDL_Event e{};
  e.type = type;
  fill(e);
  ASSERT_EQ(SDL_PushEvent(&e), 1) << SDL_GetError();
}
void push_key(Uint32 type, SDL_Keycode code) { push(type, [&](SDL_Event& e) { e.key.keysym.sym = code; }); }
void push_window_event(SDL_WindowEventID id) { push(SDL_WINDOWEVENT, [&](SDL_Event& e) { e.window.event = id; }); }

TEST(WindowTest, SystemWindowTurnsEventsIntoInputAndNotes) {
  setenv("SDL_VIDEODRIVER", "offscreen", 1);  // tests never show a window
  RecordedInput input;
  Window& w = platform::make_window(false);
  if (!w.create(640, 480, "Velant", {})) GTEST_SKIP() << "no video driver: " << SDL_GetError();
  EXPECT_EQ(sides(w.size()), std::pair(640, 480));
  w.set_caption("Editor");
  EXPECT_EQ(w.caption(), "Editor");
  w.poll_events(input);  // what creating the window brought
  input.events.clear();

  push_key(SDL_KEYDOWN, SDLK_a);
  push_key(SDL_KEYDOWN, SDLK_RSHIFT);
  push_key(SDL_KEYUP, SDLK_RSHIFT);
  push(SDL_TEXTINPUT, [](SDL_Event& e) { std::strcpy(e.text.text, "à"); });
  push(SDL_MOUSEBUTTONDOWN, [](SDL_Event& e) {
    e.button.button = SDL_BUTTON_RIGHT;
    e.button.x = 33;
    e.button.y = 44;
  });
  push(SDL_MOUSEWHEEL, [](SDL_Event& e) { e.wheel.y = -1; });
  push_window_event(SDL_WINDOWEVENT_RESIZED);
  push_window_event(SDL_WINDOWEVENT_FOCUS_LOST);
  w.poll_events(input);
  EXPECT_EQ(input.events, std::vector<std::string>{"key 65 1"}) << "what follows a key press waits a frame";
  w.poll_events(input);
  EXPECT_EQ(input.events.size(), 2u) << "and a key just pressed stays down for its frame";
  w.poll_events(input);
  EXPECT_EQ(input.events, (std::vector<std::string>{"key 65 1", "key 16 1", "key 16 0", "text à", "move 33 44",
                                                    "button 2 1", "wheel -1 0"}));
  EXPECT_TRUE(w.take_resized());
  EXPECT_FALSE(w.take_resized());
  EXPECT_FALSE(w.has_focus());
  w.set_size(500, 400);
  w.poll_events(input);
  EXPECT_FALSE(w.take_resized()) << "the runtime's own resize brings no notice";

  // The system's close button goes the same way as the headless one.
  expect_close_requests(w, [] { push_window_event(SDL_WINDOWEVENT_CLOSE); });
}

TEST(WindowSizeTest, SidesLongerThanTheScreenAreCut) {
  const struct { int width, height, area_width, area_height; bool keep_aspect; std::pair<int, int> fitted; } cases[] = {
      {800, 600, 1920, 1040, false, {800, 600}},    // fits: unchanged
      {2000, 600, 1000, 1040, false, {1000, 600}},  // only the long side is cut
      {2000, 600, 1000, 1040, true, {1000, 300}},   // the other side follows
      {1600, 1200, 1920, 600, true, {800, 600}},
      {4000, 2000, 1000, 400, true, {800, 400}},    // both cuts apply in turn
  };
  for (const auto& c : cases) {
    EXPECT_EQ(sides(platform::fit_window_size(c.width, c.height, c.area_width, c.area_height, c.keep_aspect)), c.fitted)
        << c.width << "x" << c.height << " in " << c.area_width << "x" << c.area_height;
  }
}

TEST(SdlKeyTableTest, SdlKeysAndButtonsGetTheRuntimeCodes) {
  using platform::key_code_from_sdl;
  const std::pair<SDL_Keycode, int> keys[] = {
      {SDLK_BACKSPACE, 8}, {SDLK_TAB, 9}, {SDLK_RETURN, 13}, {SDLK_KP_ENTER, 13}, {SDLK_LSHIFT, 16},
      {SDLK_RSHIFT, 16}, {SDLK_LCTRL, 17}, {SDLK_RCTRL, 17}, {SDLK_LALT, 18}, {SDLK_ESCAPE, 27}, {SDLK_SPACE, 32},
      {SDLK_PAGEUP, 33}, {SDLK_PAGEDOWN, 34}, {SDLK_END, 35}, {SDLK_HOME, 36}, {SDLK_LEFT, 37}, {SDLK_UP, 38},
      {SDLK_RIGHT, 39}, {SDLK_DOWN, 40}, {SDLK_INSERT, 45}, {SDLK_DELETE, 46}, {SDLK_KP_0, 96},
      {SDLK_SEMICOLON, 186}, {SDLK_EQUALS, 187}, {SDLK_COMMA, 188}, {SDLK_MINUS, 189}, {SDLK_PERIOD, 190},
      {SDLK_SLASH, 191}, {SDLK_BACKQUOTE, 192}, {SDLK_LEFTBRACKET, 219}, {SDLK_BACKSLASH, 220},
      {SDLK_RIGHTBRACKET, 221}, {SDLK_QUOTE, 222}, {SDLK_VOLUMEUP, 0}, {SDLK_UNKNOWN, 0},
      {0xE8, 186}, {0xF2, 192},  // è and ò of an Italian keyboard
  };
  for (const auto& [sdl, code] : keys) EXPECT_EQ(key_code_from_sdl(sdl), code) << "SDL key " << sdl;
  // Runs of keys whose SDL codes follow each other: the first, how many, the first's code.
  const struct { SDL_Keycode first; int count, code; } runs[] = {
      {SDLK_0, 10, 48}, {SDLK_a, 26, 65}, {SDLK_KP_1, 9, 97}, {SDLK_F1, 12, 112}};
  for (const auto& run : runs) {
    for (int i = 0; i < run.count; ++i) EXPECT_EQ(key_code_from_sdl(run.first + i), run.code + i) << run.first + i;
  }
  for (const auto& [sdl, button] : {std::pair{SDL_BUTTON_LEFT, 1}, {SDL_BUTTON_RIGHT, 2}, {SDL_BUTTON_MIDDLE, 3},
                                    {SDL_BUTTON_X1, 0}})
    EXPECT_EQ(platform::mouse_button_from_sdl(sdl), button) << "SDL button " << sdl;
}

}  // namespace
