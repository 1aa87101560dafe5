// The character codes that the text routines of the language compare against.
//
// The tokeniser and the evaluators walk texts code by code; they compare with
// these named codes rather than with literals, and every instance that
// tokenises or evaluates fills its own set when it is created.
#pragma once

struct CharacterCodes {
  int maggiore = 0;
  int minore = 0;
  int trattino = 0;
  int simbolo_piu = 0;
  int simbolo_potenza = 0;
  int spazio = 0;
  int aperta_graffa = 0;
  int chiusa_graffa = 0;
  int aperta_quadra = 0;
  int chiusa_quadra = 0;
  int lettera_a = 0;
  int lettera_e = 0;
  int lettera_i = 0;
  int lettera_o = 0;
  int lettera_u = 0;
  int lettera_b = 0;
  int lettera_v = 0;
  int lettera_s = 0;
  int lettera_t = 0;
  int lettera_n = 0;
  int uguale = 0;
  int chiusa_tonda = 0;
  int aperta_tonda = 0;
  int virgoletta = 0;
  int stanghetta = 0;
  int stanga_dritta = 0;
  int due_punti = 0;
  int virgola = 0;
  int punto_e_virgola = 0;
  int hashtag = 0;
  int asterisco = 0;
  int punto = 0;
  int numero_zero = 0;
  int numero_1 = 0;
  int numero_2 = 0;
  int numero_3 = 0;
  int numero_4 = 0;
  int numero_5 = 0;
  int numero_6 = 0;
  int numero_7 = 0;
  int numero_8 = 0;
  int numero_9 = 0;
};

// Sets every code of `codes` to the character its name says.
void chr_to_ord(CharacterCodes& codes);
