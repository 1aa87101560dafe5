// funzioni_sui_percorsi: paths that elements follow. Each call has "percorso" in
// its first or its function token, but for the statement that stops an element.
#include "families/families.h"

const Family funzioni_sui_percorsi{
    "funzioni_sui_percorsi", FamilyGuard{"percorso", true, true}, FamilyGuard{"percorso", true, true}, {}};
