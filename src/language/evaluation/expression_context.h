// What the evaluators of expressions, placeholders and conditions ask of the
// instance that runs a program: the values of the names they meet.
//
// The evaluators know nothing of variable tables; the instance that runs the
// program answers for its own table, its attributes and the program-wide one.
#pragma once

#include <string>
#include <string_view>

class ExpressionContext {
 public:
  virtual ~ExpressionContext() = default;

  // The value text of one name piece of an expression: a number, a string
  // with its double quotes, or "0" for an unknown name. Pieces that are
  // their own value (operator signs and runs of them, texts that begin with
  // a blank or a digit, "-" before a digit, "|not_set|") are settled by the
  // evaluator and never reach this.
  virtual std::string cal_var_and_const(std::string_view piece) = 0;

  // The value text of the program-wide variable `name`, or "no var".
  virtual std::string calculate_var(std::string_view name) = 0;
};
