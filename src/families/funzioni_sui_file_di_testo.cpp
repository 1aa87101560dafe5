// funzioni_sui_file_di_testo: reading and writing text files. Each call has
// "file" in its first or its function token.
#include "families/families.h"

const Family funzioni_sui_file_di_testo{
    "funzioni_sui_file_di_testo", FamilyGuard{"file", true, true}, FamilyGuard{"file", true, true}, {}};
