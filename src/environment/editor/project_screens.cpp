#include "environment/editor/project_screens.h"

#include "environment/editor/editor_ctrl.h"
#include "runtime/Object/Objects.h"
#include "runtime/Room/Room.h"

bool open_project_screen(const char* object) {
  const int32_t index = object_find(object);
  return index >= 0 && instance_create(0, 0, index, 0) != nullptr;
}

void save_program() {
  EditorCtrl* editor = editor_ctrl();
  // The screen takes the whole program from the editor as it opens.
  if (editor && open_project_screen("save_ctrl")) editor->original_message = editor->fingerprint();
}
