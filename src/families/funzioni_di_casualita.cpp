// funzioni_di_casualita: random numbers and random choices. Value functions, but
// for the one statement that stands outside the guard.
//
// Every run starts the generator from the same seed (the run controller
// calls ripristina_casualita_di_avvio), so that a program draws the same
// numbers at each run until it asks for a different chance at each start.
#include "families/funzioni_di_casualita.h"

#include "families/families.h"
#include "families/value_function.h"
#include "language/evaluation/program_instance.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Function/Random.h"

namespace {

void attiva_casualita_diversa_per_ogni_avvio(ProgramInstance&, int) { rt::randomize(); }

void ottieni_uno_a_caso_di_questi_valori(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Value, VALORE_KEYS);
  const int count = listed_count(p);
  // With nothing to choose from, the variable takes what the last value
  // function left.
  if (count == 0) {
    give_previous(p, i);
    return;
  }
  // The first value alone decides: a text in quotes makes every value be
  // chosen as it was written, quotes and all; otherwise they are numbers.
  if (slot_source(p, VALORE_KEYS[0].slot).starts_with('"')) {
    // The list slots stand side by side, VALORE_1 first.
    const std::span<const RValue> written(p.call.args.data() + VALORE_KEYS[0].slot, static_cast<size_t>(count));
    give_text(p, i, value_to_text(rt::choose(written)));
    return;
  }
  std::vector<RValue> numbers;
  for (double x : listed_numbers(p)) numbers.push_back(RValue::number(x));
  give_number(p, i, rt::choose(numbers).real, NumberForm::Short);
}

constexpr ArgumentKey BOUNDS[] = {{"(VALORE_1:", 1, "0"}, {"(VALORE_2:", 2, "0"}};

void ottieni_un_valore_compreso_tra_questi(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Value, BOUNDS);
  give_number(p, i, rt::random_range(slot_number(p, 1), slot_number(p, 2)), NumberForm::Short);
}

void ottieni_un_valore_intero_compreso_tra_questi(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Value, BOUNDS);
  give_number(p, i, rt::irandom_range(slot_number(p, 1), slot_number(p, 2)), NumberForm::Short);
}

constexpr FamilyFunction FUNCTIONS[] = {
    {"attiva_casualità_diversa_per_ogni_avvio", CallShape::Statement, attiva_casualita_diversa_per_ogni_avvio,
     &NO_GUARD},
    {"ottieni_uno_a_caso_di_questi_valori", CallShape::Value, ottieni_uno_a_caso_di_questi_valori},
    {"ottieni_un_valore_compreso_tra_questi", CallShape::Value, ottieni_un_valore_compreso_tra_questi},
    {"ottieni_un_valore_intero_compreso_tra_questi", CallShape::Value, ottieni_un_valore_intero_compreso_tra_questi},
};

}  // namespace

void ripristina_casualita_di_avvio() { rt::random_set_seed(rt::RANDOM_START_SEED); }

const Family funzioni_di_casualita{"funzioni_di_casualita", OTTIENI_GUARD, OTTIENI_GUARD, FUNCTIONS};
