// The statement walk over whole programs: tokens, the variable table and
// the blocks "INIZIA" and "CICLO CONTINUO" run as a run runs them.
#include "language/tokenizer/marks.h"
#include "language/evaluation/numeric_expression.h"
#include "language/tokenizer/text_edit.h"
#include "support/program_fixture.h"

namespace {

class StatementWalk : public ProgramTest {
 protected:
  static bool went_to_editor() { return run_ends() == std::vector{RunEnd::ToEditor}; }
};

TEST_F(StatementWalk, IncreaseAndDecreaseKeepTheShortestNumber) {
  ProgramInstance& p = runnable(
      "INIZIA X = 5 aumenta X di 2.5 A = X diminuisci X di 0.5 "
      "F = 0.1 aumenta F di 0.2 "
      "N = -3 diminuisci N di 2*3 "
      "Z = ottieni qualcosa che non esiste aumenta Z di 4 "
      "aumenta NESSUNO di 1 CICLO CONTINUO");
  run_inizia(p);
  EXPECT_EQ(stored(p, "A"), "7.5");
  EXPECT_EQ(stored(p, "X"), "7");
  // Ten decimals first: the error of binary fractions doesn't show.
  EXPECT_EQ(stored(p, "F"), "0.3");
  EXPECT_EQ(stored(p, "N"), "-9");
  // A value that was never set counts from 0; a name that is no variable stays none.
  EXPECT_EQ(stored(p, "Z"), "4");
  EXPECT_EQ(stored(p, "NESSUNO"), "absent");
  EXPECT_TRUE(messages_.empty());
}

TEST_F(StatementWalk, IncreaseOfAnAttributeMovesTheElement) {
  ProgramInstance& main = runnable("INIZIA P = 1 CICLO CONTINUO");
  ProgramInstance& element = bare_program(true);
  tokenise(element, "INIZIA X = 10 P = 0 aumenta X di 5 aumenta P di 2 CICLO CONTINUO");
  element.var_inizialization(0);
  element.mem_function(0, element.program.totale_tok);
  element.instance.x = 10;
  run_inizia(element);
  EXPECT_EQ(stored(element, "X"), "15");
  EXPECT_FLOAT_EQ(element.instance.x, 15);
  // A name of the program stays the program's: the object's code changes that one.
  EXPECT_EQ(stored(element, "P"), "absent");
  EXPECT_EQ(stored(main, "P"), "2");
}

TEST_F(StatementWalk, FalseConditionInIniziaStaysDark) {
  ProgramInstance& p = runnable("INIZIA X = 0 Y = 0 se X > 1 { Y = 5 } CICLO CONTINUO");
  run_inizia(p);
  EXPECT_EQ(stored(p, "Y"), "0");
  const int open = position(p, "<--d-->{");
  ASSERT_GT(open, 0);
  EXPECT_EQ(p.token_text(open + 1), "<--d-->Y");
  EXPECT_EQ(p.token_text(open + 4), "<--d-->}");
  // The block "INIZIA" is never walked again, so nothing lights it.
  run_frame(p);
  run_frame(p);
  EXPECT_EQ(stored(p, "Y"), "0");
}

TEST_F(StatementWalk, ConditionInTheLoopFollowsItsValueFromFrameToFrame) {
  ProgramInstance& p = runnable(
      "INIZIA X = 0 Y = 0 C = 0 D = 0 A = 0 B = 0 "
      "CICLO CONTINUO aumenta X di 1 se X > 2 { aumenta Y di 1 } "
      "se A = 1 { se B = 1 { aumenta C di 1 } aumenta D di 1 }");
  run_inizia(p);
  for (int frame = 0; frame < 4; ++frame) run_frame(p);
  EXPECT_EQ(stored(p, "Y"), "2");
  EXPECT_EQ(stored(p, "D"), "0");

  // The outer block lights, the inner stays dark on its own condition.
  p.val[static_cast<size_t>(p.find_variable("A"))] = RValue::text("1");
  run_frame(p);
  EXPECT_EQ(stored(p, "D"), "1");
  EXPECT_EQ(stored(p, "C"), "0");
  p.val[static_cast<size_t>(p.find_variable("B"))] = RValue::text("1");
  run_frame(p);
  EXPECT_EQ(stored(p, "C"), "1");
  EXPECT_EQ(stored(p, "D"), "2");
  // Dark again from the outside: neither block acts, and the marks come off once more when it is true.
  p.val[static_cast<size_t>(p.find_variable("A"))] = RValue::text("0");
  run_frame(p);
  run_frame(p);
  EXPECT_EQ(stored(p, "C"), "1");
  EXPECT_EQ(stored(p, "D"), "2");
  p.val[static_cast<size_t>(p.find_variable("A"))] = RValue::text("1");
  run_frame(p);
  EXPECT_EQ(stored(p, "C"), "2");
  EXPECT_EQ(stored(p, "D"), "3");
  EXPECT_TRUE(messages_.empty());
}

TEST_F(StatementWalk, CountedLoopsRunTheirBodyTheGivenNumberOfTimesAndAtLeastOnce) {
  ProgramInstance& p = runnable(
      "INIZIA A = 0 B = 0 C = 0 S = 0 X = 0 Y = 0 "
      "ripeti per 3 volte { aumenta A di 1 } "
      "ripeti per 0 volte { aumenta B di 1 } "
      "ripeti per -2 volte { aumenta C di 1 } "
      "ripeti per 4 volte { S = S + ripetizione } "
      "ripeti per 1+2 volte allora ripeti per 2 volte { aumenta X di 1 } aumenta Y di 1 . "
      "CICLO CONTINUO");
  run_inizia(p);
  EXPECT_EQ(stored(p, "A"), "3");
  EXPECT_EQ(stored(p, "B"), "1");
  EXPECT_EQ(stored(p, "C"), "1");
  EXPECT_EQ(string_is_real(stored(p, "S")), 10);
  // Nested loops close at their own braces.
  EXPECT_EQ(stored(p, "X"), "6");
  EXPECT_EQ(stored(p, "Y"), "3");
  EXPECT_TRUE(messages_.empty());
}

TEST_F(StatementWalk, ConditionLoopRunsUntilFalseAndAtLeastOnceEachArrival) {
  ProgramInstance& p = runnable(
      "INIZIA X = 0 ripeti finche X < 5 { aumenta X di 1 } "
      "CICLO CONTINUO Y = 0 ripeti finche Y > 100 { aumenta Z di 1 } Z = Z");
  run_inizia(p);
  EXPECT_EQ(stored(p, "X"), "5");
  // The body is marked done once the condition failed.
  const int body = position(p, "<--w-->aumenta");
  ASSERT_GT(body, 0);
  for (int frame = 0; frame < 3; ++frame) run_frame(p);
  EXPECT_EQ(string_is_real(stored(p, "Z")), 3);
  EXPECT_TRUE(messages_.empty());
}

TEST_F(StatementWalk, EndlessConditionLoopStopsAfter250000PassesAndGoesBackToTheEditor) {
  ProgramInstance& p = runnable("INIZIA X = 0 ripeti finche 1 = 1 { aumenta X di 1 } aumenta X di 1000000 CICLO CONTINUO");
  run_inizia(p);
  ASSERT_EQ(messages_.size(), 1u);
  EXPECT_EQ(messages_[0],
            "Ciclo 'ripeti finche' fallito! Un ciclo 'finche' non è terminato dopo 250000 passaggi: molto "
            "probabilmente hai scritto un ciclo infinito. Controlla il tuo codice e riprova!");
  EXPECT_TRUE(went_to_editor());
  // The loop ran 250001 passes, the walk that called ran the body once more
  // and then the statement after it: the run ends with the frame.
  EXPECT_EQ(stored(p, "X"), "1250002");
}

TEST_F(StatementWalk, LoopWithoutClosingBraceStopsTheRunWithItsFrame) {
  ProgramInstance& p = runnable("INIZIA X = 0 ripeti per 3 volte { aumenta X di 1 CICLO CONTINUO");
  run_inizia(p);
  ASSERT_EQ(messages_.size(), 1u);
  const std::string rule(71, '_');
  EXPECT_EQ(messages_[0],
            "Errore nell'istruzione iterativa:\r\n\t" + rule + "\r\n\t\r\n\tripeti per 3 volte { aumenta X di 1 "
            "CICLO_CONTINUO  \r\n\t" + rule +
            "\r\n\t\r\n\tEsecuzione fallita: impossibile interpretare correttamente il codice!\r\n\t\r\n\t"
            "Ecco le possibili cause:\r\n\t1 - Manca una parentesi graffa chiusa '}' o il simbolo punto ' . ' "
            "alla fine della sequenza d'istruzioni");
  EXPECT_TRUE(went_to_editor());
  // The walk goes on into the body, which runs once.
  EXPECT_EQ(stored(p, "X"), "1");

  messages_.clear();
  ProgramInstance& q = runnable("INIZIA Y = 0 ripeti finche Y < 3 { aumenta Y di 1 CICLO CONTINUO");
  run_ends().clear();
  run_inizia(q);
  ASSERT_EQ(messages_.size(), 1u);
  EXPECT_TRUE(text_edit::contains(messages_[0], "' o il simbolo punto separato da spazi ' . ' alla fine"));
}

TEST_F(StatementWalk, DebugShowsTheValueWithoutQuotes) {
  ProgramInstance& p = runnable("INIZIA X = 4 debug X debug X*2 debug \"punti: <X>\" CICLO CONTINUO");
  run_inizia(p);
  ASSERT_EQ(messages_.size(), 3u);
  EXPECT_EQ(messages_[0], "4");
  EXPECT_EQ(messages_[1], "8.0000000000");
  // A string is shown as it stands, placeholders unfilled.
  std::string text(p.token_text(position(p, "debug", position(p, "X*2")) + 1));
  ASSERT_TRUE(text.starts_with('"'));
  std::erase(text, '"');
  EXPECT_EQ(messages_[2], text);
}

TEST_F(StatementWalk, OnlyStatementWordsStartStatements) {
  ProgramInstance& p = runnable("INIZIA X = 1 disegna_cerchio --> (X: 3 ) suona_nota cosa se X = 1 { } CICLO CONTINUO");
  const auto ok = [&](std::string_view token, int from = 0) { return p.program.tok_ok[static_cast<size_t>(position(p, token, from))]; };
  EXPECT_EQ(ok("X"), 1);         // before "="
  EXPECT_EQ(ok("disegna_cerchio"), 1);
  EXPECT_EQ(ok("suona_nota"), 1);
  EXPECT_EQ(ok("se"), 1);
  EXPECT_EQ(ok("CICLO_CONTINUO"), 1);
  EXPECT_EQ(ok("cosa"), 0);
  EXPECT_EQ(ok("-->"), 0);
  EXPECT_EQ(ok("(X:"), 0);
  EXPECT_EQ(p.vlen, p.vari_size);
}

TEST_F(StatementWalk, ExamplesDoWhatTheirCommentsSay) {
  const auto example = [&](std::string_view name) -> ProgramInstance& {
    std::ifstream file(std::filesystem::path(VELANT_SOURCE_DIR) / "examples" / name, std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    programs_.clear();
    set_main_program(nullptr);
    return runnable(text);
  };

  ProgramInstance& tabellina = example("tabellina.txt");
  run_inizia(tabellina);
  EXPECT_EQ(stored(tabellina, "somma"), "3025");
  EXPECT_EQ(messages_, std::vector<std::string>{"3025"});

  ProgramInstance& contatore = example("contatore.txt");
  run_inizia(contatore);
  for (int frame = 0; frame < 105; ++frame) run_frame(contatore);
  EXPECT_EQ(stored(contatore, "conta"), "4");
  EXPECT_EQ(stored(contatore, "giri"), "1");

  ProgramInstance& cicli = example("cicli.txt");
  run_inizia(cicli);
  run_frame(cicli);
  EXPECT_EQ(stored(cicli, "i"), "10");
  EXPECT_EQ(stored(cicli, "altezza"), "200");

  // The colours stand as numbers in the tokens: grigio, rosso, verde, giallo, nero in the order of the text.
  ProgramInstance& condizioni = example("condizioni.txt");
  std::vector<std::string> colours;
  for (int k = 0; k < condizioni.program.totale_tok; ++k) {
    if (condizioni.token_text(k) == "colore" && condizioni.token_text(k + 1) == "=") {
      colours.emplace_back(condizioni.token_text(k + 2));
    }
  }
  ASSERT_EQ(colours.size(), 5u);
  run_inizia(condizioni);
  input_mouse_move(600, 100);
  input_begin_frame();
  run_frame(condizioni);
  EXPECT_EQ(stored(condizioni, "colore"), colours[2]);
  input_mouse_move(100, 100);
  input_begin_frame();
  run_frame(condizioni);
  EXPECT_EQ(stored(condizioni, "colore"), colours[1]);
  EXPECT_NE(colours[1], colours[2]);
  EXPECT_EQ(messages_.size(), 1u);
}

}  // namespace
