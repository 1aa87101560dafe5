// The function families of the language, in the order in which the
// statement walk calls them at every statement position. Each family is a
// unit of its own, named after it.
#pragma once

#include <span>

#include "language/walk/statement_walk.h"

// Guards shared by several families.
inline constexpr FamilyGuard OTTIENI_GUARD{"ottieni", false, true};  // value functions only

extern const Family funzioni_di_disegno;
extern const Family funzioni_sulle_stringhe;
extern const Family funzioni_di_casualita;
extern const Family funzioni_matematiche;
extern const Family funzioni_trigonometriche_e_vettoriali;
extern const Family funzioni_sui_file_di_testo;
extern const Family funzioni_sulle_tabelle;
extern const Family funzioni_logiche;
extern const Family funzioni_sugli_oggetti;

// The families in the order of the calls.
std::span<const Family* const> language_families();
// Hands the families, in their order, to the statement walk.
void register_families();
