#include "runtime/Code/Builtins.h"
#include "runtime/Code/Registration.h"
#include "runtime/Function/DateFunctions.h"
#include "runtime/Function/SystemFunctions.h"
#include "runtime/IO/BinaryFile.h"
#include "runtime/IO/DesktopFunctions.h"
#include "runtime/IO/FileNames.h"
#include "runtime/IO/Http.h"
#include "runtime/IO/IniFile.h"
#include "runtime/IO/TextFile.h"
#include "runtime/IO/WindowFunctions.h"
#include "runtime/Support/DsGrid.h"
#include "runtime/Support/DsList.h"
#include "runtime/Support/DsPriority.h"

void register_runtime_builtins() {
  static bool done = false;
  if (done) return;
  done = true;
  register_value_builtins();
  register_array_builtins();
  register_string_builtins();
  register_math_builtins();
  register_date_builtins();
  register_system_builtins();
  register_dialog_builtins();
  register_buffer_builtins();
  register_external_builtins();
  register_asset_builtins();
  register_ds_map_builtins();
  register_ds_list_builtins();
  register_ds_priority_builtins();
  register_ds_grid_builtins();
  register_input_builtins();
  register_window_builtins();
  register_ini_builtins();
  register_text_file_builtins();
  register_file_name_builtins();
  register_binary_file_builtins();
  register_desktop_builtins();
  register_http_builtins();
  register_instance_builtins();
  register_sprite_builtins();
  register_collision_builtins();
  register_graphics_builtins();
  register_font_builtins();
  register_window_hook_builtins();
}
