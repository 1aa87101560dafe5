// Registration of the runtime's built-ins by family; each family's unit
// defines its own function, and register_runtime_builtins calls them all.
#pragma once

void register_value_builtins();     // real, bool, string, is_string (Code)
void register_array_builtins();     // array_* (Code)
void register_string_builtins();    // string_*, sha1_string_utf8 (Function)
void register_math_builtins();      // math, random, get_timer (Function)
void register_dialog_builtins();    // show_message, show_question and their async forms, show_debug_message (Function)
void register_buffer_builtins();    // buffer_* (Buffer)
void register_external_builtins();  // external_define, external_call (Extension)
void register_ds_map_builtins();    // ds_map_* (Support)
void register_asset_builtins();     // asset_get_index (Support)
void register_input_builtins();     // keyboard_check*, mouse_check_button*, mouse_clear, mouse_wheel_* (IO)
void register_instance_builtins();  // instance_*, event_perform, room_goto, room_restart, game_end, object_get_name, variable_* (Object)
void register_sprite_builtins();    // sprite_exists, sprite_get_* (Sprite)
void register_graphics_builtins();  // colours, shapes, surfaces, sprites drawn, the screen, device settings (Graphics)
void register_collision_builtins(); // place_meeting, instance_place, instance_nearest, instance_furthest, position_meeting (Object)
void register_font_builtins();      // font_*, draw_set_font/halign/valign, string_width/height(_ext) (Font)
void register_window_hook_builtins(); // window_command_*, window_*_topmost and the like, ex_patch_window_close_* (Extension)
