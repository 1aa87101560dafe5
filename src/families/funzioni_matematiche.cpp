// funzioni_matematiche: rounding, powers, roots, logarithms, means and bounds.
//
// Each function hands its number back in the form that the language has
// always given it, exact (30 decimals) or short, and the forms differ
// between like functions: the maximum is exact, the minimum short. The only
// checks are those of division by zero; a value out of a function's domain
// never stops the program.
#include <cmath>

#include "families/families.h"
#include "families/value_function.h"
#include "language/evaluation/numeric_expression.h"
#include "language/evaluation/program_instance.h"
#include "language/evaluation/string_expression.h"
#include "runtime/Code/Operators.h"
#include "runtime/Function/DialogFunctions.h"
#include "runtime/Function/MathFunctions.h"

namespace {

constexpr ArgumentKey VALORE_KEY[] = {{"(VALORE:", 1, "0"}};

// [SECTION] Functions of one value

// The rounding functions read VALORE only as the first argument of the
// call, without counting the arguments: anywhere else it goes unseen.
template <double (*ROUNDING)(double)>
void rounding_of_first(ProgramInstance& p, int i) {
  const double value = p.token_text(i + 4) == VALORE_KEY[0].key
                           ? string_is_real(calculate_string(p, p.token_text(i + 5)))
                           : 0;
  give_number(p, i, ROUNDING(value), NumberForm::Short);
}

// VALORE, the number given to FUNCTION, short.
template <double (*FUNCTION)(double)>
void of_value(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Value, VALORE_KEY);
  give_number(p, i, FUNCTION(slot_number(p, 1)), NumberForm::Short);
}

void ottieni_la_radice_quadrata_di(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Value, VALORE_KEY);
  const double value = slot_number(p, 1);
  // No square root of a negative number: 0, in the exact form, where the
  // runtime's sqrt would stop the program.
  if (!(value >= 0)) {
    give_number(p, i, 0, NumberForm::Exact);
    return;
  }
  give_number(p, i, rt::sqrt(value), NumberForm::Short);
}

// [SECTION] Functions of two or three values

void ottieni_il_logaritmo_in_base_n_di(ProgramInstance& p, int i) {
  static constexpr ArgumentKey KEYS[] = {{"(VALORE:", 1, "0"}, {"(BASE:", 2, "0"}};
  read_arguments(p, i, CallShape::Value, KEYS);
  // VALORE goes first: the logarithm of BASE in base VALORE.
  give_number(p, i, rt::logn(slot_number(p, 1), slot_number(p, 2)), NumberForm::Short);
}

void ottieni_la_potenza_di(ProgramInstance& p, int i) {
  static constexpr ArgumentKey KEYS[] = {{"(VALORE:", 1, "0"}, {"(ESPONENTE:", 2, "0"}};
  read_arguments(p, i, CallShape::Value, KEYS);
  give_number(p, i, rt::power(slot_number(p, 1), slot_number(p, 2)), NumberForm::Short);
}

constexpr ArgumentKey THREE_VALUES[] = {{"(VALORE_1:", 1, "0"}, {"(VALORE_2:", 2, "0"}, {"(VALORE_3:", 3, "0"}};

void ottieni_l_interpolazione_lineare_tra(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Value, THREE_VALUES);
  give_number(p, i, rt::lerp(slot_number(p, 1), slot_number(p, 2), slot_number(p, 3)), NumberForm::Short);
}

void ottieni_il_valore_limitato_del_variabile_tra(ProgramInstance& p, int i) {
  static constexpr ArgumentKey KEYS[] = {{"(VALORE_1:", 1, "0"}, {"(VALORE_2:", 2, "0"}, {"(VARIABILE:", 3, "0"}};
  read_arguments(p, i, CallShape::Value, KEYS);
  give_number(p, i, rt::clamp(slot_number(p, 3), slot_number(p, 1), slot_number(p, 2)), NumberForm::Short);
}

// [SECTION] Functions of a list of values

void ottieni_il_massimo_tra(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Value, VALORE_KEYS);
  std::vector<RValue> values;
  for (double x : listed_numbers(p)) values.push_back(RValue::number(x));
  give_number(p, i, rt::max(values).real, NumberForm::Exact);
}

void ottieni_il_minimo_tra(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Value, VALORE_KEYS);
  std::vector<RValue> values;
  for (double x : listed_numbers(p)) values.push_back(RValue::number(x));
  give_number(p, i, rt::min(values).real, NumberForm::Short);
}

// The mean or the median of the listed values, short.
template <double (*STATISTIC)(std::span<const double>)>
void of_listed(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Value, VALORE_KEYS);
  give_number(p, i, STATISTIC(listed_numbers(p)), NumberForm::Short);
}

// [SECTION] Division

constexpr ArgumentKey DIVISION_KEYS[] = {{"(DIVIDENDO:", 1, "0"}, {"(DIVISORE:", 2, "0"}};

// The message of a division by zero, with the arguments as they were
// written; the function then gives 0 in the exact form and the run goes on.
void refuse_division_by_zero(ProgramInstance& p, int i, int dividend_slot, int divisor_slot) {
  show_message(RValue::text("Errore: impossibile dividere per zero! (" + slot_source(p, dividend_slot) + "/" +
                            slot_source(p, divisor_slot) + ")"));
  give_number(p, i, 0, NumberForm::Exact);
}

void ottieni_il_quoziente_del_divisione_tra(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Value, DIVISION_KEYS);
  // Only the integer parts divide, so a divisor such as 0.5 is a zero too.
  const double dividend = std::trunc(slot_number(p, 1));
  const double divisor = std::trunc(slot_number(p, 2));
  if (divisor == 0) {
    refuse_division_by_zero(p, i, 1, 2);
    return;
  }
  give_number(p, i, std::trunc(dividend / divisor), NumberForm::Short);
}

void ottieni_il_resto_del_divisione_tra(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Value, DIVISION_KEYS);
  const double divisor = slot_number(p, 2);
  if (divisor == 0) {
    refuse_division_by_zero(p, i, 1, 2);
    return;
  }
  // The runtime's modulo: the sign of the dividend, fractions allowed.
  RValue remainder = RValue::number(slot_number(p, 1));
  value_modulo(remainder, RValue::number(divisor));
  give_number(p, i, remainder.real, NumberForm::Short);
}

void ottieni_potenza_modulare_di(ProgramInstance& p, int i) {
  static constexpr ArgumentKey KEYS[] = {{"(VALORE:", 1, "0"}, {"(ESPONENTE:", 2, "0"}, {"(DIVISORE:", 3, "0"}};
  read_arguments(p, i, CallShape::Value, KEYS);
  const double modulus = slot_number(p, 3);
  if (modulus == 0) {
    refuse_division_by_zero(p, i, 1, 3);
    return;
  }
  give_number(p, i, modular_power(slot_number(p, 1), slot_number(p, 2), modulus), NumberForm::Short);
}

// [SECTION] Expressions written in a text

void ottieni_risultato_espressione_da_testo(ProgramInstance& p, int i) {
  static constexpr ArgumentKey KEYS[] = {{"(TESTO:", 1, "0"}};
  read_arguments(p, i, CallShape::Value, KEYS);
  std::string text = slot_source(p, 1);
  if (std::string value = p.calculate_var(text); value != "no var") text = std::move(value);
  text = calculate_expression_in_string(p, text);
  std::erase(text, '"');
  // The text may come from the user at run time: a bad expression gives
  // the evaluator's failure text instead of stopping the program. A number
  // comes back in the evaluator's own text, which is the short form.
  give_text(p, i, calculate_string_permessive(p, text));
}

constexpr FamilyFunction FUNCTIONS[] = {
    {"ottieni_l'arrotondamento_per_difetto_di", CallShape::Value, rounding_of_first<rt::round>},
    {"ottieni_l'arrotondamento_per_eccesso_di", CallShape::Value, rounding_of_first<rt::ceil>},
    {"ottieni_il_valore_intero_di", CallShape::Value, of_value<rt::floor>},
    {"ottieni_il_valore_decimale_di", CallShape::Value, of_value<rt::frac>},
    {"ottieni_il_valore_assoluto_di", CallShape::Value, of_value<rt::abs>},
    {"ottieni_il_segno_di", CallShape::Value, of_value<rt::sign>},
    {"ottieni_il_massimo_tra", CallShape::Value, ottieni_il_massimo_tra},
    {"ottieni_il_minimo_tra", CallShape::Value, ottieni_il_minimo_tra},
    {"ottieni_la_media_tra", CallShape::Value, of_listed<rt::mean>},
    {"ottieni_il_valore_più_vicino_alla_media_tra", CallShape::Value, of_listed<rt::median>},
    {"ottieni_l'interpolazione_lineare_tra", CallShape::Value, ottieni_l_interpolazione_lineare_tra},
    {"ottieni_il_valore_limitato_del_variabile_tra", CallShape::Value, ottieni_il_valore_limitato_del_variabile_tra},
    {"ottieni_la_funzione_esponenziale_di", CallShape::Value, of_value<rt::exp>},
    {"ottieni_il_logaritmo_naturale_di", CallShape::Value, of_value<rt::ln>},
    {"ottieni_il_logaritmo_in_base_2_di", CallShape::Value, of_value<rt::log2>},
    {"ottieni_il_logaritmo_in_base_10_di", CallShape::Value, of_value<rt::log10>},
    {"ottieni_il_logaritmo_in_base_n_di", CallShape::Value, ottieni_il_logaritmo_in_base_n_di},
    {"ottieni_la_potenza_di", CallShape::Value, ottieni_la_potenza_di},
    {"ottieni_il_quadrato_di", CallShape::Value, of_value<rt::sqr>},
    {"ottieni_la_radice_quadrata_di", CallShape::Value, ottieni_la_radice_quadrata_di},
    {"ottieni_il_quoziente_del_divisione_tra", CallShape::Value, ottieni_il_quoziente_del_divisione_tra},
    {"ottieni_il_resto_del_divisione_tra", CallShape::Value, ottieni_il_resto_del_divisione_tra},
    {"ottieni_potenza_modulare_di", CallShape::Value, ottieni_potenza_modulare_di},
    {"ottieni_risultato_espressione_da_testo", CallShape::Value, ottieni_risultato_espressione_da_testo},
};

}  // namespace

const Family funzioni_matematiche{"funzioni_matematiche", OTTIENI_GUARD, OTTIENI_GUARD, FUNCTIONS};
