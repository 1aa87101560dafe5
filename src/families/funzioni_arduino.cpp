// funzioni_arduino: the serial link to a microcontroller board.
#include "families/families.h"

const Family funzioni_arduino{"funzioni_arduino", NO_GUARD, NO_GUARD, {}};
