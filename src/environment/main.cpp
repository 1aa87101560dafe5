// Velant's entry point.
#include <clocale>

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Error.h"
#include "runtime/Platform/Dialogs.h"

int main() {
  // Numbers are read and written with a point whatever the user's locale says.
  std::setlocale(LC_ALL, "C");
  register_runtime_builtins();
  return run_with_top_level_catch([] {
    platform::dialogs().message("Velant 1.63",
                                "Velant: l'ambiente per imparare a programmare.\n"
                                "Questa versione contiene le fondamenta del sistema; l'editor arriverà presto.");
    return 0;
  });
}
