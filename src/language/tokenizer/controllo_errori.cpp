#include "language/tokenizer/controllo_errori.h"

#include <vector>

#include "language/tokenizer/text_cleaning.h"
#include "language/tokenizer/text_edit.h"
#include "language/tokenizer/token_cut.h"

namespace {

constexpr const char* F1 =
    "ERRORE: questo codice ha bisogno della connessione internet per funzionare correttamente... Ma il computer è "
    "offline! Per farlo funzionare devi connetterti a una rete oppure puoi sostituire le risorse che vengono "
    "scaricate dal web con altre già presenti nel computer (nella cartella delle risorse di Velant) ";
constexpr const char* F2 = "ERRORE: non puoi scrivere codice prima dell'evento INIZIA";
constexpr const char* F3 = "ERRORE: non puoi scrivere più volte l'evento INIZIA";
constexpr const char* F4 = "ERRORE: non puoi scrivere più volte l'evento CICLO CONTINUO";
constexpr const char* F5 = "ERRORE: una parentesi tonda non è stata chiusa o aperta correttamente";
constexpr const char* F6 = "ERRORE: un costrutto ripeti per n volte non è stato scritto correttamente";
constexpr const char* F7 =
    "ERRORE: una parentesi graffa non è stata chiusa o aperta correttamente, oppure manca un punto \" . \" alla "
    "fine del costrutto \"allora\"";
constexpr const char* W1 =
    "ATTENZIONE: non hai utilizzato l'evento CICLO CONTINUO, il tuo codice verrà eseguito una sola volta. \r\n\t"
    "\r\n\t"
    "Tutte le funzioni di disegno per esempio non avranno effetto: \r\n\t"
    "lo schermo del computer è come una lavagna che viene cancellata ogni trentesimo di secondo. Se ciò non "
    "avvenisse sarebbe impossibile creare l’illusione delle animazioni!";

PreRunCheck failure(const char* text, bool sound) { return {false, text, sound, false}; }

bool is_digit(char c) { return c >= '0' && c <= '9'; }

// 4. A full stop between two things that aren't digits closes a block.
void stops_to_braces(std::string& s) {
  for (size_t k = 1; k + 1 < s.size(); ++k) {
    if (s[k] == '.' && !is_digit(s[k - 1]) && !is_digit(s[k + 1])) s[k] = '}';
  }
}

// 6. Each string's contents become "s"; the other pieces lose their quotes.
std::string strings_emptied(const std::string& s) {
  std::string out;
  size_t from = 0;
  for (bool inside = false;; inside = !inside) {
    const size_t quote = s.find('"', from);
    if (!inside) out.append(s, from, quote == std::string::npos ? std::string::npos : quote - from);
    else out += "\"s\"";
    if (quote == std::string::npos) break;
    from = quote + 1;
  }
  return out;
}

// 7. A piece that holds balanced round brackets, and no colon, is arithmetic:
// its brackets become square, so that they don't count as a call's.
void arithmetic_brackets(std::string& s) {
  std::vector<std::string> pieces;
  const size_t last = cut_tokens(s, "#)(}{ :;", pieces);
  for (size_t k = 0; k <= last && k < pieces.size(); ++k) {
    const std::string& piece = pieces[k];
    const size_t open = text_edit::count(piece, "("), close = text_edit::count(piece, ")");
    if (open == 0 || open != close || text_edit::contains(piece, ":")) continue;
    if (open == 1 && piece.find(')') < piece.find('(')) continue;
    std::string square = piece;
    text_edit::replace_all(square, "(", "[");
    text_edit::replace_all(square, ")", "]");
    text_edit::replace_first(s, piece, square);
  }
}

}  // namespace

PreRunCheck controllo_errori(std::string s, std::string& to_run, bool (*online)()) {
  using text_edit::contains, text_edit::count, text_edit::replace_all;
  if (contains(s, "internet/") && !online()) return failure(F1, true);
  tighten_bracket_blanks(s);
  replace_all(s, "  ", "");
  replace_all(s, "allora", "{");
  stops_to_braces(s);
  s += "  ";
  s = strings_emptied(s);
  arithmetic_brackets(s);
  replace_all(s, "INIZIALE", "INIZiale");
  replace_all(s, "(a capo)", "\n");
  replace_all(s, "[a capo]", "\n");
  replace_all(s, "\t", "");
  replace_all(s, "$#", "");
  remove_comments_up_to(s, '\n');
  remove_block_comments(s);
  if (!contains(s, "CICLO CONTINUO") && !contains(s, "INIZIA")) s = "CICLO CONTINUO " + s;
  if (!contains(s, "INIZIA")) s = "INIZIA " + s;
  replace_all(s, "\n", "");
  if (!s.starts_with("INIZIA")) return failure(F2, false);
  if (count(s, "INIZIA") > 1) return failure(F3, false);
  if (count(s, "CICLO CONTINUO") > 1) return failure(F4, false);
  PreRunCheck result;
  if (!contains(s, "CICLO CONTINUO")) {
    s += "#CICLO CONTINUO";
    to_run += " CICLO CONTINUO";
    result = {true, W1, false, true};
  }
  if (count(s, "(") != count(s, ")")) return failure(F5, true);
  const size_t repeats = count(s, "ripeti per "), times = count(s, " volte");
  if ((repeats + times) % 2 != 0 && (repeats > 0 || times > 0)) return failure(F6, false);
  const size_t ripeti_per_duepunti = (repeats + times) / 2;
  size_t closers = count(s, "}") + count(s, ").") + count(s, " .");
  for (char letter = 'a'; letter <= 'z'; ++letter) closers += count(s, std::string(1, letter) + ".");
  const size_t openers = count(s, "{") + count(s, " allora");
  if (openers != closers && openers + ripeti_per_duepunti != closers) return failure(F7, true);
  return result;
}
