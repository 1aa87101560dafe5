#include "runtime/Function/Registration.h"

void register_value_builtins() {}
