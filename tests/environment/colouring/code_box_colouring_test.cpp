// The code box in colour: the showcase example drawn as the editor shows
// it (kept as code_box_colours.png for a person to look at), the cache that
// colours a typed line alone, and functions that turn red once defined.
#include "environment/colouring/code_box_colouring.h"

#include <gtest/gtest.h>

#include <fstream>

#include "environment/colouring/colour_phrases.h"
#include "environment/text_box_room.h"
#include "environment/text_control/input_text.h"
#include "runtime/Code/Builtins.h"
#include "runtime/Graphics/ImageFile.h"
#include "runtime/Graphics/Screen.h"
#include "runtime/IO/Input.h"
#include "runtime/Object/Objects.h"
#include "runtime/Platform/Window.h"
#include "runtime/Room/FrameState.h"
#include "runtime/Room/Room.h"
#include "runtime/Run/Frame.h"
#include "support/SaveArea.h"
#include "support/test_pictures.h"

namespace {

constexpr uint32_t CODE_GREEN = 32768;

class CodeBoxColours : public ::testing::Test {
 protected:
  void SetUp() override {
    platform::make_window(true).create(1100, 660, "Velant", {});
    open_text_box_room(1100, 660);
    const auto n = [](double d) { return RValue::number(d); };
    box_ = &made_box("input_text_create_multiline_ext", {n(20), n(20), n(1000), n(620), n(0), n(CODE_GREEN), n(1),
                                                         n(-1), n(-1), n(41), n(15), n(0), n(0),
                                                         RValue::boolean(true), n(0)});
    box_->painter = &colours_;
    box_->enabled = true;
  }
  void TearDown() override { close_text_box_room(); }
  void show(const std::string& text) {
    box_->set_text_from_outside(text);
    frame_run();
  }
  Image picture() {
    Image shown;
    EXPECT_TRUE(screen_read(shown));
    return shown;
  }
  // How many pixels of the box's row `row` (from 0) are `colour` (blue-green-red), near enough.
  static int pixels_of(const Image& image, int row, uint32_t colour) {
    return count_colour(image, 20, 20 + row * 15, 1019, 20 + row * 15 + 14, from_bgr(colour), 39);
  }

  CodeBoxColouring colours_;
  ObjInputText* box_ = nullptr;
};

TEST_F(CodeBoxColours, TheShowcaseShowsEachClassInItsColour) {
  std::ifstream in(std::string(VELANT_SOURCE_DIR) + "/examples/vetrina.txt", std::ios::binary);
  std::string page;
  int rows = 0;
  for (std::string line; rows < 40 && std::getline(in, line); ++rows) page += (rows ? "\n" : "") + line;
  show(page);
  const Image image = picture();
  image_save_png("code_box_colours.png", image);
  // Rows of the example: two comments, INIZIA, ..., the first colour made with labels.
  EXPECT_GT(pixels_of(image, 0, CODE_GREEN), 50) << "the first line is a comment";
  EXPECT_EQ(pixels_of(image, 0, TAG_FUNCTION), 0) << "with nothing coloured in it";
  EXPECT_GT(pixels_of(image, 2, TAG_CONSTANT), 20) << "INIZIA";
  EXPECT_GT(pixels_of(image, 7, TAG_FUNCTION), 50) << "ottieni colore rgb";
  EXPECT_GT(pixels_of(image, 7, TAG_LABEL), 30) << "ROSSO, VERDE, BLU";
  EXPECT_GT(pixels_of(image, 7, TAG_KEYWORD), 3) << "the colons";
  EXPECT_GT(pixels_of(image, 29, TAG_STRING), 20) << "\"immagini/stella\"";

  // The caret on the bracket of row 7: it and its partner are marked in light cyan.
  const std::string row7 = "cielo = ottieni colore rgb (ROSSO: 135, VERDE: 200, BLU: 240)";
  box_->cursor_position = box_->new_line_list[7] + static_cast<int>(row7.find('(')) + 1;
  box_->update_surfaces = true;
  frame_run();
  const Image marked = picture();
  image_save_png("code_box_marks.png", marked);
  constexpr uint32_t LIGHT_CYAN = 0xFFFF8C;  // cyan at under half over white
  EXPECT_GT(pixels_of(marked, 7, LIGHT_CYAN), 40) << "both brackets";
  EXPECT_EQ(pixels_of(marked, 6, LIGHT_CYAN), 0);
}

TEST_F(CodeBoxColours, ATypedLineAloneIsColouredAgainAndNewFunctionsTurnRed) {
  show("disegna cerchio (X: 1)\nsaluta\nX = 2");
  const size_t first = colours_.lines_coloured();
  EXPECT_EQ(first, 3u);
  box_->cursor_position = 1;
  input_text("a");
  frame_run();
  EXPECT_EQ(colours_.lines_coloured(), first + 1) << "only the first line changed";
  EXPECT_EQ(pixels_of(picture(), 1, TAG_FUNCTION), 0);
  show("definisci funzione saluta {\n}\nsaluta");
  EXPECT_EQ(colours_.state().user_functions, (std::vector<std::string>{"saluta"}));
  EXPECT_GT(pixels_of(picture(), 2, TAG_FUNCTION), 20) << "the call shows red once the definition is seen";

  // A function's arrow and a "debug" are underlined (the picture is kept as code_box_underlines.png).
  show("valore --> ottieni testo maiuscolo (TESTO: nome)\ndebug valore");
  const Image underlined = picture();
  image_save_png("code_box_underlines.png", underlined);
  EXPECT_GT(pixels_of(underlined, 0, TAG_FUNCTION), 60) << "the red arrow, its phrase and its underline";
  EXPECT_GT(pixels_of(underlined, 1, 0x00A5FF), 25) << "the amber line under \"debug\"";

  // A function defined in an included file, found where the program's files are.
  const SaveArea files;
  files.write("libreria.txt", "definisci funzione \"balla forte\" {\n}\n");
  show("includi \"libreria\"\nballa forte");
  EXPECT_EQ(colours_.state().user_functions, (std::vector<std::string>{"balla forte"}));
  EXPECT_GT(pixels_of(picture(), 1, TAG_FUNCTION), 20);
}

}  // namespace
