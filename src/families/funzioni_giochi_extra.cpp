// funzioni_giochi_extra: the direction game, a ready-made game for beginners.
#include "families/families.h"

const Family funzioni_giochi_extra{"funzioni_giochi_extra", NO_GUARD, NO_GUARD, {}};
