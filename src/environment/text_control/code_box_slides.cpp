#include "environment/text_control/code_box_slides.h"

#include <algorithm>

#include "environment/text_control/input_text.h"

namespace {

int line_feeds(const std::string& text) { return static_cast<int>(std::count(text.begin(), text.end(), '\n')); }

// Takes the last line off `text`, line feed before it included; the line comes back alone.
std::string take_last_line(std::string& text) {
  const size_t feed = text.rfind('\n');
  std::string last = text.substr(feed + 1);
  text.erase(feed);
  // A line too short to be seen on its page keeps a blank.
  if (last.empty()) last = " ";
  return last;
}

void add_slide(CodeBoxSlides& slides) {
  // The first page has no tab while it is alone: it gets one with the second.
  if (slides.n_slide == 1 && slides.add_tab) slides.add_tab(1);
  ++slides.n_slide;
  slides.slide_text.resize(static_cast<size_t>(slides.n_slide) + 1);
  if (slides.add_tab) slides.add_tab(slides.n_slide);
}

void forget_undo(ObjInputText& box) {
  box.undo_redo_text_list.clear();
  box.undo_redo_cursor_position_list.clear();
  box.undo_redo_position = 0;
}

}  // namespace

bool code_box_enter(ObjInputText& box, CodeBoxSlides& slides) {
  if (box.lines < SLIDE_LINES) return false;
  const int page = slides.slide_index;
  // Selected text is replaced by the line feed, as by any edit.
  Chars chars = box.text;
  int caret = box.caret();
  if (box.has_selection()) {
    chars.erase(chars.begin() + (box.selection_start_ordered - 1), chars.begin() + (box.selection_end_ordered - 1));
    caret = box.selection_start_ordered;
    box.selection_start = box.selection_end = 0;
  }
  const bool on_last_row = box.cursor_line == SLIDE_LINES - 1;
  forget_undo(box);

  // The line feed goes in at the caret, and the page's last line moves on.
  std::string text = utf8_of(chars);
  const size_t at = utf8_of(chars, 0, static_cast<size_t>(caret - 1)).size();
  text.insert(at, caret == 1 ? " \n" : "\n");
  const std::string moved = take_last_line(text);
  if (page == slides.n_slide) add_slide(slides);
  slides.slide_text[static_cast<size_t>(page)] = text;
  std::string& next = slides.slide_text[static_cast<size_t>(page + 1)];
  next = moved + "\n" + next;
  // Every full page after it passes its last line on in turn.
  for (int later = page + 1; later <= slides.n_slide; ++later) {
    std::string& full = slides.slide_text[static_cast<size_t>(later)];
    if (line_feeds(full) < SLIDE_LINES) break;
    if (later == slides.n_slide) add_slide(slides);
    std::string& following = slides.slide_text[static_cast<size_t>(later + 1)];
    following = take_last_line(full) + "\n" + following;
  }

  box.cursor_special = 1;
  if (on_last_row) {
    // The caret follows its line to the next page.
    slides.slide_index = page + 1;
    box.set_text_from_outside(slides.slide_text[static_cast<size_t>(page + 1)]);
    box.cursor_position = 1;
  } else {
    box.set_text_from_outside(text);
    box.cursor_position = caret + (caret == 1 ? 2 : 1);
  }
  box.slide_text_backup = slides.slide_text[static_cast<size_t>(slides.slide_index)];
  return true;
}
