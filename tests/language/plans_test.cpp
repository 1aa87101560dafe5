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
  // program, or as the code of `elements` elements of one class, sharing
  // their plans, under a program whose table holds a string and a number of
  // the elements' names. Each element starts with its own "A", so that their
  // conditions part ways, and they take their turns frame by frame.
  std::string run_and_read(const std::string& text, bool plans, int elements = 0) {
    plans_enabled() = plans;
    ProgramInstance& main = bare_program();
    set_main_program(&main);
    tokenise(main, elements > 0 ? "INIZIA A = \"testo\" conto = 4 CICLO CONTINUO" : text);
    main.var_inizialization(0);
    main.mem_function(0, main.program.totale_tok);
    std::vector<ProgramInstance*> runs;
    for (int k = 0; k < elements; ++k) {
      ProgramInstance& element = bare_program(true);
      // Variables that each element's creator gave it stand first, in an order of its own: the
      // elements' tables differ, with as many changes to their names.
      static constexpr const char* GIVEN[] = {"B", "dono", "B"};
      for (int given = k % 2; given < k % 2 + 2; ++given) element.append_variable(GIVEN[given], RValue::text("1"));
      // The elements of a class run the same strings, as they come from its code's tokens.
      if (runs.empty()) tokenise(element, text);
      else element.program = runs[0]->program;
      element.var_inizialization(static_cast<int>(element.vari.size()));
      element.mem_function(0, element.program.totale_tok, runs.empty() ? nullptr : runs[0]->program.plans);
      runs.push_back(&element);
    }
    if (runs.empty()) runs.push_back(&main);
    std::string seen;
    try {
      if (elements > 0) run_inizia(main);
      for (size_t k = 0; k < runs.size(); ++k) {
        run_inizia(*runs[k]);
        if (const int a = runs[k]->find_variable("A"); elements > 0 && a >= 0) {
          runs[k]->val[static_cast<size_t>(a)] = RValue::text(std::to_string(static_cast<int>(k) * 7 - 10));
        }
      }
      for (int frame = 0; frame < 3; ++frame) {
        for (ProgramInstance* p : runs) run_frame(*p);
      }
    } catch (...) {
      seen += "fatal\n";
    }
    plans_enabled() = true;
    runs.push_back(&main);
    for (const ProgramInstance* table : runs) {
      for (size_t k = 0; k < table->vari.size() && k < table->val.size(); ++k) {
        seen += std::string(table->vari[k].string_view()) + "=" + value_to_text(table->val[k]) + "\n";
      }
      seen += "x=" + std::to_string(table->instance.x) + "\n";
    }
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
  // A block that a false condition darkened and a true one lights again.
  programs.push_back("INIZIA A = 0 B = 0 CICLO CONTINUO se A > 1 allora aumenta B di 1 . aumenta A di 1");
  for (const std::string& text : programs) {
    const std::string general = run_and_read(text, false);
    ASSERT_EQ(run_and_read(text, true), general) << text;
  }
}

TEST_F(Plans, RandomElementCodeLeavesTheSameTextsWithAndWithoutThem) {
  std::mt19937 random(1126);
  for (int n = 0; n < 200; ++n) {
    const std::string text = random_program(random);
    const int elements = n % 2 ? 1 : 4;
    const std::string general = run_and_read(text, false, elements);
    ASSERT_EQ(run_and_read(text, true, elements), general) << text;
  }
}

}  // namespace
