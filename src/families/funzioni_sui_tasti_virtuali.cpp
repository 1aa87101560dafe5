// funzioni_sui_tasti_virtuali: keys drawn on the screen that the mouse presses.
// Each call has "tast" in its first or its function token.
#include "families/families.h"

const Family funzioni_sui_tasti_virtuali{
    "funzioni_sui_tasti_virtuali", FamilyGuard{"tast", true, true}, FamilyGuard{"tast", true, true}, {}};
