// The example programs of the text and number families run their block
// INIZIA and leave the variables their comments promise.
#include <algorithm>
#include <cctype>
#include <fstream>
#include <set>

#include "language/evaluation/numeric_expression.h"
#include "support/program_fixture.h"

namespace {

class ValueFunctionExamples : public ProgramTest {
 protected:
  // The program of examples/`name`, ready to run.
  ProgramInstance& example(std::string_view name) {
    std::ifstream file(std::filesystem::path(VELANT_SOURCE_DIR) / "examples" / name, std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    programs_.clear();
    set_main_program(nullptr);
    return runnable(text);
  }
  // The number of variable `name` of `p`.
  static double number(const ProgramInstance& p, std::string_view name) { return string_is_real(stored(p, name)); }
};

TEST_F(ValueFunctionExamples, Dadi) {
  ProgramInstance& p = example("dadi.txt");
  run_inizia(p);
  const double anna = number(p, "giri_anna"), bruno = number(p, "giri_bruno");
  EXPECT_EQ(anna + bruno + number(p, "pareggi"), 10);
  EXPECT_EQ(stored(p, "vincitore"), anna > bruno ? "\"Anna\"" : anna < bruno ? "\"Bruno\"" : "\"nessuno, è pari\"");
  for (std::string_view dado : {"dado_1", "dado_2"}) {
    EXPECT_GE(number(p, dado), 1);
    EXPECT_LE(number(p, dado), 6);
  }
  EXPECT_EQ(number(p, "lancio_bruno"), number(p, "dado_1") + number(p, "dado_2"));
  EXPECT_TRUE((std::set<std::string>{"\"Che fortuna!\"", "\"Bravissimi!\"", "\"Rivincita?\""}).contains(stored(p, "commento")))
      << stored(p, "commento");
}

TEST_F(ValueFunctionExamples, Tabelline) {
  ProgramInstance& p = example("tabelline.txt");
  run_inizia(p);
  const std::string primo = stored(p, "primo"), secondo = stored(p, "secondo");
  EXPECT_GE(string_is_real(primo), 1);
  EXPECT_LE(string_is_real(secondo), 10);
  EXPECT_EQ(number(p, "risposta"), string_is_real(primo) * string_is_real(secondo));
  const std::string domanda = "Quanto fa " + primo + " per " + secondo + "?";
  EXPECT_EQ(stored(p, "domanda"), "\"" + domanda + "\"");
  EXPECT_EQ(messages_, std::vector<std::string>{domanda});
  EXPECT_EQ(stored(p, "tipo"), static_cast<int>(number(p, "risposta")) % 2 == 0 ? "\"pari\"" : "\"dispari\"");

  // The answer shows once Enter has been pressed.
  run_frame(p);
  EXPECT_EQ(stored(p, "mostra_risposta"), "0");
  input_key_event(KEY_ENTER, true);
  input_begin_frame();
  run_frame(p);
  EXPECT_EQ(stored(p, "mostra_risposta"), "1");
}

TEST_F(ValueFunctionExamples, TestoRovesciato) {
  ProgramInstance& p = example("testo_rovesciato.txt");
  run_inizia(p);
  std::string frase = stored(p, "frase");
  std::reverse(frase.begin(), frase.end());  // the quotes trade places
  EXPECT_EQ(stored(p, "rovesciato"), frase);
  EXPECT_EQ(number(p, "lunghezza"), static_cast<double>(frase.size() - 2));
  EXPECT_EQ(number(p, "quante_o"), static_cast<double>(std::ranges::count(frase, 'o')));
  std::ranges::transform(frase, frase.begin(), [](char c) { return static_cast<char>(std::toupper(c)); });
  EXPECT_EQ(stored(p, "gridato"), frase);
}

}  // namespace
