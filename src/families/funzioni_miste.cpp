// funzioni_miste: leaving and restarting the program, full screen, the
// animated picture recorder and the clipboard.
#include "families/families.h"

const Family funzioni_miste{"funzioni_miste", NO_GUARD, NO_GUARD, {}};
