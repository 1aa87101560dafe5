// Velant's entry point: the environment, or one of the command-line commands.
#include <clocale>
#include <cstdio>
#include <cstring>

#include "environment/commands.h"
#include "runtime/Code/Builtins.h"
#include "runtime/Code/Error.h"
#include "runtime/Platform/Dialogs.h"

namespace {

// Until the editor exists, the environment says what this build holds.
int start_environment() {
  platform::dialogs().message("Velant 1.63",
                              "Velant: l'ambiente per imparare a programmare.\n"
                              "Questa versione contiene le fondamenta del sistema e il traduttore dei programmi "
                              "in token (velant tokens FILE); l'editor arriverà presto.");
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  // Numbers are read and written with a point whatever the user's locale says.
  std::setlocale(LC_ALL, "C");
  register_runtime_builtins();
  return run_with_top_level_catch([argc, argv] {
    if (argc >= 2 && std::strcmp(argv[1], "tokens") == 0) return tokens_command(argc, argv);
    if (argc >= 2) {
      std::fprintf(stderr, "velant: comando sconosciuto \"%s\" (comandi: tokens FILE)\n", argv[1]);
      return 2;
    }
    return start_environment();
  });
}
