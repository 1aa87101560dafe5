#include "runtime/Room/Collision.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "runtime/Code/Conversions.h"
#include "runtime/Object/Objects.h"
#include "runtime/Room/Events.h"
#include "runtime/Room/Room.h"
#include "runtime/Sprite/Sprite.h"
#include "runtime/Support/AssetIndex.h"
#include "support/CallBuiltin.h"
#include "support/Fatal.h"

namespace {

using Pairs = std::vector<std::pair<CInstance*, CInstance*>>;

// Solid where the pixel's centre lies between two distances from the frame's centre.
std::function<bool(int32_t, int32_t)> ring(float size, float inner, float outer) {
  return [=](int32_t x, int32_t y) {
    const float d = std::hypot(x + 0.5f - size / 2, y + 0.5f - size / 2);
    return d >= inner && d < outer;
  };
}

// How an instance looks: its sprite, mask, place, frame, scales and angle.
struct Look {
  int32_t sprite = -1, mask = -1;
  float x = 0, y = 0, index = 0, xscale = 1, yscale = 1, angle = 0;
};

// The box as "left top right bottom" (adding 0 turns -0 into 0), or "none".
std::string box(CInstance* i) {
  BBox b;
  if (!instance_bbox(*i, b)) return "none";
  std::ostringstream out;
  out << b.left + 0.0f << " " << b.top + 0.0f << " " << b.right + 0.0f << " " << b.bottom + 0.0f;
  return out.str();
}

// What shown() gives for a ref to instance `i`.
std::string ref_to(const CInstance* i) { return "ref:ref instance " + std::to_string(i->id); }

// Moves an instance as the variable setters do: the box needs computing again.
void put(CInstance* i, float x, float y) {
  i->x = x;
  i->y = y;
  i->set(instance_flag::BBOX_DIRTY, true);
}

bool wants(const CInstance& a, const CInstance& b) {
  for (int32_t o = b.object_index; o >= 0; o = object_get(o)->parent) {
    if (object_event(a.object_index, ev::COLLISION, o)) return true;
  }
  return false;
}
// The reference for the grid: every pair of the room tested, in room order
// of its first instance, then of its second. The first is the one whose
// object has the event with the other's, or an ancestor of it; the earlier
// one when both have.
Pairs every_pair_tested() {
  const std::vector<CInstance*>& list = current_room()->active;
  Pairs pairs;
  for (size_t i = 0; i < list.size(); ++i) {
    for (size_t j = 0; j < list.size(); ++j) {
      CInstance* a = list[i];
      CInstance* b = list[j];
      if (i == j || !a->active() || !b->active() || !wants(*a, *b) || (j < i && wants(*b, *a))) continue;
      if (instances_collide(*a, *b)) pairs.emplace_back(a, b);
    }
  }
  return pairs;
}

class Collision : public ::testing::Test {
 protected:
  void SetUp() override {
    forget_all();
    register_runtime_builtins();
  }
  void TearDown() override { forget_all(); }
  static void forget_all() {
    rooms_clear();
    objects_clear();
    sprites_clear();
  }
  static void enter_room() {
    objects_prepare();
    set_room_target(room_add({"stanza"}));
    room_change(true);
  }
  static CInstance* make(int32_t object, const Look& look) {
    CInstance* i = instance_create(look.x, look.y, object, 0);
    i->sprite_index = look.sprite;
    i->mask_index = look.mask;
    i->image_index = look.index;
    i->image_xscale = look.xscale;
    i->image_yscale = look.yscale;
    i->image_angle = look.angle;
    i->set(instance_flag::BBOX_DIRTY, true);
    return i;
  }
};

TEST_F(Collision, ShapesHaveBoxesMeetAndHoldPointsWhereTheirSolidPixelsAre) {
  const int32_t object = object_add("oggetto");
  const int32_t wide = sprite_add_shape("largo", 20, 10, 5, 5), square = sprite_add_shape("quadrato", 10, 10, 5, 5);
  const int32_t tile = sprite_add_shape("tessera", 10, 10, 0, 0), dot = sprite_add_shape("punto", 1, 1, 0, 0);
  const int32_t big = sprite_add_shape("anello", 40, 40, 20, 20), small = sprite_add_shape("anellino", 10, 10, 5, 5);
  const int32_t block = sprite_add_shape("blocco", 4, 4, 2, 2), half = sprite_add_shape("meta", 10, 10, 0, 0, 2);
  ASSERT_TRUE(sprite_set_precise_mask(big, 0, ring(40, 16, 20)));
  ASSERT_TRUE(sprite_set_precise_mask(small, 0, ring(10, 3, 5)));
  EXPECT_FALSE(sprite_set_precise_mask(small, 1, ring(10, 3, 5))) << "no such frame";
  EXPECT_FALSE(sprite_set_precise_mask(99, 0, ring(10, 3, 5))) << "no such sprite";
  // Frame 0 of `half` is solid on its left half, frame 1 on its right half.
  ASSERT_TRUE(sprite_set_precise_mask(half, 0, [](int32_t x, int32_t) { return x < 5; }));
  ASSERT_TRUE(sprite_set_precise_mask(half, 1, [](int32_t x, int32_t) { return x >= 5; }));
  enter_room();
  // A shape, its box (when asked), and a probe: whether the probe at a place
  // meets the shape, and whether points lie on the shape.
  using Places = std::vector<std::tuple<float, float, bool>>;
  const Look outer{.sprite = big, .x = 100, .y = 100}, turned{.sprite = half, .angle = 90};
  const struct { Look shape; const char* box; Look probe; Places meets, points; } rows[] = {
      {{.sprite = wide, .x = 100, .y = 50}, "95 45 114 54"},
      // Mirrored, a sprite lies on the other side of its origin.
      {{.sprite = wide, .x = 100, .y = 50, .xscale = -1}, "85 45 104 54"},
      // A quarter turn counter-clockwise: the frame's width now runs upward from the origin.
      {{.sprite = wide, .x = 100, .y = 100, .angle = 90}, "95 85 104 104"},
      // At 45 degrees the box holds the turned square's corners, 7.07 from the centre.
      {{.sprite = square, .x = 100, .y = 100, .angle = 45}, "93 93 106 106"},
      // The mask decides the shape over the sprite; without either there is none.
      {{.sprite = wide, .mask = square}, "-5 -5 4 4"},
      {{}, "none", {.sprite = tile}, {{0, 0, false}}, {{0, 0, false}}},
      // Boxes meet when they share a pixel, not when they only touch; between whole places a box
      // takes the pixels whose centres it covers. A point belongs to the pixel it lies on.
      {{.sprite = tile}, "0 0 9 9", {.sprite = tile}, {{10, 0, false}, {9, 9, true}, {-9.4, 0, true}, {-9.5, 0, false}},
       {{9.9f, 9.9f, true}, {10, 5, false}, {-0.1f, 5, false}}},
      // Rings one inside the other and a block in their holes: boxes overlap, solid pixels don't.
      // The hole of a ring is no hit, its rim is; scaled up, the rim moves out with it.
      {outer, "80 80 119 119", {.sprite = small}, {{100, 100, false}, {118, 100, true}},
       {{100, 100, false}, {100, 81, true}, {100, 79, false}}},
      {outer, nullptr, {.sprite = block}, {{100, 100, false}, {118, 100, true}}},
      {{.sprite = big, .x = 100, .y = 100, .xscale = 2, .yscale = 2}, nullptr, {}, {},
       {{100, 81, false}, {100, 63, true}}},
      // The frame shown decides; frames wrap, below zero as well.
      {{.sprite = half}, nullptr, {.sprite = dot}, {{2, 2, true}, {7, 2, false}}},
      {{.sprite = half, .index = -1}, nullptr, {.sprite = dot}, {{2, 2, false}, {7, 2, true}}},
      {{.sprite = half, .index = 2.5f}, nullptr, {.sprite = dot}, {{2, 2, true}}},
      // Mirrored and turned masks.
      {{.sprite = half, .xscale = -1}, nullptr, {.sprite = dot}, {{-3, 2, true}, {-8, 2, false}}},
      {turned, nullptr, {.sprite = dot}, {{3, -3, true}, {3, -8, false}}, {{3.5f, -2.5f, true}, {3.5f, -7.5f, false}}},
  };
  for (size_t n = 0; n < std::size(rows); ++n) {
    CInstance* shape = make(object, rows[n].shape);
    CInstance* probe = make(object, rows[n].probe);
    if (rows[n].box) {
      EXPECT_EQ(box(shape), rows[n].box) << "row " << n;
    }
    for (const auto& [x, y, meet] : rows[n].meets) {
      put(probe, x, y);
      EXPECT_EQ(instances_collide(*shape, *probe), meet) << "row " << n << ", probe at " << x << " " << y;
      EXPECT_EQ(instances_collide(*probe, *shape), meet) << "row " << n << ", probe at " << x << " " << y;
    }
    for (const auto& [x, y, inside] : rows[n].points) {
      EXPECT_EQ(instance_contains_point(*shape, x, y), inside) << "row " << n << ", point " << x << " " << y;
    }
  }

  // The box is kept in the instance until it is marked stale.
  CInstance* i = make(object, rows[0].shape);
  EXPECT_EQ(box(i), "95 45 114 54");
  i->x = 300;
  EXPECT_EQ(box(i), "95 45 114 54");
  put(i, 300, 50);
  EXPECT_EQ(box(i), "295 45 314 54");
}

// Pairs come once, first the instance whose object has the event with the
// other's object or an ancestor of it, the earlier one when both have; the
// grid must find the same pairs as testing every pair of the room.
TEST_F(Collision, GridFindsTheSamePairsAsTestingEveryPair) {
  const auto noop = [](CInstance&, CInstance*) {};
  const int32_t p = object_add("p"), q = object_add("q"), r = object_add("r", q), s = object_add("s");
  const int32_t t = object_add("t");
  object_set_event(p, ev::COLLISION, q, noop);
  object_set_event(q, ev::COLLISION, q, noop);
  object_set_event(t, ev::COLLISION, p, noop);
  object_set_event(p, ev::COLLISION, t, noop);
  const int32_t objects[] = {p, q, r, s, t};
  const int32_t donut = sprite_add_shape("tondo", 24, 24, 12, 12);
  ASSERT_TRUE(sprite_set_precise_mask(donut, 0, ring(24, 6, 12)));
  const int32_t sprites[] = {sprite_add_shape("piccolo", 16, 16, 8, 8), sprite_add_shape("largo", 40, 12, 0, 0),
                             donut, -1};
  const int32_t giant = sprite_add_shape("gigante", 3000, 3000, 1500, 1500);
  const float scales[] = {1, 0.5f, 2, -1};
  Pairs grid;
  for (const unsigned seed : {1u, 2u, 3u}) {
    rooms_clear();
    enter_room();
    std::mt19937 random(seed);
    const auto pick = [&random](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    const auto place = [&pick] { return static_cast<float>(pick(2400) - 200); };
    for (int n = 0; n < 600; ++n) {
      const int32_t object = objects[pick(5)];
      CInstance* i = make(object, {.sprite = sprites[pick(4)], .x = place(), .y = place(), .xscale = scales[pick(4)],
                                   .yscale = scales[pick(4)], .angle = static_cast<float>(pick(360))});
      if (pick(50) == 0) instance_destroy(*i);
    }
    make(p, {.sprite = giant, .x = 1000, .y = 1000});
    make(q, {.sprite = giant, .x = 200, .y = 1800});
    find_collision_pairs(grid);
    const Pairs reference = every_pair_tested();
    EXPECT_GT(reference.size(), 100u) << "seed " << seed;
    EXPECT_EQ(grid, reference) << "seed " << seed;
  }
}

TEST_F(Collision, MeetingAndNearestBuiltinsLookAtInstancesOfTheTarget) {
  const int32_t mover = object_add("mobile"), wall = object_add("muro"), other = object_add("altro");
  const int32_t tile = sprite_add_shape("tessera", 10, 10, 0, 0);
  enter_room();
  CInstance* me = make(mover, {.sprite = tile});
  CInstance* w1 = make(wall, {.sprite = tile, .x = 20});
  CInstance* w2 = make(wall, {.sprite = tile, .x = 25});
  const auto n = [](double d) { return RValue::number(d); };
  const RValue walls = n(wall), second = RValue::ref(REF_INSTANCE, w2->id), all = n(KEYWORD_ALL);
  const struct { const char* name; double x, y; RValue target; std::string answer; } rows[] = {
      {"place_meeting", 15, 0, walls, "bool:1"},      {"place_meeting", 5, 0, walls, "bool:0"},
      // Itself is never met, even as one of all; an instance ref names that instance alone.
      {"place_meeting", 0, 0, all, "bool:0"},         {"place_meeting", 25, 0, second, "bool:1"},
      {"place_meeting", 11, 0, second, "bool:0"},     {"place_meeting", 25, 0, n(KEYWORD_NOONE), "bool:0"},
      // The first instance met in creation order, as an instance ref; noone for none.
      {"instance_place", 22, 0, walls, ref_to(w1)},   {"instance_place", 100, 0, walls, "number:-4"},
      {"instance_place", 30, 0, RValue::ref(static_cast<uint32_t>(AssetKind::Object), wall), ref_to(w2)},
      // Points: any instance of the target under it, the caller included.
      {"position_meeting", 27, 5, walls, "bool:1"},   {"position_meeting", 35, 5, walls, "bool:0"},
      {"position_meeting", 5, 5, n(mover), "bool:1"},
      // Only positions count, and the first of equals.
      {"instance_nearest", 23, 5, walls, ref_to(w2)}, {"instance_nearest", 22.5, 9, walls, ref_to(w1)},
      {"instance_furthest", 22, 0, all, ref_to(me)},  {"instance_furthest", 2, 0, walls, ref_to(w2)},
      {"instance_nearest", 0, 0, n(other), "number:-4"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(call_shown(row.name, {n(row.x), n(row.y), row.target}, me), row.answer) << row.name << " " << row.x;
  }
  EXPECT_EQ(me->x, 0) << "the instance only looked: its place and box are as before";
  EXPECT_EQ(box(me), "0 0 9 9");
  instance_destroy(*w1);
  EXPECT_EQ(instance_nearest(22, 5, wall), w2) << "a destroyed instance is passed over";

  // Without a self of the caller, the running event's instance looks.
  object_set_event(mover, ev::OTHER, 10, [&](CInstance&, CInstance*) {
    EXPECT_EQ(call_shown("place_meeting", {n(30), n(0), walls}), "bool:1");
  });
  PerformEvent(me, me, mover, ev::OTHER, 10);
  EXPECT_EQ(call_shown("place_meeting", {n(30), n(0), walls}), "bool:0");
}

TEST_F(Collision, SpriteTableAnswersByIndexAndByName) {
  const int32_t spr = sprite_add_shape("omino", 32, 48, 16, 40, 4);
  EXPECT_EQ(std::tuple(sprite_get_width(spr), sprite_get_height(spr), sprite_get_number(spr)), std::tuple(32, 48, 4));
  EXPECT_EQ(std::tuple(sprite_get_width(-1), sprite_get_height(-1), sprite_get_number(spr + 1)), std::tuple(0, 0, 0));
  EXPECT_EQ(shown(asset_get_index("omino")), "ref:ref sprite " + std::to_string(spr));
  const RValue ref = RValue::ref(REF_SPRITE, spr), number = RValue::number(spr);
  const struct { const char* name; RValue sprite; const char* answer; } rows[] = {
      {"sprite_exists", ref, "bool:1"},          {"sprite_exists", RValue::number(spr + 1), "bool:0"},
      {"sprite_exists", RValue::ref(REF_SOUND, spr), "bool:0"}, {"sprite_get_width", ref, "number:32"},
      {"sprite_get_height", ref, "number:48"},   {"sprite_get_number", number, "number:4"},
      {"sprite_get_xoffset", ref, "number:16"},  {"sprite_get_yoffset", ref, "number:40"},
  };
  for (const auto& row : rows) EXPECT_EQ(call_shown(row.name, {row.sprite}), row.answer) << row.name;
  EXPECT_FATAL(call_shown("sprite_get_width", {RValue::number(spr + 1)}),
               "sprite_get_width argument 1 invalid reference to (sprite)");

  // A cleared sprite's slot stays, empty, until its name comes back.
  sprites_clear();
  EXPECT_FALSE(sprite_exists(spr));
  EXPECT_EQ(sprite_add_shape("omino", 8, 8, 0, 0), spr);

  // The box of a precise sprite fits its solid pixels.
  ASSERT_TRUE(sprite_set_precise_mask(spr, 0, [](int32_t x, int32_t y) { return x >= 2 && x <= 5 && y == 3; }));
  CSprite& sprite = *sprite_get(spr);
  EXPECT_EQ(std::tuple(sprite.bbox_left, sprite.bbox_top, sprite.bbox_right, sprite.bbox_bottom),
            std::tuple(2, 3, 5, 3));
  // Speeds count per game frame, or per second of a game of that speed.
  sprite.speed = 15;
  EXPECT_EQ(sprite_frames_per_step(sprite, 30), 15);
  sprite.playback = SPRITE_PLAYBACK_PER_SECOND;
  EXPECT_EQ(sprite_frames_per_step(sprite, 30), 0.5f);
}

}  // namespace
