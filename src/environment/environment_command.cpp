#include "environment/commands.h"
#include "environment/rooms.h"
#include "runtime/Run/MainLoop.h"

int environment_command() {
  return runtime_run(RuntimeOptions{}, [] { define_environment(Startup::Environment); });
}
