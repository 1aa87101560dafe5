#include "environment/text_control/code_box_slides.h"

#include "support/NumberedLines.h"
#include "text_box_fixture.h"

namespace {

CodeBoxSlides* g_slides = nullptr;
bool enter_hook(ObjInputText& box) { return code_box_enter(box, *g_slides); }

class CodeBox : public TextBoxTest {
 protected:
  ObjInputText& code_box(const std::string& page) {
    ObjInputText& box = make("input_text_create_multiline_ext",
                             {n(0), n(0), n(1000), n(800), n(-1), n(0), n(1), n(-1), n(-1), n(CODE_BOX_LINES), n(-1),
                              n(0), n(0), RValue::boolean(true), n(0)});
    g_slides = &slides_;
    slides_.add_tab = [this](int slide) { tabs_.push_back(slide); };
    slides_.slide_text[1] = page;
    box.enter_in_code_box = enter_hook;
    set_text(box, page);
    box.slide_text_backup = page;
    return box;
  }
  CodeBoxSlides slides_;
  std::vector<int> tabs_;
};

TEST_F(CodeBox, EnterOnTheLastRowOfTheLastPageMakesANewPageAndGoesThere) {
  ObjInputText& box = code_box(numbered_lines(1, 40));
  press(box, KEY_END, true);
  press(box, KEY_LEFT);  // "riga 4|0"
  press(box, KEY_ENTER);
  step(box);
  EXPECT_EQ(slides_.n_slide, 2);
  EXPECT_EQ(tabs_, (std::vector<int>{1, 2}));
  EXPECT_EQ(slides_.slide_text[1], numbered_lines(1, 39) + "\nriga 4");
  EXPECT_EQ(slides_.slide_text[2], "0\n");
  EXPECT_EQ(slides_.slide_index, 2);
  EXPECT_EQ(box.text_utf8(), "0\n") << "the box shows the new page";
  EXPECT_EQ(box.caret(), 1);
}

TEST_F(CodeBox, EnterInAMiddleRowPushesTheLastLineOnAndAFullNextPageToo) {
  ObjInputText& box = code_box(numbered_lines(1, 40));
  slides_.n_slide = 2;
  slides_.slide_text.push_back(numbered_lines(41, 80) + "\n");
  press(box, KEY_HOME, true);
  press(box, KEY_END);  // the end of "riga 1"
  press(box, KEY_ENTER);
  step(box);
  EXPECT_EQ(slides_.slide_index, 1) << "the caret stays on its page";
  EXPECT_EQ(box.text_utf8(), "riga 1\n\n" + numbered_lines(2, 39));
  EXPECT_EQ(box.caret(), 8);
  EXPECT_EQ(slides_.slide_text[2].substr(0, 8), "riga 40\n");
  EXPECT_EQ(slides_.n_slide, 3) << "the full second page passed its last line on";
  EXPECT_EQ(slides_.slide_text[3].substr(0, 1), " ");
}

TEST_F(CodeBox, AFortySecondLinePastedIsCutNotMoved) {
  ObjInputText& box = code_box(numbered_lines(1, 30));
  clipboard_set_text(numbered_lines(100, 120));
  press(box, KEY_LETTER_A + 21, true);  // Ctrl+V
  EXPECT_EQ(box.lines, CODE_BOX_LINES);
  EXPECT_EQ(slides_.n_slide, 1);
}

}  // namespace
