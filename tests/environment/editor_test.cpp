// The editor screen: slides, backup, the close guard, recovery after a
// crash, new project, the tutorial's mode and Ctrl+B's terse form.
#include <fstream>

#include "environment/editor/environment_globals.h"
#include "environment/editor/header_buttons.h"
#include "environment/editor/pop_up.h"
#include "environment/editor/terse_form.h"
#include "environment/environment_fixture.h"
#include "environment/text_control/input_text.h"
#include "runtime/Code/Error.h"
#include "runtime/Platform/Headless.h"
#include "runtime/Platform/Log.h"
#include "support/DebugLines.h"
#include "support/NumberedLines.h"

namespace {

int line_feeds(const std::string& text) { return static_cast<int>(std::count(text.begin(), text.end(), '\n')); }

class EditorTest : public EnvironmentTest {
 protected:
  // Text put into the box as typing would leave it, and one frame to take it.
  static void type_into_box(const std::string& text) {
    editor().box().set_text_from_outside(text);
    frames(1);
  }
  static void request_close() {
    platform::window().simulate_close_request();
    frames(1);
  }
  bool crash_flag_is(int value) const {
    return saved("setting.ini").find("Crash=\"" + std::to_string(value) + ".000000\"") != std::string::npos;
  }
  static PopUp* pop_up() {
    const CObject* o = object_get(object_find("pop_up"));
    return o->instances.empty() ? nullptr : static_cast<PopUp*>(o->instances.front());
  }
  static constexpr int BUTTONS_Y = 350 + 200, ANNULLA_X = 650 + 50, ELIMINA_X = 650 - 220, OK_X = 650;
};

TEST_F(EditorTest, AProgramLoadsIntoSlidesOf39LinesNumberedOnAcrossSlides) {
  struct Case {
    int lines;
    std::vector<int> slide_lines;  // line feeds of each slide: the last one has none at its end
    bool last_feed_kept;           // a slide full at the end leaves an empty one after it, and keeps its feed
  };
  for (const Case& c : {Case{10, {9}, false}, Case{39, {39, 0}, true}, Case{79, {39, 39, 0}, false}}) {
    editor().load(numbered_lines(1, c.lines) + "\n");
    frames(1);
    SCOPED_TRACE(c.lines);
    ASSERT_EQ(editor().n_slide, static_cast<int>(c.slide_lines.size()));
    for (size_t s = 0; s < c.slide_lines.size(); ++s) EXPECT_EQ(line_feeds(editor().slide_text[s + 1]), c.slide_lines[s]);
    // The tab of slide 1 comes with the second slide.
    EXPECT_EQ(count_of("scheda"), c.slide_lines.size() > 1 ? c.slide_lines.size() : 0u);
    EXPECT_EQ(editor().whole_program(), numbered_lines(1, c.lines) + (c.last_feed_kept ? "\n" : ""));
  }
  editor().show_slide(3);
  frames(1);
  EXPECT_EQ(editor().box().text_utf8(), "riga 79");
  EXPECT_EQ(editor().first_line_number(), 81);
  editor().show_slide(2);
  EXPECT_EQ(editor().first_line_number(), 41);
}

TEST_F(EditorTest, TypingLandsInTheSlideOnShowAndInTheBackupAStepLater) {
  editor().load(numbered_lines(1, 79) + "\n");
  click(1290, 50 + 140 + 60);  // the tab of slide 2
  EXPECT_EQ(editor().slide_index, 2);
  type_into_box("nuova riga\n" + editor().slide_text[2]);
  EXPECT_EQ(editor().slide_text[2].rfind("nuova riga\nriga 40\n", 0), 0u);
  EXPECT_EQ(editor().slide_text[1], numbered_lines(1, 39) + "\n");
  frames(1);
  EXPECT_EQ(saved("backup.txt"), editor().whole_program());

  // While a question stands the backup waits.
  open_pop_up(PopUpKind::Nuovo);
  type_into_box("durante la domanda");
  frames(1);
  EXPECT_EQ(saved("backup.txt").find("durante"), std::string::npos);
}

TEST_F(EditorTest, ClosingAsksOnlyWhenTheSlideOnShowHasUnsavedWork) {
  request_close();
  EXPECT_EQ(room_target(), ROOM_END_GAME) << "nothing typed: the window closes at once";
  EXPECT_TRUE(crash_flag_is(0));

  stop();
  start();
  editor().load(numbered_lines(1, 79) + "\n");
  frames(1);
  editor().show_slide(2);
  type_into_box("cambiata");
  editor().show_slide(1);
  frames(1);
  request_close();
  EXPECT_EQ(room_target(), ROOM_END_GAME) << "a change on another slide is not seen";

  stop();
  start();
  type_into_box("INIZIA");
  request_close();
  ASSERT_NE(pop_up(), nullptr);
  EXPECT_EQ(pop_up()->chiudi, 1);
  EXPECT_TRUE(crash_flag_is(0)) << "nothing to recover while the question stands";
  request_close();
  EXPECT_EQ(count_of("pop_up"), 1u);
  click(ANNULLA_X, BUTTONS_Y);
  EXPECT_EQ(pop_up(), nullptr);
  EXPECT_TRUE(crash_flag_is(1));
  EXPECT_EQ(editor().box().text_utf8(), "INIZIA");
  request_close();
  click(ELIMINA_X, BUTTONS_Y);
  EXPECT_EQ(room_target(), ROOM_END_GAME);
  EXPECT_TRUE(crash_flag_is(0));
}

TEST_F(EditorTest, AfterACrashTheNextStartRecoversTheBackup) {
  stop();
  std::ofstream(folder_.path() / "backup.txt") << numbered_lines(1, 45) + "\n";
  std::ofstream(folder_.path() / "setting.ini") << "[Velant]\r\nCrash=\"1.000000\"\r\nnome_ultimo_progetto=\"gatto\"\r\n";
  start();
  ASSERT_NE(pop_up(), nullptr);
  EXPECT_EQ(pop_up()->text, "Ops... Qualcosa è andato storto...");
  EXPECT_EQ(editor().n_slide, 2);
  EXPECT_EQ(editor().whole_program(), numbered_lines(1, 45));
  EXPECT_EQ(environment_globals().nome_progetto, "gatto");
  click(OK_X, BUTTONS_Y);
  EXPECT_EQ(pop_up(), nullptr);
  EXPECT_TRUE(crash_flag_is(1));

  // Without a backup the learner hears what happened and starts on an empty page.
  stop();
  std::filesystem::remove(folder_.path() / "backup.txt");
  std::ofstream(folder_.path() / "setting.ini") << "[Velant]\r\nCrash=\"1.000000\"\r\n";
  start();
  EXPECT_NE(pop_up(), nullptr);
  EXPECT_EQ(editor().whole_program(), "");
}

TEST_F(EditorTest, NewProjectDropsWorkOnlyAfterTheQuestion) {
  editor().load(numbered_lines(1, 50) + "\n");
  type_into_box("modificato");
  click(150, 23);  // "Nuovo progetto"
  ASSERT_NE(pop_up(), nullptr);
  EXPECT_EQ(pop_up()->nuovo, 1);
  EXPECT_EQ(editor().n_slide, 2) << "nothing goes before the answer";
  click(ELIMINA_X, BUTTONS_Y);
  frames(1);
  EXPECT_EQ(editor().n_slide, 1);
  EXPECT_EQ(count_of("scheda"), 0u);
  EXPECT_EQ(editor().box().text_utf8(), "");
  click(150, 23);
  EXPECT_EQ(pop_up(), nullptr) << "an empty project is dropped without a question";
}

TEST_F(EditorTest, TheTutorialPhraseTurnsTheHeaderToTheTutorialsMode) {
  const auto shown = [](const char* object) {
    std::vector<int> frames_shown;
    for (const CInstance* i : object_get(object_find(object))->instances) {
      if (i->has(instance_flag::VISIBLE)) frames_shown.push_back(static_cast<int>(i->image_index));
    }
    return frames_shown;
  };
  ASSERT_EQ(shown("icona_gen").size(), 11u);
  type_into_box("INIZIA\nusa gioco delle direzioni\n");
  frames(1);
  EXPECT_EQ(shown("icona_gen"), std::vector<int>{2}) << "only the colours stay";
  EXPECT_TRUE(shown("folder_int").empty());
  type_into_box("INIZIA\n");
  frames(1);
  EXPECT_EQ(shown("icona_gen").size(), 11u);
  EXPECT_EQ(shown("folder_int").size(), 1u);
}

TEST_F(EditorTest, TheResourceButtonShowsThePicturesFolderOfTheSaveArea) {
  platform::set_headless(true);
  platform::set_log(debug_output);
  const std::string opened = debug_lines([] { click(1255, 23); });
  EXPECT_EQ(opened, "url_open: file://" + file_folders().save_area + "Immagini\n");
}

TEST(TerseForm, RewritesIntoTheTerseLanguageAndThenStaysPut) {
  const std::pair<const char*, const char*> cases[] = {
      {"se (X è maggiore di 3) allora\nscrivi (\"vero\") (X) .", "se (X > 3) {\nscrivi (\"1\", X) }"},
      {"disegna cerchio  (X: 1) (Y: 2)", "disegna cerchio (X: 1, Y: 2)"},
      {"se A è minore o uguale a falso allora --> ciao).", "se A <= 0 {  ciao)}"},
  };
  for (const auto& [program, terse] : cases) {
    EXPECT_EQ(terse_form(program), terse);
    EXPECT_EQ(terse_form(terse), terse);
  }
}

}  // namespace
