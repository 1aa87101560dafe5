#include "runtime/Function/Registration.h"

void register_external_builtins() {}
