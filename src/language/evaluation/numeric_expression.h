// The evaluator of numeric expressions: one token without blanks, such as
// "2+3*X" or "[2+3]*4", worked out by rewriting its own text. The rightmost
// bracket goes first, each a full evaluation of its own; then powers, then
// products and quotients, then sums, each from left to right. Every step's
// result is pasted back as number text with ten decimals, so that the
// language computes with ten decimals after each step, and a subtraction
// takes its right side with two decimals.
//
// It is given string tokens too, and hands them back unchanged.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "language/evaluation/expression_context.h"

// The pieces of an expression, values and operator signs in their order,
// numbered from 1. They are kept as one text, their join, with the end of
// each piece, since the evaluator joins them again after every step.
class ExpressionPieces {
 public:
  // The number of pieces.
  size_t count() const { return ends_.size(); }
  // Piece `k`, counted from 1; "" for 0 and beyond the last.
  std::string_view piece(size_t k) const;
  // All pieces joined.
  std::string_view joined() const { return text_; }
  // The byte offset in joined() where piece `k` begins (1 <= k <= count()).
  size_t begin_of(size_t k) const { return k <= 1 ? 0 : ends_[k - 2]; }
  // Forgets every piece.
  void clear();
  // Adds a piece at the end.
  void push(std::string_view piece);

 private:
  std::string text_;
  std::vector<uint32_t> ends_;
};

// What calculate_string_permessive gives instead of stopping the run, quotes included.
inline constexpr std::string_view PERMESSIVE_FAILURE = "\"Impossibile risolvere l'espressione\"";

// The value of an expression as text; a string comes back with its quotes.
// A malformed expression shows the error, stops the run and gives "0".
std::string calculate_string(ExpressionContext& ctx, std::string_view text);
// The same for text typed at run time: gives PERMESSIVE_FAILURE where the other would stop the run.
std::string calculate_string_permessive(ExpressionContext& ctx, std::string_view text);
// The pieces of an expression with names replaced by their values and each
// subtraction turned into the addition of the opposite, short number.
ExpressionPieces tokenizza_espressione(ExpressionContext& ctx, std::string_view text);
// The number of pieces that the join of `pieces` cuts into.
int calculate_bl(const ExpressionPieces& pieces);
// The number of a value text, 0 when it holds no number (a string, a name, a word).
double string_is_real(std::string_view text);
// `base` to the `exponent`, modulo `modulus`, by repeated squaring.
double modular_power(double base, double exponent, double modulus);
// Whether `text` has none of the characters that cut an expression or open a
// bracket: it is one piece, whose value is the whole answer.
bool is_one_piece(std::string_view text);
// The text of a number between steps: ten decimals, no blanks ("2.5000000000").
std::string ten_decimal_text(double x);
