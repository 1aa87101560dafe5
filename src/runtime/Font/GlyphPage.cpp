#include "runtime/Font/GlyphPage.h"

#include <algorithm>
#include <cstring>

namespace {

// Glyphs keep a blank pixel between them, so that a filtered sample at the
// edge of one glyph never reads its neighbour.
constexpr int32_t GAP = 1;

std::vector<GlyphPage>& pages() {
  static std::vector<GlyphPage> list;
  return list;
}

// A place for a `width` x `height` bitmap on `page`: on a shelf of that
// height with room left, or on a new shelf below the others.
bool find_room(GlyphPage& page, int32_t width, int32_t height, GlyphPlace& place) {
  for (GlyphPage::Shelf& shelf : page.shelves) {
    if (shelf.height != height || shelf.used_width + width > GLYPH_PAGE_SIZE) continue;
    place.x = shelf.used_width;
    place.y = shelf.y;
    shelf.used_width += width + GAP;
    return true;
  }
  if (page.shelves_bottom + height > GLYPH_PAGE_SIZE) return false;
  page.shelves.push_back({page.shelves_bottom, height, width + GAP});
  place.x = 0;
  place.y = page.shelves_bottom;
  page.shelves_bottom += height + GAP;
  return true;
}

void add_to_changed(PageRect& box, int32_t x, int32_t y, int32_t width, int32_t height) {
  if (box.width == 0 || box.height == 0) {
    box = {x, y, width, height};
    return;
  }
  const int32_t right = std::max(box.x + box.width, x + width);
  const int32_t bottom = std::max(box.y + box.height, y + height);
  box.x = std::min(box.x, x);
  box.y = std::min(box.y, y);
  box.width = right - box.x;
  box.height = bottom - box.y;
}

}  // namespace

const std::vector<GlyphPage>& glyph_pages() { return pages(); }

void glyph_page_clear_changes(int32_t page) {
  if (page >= 0 && static_cast<size_t>(page) < pages().size()) pages()[static_cast<size_t>(page)].changed = {};
}

GlyphPlace glyph_pages_store(int32_t width, int32_t height, const uint8_t* coverage) {
  GlyphPlace place;
  if (width <= 0 || height <= 0 || width > GLYPH_PAGE_SIZE || height > GLYPH_PAGE_SIZE) return place;
  std::vector<GlyphPage>& list = pages();
  for (size_t i = 0; i < list.size() && place.page < 0; ++i) {
    if (find_room(list[i], width, height, place)) place.page = static_cast<int32_t>(i);
  }
  if (place.page < 0) {
    GlyphPage& fresh = list.emplace_back();
    fresh.pixels.assign(static_cast<size_t>(GLYPH_PAGE_SIZE) * GLYPH_PAGE_SIZE, 0);
    find_room(fresh, width, height, place);
    place.page = static_cast<int32_t>(list.size() - 1);
  }
  GlyphPage& page = list[static_cast<size_t>(place.page)];
  for (int32_t row = 0; row < height; ++row) {
    std::memcpy(&page.pixels[static_cast<size_t>(place.y + row) * GLYPH_PAGE_SIZE + static_cast<size_t>(place.x)],
                coverage + static_cast<size_t>(row) * static_cast<size_t>(width), static_cast<size_t>(width));
  }
  ++page.version;
  add_to_changed(page.changed, place.x, place.y, width, height);
  return place;
}
