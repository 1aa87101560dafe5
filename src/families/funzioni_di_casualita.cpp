// funzioni_di_casualita: random numbers and random choices. Value functions, but
// for the one statement that stands outside the guard.
#include "families/families.h"

const Family funzioni_di_casualita{"funzioni_di_casualita", OTTIENI_GUARD, OTTIENI_GUARD, {}};
