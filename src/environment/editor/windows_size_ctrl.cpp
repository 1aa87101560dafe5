#include "environment/editor/windows_size_ctrl.h"

#include "environment/rooms.h"
#include "runtime/IO/WindowFunctions.h"
#include "runtime/Object/Objects.h"
#include "runtime/Room/Room.h"

namespace {

constexpr int CENTRE_AFTER = 3, RESTORE_AFTER = 10;

}  // namespace

void WindowsSizeCtrl::remember() {
  mem_width = window_get_width();
  mem_height = window_get_height();
  mem_x = window_get_x();
  mem_y = window_get_y();
}

void WindowsSizeCtrl::create() { remember(); }

void WindowsSizeCtrl::room_start() {
  if (current_room_index() == ROOM_EDITOR) {
    alarm[1] = RESTORE_AFTER;
  } else {
    alarm[0] = CENTRE_AFTER;
  }
}

void WindowsSizeCtrl::room_end() {
  if (current_room_index() == ROOM_EDITOR) remember();
}

void WindowsSizeCtrl::alarm_centre() {
  window_set_position((display_get_width() - window_get_width()) / 2, (display_get_height() - window_get_height()) / 2);
}

void WindowsSizeCtrl::alarm_restore() {
  window_set_size(mem_width, mem_height);
  window_set_position(mem_x, mem_y);
}

int32_t define_windows_size_ctrl() {
  return ObjectDefinition<WindowsSizeCtrl>("windows_size_ctrl")
      .on(ev::CREATE, 0, &WindowsSizeCtrl::create)
      .on(ev::OTHER, ev::OTHER_ROOM_START, &WindowsSizeCtrl::room_start)
      .on(ev::OTHER, ev::OTHER_ROOM_END, &WindowsSizeCtrl::room_end)
      .on(ev::ALARM, 0, &WindowsSizeCtrl::alarm_centre)
      .on(ev::ALARM, 1, &WindowsSizeCtrl::alarm_restore)
      .flags(object_flag::PERSISTENT)
      .index();
}
