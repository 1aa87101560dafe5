// funzioni_crittografiche: enciphering and deciphering texts.
#include "families/families.h"

const Family funzioni_crittografiche{"funzioni_crittografiche", NO_GUARD, NO_GUARD, {}};
