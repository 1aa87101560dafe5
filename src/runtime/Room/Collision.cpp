// Shapes of instances in room space.
//
// A box is an inclusive range of room pixels, left..right and top..bottom:
// two boxes overlap when they share at least one pixel, so boxes that only
// touch edges (one's right is the pixel before the other's left) don't. A
// shape covers a pixel when the pixel's centre lies inside it; precise
// masks are sampled at the centres of the room pixels, mapped back through
// the instance's position, angle, scale and origin into the sprite.
#include "runtime/Room/Collision.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

#include "runtime/Object/Objects.h"
#include "runtime/Room/Room.h"
#include "runtime/Sprite/Sprite.h"

namespace {

constexpr double PI = 3.14159265358979323846;

// The sprite that gives the instance its shape: the mask, else the sprite.
const CSprite* shape_sprite(const CInstance& instance) {
  if (const CSprite* mask = sprite_get(instance.mask_index)) return mask;
  return sprite_get(instance.sprite_index);
}

// Sine and cosine of an angle in degrees, exact at the quarter turns so
// that turned boxes land on the same pixels as unturned ones.
void turn(double degrees, double& c, double& s) {
  const double radians = degrees * PI / 180.0;
  c = std::cos(radians);
  s = std::sin(radians);
  for (double* v : {&c, &s}) {
    if (std::fabs(*v) < 1e-12) *v = 0;
    if (std::fabs(std::fabs(*v) - 1) < 1e-12) *v = std::copysign(1.0, *v);
  }
}

// The first and last pixel whose centres lie in [low, high): ceil(low - 0.5)
// to ceil(high - 0.5) - 1. A sliver narrower than a pixel keeps the pixel
// its low edge is on.
void pixel_span(double low, double high, float& first, float& last) {
  const double a = std::ceil(low - 0.5);
  const double b = std::ceil(high - 0.5) - 1;
  first = static_cast<float>(b < a ? std::floor(low) : a);
  last = static_cast<float>(b < a ? std::floor(low) : b);
}

BBox compute_bbox(const CInstance& instance, const CSprite& sprite) {
  // The box rectangle of the sprite around its origin, scaled, turned, placed.
  const double xs = instance.image_xscale, ys = instance.image_yscale;
  const double x0 = (sprite.bbox_left - sprite.xorigin) * xs, x1 = (sprite.bbox_right + 1 - sprite.xorigin) * xs;
  const double y0 = (sprite.bbox_top - sprite.yorigin) * ys, y1 = (sprite.bbox_bottom + 1 - sprite.yorigin) * ys;
  double c, s;
  turn(instance.image_angle, c, s);
  double min_x = INFINITY, max_x = -INFINITY, min_y = INFINITY, max_y = -INFINITY;
  for (const double u : {x0, x1}) {
    for (const double v : {y0, y1}) {
      // Angles turn counter-clockwise on screen, where y grows downward.
      const double dx = u * c + v * s, dy = -u * s + v * c;
      min_x = std::min(min_x, dx);
      max_x = std::max(max_x, dx);
      min_y = std::min(min_y, dy);
      max_y = std::max(max_y, dy);
    }
  }
  BBox box;
  pixel_span(instance.x + min_x, instance.x + max_x, box.left, box.right);
  pixel_span(instance.y + min_y, instance.y + max_y, box.top, box.bottom);
  return box;
}

bool boxes_overlap(const BBox& a, const BBox& b) {
  return a.left <= b.right && b.left <= a.right && a.top <= b.bottom && b.top <= a.bottom;
}

bool box_contains_pixel(const BBox& box, double px, double py) {
  return px >= box.left && px <= box.right && py >= box.top && py <= box.bottom;
}

// An instance's precise mask with the transform back from room to sprite pixels.
struct MaskSampler {
  const CollisionMask* mask = nullptr;
  double x = 0, y = 0, c = 1, s = 0, xs = 1, ys = 1, xorigin = 0, yorigin = 0;

  MaskSampler(const CInstance& instance, const CSprite& sprite)
      : mask(sprite.mask_at(instance.image_index)),
        x(instance.x),
        y(instance.y),
        xs(instance.image_xscale),
        ys(instance.image_yscale),
        xorigin(sprite.xorigin),
        yorigin(sprite.yorigin) {
    turn(instance.image_angle, c, s);
  }

  // Whether room pixel (px, py) is on the shape; without a precise mask the
  // box alone is the shape, and the caller has tested that already.
  bool covers(double px, double py) const {
    if (!mask) return true;
    if (xs == 0 || ys == 0) return false;
    const double dx = px + 0.5 - x, dy = py + 0.5 - y;
    const double u = (dx * c - dy * s) / xs + xorigin, v = (dx * s + dy * c) / ys + yorigin;
    if (!(u >= 0 && v >= 0 && u < mask->width && v < mask->height)) return false;
    return mask->solid(static_cast<int32_t>(u), static_cast<int32_t>(v));
  }
};

}  // namespace

bool instance_bbox(CInstance& instance, BBox& out) {
  const CSprite* sprite = shape_sprite(instance);
  if (!sprite) return false;
  if (instance.has(instance_flag::BBOX_DIRTY)) {
    const BBox box = compute_bbox(instance, *sprite);
    instance.bbox_left = box.left;
    instance.bbox_top = box.top;
    instance.bbox_right = box.right;
    instance.bbox_bottom = box.bottom;
    instance.set(instance_flag::BBOX_DIRTY, false);
  }
  out = {instance.bbox_left, instance.bbox_top, instance.bbox_right, instance.bbox_bottom};
  return true;
}

bool instances_collide(CInstance& a, CInstance& b) {
  BBox box_a, box_b;
  if (!instance_bbox(a, box_a) || !instance_bbox(b, box_b) || !boxes_overlap(box_a, box_b)) return false;
  const CSprite& sprite_a = *shape_sprite(a);
  const CSprite& sprite_b = *shape_sprite(b);
  if (!sprite_a.precise() && !sprite_b.precise()) return true;
  const MaskSampler on_a(a, sprite_a), on_b(b, sprite_b);
  const float left = std::max(box_a.left, box_b.left), right = std::min(box_a.right, box_b.right);
  const float top = std::max(box_a.top, box_b.top), bottom = std::min(box_a.bottom, box_b.bottom);
  for (float py = top; py <= bottom; ++py) {
    for (float px = left; px <= right; ++px) {
      if (on_a.covers(px, py) && on_b.covers(px, py)) return true;
    }
  }
  return false;
}

bool instance_contains_point(CInstance& instance, float x, float y) {
  BBox box;
  if (!instance_bbox(instance, box)) return false;
  // The point belongs to the room pixel it lies on.
  const double px = std::floor(x), py = std::floor(y);
  if (!box_contains_pixel(box, px, py)) return false;
  return MaskSampler(instance, *shape_sprite(instance)).covers(px, py);
}

// ---------------------------------------------------------------------------
// The collision step's pairs

namespace {

// Which objects have a Collision event with which: an object's event names
// another object, and serves that object's descendants too.
class CollisionRules {
 public:
  CollisionRules()
      : wanted_(static_cast<size_t>(object_count())), involved_(static_cast<size_t>(object_count()), false) {
    std::vector<int32_t> targets;  // every object some event names
    for (int32_t o = 0; o < object_count(); ++o) {
      for (const auto& entry : object_get(o)->events) {
        if (static_cast<int>(entry.first >> 16) != ev::COLLISION) continue;
        const auto other = static_cast<int32_t>(entry.first & 0xFFFF);
        wanted_[static_cast<size_t>(o)].push_back(other);
        targets.push_back(other);
      }
    }
    // Objects with an event, and the objects that events name, with their descendants.
    for (int32_t o = 0; o < object_count(); ++o) {
      involved_[static_cast<size_t>(o)] =
          !wanted_[static_cast<size_t>(o)].empty() ||
          std::any_of(targets.begin(), targets.end(), [o](int32_t t) { return object_is_ancestor(o, t); });
    }
  }

  // Whether instances of `object` can be in a pair at all.
  bool involved(int32_t object) const {
    return object >= 0 && object < static_cast<int32_t>(involved_.size()) && involved_[static_cast<size_t>(object)];
  }

  // Whether `object` has a Collision event with `other` or an ancestor of it.
  bool has_event(int32_t object, int32_t other) const {
    const std::vector<int32_t>& wanted = wanted_[static_cast<size_t>(object)];
    return std::any_of(wanted.begin(), wanted.end(), [other](int32_t w) { return object_is_ancestor(other, w); });
  }

 private:
  std::vector<std::vector<int32_t>> wanted_;  // by object: the objects its events name
  std::vector<bool> involved_;                // by object
};

struct Candidate {
  CInstance* instance;
  BBox box;
  bool spread = false;  // its box covers too many cells: tested against every candidate instead
};

struct CellEntry {
  int32_t cx, cy;
  uint32_t candidate;
  bool operator<(const CellEntry& o) const {
    return cx != o.cx ? cx < o.cx : cy != o.cy ? cy < o.cy : candidate < o.candidate;
  }
};

// A box spanning more cells than this is tested against every candidate.
constexpr int64_t MOST_CELLS_A_BOX = 256;

// The cell of a room coordinate, clamped so that far-off instances share
// the outermost cells rather than overflow.
int32_t cell_of(float coordinate, double cell_size) {
  return static_cast<int32_t>(std::clamp(std::floor(coordinate / cell_size), -1073741824.0, 1073741824.0));
}

// Cells as big as the average box, within bounds: most boxes then span one
// to four cells and a cell holds few boxes.
double choose_cell_size(const std::vector<Candidate>& candidates) {
  double total = 0;
  for (const Candidate& c : candidates) {
    total += std::max(c.box.right - c.box.left, c.box.bottom - c.box.top) + 1;
  }
  return std::clamp(total / static_cast<double>(candidates.size()), 16.0, 1024.0);
}

class PairFinder {
 public:
  PairFinder(const CollisionRules& rules, std::vector<Candidate> candidates)
      : rules_(rules), candidates_(std::move(candidates)) {}

  // Pairs as positions in the candidate list (room order), sorted.
  std::vector<std::pair<uint32_t, uint32_t>> find() {
    const double cell_size = choose_cell_size(candidates_);
    std::vector<CellEntry> cells;
    std::vector<uint32_t> spread;
    for (uint32_t i = 0; i < candidates_.size(); ++i) {
      const BBox& box = candidates_[i].box;
      const int32_t x0 = cell_of(box.left, cell_size), x1 = cell_of(box.right, cell_size);
      const int32_t y0 = cell_of(box.top, cell_size), y1 = cell_of(box.bottom, cell_size);
      if (int64_t{x1 - x0 + 1} * int64_t{y1 - y0 + 1} > MOST_CELLS_A_BOX) {
        candidates_[i].spread = true;
        spread.push_back(i);
        continue;
      }
      for (int32_t cx = x0; cx <= x1; ++cx) {
        for (int32_t cy = y0; cy <= y1; ++cy) cells.push_back({cx, cy, i});
      }
    }
    std::sort(cells.begin(), cells.end());
    for (size_t run = 0; run < cells.size();) {
      size_t end = run;
      while (end < cells.size() && cells[end].cx == cells[run].cx && cells[end].cy == cells[run].cy) ++end;
      for (size_t i = run; i < end; ++i) {
        for (size_t j = i + 1; j < end; ++j) {
          test_in_cell(cells[i].candidate, cells[j].candidate, cells[run].cx, cells[run].cy, cell_size);
        }
      }
      run = end;
    }
    for (const uint32_t s : spread) {
      for (uint32_t i = 0; i < candidates_.size(); ++i) {
        // Two spread boxes meet once, from the earlier one.
        if (i != s && !(candidates_[i].spread && i < s)) test(std::min(s, i), std::max(s, i));
      }
    }
    std::sort(pairs_.begin(), pairs_.end());
    return std::move(pairs_);
  }

  const Candidate& candidate(uint32_t i) const { return candidates_[i]; }

 private:
  // Boxes that share several cells meet in each; only the cell that holds
  // the top left corner of their common part tests them.
  void test_in_cell(uint32_t i, uint32_t j, int32_t cx, int32_t cy, double cell_size) {
    const BBox& a = candidates_[i].box;
    const BBox& b = candidates_[j].box;
    if (!boxes_overlap(a, b)) return;
    if (cell_of(std::max(a.left, b.left), cell_size) != cx || cell_of(std::max(a.top, b.top), cell_size) != cy) return;
    test(i, j);
  }

  // i comes before j in the room; the pair goes first to whichever has the event.
  void test(uint32_t i, uint32_t j) {
    CInstance& a = *candidates_[i].instance;
    CInstance& b = *candidates_[j].instance;
    const bool a_wants = rules_.has_event(a.object_index, b.object_index);
    if (!a_wants && !rules_.has_event(b.object_index, a.object_index)) return;
    if (!instances_collide(a, b)) return;
    pairs_.emplace_back(a_wants ? i : j, a_wants ? j : i);
  }

  const CollisionRules& rules_;
  std::vector<Candidate> candidates_;
  std::vector<std::pair<uint32_t, uint32_t>> pairs_;
};

}  // namespace

void find_collision_pairs(std::vector<std::pair<CInstance*, CInstance*>>& out) {
  out.clear();
  const Room* room = current_room();
  if (!room) return;
  const CollisionRules rules;
  std::vector<Candidate> candidates;
  for (CInstance* instance : room->active) {
    BBox box;
    if (!instance->active() || !rules.involved(instance->object_index) || !instance_bbox(*instance, box)) continue;
    if (!std::isfinite(box.left) || !std::isfinite(box.right) || !std::isfinite(box.top) ||
        !std::isfinite(box.bottom)) {
      continue;
    }
    candidates.push_back({instance, box});
  }
  if (candidates.size() < 2) return;
  PairFinder finder(rules, std::move(candidates));
  for (const auto& [a, b] : finder.find()) out.emplace_back(finder.candidate(a).instance, finder.candidate(b).instance);
}
