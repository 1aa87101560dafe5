// The keyword table: every phrase of the language that the tokeniser joins
// into one word, in the order in which the joining runs.
//
// The entries are the phrases as a user writes them, blanks included. Their
// order is part of the behaviour (a phrase joined early can no longer match a
// longer one that holds it), so the table keeps its duplicates and its odd
// spellings exactly as they have always been.
#pragma once

#include <array>
#include <string_view>

constexpr int CTRL_KEYWORD_COUNT = 467;

// The keyword phrases in their spaced form, in table order (UTF-8).
extern const std::array<std::string_view, CTRL_KEYWORD_COUNT> ctrl_keyword_table;
