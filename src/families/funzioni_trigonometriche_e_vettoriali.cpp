// funzioni_trigonometriche_e_vettoriali: angles, sines and cosines, distances
// and directions between points.
//
// The trigonometric functions work in the unit named by UNITA, the bare
// word radianti (the default) or gradi; any other word computes nothing and
// hands back what the last value function left. Like the mathematical
// family, each function has its number form of old, exact or short.
#include <string>

#include "families/families.h"
#include "families/value_function.h"
#include "language/evaluation/program_instance.h"
#include "runtime/Code/Operators.h"
#include "runtime/Function/MathFunctions.h"

namespace {

// [SECTION] Functions with a unit

// A trigonometric function in its two units.
struct UnitFunction {
  double (*in_radians)(double);
  double (*in_degrees)(double);
  NumberForm form;
  // The inverse sine and cosine take values from -1 to 1 only.
  bool of_unit_interval = false;
};

constexpr UnitFunction SENO{rt::sin, rt::dsin, NumberForm::Exact};
constexpr UnitFunction COSENO{rt::cos, rt::dcos, NumberForm::Exact};
constexpr UnitFunction TANGENTE{rt::tan, rt::dtan, NumberForm::Short};
constexpr UnitFunction ARCOSENO{rt::arcsin, rt::darcsin, NumberForm::Short, true};
constexpr UnitFunction ARCOCOSENO{rt::arccos, rt::darccos, NumberForm::Exact, true};
constexpr UnitFunction ARCOTANGENTE{rt::arctan, rt::darctan, NumberForm::Exact};

// The function of the unit that the UNITA slot names, or null for a word
// that is no unit. The word must be bare: a quoted "gradi" is no unit.
template <typename Function>
Function in_unit(const ProgramInstance& p, int unit_slot, Function in_radians, Function in_degrees) {
  const std::string unit = slot_source(p, unit_slot);
  if (unit == "radianti") return in_radians;
  if (unit == "gradi") return in_degrees;
  return nullptr;
}

// Whether the runtime's inverse sine and cosine take `x`: the interval from
// -1 to 1, widened by the comparison epsilon for the rounding of a computed sine.
bool within_unit_interval(double x) { return x >= -1 - compare_epsilon() && x <= 1 + compare_epsilon(); }

template <const UnitFunction& F>
void with_unit(ProgramInstance& p, int i) {
  static constexpr ArgumentKey KEYS[] = {{"(VALORE:", 1, "0"}, {"(UNITA:", 2, "radianti"}};
  read_arguments(p, i, CallShape::Value, KEYS);
  const auto function = in_unit(p, 2, F.in_radians, F.in_degrees);
  if (!function) {
    give_previous(p, i);
    return;
  }
  const double value = slot_number(p, 1);
  // No angle has a sine or a cosine beyond 1: 0, where the runtime would
  // stop the program.
  if (F.of_unit_interval && !within_unit_interval(value)) {
    give_number(p, i, 0, F.form);
    return;
  }
  give_number(p, i, function(value), F.form);
}

void ottieni_l_arcotangente_2_di(ProgramInstance& p, int i) {
  static constexpr ArgumentKey KEYS[] = {{"(VALORE_1:", 1, "0"}, {"(VALORE_2:", 2, "0"}, {"(UNITA:", 3, "radianti"}};
  read_arguments(p, i, CallShape::Value, KEYS);
  const auto function = in_unit(p, 3, rt::arctan2, rt::darctan2);
  if (!function) {
    give_previous(p, i);
    return;
  }
  give_number(p, i, function(slot_number(p, 1), slot_number(p, 2)), NumberForm::Exact);
}

// VALORE converted between radians and degrees, exact.
template <double (*CONVERSION)(double)>
void converted(ProgramInstance& p, int i) {
  static constexpr ArgumentKey KEYS[] = {{"(VALORE:", 1, "0"}};
  read_arguments(p, i, CallShape::Value, KEYS);
  give_number(p, i, CONVERSION(slot_number(p, 1)), NumberForm::Exact);
}

// [SECTION] Vectors and points

// A component of the vector of LUNGHEZZA at ANGOLO degrees, short.
template <double (*COMPONENT)(double, double)>
void component(ProgramInstance& p, int i) {
  static constexpr ArgumentKey KEYS[] = {{"(LUNGHEZZA:", 1, "0"}, {"(ANGOLO:", 2, "0"}};
  read_arguments(p, i, CallShape::Value, KEYS);
  give_number(p, i, COMPONENT(slot_number(p, 1), slot_number(p, 2)), NumberForm::Short);
}

// The direction from (x1, y1) to (x2, y2) in degrees from 0 to 360,
// counter-clockwise on a screen whose y grows downwards.
double point_direction(double x1, double y1, double x2, double y2) {
  const double direction = rt::darctan2(y1 - y2, x2 - x1);
  return direction < 0 ? direction + 360 : direction;
}

// A measure between the points (X_1, Y_1) and (X_2, Y_2), short.
template <double (*MEASURE)(double, double, double, double)>
void between_points(ProgramInstance& p, int i) {
  static constexpr ArgumentKey KEYS[] = {
      {"(X_1:", 1, "0"}, {"(Y_1:", 2, "0"}, {"(X_2:", 3, "0"}, {"(Y_2:", 4, "0"}};
  read_arguments(p, i, CallShape::Value, KEYS);
  give_number(p, i, MEASURE(slot_number(p, 1), slot_number(p, 2), slot_number(p, 3), slot_number(p, 4)),
              NumberForm::Short);
}

// The runtime measures distances in single precision.
double point_distance(double x1, double y1, double x2, double y2) {
  return rt::point_distance(static_cast<float>(x1), static_cast<float>(y1), static_cast<float>(x2),
                            static_cast<float>(y2));
}

void ottieni_differenza_angolare_tra(ProgramInstance& p, int i) {
  static constexpr ArgumentKey KEYS[] = {{"(VALORE_1:", 1, "0"}, {"(VALORE_2:", 2, "0"}};
  read_arguments(p, i, CallShape::Value, KEYS);
  give_number(p, i,
              rt::angle_difference(static_cast<float>(slot_number(p, 1)), static_cast<float>(slot_number(p, 2))),
              NumberForm::Short);
}

constexpr FamilyFunction FUNCTIONS[] = {
    {"ottieni_il_seno_di", CallShape::Value, with_unit<SENO>},
    {"ottieni_il_coseno_di", CallShape::Value, with_unit<COSENO>},
    {"ottieni_la_tangente_di", CallShape::Value, with_unit<TANGENTE>},
    {"ottieni_l'arcoseno_di", CallShape::Value, with_unit<ARCOSENO>},
    {"ottieni_l'arcocoseno_di", CallShape::Value, with_unit<ARCOCOSENO>},
    {"ottieni_l'arcotangente_di", CallShape::Value, with_unit<ARCOTANGENTE>},
    {"ottieni_l'arcotangente_2_di", CallShape::Value, ottieni_l_arcotangente_2_di},
    {"ottieni_il_valore_convertito_da_radianti_a_gradi_di", CallShape::Value, converted<rt::radtodeg>},
    {"ottieni_il_valore_convertito_da_gradi_a_radianti_di", CallShape::Value, converted<rt::degtorad>},
    {"ottieni_la_componente_x_del_vettore_dato_angolo_e_lunghezza", CallShape::Value, component<rt::lengthdir_x>},
    {"ottieni_la_componente_y_del_vettore_dato_angolo_e_lunghezza", CallShape::Value, component<rt::lengthdir_y>},
    {"ottieni_distanza_tra_due_punti", CallShape::Value, between_points<point_distance>},
    {"ottieni_direzione_tra_due_punti", CallShape::Value, between_points<point_direction>},
    {"ottieni_differenza_angolare_tra", CallShape::Value, ottieni_differenza_angolare_tra},
};

}  // namespace

const Family funzioni_trigonometriche_e_vettoriali{
    "funzioni_trigonometriche_e_vettoriali", OTTIENI_GUARD, OTTIENI_GUARD, FUNCTIONS};
