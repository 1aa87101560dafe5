// The environment's own sounds that programs name as constants ("suono
// beep1" ...). They are sound assets like any other; the tokeniser turns
// each name into the asset's number.
#pragma once

#include <array>
#include <string_view>

// The sound assets, in the order they are registered (their indexes).
inline constexpr std::array<std::string_view, 15> LANGUAGE_SOUNDS = {
    "suono_beep1", "suono_beep2", "suono_beep3", "suono_bau",    "suono_miao",
    "suono_squit", "suono_hiho",  "suono_hiii",  "suono_driiin", "suono_quack",
    "suono_ok",    "suono_errore", "suono_muu",  "suono_huahah", "suono_nota_piano",
};

// Registers the sounds as assets, once, at start-up.
void register_language_sounds();
