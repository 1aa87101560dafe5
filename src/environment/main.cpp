// Velant's entry point: the environment, or one of the command-line commands.
#include <clocale>
#include <cstdio>
#include <cstring>

#include "environment/commands.h"
#include "runtime/Code/Builtins.h"
#include "runtime/Code/Error.h"

int main(int argc, char** argv) {
  // Numbers are read and written with a point whatever the user's locale says.
  std::setlocale(LC_ALL, "C");
  register_runtime_builtins();
  return run_with_top_level_catch([argc, argv] {
    if (argc >= 2 && std::strcmp(argv[1], "tokens") == 0) return tokens_command(argc, argv);
    if (argc >= 2 && std::strcmp(argv[1], "run") == 0) return run_command(argc, argv);
    if (argc >= 2) {
      std::fprintf(stderr, "velant: comando sconosciuto \"%s\" (comandi: run FILE, tokens FILE)\n", argv[1]);
      return 2;
    }
    return environment_command();
  });
}
