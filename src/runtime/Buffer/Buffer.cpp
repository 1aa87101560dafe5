#include "runtime/Function/Registration.h"

void register_buffer_builtins() {}
