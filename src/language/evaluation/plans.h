// The shortcuts of the statement walk. What a statement or an expression
// token means is read once, at its first run, and kept with the position:
// the slots of its names, its element attribute, its operands and signs.
// Each shortcut gives byte for byte the text that the general way (the
// rewriting evaluator, the lookups by name) would give, and leaves to it
// whatever it can't take: a token that changed, a value that isn't a whole
// number, a table whose names changed.
#pragma once

#include <string>
#include <string_view>

// Whether the walk takes its shortcuts: a test turns them off to compare.
// Inline: every statement asks.
inline bool& plans_enabled() {
  static bool enabled = true;
  return enabled;
}

// Whether `x` is a whole number whose shortest text is its digits: below
// 10^15 and not the negative zero.
bool is_digits_number(double x);

// The text that "aumenta" and "diminuisci" store for `x`: ten decimals, then
// the zeros at the end and a point left alone taken off.
std::string increased_text(double x);
