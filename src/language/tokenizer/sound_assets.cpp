#include "language/tokenizer/sound_assets.h"

#include "runtime/Support/AssetIndex.h"

void register_language_sounds() {
  for (std::string_view name : LANGUAGE_SOUNDS) asset_add(AssetKind::Sound, name);
}
