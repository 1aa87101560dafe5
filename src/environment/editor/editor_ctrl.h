// The editor screen's controller: it owns the program while the learner
// edits it, cut into slides of 40 lines that the code box shows one at a
// time; it draws the screen around the box (gutter, line numbers, the
// current line, the guides), keeps a crash backup, guards unsaved work on
// closing, and watches the text for the tutorial's phrase.
//
// The editor room is persistent: a run, or a project screen, leaves it and
// comes back to every slide, tab and the caret as they were.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "environment/text_control/code_box_slides.h"
#include "runtime/Object/Instance.h"

class ObjInputText;
class CodeBoxColouring;

class EditorCtrl : public CInstance, public CodeBoxSlides {
 public:
  EditorCtrl(float x, float y, int32_t id, int32_t object);
  ~EditorCtrl() override;

  void create();
  void step();
  void step_end();
  void key_event();
  void draw_begin();  // the screen around the box: gutter, numbers, current line, guides
  void draw();        // the right edge, over the box and under the tabs
  void draw_end();
  void draw_gui_end();

  // The text of the code box, and the box.
  ObjInputText& box() const;
  // Every slide joined: the whole program.
  std::string whole_program() const;
  // Replaces the program by `text`, cut into slides of 39 lines.
  void load(const std::string& text);
  // Empties every slide and the box, keeping the slides and tabs.
  void blank_slides();
  // Writes `snippet` at the caret of the slide on show when the slide would hold more than a page:
  // the program is cut into pages again and the caret, behind the snippet, goes to its page.
  void insert_across_slides(std::string_view snippet);
  // An empty project without a name.
  void new_project();
  // Opens the ready kit at `path` as a new project without a name, out of the tutorial; a kit that
  // can't be read gets a message and leaves the program as it is.
  void open_ready_kit(const std::string& path);
  // Whether the slide on show differs from the one last saved, loaded or made.
  bool unsaved() const;
  // The fingerprint of the box's text as it stands, for original_message.
  std::string fingerprint() const;
  // Shows slide `index` in the box, with a fresh undo history.
  void show_slide(int index);
  // The number of the first line on show: numbering runs on, 40 lines to a slide.
  int first_line_number() const { return 1 + SLIDE_LINES * (slide_index - 1); }

  int32_t box_id = -1;
  std::string message_box;       // the box's text, refreshed on every key
  std::string original_message;  // fingerprint of the text last saved, loaded or made
  int n_line = 0;                // line feeds of message_box
  int hue = 96;
  double w_height = 0;
  int griglia_visibile = 1;
  double af = 0;   // strength of the warm veil
  int wf = 7;      // width of a character of the hint bar
  int wx = 0, wy = 0;
  int sugg_span = 0;
  std::string sel;  // the hint argument under the pointer
  bool tutorial_mode = false;  // the tutorial's phrase stands in the text

 private:
  void create_header();
  void recover_after_crash();
  void keep_window_aspect();
  void answer_close_request();
  void set_focus_on_press();
  void watch_tutorial_phrase();
  void draw_guides(double text_top) const;
  void refresh_message_box();
  int pointer_shape() const;

  std::optional<std::string> last_backup_;  // what backup.txt holds since this start
  std::unique_ptr<CodeBoxColouring> colouring_;  // the box paints with it
};

// The editor controller, or null when there is none.
EditorCtrl* editor_ctrl();
// Whether a modal box (a question, or the update dialog) is up.
bool editor_modal();

// The warm veil of softened colours over the whole window, at `alpha`.
void draw_attenuation_veil(double alpha);

int32_t define_editor_ctrl();
