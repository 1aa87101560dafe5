#include "environment/commands.h"
#include "environment/folders.h"
#include "environment/rooms.h"
#include "runtime/Function/DialogFunctions.h"
#include "runtime/Run/MainLoop.h"

int environment_command() {
  // Without the save area Velant still starts: the program can be written and run, and the user knows why saving fails.
  if (std::string problem; !prepare_folders("", problem)) {
    show_message(RValue::text("Velant non riesce a preparare la cartella dei tuoi file: " + problem +
                              ".\nI programmi non potranno essere salvati."));
  }
  return runtime_run(RuntimeOptions{}, [] { define_environment(Startup::Environment); });
}
