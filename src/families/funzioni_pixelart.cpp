// funzioni_pixelart: pictures drawn as grids of coloured cells.
#include "families/families.h"

const Family funzioni_pixelart{"funzioni_pixelart", NO_GUARD, NO_GUARD, {}};
