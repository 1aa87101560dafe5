// The named constants of the language: colours, notes and numbers.
//
// After the keyword joining, a token that is one of these names is replaced by
// its value, written as text, since every value of the language is a text.
// The lookups run once for every token of a program, so they search sorted
// tables made at compile time and allocate nothing.
#pragma once

#include <string_view>

// The colour number of a colour name (blue-green-red order, e.g. "giallo" ->
// "65535"), or nullptr when the name isn't a colour.
const char* colour_constant(std::string_view name);
// The pitch ratio against "Do" of a note name (e.g. "Fa_diesis"), or nullptr.
const char* note_constant(std::string_view name);
// The value of a numeric constant name (e.g. "Pi_greco"), or nullptr.
const char* numeric_constant(std::string_view name);
