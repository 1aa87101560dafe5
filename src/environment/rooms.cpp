#include "environment/rooms.h"

#include "environment/editor_ctrl.h"
#include "families/families.h"
#include "families/funzioni_di_casualita.h"
#include "language/main_code_ctrl.h"
#include "language/sound_assets.h"
#include "runtime/Room/Room.h"

namespace {

// What starts with every run besides the program: chance begins from the same seed.
void start_of_run(ProgramInstance&) { ripristina_casualita_di_avvio(); }

}  // namespace

void define_environment(Startup startup) {
  register_language_sounds();
  register_families();
  set_run_start_hook(start_of_run);
  const int32_t editor = define_editor_ctrl();
  const int32_t run_button = define_tasto_esegui();
  const int32_t runner = define_main_code_ctrl();

  RoomDescription intro{"Intro", 1300, 700};
  // The start of the environment: the editor's controller, which lives on
  // from here for the whole process, then on to the editor.
  if (startup == Startup::Environment) intro.placements = {{editor}};
  intro.creation_code = [] { room_goto(ROOM_EDITOR); };
  room_add(intro);
  room_add(RoomDescription{"Progetti", 1300, 700});
  RoomDescription editor_room{"Editor", 1300, 700};
  if (startup == Startup::Runner) {
    // A run from the command line is over when it would go back to the editor.
    editor_room.creation_code = [] { game_end(); };
  } else {
    editor_room.placements = {{run_button}};
  }
  room_add(editor_room);
  RoomDescription run_room{"main_room", 1000, 700};
  run_room.placements = {{runner}};
  room_add(run_room);
  set_room_target(startup == Startup::Runner ? ROOM_MAIN : ROOM_INTRO);
}
