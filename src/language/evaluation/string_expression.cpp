#include "language/evaluation/string_expression.h"

#include <algorithm>
#include <array>
#include <span>
#include <vector>

#include "language/evaluation/numeric_expression.h"
#include "language/tokenizer/text_edit.h"
#include "runtime/Function/StringFunctions.h"

namespace {

// Stands in for the "< " of a placeholder already taken, so that the next
// search finds the next one.
constexpr std::string_view TAKEN_MARKER = "@<@<@";

// Every "<" and ">" gets a blank on each side, and one where a blank was
// there already. A "<" is always a placeholder bracket here, even one meant
// as a comparison.
constexpr text_edit::Rewrite SPACING[] = {
    {"<", " < "},
    {"  <  ", " < "},
    {">", " > "},
    {"  >  ", " > "},
};

// Element attributes read inside a placeholder, in an order that programs
// depend on: the scales go before the bare "X" and "Y" that they contain;
// "Z" comes early and breaks "TRASPARENZA", "DIREZIONE" and "ROTAZIONE"
// before their own rewrites are reached; any capital X, Y or Z in a name is
// taken ("MAX" reads "MA|x"); and "|timer1" then becomes "|timer_1".
constexpr text_edit::Rewrite ATTRIBUTE_NAMES[] = {
    {"SCALA_ASSE_X", "|scala_asse_x"},
    {"SCALA_ASSE_Y", "|scala_asse_y"},
    {"X", "|x"},
    {"Y", "|y"},
    {"Z", "|z"},
    {"TRASPARENZA", "|trasparenza"},
    {"VELOCITA", "|velocita"},
    {"DIREZIONE", "|direzione"},
    {"ROTAZIONE", "|rotazione"},
    {"IMMAGINE", "|immagine"},
    {"TIMER_1", "|timer1"},
    {"TIMER_2", "|timer2"},
    {"TIMER_3", "|timer3"},
    {"TIMER_4", "|timer4"},
    {"DURATA", "|durata"},
    {"timer1", "timer_1"},
    {"timer2", "timer_2"},
    {"timer3", "timer_3"},
    {"timer4", "timer_4"},
    {"timer5", "timer_5"},
    {"timer6", "timer_6"},
    {"timer7", "timer_7"},
    {"timer8", "timer_8"},
    {" ", ""},
};

bool begins_with_quote(std::string_view text) { return !text.empty() && text.front() == '"'; }

// Applies each rewrite to the whole text. Most find nothing in a short
// name, so a plain byte search goes first and a miss costs only that.
void rewrite(std::string& text, std::span<const text_edit::Rewrite> rewrites) {
  for (const text_edit::Rewrite& r : rewrites) {
    if (text.find(r.from) != std::string::npos) text_edit::replace_all(text, r.from, r.to);
  }
}

std::string without_quotes(std::string_view text) {
  std::string s(text);
  std::erase(s, '"');
  return s;
}

// A computed number as a placeholder shows it: as many decimals as its
// text has, at most two, none when they are all zeros.
std::string short_number(std::string_view value) {
  const size_t point = text_edit::find(value, ".");
  const std::string_view whole = value.substr(0, point);
  const std::string_view fraction = point == text_edit::npos ? std::string_view() : value.substr(point + 1);
  int decimals = static_cast<int>(std::min<size_t>(text_edit::length(fraction), 2));
  if (std::all_of(fraction.begin(), fraction.end(), [](char c) { return c == '0'; })) decimals = 0;
  const RValue text =
      rt::string_format(string_is_real(value), static_cast<int>(text_edit::length(whole)), decimals);
  return std::string(text.string_view());
}

// The text that replaces a placeholder whose name reads `name`.
std::string filling(ExpressionContext& ctx, const std::string& name) {
  const std::string variable = ctx.calculate_var(name);
  if (begins_with_quote(variable)) return without_quotes(variable);
  std::string value = calculate_string(ctx, name);
  if (begins_with_quote(value)) return without_quotes(value);
  if (text_edit::contains(value, CRIPTO_MARKER)) {
    text_edit::replace_all(value, CRIPTO_MARKER, "");
    return value;
  }
  // A variable shows its stored text in full; only a computed number is shortened.
  if (variable != "no var") return variable;
  return short_number(value);
}

}  // namespace

std::string calculate_expression_in_string(ExpressionContext& ctx, std::string_view text) {
  std::string s(text);
  // A cipher's text may hold anything, "<" included: nothing in it is a placeholder.
  if (text_edit::replace_all(s, CRIPTO_MARKER, "")) return s;
  text_edit::replace_first(s, "(", "[");
  text_edit::replace_first(s, ")", "]");
  rewrite(s, SPACING);

  // Each placeholder's text, from its "< " up to its ">", or to the end of
  // the text when no ">" follows.
  std::vector<std::string> placeholders;
  for (size_t n = text_edit::count(s, "< "); n > 0; --n) {
    const size_t open = text_edit::find(s, "< ");
    if (open == text_edit::npos) break;
    const size_t close = text_edit::find(s, ">", open);
    placeholders.emplace_back(s, open, close == text_edit::npos ? std::string::npos : close - open);
    s.replace(open, 2, TAKEN_MARKER);
  }
  text_edit::replace_all(s, TAKEN_MARKER, "< ");

  for (const std::string& placeholder : placeholders) {
    // The name as written, without blanks, is what the text holds between " < " and " > ".
    std::string written = placeholder.substr(2);
    std::string name = written;
    std::erase(written, ' ');
    rewrite(name, ATTRIBUTE_NAMES);
    text_edit::replace_all(s, " < " + written + " > ", filling(ctx, name));
  }
  text_edit::replace_all(s, CRIPTO_MARKER, "");
  return s;
}
