#include "runtime/Function/Registration.h"

void register_math_builtins() {}
