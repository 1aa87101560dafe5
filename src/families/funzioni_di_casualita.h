// funzioni_di_casualita: what the run controller needs of the family of
// random numbers, beyond the family itself (families.h).
#pragma once

// Puts the random generator back to the seed it has when the process
// starts, so that a program that doesn't ask for a different chance at
// each start draws the same numbers at every run. Called at each run start.
void ripristina_casualita_di_avvio();
