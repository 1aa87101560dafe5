// Fills the character codes of an instance.
#include "language/tokenizer/chr_to_ord.h"

void chr_to_ord(CharacterCodes& codes) {
  codes.maggiore = '>';
  codes.minore = '<';
  codes.trattino = '-';
  codes.simbolo_piu = '+';
  codes.simbolo_potenza = '^';
  codes.spazio = ' ';
  codes.aperta_graffa = '{';
  codes.chiusa_graffa = '}';
  codes.aperta_quadra = '[';
  codes.chiusa_quadra = ']';
  codes.lettera_a = 'a';
  codes.lettera_e = 'e';
  codes.lettera_i = 'i';
  codes.lettera_o = 'o';
  codes.lettera_u = 'u';
  codes.lettera_b = 'b';
  codes.lettera_v = 'v';
  codes.lettera_s = 's';
  codes.lettera_t = 't';
  codes.lettera_n = 'n';
  codes.uguale = '=';
  codes.chiusa_tonda = ')';
  codes.aperta_tonda = '(';
  codes.virgoletta = '"';
  codes.stanghetta = '/';
  codes.stanga_dritta = '|';
  codes.due_punti = ':';
  // The comma's name holds the semicolon's code on purpose, as
  // `punto_e_virgola` does: the routines that compare with `virgola` are
  // written against this value, and commas outside strings are gone before
  // they run (the tokeniser turns them into brackets or decimal points).
  codes.virgola = ';';
  codes.punto_e_virgola = ';';
  codes.hashtag = '#';
  codes.asterisco = '*';
  codes.punto = '.';
  codes.numero_zero = '0';
  codes.numero_1 = '1';
  codes.numero_2 = '2';
  codes.numero_3 = '3';
  codes.numero_4 = '4';
  codes.numero_5 = '5';
  codes.numero_6 = '6';
  codes.numero_7 = '7';
  codes.numero_8 = '8';
  codes.numero_9 = '9';
}
