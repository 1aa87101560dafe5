// Arithmetic on values and their comparison.
//
// The compound operators follow the kind of the left side: a number stays a
// number, a string only adds strings, integers keep their width where both
// sides are integers. `a + b` is a copy of `a` followed by `+= b`.
#pragma once

#include "runtime/Code/RValue.h"

// The comparison epsilon: 0.00001.
double compare_epsilon();

void value_add(RValue& left, const RValue& right);       // +=
void value_subtract(RValue& left, const RValue& right);  // -=
void value_multiply(RValue& left, const RValue& right);  // *=
void value_divide(RValue& left, const RValue& right);    // /=
void value_modulo(RValue& left, const RValue& right);    // %=
void value_increment(RValue& v);                         // ++
void value_decrement(RValue& v);                         // --

RValue operator+(const RValue& a, const RValue& b);
RValue operator-(const RValue& a, const RValue& b);
RValue operator*(const RValue& a, const RValue& b);
RValue operator/(const RValue& a, const RValue& b);
RValue operator%(const RValue& a, const RValue& b);

// Three-way compare: 0 equal, -1 or 1 by order, -2 incomparable. With
// raise_errors, a failed conversion is fatal instead of reading as unequal.
int CompareValues(const RValue& a, const RValue& b, double epsilon, bool raise_errors);
// The order of two numbers as CompareValues gives it with the comparisons' epsilon: -1, 0 or 1.
int CompareNumbers(double a, double b);

bool operator==(const RValue& a, const RValue& b);
bool operator!=(const RValue& a, const RValue& b);
bool operator<(const RValue& a, const RValue& b);
bool operator<=(const RValue& a, const RValue& b);
bool operator>(const RValue& a, const RValue& b);
bool operator>=(const RValue& a, const RValue& b);
