#include "environment/text_control/input_text.h"

#include "text_box_fixture.h"

namespace {

constexpr int KEY_A = KEY_LETTER_A, KEY_C = KEY_LETTER_A + 2, KEY_V = KEY_LETTER_A + 21, KEY_X = KEY_LETTER_A + 23,
              KEY_Y = KEY_LETTER_A + 24, KEY_Z = KEY_LETTER_A + 25;

TEST_F(TextBoxTest, TypingDeletingAndWordJumps) {
  ObjInputText& box = multiline();
  type(box, "ciao mondo");
  for (int k = 0; k < 5; ++k) press(box, KEY_LEFT);
  type(box, "caro ");
  EXPECT_EQ(box.text_utf8(), "ciao caro mondo");
  press(box, KEY_BACKSPACE, true);  // to the word boundary: the blank alone
  EXPECT_EQ(box.text_utf8(), "ciao caromondo");
  press(box, KEY_BACKSPACE, true);
  EXPECT_EQ(box.text_utf8(), "ciao mondo");
  press(box, KEY_DELETE, true);
  EXPECT_EQ(box.text_utf8(), "ciao ");
  press(box, KEY_TAB);
  press(box, KEY_ENTER);
  type(box, "è già");
  EXPECT_EQ(box.text_utf8(), "ciao     \nè già");
  press(box, KEY_HOME);
  press(box, KEY_BACKSPACE, true);
  EXPECT_EQ(box.text_utf8(), "ciao     è già") << "Ctrl+Backspace at a line start takes the line feed alone";
  press(box, KEY_END, true);
  press(box, KEY_LEFT, true);
  EXPECT_EQ(box.caret(), 12) << "Ctrl+Left stops at the start of the word \"già\"";
  type(box, "\xEF\xBF\xBDx");  // a replacement character is dropped
  EXPECT_EQ(box.text_utf8(), "ciao     è xgià");
}

TEST_F(TextBoxTest, UndoTakesBackARunOfOneKindOfAction) {
  ObjInputText& box = multiline();
  type(box, "uno");
  type(box, " due");
  press(box, KEY_BACKSPACE);
  press(box, KEY_BACKSPACE);
  EXPECT_EQ(box.text_utf8(), "uno d");
  press(box, KEY_Z, true);
  EXPECT_EQ(box.text_utf8(), "uno due") << "the run of deletions goes back as one";
  press(box, KEY_Z, true);
  EXPECT_EQ(box.text_utf8(), "") << "and the run of typing as one";
  press(box, KEY_Y, true);
  EXPECT_EQ(box.text_utf8(), "uno due");
  press(box, KEY_Z, true, true);  // Ctrl+Shift+Z redoes too
  EXPECT_EQ(box.text_utf8(), "uno d");

  // A caret move between two runs of typing makes two undo steps.
  ObjInputText& other = singleline();
  type(other, "ab");
  press(other, KEY_LEFT);
  type(other, "X");
  EXPECT_EQ(other.text_utf8(), "aXb");
  EXPECT_FALSE(box.enabled) << "one box at a time takes the keys";
  press(other, KEY_Z, true);
  EXPECT_EQ(other.text_utf8(), "ab");
  press(other, KEY_Z, true);
  press(other, KEY_Z, true);
  EXPECT_EQ(other.text_utf8(), "");
}

TEST_F(TextBoxTest, SelectionsAreReplacedByEditsButNotByCaretMoves) {
  ObjInputText& box = multiline();
  type(box, "rosso verde");
  press(box, KEY_LEFT, true, true);  // Ctrl+Shift+Left selects "verde"
  EXPECT_EQ(box.selection_start_ordered, 7);
  EXPECT_EQ(box.selection_end_ordered, 12);
  press(box, KEY_C, true);
  EXPECT_EQ(clipboard_get_text(), "verde");
  type(box, "blu");
  EXPECT_EQ(box.text_utf8(), "rosso blu");
  press(box, KEY_LEFT, false, true);
  press(box, KEY_RIGHT);
  EXPECT_FALSE(box.has_selection());
  EXPECT_EQ(box.text_utf8(), "rosso blu") << "a caret move drops the selection and keeps the text";

  press(box, KEY_A, true);
  press(box, KEY_X, true);
  EXPECT_EQ(box.text_utf8(), "");
  EXPECT_EQ(clipboard_get_text(), "rosso blu");
  clipboard_set_text("uno\r\ndue");
  press(box, KEY_V, true);
  EXPECT_EQ(box.text_utf8(), "uno\ndue") << "carriage returns are dropped";
  ObjInputText& line = singleline();
  press(line, KEY_V, true);
  EXPECT_EQ(line.text_utf8(), "unodue") << "a one-line box drops line feeds";
}

TEST_F(TextBoxTest, SetTextTakesEffectAtTheNextStep) {
  ObjInputText& box = singleline();
  type(box, "vecchio");
  RValue args[] = {RValue::number(box.id), RValue::text("nuovo\r\n")}, got;
  builtin_call("input_text_set_text", got, nullptr, nullptr, 2, args);
  builtin_call("input_text_get_text", got, nullptr, nullptr, 1, args);
  EXPECT_EQ(got.string_view(), "vecchio");
  step(box);
  builtin_call("input_text_get_text", got, nullptr, nullptr, 1, args);
  EXPECT_EQ(got.string_view(), "nuovo\n");
  EXPECT_EQ(box.caret(), 7) << "the caret goes to the end";
}

TEST_F(TextBoxTest, AWrappedLineEndKeepsTheCaretOnItsLine) {
  ObjInputText& box = multiline(100);
  set_text(box, "aaaa bbbb cccc dddd eeee");
  ASSERT_GT(box.lines, 1);
  const int first_end = box.new_line_list[1];
  press(box, KEY_HOME, true);
  press(box, KEY_END);
  EXPECT_EQ(box.cursor_position, -first_end) << "the caret stands at the end of the wrapped line";
  EXPECT_EQ(box.cursor_line, 0);
  type(box, "Z");
  EXPECT_EQ(box.text_utf8().substr(0, static_cast<size_t>(first_end) + 1),
            box.text_utf8().substr(0, static_cast<size_t>(first_end)) + "Z")
      << box.text_utf8();
  EXPECT_EQ(box.text_utf8().find('Z'), static_cast<size_t>(first_end));
}

TEST_F(TextBoxTest, LimitsOfLengthAndLines) {
  ObjInputText& box = make("input_text_create_multiline_ext",
                           {n(0), n(0), n(300), n(200), n(-1), n(0), n(1), n(-1), n(8), n(3), n(-1), n(0), n(0),
                            RValue::boolean(true), n(0)});
  type(box, "abcdefghijkl");
  EXPECT_EQ(box.text_utf8(), "abcdefgh");
  set_text(box, "");
  type(box, "a\nb\nc\nd\ne");
  EXPECT_EQ(box.text_utf8(), "a\nb\n") << "the length first, then the lines before the caret";
  press(box, KEY_HOME, true);
  type(box, "x\ny\n");
  EXPECT_EQ(box.lines, 3);
  EXPECT_EQ(box.text_utf8(), "a\nb\n") << "lines typed past the limit are taken back";
}

TEST_F(TextBoxTest, ClicksPlaceTheCaretAndADoubleClickSelectsAWord) {
  ObjInputText& box = multiline();
  type(box, "perché così è");
  const double per_char = box.text_width / 13;
  click(box, 10 + static_cast<int>(per_char * 2.2), 12);
  EXPECT_EQ(box.caret(), 3);
  click(box, 10 + static_cast<int>(per_char * 9.4), 12);
  click(box, 10 + static_cast<int>(per_char * 9.4), 12);
  EXPECT_EQ(box.selection_start_ordered, 8);
  EXPECT_EQ(box.selection_end_ordered, 12) << "\"così\" with its accented letter is one word";
  // A second line, reached by a click below the first.
  press(box, KEY_END, true);
  press(box, KEY_ENTER);
  type(box, "sotto");
  click(box, 10, 12 + static_cast<int>(box.line_separation));
  EXPECT_EQ(box.caret(), 15);
  press(box, KEY_UP);
  EXPECT_EQ(box.cursor_line, 0);
}

TEST_F(TextBoxTest, AHeldKeyRepeatsAfter380MillisecondsThenEvery26) {
  ObjInputText& box = singleline();
  set_text(box, std::string(40, 'x'));
  press(box, KEY_HOME);
  input_key_event(KEY_RIGHT, true);
  step(box, FRAME);
  EXPECT_EQ(box.caret(), 2);
  step(box, 370000);
  EXPECT_EQ(box.caret(), 2) << "still within the first 380 ms";
  step(box, 20000);
  EXPECT_EQ(box.caret(), 3);
  for (int k = 0; k < 4; ++k) step(box, 26000);
  EXPECT_EQ(box.caret(), 7);
  input_key_event(KEY_RIGHT, false);
  step(box, 26000);
  EXPECT_EQ(box.caret(), 7);
}

}  // namespace

namespace {

TEST_F(TextBoxTest, CentredTurnedOrScaledBoxesTakeClicksWhereTheTextIs) {
  ObjInputText& box = make("input_text_create_singleline_ext", {n(10), n(10), n(300), n(-1), n(0), n(1), n(-1), n(1),
                                                                  n(0), RValue::boolean(true), n(0)});
  type(box, "abcd");
  const double half = box.text_width / 2;
  click(box, static_cast<int>(10 + 150 - half + 1), 12);
  EXPECT_EQ(box.caret(), 1) << "the centred text's first letter";
  RValue args[] = {n(box.id), n(10), n(10), n(2), n(2), n(0)}, ignored;
  builtin_call("input_text_set_transformation", ignored, nullptr, nullptr, 6, args);
  step(box);
  click(box, static_cast<int>(10 + 2 * (150 + half) - 1), 14);
  EXPECT_EQ(box.caret(), 5) << "twice as large, its last letter twice as far";

  // An undo history of one state, lowered after edits, keeps working.
  RValue misc[] = {n(box.id), RValue::boolean(true), n(-1), n(0), n(1), n(0), n(0.6), n(0xFFFFFF), n(1),
                   RValue::boolean(true)};
  builtin_call("input_text_set_misc", ignored, nullptr, nullptr, 10, misc);
  press(box, KEY_Z, true);
  type(box, "e");
  press(box, KEY_Z, true);
  type(box, "f");
  EXPECT_EQ(box.text_utf8().back(), 'f');
}

}  // namespace
