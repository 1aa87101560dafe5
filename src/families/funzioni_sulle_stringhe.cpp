// funzioni_sulle_stringhe: pieces, lengths, searches and cases of texts.
//
// A text of the language keeps its double quotes inside its value and may
// hold placeholders ("< nome >"). Each function has its own way of taking
// its text: evaluated as an expression (calculate_string, which makes a
// variable's name its value), with its placeholders filled in
// (calculate_expression_in_string), with its quotes or without them. The
// ways differ from function to function and programs depend on each: a
// function that keeps the quotes counts the opening one as position 0.
#include <algorithm>
#include <string>

#include "families/families.h"
#include "families/value_function.h"
#include "language/evaluation/numeric_expression.h"
#include "language/evaluation/program_instance.h"
#include "language/evaluation/string_expression.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Function/StringFunctions.h"

namespace {

// [SECTION] Ways of taking a text


// The text between double quotes, as the functions that give a quoted text
// build it.
std::string quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

// A position or a length as the runtime's string functions take it: the
// whole part, and 0 for a number beyond the integers.
int whole(double x) { return value_to_int32(RValue::number(x)); }

// The slot's text evaluated as an expression.
std::string evaluated(ProgramInstance& p, int slot) { return calculate_string(p, slot_source(p, slot)); }
// The slot's text with its placeholders filled in.
std::string filled(ProgramInstance& p, int slot) { return calculate_expression_in_string(p, slot_source(p, slot)); }

constexpr ArgumentKey TESTO_KEY[] = {{"(TESTO:", 1, "0"}};
constexpr ArgumentKey TESTO_E_PAROLA[] = {{"(TESTO:", 1, "0"}, {"(PAROLA:", 2, "0"}};

// [SECTION] Numbers from texts

// One more round of evaluating `text` and filling its placeholders; false,
// with `text` left as it was, when the round makes no headway. A round that
// leaves more placeholders than it found comes from a variable whose text
// holds its own placeholder: each further round would multiply the text.
bool fill_once_more(ProgramInstance& p, std::string& text) {
  std::string again = calculate_expression_in_string(p, calculate_string(p, text));
  if (again == text || std::ranges::count(again, '<') > std::ranges::count(text, '<')) return false;
  text = std::move(again);
  return true;
}

// Placeholders whose values are placeholders again are filled again up to
// this many times: two variables that name each other would go round for ever.
constexpr int MAX_FILLINGS = 10;

void ottieni_numero_da_testo(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Value, TESTO_KEY);
  std::string text = evaluated(p, 1);
  const auto has_placeholder = [&] { return text.find('<') != std::string::npos && text.find('>') != std::string::npos; };
  for (int round = 0; round < MAX_FILLINGS && has_placeholder(); ++round) {
    if (!fill_once_more(p, text)) break;
  }
  // Only the digits are kept: a sign and a decimal point are lost too.
  give_text(p, i, rt::string_digits(calculate_string(p, text)).string_view());
}

void ottieni_lunghezza_testo(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Value, TESTO_KEY);
  give_number(p, i, rt::string_length(without_quotes(evaluated(p, 1))), NumberForm::Exact);
}

void ottieni_il_numero_di_parole_specificate_in_un_testo(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Value, TESTO_E_PAROLA);
  // Three rounds reach placeholders that the values of placeholders bring.
  std::string text = calculate_expression_in_string(p, evaluated(p, 1));
  for (int round = 1; round < 3; ++round) {
    if (!fill_once_more(p, text)) break;
  }
  const std::string word = without_quotes(evaluated(p, 2));
  if (word.empty()) {
    give_number(p, i, 0, NumberForm::Exact);
    return;
  }
  // Occurrences that don't overlap: "aa" is twice in "aaaa", not three times.
  const RValue without = rt::string_replace_all(text, word, "");
  give_number(p, i, (rt::string_length(text) - rt::string_length(without.string_view())) / rt::string_length(word),
              NumberForm::Exact);
}

void ottieni_posizione_parola(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Value, TESTO_E_PAROLA);
  // The text keeps its quotes: its opening quote is position 0.
  const std::string word = without_quotes(calculate_string(p, filled(p, 2)));
  give_number(p, i, rt::string_pos(word, filled(p, 1)) - 1, NumberForm::Short);
}

// [SECTION] Pieces of texts

void ottieni_il_simbolo_di_un_testo_a_una_determinata_posizione(ProgramInstance& p, int i) {
  static constexpr ArgumentKey KEYS[] = {{"(TESTO:", 1, "0"}, {"(POSIZIONE:", 2, "0"}};
  read_arguments(p, i, CallShape::Value, KEYS);
  const RValue symbol = rt::string_char_at(without_quotes(evaluated(p, 1)), whole(slot_number(p, 2)));
  give_text(p, i, quoted(symbol.string_view()));
}

// POSIZIONE of the two functions below has no default.
constexpr ArgumentKey POSIZIONE_KEPT = {"(POSIZIONE:", 3, "", {}, true};

void ottieni_un_pezzo_di_questo_testo(ProgramInstance& p, int i) {
  static constexpr ArgumentKey KEYS[] = {{"(TESTO:", 1, "0"}, {"(LUNGHEZZA:", 2, "0"}, POSIZIONE_KEPT};
  read_arguments(p, i, CallShape::Value, KEYS);
  // The text keeps its quotes, so position 0 is the opening quote; the
  // piece gets quotes of its own around it.
  const RValue piece = rt::string_copy(filled(p, 1), whole(slot_number(p, 3) + 1), whole(slot_number(p, 2)));
  give_text(p, i, quoted(piece.string_view()));
}

void ottieni_testo_con_inserito_altro_testo_a_una_determinata_posizione(ProgramInstance& p, int i) {
  static constexpr ArgumentKey KEYS[] = {{"(TESTO:", 1, "0"}, {"(TESTO_INSERITO:", 2, "0"}, POSIZIONE_KEPT};
  read_arguments(p, i, CallShape::Value, KEYS);
  const std::string text = without_quotes(calculate_string(p, filled(p, 1)));
  const std::string inserted = without_quotes(calculate_string(p, filled(p, 2)));
  const RValue result = rt::string_insert(inserted, text, whole(slot_number(p, 3)));
  give_text(p, i, quoted(result.string_view()));
}

// [SECTION] Changed texts

// TESTO with PAROLA replaced by NUOVA_PAROLA. TESTO keeps its quotes, so
// a quoted text stays quoted; the two words lose theirs.
template <RValue (*REPLACE)(std::string_view, std::string_view, std::string_view)>
RValue with_word_replaced(ProgramInstance& p) {
  return REPLACE(filled(p, 1), without_quotes(filled(p, 2)), without_quotes(filled(p, 3)));
}

void ottieni_testo_con_parola_sostituita(ProgramInstance& p, int i) {
  static constexpr ArgumentKey KEYS[] = {TESTO_E_PAROLA[0], TESTO_E_PAROLA[1], {"(NUOVA_PAROLA:", 3, "0"}};
  read_arguments(p, i, CallShape::Value, KEYS);
  give_text(p, i, with_word_replaced<rt::string_replace_all>(p).string_view());
}

void ottieni_testo_con_parola_sostituita_solo_la_prima_volta(ProgramInstance& p, int i) {
  // Here NUOVA_PAROLA has no default.
  static constexpr ArgumentKey KEYS[] = {TESTO_E_PAROLA[0], TESTO_E_PAROLA[1], {"(NUOVA_PAROLA:", 3, "", {}, true}};
  read_arguments(p, i, CallShape::Value, KEYS);
  give_text(p, i, with_word_replaced<rt::string_replace>(p).string_view());
}

// TESTO in capitals or small letters; its quotes stay.
template <RValue (*CHANGE_CASE)(std::string_view)>
void in_case(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Value, TESTO_KEY);
  give_text(p, i, CHANGE_CASE(calculate_expression_in_string(p, evaluated(p, 1))).string_view());
}

constexpr FamilyFunction FUNCTIONS[] = {
    {"ottieni_numero_da_testo", CallShape::Value, ottieni_numero_da_testo},
    {"ottieni_il_simbolo_di_un_testo_a_una_determinata_posizione", CallShape::Value,
     ottieni_il_simbolo_di_un_testo_a_una_determinata_posizione},
    {"ottieni_il_numero_di_parole_specificate_in_un_testo", CallShape::Value,
     ottieni_il_numero_di_parole_specificate_in_un_testo},
    {"ottieni_lunghezza_testo", CallShape::Value, ottieni_lunghezza_testo},
    {"ottieni_testo_con_parola_sostituita", CallShape::Value, ottieni_testo_con_parola_sostituita},
    {"ottieni_testo_con_parola_sostituita_solo_la_prima_volta", CallShape::Value,
     ottieni_testo_con_parola_sostituita_solo_la_prima_volta},
    {"ottieni_testo_con_inserito_altro_testo_a_una_determinata_posizione", CallShape::Value,
     ottieni_testo_con_inserito_altro_testo_a_una_determinata_posizione},
    {"ottieni_un_pezzo_di_questo_testo", CallShape::Value, ottieni_un_pezzo_di_questo_testo},
    {"ottieni_posizione_parola", CallShape::Value, ottieni_posizione_parola},
    {"ottieni_testo_maiuscolo", CallShape::Value, in_case<rt::string_upper>},
    {"ottieni_testo_minuscolo", CallShape::Value, in_case<rt::string_lower>},
};

}  // namespace

const Family funzioni_sulle_stringhe{"funzioni_sulle_stringhe", OTTIENI_GUARD, OTTIENI_GUARD, FUNCTIONS};
