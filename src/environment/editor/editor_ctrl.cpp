#include "environment/editor/editor_ctrl.h"

#include <algorithm>
#include <filesystem>

#include "environment/colouring/code_box_colouring.h"
#include "environment/editor/environment_globals.h"
#include "environment/editor/header_buttons.h"
#include "environment/editor/pop_up.h"
#include "environment/editor/settings.h"
#include "environment/editor/slide_tabs.h"
#include "environment/editor/terse_form.h"
#include "environment/palette/palette.h"
#include "environment/rooms.h"
#include "environment/text_control/edit_menu.h"
#include "environment/text_control/input_text.h"
#include "runtime/Extension/WindowHook.h"
#include "runtime/Function/StringFunctions.h"
#include "runtime/Graphics/Colour.h"
#include "runtime/Graphics/DrawState.h"
#include "runtime/Graphics/Primitives.h"
#include "runtime/Graphics/TextDrawing.h"
#include "runtime/Font/TextState.h"
#include "runtime/Function/DialogFunctions.h"
#include "runtime/IO/FileNames.h"
#include "runtime/IO/Input.h"
#include "runtime/IO/WholeFile.h"
#include "runtime/IO/WindowFunctions.h"
#include "runtime/Object/Objects.h"
#include "runtime/Room/Room.h"

namespace {

int32_t g_object = -1;

constexpr int WINDOW_WIDTH = 1300, WINDOW_HEIGHT = 700;
constexpr double ASPECT = 53.84615384615385;  // height in hundredths of the width: 1300:700
constexpr double TEXT_TOP = 50, EDGE = 20, BOTTOM_MARGIN = 50;
constexpr double LINE_HEIGHT = 15;
constexpr double GUIDE_GREY = 8421504;
constexpr int KEY_B = 'B', KEY_I = 'I';
constexpr const char* TUTORIAL_PHRASE = "usa gioco delle direzioni";
// What hangs on the tutorial's mode, with where it stands.
struct TutorialPart {
  const char* object;
  float x, y;
};
constexpr TutorialPart TUTORIAL_PARTS[] = {
    {"gioco_mov_int_ctrl", 0, 0}, {"tutorial_ctrl", 0, 0}, {"tasto_esci_tutorial", 1185, 23}};
bool exists(const char* object) {
  const CObject* o = object_get(object_find(object));
  return o && !o->instances.empty();
}

void destroy_all(const char* object) { instances_destroy(object_find(object)); }

std::string sha1_hex(std::string_view text) { return std::string(rt::sha1_string_utf8(text).string_view()); }

std::string backup_path() { return file_folders().save_area + "backup.txt"; }

}  // namespace

EditorCtrl::EditorCtrl(float x, float y, int32_t id, int32_t object) : CInstance(x, y, id, object) {}
EditorCtrl::~EditorCtrl() = default;

EditorCtrl* editor_ctrl() {
  const CObject* object = object_get(g_object);
  if (!object || object->instances.empty()) return nullptr;
  return static_cast<EditorCtrl*>(object->instances.front());
}

bool editor_modal() { return pop_up_exists() || exists("update_ctrl"); }

ObjInputText& EditorCtrl::box() const { return *static_cast<ObjInputText*>(instance_find(box_id)); }

void EditorCtrl::create() {
  EnvironmentGlobals& g = environment_globals();
  g.nome_progetto = "";
  std::error_code ignored;
  std::filesystem::create_directories(file_folders().save_area + "Progetti salvati", ignored);
  window_command_hook(WINDOW_COMMAND_CLOSE);

  window_set_size(WINDOW_WIDTH, WINDOW_HEIGHT);
  if (Room* room = current_room()) room->width = WINDOW_WIDTH;
  w_height = window_get_width() / 100.0 * ASPECT;
  wx = window_get_x();
  wy = window_get_y();

  instance_create(0, 0, object_find("windows_size_ctrl"), 0);
  // The code box: no wrapping, no length limit, 41 lines of 15 pixels.
  ObjInputText* made = input_text_new(50, 50);
  made->construct(true, WINDOW_WIDTH - 50, 800, FONT_EDITOR, static_cast<uint32_t>(COLOUR_DARK_GREEN), 0.75, -1, -1,
                  CODE_BOX_LINES, LINE_HEIGHT, 0, 0, true, 0);
  box_id = made->id;
  colouring_ = std::make_unique<CodeBoxColouring>();
  made->painter = colouring_.get();
  made->enter_in_code_box = [](ObjInputText& box) {
    EditorCtrl* editor = editor_ctrl();
    return editor && code_box_enter(box, *editor);
  };
  add_tab = [](int slide) { create_tab(slide); };
  made->enable();
  message_box = made->text_utf8();

  create_header_buttons();
  made->set_misc(true, 2, -1, 65535, 1, 0, 1, false);
  if (Room* room = current_room()) room->background_colour = static_cast<uint32_t>(make_colour_hsv(hue, 150, 150));
  g.ms_enter = 0;
  sugg_span = 0;

  if (read_setting("Crash", 0) == 1) recover_after_crash();
  write_setting("Crash", 1);
  af = 0;
  wf = 7;
}

void EditorCtrl::recover_after_crash() {
  open_pop_up(PopUpKind::Recupero);
  environment_globals().nome_progetto = read_setting_text("nome_ultimo_progetto", "");
  // Without the backup the learner still hears what happened, and starts on an empty page.
  if (std::string text; file_read_whole(backup_path(), text)) load(text);
}

std::string EditorCtrl::whole_program() const {
  std::string program;
  for (int k = 1; k <= n_slide; ++k) program += slide_text[static_cast<size_t>(k)];
  return program;
}

void EditorCtrl::load(const std::string& text) {
  destroy_tabs();
  slide_text = {"", ""};
  n_slide = 1;
  slide_index = 1;
  // Lines as a text file gives them: a last line feed ends the last line, and makes no line of its own.
  size_t s = 1;
  int line = 1;
  for (size_t start = 0; start < text.size();) {
    size_t end = text.find('\n', start);
    if (end == std::string::npos) end = text.size();
    std::string_view read(text.data() + start, end - start);
    if (!read.empty() && read.back() == '\r') read.remove_suffix(1);
    slide_text[s].append(read).push_back('\n');
    start = end + 1;
    if (++line == SLIDE_LINES) {
      line = 1;
      ++s;
      slide_text.emplace_back();
      ++n_slide;
      if (n_slide == 2) create_tab(1);
      create_tab(n_slide);
    }
  }
  if (!slide_text[s].empty()) slide_text[s].pop_back();
  ObjInputText& b = box();
  b.set_text_from_outside(slide_text[1]);
  b.cursor_position = 1;
  message_box = slide_text[1];
  original_message = sha1_hex(message_box);
}

void EditorCtrl::insert_across_slides(std::string_view snippet) {
  ObjInputText& b = box();
  Chars page = b.text;
  const auto caret = static_cast<size_t>(std::clamp(b.caret(), 1, static_cast<int>(page.size()) + 1));
  Chars inserted = chars_of(snippet);
  std::erase(inserted, U'\r');
  page.insert(page.begin() + static_cast<std::ptrdiff_t>(caret - 1), inserted.begin(), inserted.end());
  // The caret's line in the whole program, and its column in bytes.
  std::string before;
  for (int k = 1; k < slide_index; ++k) before += slide_text[static_cast<size_t>(k)];
  before += utf8_of(page, 0, caret - 1 + inserted.size());
  const auto caret_line = static_cast<int>(std::count(before.begin(), before.end(), '\n'));
  const size_t column = before.size() - (before.rfind('\n') == std::string::npos ? 0 : before.rfind('\n') + 1);
  slide_text[static_cast<size_t>(slide_index)] = utf8_of(page);
  const std::string whole = whole_program();

  // Pages of 39 lines again, each ending behind its 39th line feed: joined, they are the program as it was.
  destroy_tabs();
  slide_text = {"", ""};
  n_slide = 1;
  int feeds = 0;
  for (const char c : whole) {
    slide_text.back().push_back(c);
    if (c == '\n' && ++feeds == SLIDE_LINES - 1) {
      feeds = 0;
      slide_text.emplace_back();
      ++n_slide;
    }
  }
  for (int k = 1; n_slide > 1 && k <= n_slide; ++k) create_tab(k);

  slide_index = std::min(caret_line / (SLIDE_LINES - 1) + 1, n_slide);
  const std::string& shown = slide_text[static_cast<size_t>(slide_index)];
  size_t line_start = 0;
  for (int line = caret_line % (SLIDE_LINES - 1); line > 0; --line) line_start = shown.find('\n', line_start) + 1;
  b.set_text_from_outside(shown);
  b.cursor_special = 1;
  b.cursor_position = static_cast<int>(chars_of(std::string_view(shown).substr(0, line_start + column)).size()) + 1;
  b.undo_redo_text_list.clear();
  b.undo_redo_cursor_position_list.clear();
  b.undo_redo_position = 0;
  message_box = shown;
}

void EditorCtrl::blank_slides() {
  for (std::string& slide : slide_text) slide.clear();
  box().set_text_from_outside("");
  message_box.clear();
}

void EditorCtrl::new_project() {
  n_slide = 1;
  destroy_tabs();
  slide_index = 1;
  slide_text = {"", ""};
  environment_globals().nome_progetto = "";
  box().set_text_from_outside("");
  message_box.clear();
  original_message = sha1_hex("");
  for (const TutorialPart& part : TUTORIAL_PARTS) destroy_all(part.object);
}

void EditorCtrl::open_ready_kit(const std::string& path) {
  std::string kit;
  if (!file_read_whole(path, kit)) {
    show_message(RValue::text("Impossibile aprire il kit pronto:\n" + path));
    return;
  }
  load(kit);
  // Saving must not put the kit over the project that was open.
  environment_globals().nome_progetto = "";
  write_setting_text("nome_ultimo_progetto", "");
  for (const TutorialPart& part : TUTORIAL_PARTS) destroy_all(part.object);
}

std::string EditorCtrl::fingerprint() const { return sha1_hex(message_box); }

bool EditorCtrl::unsaved() const { return !message_box.empty() && fingerprint() != original_message; }

void EditorCtrl::show_slide(int index) {
  ObjInputText& b = box();
  slide_text[static_cast<size_t>(slide_index)] = message_box;
  slide_index = index;
  b.set_text_from_outside(slide_text[static_cast<size_t>(index)]);
  b.undo_redo_text_list.clear();
  b.undo_redo_cursor_position_list.clear();
  b.undo_redo_position = 0;
  b.cursor_position = 1;
  message_box = slide_text[static_cast<size_t>(index)];
}

void EditorCtrl::key_event() {
  if (current_room_index() == ROOM_EDITOR) refresh_message_box();
}

void EditorCtrl::refresh_message_box() {
  // A text handed to the box shows from its next Step: until then it is the text that counts.
  const ObjInputText& b = box();
  message_box = b.text_change_from_outside ? utf8_of(*b.text_change_from_outside) : b.text_utf8();
}

void EditorCtrl::step() {
  EnvironmentGlobals& g = environment_globals();
  // Every change typed is on disk before the next frame: a crash loses nothing more.
  if (!editor_modal()) {
    std::string program = whole_program();
    if (program != last_backup_ && file_write_whole(backup_path(), program)) last_backup_ = std::move(program);
  }
  answer_close_request();
  keep_window_aspect();
  if (keyboard_check(KEY_CONTROL) && keyboard_check(KEY_B)) box().set_text_from_outside(terse_form(message_box));
  if (mouse_button_pressed(MOUSE_LEFT)) set_focus_on_press();
  window_set_caption(keyboard_check(KEY_CONTROL) && keyboard_check(KEY_I)
                         ? std::string("Velant - Versione ") + VELANT_VERSION
                         : std::string("Velant"));
  if (g.attenua_colori == 1 && af < 0.25) af += 0.00075;
  watch_tutorial_phrase();
  colouring_->last_page = slide_index == n_slide;
}

void EditorCtrl::step_end() {
  refresh_message_box();
  const ObjInputText& b = box();
  environment_globals().cursor_y = b.cursor_offset_y + b.offset_y;
  colouring_->scan(whole_program());
}

void EditorCtrl::answer_close_request() {
  if (!window_command_check(WINDOW_COMMAND_CLOSE)) return;
  if (pop_up_exists()) return;
  if (unsaved()) {
    open_pop_up(PopUpKind::Chiudi);
    return;
  }
  write_setting("Crash", 0);
  game_end();
}

void EditorCtrl::keep_window_aspect() {
  window_set_fullscreen(false);
  const int width = window_get_width();
  if (window_get_height() == static_cast<int>(w_height) || width >= display_get_width()) return;
  w_height = width / 100.0 * ASPECT;
  window_set_size(width, static_cast<int>(w_height));
  box().update_surfaces = true;
}

void EditorCtrl::set_focus_on_press() {
  const Room* room = current_room();
  // A click on a question's buttons is the question's.
  if (!room || editor_modal()) return;
  const int mx = mouse_x(), my = mouse_y();
  const bool in_text = my >= TEXT_TOP && mx <= room->width - EDGE && my <= room->height - BOTTOM_MARGIN;
  ObjInputText& b = box();
  if (in_text && environment_globals().ico_select == 0) {
    b.enable();
  } else if (!in_text) {
    b.enabled = false;
  }
  // The undo button: the box undoes; its selection is not shown meanwhile.
  if (mx >= 960 && mx <= 995 && my >= 5 && my <= 40) {
    b.set_misc(true, 2, -1, 65535, 0, 0, 1, false);
    b.enable();
  }
}

void EditorCtrl::watch_tutorial_phrase() {
  // The mode follows the text: what hangs on it is made again whenever it is missing.
  tutorial_mode = message_box.find(TUTORIAL_PHRASE) != std::string::npos;
  for (const TutorialPart& part : TUTORIAL_PARTS) {
    const int32_t object = object_find(part.object);
    if (!tutorial_mode) {
      destroy_all(part.object);
    } else if (object >= 0 && !exists(part.object)) {
      instance_create(part.x, part.y, object, 0);
    }
  }
}

void EditorCtrl::draw_begin() {
  const Room* room = current_room();
  if (!room) return;
  const double width = room->width, height = room->height;
  const double background = room->background_colour;
  const EnvironmentGlobals& g = environment_globals();
  const ObjInputText& b = box();

  draw_state().colour = static_cast<uint32_t>(COLOUR_WHITE);
  draw_rectangle(45, 45, width, height, false);
  draw_rectangle(0, 45, 42, height, false);
  if (mouse_y() > TEXT_TOP) {
    const double top = g.cursor_y + 50;
    draw_rectangle_colour(45, top, width, top + LINE_HEIGHT, make_colour_rgb(246, 255, 204),
                          make_colour_rgb(246, 255, 204), make_colour_rgb(232, 255, 204),
                          make_colour_rgb(232, 255, 204), false);
  }

  // Numbers run on across slides, 40 to a slide.
  n_line = static_cast<int>(std::count(message_box.begin(), message_box.end(), '\n'));
  draw_set_font(FONT_EDITOR);
  draw_set_halign(2);
  draw_set_valign(0);
  draw_state().colour = static_cast<uint32_t>(background);
  const int first = first_line_number();
  const double top = b.y + b.offset_y;
  draw_text(35, top, std::to_string(first));
  for (int i = 0; i < n_line; ++i) draw_text(35, top + LINE_HEIGHT * (i + 1), std::to_string(first + i + 1));
  draw_set_halign(0);
  draw_guides(g.dislessia ? 67 : 65);
}

void EditorCtrl::draw_guides(double text_top) const {
  const Room* room = current_room();
  const EnvironmentGlobals& g = environment_globals();
  const double width = room->width, height = room->height;
  const double saved_alpha = draw_state().alpha;
  if (g.righe_editor == 1) {
    draw_state().alpha = 0.2;
    for (double y = text_top; y < height - 40; y += LINE_HEIGHT) {
      draw_line_colour(0, y, width, y, GUIDE_GREY, COLOUR_LIGHT_GREY);
    }
  }
  if (g.colonne_editor == 1) {
    draw_state().alpha = 0.2;
    draw_state().colour = static_cast<uint32_t>(COLOUR_LIGHT_GREY);
    // The dyslexia font's cells are wider.
    for (double x = 50; x < width - 40; x += g.dislessia != 0 ? 9 : 7) draw_line(x, 50, x, height - 50);
  }
  if (g.righe_colorate == 1) {
    draw_state().alpha = 0.15;
    const double orange = 4235519, below = merge_colour(65535, orange, 0.5);
    for (double y = text_top; y < height - 60; y += LINE_HEIGHT) {
      if (static_cast<long>(y) % 2 == 1) {
        draw_rectangle_colour(45, y, width - 30, y + LINE_HEIGHT, orange, orange, below, below, false);
      }
    }
  }
  draw_state().alpha = saved_alpha;
}

void EditorCtrl::draw() {
  // The right edge over the code box, under the tabs.
  const Room* room = current_room();
  if (!room) return;
  draw_state().colour = static_cast<uint32_t>(COLOUR_WHITE);
  draw_rectangle(room->width - EDGE, 0, room->width, room->height, false);
  const double saved_alpha = draw_state().alpha;
  draw_state().alpha = 0.2;
  draw_state().colour = room->background_colour;
  draw_rectangle(room->width - EDGE, 0, room->width, room->height, false);
  draw_state().alpha = saved_alpha;
}

void EditorCtrl::draw_end() {
  slide_text[static_cast<size_t>(slide_index)] = message_box;
  window_set_cursor(pointer_shape());
}

int EditorCtrl::pointer_shape() const {
  const Room* room = current_room();
  const int mx = mouse_x(), my = mouse_y();
  if (pop_up_exists()) return pop_up_cursor();
  // An argument of the hint bar under the pointer takes a click.
  if (!sel.empty()) return -21;
  if (my < TEXT_TOP || mx > room->width - EDGE || my > room->height - BOTTOM_MARGIN) return 0;
  const EnvironmentGlobals& g = environment_globals();
  const bool panel = g.special_int_ms == 1 || palette_panel_shown();
  // The menu's entries set their own arrow.
  if (edit_menu_is_open()) return window_get_cursor();
  return panel || exists("update_ctrl") ? 0 : -4;
}

void EditorCtrl::draw_gui_end() {
  if (environment_globals().attenua_colori != 1) return;
  draw_attenuation_veil(af);
}

void draw_attenuation_veil(double alpha) {
  const double saved_alpha = draw_state().alpha;
  draw_state().alpha = alpha;
  draw_state().colour = static_cast<uint32_t>(make_colour_hsv(35, 200, 200));
  draw_rectangle(0, 0, window_get_width(), window_get_height(), false);
  draw_state().alpha = saved_alpha;
}

int32_t define_editor_ctrl() {
  g_object = ObjectDefinition<EditorCtrl>("editor_ctrl")
                 .on(ev::CREATE, 0, &EditorCtrl::create)
                 .on(ev::STEP, ev::STEP_NORMAL, &EditorCtrl::step)
                 .on(ev::STEP, ev::STEP_END, &EditorCtrl::step_end)
                 .on(ev::KEYBOARD, 1, &EditorCtrl::key_event)
                 .on(ev::DRAW, ev::DRAW_BEGIN, &EditorCtrl::draw_begin)
                 .on(ev::DRAW, ev::DRAW_NORMAL, &EditorCtrl::draw)
                 .on(ev::DRAW, ev::DRAW_END, &EditorCtrl::draw_end)
                 .on(ev::DRAW, ev::DRAW_GUI_END, &EditorCtrl::draw_gui_end)
                 .flags(object_flag::VISIBLE)
                 .depth(-1)
                 .index();
  return g_object;
}
