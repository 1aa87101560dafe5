// funzioni_logiche: truth values of numbers and texts.
#include "families/families.h"
#include "families/value_function.h"
#include "language/evaluation/program_instance.h"
#include "runtime/Code/Conversions.h"

namespace {

// 1 when VALORE counts as false, 0 when as true, by the runtime's rule that
// a number is true above one half: so the negation of 0.4 is 1.
void ottieni_la_negazione_di(ProgramInstance& p, int i) {
  static constexpr ArgumentKey KEYS[] = {{"(VALORE:", 1, "0"}};
  read_arguments(p, i, CallShape::Value, KEYS);
  const bool truth = value_to_bool(RValue::number(slot_number(p, 1)));
  give_number(p, i, truth ? 0 : 1, NumberForm::Short);
}

constexpr FamilyFunction FUNCTIONS[] = {
    {"ottieni_la_negazione_di", CallShape::Value, ottieni_la_negazione_di},
};

}  // namespace

const Family funzioni_logiche{"funzioni_logiche", NO_GUARD, NO_GUARD, FUNCTIONS};
