#include "environment/editor/environment_globals.h"

EnvironmentGlobals& environment_globals() {
  static EnvironmentGlobals globals;
  return globals;
}
