// Rooms: the description of each room, the running room with its list of
// instances, the instances by id, and room changes.
//
// The running room keeps its active instances in creation order (new ones
// at the tail) and its deactivated ones apart. Every instance of any list is
// owned here, by id, until the deletion pass frees it.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "runtime/Object/Instance.h"

struct InstancePlacement {
  int32_t object;
  float x = 0, y = 0;
  std::function<void(CInstance&)> creation_code;  // runs right after the instance's Create
};

struct RoomDescription {
  std::string name;
  int32_t width = 1024, height = 768;
  bool persistent = false;
  float speed = 30;  // frames a second
  std::vector<InstancePlacement> placements;
  std::function<void()> creation_code;  // the room's own code, after every placed instance is made
};

struct Room {
  int32_t index = -1;
  int32_t width = 1024, height = 768;
  bool persistent = false;
  // The colour the room is cleared with before each frame is drawn.
  uint32_t background_colour = 0;
  bool show_background = true;
  std::vector<CInstance*> active;       // in creation order
  std::vector<CInstance*> deactivated;
};

// Special room targets.
inline constexpr int32_t ROOM_NONE = -1, ROOM_END_GAME = -100, ROOM_RESTART_GAME = -200, ROOM_LOAD = -300,
                         ROOM_LEAVE = -400;

int32_t room_add(RoomDescription description);
RoomDescription* room_description(int32_t index);
int32_t room_count();
// The running room, or null before the first.
Room* current_room();
int32_t current_room_index();

// The room target: the change waits for the end of the frame.
int32_t room_target();
void set_room_target(int32_t target);
bool room_change_pending();

// Sets the target to room `r`; refused while the game is being left.
void room_goto(int32_t r);
// room_goto of the running room.
void room_restart();
// Ends the game at the end of the frame with `status` as the exit status.
void game_end(int32_t status = 0);
int32_t game_exit_status();
// Start-up sets the status a run ends with unless the game says otherwise.
void set_game_exit_status(int32_t status);

// Makes an instance of `object` at (x, y) in the running room, at the tail
// of its list, and runs PreCreate, `before_create` and Create. Fatal for an
// unknown object.
CInstance* instance_create(float x, float y, int32_t object, float depth,
                           const std::function<void(CInstance&)>& before_create = {});
// Destroys `instance`: Destroy (when `run_destroy`) and Cleanup run at once,
// the instance leaves iteration and is freed at the next deletion pass.
void instance_destroy(CInstance& instance, bool run_destroy = true);
// Destroys every instance of `object` (its direct instances), as `with (object) instance_destroy()`.
void instances_destroy(int32_t object);
// The instance with this id if it exists and is active, else null.
CInstance* instance_find(int32_t id);
// The oldest instance of `object` not on its way out, or null.
CInstance* first_active_instance(int32_t object);
// Frees every marked instance: out of its object lists, the room list and the id map.
void deletion_pass();
// The next value of the walk counter; instances made later carry a later stamp.
uint64_t next_walk_stamp();

// Runs the change to the target room (Room End, persistent instances carried
// over, the new room's instances and Room Start). At game start, Game Start too.
// A persistent room keeps its instances while it is left, and is entered
// again as it was: neither its placements nor its creation code run twice.
void room_change(bool game_start);
// Game end: Room End and Game End on every instance, then every instance freed.
void game_finish();
// Forgets rooms, instances and targets (tests and a restart of the game); the exit status stays.
void rooms_clear();
