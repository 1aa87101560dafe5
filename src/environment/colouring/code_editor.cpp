#include "environment/colouring/code_editor.h"

#include <algorithm>
#include <array>

#include "environment/colouring/colour_phrases.h"

namespace {

constexpr std::string_view TAG_START = "[$=";

void replace_all(std::string& text, std::string_view from, std::string_view to) {
  if (from.empty()) return;
  for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
}

void replace_first(std::string& text, std::string_view from, std::string_view to) {
  if (const size_t at = text.find(from); at != std::string::npos) text.replace(at, from.size(), to);
}

std::string wrapped(std::string_view piece, uint32_t colour) {
  return colour_tag(colour) + std::string(piece) + colour_tag(TAG_PLAIN);
}

// The phrases by their first byte, the longest first, so that the first that matches is the one to take.
const std::array<std::vector<const ColourPhrase*>, 256>& phrases_by_first_byte() {
  static const auto index = [] {
    std::array<std::vector<const ColourPhrase*>, 256> by_byte;
    for (const ColourPhrase& p : colour_phrases()) by_byte[static_cast<unsigned char>(p.text[0])].push_back(&p);
    for (auto& list : by_byte) {
      std::ranges::stable_sort(list, [](const ColourPhrase* a, const ColourPhrase* b) {
        return a->text.size() > b->text.size();
      });
    }
    return by_byte;
  }();
  return index;
}

// Colours the phrases of the untagged stretches of `text`; what already
// stands in a colour (a user function, a keyword of the first word) is
// left as it is.
std::string tag_phrases(const std::string& text) {
  const auto& index = phrases_by_first_byte();
  std::string out;
  out.reserve(text.size() * 2);
  bool coloured = false;  // inside a piece that an earlier step coloured
  for (size_t i = 0; i < text.size();) {
    if (text.compare(i, TAG_START.size(), TAG_START) == 0 && text.find(']', i) != std::string::npos) {
      const size_t end = text.find(']', i);
      coloured = text.compare(i, end + 1 - i, colour_tag(TAG_PLAIN)) != 0;
      out.append(text, i, end + 1 - i);
      i = end + 1;
      continue;
    }
    const ColourPhrase* found = nullptr;
    if (!coloured) {
      for (const ColourPhrase* p : index[static_cast<unsigned char>(text[i])]) {
        // A phrase never runs into a tag.
        if (text.compare(i, p->text.size(), p->text) == 0) {
          found = p;
          break;
        }
      }
    }
    if (found) {
      out += wrapped(found->text, found->colour);
      i += found->text.size();
    } else {
      out += text[i++];
    }
  }
  return out;
}

// The text without the tags of the colour classes, as a string or a comment shows it.
std::string untagged(std::string text) {
  for (const uint32_t colour : {TAG_KEYWORD, TAG_CONSTANT, TAG_LABEL, TAG_FUNCTION, TAG_PLAIN}) {
    replace_all(text, colour_tag(colour), "");
  }
  return text;
}

// A variable's name in angle brackets inside a string shows in purple.
std::string with_expansions(std::string text) {
  const std::string purple = colour_tag(TAG_EXPANDED), violet = colour_tag(TAG_STRING);
  std::string out;
  for (const char ch : text) {
    if (ch == '<') out += purple;
    out += ch;
    if (ch == '>') out += violet;
  }
  return out;
}

std::string as_string(std::string_view piece) {
  std::string text = untagged(std::string(piece));
  std::erase(text, '\n');
  std::erase(text, '\r');
  return colour_tag(TAG_STRING) + with_expansions(text);
}

int state_at(const std::vector<int>& states, int zc) {
  return zc >= 0 && zc < static_cast<int>(states.size()) ? states[static_cast<size_t>(zc)] : 0;
}

void set_state(std::vector<int>& states, int zc, int value) {
  if (zc < 0) return;
  if (zc >= static_cast<int>(states.size())) states.resize(static_cast<size_t>(zc) + 2, 0);
  states[static_cast<size_t>(zc)] = value;
}

// Strings: whole in violet on their line, or carried over from the line above.
void colour_strings(std::string& text, int zc, CodeColouring& c) {
  const auto quotes = static_cast<int>(std::ranges::count(text, '"'));
  const bool open_above = state_at(c.multiline_string, zc - 1) == 1;
  if (quotes > 0 && quotes % 2 == 0) {
    std::string out;
    size_t from = 0, search = 0;
    for (int pair = 0; pair < 10; ++pair) {
      const size_t open = text.find('"', search);
      if (open == std::string::npos) break;
      const size_t close = text.find('"', open + 1);
      out.append(text, from, open - from);
      // The stretch with its opening quote; the closing one stands behind it, in black.
      out += as_string(std::string_view(text).substr(open, close - open)) + colour_tag(TAG_PLAIN);
      from = close;
      search = close + 1;
    }
    out.append(text, from, std::string::npos);
    text = out;
    set_state(c.multiline_string, zc, 0);
  } else if (quotes % 2 == 1 && !open_above) {
    // A string opens here and stays open.
    const size_t open = text.find('"');
    text = text.substr(0, open) + as_string(std::string_view(text).substr(open));
    set_state(c.multiline_string, zc, 1);
  } else if (quotes == 0 && open_above) {
    text = as_string(text);
    set_state(c.multiline_string, zc, 1);
  } else if (quotes == 1 && open_above) {
    // The string ends here.
    const size_t close = text.find('"');
    text = as_string(std::string_view(text).substr(0, close + 1)) + colour_tag(TAG_PLAIN) + text.substr(close + 1);
    set_state(c.multiline_string, zc, 0);
  } else {
    set_state(c.multiline_string, zc, 0);
  }
}

void colour_block_comments(std::string& text, int zc, CodeColouring& c) {
  const std::string green = colour_tag(TAG_COMMENT), plain = colour_tag(TAG_PLAIN);
  if (const size_t close = text.find("*/"); close != std::string::npos) {
    text.replace(close, 2, green + "*/" + plain);
    set_state(c.multiline_comment, zc + 1, 0);
    set_state(c.multiline_comment, zc, 2);
  } else if (const size_t open = text.find("/*"); open != std::string::npos) {
    set_state(c.multiline_comment, zc + 1, 1);
    // From the mark on, the plain layer's comment colour shows.
    text = text.substr(0, open) + green;
  } else if (zc != 0) {
    set_state(c.multiline_comment, zc + 1, 0);
    if (state_at(c.multiline_comment, zc - 1) == 1) {
      set_state(c.multiline_comment, zc, 1);
      set_state(c.multiline_comment, zc + 1, 1);
    }
  }
}

size_t characters_in(std::string_view text) {
  return static_cast<size_t>(std::ranges::count_if(text, [](char ch) { return (static_cast<unsigned char>(ch) & 0xC0) != 0x80; }));
}

bool third_character_is_slash(std::string_view text) {
  size_t seen = 0;
  for (const char ch : text) {
    if ((static_cast<unsigned char>(ch) & 0xC0) == 0x80) continue;
    if (++seen == 3) return ch == '/';
  }
  return false;
}

}  // namespace

std::string colour_tag(uint32_t colour) { return std::string(TAG_START) + std::to_string(colour) + "]"; }

std::string code_editor(std::string text, int zc, CodeColouring& c) {
  const std::string plain = colour_tag(TAG_PLAIN);
  // 1. The last line of a block comment: nothing before its end is coloured.
  if (const size_t close = text.find("*/"); close != std::string::npos) {
    if (const size_t cr = text.find('\r'); cr != std::string::npos) text.erase(cr, 1);
    if (const size_t lf = text.find('\n'); lf != std::string::npos) text.erase(lf, 1);
    const size_t end = text.find("*/");
    text = std::string(characters_in(std::string_view(text).substr(0, end)), ' ') + text.substr(end);
  }
  // 2. The program's own functions, and the external ones it imports.
  for (const auto* names : {&c.user_functions, &c.external_functions}) {
    for (const std::string& name : *names) replace_all(text, name, wrapped(name, TAG_FUNCTION));
  }
  replace_all(text, colour_tag(TAG_FUNCTION) + colour_tag(TAG_FUNCTION), colour_tag(TAG_FUNCTION));
  replace_all(text, plain + plain, plain);
  // 3. A line that is a comment from its start.
  if (third_character_is_slash(text)) {
    replace_first(text, "//", colour_tag(TAG_COMMENT) + "//");
    set_state(c.multiline_string, zc, 0);
  } else {
    // 4. The line feed in front stands as a piece of its own, which shifts nothing.
    if (zc > 1) {
      replace_all(text, "\n", plain + "\n" + plain);
      replace_all(text, plain + " " + plain, " ");
    }
    // 5. "se" as the first word.
    const size_t first_word = text.find("se ");
    if (first_word == 0 || first_word == 2 * plain.size() + 1) replace_first(text, "se ", wrapped("se ", TAG_KEYWORD));
    // 6. The phrases of the language.
    text = tag_phrases(text);
    // 7. Strings.
    colour_strings(text, zc, c);
  }
  // 8. A comment behind "//" is left to the plain layer's green.
  if (const size_t mark = text.find("//"); mark != std::string::npos) text.erase(mark);
  replace_all(text, plain + "*" + plain + "/", colour_tag(TAG_COMMENT) + "*/");
  // 9. Block comments.
  colour_block_comments(text, zc, c);
  return text;
}
