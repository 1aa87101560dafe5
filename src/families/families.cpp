#include "families/families.h"

#include <array>

namespace {

// The order of the calls is the language's: a family that comes later takes
// its place in it. In full: funzioni_di_disegno, funzioni_sul_suono,
// funzioni_sui_tasti_virtuali, funzioni_sulle_interfacce,
// funzioni_sulle_stringhe, funzioni_di_casualita, funzioni_matematiche,
// funzioni_trigonometriche_e_vettoriali, funzioni_sui_percorsi,
// funzioni_miste, funzioni_sulle_date, funzioni_giochi_extra,
// funzioni_sui_file_di_testo, funzioni_crittografiche, funzioni_arduino,
// funzioni_particelle, funzioni_sulle_tabelle, funzioni_logiche,
// funzioni_esterne, the walk's own "debug", funzioni_sugli_oggetti,
// funzioni_pixelart.
constexpr std::array<const Family*, 10> FAMILIES = {
    &funzioni_di_disegno,
    &funzioni_sulle_stringhe,
    &funzioni_di_casualita,
    &funzioni_matematiche,
    &funzioni_trigonometriche_e_vettoriali,
    &funzioni_sui_file_di_testo,
    &funzioni_sulle_tabelle,
    &funzioni_logiche,
    &debug_family,
    &funzioni_sugli_oggetti,
};

}  // namespace

std::span<const Family* const> language_families() { return FAMILIES; }

void register_families() { install_families(FAMILIES); }
