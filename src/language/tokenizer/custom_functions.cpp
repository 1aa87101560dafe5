// Stage 28's scanner of custom functions. A function is written
//
//   definisci funzione "nome"
//   argomenti (A: 1) (B: 2)
//   { ... < "A" > ... }
//
// and each call "nome (A: 5)" is replaced in the program text by the body
// with the call's values pasted in for its arguments; the names the body
// assigns get the call's position at their end, so that two calls keep
// variables of their own. A function whose name holds "ottieni" gives a
// value: "con questa funzione ottieni" in its body takes the place of the
// left side of the call's assignment.
//
// The scanner works on the raw tokens of the text as it stood before any
// expansion, so a call inside a body stays as it is. By this stage the text
// has blanks beside every "<" and ">", so an argument's mark is found with
// one blank or two inside it.
#include <algorithm>

#include "language/tokenizer/constant_tables.h"
#include "language/tokenizer/text_edit.h"
#include "language/tokenizer/token_cut.h"
#include "language/tokenizer/tokenizer.h"

using text_edit::Rewrite;

namespace {

constexpr std::string_view NOT_SET = "not_set";
constexpr std::string_view ARG = "[arg]";
constexpr int MAX_CALL_SPAN = 40;
constexpr size_t MAX_TEXT = size_t{1} << 22;  // a program text far past what a learner writes
// Names that set the program's window: never local to a call.
constexpr std::string_view RESERVED_WINDOW_NAMES[] = {"larghezza_finestra", "altezza_finestra", "colore_sfondo",
                                                      "nome_finestra"};  // a call's arguments are looked for this far: at most 13

// The i-th raw token, or "" past the end.
const std::string& at(const std::vector<std::string>& tokens, size_t i) {
  static const std::string none;
  return i < tokens.size() ? tokens[i] : none;
}

bool holds_any(std::string_view text, std::string_view characters) {
  return text.find_first_of(characters) != std::string_view::npos;
}

// The pieces of a default list, cut behind each "#", ")", "(" and ":"; a
// piece that begins with "'" runs to its second "'".
std::vector<std::string> default_pieces(std::string_view list) {
  std::vector<std::string> pieces(1);
  for (const char c : list) {
    std::string& piece = pieces.back();
    piece += c;
    const bool quoted = piece.front() == '\'';
    if ((!quoted && holds_any(std::string_view(&c, 1), "#)(:")) ||
        (quoted && c == '\'' && std::count(piece.begin(), piece.end(), '\'') == 2)) {
      pieces.emplace_back();
    }
  }
  return pieces;
}

// The local names of a call end in its position: every such name behind one
// of `BEFORE` and before one of `AFTER`, once per occurrence.
void localise(std::string& body, const std::string& name, const std::string& position) {
  static constexpr std::string_view BEFORE = " #*/+-^)(:";
  static constexpr std::string_view AFTER[] = {" ", "#", "*", "/", "+", "-", "^", ")"};
  for (size_t times = text_edit::count(body, name); times > 0; --times) {
    bool renamed = false;
    for (const char c : BEFORE) {
      for (const std::string_view e : AFTER) {
        renamed = text_edit::replace_first(body, std::string(1, c) + name + std::string(e),
                                           std::string(1, c) + name + position + std::string(e)) ||
                  renamed;
      }
    }
    // A round that renames nothing leaves nothing for the next ones.
    if (!renamed) break;
  }
}

// A call as the text writes it by now: two blanks before the arrow, three
// behind it, two behind each key's colon, one before each closing bracket.
constexpr Rewrite CALL_LINE[] = {{":", ":  "}, {")", " )"}, {")(", ") ("}, {"-->", "  -->   "}, {"§space§", "_"}};

constexpr Rewrite RESPACE[] = {
    {"[ ", "["},     {" + ", "+"},    {"+ ", "+"},     {" +", "+"},     {" - ", "-"},    {"- ", "-"},
    {" -", "-"},     {" * ", "*"},    {"* ", "*"},     {" *", "*"},     {" / ", "/"},    {"/ ", "/"},
    {" /", "/"},     {" ^ ", "^"},    {"^ ", "^"},     {" ^", "^"},     {"   ", " "},    {")}", ") }"},
    {"definisci costante", "definisci_costante"},       {"a(", "a --> ("},  {"e(", "e --> ("},
    {"i(", "i --> ("}, {"o(", "o --> ("}, {"u(", "u --> ("}, {"b(", "b --> ("}, {"v(", "v --> ("},
    {"/carriage_return/", " /carriage_return/ "},      {") /carriage_return/ (", ") ("},
    {"a-->", "a -->"}, {"e-->", "e -->"}, {"i-->", "i -->"}, {"o-->", "o -->"}, {"u-->", "u -->"},
    {"b-->", "b -->"}, {"v-->", "v -->"},
};

}  // namespace

void Tokenizer::scan_function(CustomFunctions& fn, size_t ab, size_t ap) {
  std::vector<std::string>& tok = tok_p_;
  const int n = fn.tot_funzioni_pers;
  if (n >= CustomFunctions::SLOTS) return;
  std::string name = at(tok, ab + 1);
  std::erase(name, '"');
  text_edit::replace_all(name, "§space§", " ");
  fn.funzione[n] = name;

  // The body ends where as many braces have closed as have opened.
  size_t function_end = 0;
  for (size_t ff = ab + 2, opened = 0, closed = 0; ff <= ap; ++ff) {
    if (text_edit::count(at(tok, ff), "{") == 1) ++opened;
    if (text_edit::count(at(tok, ff), "}") == 1) ++closed;
    if (opened == closed && opened != 0) {
      function_end = ff;
      break;
    }
  }

  // The body runs from behind the token that opens it (the list of
  // arguments takes the brace onto its line) up to the closing brace.
  size_t body_start = function_end;
  for (size_t ff = ab + 2; ff < function_end; ++ff) {
    if (text_edit::contains(tok[ff], "{")) {
      body_start = ff + 1;
      break;
    }
  }

  // A "=" behind a word that opens a condition compares.
  for (size_t ff = std::max(body_start, size_t{3}); ff < function_end; ++ff) {
    const std::string& t = tok[ff];
    if (text_edit::count(t, "=") != 1 || text_edit::contains(t, "angolo e")) continue;
    const std::string& opener = tok[ff - 3];
    if (opener == "se " || opener == "e " || opener == "o " || opener == "o_esclusivamente ") tok[ff] = "==";
  }

  // The names the body assigns.
  fn.variabile_fzp.assign(1, std::string());
  for (size_t ff = std::max(body_start, size_t{2}); ff < function_end; ++ff) {
    if (text_edit::count(tok[ff], "=") != 1) continue;
    const std::string& assigned = tok[ff - 2];
    if (assigned.empty() || assigned == " " || holds_any(tok[ff - 1], "<>!")) continue;
    const bool reserved = std::any_of(
        std::begin(RESERVED_WINDOW_NAMES), std::end(RESERVED_WINDOW_NAMES),
        [&](std::string_view word) { return text_edit::contains(assigned, word); });
    if (!reserved) fn.variabile_fzp.push_back(assigned);
  }

  std::string& body = fn.contenuto_funzione[n];
  body.clear();
  for (size_t ff = body_start; ff < function_end; ++ff) body += tok[ff];
  // Blanks and line ends alone are no body.
  if (body.find_first_not_of(" #") == std::string::npos) body.clear();

  // The defaults: "(NAME: value)" pairs of the list behind "argomenti".
  fn.n_arg_base[n] = 0;
  fn.arg_base_e[n].assign(1, std::string());
  fn.arg_base_v[n].assign(1, std::string());
  for (size_t ff = ab + 2; ff < function_end; ++ff) {
    if (text_edit::count(tok[ff], "argomenti") != 1) continue;
    std::string list = at(tok, ff + 1);
    static constexpr Rewrite brackets[] = {{"§apri_tonda§", "("}, {"§chiudi_tonda§", ")"}, {"§space§", ""}};
    text_edit::replace_all(list, brackets);
    std::erase(list, ' ');
    const std::vector<std::string> pieces = default_pieces(list);
    for (size_t k = 0; k < pieces.size(); ++k) {
      if (pieces[k].find(':') == std::string::npos) continue;
      std::string key = pieces[k], value = k + 1 < pieces.size() ? pieces[k + 1] : std::string();
      std::erase(key, ':');
      std::erase(value, ')');
      ++fn.n_arg_base[n];
      fn.arg_base_e[n].push_back(key);
      fn.arg_base_v[n].push_back(value);
    }
    break;
  }
  ++fn.tot_funzioni_pers;
}

// The names between the "[arg]" marks of a body: its arguments, in order, each once.
void Tokenizer::find_argument_names(CustomFunctions& fn, int f) {
  std::string marked = fn.contenuto_funzione[f];
  static constexpr Rewrite marks[] = {{"<  \"", ARG}, {"\"  >", ARG}, {"< \"", ARG}, {"\" >", ARG}};
  text_edit::replace_all(marked, marks);
  for (int k = 0; k < 8; ++k) text_edit::replace_all(marked, " [arg]", ARG);
  for (int k = 0; k < 8; ++k) text_edit::replace_all(marked, "[arg] ", ARG);
  text_edit::replace_all(marked, "§space§", "_");
  auto& names = fn.argomento[f];
  std::fill(names.begin(), names.end(), std::string(NOT_SET));
  const int pieces = static_cast<int>(text_edit::count(marked, ARG));
  for (int ar = 1; ar <= CustomFunctions::ARGUMENTS; ++ar) {
    for (int n = 1; n <= pieces; n += 2) {
      const std::string piece = text_edit::string_extract(marked, ARG, n);
      if (piece.empty() || holds_any(piece, "/*+-:()") || std::find(names.begin(), names.end(), piece) != names.end()) {
        continue;
      }
      names[static_cast<size_t>(ar)] = piece;
      break;
    }
  }
}

void Tokenizer::expand_call(CustomFunctions& fn, int f, size_t ab) {
  const std::vector<std::string>& tok = tok_p_;
  const auto& names = fn.argomento[f];
  int count = 0;
  for (size_t k = ab + 2; k < ab + MAX_CALL_SPAN && at(tok, k).starts_with('('); k += 3) ++count;

  fn.argg[CustomFunctions::ARGUMENTS] = "0";
  for (int k = 1; k <= fn.n_arg_base[f]; ++k) {
    for (int m = 1; m < CustomFunctions::ARGUMENTS; ++m) {
      if (names[static_cast<size_t>(m)] == fn.arg_base_e[f][static_cast<size_t>(k)]) {
        fn.argg[static_cast<size_t>(m)] = fn.arg_base_v[f][static_cast<size_t>(k)];
      }
    }
  }
  for (int c = 0; c < count; ++c) {
    const size_t key = ab + 2 + 3 * static_cast<size_t>(c);
    for (int m = 1; m < CustomFunctions::ARGUMENTS; ++m) {
      if (at(tok, key) == "(" + names[static_cast<size_t>(m)] + ":") fn.argg[static_cast<size_t>(m)] = at(tok, key + 1);
    }
  }

  std::string inst = fn.contenuto_funzione[f];
  for (int m = 1; m < CustomFunctions::ARGUMENTS; ++m) {
    const std::string& name = names[static_cast<size_t>(m)];
    const std::string& value = fn.argg[static_cast<size_t>(m)];
    text_edit::replace_all(inst, "<  \"" + name + "\"  >", value);
    text_edit::replace_all(inst, "< \"" + name + "\" >", value);
  }
  const std::string position = std::to_string(ab);
  for (size_t v = 1; v < fn.variabile_fzp.size(); ++v) {
    std::string local = fn.variabile_fzp[v];
    std::erase(local, ' ');
    if (!local.empty()) localise(inst, local, position);
  }

  std::string line;
  if (count > 0) {
    for (size_t k = ab; k < ab + 3 * static_cast<size_t>(count) + 2; ++k) line += at(tok, k);
  } else {
    line = at(tok, ab);
  }
  text_edit::replace_all(line, CALL_LINE);
  text_edit::replace_all(inst, RESPACE);

  if (text_edit::contains(fn.funzione[f], "ottieni") && ab >= 2) {
    const std::string left = at(tok, ab - 2) + "  " + at(tok, ab - 1) + "  ";
    line = left + line;
    text_edit::replace_first(inst, "con_questa_funzione_ottieni", left);
  }
  // A body that calls its own function would grow the text at every call: past this size it stops.
  if (message_.size() > MAX_TEXT) return;
  if (count == 0) {
    if (text_edit::count(message_, line) * inst.size() > MAX_TEXT) return;
    text_edit::replace_all(message_, line, inst);
    text_edit::replace_all(message_, "\"" + inst + "\"", "");
  } else {
    text_edit::replace_first(message_, line, inst);
  }
}

void Tokenizer::parsing_funzioni_personalizzate(size_t ap) {
  CustomFunctions fn;
  std::fill(fn.funzione.begin(), fn.funzione.end(), std::string(NOT_SET));
  std::vector<std::string>& tok = tok_p_;
  if (tok.size() <= ap) tok.resize(ap + 1);

  for (size_t ab = 0; ab <= ap; ++ab) {
    if (text_edit::contains(tok[ab], "x_del_vettore_dato_angolo")) tok[ab] = "ottieni_cxv";
    if (text_edit::contains(tok[ab], "y_del_vettore_dato_angolo")) tok[ab] = "ottieni_cyv";
    if (text_edit::count(tok[ab], "definisci_funzione") == 1) scan_function(fn, ab, ap);
  }
  for (std::string& t : tok) {
    if (const char* colour = colour_constant(t)) t = colour;
  }
  const auto with_body = [&fn](int f) { return !fn.contenuto_funzione[static_cast<size_t>(f)].empty(); };
  for (int f = 1; f < fn.tot_funzioni_pers; ++f) {
    if (with_body(f)) find_argument_names(fn, f);
  }

  // The definitions leave the text; a name of several words becomes one.
  for (int f = 1; f < fn.tot_funzioni_pers; ++f) {
    if (!with_body(f)) continue;
    std::string written = fn.contenuto_funzione[static_cast<size_t>(f)];
    text_edit::replace_all(written, "==", "= ");
    text_edit::replace_all(message_, written, " ");
    std::string& name = fn.funzione[static_cast<size_t>(f)];
    std::string joined = name;
    std::replace(joined.begin(), joined.end(), ' ', '_');
    std::string spaced = name;
    text_edit::replace_all(spaced, " ", "§space§");
    text_edit::replace_all(message_, spaced, joined);
    text_edit::replace_all(message_, name, joined);
    name = joined;
  }

  // The raw tokens without blanks and line ends, the empty ones taken out.
  for (size_t ab = 0; ab < ap; ++ab) {
    std::string& t = tok[ab];
    if (!t.starts_with('"')) std::erase(t, ' ');
    std::erase(t, '#');
    std::replace(t.begin(), t.end(), '\n', ' ');
    std::replace(t.begin(), t.end(), '\r', ' ');
  }
  ap = compact_tokens(tok, ap);

  for (size_t ab = 0; ab <= ap; ++ab) {
    for (int f = 1; f < CustomFunctions::SLOTS && with_body(f); ++f) {
      if (tok[ab] == fn.funzione[static_cast<size_t>(f)]) expand_call(fn, f, ab);
    }
  }
}
