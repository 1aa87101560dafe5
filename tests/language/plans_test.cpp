// The walk's shortcuts against the general way: random programs of
// assignments, increases, decreases and conditions (comparisons joined by
// logic words) over whole numbers,
// decimals, negative zeros, numbers past the exact range and strings, run
// with the plans and without, must leave every variable with the same
// text, the element's attribute at the same place and the same messages.
#include <random>
#include <span>
#include <string>
#include <vector>

#include "language/evaluation/plans.h"
#include "runtime/Code/Conversions.h"
#include "support/program_fixture.h"

namespace {

class Plans : public ProgramTest {
 protected:
  // Everything a run leaves that a learner could see: `text` run as the
  // program, or as an element's code under a program whose table holds a
  // string and a number of the element's names.
  std::string run_and_read(const std::string& text, bool plans, bool as_element = false) {
    plans_enabled() = plans;
    ProgramInstance& main = bare_program();
    set_main_program(&main);
    tokenise(main, as_element ? "INIZIA A = \"testo\" conto = 4 CICLO CONTINUO" : text);
    main.var_inizialization(0);
    main.mem_function(0, main.program.totale_tok);
    ProgramInstance* element = nullptr;
    if (as_element) {
      element = &bare_program(true);
      tokenise(*element, text);
      element->var_inizialization(0);
      element->mem_function(0, element->program.totale_tok);
    }
    ProgramInstance& p = element ? *element : main;
    std::string seen;
    try {
      if (element) run_inizia(main);
      run_inizia(p);
      for (int frame = 0; frame < 3; ++frame) run_frame(p);
    } catch (...) {
      seen += "fatal\n";
    }
    plans_enabled() = true;
    for (const ProgramInstance* table : {&main, element}) {
      for (size_t k = 0; table && k < table->vari.size() && k < table->val.size(); ++k) {
        seen += std::string(table->vari[k].string_view()) + "=" + value_to_text(table->val[k]) + "\n";
      }
    }
    seen += "x=" + std::to_string(p.instance.x) + "\n";
    for (const std::string& message : messages_) seen += message + "\n";
    messages_.clear();
    return seen;
  }
};

constexpr const char* NAMES[] = {"A", "B", "C", "X", "conto"};
constexpr const char* VALUES[] = {"0",       "7",     "-3",    "-0",  "12",   "2.5",   "-0.126",
                                  "100000",  "999999999999999", "4503599627370496", "\"ciao\"", "1.0", "007"};
constexpr const char* NUMERALS[] = {"0", "1", "2", "10", "3.5", "0.125", "123456789012345", "9"};

std::string pick(std::mt19937& random, std::span<const char* const> from) {
  return from[std::uniform_int_distribution<size_t>(0, from.size() - 1)(random)];
}

// An operand, and an expression of one to four of them, mostly of the chains the plans take.
std::string operand(std::mt19937& random) {
  return random() % 2 ? pick(random, NAMES) : pick(random, NUMERALS);
}
std::string expression(std::mt19937& random) {
  static constexpr const char* SIGNS[] = {"+", "-", "*", "+", "*", "/", "^"};
  std::string text = operand(random);
  for (int k = static_cast<int>(random() % 4); k > 0; --k) {
    const std::string sign = pick(random, SIGNS);
    // A division by a written 0 is refused before the run.
    text += sign + (sign == "/" ? pick(random, NAMES) : operand(random));
  }
  if (random() % 8 == 0) text = "(" + text + ")*2";
  return text;
}

std::string random_program(std::mt19937& random) {
  std::string text = "INIZIA\n";
  for (const char* name : NAMES) text += std::string(name) + " = " + pick(random, VALUES) + "\n";
  text += "CICLO CONTINUO\n";
  for (int line = 0; line < 8; ++line) {
    const std::string name = pick(random, NAMES);
    switch (random() % 5) {
      case 0: text += "aumenta " + name + " di " + operand(random) + "\n"; break;
      case 1: text += "diminuisci " + name + " di " + operand(random) + "\n"; break;
      case 2: {
        static constexpr const char* COMPARISONS[] = {">", "<", "=", ">=", "<=", "!="};
        static constexpr const char* LOGIC[] = {" e ", " o ", " o_esclusivamente "};
        std::string condition = name + " " + pick(random, COMPARISONS) + " " + expression(random);
        if (random() % 3 == 0) condition += pick(random, LOGIC) + operand(random) + " < " + operand(random);
        text += "se " + condition + " allora aumenta " + pick(random, NAMES) + " di 1 .\n";
        break;
      }
      default: text += name + " = " + expression(random) + "\n"; break;
    }
  }
  return text;
}

TEST_F(Plans, RandomProgramsLeaveTheSameTextsWithAndWithoutThem) {
  std::mt19937 random(20261126);
  std::vector<std::string> programs;
  for (int n = 0; n < 400; ++n) programs.push_back(random_program(random));
  // The zeros with a sign and the edges of the exact range, which random draws seldom meet.
  for (const char* edge : {"A = -0 B = 3 C = A*2-0 X = A*B", "A = -3 C = A*0 B = 0-0*A X = A-A",
                           "A = 94906267 C = A*A B = 4503599627370496 X = B+B+B", "A = -0 B = A+A C = A*A"}) {
    programs.push_back(std::string("INIZIA ") + edge + " CICLO CONTINUO");
  }
  // Steps of one across a change of length or of sign, which move digits in place otherwise.
  programs.push_back(
      "INIZIA A = 8 B = -10 C = 10 X = -1 conto = 1 CICLO CONTINUO aumenta A di 1 aumenta B di 1 diminuisci C di 1 "
      "aumenta X di 1 diminuisci conto di 1");
  for (const std::string& text : programs) {
    const std::string general = run_and_read(text, false);
    ASSERT_EQ(run_and_read(text, true), general) << text;
  }
}

TEST_F(Plans, RandomElementCodeLeavesTheSameTextsWithAndWithoutThem) {
  std::mt19937 random(1126);
  for (int n = 0; n < 200; ++n) {
    const std::string text = random_program(random);
    const std::string general = run_and_read(text, false, true);
    ASSERT_EQ(run_and_read(text, true, true), general) << text;
  }
}

}  // namespace
