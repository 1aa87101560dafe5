// funzioni_sulle_tabelle: tables on the screen and their files. Each call has
// "tabella" in its first or its function token.
#include "families/families.h"

const Family funzioni_sulle_tabelle{
    "funzioni_sulle_tabelle", FamilyGuard{"tabella", true, true}, FamilyGuard{"tabella", true, true}, {}};
