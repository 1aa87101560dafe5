#include "language/tokenizer/marks.h"

#include "language/tokenizer/text_edit.h"

std::string without_marks(std::string_view token) {
  std::string text(token);
  // Every mark begins with "<": a token without one has none.
  if (token.find('<') == std::string_view::npos) return text;
  text_edit::replace_all(text, DARK_MARK, "");
  text_edit::replace_all(text, DONE_MARK, "");
  return text;
}

std::string without_done_mark(std::string_view token) {
  std::string text(token);
  text_edit::replace_all(text, DONE_MARK, "");
  return text;
}

std::string_view unmarked(std::string_view token) {
  for (;;) {
    if (token.starts_with(DARK_MARK)) token.remove_prefix(DARK_MARK.size());
    else if (token.starts_with(DONE_MARK)) token.remove_prefix(DONE_MARK.size());
    else if (token.starts_with(DEACTIVATED_MARK)) token.remove_prefix(DEACTIVATED_MARK.size());
    else return token;
  }
}
