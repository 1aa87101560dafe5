// The reduction of a condition. The condition of "se" and "ripeti finche"
// arrives as a short formula over the values of its operands, in one letter
// per sign:
//
//   e and   o or   x exclusive or   n not   [ ] brackets
//   = equal   > greater   < less   # greater or equal   @ less or equal   ù different
//
// and is reduced one bracket level at a time to "1" or "0". "e", "o" and "x"
// have no precedence among them: they work from left to right.
#pragma once

#include <string>
#include <string_view>

#include "language/evaluation/expression_context.h"

// The truth of comparisons of plain numbers joined by "e", "o" and "x"
// ("700#700e700<1400") into `out`, worked out from left to right as the
// stages below work them out, without cutting; false for any other formula.
bool plain_comparisons(ExpressionContext& ctx, std::string_view formula, std::string& out);

// Two numbers compared by the letter of a sign ("=", ">", "<", "#", "@",
// "ù"), with the runtime's tolerance for equality.
bool compare_numbers(double a, std::string_view sign, double b);

// The formula one stage further: comparisons worked out, values made truth
// values, negations and logic done within the innermost brackets.
std::string boolean_parse(ExpressionContext& ctx, std::string_view formula);

// The truth of a formula, "1" or "0": boolean_parse until one sign is left.
// A formula that a stage no longer changes is false ("0"), so any text ends.
std::string reduce_condition(ExpressionContext& ctx, std::string_view formula);
