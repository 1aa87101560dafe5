#include <gtest/gtest.h>

#include <map>
#include <string>

#include "language/evaluation/condition_formula.h"
#include "runtime/Code/Builtins.h"

namespace {

// A program's variables, the only names a condition's strings look up here.
struct Variables : ExpressionContext {
  std::map<std::string, std::string, std::less<>> values;

  std::string cal_var_and_const(std::string_view piece) override {
    auto it = values.find(piece);
    return it == values.end() ? "0" : it->second;
  }
  std::string calculate_var(std::string_view name) override {
    auto it = values.find(name);
    return it == values.end() ? "no var" : it->second;
  }
};

class Conditions : public ::testing::Test {
 protected:
  void SetUp() override { register_runtime_builtins(); }

  std::string truth(std::string_view formula) { return reduce_condition(ctx_, formula); }
  std::string stage(std::string_view formula) { return boolean_parse(ctx_, formula); }

  Variables ctx_;
};

}  // namespace

TEST_F(Conditions, NumbersCompareWithEverySign) {
  EXPECT_EQ(truth("1=1"), "1");
  EXPECT_EQ(truth("1=2"), "0");
  EXPECT_EQ(truth("3>2"), "1");
  EXPECT_EQ(truth("3<2"), "0");
  EXPECT_EQ(truth("3#3"), "1");
  EXPECT_EQ(truth("2@1"), "0");
  EXPECT_EQ(truth("2ù3"), "1");
  EXPECT_EQ(truth("2ù2"), "0");
  EXPECT_EQ(truth("-1.5<0"), "1");
  // Numbers compare with the runtime's epsilon.
  EXPECT_EQ(truth("1.000001=1"), "1");
  EXPECT_EQ(truth("1.001=1"), "0");
  // Brackets around a lone comparison go.
  EXPECT_EQ(stage("[2>1]"), "1");
}

TEST_F(Conditions, LogicWorksFromLeftToRight) {
  EXPECT_EQ(truth("1=1e2=2"), "1");
  EXPECT_EQ(truth("1=1e2=3"), "0");
  EXPECT_EQ(truth("1=2o2=2"), "1");
  EXPECT_EQ(truth("1=2o2=3"), "0");
  EXPECT_EQ(truth("1=1x2=2"), "0");
  EXPECT_EQ(truth("1=1x1=2"), "1");
  // (1 or 0) and 0: no precedence of "e" over "o".
  EXPECT_EQ(truth("1=1o1=2e2=3"), "0");
  EXPECT_EQ(truth("1=2e1=1o2=2"), "1");
}

TEST_F(Conditions, EachStageTakesOneBracketLevel) {
  EXPECT_EQ(stage("[1=1]e[2=1]"), "1e0");
  EXPECT_EQ(stage("1e0"), "0");
  EXPECT_EQ(stage("[[1=1]o[1=2]]e1"), "[1o0]e1");
  EXPECT_EQ(truth("[[1=1]o[1=2]]e1"), "1");
  EXPECT_EQ(stage("1"), "1");
  EXPECT_EQ(stage("0"), "0");
}

TEST_F(Conditions, NonNegatesTheValueBehindIt) {
  EXPECT_EQ(truth("n0"), "1");
  EXPECT_EQ(truth("n1"), "0");
  EXPECT_EQ(truth("n0.7"), "0");
  // Before a bracket it waits until the bracket is a value.
  EXPECT_EQ(stage("n[1=1]"), "n1");
  EXPECT_EQ(truth("n[1=1]"), "0");
  EXPECT_EQ(truth("n[1=2]e1"), "1");
  EXPECT_EQ(truth("1=1en1=1"), "0");
}

TEST_F(Conditions, ABareValueIsTrueFromOneHalf) {
  EXPECT_EQ(truth("0.4"), "0");
  EXPECT_EQ(truth("0.49999"), "0");
  EXPECT_EQ(truth("0.5"), "1");
  EXPECT_EQ(truth("7"), "1");
  EXPECT_EQ(truth("-3"), "0");
  EXPECT_EQ(truth("0.4e1"), "0");
  EXPECT_EQ(truth("0.4o0.6"), "1");
}

TEST_F(Conditions, StringsCompareAsTextsWithTheirBlanksIgnored) {
  EXPECT_EQ(truth("\"ciao\"=\"ciao\""), "1");
  EXPECT_EQ(truth("\"ciao\"=\"Ciao\""), "0");
  EXPECT_EQ(truth("\"ciao mondo\"=\"ciaomondo\""), "1");
  EXPECT_EQ(truth("\"a\"ù\"b\""), "1");
  EXPECT_EQ(truth("\"a\"ù\"a\""), "0");
  // A text against a number compares texts: the quotes differ.
  EXPECT_EQ(truth("\"5\"=5"), "0");
  // With any other sign a text is a number, hence 0.
  EXPECT_EQ(truth("\"b\">\"a\""), "0");
  EXPECT_EQ(truth("\"b\"#\"a\""), "1");
  // Placeholders are filled in before the comparison.
  ctx_.values["nome"] = "\"Mario\"";
  EXPECT_EQ(truth("\"<nome>\"=\"Mario\""), "1");
  EXPECT_EQ(truth("\"<nome>\"=\"Luigi\""), "0");
}

TEST_F(Conditions, StringsCountAsTrueInLogic) {
  EXPECT_EQ(truth("\"a\"e1"), "1");
  EXPECT_EQ(truth("\"a\"e0"), "0");
  EXPECT_EQ(truth("0o\"zero\""), "1");
}

TEST_F(Conditions, AFormulaThatStopsChangingIsFalse) {
  EXPECT_EQ(stage("1x"), "1x");
  EXPECT_EQ(truth("1x"), "0");
  EXPECT_EQ(truth("e"), "0");
  EXPECT_EQ(truth(""), "0");
  EXPECT_EQ(truth("[[["), "0");
  EXPECT_EQ(truth("1e[1"), "0");
}
