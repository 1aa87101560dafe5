#include "runtime/Function/Registration.h"

void register_string_builtins() {}
