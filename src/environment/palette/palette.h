// The palette: the header's icons (icona_gen) open panels of language
// elements, and a press on an element writes its text into the program at
// the caret. A press anywhere else, after a few steps of grace, closes the
// panel; while one is open the code box takes no keys.
#pragma once

#include <cstdint>
#include <string_view>

// What a press on icon `image_index` (0 to 10) at (x, y) opens: any open
// panel goes first, then this one is filled.
void open_palette_panel(int image_index, double x, double y);
// Closes the open panel: its elements go and the icons lose their highlight.
void close_palette();
// Whether a panel's elements are up: the pointer stays an arrow over the text meanwhile.
bool palette_panel_shown();
// Writes `snippet` into the code box at the caret, the caret behind it,
// replacing any selection's highlight but not its text.
void insert_at_caret(std::string_view snippet);

// The panels' objects, mouse_sensor and the direction game.
void define_palette();
