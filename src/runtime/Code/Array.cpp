#include "runtime/Function/Registration.h"

void register_array_builtins() {}
