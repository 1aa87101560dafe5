// funzioni_matematiche: rounding, powers, roots, logarithms, means and bounds.
#include "families/families.h"

const Family funzioni_matematiche{"funzioni_matematiche", OTTIENI_GUARD, OTTIENI_GUARD, {}};
