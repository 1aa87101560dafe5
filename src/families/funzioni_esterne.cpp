// funzioni_esterne: the functions that a program imports from a library of its own.
#include "families/families.h"

const Family funzioni_esterne{"funzioni_esterne", NO_GUARD, NO_GUARD, {}};
