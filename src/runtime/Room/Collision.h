// Shapes of instances and what overlaps what: bounding boxes from the mask
// or the sprite, precise masks, points, and the pairs of colliding instances
// that the frame's collision step serves.
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "runtime/Object/Instance.h"

struct BBox {
  float left, top, right, bottom;
};

// The instance's bounding box from its mask, else its sprite, in room
// coordinates (recomputed when flag 8 is set); false when it has neither.
bool instance_bbox(CInstance& instance, BBox& out);
// Whether the shapes of two instances overlap: boxes, then precise masks.
bool instances_collide(CInstance& a, CInstance& b);
// Whether the point lies on the instance's shape.
bool instance_contains_point(CInstance& instance, float x, float y);
// Every pair (a, b) of active instances of the room whose shapes overlap and
// where a's object has a Collision event with b's object (or an ancestor of
// it); a pair where both have one for each other comes once. Found through
// a spatial grid, not by testing every pair.
void find_collision_pairs(std::vector<std::pair<CInstance*, CInstance*>>& out);

// Built-ins. A target names instances as `with` does: an object index (its
// instances and its descendants'), an instance id, all (-3), self (-1) or
// other (-2) of the running code; noone (-4) names none.

// Whether `self`, moved to (x, y), would meet an active instance of `target` other than itself.
bool place_meeting(CInstance& self, float x, float y, int32_t target);
// The first active instance of `target` that `self` would meet at (x, y), or null.
CInstance* instance_place(CInstance& self, float x, float y, int32_t target);
// The active instance of `target` whose position is nearest to (x, y), or null; the first of equals.
CInstance* instance_nearest(double x, double y, int32_t target);
// The active instance of `target` whose position is furthest from (x, y), or null; the first of equals.
CInstance* instance_furthest(double x, double y, int32_t target);
// Whether an active instance of `target` covers the point (x, y).
bool position_meeting(float x, float y, int32_t target);
