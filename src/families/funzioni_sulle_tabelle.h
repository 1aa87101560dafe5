// funzioni_sulle_tabelle: what the environment needs of the table family
// beyond the family itself (families.h): its object, `tabella`.
#pragma once

#include <cstdint>

// Adds the object `tabella`, whose instances are the tables of a run.
int32_t define_tabella();
