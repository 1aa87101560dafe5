// funzioni_particelle: particles and special effects. Each call has "particell"
// in its first or its function token, but for the effects, which need
// "disegna" in their name.
#include "families/families.h"

const Family funzioni_particelle{
    "funzioni_particelle", FamilyGuard{"particell", true, true}, FamilyGuard{"particell", true, true}, {}};
