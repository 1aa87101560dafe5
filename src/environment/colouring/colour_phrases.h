// The colour classes of the code box and the phrases of each: keywords,
// function phrases, constants and argument labels.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Colours as the tags write them: blue-green-red, as one number.
inline constexpr uint32_t TAG_PLAIN = 0, TAG_FUNCTION = 255, TAG_CONSTANT = 16711680, TAG_KEYWORD = 16711935,
                          TAG_LABEL = 31192, TAG_COMMENT = 41984, TAG_STRING = 16744833, TAG_EXPANDED = 8388736;

struct ColourPhrase {
  std::string text;
  uint32_t colour;
};

// Every phrase of the four classes, the key phrases included.
const std::vector<ColourPhrase>& colour_phrases();
