#include "environment/colouring/code_box_marks.h"

#include <gtest/gtest.h>

namespace {

// Each mark as "line:from-to", with "!" for a warning and "_" for an underline.
std::vector<std::string> shown(const std::vector<LineMark>& marks) {
  std::vector<std::string> out;
  for (const LineMark& m : marks) {
    out.push_back(std::to_string(m.line) + ":" + std::to_string(m.from) + "-" + std::to_string(m.to) +
                  (m.underline ? "_" : m.alpha == 1 ? "!" : ""));
  }
  return out;
}

TEST(CodeBoxMarks, BracketsFindTheirPartnersAcrossLinesOrAreMarked) {
  const std::vector<std::string> page = {"se X è uguale a 1 allora {", "  f (a, (b))", "}", "(solo"};
  const struct {
    size_t line, column;
    bool last_page;
    std::vector<std::string> marks;
  } rows[] = {
      {0, 25, true, {"0:25-26", "2:0-1"}},   // "{" and its "}" two lines down
      {2, 0, true, {"2:0-1", "0:25-26"}},    // and back
      {1, 4, true, {"1:4-5", "1:11-12"}},    // "(" of f, past the inner pair
      {1, 8, true, {"1:8-9", "1:10-11"}},
      {3, 0, true, {"3:0-1", "3:5-6!"}},     // no partner on the last page: marked at the end
      {3, 0, false, {"3:0-1"}},              // its partner may stand on a later page
      {0, 3, true, {}},                      // not on a bracket
  };
  for (const auto& row : rows) {
    EXPECT_EQ(shown(bracket_marks(page, row.line, row.column, row.last_page)), row.marks)
        << row.line << ":" << row.column;
  }
  EXPECT_EQ(shown(bracket_marks({"a)"}, 0, 1, true)), (std::vector<std::string>{"0:1-2!"}));
}

TEST(CodeBoxMarks, TheSelectionIsEchoedOutsideStringsAndComments) {
  const std::vector<std::string> page = {"X = X + 1 // X", "\"X in una stringa", "Y = X"};
  const std::vector<int> in_string = {0, 0, 1, 0};
  EXPECT_EQ(shown(selection_echo(page, "X", in_string)), (std::vector<std::string>{"0:0-1", "0:4-5", "2:4-5"}));
  EXPECT_TRUE(selection_echo(page, " ", in_string).empty());
}

TEST(CodeBoxMarks, FunctionArrowsAndDebugAreUnderlined) {
  const std::vector<std::string> page = {"f --> x", "debug X // debug", "\"debug"};
  const std::vector<std::string> tagged = {"f [$=255]-->[$=0] x", "", ""};
  EXPECT_EQ(shown(arrow_and_debug_marks(page, tagged, {0, 0, 0, 1})),
            (std::vector<std::string>{"0:2-5_", "1:0-5_"}))
      << "not after a comment mark, not in a string";
}

}  // namespace
