#include "environment/rooms.h"

#include "environment/editor/art.h"
#include "environment/editor/editor_ctrl.h"
#include "environment/editor/header_buttons.h"
#include "environment/editor/pop_up.h"
#include "environment/editor/run_button.h"
#include "environment/editor/slide_tabs.h"
#include "environment/editor/windows_size_ctrl.h"
#include "environment/palette/palette.h"
#include "families/families.h"
#include "families/funzioni_sulle_tabelle.h"
#include "environment/main_code_ctrl.h"
#include "environment/projects/load_ctrl.h"
#include "environment/projects/save_ctrl.h"
#include "environment/text_control/input_text.h"
#include "language/elements/element_templates.h"
#include "language/evaluation/program_instance.h"
#include "language/evaluation/run_end.h"
#include "language/tokenizer/sound_assets.h"
#include "runtime/Room/Room.h"

namespace {

// A run goes back to the editor, or to the start of the environment.
void leave_run(RunEnd reason) { room_goto(reason == RunEnd::ToStart ? ROOM_INTRO : ROOM_EDITOR); }

}  // namespace

void define_environment(Startup startup) {
  register_language_sounds();
  register_families();
  set_run_end_handler(leave_run);
  const int32_t editor = define_editor_ctrl();
  define_tasto_esegui();
  define_header_buttons();
  define_palette();
  define_scheda();
  define_pop_up();
  define_windows_size_ctrl();
  define_save_ctrl();
  define_load_ctrl();
  const int32_t runner = define_main_code_ctrl();
  define_obj_input_text();
  define_tabella();
  define_element_objects([] { return art_sprite("elemento"); });

  RoomDescription intro{"Intro", ENVIRONMENT_WIDTH, ENVIRONMENT_HEIGHT};
  intro.creation_code = [] { room_goto(ROOM_EDITOR); };
  room_add(intro);
  room_add(RoomDescription{"Progetti", ENVIRONMENT_WIDTH, ENVIRONMENT_HEIGHT});
  RoomDescription editor_room{"Editor", ENVIRONMENT_WIDTH, ENVIRONMENT_HEIGHT};
  if (startup == Startup::Runner) {
    // A run from the command line is over when it would go back to the editor.
    editor_room.creation_code = [] { game_end(); };
  } else {
    // The editor is left for runs and project screens and found again as it was.
    editor_room.persistent = true;
    editor_room.placements = {{editor}};
  }
  room_add(editor_room);
  RoomDescription run_room{"main_room", static_cast<int32_t>(RUN_WINDOW_WIDTH), static_cast<int32_t>(RUN_WINDOW_HEIGHT)};
  run_room.placements = {{runner}};
  room_add(run_room);
  set_room_target(startup == Startup::Runner ? ROOM_MAIN : ROOM_INTRO);
}
