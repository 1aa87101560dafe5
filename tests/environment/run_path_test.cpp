// The way of a run inside the environment: from the editor's text through
// code.txt to main_room and back, by Esc, by the close button, by an error.
#include "environment/environment_fixture.h"
#include "environment/main_code_ctrl.h"

namespace {

class RunPath : public EnvironmentTest {
 protected:
  // Starts the run of `text` from the editor, as F5 does, and lets the first frames of the run pass.
  void run_from_editor(const std::string& text) {
    EditorCtrl* editor = editor_ctrl();
    ASSERT_NE(editor, nullptr);
    editor->load(text);
    key(116);  // F5
    frames(4);
  }
  static MainCodeCtrl* runner() {
    const CObject* object = object_get(object_find("main_code_ctrl"));
    return object && !object->instances.empty() ? static_cast<MainCodeCtrl*>(object->instances.front()) : nullptr;
  }

  // Number X of the running program.
  static int x() {
    const ProgramInstance& p = runner()->program();
    return std::stoi(std::string(p.val[static_cast<size_t>(p.find_variable("X"))].string_view()));
  }
};

TEST_F(RunPath, TheEditorsTextRunsAndEscBringsTheLearnerBack) {
  EXPECT_EQ(current_room_index(), ROOM_EDITOR);
  run_from_editor("INIZIA\nX = 1\nCICLO CONTINUO\naumenta X di 1\n");
  EXPECT_EQ(current_room_index(), ROOM_MAIN);
  ASSERT_NE(runner(), nullptr);
  EXPECT_EQ(read_whole_file("code.txt"), "INIZIA\nX = 1\nCICLO CONTINUO\naumenta X di 1");
  const int before = x();
  frames(3);
  EXPECT_EQ(x(), before + 3) << "one pass of CICLO CONTINUO a frame";

  key(27);
  frames(1);
  EXPECT_EQ(current_room_index(), ROOM_EDITOR);
  EXPECT_EQ(runner(), nullptr) << "a run leaves nothing behind";
  ASSERT_NE(editor_ctrl(), nullptr);
  EXPECT_EQ(editor_ctrl()->slide_text[1], "INIZIA\nX = 1\nCICLO CONTINUO\naumenta X di 1") << "the text is kept";
  // Runs can follow each other, each from a new start.
  run_from_editor("INIZIA\nY = 5\nCICLO CONTINUO\n");
  ASSERT_NE(runner(), nullptr);
  EXPECT_LT(runner()->program().find_variable("X"), 0);
}

TEST_F(RunPath, TheCloseButtonEndsTheRunAndNotTheEnvironment) {
  run_from_editor("INIZIA\nX = 1\nCICLO CONTINUO\n");
  ASSERT_EQ(current_room_index(), ROOM_MAIN);
  platform::window().simulate_close_request();
  frames(2);
  EXPECT_EQ(current_room_index(), ROOM_EDITOR);
  EXPECT_FALSE(platform::window().should_quit());
}

TEST_F(RunPath, AFatalErrorUnderTheProgramStopsOnlyTheRun) {
  // Text can't be increased: the runtime's conversion fails under the statement.
  run_from_editor("INIZIA\nS = \"ciao\"\naumenta S di 1\nCICLO CONTINUO\n");
  frames(2);
  EXPECT_EQ(current_room_index(), ROOM_EDITOR);
  ASSERT_FALSE(messages_.empty());
  EXPECT_EQ(messages_.back().rfind("Errore durante l'esecuzione del programma:", 0), 0u) << messages_.back();
}

TEST_F(RunPath, TheWindowFollowsTheProgramsSizeInTheSameFrame) {
  run_from_editor("INIZIA\nCICLO CONTINUO\nlarghezza_finestra = 640\naltezza_finestra = 480\n");
  EXPECT_EQ(platform::window().size().width, 640);
  EXPECT_EQ(platform::window().size().height, 480);
  EXPECT_EQ(current_room()->width, 640);
}

TEST_F(RunPath, AFaultFoundBeforeTheRunKeepsTheProgramInTheEditor) {
  run_from_editor("INIZIA\nse (1 = 1) allora\nscrivi (1)\nCICLO CONTINUO\n");
  EXPECT_EQ(current_room_index(), ROOM_EDITOR);
  ASSERT_FALSE(messages_.empty());
  EXPECT_EQ(messages_.back().rfind("ERRORE: una parentesi graffa non è stata chiusa", 0), 0u);
  EXPECT_FALSE(std::filesystem::exists("code.txt")) << "nothing is handed to a run";
  EXPECT_EQ(editor().whole_program(), "INIZIA\nse (1 = 1) allora\nscrivi (1)\nCICLO CONTINUO");
}

}  // namespace
