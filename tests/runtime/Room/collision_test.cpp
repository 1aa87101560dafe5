#include "runtime/Room/Collision.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <random>
#include <vector>

#include "runtime/Code/Builtins.h"
#include "runtime/Object/Objects.h"
#include "runtime/Room/Room.h"
#include "runtime/Room/Events.h"
#include "runtime/Sprite/Sprite.h"
#include "runtime/Support/AssetIndex.h"
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

BBox box_of(CInstance* i) {
  BBox box{};
  EXPECT_TRUE(instance_bbox(*i, box));
  return box;
}

void expect_box(CInstance* i, float left, float top, float right, float bottom) {
  const BBox box = box_of(i);
  EXPECT_EQ(box.left, left);
  EXPECT_EQ(box.top, top);
  EXPECT_EQ(box.right, right);
  EXPECT_EQ(box.bottom, bottom);
}

// Moves an instance as the variable setters do: the box needs computing again.
void put(CInstance* i, float x, float y) {
  i->x = x;
  i->y = y;
  i->set(instance_flag::BBOX_DIRTY, true);
}

// The reference: every pair of the room tested, the event looked up along b's parents.
bool wants(const CInstance& a, const CInstance& b) {
  for (int32_t o = b.object_index; o >= 0; o = object_get(o)->parent) {
    if (object_event(a.object_index, ev::COLLISION, o)) return true;
  }
  return false;
}

Pairs every_pair_tested() {
  const std::vector<CInstance*>& list = current_room()->active;
  std::map<const CInstance*, size_t> position;
  for (size_t i = 0; i < list.size(); ++i) position[list[i]] = i;
  Pairs pairs;
  for (size_t i = 0; i < list.size(); ++i) {
    for (size_t j = i + 1; j < list.size(); ++j) {
      CInstance* a = list[i];
      CInstance* b = list[j];
      if (!a->active() || !b->active()) continue;
      const bool ab = wants(*a, *b);
      if ((ab || wants(*b, *a)) && instances_collide(*a, *b)) pairs.emplace_back(ab ? a : b, ab ? b : a);
    }
  }
  std::sort(pairs.begin(), pairs.end(), [&](const auto& p, const auto& q) {
    return std::pair(position[p.first], position[p.second]) < std::pair(position[q.first], position[q.second]);
  });
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

  static CInstance* make(int32_t object, float x, float y, int32_t sprite) {
    CInstance* i = instance_create(x, y, object, 0);
    i->sprite_index = sprite;
    i->set(instance_flag::BBOX_DIRTY, true);
    return i;
  }

  static RValue call(const char* name, CInstance* self, std::vector<RValue> args) {
    RValue result;
    EXPECT_TRUE(builtin_call(name, result, self, nullptr, static_cast<int>(args.size()), args.data())) << name;
    return result;
  }
};

TEST_F(Collision, BoxFollowsOriginScaleAndRotation) {
  const int32_t object = object_add("oggetto");
  const int32_t wide = sprite_add_shape("largo", 20, 10, 5, 5);
  const int32_t square = sprite_add_shape("quadrato", 10, 10, 5, 5);
  const int32_t corner = sprite_add_shape("angolo", 20, 10, 0, 0);
  enter_room();
  CInstance* i = make(object, 100, 50, wide);
  expect_box(i, 95, 45, 114, 54);
  EXPECT_EQ(i->bbox_left, 95);
  EXPECT_EQ(i->bbox_bottom, 54);
  EXPECT_FALSE(i->has(instance_flag::BBOX_DIRTY));

  // The box is kept until flag 8 asks for it again.
  i->x = 300;
  expect_box(i, 95, 45, 114, 54);
  put(i, 100, 50);
  i->image_xscale = 2;
  expect_box(i, 90, 45, 129, 54);
  // A mirrored sprite lies on the other side of its origin.
  i->image_xscale = -1;
  i->set(instance_flag::BBOX_DIRTY, true);
  expect_box(i, 85, 45, 104, 54);

  // A quarter turn counter-clockwise: the frame's width now runs upward.
  CInstance* turned = make(object, 100, 100, corner);
  turned->image_angle = 90;
  expect_box(turned, 100, 80, 109, 99);
  turned->image_angle = 180;
  turned->set(instance_flag::BBOX_DIRTY, true);
  expect_box(turned, 80, 90, 99, 99);
  // At 45 degrees the box holds the turned square's corners, 7.07 from the centre.
  CInstance* diamond = make(object, 100, 100, square);
  diamond->image_angle = 45;
  expect_box(diamond, 93, 93, 106, 106);

  // The mask decides the shape over the sprite; without either there is none.
  CInstance* masked = make(object, 0, 0, wide);
  masked->mask_index = square;
  expect_box(masked, -5, -5, 4, 4);
  CInstance* bare = make(object, 0, 0, -1);
  BBox none;
  EXPECT_FALSE(instance_bbox(*bare, none));
  EXPECT_FALSE(instances_collide(*bare, *masked));
  EXPECT_FALSE(instance_contains_point(*bare, 0, 0));
}

TEST_F(Collision, BoxesMeetWhenTheyShareAPixelAndNotWhenTheyTouch) {
  const int32_t object = object_add("oggetto");
  const int32_t tile = sprite_add_shape("tessera", 10, 10, 0, 0);
  enter_room();
  CInstance* a = make(object, 0, 0, tile);
  CInstance* b = make(object, 10, 0, tile);
  const auto meets_at = [&](float x, float y) {
    put(b, x, y);
    return instances_collide(*a, *b);
  };
  EXPECT_FALSE(instances_collide(*a, *b));
  EXPECT_TRUE(meets_at(9, 0));
  EXPECT_FALSE(meets_at(10, 10));
  EXPECT_TRUE(meets_at(9, 9));
  // Between whole places a box takes the pixels whose centres it covers.
  EXPECT_TRUE(meets_at(-9.4f, 0));
  expect_box(b, -9, 0, 0, 9);
  EXPECT_FALSE(meets_at(-9.5f, 0));
  expect_box(b, -10, 0, -1, 9);

  // A point belongs to the pixel it lies on.
  EXPECT_TRUE(instance_contains_point(*a, 0, 0));
  EXPECT_TRUE(instance_contains_point(*a, 9.9f, 9.9f));
  EXPECT_FALSE(instance_contains_point(*a, 10, 5));
  EXPECT_FALSE(instance_contains_point(*a, -0.1f, 5));
}

TEST_F(Collision, PreciseMasksMeetOnlyWhereSolidPixelsMeet) {
  const int32_t object = object_add("oggetto");
  const int32_t big = sprite_add_shape("anello_grande", 40, 40, 20, 20);
  const int32_t small = sprite_add_shape("anello_piccolo", 10, 10, 5, 5);
  const int32_t block = sprite_add_shape("blocco", 4, 4, 2, 2);
  ASSERT_TRUE(sprite_set_precise_mask(big, 0, ring(40, 16, 20)));
  ASSERT_TRUE(sprite_set_precise_mask(small, 0, ring(10, 3, 5)));
  EXPECT_FALSE(sprite_set_precise_mask(small, 1, ring(10, 3, 5)));
  EXPECT_FALSE(sprite_set_precise_mask(99, 0, ring(10, 3, 5)));
  enter_room();
  CInstance* outer = make(object, 100, 100, big);
  CInstance* inner = make(object, 100, 100, small);
  CInstance* filler = make(object, 100, 100, block);
  // The boxes lie one inside the other; the rings don't touch.
  EXPECT_FALSE(instances_collide(*outer, *inner));
  EXPECT_FALSE(instances_collide(*outer, *filler));
  EXPECT_FALSE(instances_collide(*inner, *filler));
  put(inner, 118, 100);
  EXPECT_TRUE(instances_collide(*outer, *inner));
  put(filler, 118, 100);
  EXPECT_TRUE(instances_collide(*outer, *filler));

  // The hole of a ring is no hit, its rim is.
  EXPECT_FALSE(instance_contains_point(*outer, 100, 100));
  EXPECT_TRUE(instance_contains_point(*outer, 100, 81));
  EXPECT_FALSE(instance_contains_point(*outer, 100, 79));
  // Scaled up, the rim moves out with it.
  outer->image_xscale = outer->image_yscale = 2;
  outer->set(instance_flag::BBOX_DIRTY, true);
  EXPECT_FALSE(instance_contains_point(*outer, 100, 81));
  EXPECT_TRUE(instance_contains_point(*outer, 100, 63));
}

TEST_F(Collision, PreciseMasksFollowMirroringTurningAndFrames) {
  const int32_t object = object_add("oggetto");
  const int32_t half = sprite_add_shape("meta", 10, 10, 0, 0, 2);
  const int32_t dot = sprite_add_shape("punto", 1, 1, 0, 0);
  // Frame 0 is solid on its left half, frame 1 on its right half.
  ASSERT_TRUE(sprite_set_precise_mask(half, 0, [](int32_t x, int32_t) { return x < 5; }));
  ASSERT_TRUE(sprite_set_precise_mask(half, 1, [](int32_t x, int32_t) { return x >= 5; }));
  enter_room();
  CInstance* shape = make(object, 0, 0, half);
  CInstance* probe = make(object, 2, 2, dot);
  const auto meets_at = [&](float x, float y) {
    put(probe, x, y);
    return instances_collide(*shape, *probe);
  };
  EXPECT_TRUE(meets_at(2, 2));
  EXPECT_FALSE(meets_at(7, 2));
  shape->image_index = 1;
  EXPECT_FALSE(meets_at(2, 2));
  EXPECT_TRUE(meets_at(7, 2));
  // Frames wrap, below zero as well.
  shape->image_index = -1;
  EXPECT_TRUE(meets_at(7, 2));
  shape->image_index = 2.5f;
  EXPECT_TRUE(meets_at(2, 2));

  shape->image_index = 0;
  shape->image_xscale = -1;
  shape->set(instance_flag::BBOX_DIRTY, true);
  EXPECT_TRUE(meets_at(-3, 2));
  EXPECT_FALSE(meets_at(-8, 2));
  shape->image_xscale = 1;
  shape->image_angle = 90;
  shape->set(instance_flag::BBOX_DIRTY, true);
  EXPECT_TRUE(meets_at(3, -3));
  EXPECT_FALSE(meets_at(3, -8));
  EXPECT_TRUE(instance_contains_point(*shape, 3.5f, -2.5f));
  EXPECT_FALSE(instance_contains_point(*shape, 3.5f, -7.5f));
}

TEST_F(Collision, PairsComeOnceForObjectsWithTheEventOrItsAncestors) {
  const auto noop = [](CInstance&, CInstance*) {};
  const int32_t hunter = object_add("cacciatore");
  const int32_t prey = object_add("preda");
  const int32_t child = object_add("figlio", prey);
  const int32_t stranger = object_add("estraneo");
  const int32_t flock = object_add("stormo");
  object_set_event(hunter, ev::COLLISION, prey, noop);
  object_set_event(flock, ev::COLLISION, flock, noop);
  const int32_t tile = sprite_add_shape("tessera", 10, 10, 0, 0);
  enter_room();
  CInstance* p = make(prey, 0, 0, tile);
  CInstance* h = make(hunter, 5, 5, tile);
  CInstance* c = make(child, 5, 0, tile);
  make(stranger, 0, 5, tile);
  CInstance* far_prey = make(prey, 500, 500, tile);
  CInstance* f1 = make(flock, 1, 1, tile);
  CInstance* f2 = make(flock, 2, 2, tile);
  make(flock, 300, 300, tile);

  Pairs pairs;
  find_collision_pairs(pairs);
  // The hunter comes first in its pairs although the prey was made before it.
  EXPECT_EQ(pairs, (Pairs{{h, p}, {h, c}, {f1, f2}}));

  // An event both ways still makes one pair; a leaving instance makes none.
  object_set_event(prey, ev::COLLISION, hunter, noop);
  objects_prepare();
  instance_destroy(*c);
  put(far_prey, 8, 8);
  find_collision_pairs(pairs);
  EXPECT_EQ(pairs, (Pairs{{p, h}, {h, far_prey}, {f1, f2}}));
}

TEST_F(Collision, GridFindsTheSamePairsAsTestingEveryPair) {
  const auto noop = [](CInstance&, CInstance*) {};
  const int32_t p = object_add("p");
  const int32_t q = object_add("q");
  const int32_t r = object_add("r", q);
  const int32_t s = object_add("s");
  const int32_t t = object_add("t");
  object_set_event(p, ev::COLLISION, q, noop);
  object_set_event(q, ev::COLLISION, q, noop);
  object_set_event(t, ev::COLLISION, p, noop);
  const int32_t objects[] = {p, q, r, s, t};
  const int32_t small = sprite_add_shape("piccolo", 16, 16, 8, 8);
  const int32_t wide = sprite_add_shape("largo", 40, 12, 0, 0);
  const int32_t donut = sprite_add_shape("tondo", 24, 24, 12, 12);
  const int32_t giant = sprite_add_shape("gigante", 3000, 3000, 1500, 1500);
  ASSERT_TRUE(sprite_set_precise_mask(donut, 0, ring(24, 6, 12)));
  const int32_t sprites[] = {small, wide, donut, -1};
  const float scales[] = {1, 0.5f, 2, -1};

  for (const unsigned seed : {1u, 2u, 3u}) {
    rooms_clear();
    enter_room();
    std::mt19937 random(seed);
    const auto pick = [&random](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    for (int n = 0; n < 600; ++n) {
      CInstance* i = make(objects[pick(5)], static_cast<float>(pick(2400) - 200), static_cast<float>(pick(2400) - 200),
                          sprites[pick(4)]);
      i->image_xscale = scales[pick(4)];
      i->image_yscale = scales[pick(4)];
      i->image_angle = static_cast<float>(pick(360));
      if (pick(50) == 0) instance_destroy(*i);
    }
    make(p, 1000, 1000, giant);
    make(q, 200, 1800, giant);

    Pairs grid;
    find_collision_pairs(grid);
    const Pairs reference = every_pair_tested();
    EXPECT_GT(reference.size(), 100u) << "seed " << seed;
    EXPECT_EQ(grid, reference) << "seed " << seed;
  }
}

TEST_F(Collision, MeetingBuiltinsLookAtOtherInstancesOfTheTarget) {
  const int32_t mover = object_add("mobile");
  const int32_t wall = object_add("muro");
  const int32_t tile = sprite_add_shape("tessera", 10, 10, 0, 0);
  enter_room();
  CInstance* me = make(mover, 0, 0, tile);
  CInstance* w1 = make(wall, 20, 0, tile);
  CInstance* w2 = make(wall, 25, 0, tile);
  const RValue wall_object = RValue::number(wall);
  const auto number = [](double d) { return RValue::number(d); };

  RValue met = call("place_meeting", me, {number(15), number(0), wall_object});
  EXPECT_TRUE(met.is(Kind::Bool));
  EXPECT_EQ(met.real, 1.0);
  EXPECT_EQ(call("place_meeting", me, {number(5), number(0), wall_object}).real, 0.0);
  // The instance only looked: its place and box are as before.
  EXPECT_EQ(me->x, 0);
  expect_box(me, 0, 0, 9, 9);
  // Itself is never met, whatever names it.
  EXPECT_EQ(call("place_meeting", me, {number(0), number(0), number(mover)}).real, 0.0);
  EXPECT_EQ(call("place_meeting", me, {number(0), number(0), number(KEYWORD_ALL)}).real, 0.0);
  EXPECT_EQ(call("place_meeting", me, {number(25), number(0), number(KEYWORD_ALL)}).real, 1.0);
  EXPECT_EQ(call("place_meeting", me, {number(25), number(0), RValue::ref(REF_INSTANCE, w2->id)}).real, 1.0);
  EXPECT_EQ(call("place_meeting", me, {number(11), number(0), RValue::ref(REF_INSTANCE, w2->id)}).real, 0.0);
  EXPECT_EQ(call("place_meeting", me, {number(25), number(0), number(KEYWORD_NOONE)}).real, 0.0);
  EXPECT_FATAL(call("place_meeting", me, {number(0), number(0), RValue::text("muro")}),
               "place_meeting argument 3 incorrect type (string) expecting a Number (QvGI32)");

  // The first instance met in creation order, as an instance ref; noone for none.
  RValue found = call("instance_place", me, {number(22), number(0), wall_object});
  ASSERT_TRUE(found.is(Kind::Ref));
  EXPECT_EQ(found.ref_type(), REF_INSTANCE);
  EXPECT_EQ(found.ref_index(), w1->id);
  found = call("instance_place", me, {number(30), number(0), RValue::ref(static_cast<uint32_t>(AssetKind::Object), wall)});
  EXPECT_EQ(found.ref_index(), w2->id);
  found = call("instance_place", me, {number(100), number(0), wall_object});
  EXPECT_TRUE(found.is(Kind::Number));
  EXPECT_EQ(found.real, KEYWORD_NOONE);

  // Without a self of the caller, the running event's instance looks.
  object_set_event(mover, ev::OTHER, 10, [&](CInstance&, CInstance*) {
    EXPECT_EQ(call("place_meeting", nullptr, {number(15), number(0), wall_object}).real, 1.0);
    EXPECT_EQ(call("instance_place", nullptr, {number(0), number(0), number(mover)}).real, KEYWORD_NOONE);
  });
  PerformEvent(me, me, mover, ev::OTHER, 10);
  EXPECT_EQ(call("place_meeting", nullptr, {number(15), number(0), wall_object}).real, 0.0);

  // Points: any instance of the target under it, the caller included.
  const RValue at = call("position_meeting", me, {number(27), number(5), wall_object});
  EXPECT_TRUE(at.is(Kind::Bool));
  EXPECT_EQ(at.real, 1.0);
  EXPECT_EQ(call("position_meeting", me, {number(35), number(5), wall_object}).real, 0.0);
  EXPECT_EQ(call("position_meeting", me, {number(5), number(5), number(mover)}).real, 1.0);
}

TEST_F(Collision, NearestAndFurthestMeasureToThePositions) {
  const int32_t object = object_add("oggetto");
  const int32_t other = object_add("altro");
  enter_room();
  // No sprite is needed: only positions count.
  CInstance* a = make(object, 10, 0, -1);
  CInstance* b = make(object, 0, 30, -1);
  CInstance* c = make(object, -10, 0, -1);
  const auto id_of = [](const RValue& v) { return v.is(Kind::Ref) ? v.ref_index() : static_cast<int32_t>(v.real); };
  const auto ask = [&](const char* name, double x, double y, int32_t target) {
    return id_of(call(name, nullptr, {RValue::number(x), RValue::number(y), RValue::number(target)}));
  };
  EXPECT_EQ(ask("instance_nearest", 0, 0, object), a->id);  // a and c tie: the first made
  EXPECT_EQ(ask("instance_nearest", -8, 1, object), c->id);
  EXPECT_EQ(ask("instance_furthest", 0, 0, object), b->id);
  EXPECT_EQ(ask("instance_furthest", 0, 30, KEYWORD_ALL), a->id);
  EXPECT_EQ(ask("instance_nearest", 0, 0, other), KEYWORD_NOONE);
  EXPECT_EQ(ask("instance_furthest", 0, 0, other), KEYWORD_NOONE);
  instance_destroy(*a);
  EXPECT_EQ(ask("instance_nearest", 0, 0, object), c->id);
  EXPECT_EQ(instance_nearest(0, 29, b->id), b);
}

TEST_F(Collision, SpriteTableAnswersByIndexAndByName) {
  const int32_t spr = sprite_add_shape("omino", 32, 48, 16, 40, 4);
  EXPECT_FALSE(sprite_exists(-1));
  EXPECT_EQ(sprite_get_width(spr), 32);
  EXPECT_EQ(sprite_get_height(spr), 48);
  EXPECT_EQ(sprite_get_number(spr), 4);
  EXPECT_EQ(sprite_get_number(spr + 1), 0);
  const RValue named = asset_get_index("omino");
  EXPECT_EQ(named.ref_type(), REF_SPRITE);
  EXPECT_EQ(named.ref_index(), spr);

  const RValue ref = RValue::ref(REF_SPRITE, spr);
  const RValue exists = call("sprite_exists", nullptr, {ref});
  EXPECT_TRUE(exists.is(Kind::Bool));
  EXPECT_EQ(exists.real, 1.0);
  EXPECT_EQ(call("sprite_exists", nullptr, {RValue::number(spr)}).real, 1.0);
  EXPECT_EQ(call("sprite_exists", nullptr, {RValue::number(spr + 1)}).real, 0.0);
  EXPECT_EQ(call("sprite_exists", nullptr, {RValue::ref(REF_SOUND, spr)}).real, 0.0);
  EXPECT_EQ(call("sprite_get_width", nullptr, {ref}).real, 32);
  EXPECT_EQ(call("sprite_get_height", nullptr, {ref}).real, 48);
  EXPECT_EQ(call("sprite_get_number", nullptr, {RValue::number(spr)}).real, 4);
  EXPECT_EQ(call("sprite_get_xoffset", nullptr, {ref}).real, 16);
  EXPECT_EQ(call("sprite_get_yoffset", nullptr, {ref}).real, 40);
  EXPECT_FATAL(call("sprite_get_width", nullptr, {RValue::number(spr + 1)}),
               "sprite_get_width argument 1 invalid reference to (sprite)");

  // A cleared sprite's slot stays, empty, until its name comes back.
  sprites_clear();
  EXPECT_FALSE(sprite_exists(spr));
  EXPECT_FATAL(call("sprite_get_height", nullptr, {ref}), "sprite_get_height argument 1 invalid reference to (sprite)");
  EXPECT_EQ(sprite_add_shape("omino", 8, 8, 0, 0), spr);

  // The box of a precise sprite fits its solid pixels.
  ASSERT_TRUE(sprite_set_precise_mask(spr, 0, [](int32_t x, int32_t y) { return x >= 2 && x <= 5 && y == 3; }));
  const CSprite* sprite = sprite_get(spr);
  EXPECT_EQ(sprite->bbox_left, 2);
  EXPECT_EQ(sprite->bbox_right, 5);
  EXPECT_EQ(sprite->bbox_top, 3);
  EXPECT_EQ(sprite->bbox_bottom, 3);

  // Speeds count per game frame, or per second of a game of that speed.
  CSprite& moving = *sprite_get(spr);
  moving.speed = 15;
  EXPECT_EQ(sprite_frames_per_step(moving, 30), 15);
  moving.playback = SPRITE_PLAYBACK_PER_SECOND;
  EXPECT_EQ(sprite_frames_per_step(moving, 30), 0.5f);
}

}  // namespace
