// funzioni_sulle_stringhe: pieces, lengths, searches and cases of texts.
#include "families/families.h"

const Family funzioni_sulle_stringhe{"funzioni_sulle_stringhe", OTTIENI_GUARD, OTTIENI_GUARD, {}};
