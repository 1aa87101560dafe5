#include "runtime/Function/Registration.h"

void register_dialog_builtins() {}
