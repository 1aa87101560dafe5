// The save and open screens driven as a learner would, with presses at
// their buttons and cards: saving (a new title, a title already saved, a
// name with a slash, the chooser that leaves the index alone, a cancel that
// still counts as saved), opening a card into slides, the cards' columns
// and scrolling, and renaming and deleting with the index and the folder
// agreeing.
#include <memory>

#include "environment/editor/environment_globals.h"
#include "environment/editor/pop_up.h"
#include "environment/environment_fixture.h"
#include "environment/projects/load_ctrl.h"
#include "environment/projects/project_index.h"
#include "environment/text_control/input_text.h"
#include "runtime/IO/IniFile.h"
#include "runtime/Platform/Desktop.h"
#include "support/NumberedLines.h"

namespace {

constexpr int SAVE_BUTTON_X = 110, OPEN_BUTTON_X = 70, HEADER_Y = 23;

class ProjectScreens : public EnvironmentTest {
 protected:
  static void type_program(const std::string& text) {
    editor().box().set_text_from_outside(text);
    frames(2);
  }
  // The name field of the screen on show.
  static ObjInputText& field() {
    const CObject* boxes = object_get(object_find("obj_input_text"));
    return *static_cast<ObjInputText*>(boxes->instances.back());
  }
  // Opens the save screen, writes `title` in its field and presses `button_x`.
  static void save_as(const std::string& title, int button_x = 1040) {
    click(SAVE_BUTTON_X, HEADER_Y);
    frames(6);
    ASSERT_EQ(current_room_index(), ROOM_PROGETTI);
    field().set_text_from_outside(title);
    frames(1);
    click(button_x, 75);
    frames(3);
  }
  static LoadCtrl& open_screen() {
    click(OPEN_BUTTON_X, HEADER_Y);
    frames(3);
    EXPECT_EQ(current_room_index(), ROOM_PROGETTI);
    return *load_ctrl();
  }
  std::string project(const std::string& title) const { return saved("Progetti salvati/" + title + ".txt"); }
  static std::vector<std::string> titles() {
    std::vector<std::string> names;
    for (const SavedProject& p : read_project_index()) names.push_back(p.titolo);
    return names;
  }
  // An index of `n` projects, "p1" the oldest, each with its file.
  void index_of(int n) {
    for (int k = 1; k <= n; ++k) folder_.write("Progetti salvati/p" + std::to_string(k) + ".txt", "riga\n");
    ini_open("Progetti salvati/Progetti salvati.ini");
    for (int k = 1; k <= n; ++k) {
      ini_write_string(std::to_string(k), "titolo", "p" + std::to_string(k));
      ini_write_real(std::to_string(k), "data", 40000 + k);
    }
    ini_close();
  }
};

TEST_F(ProjectScreens, SavingWritesTheFileAndDatesItsOneEntry) {
  type_program("INIZIA\nx = 1\n");
  save_as("a/b");
  EXPECT_EQ(current_room_index(), ROOM_EDITOR);
  EXPECT_EQ(project("ab"), "INIZIA\nx = 1\n") << "the slash is taken out of the name";
  EXPECT_EQ(environment_globals().nome_progetto, "ab");
  EXPECT_EQ(count_of("save_ctrl"), 0u);

  save_as("altro");
  type_program("INIZIA\nx = 2\n");
  save_as("ab");
  EXPECT_EQ(project("ab"), "INIZIA\nx = 2\n");
  EXPECT_EQ(titles(), (std::vector<std::string>{"ab", "altro"})) << "one entry, moved to the top";
  EXPECT_TRUE(messages_.empty());
}

TEST_F(ProjectScreens, ACancelledSaveStillCountsAsSavedAndAnEmptyNameSavesNothing) {
  type_program("INIZIA\nlavoro\n");
  save_as("");
  EXPECT_EQ(current_room_index(), ROOM_PROGETTI) << "an empty name does nothing";
  click(810, 75);
  frames(2);
  EXPECT_EQ(current_room_index(), ROOM_EDITOR);
  EXPECT_FALSE(editor().unsaved());
  EXPECT_TRUE(titles().empty());
}

TEST_F(ProjectScreens, TheChooserSavesAndOpensWithoutTouchingTheIndex) {
  const std::string chosen = (folder_.path() / "altrove.txt").string();
  platform::set_file_chooser(std::make_unique<platform::ScriptedFileChooser>(std::deque<std::string>{chosen, chosen}));
  type_program("INIZIA\nscelto\n");
  save_as("scelto", 1220);
  EXPECT_EQ(saved("altrove.txt"), "INIZIA\nscelto\n");
  EXPECT_TRUE(titles().empty());

  type_program("");
  open_screen();
  click(1220, 75);
  frames(3);
  EXPECT_EQ(editor().whole_program(), "INIZIA\nscelto") << "the last line feed ends the last line";
  platform::set_file_chooser(nullptr);
}

TEST_F(ProjectScreens, ALongProjectComesBackInSlidesOf39Lines) {
  index_of(1);
  folder_.write("Progetti salvati/p1.txt", numbered_lines(1, 79) + "\n");
  LoadCtrl& screen = open_screen();
  click(static_cast<int>(screen.card_left(0)) + 100, static_cast<int>(screen.card_top(0)) + 20);
  frames(3);
  EXPECT_EQ(current_room_index(), ROOM_EDITOR);
  EXPECT_EQ(editor().n_slide, 3);
  EXPECT_EQ(environment_globals().nome_progetto, "p1");
  EXPECT_FALSE(editor().unsaved());
}

TEST_F(ProjectScreens, CardsStandInColumnsOfFiveAndScrollWhenThereAreSixteen) {
  index_of(16);
  LoadCtrl& screen = open_screen();
  EXPECT_EQ(screen.progetto[0].titolo, "p16") << "newest first";
  EXPECT_EQ(screen.card_left(5), 590);
  EXPECT_EQ(screen.card_top(5), 195) << "the sixth heads the second column";
  input_mouse_move(1290, 400);
  frames(40);
  EXPECT_EQ(screen.cc, -(1650 - 715)) << "scrolled to the last column, and no further";
  input_mouse_move(10, 400);
  frames(40);
  EXPECT_EQ(screen.cc, 0);
}

TEST_F(ProjectScreens, RenameAndDeleteKeepTheIndexAndTheFolderInStep) {
  index_of(3);
  LoadCtrl& screen = open_screen();
  // p3 is the first card; its rename icon, then its delete icon.
  const int left = static_cast<int>(screen.card_left(0)), top = static_cast<int>(screen.card_top(0));
  input_mouse_move(left + 453, top + 68);
  frames(1);
  click(left + 453, top + 68);
  ASSERT_EQ(count_of("pop_up"), 1u);
  field().set_text_from_outside("p1");
  frames(1);
  click(550, 548);
  EXPECT_EQ(count_of("pop_up"), 1u) << "a name in use is refused";
  field().set_text_from_outside("terzo");
  frames(1);
  click(550, 548);
  EXPECT_EQ(count_of("pop_up"), 0u);
  EXPECT_EQ(titles(), (std::vector<std::string>{"terzo", "p2", "p1"}));
  EXPECT_EQ(project("terzo"), "riga\n");
  EXPECT_FALSE(std::filesystem::exists(folder_.path() / "Progetti salvati/p3.txt"));

  input_mouse_move(left + 100, top + 100 + 20);
  frames(1);
  input_mouse_move(left + 483, top + 100 + 68);
  frames(1);
  click(left + 483, top + 168);
  ASSERT_EQ(count_of("pop_up"), 1u);
  click(550, 548);
  EXPECT_EQ(titles(), (std::vector<std::string>{"terzo", "p1"}));
  EXPECT_FALSE(std::filesystem::exists(folder_.path() / "Progetti salvati/p2.txt"));
  EXPECT_EQ(screen.progetto.size(), 2u);
  ini_open("Progetti salvati/Progetti salvati.ini");
  EXPECT_FALSE(ini_section_exists("3")) << "the sections stay numbered without gaps";
  ini_close();
}

}  // namespace
