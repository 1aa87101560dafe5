// The statement walk over whole programs: tokens, the variable table and
// the blocks "INIZIA" and "CICLO CONTINUO" run as a run runs them.
#include "language/evaluation/numeric_expression.h"
#include "language/tokenizer/text_edit.h"
#include "support/program_fixture.h"

namespace {

using Texts = std::vector<std::string>;

using StatementWalk = ProgramTest;

const std::string RULE(71, '_');

TEST_F(StatementWalk, IncreaseAndDecreaseKeepTheShortestNumber) {
  ProgramInstance& p = runnable(
      "INIZIA X = 5 aumenta X di 2.5 A = X diminuisci X di 0.5 F = 0.1 aumenta F di 0.2 N = -3 diminuisci N di 2*3 "
      "Z = ottieni qualcosa che non esiste aumenta Z di 4 aumenta NESSUNO di 1 CICLO CONTINUO");
  run_inizia(p);
  // Ten decimals first: the error of binary fractions doesn't show. A value
  // that was never set counts from 0; a name that is no variable stays none.
  EXPECT_EQ(stored(p, {"A", "X", "F", "N", "Z", "NESSUNO"}), (Texts{"7.5", "7", "0.3", "-9", "4", "absent"}));
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
  EXPECT_FLOAT_EQ(element.instance.x, 15);
  // A name of the program stays the program's: the object's code changes that one.
  EXPECT_EQ(stored(element, {"X", "P"}), (Texts{"15", "absent"}));
  EXPECT_EQ(stored(main, {"P"}), (Texts{"2"}));
}

TEST_F(StatementWalk, ConditionsLightTheirBlocksFromFrameToFrame) {
  ProgramInstance& p = runnable(
      "INIZIA X = 0 Y = 0 C = 0 D = 0 A = 0 B = 0 W = 0 se X > 1 { W = 5 } "
      "CICLO CONTINUO aumenta X di 1 se X > 2 { aumenta Y di 1 } "
      "se A = 1 { se B = 1 { aumenta C di 1 } aumenta D di 1 }");
  run_inizia(p);
  // A false condition in "INIZIA" leaves its block dark, and that block is never walked again.
  const int open = position(p, "<--d-->{");
  EXPECT_EQ(p.token_text(open + 1), "<--d-->W");
  EXPECT_EQ(p.token_text(open + 4), "<--d-->}");
  for (int frame = 0; frame < 4; ++frame) run_frame(p);
  EXPECT_EQ(stored(p, {"W", "Y", "D"}), (Texts{"0", "2", "0"}));

  // The outer block lights, the inner stays dark on its own condition; dark
  // again from the outside, neither acts; the marks come off once more when it is true.
  const std::pair<std::pair<const char*, const char*>, Texts> steps[] = {
      {{"A", "1"}, {"0", "1"}}, {{"B", "1"}, {"1", "2"}}, {{"A", "0"}, {"1", "2"}}, {{"A", "0"}, {"1", "2"}},
      {{"A", "1"}, {"2", "3"}},
  };
  for (const auto& [assignment, c_and_d] : steps) {
    p.val[static_cast<size_t>(p.find_variable(assignment.first))] = RValue::text(assignment.second);
    run_frame(p);
    EXPECT_EQ(stored(p, {"C", "D"}), c_and_d) << assignment.first << " = " << assignment.second;
  }
  EXPECT_TRUE(messages_.empty());
}

TEST_F(StatementWalk, LoopsRunTheirBodyAsOftenAsAskedAndAtLeastOnceEachArrival) {
  ProgramInstance& p = runnable(
      "INIZIA A = 0 B = 0 C = 0 S = 0 X = 0 Y = 0 W = 0 "
      "ripeti per 3 volte { aumenta A di 1 } ripeti per 0 volte { aumenta B di 1 } "
      "ripeti per -2 volte { aumenta C di 1 } ripeti per 4 volte { S = S + ripetizione } "
      "ripeti per 1+2 volte allora ripeti per 2 volte { aumenta X di 1 } aumenta Y di 1 . "
      "ripeti finche W < 5 { aumenta W di 1 } "
      "CICLO CONTINUO V = 0 ripeti finche V > 100 { aumenta Z di 1 } Z = Z");
  run_inizia(p);
  // Nested loops close at their own braces; a condition loop runs until its condition is false.
  EXPECT_EQ(stored(p, {"A", "B", "C", "X", "Y", "W"}), (Texts{"3", "1", "1", "6", "3", "5"}));
  EXPECT_EQ(string_is_real(stored(p, "S")), 10);
  // The body of a condition loop is marked done once the condition failed, and runs again at each arrival.
  EXPECT_GT(position(p, "<--w-->aumenta"), 0);
  for (int frame = 0; frame < 3; ++frame) run_frame(p);
  EXPECT_EQ(string_is_real(stored(p, "Z")), 3);
  EXPECT_TRUE(messages_.empty());
}

TEST_F(StatementWalk, EndlessOrUnclosedLoopsStopTheRunAndGoBackToTheEditor) {
  // The endless loop ran 250001 passes, the walk that called ran the body
  // once more and then the statement after it: the run ends with the frame.
  ProgramInstance& endless =
      runnable("INIZIA X = 0 ripeti finche 1 = 1 { aumenta X di 1 } aumenta X di 1000000 CICLO CONTINUO");
  run_inizia(endless);
  EXPECT_EQ(stored(endless, {"X"}), (Texts{"1250002"}));
  // Without its closing brace the walk goes on into the body, which runs once.
  ProgramInstance& unclosed = runnable("INIZIA Y = 0 ripeti per 3 volte { aumenta Y di 1 CICLO CONTINUO");
  run_inizia(unclosed);
  EXPECT_EQ(stored(unclosed, {"Y"}), (Texts{"1"}));
  run_inizia(runnable("INIZIA Z = 0 ripeti finche Z < 3 { aumenta Z di 1 CICLO CONTINUO"));
  ASSERT_EQ(messages_.size(), 3u);
  EXPECT_EQ(messages_[0], "Ciclo 'ripeti finche' fallito! Un ciclo 'finche' non è terminato dopo 250000 passaggi: "
                          "molto probabilmente hai scritto un ciclo infinito. Controlla il tuo codice e riprova!");
  EXPECT_EQ(messages_[1], "Errore nell'istruzione iterativa:\r\n\t" + RULE +
                              "\r\n\t\r\n\tripeti per 3 volte { aumenta Y di 1 CICLO_CONTINUO  \r\n\t" + RULE +
                              "\r\n\t\r\n\tEsecuzione fallita: impossibile interpretare correttamente il "
                              "codice!\r\n\t\r\n\tEcco le possibili cause:\r\n\t1 - Manca una parentesi graffa chiusa "
                              "'}' o il simbolo punto ' . ' alla fine della sequenza d'istruzioni");
  // The condition loop's cause words the full stop its own way.
  EXPECT_TRUE(text_edit::contains(messages_[2], "' o il simbolo punto separato da spazi ' . ' alla fine"));
  EXPECT_EQ(run_ends(), (std::vector{RunEnd::ToEditor, RunEnd::ToEditor, RunEnd::ToEditor}));
}

TEST_F(StatementWalk, DebugShowsTheValueWithoutQuotes) {
  ProgramInstance& p = runnable("INIZIA X = 4 debug X debug X*2 debug \"punti: <X>\" CICLO CONTINUO");
  run_inizia(p);
  // A string is shown as it stands, placeholders unfilled.
  std::string text(p.token_text(position(p, "debug", position(p, "X*2")) + 1));
  ASSERT_TRUE(text.starts_with('"'));
  std::erase(text, '"');
  EXPECT_EQ(messages_, (Texts{"4", "8.0000000000", text}));
}

TEST_F(StatementWalk, OnlyStatementWordsStartStatements) {
  ProgramInstance& p =
      runnable("INIZIA X = 1 disegna_cerchio --> (X: 3 ) suona_nota cosa se X = 1 { } CICLO CONTINUO");
  const std::pair<const char*, int> starts[] = {{"X", 1},    {"disegna_cerchio", 1}, {"suona_nota", 1}, {"se", 1},
                                                {"CICLO_CONTINUO", 1}, {"cosa", 0}, {"-->", 0},  {"(X:", 0}};
  for (const auto& [token, ok] : starts) EXPECT_EQ(p.program.tok_ok[static_cast<size_t>(position(p, token))], ok) << token;
  EXPECT_EQ(p.vlen, p.vari_size);
}

TEST_F(StatementWalk, ExamplesDoWhatTheirCommentsSay) {
  ProgramInstance& tabellina = example("tabellina.txt");
  run_inizia(tabellina);
  EXPECT_EQ(messages_, Texts{"3025"});  // the sum that "debug" shows

  // Right of the middle the circle is green, high on the left red.
  ProgramInstance& condizioni = example("condizioni.txt");
  run_inizia(condizioni);
  for (const auto& [x, colour] : {std::pair{600, "65280"}, std::pair{100, "255"}}) {
    input_mouse_move(static_cast<float>(x), 100);
    input_begin_frame();
    run_frame(condizioni);
    EXPECT_EQ(stored(condizioni, {"colore"}), Texts{colour}) << x;
  }
  EXPECT_EQ(messages_.size(), 1u);  // tabellina's
}

}  // namespace
