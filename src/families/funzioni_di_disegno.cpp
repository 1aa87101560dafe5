// funzioni_di_disegno: shapes, lines, text, images and colours on the canvas.
// Its statements need "disegna" in their name, its value functions "ottieni";
// a few functions stand outside both guards.
#include "families/families.h"

const Family funzioni_di_disegno{"funzioni_di_disegno", FamilyGuard{"disegna", true, false}, OTTIENI_GUARD, {}};
