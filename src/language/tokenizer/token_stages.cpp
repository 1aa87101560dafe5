// The stages of the tokeniser that work on tokens: 30 (first cut, cleaning,
// compaction and single-token substitutions), 40 (final cut) and 41 (final
// token loop and end mark).
#include <algorithm>
#include <array>

#include "language/tokenizer/constant_tables.h"
#include "language/tokenizer/text_edit.h"
#include "language/tokenizer/token_cut.h"
#include "language/tokenizer/tokenizer.h"
#include "runtime/Code/Builtins.h"

using text_edit::Rewrite;

namespace {

std::string_view text_of(const RValue& v) { return v.is(Kind::String) ? v.string_view() : std::string_view(); }

bool is(const RValue& v, std::string_view word) { return v.is(Kind::String) && v.string_view() == word; }

bool any_of(const RValue& v, std::initializer_list<std::string_view> words) {
  return std::any_of(words.begin(), words.end(), [&v](std::string_view w) { return is(v, w); });
}

// Removes the separators that a cut leaves at the ends of tokens.
void remove_separators(std::string& token) {
  std::erase_if(token, [](char c) { return c == ',' || c == ';' || c == ' ' || c == '#'; });
}

// Rewrites the text of token `i` through `edit`, storing it back only when it changed.
template <class Edit>
void edit_token(std::vector<RValue>& tok, size_t i, Edit edit) {
  std::string text(tok[i].string_view());
  if (edit(text)) tok[i] = RValue::text(text);
}

size_t count_char(std::string_view s, char c) { return static_cast<size_t>(std::count(s.begin(), s.end(), c)); }

}  // namespace

// A "=" two tokens behind a word that opens a condition compares.
void Tokenizer::mark_comparison(size_t i) {
  if (i < 3 || !is(p_.tok[i], "=")) return;
  const RValue& opener = p_.tok[i - 2];
  if (any_of(opener, {"se", "e", "o", "o_esclusivamente", "non"})) p_.tok[i] = RValue::text("==");
  if (is(p_.tok[i], "=") && any_of(opener, {"finche", "e", "o", "o_esclusivamente", "non"})) {
    p_.tok[i] = RValue::text("==");
  }
}

void Tokenizer::substitute_token(size_t i) {
  std::vector<RValue>& tok = p_.tok;
  mark_comparison(i);
  // A key that lost its colon gets it back.
  if (is_text(tok[i])) {
    const std::string_view t = tok[i].string_view();
    if (t.size() >= 2 && t[0] == '(' && t[1] >= 'A' && t[1] <= 'Z') {
      const size_t colon = text_edit::find(t, ":");
      const size_t first_colon = colon == text_edit::npos ? 0 : text_edit::length(t.substr(0, colon)) + 1;
      if (first_colon != text_edit::length(t)) tok[i] = RValue::text(std::string(t) + ":");
    }
  }
  // An assignment from a value function.
  if (is(tok[i], "=") && i + 1 < tok.size() && text_of(tok[i + 1]).starts_with("ottieni")) tok[i] = RValue::text("f=");
  if (any_of(tok[i], {"vero", "intero", "intera"})) tok[i] = RValue::text("1");
  if (any_of(tok[i], {"falso", "niente", "nullo"})) tok[i] = RValue::text("0");
  if (is_text(tok[i])) {
    // Inside a bracket the whole token is replaced.
    static constexpr std::array<std::pair<std::array<std::string_view, 3>, std::string_view>, 4> wrapped = {{
        {{"vero]", "intero]", "intera]"}, "1]"},
        {{"falso]", "niente]", "nullo]"}, "0]"},
        {{"[vero", "[intero", "[intera"}, "[1"},
        {{"[falso", "[niente", "[nullo"}, "[0"},
    }};
    for (const auto& [words, replacement] : wrapped) {
      const std::string_view t = tok[i].string_view();
      if (std::any_of(words.begin(), words.end(), [t](std::string_view w) { return text_edit::contains(t, w); })) {
        tok[i] = RValue::text(replacement);
      }
    }
  }
  static constexpr std::string_view alignments[][2] = {{"al_centro", "\"al centro\""},
                                                       {"a_destra", "\"a destra\""},
                                                       {"a_sinistra", "\"a sinistra\""},
                                                       {"in_alto", "\"in alto\""},
                                                       {"in_basso", "\"in basso\""}};
  for (const auto& [name, string] : alignments) {
    if (is(tok[i], name)) tok[i] = RValue::text(string);
  }
  if (is_text(tok[i])) {
    if (const char* colour = colour_constant(tok[i].string_view())) tok[i] = RValue::text(colour);
  }
  if (is_text(tok[i])) {
    if (const char* note = note_constant(tok[i].string_view())) tok[i] = RValue::text(note);
  }
  if (is_text(tok[i])) {
    if (const char* number = numeric_constant(tok[i].string_view())) tok[i] = RValue::text(number);
  }
  if (is_text(tok[i]) && !is_string_token(tok[i])) {
    edit_token(tok, i, [](std::string& t) { return text_edit::replace_all(t, "/carriage_return/", ""); });
  }
}

// 30.
void Tokenizer::first_token_cut() {
  std::vector<RValue>& tok = p_.tok;
  a_ = cut_tokens(message_, CUT_C, tok);
  for (size_t i = 1; i < a_; ++i) {
    if (is_string_token(tok[i])) continue;
    edit_token(tok, i, [](std::string& t) {
      const size_t before = t.size();
      remove_separators(t);
      return t.size() != before;
    });
  }
  for (size_t i = 0; i < a_; ++i) {
    if (!is_text(tok[i]) || is_string_token(tok[i])) continue;
    edit_token(tok, i, [](std::string& t) { return text_edit::replace_all(t, "/carriage_return/", ""); });
  }
  a_ = compact_tokens(tok, a_);
  // Between filling and emptying the queue the first 3001 entries were emptied.
  const RValue empty = RValue::text("");
  tok.resize(std::max<size_t>(tok.size(), 3001));
  for (size_t t = a_ + 1; t < tok.size(); ++t) tok[t] = empty;
  p_.tok_var_name.assign(std::max<size_t>(p_.tok_var_name.size(), 3001), std::string());
  for (size_t i = 0; i < a_; ++i) substitute_token(i);
}

size_t Tokenizer::final_cut() {
  std::vector<RValue>& tok = p_.tok;
  tok.assign(1, RValue::text(""));
  const size_t last = cut_tokens(message_, CUT_D, tok);
  for (size_t i = 0; i < last; ++i) {
    if (is_string_token(tok[i])) continue;
    std::string t(tok[i].string_view());
    remove_separators(t);
    if (t == ":") t.clear();
    if (t == "allora") t = "{";
    tok[i] = RValue::text(t);
  }
  return last;
}

// 40.
void Tokenizer::final_token_cut() {
  std::vector<RValue>& tok = p_.tok;
  a_ = compact_tokens(tok, final_cut());
  tok.resize(a_ + 1);
  tok[0] = RValue::text("INIZIA");
}

void Tokenizer::restore_string_token(size_t i) {
  std::string t(p_.tok[i].string_view());
  text_edit::replace_all(t, "#", "/carriage_return/");
  // The words inside "< ... >" become one name.
  static constexpr Rewrite placeholder[] = {
      {"§space§del§space§", "_del_"}, {"§space§della§space§", "_del_"}, {"§space§dello§space§", "_del_"},
      {"§space§dell'", "_del_"},      {" del ", "_del_"},                {" della ", "_del_"},
      {" dello ", "_del_"},           {" dell'", "_del_"},               {"§space§", ""},
  };
  std::vector<std::pair<std::string, std::string>> expressions;
  for (size_t at = t.find('<'); at != std::string::npos; at = t.find('<', at + 1)) {
    const size_t close = t.find('>', at);
    std::string expr = t.substr(at, close == std::string::npos ? std::string::npos : close - at);
    std::string expr2 = expr;
    text_edit::replace_all(expr2, placeholder);
    expressions.emplace_back(std::move(expr), std::move(expr2));
  }
  for (const auto& [expr, expr2] : expressions) text_edit::replace_first(t, expr, expr2);
  static constexpr Rewrite restore[] = {
      {">*<", "> * <"}, {">/<", "> / <"}, {">+<", "> + <"}, {">-<", "> - <"},
      {"§uguale_safe§", "="}, {"§space§", " "}, {"§apri_tonda§", "("}, {"§chiudi_tonda§", ")"}, {"§hash§", "#"},
      {"§punto_esclamativo§", "!"}, {"/percentuale_safe/", "%"}, {"%del", "% del"},
      {"[", "("}, {"]", ")"},
      // File extensions that the full-stop stage broke.
      {" } png", ".png"}, {" } jpg", ".jpg"}, {" } jpeg", ".jpeg"}, {" } bmp", ".bmp"}, {" } txt", ".txt"},
      {" } csv", ".csv"},
  };
  text_edit::replace_all(t, restore);
  p_.tok[i] = RValue::text(t);
}

bool Tokenizer::final_token_steps(size_t i) {
  bool divided_by_zero = false;
  std::vector<RValue>& tok = p_.tok;
  if (is(tok[i], "INIZIA")) p_.INIZIA = static_cast<int>(i);
  if (is(tok[i], "CICLO_CONTINUO")) p_.DISEGNA = static_cast<int>(i);
  // Even a string with one of these words in it collapses to the word.
  for (std::string_view word : {"allora", "aumenta", "diminuisci", "finche"}) {
    if (text_edit::count(tok[i].string_view(), word) == 1) tok[i] = RValue::text(word);
  }
  if (text_edit::contains(tok[i].string_view(), "ottieni_cxv")) {
    tok[i] = RValue::text("ottieni_la_componente_x_del_vettore_dato_angolo_e_lunghezza");
  }
  if (text_edit::contains(tok[i].string_view(), "ottieni_cyv")) {
    tok[i] = RValue::text("ottieni_la_componente_y_del_vettore_dato_angolo_e_lunghezza");
  }
  mark_comparison(i);
  // An arithmetic bracket whose right side stayed round.
  if (i >= 3 && is(tok[i], ")") && is(tok[i - 2], "=")) {
    const std::string_view left = tok[i - 1].string_view();
    if (count_char(left, '[') != count_char(left, ']') && left.find('[') != std::string_view::npos) {
      tok[i - 1] = RValue::text(std::string(left) + "]");
      tok[i] = RValue::text("");
    }
  }
  const std::string_view t = tok[i].string_view();
  if (text_edit::contains(t, "/0") && !text_edit::contains(t, "/0.") && !is_string_token(tok[i])) {
    // Each such token shows the message; the loop goes on, and the caller
    // goes back to the editor once the start is over.
    RValue message = RValue::text("Errore: non si può dividere per zero!");
    RValue result;
    builtin_call("show_message", result, nullptr, nullptr, 1, &message);
    divided_by_zero = true;
  }
  if (count_char(t, '"') == 2) restore_string_token(i);
  return !divided_by_zero;
}

// 41.
bool Tokenizer::final_token_loop() {
  bool runnable = true;
  std::vector<RValue>& tok = p_.tok;
  for (size_t i = 0; i < a_; ++i) {
    runnable = final_token_steps(i) && runnable;
    const std::string_view u = tok[i].string_view();
    if (!u.empty() && u.back() == ']') {
      // The outer pair of a bracket expression goes.
      edit_token(tok, i, [](std::string& s) {
        if (const size_t open = s.find('['); open != std::string::npos) s.erase(open, 1);
        s.erase(s.find(']'), 1);
        return true;
      });
    }
  }
  if (is(tok[a_], "INIZIA")) tok[a_] = RValue::text("");
  tok.resize(a_ + 2);
  tok[a_ + 1] = RValue::text("FINE");
  p_.totale_tok = static_cast<int>(a_ + 1);
  return runnable;
}
