#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <set>
#include <string>
#include <string_view>

#include "language/chr_to_ord.h"
#include "language/constant_tables.h"
#include "language/keyword_table.h"

namespace {

// Index of the first entry equal to `phrase`, or -1.
int first_index(std::string_view phrase) {
  auto it = std::ranges::find(ctrl_keyword_table, phrase);
  return it == ctrl_keyword_table.end() ? -1 : static_cast<int>(it - ctrl_keyword_table.begin());
}

// Index of the last entry equal to `phrase`, or -1.
int last_index(std::string_view phrase) {
  for (int i = CTRL_KEYWORD_COUNT - 1; i >= 0; --i) {
    if (ctrl_keyword_table[i] == phrase) return i;
  }
  return -1;
}

// The joined form of a phrase: every blank becomes "_".
std::string with_underscores(std::string_view phrase) {
  std::string joined(phrase);
  std::ranges::replace(joined, ' ', '_');
  return joined;
}

// Replaces every occurrence, left to right, without rescanning what it wrote.
void replace_all(std::string& text, const std::string& from, const std::string& to) {
  for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
}

double number_of(const char* text) { return std::strtod(text, nullptr); }

}  // namespace

TEST(KeywordTable, Holds467EntriesOf462PhrasesWithExactlyFiveDuplicates) {
  EXPECT_EQ(ctrl_keyword_table.size(), 467u);
  EXPECT_EQ(CTRL_KEYWORD_COUNT, 467);

  std::set<std::string_view> distinct(ctrl_keyword_table.begin(), ctrl_keyword_table.end());
  EXPECT_EQ(distinct.size(), 462u);

  std::map<std::string_view, int> occurrences;
  for (std::string_view phrase : ctrl_keyword_table) ++occurrences[phrase];
  std::map<std::string_view, int> repeated;
  for (auto [phrase, count] : occurrences) {
    if (count > 1) repeated[phrase] = count;
  }
  const std::map<std::string_view, int> expected = {
      {"ELEMENTO", 2},
      {"grigio scuro", 2},
      {"un quarto", 2},
      {"ottieni elemento da questa data", 2},
      {"scrivi su questo file", 2},
  };
  EXPECT_EQ(repeated, expected);
}

TEST(KeywordTable, GroupsFollowEachOtherWithTheirSizes) {
  struct Group {
    std::string_view first, last;
    int size;
  };
  // A duplicated phrase opens or closes its group at its first or last occurrence.
  const Group groups[] = {
      {"X", "DISEGNO", 188},
      {"disegna cerchio", "disegna goniometro", 18},
      {"ottieni numero da testo", "ottieni posizione parola", 12},
      {"ottieni uno a caso di questi valori", "attiva casualità diversa per ogni avvio", 4},
      {"ottieni la negazione di", "ottieni la negazione di", 1},
      {"ottieni l'arrotondamento per difetto di", "ottieni risultato espressione da testo", 24},
      {"ottieni il seno di", "ottieni la componente y_del_vettore dato angolo e lunghezza", 11},
      {"ottieni normalizzazione componente x del vettore", "ottieni differenza angolare tra", 7},
      {"ottieni colore rgb", "ottieni differenza colori", 11},
      {"suona", "ottieni valore intonazione di", 20},
      {"imposta griglia", "crea gif animata", 8},
      {"ottieni risposta da domanda", "ottieni testo da utente", 4},
      {"crea tasto virtuale", "crea classe di tasti", 4},
      {"crea tabella", "importa tabella", 7},
      {"suono beep1", "suono nota piano", 16},
      {"verde scuro", "rosa vivo", 10},
      {"Pi greco", "due terzi", 15},
      {"ottieni data attuale come testo", "ottieni elemento da questa data", 16},
      {"usa gioco delle direzioni", "cambia colore degli occhi_del_personaggio", 7},
      {"crea un oggetto", "ottieni ultimo esemplare cliccato", 34},
      {"ottieni un percorso", "imposta velocità percorrenza percorso", 6},
      {"timer 1", "timer 8", 8},
      {"scrivi su questo file", "ottieni una riga di testo da questo file", 6},
      {"crea casella di spunta", "distruggi interfaccia", 9},
      {"ottieni testo cifrato", "ottieni testo decifrato", 2},
      {"invia testo ad Arduino", "ottieni connessione con Arduino", 6},
      {"disegna effetto speciale animato predefinito", "disegna effetto speciale su un elemento",
       9},
      {"ottieni risultato controllo se c'è testo negli appunti", "copia negli appunti", 3},
      {"importa funzione esterna", "importa funzione esterna", 1},
  };
  int expected_start = 0;
  for (const Group& group : groups) {
    SCOPED_TRACE(std::string(group.first));
    int start = first_index(group.first);
    int end = last_index(group.last);
    EXPECT_EQ(start, expected_start);
    EXPECT_EQ(end - start + 1, group.size);
    expected_start = end + 1;
  }
  EXPECT_EQ(expected_start, CTRL_KEYWORD_COUNT);
}

TEST(KeywordTable, KeepsOddSpellingsAndUtf8Letters) {
  // Misspellings and half-rewritten forms are matched as they stand.
  EXPECT_EQ(ctrl_keyword_table[first_index("ottieni normalizzazione componente x del vettore") + 1],
            "ottieni nomralizzazione componente y del vettore");
  EXPECT_EQ(first_index("ottieni normalizzazione componente y del vettore"), -1);
  EXPECT_EQ(ctrl_keyword_table[150], "COLORE INIZiale");
  EXPECT_EQ(ctrl_keyword_table[151], "COLORE MEDIANO");
  EXPECT_EQ(ctrl_keyword_table[153], "TRASPARENZA INIZiale");
  EXPECT_EQ(first_index("COLORE INIZIALE"), -1);
  EXPECT_NE(first_index("ottieni il valore limitato_del_variabile tra"), -1);
  EXPECT_NE(first_index("ottieni il quoziente_del_divisione tra"), -1);
  EXPECT_NE(first_index("ottieni l'arcotangente 2 di"), -1);

  // Accented letters are UTF-8, and "quest’area" has the typographic apostrophe.
  EXPECT_NE(first_index("distruggi elementi che si trovano in quest\xE2\x80\x99"
                        "area rettangolare"),
            -1);
  EXPECT_NE(first_index("distruggi elementi che si trovano in quest\xE2\x80\x99"
                        "area circolare"),
            -1);
  EXPECT_EQ(first_index("distruggi elementi che si trovano in quest'area circolare"), -1);
  EXPECT_NE(first_index("ottieni risultato controllo se elemento \xC3\xA8 cliccato"), -1);
  EXPECT_NE(first_index("attiva casualit\xC3\xA0 diversa per ogni avvio"), -1);
  EXPECT_NE(first_index("ottieni il valore pi\xC3\xB9 vicino alla media tra"), -1);
  EXPECT_NE(first_index("ottieni risultato controllo se c'\xC3\xA8 testo negli appunti"), -1);

  // Joining works on single blanks between words, so no entry may carry others.
  for (std::string_view phrase : ctrl_keyword_table) {
    SCOPED_TRACE(std::string(phrase));
    ASSERT_FALSE(phrase.empty());
    EXPECT_NE(phrase.front(), ' ');
    EXPECT_NE(phrase.back(), ' ');
    EXPECT_EQ(phrase.find("  "), std::string_view::npos);
  }
}

TEST(KeywordTable, OrderLetsEveryPhraseBeJoinedWhole) {
  // A phrase that holds a shorter one must come first: joining the shorter one
  // first would break the longer phrase apart (e.g. "crea casella di testo
  // multilinea" before "crea casella di testo").
  for (std::string_view phrase : ctrl_keyword_table) {
    std::string text(phrase);
    for (std::string_view keyword : ctrl_keyword_table) {
      replace_all(text, std::string(keyword), with_underscores(keyword));
    }
    EXPECT_EQ(text, with_underscores(phrase));
  }
}

TEST(ColourConstants, GiveTheColourNumberOfEachName) {
  EXPECT_STREQ(colour_constant("giallo"), "65535");
  EXPECT_STREQ(colour_constant("verde_scuro"), "32768");
  EXPECT_STREQ(colour_constant("rosso"), "255");
  EXPECT_STREQ(colour_constant("verde"), "65280");
  EXPECT_STREQ(colour_constant("blu"), "16711680");
  EXPECT_STREQ(colour_constant("bianco"), "16777215");
  EXPECT_STREQ(colour_constant("nero"), "0");
  EXPECT_STREQ(colour_constant("marrone"), "128");
  EXPECT_STREQ(colour_constant("grigio"), "8421504");
  EXPECT_STREQ(colour_constant("grigio_chiaro"), "12632256");
  EXPECT_STREQ(colour_constant("grigio_scuro"), "4210752");
  EXPECT_STREQ(colour_constant("arancione"), "4235519");
  EXPECT_STREQ(colour_constant("ciano"), "16776960");
  EXPECT_STREQ(colour_constant("magenta"), "16711935");
  EXPECT_STREQ(colour_constant("verde_acqua"), "8421376");
  EXPECT_STREQ(colour_constant("verde_oliva"), "32896");

  struct Rgb {
    const char* name;
    int red, green, blue;
  };
  const Rgb triples[] = {
      {"giada", 0, 210, 134},
      {"argento", 220, 220, 220},
      {"oro", 255, 215, 0},
      {"bronzo", 205, 127, 50},
      {"rosa", 255, 192, 203},
      {"azzurro", 0, 127, 255},
      {"corallo", 255, 127, 80},
      {"viola", 143, 0, 255},
      {"rosso_vermiglione", 227, 66, 52},
      {"castagno", 205, 92, 92},
      {"castagno_scuro", 152, 105, 96},
      {"blu_ardesia", 112, 152, 192},
      {"rosa_vivo", 255, 0, 127},
      {"malva", 224, 176, 255},
  };
  for (const Rgb& c : triples) {
    SCOPED_TRACE(c.name);
    const char* text = colour_constant(c.name);
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text, std::to_string(c.red + 256 * c.green + 65536 * c.blue));
  }
  EXPECT_STREQ(colour_constant("argento"), "14474460");
}

TEST(NoteConstants, GiveRisingRatiosWithEnharmonicNamesEqual) {
  EXPECT_STREQ(note_constant("Do"), "1");
  EXPECT_STREQ(note_constant("Fa"), "1.33587786259542");
  EXPECT_STREQ(note_constant("Fa_diesis"), "1.412213740458015");
  EXPECT_STREQ(note_constant("Si"), "1.885496183206107");

  const std::pair<const char*, const char*> enharmonic[] = {
      {"Do_diesis", "Re_bemolle"},  {"Re_diesis", "Mi_bemolle"}, {"Fa_diesis", "Sol_bemolle"},
      {"Sol_diesis", "La_bemolle"}, {"La_diesis", "Si_bemolle"},
  };
  for (auto [sharp, flat] : enharmonic) {
    SCOPED_TRACE(sharp);
    ASSERT_NE(note_constant(sharp), nullptr);
    EXPECT_STREQ(note_constant(sharp), note_constant(flat));
  }

  // The twelve semitones from Do rise inside one octave.
  const char* const scale[] = {"Do",  "Do_diesis",  "Re", "Re_diesis", "Mi", "Fa", "Fa_diesis",
                               "Sol", "Sol_diesis", "La", "La_diesis", "Si"};
  double previous = 0;
  for (const char* note : scale) {
    SCOPED_TRACE(note);
    ASSERT_NE(note_constant(note), nullptr);
    double ratio = number_of(note_constant(note));
    EXPECT_GT(ratio, previous);
    EXPECT_LT(ratio, 2.0);
    previous = ratio;
  }
}

TEST(NumericConstants, GiveTheirExactTexts) {
  EXPECT_STREQ(numeric_constant("Pi_greco"), "3.1415926535");
  EXPECT_STREQ(numeric_constant("numero_di_Nepero"), "2.7182818284");
  EXPECT_STREQ(numeric_constant("sezione_aurea"), "1.6180339887");
  EXPECT_STREQ(numeric_constant("un_mezzo"), "0.5");
  EXPECT_STREQ(numeric_constant("mezza"), "0.5");
  EXPECT_STREQ(numeric_constant("mezzo"), "0.5");
  EXPECT_STREQ(numeric_constant("un_nono"), "0.111111111");
  EXPECT_STREQ(numeric_constant("due_terzi"), "0.6666666666");

  EXPECT_NEAR(number_of(numeric_constant("Pi_greco")), M_PI, 1e-10);
  EXPECT_NEAR(number_of(numeric_constant("numero_di_Nepero")), M_E, 1e-10);
  EXPECT_NEAR(number_of(numeric_constant("sezione_aurea")), (1 + std::sqrt(5.0)) / 2, 1e-10);
  const std::pair<const char*, double> fractions[] = {
      {"un_terzo", 1.0 / 3},  {"un_quarto", 1.0 / 4},  {"un_quinto", 1.0 / 5},
      {"un_sesto", 1.0 / 6},  {"un_settimo", 1.0 / 7}, {"un_ottavo", 1.0 / 8},
      {"un_nono", 1.0 / 9},   {"un_decimo", 1.0 / 10}, {"tre_quarti", 3.0 / 4},
      {"due_terzi", 2.0 / 3},
  };
  for (auto [name, value] : fractions) {
    SCOPED_TRACE(name);
    ASSERT_NE(numeric_constant(name), nullptr);
    EXPECT_NEAR(number_of(numeric_constant(name)), value, 1e-9);
  }
}

TEST(ConstantLookups, GiveNullForUnknownNamesAndCompareWholeViews) {
  for (const char* name : {"", "Rosso", "ross", "rossoo", "verde scuro", "Do", "Pi_greco"}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(colour_constant(name), nullptr);
  }
  for (const char* name : {"", "do", "Do diesis", "Mi_diesis", "Sol_", "rosso", "mezzo"}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(note_constant(name), nullptr);
  }
  for (const char* name : {"", "pi_greco", "Pi greco", "mezz", "un", "un_quarto_", "Do"}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(numeric_constant(name), nullptr);
  }

  // A view into a longer text is looked up by its own characters only.
  std::string_view token = "giallo_chiaro";
  EXPECT_STREQ(colour_constant(token.substr(0, 6)), "65535");
  EXPECT_STREQ(note_constant(std::string_view("Solfeggio").substr(0, 3)), "1.49618320610687");
  EXPECT_STREQ(numeric_constant(std::string_view("mezzanotte").substr(0, 5)), "0.5");
}

TEST(ChrToOrd, SetsEveryCodeWithTheSemicolonForTheComma) {
  CharacterCodes codes;
  chr_to_ord(codes);

  const std::pair<int CharacterCodes::*, int> expected[] = {
      {&CharacterCodes::maggiore, 62},        {&CharacterCodes::minore, 60},
      {&CharacterCodes::trattino, 45},        {&CharacterCodes::simbolo_piu, 43},
      {&CharacterCodes::simbolo_potenza, 94}, {&CharacterCodes::spazio, 32},
      {&CharacterCodes::aperta_graffa, 123},  {&CharacterCodes::chiusa_graffa, 125},
      {&CharacterCodes::aperta_quadra, 91},   {&CharacterCodes::chiusa_quadra, 93},
      {&CharacterCodes::lettera_a, 97},       {&CharacterCodes::lettera_e, 101},
      {&CharacterCodes::lettera_i, 105},      {&CharacterCodes::lettera_o, 111},
      {&CharacterCodes::lettera_u, 117},      {&CharacterCodes::lettera_b, 98},
      {&CharacterCodes::lettera_v, 118},      {&CharacterCodes::lettera_s, 115},
      {&CharacterCodes::lettera_t, 116},      {&CharacterCodes::lettera_n, 110},
      {&CharacterCodes::uguale, 61},          {&CharacterCodes::chiusa_tonda, 41},
      {&CharacterCodes::aperta_tonda, 40},    {&CharacterCodes::virgoletta, 34},
      {&CharacterCodes::stanghetta, 47},      {&CharacterCodes::stanga_dritta, 124},
      {&CharacterCodes::due_punti, 58},       {&CharacterCodes::virgola, 59},
      {&CharacterCodes::punto_e_virgola, 59}, {&CharacterCodes::hashtag, 35},
      {&CharacterCodes::asterisco, 42},       {&CharacterCodes::punto, 46},
      {&CharacterCodes::numero_zero, 48},     {&CharacterCodes::numero_1, 49},
      {&CharacterCodes::numero_2, 50},        {&CharacterCodes::numero_3, 51},
      {&CharacterCodes::numero_4, 52},        {&CharacterCodes::numero_5, 53},
      {&CharacterCodes::numero_6, 54},        {&CharacterCodes::numero_7, 55},
      {&CharacterCodes::numero_8, 56},        {&CharacterCodes::numero_9, 57},
  };
  // Every member of the structure is listed above.
  EXPECT_EQ(std::size(expected) * sizeof(int), sizeof(CharacterCodes));
  for (size_t i = 0; i < std::size(expected); ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(codes.*expected[i].first, expected[i].second);
  }
  EXPECT_EQ(codes.virgola, ';');
}
