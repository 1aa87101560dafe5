// funzioni_sugli_oggetti: elements of the program: making them, moving them,
// their collisions and their attributes.
#include "families/families.h"

const Family funzioni_sugli_oggetti{"funzioni_sugli_oggetti", NO_GUARD, NO_GUARD, {}};
