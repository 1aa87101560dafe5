// Custom functions and object code at the tokeniser: calls pasted in with
// their values and defaults, in turn, with names of their own; what isn't
// expanded; object code cut out of the program and made into an element's
// tokens.
#include <algorithm>

#include "language/tokenization_fixture.h"

namespace {

class CustomFunctions : public Tokenization {
 protected:
  // The tokens of `text` that begin with `prefix`, in order.
  Tokens starting_with(const std::string& text, const std::string& prefix) {
    Tokens found;
    for (const std::string& t : statement(text)) {
      if (t.starts_with(prefix)) found.push_back(t);
    }
    return found;
  }
};

const std::string DOPPIO =
    "definisci funzione \"ottieni doppio\"\n"
    "argomenti (N: 1)\n"
    "{\n"
    "  risultato = < \"N\" > * 2\n"
    "  con questa funzione ottieni risultato\n"
    "}\n";

TEST_F(CustomFunctions, CallsArePastedInWithTheirValuesOrDefaultsEachInTurn) {
  // A call without arguments replaces every "saluta" of the text: no other name may hold it.
  const std::string saluta =
      "definisci funzione \"saluta\"\n"
      "argomenti (QUANTE: 3)\n"
      "{\n"
      "  aumenta contatore di < \"QUANTE\" >\n"
      "}\n";
  const Tokens t = statement(saluta + "saluta (QUANTE: 2)\nsaluta (QUANTE: 2)\nsaluta\n");
  const Tokens pasted = {"aumenta", "contatore", "di", "2", "aumenta", "contatore", "di", "2",
                         "aumenta", "contatore", "di", "3"};
  EXPECT_TRUE(std::search(t.begin(), t.end(), pasted.begin(), pasted.end()) != t.end()) << testing::PrintToString(t);
  EXPECT_EQ(std::count(t.begin(), t.end(), "saluta"), 0) << "no call is left";
}

TEST_F(CustomFunctions, AValueFunctionsNamesEndInThePositionOfEachCall) {
  const Tokens t = statement(DOPPIO + "A = ottieni doppio (N: 3)\nB = ottieni doppio (N: 5)\n");
  const Tokens names = starting_with(DOPPIO + "A = ottieni doppio (N: 3)\nB = ottieni doppio (N: 5)\n", "risultato");
  ASSERT_EQ(names.size(), 4u) << testing::PrintToString(t);
  EXPECT_NE(names[0], "risultato");
  EXPECT_EQ(names[1], names[0]);
  EXPECT_EQ(names[3], names[2]);
  EXPECT_NE(names[2], names[0]) << "two calls, two names";
  const auto a = std::find(t.begin(), t.end(), "A");
  ASSERT_NE(a, t.end());
  EXPECT_EQ(Tokens(a, a + 3), (Tokens{"A", "=", names[1]}));
  EXPECT_NE(std::find(t.begin(), t.end(), "3*2"), t.end());
  EXPECT_NE(std::find(t.begin(), t.end(), "5*2"), t.end());
}

TEST_F(CustomFunctions, ACallInABodyAndTheFunctionsBehindAnEmptyOneStayAsWritten) {
  const std::string uno = "definisci funzione \"uno\"\n{\n  aumenta x di 1\n}\n";
  const std::string due = "definisci funzione \"due\"\n{\n  uno\n}\n";
  EXPECT_EQ(starting_with(uno + due + "due\n", "uno").size(), 1u) << "the pasted body still calls uno";

  // A function that calls itself is pasted in at each call, and the text stops growing at its bound.
  const std::string eco = "definisci funzione \"eco\"\n{\n  eco eco\n}\n";
  std::string calls;
  for (int k = 0; k < 40; ++k) calls += "eco\n";
  EXPECT_FALSE(statement(eco + calls).empty());

  const std::string vuota = "definisci funzione \"vuota\"\n{\n}\n";
  const std::string tre = "definisci funzione \"tre\"\n{\n  aumenta x di 3\n}\n";
  const Tokens t = statement(vuota + tre + "tre\n");
  EXPECT_EQ(std::count(t.begin(), t.end(), "3"), 0) << testing::PrintToString(t);
  EXPECT_EQ(std::count(t.begin(), t.end(), "tre"), 1) << "the call stays";
}

TEST_F(CustomFunctions, ObjectCodeLeavesTheProgramForItsObject) {
  const Tokens t = statement("palla esegue al suo interno questo codice\n{\n  X = X + 2\n}\npunti = 1\n");
  EXPECT_EQ(std::count(t.begin(), t.end(), "X+2"), 0) << "nobody creates a palla: its code never runs";
  ASSERT_EQ(program_.tot_ogg, 2);
  EXPECT_EQ(program_.ogg[1], "palla ");
  EXPECT_NE(program_.contenuto_ogg[1].find("X+2"), std::string::npos);
  EXPECT_TRUE(program_.tok_ogg[1].empty()) << "made when the first element starts";
}

TEST_F(CustomFunctions, AnObjectsCodeLosesOnlyTheLineEndOrTheBlankBeforeItsFirstWord) {
  for (const char* code : {"#X  =  X+2 ", " X  =  X+2 ", " # X  =  X+2 "}) {
    const ObjectCodeTokens made = tokenization_obj(code);
    Tokens texts;
    for (const RValue& v : made.tok) texts.emplace_back(v.string_view());
    EXPECT_EQ(texts, (Tokens{"X", "=", "X+2"})) << '"' << code << '"';
    EXPECT_EQ(made.INIZIA, -1);
  }
}

}  // namespace
