// The slides of the editor's code box: a program longer than one screen
// stands on pages of 40 lines, and the box shows one of them. Enter on a
// full page pushes its last line to the top of the next page (a full next
// page pushes on in turn, a new page is made past the last), and Enter on
// the last row takes the caret over to the next page.
//
// The slides belong to the editor; the box reaches them through the hook
// it is given.
#pragma once

#include <functional>
#include <string>
#include <vector>

class ObjInputText;

inline constexpr int SLIDE_LINES = 40;      // the lines of a page
inline constexpr int CODE_BOX_LINES = 41;   // the box holds one more while a line moves on

struct CodeBoxSlides {
  std::vector<std::string> slide_text{"", ""};  // slide_text[1] to slide_text[n_slide]; entry 0 is unused
  int n_slide = 1;
  int slide_index = 1;                     // the page on show
  std::function<void(int slide)> add_tab;  // shows the tab of a page just made
};

// Enter in `box` on the page `slides.slide_index`. False when the page has
// room: the box inserts its line feed as any box does. True when the page
// was full and the line feed is in.
bool code_box_enter(ObjInputText& box, CodeBoxSlides& slides);
