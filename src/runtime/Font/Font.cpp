#include "runtime/Font/Font.h"

#include <algorithm>

#include "runtime/Code/Error.h"
#include "runtime/Font/FontFiles.h"
#include "runtime/Font/PackageFonts.h"

namespace {

// The table grows by this many slots when no slot is free.
constexpr size_t TABLE_STEP = 5;
// The default font: a plain sans serif face at 12 points on a 96 dpi screen.
constexpr double DEFAULT_FONT_SIZE = 16;

using FontLoader = std::unique_ptr<CFontQm> (*)(std::string_view name);

struct FontTable {
  std::vector<std::unique_ptr<CFontQm>> fonts;
  std::vector<std::string> names;      // parallel to fonts
  std::vector<FontLoader> on_first_use;  // parallel to fonts: what makes a reserved slot's font
  std::unique_ptr<CFontQm> default_font;
  bool package_registered = false;
};

// The table, with the package's fonts in their slots before any other
// font can take one.
FontTable& table() {
  static FontTable t;
  if (!t.package_registered) {
    t.package_registered = true;
    register_package_fonts();
  }
  return t;
}

void grow_to_hold(FontTable& t, size_t index) {
  while (t.fonts.size() <= index) {
    t.fonts.resize(t.fonts.size() + TABLE_STEP);
    t.names.resize(t.fonts.size());
    t.on_first_use.resize(t.fonts.size());
  }
}

size_t first_free_slot(FontTable& t) {
  size_t slot = 0;
  while (slot < t.fonts.size() && (t.fonts[slot] || t.on_first_use[slot])) ++slot;
  grow_to_hold(t, slot);
  return slot;
}

}  // namespace

CFontQm::CFontQm(std::unique_ptr<FreeTypeFace> face) : face_(std::move(face)) {
  known_.fill(NOT_TRIED);
  if (face_) line_height = face_->line_height();
}

const CGlyph* CFontQm::glyph_beyond_table(uint32_t code_point) {
  int32_t slot;
  if (code_point < known_.size()) {
    slot = known_[code_point] = render(code_point);
  } else {
    auto it = std::lower_bound(others_.begin(), others_.end(), std::pair<uint32_t, int32_t>(code_point, MISSING));
    if (it != others_.end() && it->first == code_point) {
      slot = it->second;
    } else {
      slot = render(code_point);
      others_.insert(it, {code_point, slot});
    }
  }
  return slot >= 0 ? &glyphs_[static_cast<size_t>(slot)] : nullptr;
}

int32_t CFontQm::render(uint32_t code_point) {
  CGlyph glyph;
  if (!face_ || !face_->render(code_point, glyph)) return MISSING;
  glyphs_.push_back(glyph);
  return static_cast<int32_t>(glyphs_.size() - 1);
}

std::unique_ptr<CFontQm> font_load(const std::string& path, double size, bool bold, bool italic) {
  std::unique_ptr<FreeTypeFace> face = FreeTypeFace::open(path, size, bold, italic);
  if (!face) return nullptr;
  auto font = std::make_unique<CFontQm>(std::move(face));
  font->name = path;
  font->size = static_cast<float>(size);
  font->bold = bold;
  font->italic = italic;
  return font;
}

std::unique_ptr<CFontQm> font_load_first(std::initializer_list<std::string_view> file_names, double size, bool bold,
                                         bool italic) {
  for (std::string_view file_name : file_names) {
    const std::string path = system_font_file(file_name);
    if (path.empty()) continue;
    if (std::unique_ptr<CFontQm> font = font_load(path, size, bold, italic)) return font;
  }
  return nullptr;
}

std::unique_ptr<CFontQm> font_load_default_face(double size, bool bold) {
  if (auto font = font_load_first({"LiberationSans-Regular.ttf", "DejaVuSans.ttf"}, size, bold, false)) return font;
  debug_output("No font file found for the default font: its text has no glyphs\n");
  auto empty = std::make_unique<CFontQm>(nullptr);
  empty->size = static_cast<float>(size);
  empty->bold = bold;
  empty->line_height = static_cast<int32_t>(size);
  return empty;
}

CFontQm* font_get(int32_t font) {
  FontTable& t = table();
  if (font == -1) {
    if (!t.default_font) t.default_font = font_load_default_face(DEFAULT_FONT_SIZE, false);
    return t.default_font.get();
  }
  if (font < 0 || static_cast<size_t>(font) >= t.fonts.size()) return nullptr;
  const auto slot = static_cast<size_t>(font);
  if (const FontLoader load = t.on_first_use[slot]) {
    t.on_first_use[slot] = nullptr;
    t.fonts[slot] = load(t.names[slot]);
  }
  return t.fonts[slot].get();
}

CFontQm& font_or_default(int32_t font) {
  CFontQm* found = font_get(font);
  return found ? *found : *font_get(-1);
}

bool font_exists(int32_t font) { return font >= 0 && font_get(font) != nullptr; }

std::string_view font_get_name(int32_t font) {
  if (!font_exists(font)) return {};
  return table().names[static_cast<size_t>(font)];
}

void font_put(int32_t index, std::string name, std::unique_ptr<CFontQm> font) {
  FontTable& t = table();
  grow_to_hold(t, static_cast<size_t>(index));
  t.fonts[static_cast<size_t>(index)] = std::move(font);
  t.names[static_cast<size_t>(index)] = std::move(name);
  t.on_first_use[static_cast<size_t>(index)] = nullptr;
}

void font_put_on_first_use(int32_t index, std::string name, std::unique_ptr<CFontQm> (*load)(std::string_view name)) {
  font_put(index, std::move(name), nullptr);
  table().on_first_use[static_cast<size_t>(index)] = load;
}

int32_t font_add(std::string_view name, double size, bool bold, bool italic, int32_t first, int32_t last) {
  const std::string path = font_file_find(name, bold, italic);
  if (path.empty()) {
    debug_output("FreeType :: unable to find font file " + std::string(name) + "\n");
    return -1;
  }
  std::unique_ptr<CFontQm> font = font_load(path, size, bold, italic);
  if (!font) return -1;
  font->name = std::string(name);
  font->first = first;
  font->last = last;
  const auto slot = static_cast<int32_t>(first_free_slot(table()));
  font_put(slot, "__newfont" + std::to_string(slot), std::move(font));
  return slot;
}

void font_delete(int32_t font) {
  if (!font_exists(font)) {
    ReportError("Trying to delete non-existing font.");
    return;
  }
  font_put(font, {}, nullptr);
}
