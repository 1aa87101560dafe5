// The stages of the tokeniser that rewrite the whole program text: 1 to 23,
// 25 to 29 and 31 to 39. Each rewrite list runs in the order written; the
// literals are the language's and must stay exactly as they are.
#include <fstream>

#include "language/tokenizer/token_cut.h"
#include "language/tokenizer/tokenizer.h"
#include "language/tokenizer/text_cleaning.h"
#include "language/tokenizer/text_edit.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Function/MathFunctions.h"
#include "runtime/IO/FileNames.h"
#include "runtime/Support/AssetIndex.h"

using text_edit::Rewrite;
using text_edit::npos;

namespace {

// The program text ends its lines with "#". A newline character can only
// come in through an included file or a line end of another system; the
// rewrites that name it stay, for such text.
constexpr std::string_view LINE_END = "#";
constexpr std::string_view NEWLINE = "\n";

bool is_digit(char c) { return c >= '0' && c <= '9'; }

// The start of the character before `at`, stepping from the character start `from`.
size_t previous_start(std::string_view text, size_t from, size_t at) {
  size_t last = from;
  for (size_t pos = from; pos < at; pos = text_edit::next(text, pos)) last = pos;
  return last;
}

// Deletes walk-found comments: at each `opener`, `span` tells how many bytes
// go; the walk then starts again, which only the character before the cut
// can change.
template <class Span>
void delete_comments(std::string& text, std::string_view opener, Span span) {
  size_t from = 0;
  for (;;) {
    const size_t at = text_edit::find(text, opener, from);
    if (at == npos) return;
    const size_t resume = at == 0 ? 0 : previous_start(text, from, at);
    text.erase(at, span(text, at));
    from = resume;
  }
}

}  // namespace

void tighten_bracket_blanks(std::string& text) {
  static constexpr Rewrite rewrites[] = {
      {" )", ")"},        {") ", ")"},       {"  )", ")"},       {"   ) ", ")"},       {"    ) ", ")"},
      {"     ) ", ")"},   {"      ) ", ")"}, {"(  ", "("},       {"(   ", "("},       {"(    ", "("},
      {"(     ", "("},    {"(      ", "("},  {"(       ", "("},
  };
  text_edit::replace_all(text, rewrites);
}

// A comment loses at most its first 1000 characters; the line end that ends it stays.
void remove_comments_up_to(std::string& text, char line_end) {
  delete_comments(text, "//", [line_end](const std::string& t, size_t at) {
    size_t pos = at;
    for (int n = 0; n < 1000 && pos < t.size() && t[pos] != line_end; ++n) pos = text_edit::next(t, pos);
    return pos - at;
  });
}

// Line ends inside a block comment go with it; an unclosed one takes 1002 characters.
void remove_block_comments(std::string& text) {
  delete_comments(text, "/*", [](const std::string& t, size_t at) {
    size_t pos = at;
    for (int n = 0; n < 1000 && pos < t.size(); ++n) {
      if (t[pos] == '*' && pos + 1 < t.size() && t[pos + 1] == '/') break;
      pos = text_edit::next(t, pos);
    }
    // The closing "*/", where there is one.
    for (int k = 0; k < 2 && pos < t.size(); ++k) pos = text_edit::next(t, pos);
    return pos - at;
  });
}

bool Tokenizer::read_lines(const std::string& path, bool guard_hash, std::string& out) const {
  std::ifstream file(path, std::ios::binary);
  if (!file) return false;
  std::string line;
  while (std::getline(file, line)) {
    // A line is read as a C string: a NUL ends it. A line end of another system loses its "\r".
    if (const size_t nul = line.find('\0'); nul != std::string::npos) line.erase(nul);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (guard_hash) {
      for (char c : line) {
        if (c == '#') out += "§hash§";
        else out += c;
      }
    } else {
      out += line;
    }
    out += LINE_END;
  }
  return true;
}

// 1. A missing code.txt reads as an empty program.
void Tokenizer::read_program() {
  message_.clear();
  read_lines(program_file_, true, message_);
}

// 2. Only the first "includi" is served; a file that isn't there leaves the text as it is.
void Tokenizer::serve_include() {
  const size_t word = text_edit::find(message_, "includi");
  if (word == npos) return;
  // From behind the word up to and including the second double quote, blanks included.
  size_t end = word + 7;
  for (int quotes = 0; end < message_.size() && quotes < 2; end = text_edit::next(message_, end)) {
    if (message_[end] == '"') ++quotes;
  }
  const std::string raw = message_.substr(word + 7, end - (word + 7));
  std::string file_name = text_edit::string_extract(raw, "\"", 1);
  if (!text_edit::contains(file_name, ".txt")) file_name += ".txt";
  std::string included;
  // Beside the program first, then wherever the file name rule finds it.
  if (!read_lines(working_directory_ + file_name, false, included) && !read_lines(file_read_path(file_name), false, included)) {
    return;
  }
  text_edit::replace_first(message_, "includi" + raw, included);
}

// 3. A brace at a line end keeps a blank line behind it; a few phrases become one word.
void Tokenizer::guard_braces_and_join_words() {
  static constexpr Rewrite rewrites[] = {
      {"{#", "{ #"},
      {"{ #", "{ ##"},
      {"sé stesso", "se_stesso"},
      {"definisci funzione", "definisci_funzione"},
      {"esegue al suo interno questo codice", "esegue_al_suo_interno_questo_codice"},
  };
  text_edit::replace_all(message_, rewrites);
}

// 4. The header's assignments run before anything the user wrote and give
// the window its defaults: no background colour, 1000 by 700, "Velant".
void Tokenizer::add_mandatory_blocks() {
  if (!text_edit::contains(message_, "CICLO CONTINUO")) message_.insert(0, "CICLO_CONTINUO #");
  if (!text_edit::contains(message_, "INIZIA")) message_.insert(0, "INIZIA #");
  const size_t inizia = text_edit::find(message_, "INIZIA");
  const size_t at = text_edit::offset_of(std::string_view(message_).substr(inizia), 7) + inizia;
  message_.insert(at, " colore sfondo = -1 altezza finestra = 700 larghezza finestra = 1000 nome finestra = \"Velant\"");
}

// 5. The arrays are cleared as far as an estimate of the token count, with
// room for what the later stages add.
void Tokenizer::clear_token_arrays() {
  const double bound = 1 + rt::round(static_cast<double>(text_edit::length(message_)) / 1.5) +
                       10.0 * static_cast<double>(text_edit::count(message_, "#")) +
                       100.0 * static_cast<double>(text_edit::count(message_, "definisci_funzione"));
  const auto size = static_cast<size_t>(bound);
  p_.tok.assign(size, RValue::text(""));
  tok_p_.assign(size, std::string());
  p_.tok_var_name.assign(size, std::string());
  p_.mem_argn.assign(size, 0);
  p_.pixel_art.assign(size, std::string());
  p_.pixel_surf.assign(size, -4);
}

// 6.
void Tokenizer::tighten_brackets() { tighten_bracket_blanks(message_); }

// 7.
void Tokenizer::join_continued_lines() {
  static constexpr Rewrite rewrites[] = {{"$#", ""}, {"$\n", ""}};
  text_edit::replace_all(message_, rewrites);
}

// 8.
void Tokenizer::remove_line_comments() { remove_comments_up_to(message_, '#'); }

// 9.
void Tokenizer::remove_block_comments() { ::remove_block_comments(message_); }

// 10.
void Tokenizer::mark_line_break_words() {
  static constexpr Rewrite rewrites[] = {
      {"(a capo)", "/carriage_return/"}, {"[a capo]", "/carriage_return/"}, {"\t", ""}};
  text_edit::replace_all(message_, rewrites);
}

// 11. The signs inside each string literal are held as markers, so that no
// later rewrite of the program's punctuation reaches them. Every literal
// equal to the one being protected is protected with it.
void Tokenizer::protect_strings() {
  static constexpr Rewrite inside[] = {
      {",", "/virgola_safe/"},   {"%", "/percentuale_safe/"}, {"=", "§uguale_safe§"},
      {" ", "§space§"},          {"(", "§apri_tonda§"},       {")", "§chiudi_tonda§"},
      {"!", "§punto_esclamativo§"}, {".", "§punto§"},
      {"§space§della§space§", " /d_e_l_l_a/ "}, {"§space§dello§space§", " /d_e_l_l_o/ "},
      {"§space§dell'", " /d_e_l_l/ "},
  };
  std::string stringa;
  std::string old_with_quote;
  size_t index = 0;  // the character position of `pos`, from 0
  for (size_t pos = 0; pos < message_.size();) {
    if (message_[pos] != '"') {
      pos = text_edit::next(message_, pos);
      ++index;
      continue;
    }
    // Collect up to the next double quote, at most 1000 characters; a literal
    // protected before together with an identical one stops at its marker.
    stringa.clear();
    size_t q = text_edit::next(message_, pos);
    size_t closing = index + 1;
    for (int n = 0; n < 1000 && q < message_.size() && message_[q] != '"'; ++n) {
      const size_t after = text_edit::next(message_, q);
      stringa.append(message_, q, after - q);
      q = after;
      ++closing;
      if (stringa.back() == 'e' && stringa.ends_with("str_safe")) break;
    }
    old_with_quote = stringa + '"';
    text_edit::replace_all(stringa, NEWLINE, "/carriage_return/");
    stringa += "/str_safe";
    text_edit::replace_all(stringa, inside);
    text_edit::replace_all(message_, old_with_quote, stringa);
    // The walk goes on behind the closing quote, counted in characters.
    index = closing + 1;
    pos = text_edit::offset_of(message_, index);
  }
}

// 12. After this a comma followed by a blank separates two arguments and a
// comma alone is a decimal point: "3,5" is 3.5.
void Tokenizer::genitive_and_commas() {
  static constexpr Rewrite rewrites[] = {
      {" della ", "_del_"},         {" dello ", "_del_"},         {" dell'", "_del_"},
      {" /d_e_l_l_a/ ", " della "}, {" /d_e_l_l_o/ ", " dello "}, {" /d_e_l_l/ ", " dell'"},
      {"/str_safe", "\""},          {", ", ")("},                 {",", "."},
      {"/virgola_safe/", ","},
  };
  text_edit::replace_all(message_, rewrites);
}

// 13. Round brackets of an argument list stay round, those of arithmetic
// become square. After the first ":" (`tonda` never returns to 0) a pair at
// balance comes out "[" ... ")"; the operator stages turn such a ")" into "]".
void Tokenizer::classify_brackets() {
  int par_open = 0;
  int par_close = 0;
  int tonda = 0;
  char previous = 0;
  size_t previous_position = 0;
  for (size_t pos = 0; pos < message_.size();) {
    const size_t after = text_edit::next(message_, pos);
    if (after >= message_.size()) break;  // the last character is left alone
    const char c = message_[pos];
    if (c == '(') {
      ++par_open;
      if (par_open != par_close) message_[pos] = '[';
      previous = '(';
      previous_position = pos;
    } else if (c == ')') {
      ++par_close;
      if (par_close != par_open || tonda == 0) message_[pos] = ']';
      previous = ')';
      previous_position = pos;
    } else if (c == ':') {
      if (previous == '(' && message_[previous_position] == '[') message_[previous_position] = '(';
      previous = ':';
      previous_position = pos;
      tonda = 1;
    }
    pos = after;
  }
}

// 14. " o " is searched with a marker in front, so that an "o" between two
// brackets can close the arithmetic bracket before it.
void Tokenizer::mark_logical_or() {
  while (text_edit::replace_all(message_, " o ", "@#o ")) {
  }
  static constexpr Rewrite rewrites[] = {{")@#o ", "]o "}, {")@#e ", "]e "}, {"){", "]{"}, {"@#o ", " o "}};
  text_edit::replace_all(message_, rewrites);
}

// 15. First occurrences only.
void Tokenizer::first_operators() {
  static constexpr Rewrite rewrites[] = {
      {")+", "]+"}, {")-", "]-"}, {")*", "]*"}, {")//", "] //"}, {")/", "]/"}, {")^", "]^"},
      {"+(", "+["}, {"-(", "-["}, {"*(", "*["}, {"//(", "// ["}, {"/(", "/["}, {"^(", "^["},
  };
  text_edit::replace_first(message_, rewrites);
}

// 16.
void Tokenizer::join_phrases() {
  static constexpr Rewrite rewrites[] = {
      {"definisci funzione", "definisci_funzione"},
      {"x del mouse", "x_del_mouse"},
      {"y del mouse", "y_del_mouse"},
      {"x casuale", "x_casuale"},
      {"y casuale", "y_casuale"},
      {"angolo casuale", "angolo_casuale"},
      {"colore casuale", "colore_casuale"},
      {"finché", "finche"},
      {"ottieni la componente x del vettore dato angolo e lunghezza", "ottieni_cxv"},
      {"ottieni la componente y del vettore dato angolo e lunghezza", "ottieni_cyv"},
      {"INIZIALE", "INIZiale"},
  };
  text_edit::replace_all(message_, rewrites);
}

// 17. The reserved attributes of an element get their token form, which
// starts with a vertical bar.
void Tokenizer::object_attributes() {
  static constexpr Rewrite rewrites[] = {
      {" del ", "_del_"},
      {"X_del_", "|x_del_"},
      {"Y_del_", "|y_del_"},
      {"Z_del_", "|z_del_"},
      {"SCALA ASSE X_del_", "|scala_asse_x_del_"},
      {"SCALA ASSE Y_del_", "|scala_asse_y_del_"},
      {"TRASPARENZA_del_", "|trasparenza_del_"},
      {"ROTAZIONE_del_", "|rotazione_del_"},
      {"VELOCITA_del_", "|velocita_del_"},
      {"DIREZIONE_del_", "|direzione_del_"},
      {"TIMER 1_del_", "|timer1_del_"},
      {"TIMER 2_del_", "|timer2_del_"},
      {"TIMER 3_del_", "|timer3_del_"},
      {"TIMER 4_del_", "|timer4_del_"},
      {"DURATA_del_", "|durata_del_"},
      {"nome_del_esemplare", "nome dell'esemplare"},
  };
  text_edit::replace_all(message_, rewrites);
}

// 18.
void Tokenizer::space_conditions() {
  static constexpr Rewrite rewrites[] = {{"\nse ", "  se  "}, {" se ", "  se  "}, {"   ", " "}, {"  ", " "}};
  text_edit::replace_all(message_, rewrites);
}

// 19. A full stop with no digit on either side closes a block like "}";
// "3.5", "3." and ".5" stay numbers.
void Tokenizer::blocks_and_spacing() {
  size_t before = 0;  // the start of the character before `pos`
  for (size_t pos = message_.empty() ? 0 : text_edit::next(message_, 0); pos < message_.size();) {
    const size_t after = text_edit::next(message_, pos);
    if (after >= message_.size()) break;  // the last character is left alone
    if (message_[pos] == '.' && !is_digit(message_[before]) && !is_digit(message_[after])) message_[pos] = '}';
    before = pos;
    pos = after;
  }
  static constexpr Rewrite rewrites[] = {
      {"§punto§", "."},
      // Argument separators, the pair between two arguments held safe as "}f{".
      {")#(", "}f{"}, {")(", "}f{"}, {") (", "}f{"}, {" ( ", "("}, {"( ", "("}, {" (", "("}, {" ) ", ")"},
      {") ", ")"}, {" )", ")"}, {"}f{", ") ("},
      // Arithmetic blanks.
      {"+ ", "+"}, {" +", "+"}, {"- ", "-"}, {" -", "-"}, {"* ", "*"}, {" *", "*"}, {"/ ", "/"}, {" /", "/"},
      {"^ ", "^"}, {" ^", "^"},
      // Blocks.
      {"allora", "{"}, {")}", ") }"}, {"]{", "] {"}, {"){", ") {"}, {"{", " { "}, {"}", " } "},
      // The call arrow, behind a name that ends in a, e, i, o, u, b or v.
      {"a(", "a --> ("}, {"e(", "e --> ("}, {"i(", "i --> ("}, {"o(", "o --> ("}, {"u(", "u --> ("},
      {"b(", "b --> ("}, {"v(", "v --> ("}, {") /carriage_return/ (", ") ("},
  };
  text_edit::replace_all(message_, rewrites);
}

// 20.
void Tokenizer::fixed_phrases() {
  static constexpr Rewrite rewrites[] = {
      {"x del mouse", "x_del_mouse"},
      {"y del mouse", "y_del_mouse"},
      {"larghezza finestra", "larghezza_finestra"},
      {"altezza finestra", "altezza_finestra"},
      {"colore sfondo", "colore_sfondo"},
      {"colore griglia", "colore_griglia"},
      {"dimensione griglia", "dimensione_griglia"},
      {"nome finestra", "nome_finestra"},
      {"x casuale", "x_casuale"},
      {"y casuale", "y_casuale"},
      {"angolo casuale", "angolo_casuale"},
      {"colore casuale", "colore_casuale"},
      {"o esclusivamente", "o_esclusivamente"},
  };
  text_edit::replace_all(message_, rewrites);
}

// 21. "tasto freccia su è premuto" becomes "tasto_freccia_su_e_premuto",
// for every key and mouse button, then the same for "è stato premuto" and
// "è stato rilasciato".
void Tokenizer::key_and_mouse_phrases() {
  static const std::vector<std::string> keys = [] {
    std::vector<std::string> k = {"invio", "barra spaziatrice", "ctrl", "alt", "freccia su", "freccia giu",
                                  "freccia destra", "freccia sinistra"};
    for (const char* digit : {"1", "2", "3", "4", "5", "6", "7", "8", "9", "0"}) k.emplace_back(digit);
    for (char letter : std::string_view("QWERTYUIOPASDFGHJKLZXCVBNM")) k.emplace_back(1, letter);
    for (const char* mouse : {"sinistro_del_mouse", "destro_del_mouse", "centrale_del_mouse"}) k.emplace_back(mouse);
    return k;
  }();
  static constexpr std::string_view states[][2] = {
      {" è premuto", "_e_premuto"}, {" è stato premuto", "_e_stato_premuto"}, {" è stato rilasciato", "_e_stato_rilasciato"}};
  for (const auto& state : states) {
    for (const std::string& key : keys) {
      std::string joined = key;
      text_edit::replace_all(joined, " ", "_");
      text_edit::replace_all(message_, "tasto " + key + std::string(state[0]), "tasto_" + joined + std::string(state[1]));
    }
  }
  static constexpr Rewrite wheel[] = {{"rotella_del_mouse in su", "rotella_del_mouse_in_su"},
                                      {"rotella_del_mouse in giu", "rotella_del_mouse_in_giu"}};
  text_edit::replace_all(message_, wheel);
}

// 22. After this a sound constant is the number of its sound asset.
void Tokenizer::notes_sounds_fonts() {
  static constexpr Rewrite notes[] = {
      {"Do diesis", "Do_diesis"},   {"Re bemolle", "Re_bemolle"}, {"Re diesis", "Re_diesis"},
      {"Mi bemolle", "Mi_bemolle"}, {"Fa diesis", "Fa_diesis"},   {"Sol diesis", "Sol_diesis"},
      {"La bemolle", "La_bemolle"}, {"La diesis", "La_diesis"},   {"Si bemolle", "Si_bemolle"},
  };
  text_edit::replace_all(message_, notes);
  static constexpr std::string_view sounds[] = {"beep1", "beep2", "beep3", "bau",     "miao",   "squit", "hiho", "hiii",
                                                "driiin", "quack", "ok",    "errore", "muu", "huahah", "nota piano"};
  for (std::string_view word : sounds) {
    std::string asset = "suono_" + std::string(word);
    text_edit::replace_all(asset, " ", "_");
    std::string number = value_to_text(asset_get_index(asset));
    text_edit::replace_all(number, "ref sound", "");
    text_edit::replace_all(message_, "suono " + std::string(word), number);
  }
  static constexpr Rewrite fonts[] = {
      {"global.font", "global.font.ttf"},
      {"Verdana", "Verdana.ttf"},
      {"Times _new Roman", "Times_new_Roman.ttf"},
      {"Tahoma", "Tahoma.ttf"},
      {"Comic Sans", "Comic_Sans.ttf"},
      {"Brush Script", "Brush_Script.ttf"},
      {"Old English Text", "Old_English_Text.ttf"},
      {"Chiller", "Chiller.ttf"},
      {"Stencil", "Stencil.ttf"},
      {"Gigi", "Gigi.ttf"},
      {"Bauhaus 93", "Bauhaus_93.ttf"},
      {"CICLO CONTINUO", "CICLO_CONTINUO "},
  };
  text_edit::replace_all(message_, fonts);
}

// 23. The states of an element become numbers: "è stato cliccato" 2, "è
// cliccato" 1. The shorter phrase goes first, so "non è cliccato" reaches its
// own rewrite as "non 1" and `non` does the rest.
void Tokenizer::punctuation_and_comparisons() {
  static constexpr Rewrite rewrites[] = {
      {" :", ":"}, {":", ": "}, {")", " )"}, {"=", " = "}, {"-->", " --> "},
      {">", " > "}, {"<", " < "},
      {">  =", ">="}, {"<  =", "<="}, {"!  = ", "!="}, {">=", " >= "}, {"<=", " <= "}, {"!=", " != "},
      {"è stato cliccato", "2"}, {"è cliccato", "1"}, {"non è cliccato", "0"}, {"al centro", "al_centro"},
      {"a destra", "a_destra"}, {"a sinistra", "a_sinistra"}, {"in alto", "in_alto"}, {"in basso", "in_basso"},
      {"ottieni risultato controllo se elemento 1", "ottieni_risultato_controllo_se_elemento_è_cliccato"},
      {"ottieni risultato controllo se elemento 2", "ottieni_risultato_controllo_se_elemento_è_stato_cliccato"},
      {"è uguale a", " = "}, {"è maggiore di", " > "}, {"è minore di", " < "}, {"è minore o uguale a", "< ="},
      {"è maggiore o uguale a", "> ="}, {"è diverso da", "! ="},
      {" -- > ", " --> "},
  };
  text_edit::replace_all(message_, rewrites);
}

// 25. A line that begins with a blank joins the line before it.
void Tokenizer::line_starts() {
  static constexpr Rewrite scala[] = {{"( SCALA", "(SCALA"}, {"(  SCALA", "(SCALA"}, {"(   SCALA", "(SCALA"}};
  text_edit::replace_all(message_, scala);
  while (text_edit::replace_all(message_, "#  ", "# ")) {
  }
  text_edit::replace_all(message_, "# ", " ");
  text_edit::replace_all(message_, "con questa funzione ottieni", "con_questa_funzione_ottieni");
}

// 26. The rest of a line behind "argomenti" becomes one string token: the
// argument names of a custom function.
void Tokenizer::custom_argument_lists() {
  const size_t times = text_edit::count(message_, "argomenti");
  for (size_t i = 0; i < times; ++i) {
    const size_t word = text_edit::find(message_, "argomenti");
    if (word == npos) break;
    message_.insert(word + 9, " \"");
    size_t end = word;
    while (end < message_.size() && message_[end] != '#') end = text_edit::next(message_, end);
    message_.insert(end, " \"");
    text_edit::replace_first(message_, "argomenti", "§itnemogra§");
  }
  text_edit::replace_all(message_, "§itnemogra§", "argomenti");
}

// 27. The decimal point between two digits is held safe from the cuts; the
// digit 9 isn't covered on either side.
void Tokenizer::guard_decimal_points() {
  char from[] = "0.0";
  char to[] = "0/dot_safe/0";
  for (char d1 = '0'; d1 <= '8'; ++d1) {
    for (char d2 = '0'; d2 <= '8'; ++d2) {
      from[0] = to[0] = d1;
      from[2] = to[11] = d2;
      text_edit::replace_all(message_, from, to);
    }
  }
}

// 28. A custom function's name of several words becomes one word
// everywhere, inside strings too; then functions and objects are taken out.
void Tokenizer::join_function_names() {
  p_.tok.assign(1, RValue::text(""));
  tok_p_.assign(1, std::string());
  p_.tok_var_name.assign(1, std::string());
  const size_t last = cut_tokens(message_, CUT_A, tok_p_);
  for (size_t i = 0; i < last; ++i) {
    if (text_edit::count(tok_p_[i], "definisci_funzione") != 1) continue;
    std::string funz_pers = tok_p_[i + 1];
    text_edit::replace_all(funz_pers, "§space§", "_");
    text_edit::replace_all(funz_pers, " ", "_");
    text_edit::replace_all(funz_pers, "\"", "");
    std::string spaced = funz_pers;
    text_edit::replace_all(spaced, "_", "§space§");
    text_edit::replace_all(message_, spaced, funz_pers);
    spaced = funz_pers;
    text_edit::replace_all(spaced, "_", " ");
    text_edit::replace_all(message_, spaced, funz_pers);
  }
}

// 28. Custom functions are pasted in at their calls; then the code of
// objects is taken out of the text, from its tokens cut again.
void Tokenizer::functions_and_objects() {
  join_function_names();
  parsing_funzioni_personalizzate(cut_tokens(message_, CUT_B, tok_p_));
  parsing_codice_oggetto(cut_tokens(message_, CUT_B, tok_p_));
}

// 29. A key with nothing behind it gets the value 0.
void Tokenizer::last_text_passes() {
  static constexpr Rewrite rewrites[] = {{"/dot_safe/", "."}, {":   )", ":  )"}, {":  )", ":  0 )"}, {"]o", "] o"}};
  text_edit::replace_all(message_, rewrites);
}

// 31. The program's first token, which the compaction moved to position a,
// isn't taken over: in a normal program it is "INIZIA", and stage 33 puts it back.
void Tokenizer::rebuild_text() {
  message_.clear();
  for (size_t i = 1; i < a_; ++i) {
    if (is_text(p_.tok[i])) message_.append(p_.tok[i].string_view());
    else append_text_form(message_, p_.tok[i]);
    message_ += ' ';
  }
  text_edit::replace_all(message_, NEWLINE, "\r\n\t");
  text_edit::replace_all(message_, "-->", "-->#");
}

// 32.
void Tokenizer::argument_keys() {
  char from[] = "( A";
  char to[] = "(A";
  for (char c = 'A'; c <= 'Z'; ++c) {
    from[2] = to[1] = c;
    text_edit::replace_all(message_, from, to);
  }
}

// 33.
void Tokenizer::blocks_again() {
  if (!text_edit::contains(message_, "CICLO_CONTINUO #")) {
    text_edit::replace_first(message_, "CICLO_CONTINUO", "CICLO_CONTINUO #");
  }
  if (!text_edit::contains(message_, "INIZIA")) message_.insert(0, "INIZIA #");
}

// 34.
void Tokenizer::square_brackets() {
  static constexpr Rewrite first[] = {{" [", "["}, {"[ ", "["}, {"=[", "= ["}};
  text_edit::replace_first(message_, first);
  static constexpr Rewrite rewrites[] = {{"> ==", ">="}, {"< ==", "<="}, {">=", " >= "}, {"<=", " <= "},
                                         {"! ==", "!="}, {"! =", "!="},  {"!=", " != "}};
  text_edit::replace_all(message_, rewrites);
}

// 35.
void Tokenizer::blanks_beside_brackets() {
  static constexpr std::string_view digits = "0123456789";
  static constexpr std::string_view letters = "qwertyuiopasdfghjklzxcvbnm";
  for (char d : digits) text_edit::replace_all(message_, std::string{d, ' ', ']'}, std::string{d, ']'});
  for (char d : digits) text_edit::replace_all(message_, std::string{'[', ' ', d}, std::string{'[', d});
  for (char c : letters) text_edit::replace_all(message_, std::string{c, ' ', ']'}, std::string{c, ']'});
  for (char c : letters) text_edit::replace_all(message_, std::string{'[', ' ', c}, std::string{'[', c});
  for (char c : letters) text_edit::replace_all(message_, std::string{')', c}, std::string{')', ' ', c});
}

// 36. An object's code takes only the blanks beside square brackets and
// around operators, not the round brackets turned square.
void Tokenizer::operators_rewrite(bool all_rows) {
  static constexpr Rewrite beside_square[] = {
      {"+ [", "+["}, {"- [", "-["}, {"* [", "*["}, {"/ [", "/["},
      {"] +", "]+"}, {"] -", "]-"}, {"] *", "]*"}, {"] /", "]/"},
  };
  static constexpr Rewrite round_to_square[] = {
      {"+ (", "+["}, {"- (", "-["}, {"* (", "*["}, {"/ (", "/["}, {") +", "]+"}, {") -", "]-"}, {") *", "]*"},
      {") /", "]/"}, {"+(", "+["},  {"-(", "-["},  {"*(", "*["},  {"/(", "/["},  {")+", "]+"},  {")-", "]-"},
      {")*", "]*"},  {")/", "]/"},
  };
  static constexpr Rewrite operator_blanks[] = {{" + ", "+"}, {" - ", "-"}, {" * ", "*"}, {" / ", "/"}};
  text_edit::replace_all(message_, beside_square);
  if (all_rows) text_edit::replace_all(message_, round_to_square);
  text_edit::replace_all(message_, operator_blanks);
}

// 37. "%" becomes a division: "30%" is 0.3. Percent signs in strings are
// held safe. An object's code also keeps the word "o" apart from a number
// before it.
void Tokenizer::condition_rewrite(bool digits_before_o) {
  static constexpr Rewrite before_not[] = {
      {"se[", "se ["}, {"]e ", "] e "}, {"]o ", "] o "}, {"]o_", "] o_"}, {" e[", " e ["}, {" o[", " o ["}, {"!", " !"},
  };
  static constexpr Rewrite after_not[] = {{"per[", "per ["}, {"%", "/100"}, {":[", ": ["}, {"non[", "non ["}};
  text_edit::replace_all(message_, before_not);
  if (digits_before_o) {
    for (char d = '0'; d <= '9'; ++d) {
      text_edit::replace_all(message_, std::string{d, 'o', ' '}, std::string{d, ' ', 'o', ' '});
      text_edit::replace_all(message_, std::string{d, 'o', '_'}, std::string{d, ' ', 'o', '_'});
    }
  }
  text_edit::replace_all(message_, after_not);
}

// 38.
void Tokenizer::keys_again() {
  for (const std::string& k : p_.ctrl_keyword) {
    text_edit::replace_all(message_, "( " + k + ": ", "(" + k + ": ");
    text_edit::replace_all(message_, "(  " + k + ": ", "(" + k + ": ");
  }
}

// 39.
void Tokenizer::last_operators() {
  static constexpr Rewrite rewrites[] = {
      {"/(", "/["}, {")/", "]/"}, {"*(", "*["}, {")*", "]*"}, {"+(", "+["},     {")+", "]+"},
      {"-(", "-["}, {")-", "]-"}, {" ]/[", "]/["}, {" ]*[", "]*["}, {" ]+[", "]+["}, {" ]-[", "]-["},
  };
  text_edit::replace_all(message_, rewrites);
}
