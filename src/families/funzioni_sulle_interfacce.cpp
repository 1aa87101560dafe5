// funzioni_sulle_interfacce: buttons, text boxes, sliders and the other widgets.
#include "families/families.h"

const Family funzioni_sulle_interfacce{"funzioni_sulle_interfacce", NO_GUARD, NO_GUARD, {}};
