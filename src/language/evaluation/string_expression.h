// The filling of placeholders: the language has no operator that joins
// texts, so a string says "Ciao <nome>, hai <2*X> punti" and the
// placeholders are worked out where the string is shown or written.
#pragma once

#include <string>
#include <string_view>

#include "language/evaluation/expression_context.h"

// The marker of a string that a cipher made: it is taken literally.
inline constexpr std::string_view CRIPTO_MARKER = "§CRIPTO§";

// `text` with each "< ... >" replaced by its value: a variable's stored text,
// a string without its quotes, or a computed number with at most two
// decimals. Quotes around the text stay as they are.
std::string calculate_expression_in_string(ExpressionContext& ctx, std::string_view text);
