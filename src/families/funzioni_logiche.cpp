// funzioni_logiche: truth values of numbers and texts.
#include "families/families.h"

const Family funzioni_logiche{"funzioni_logiche", NO_GUARD, NO_GUARD, {}};
