// funzioni_sulle_date: the calendar: today's date, dates made of their parts,
// their parts and the spans between them.
#include "families/families.h"

const Family funzioni_sulle_date{"funzioni_sulle_date", OTTIENI_GUARD, OTTIENI_GUARD, {}};
