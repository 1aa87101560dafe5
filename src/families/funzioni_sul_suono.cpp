// funzioni_sul_suono: sounds, notes and melodies, the microphone.
#include "families/families.h"

const Family funzioni_sul_suono{"funzioni_sul_suono", NO_GUARD, NO_GUARD, {}};
