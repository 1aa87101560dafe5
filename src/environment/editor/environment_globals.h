// The settings and shared state of the environment's screens: what one
// screen sets and the others read (the open project's name, the options of
// the accessibility guides, which palette icons show, whether a palette
// panel is open). They live for the whole process.
#pragma once

#include <string>

struct EnvironmentGlobals {
  std::string nome_progetto;  // the open project's name, "" for none
  // Accessibility guides of the code box, and the dyslexia font's wider cells.
  int righe_editor = 0, colonne_editor = 0, righe_colorate = 0, dislessia = 0;
  int attenua_colori = 0;  // the warm veil over the screens
  // Which palette icons the header shows.
  int kit_pronti = 1, ico_costrutti = 1, ico_funzioni = 1, ico_colori = 1, ico_note_musicali = 1, ico_suoni = 1,
      ico_font = 1, ico_variabili = 1, ico_esporta_immagine = 1, ico_tastiera_simboli = 1;
  int ico_select = 0;      // 1 while a palette panel is open
  int ms_enter = 0;        // 1 while the pointer is over a palette category
  int special_int_ms = 0;  // 1 while a panel takes the pointer over the code box
  int particelle = 0;
  double cursor_y = 0;     // the caret's row in the code box, in pixels from its top
};

EnvironmentGlobals& environment_globals();
