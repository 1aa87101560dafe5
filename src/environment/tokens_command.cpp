#include <cstdio>
#include <cstring>
#include <fstream>

#include "environment/commands.h"
#include "language/elements/esemplare.h"
#include "language/tokenizer/sound_assets.h"
#include "language/tokenizer/tokenization.h"
#include "runtime/Function/DialogFunctions.h"

int tokens_command(int argc, char** argv) {
  const bool element = argc == 5 && std::strcmp(argv[3], "--element") == 0;
  if (argc != 3 && !element) {
    std::fprintf(stderr, "uso: velant tokens FILE [--element OGGETTO]\n");
    return 2;
  }
  const std::string path = argv[2];
  if (!std::ifstream(path)) {
    std::fprintf(stderr, "velant: impossibile aprire il file \"%s\"\n", path.c_str());
    return 2;
  }
  register_language_sounds();
  // A listing has nobody to click a box: its messages go to standard error.
  show_messages_on_streams(stderr, stderr);
  TokenProgram program;
  // A literal division by zero ends the start: its message has been shown.
  if (tokenization_of_file(program, path) == TokenizationResult::DivisionByZero) return 1;
  TokenProgram of_element;
  if (element && !element_token_program(program, argv[4], of_element)) return 1;
  const std::string listing = token_listing(element ? of_element : program);
  std::fwrite(listing.data(), 1, listing.size(), stdout);
  return 0;
}
