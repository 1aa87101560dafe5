#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <utility>
#include <string>
#include <string_view>

#include "language/tokenizer/chr_to_ord.h"
#include "language/tokenizer/constant_tables.h"
#include "language/tokenizer/keyword_table.h"

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

TEST(KeywordTable, StandsFivePhrasesTwiceAndNoOtherAgain) {
  std::map<std::string_view, int> occurrences;
  for (std::string_view phrase : ctrl_keyword_table) ++occurrences[phrase];
  std::erase_if(occurrences, [](const auto& entry) { return entry.second == 1; });
  const std::map<std::string_view, int> twice = {
      {"ELEMENTO", 2},
      {"grigio scuro", 2},
      {"un quarto", 2},
      {"ottieni elemento da questa data", 2},
      {"scrivi su questo file", 2},
  };
  EXPECT_EQ(occurrences, twice);
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
  // Misspellings and half-rewritten forms are matched as they stand; accented letters are UTF-8,
  // and "quest’area" has the typographic apostrophe.
  const std::pair<const char*, bool> phrases[] = {
      {"ottieni nomralizzazione componente y del vettore", true},
      {"ottieni normalizzazione componente y del vettore", false},
      {"COLORE INIZiale", true},
      {"TRASPARENZA INIZiale", true},
      {"COLORE INIZIALE", false},
      {"ottieni il valore limitato_del_variabile tra", true},
      {"ottieni il quoziente_del_divisione tra", true},
      {"ottieni l'arcotangente 2 di", true},
      {"distruggi elementi che si trovano in quest\xE2\x80\x99" "area rettangolare", true},
      {"distruggi elementi che si trovano in quest\xE2\x80\x99" "area circolare", true},
      {"distruggi elementi che si trovano in quest'area circolare", false},
      {"ottieni risultato controllo se elemento \xC3\xA8 cliccato", true},
      {"attiva casualit\xC3\xA0 diversa per ogni avvio", true},
      {"ottieni il valore pi\xC3\xB9 vicino alla media tra", true},
      {"ottieni risultato controllo se c'\xC3\xA8 testo negli appunti", true},
  };
  for (const auto& [phrase, present] : phrases) EXPECT_EQ(first_index(phrase) >= 0, present) << phrase;
  // The misspelt form stands where the right one would, after its x twin.
  EXPECT_EQ(ctrl_keyword_table[first_index("ottieni normalizzazione componente x del vettore") + 1],
            "ottieni nomralizzazione componente y del vettore");

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
  // Red is the lowest byte of a colour number, blue the highest.
  struct Rgb {
    const char* name;
    int red, green, blue;
  };
  const Rgb colours[] = {
      {"rosso", 255, 0, 0},           {"verde", 0, 255, 0},          {"blu", 0, 0, 255},
      {"giallo", 255, 255, 0},        {"ciano", 0, 255, 255},        {"magenta", 255, 0, 255},
      {"bianco", 255, 255, 255},      {"nero", 0, 0, 0},             {"marrone", 128, 0, 0},
      {"verde_scuro", 0, 128, 0},     {"verde_acqua", 0, 128, 128},  {"verde_oliva", 128, 128, 0},
      {"grigio", 128, 128, 128},      {"grigio_chiaro", 192, 192, 192}, {"grigio_scuro", 64, 64, 64},
      {"arancione", 255, 160, 64},    {"giada", 0, 210, 134},        {"argento", 220, 220, 220},
      {"oro", 255, 215, 0},           {"bronzo", 205, 127, 50},      {"rosa", 255, 192, 203},
      {"azzurro", 0, 127, 255},       {"corallo", 255, 127, 80},     {"viola", 143, 0, 255},
      {"rosso_vermiglione", 227, 66, 52}, {"castagno", 205, 92, 92}, {"castagno_scuro", 152, 105, 96},
      {"blu_ardesia", 112, 152, 192}, {"rosa_vivo", 255, 0, 127},    {"malva", 224, 176, 255},
  };
  for (const Rgb& c : colours) {
    SCOPED_TRACE(c.name);
    const char* text = colour_constant(c.name);
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text, std::to_string(c.red + 256 * c.green + 65536 * c.blue));
  }
}

TEST(NoteConstants, GiveEachSemitoneItsFrequencyOverDoWithEnharmonicNamesEqual) {
  // The texts keep their own number of digits.
  EXPECT_STREQ(note_constant("Do"), "1");
  EXPECT_STREQ(note_constant("Fa"), "1.33587786259542");
  EXPECT_STREQ(note_constant("Fa_diesis"), "1.412213740458015");
  EXPECT_STREQ(note_constant("Si"), "1.885496183206107");

  // Each ratio is the semitone's frequency in hertz over Do's 131.
  const std::pair<const char*, int> scale[] = {
      {"Do", 131},  {"Do_diesis", 139},  {"Re", 147},  {"Re_diesis", 156},  {"Mi", 165},  {"Fa", 175},
      {"Fa_diesis", 185}, {"Sol", 196}, {"Sol_diesis", 208}, {"La", 220}, {"La_diesis", 233}, {"Si", 247},
  };
  for (const auto& [note, hertz] : scale) {
    ASSERT_NE(note_constant(note), nullptr) << note;
    EXPECT_NEAR(number_of(note_constant(note)) * 131, hertz, 1e-9) << note;
  }
  const std::pair<const char*, const char*> enharmonic[] = {
      {"Do_diesis", "Re_bemolle"},  {"Re_diesis", "Mi_bemolle"}, {"Fa_diesis", "Sol_bemolle"},
      {"Sol_diesis", "La_bemolle"}, {"La_diesis", "Si_bemolle"},
  };
  for (auto [sharp, flat] : enharmonic) EXPECT_STREQ(note_constant(sharp), note_constant(flat)) << sharp;
}

TEST(NumericConstants, GiveTheirExactTexts) {
  EXPECT_STREQ(numeric_constant("Pi_greco"), "3.1415926535");
  EXPECT_STREQ(numeric_constant("numero_di_Nepero"), "2.7182818284");
  EXPECT_STREQ(numeric_constant("sezione_aurea"), "1.6180339887");
  EXPECT_STREQ(numeric_constant("un_mezzo"), "0.5");
  EXPECT_STREQ(numeric_constant("mezza"), "0.5");
  EXPECT_STREQ(numeric_constant("mezzo"), "0.5");
  EXPECT_STREQ(numeric_constant("un_nono"), "0.111111111");  // nine decimals, the others ten
  EXPECT_STREQ(numeric_constant("due_terzi"), "0.6666666666");

  const std::pair<const char*, double> fractions[] = {
      {"un_terzo", 1.0 / 3}, {"un_quarto", 1.0 / 4},  {"un_quinto", 1.0 / 5}, {"un_sesto", 1.0 / 6},
      {"un_settimo", 1.0 / 7}, {"un_ottavo", 1.0 / 8}, {"un_decimo", 1.0 / 10}, {"tre_quarti", 3.0 / 4},
  };
  for (auto [name, value] : fractions) {
    ASSERT_NE(numeric_constant(name), nullptr) << name;
    EXPECT_NEAR(number_of(numeric_constant(name)), value, 1e-9) << name;
  }
}

TEST(ConstantLookups, GiveNullForUnknownNamesAndCompareWholeViews) {
  for (const char* name : {"", "Rosso", "ross", "rossoo", "verde scuro", "Do", "Pi_greco"}) {
    EXPECT_EQ(colour_constant(name), nullptr) << name;
  }
  for (const char* name : {"", "do", "Do diesis", "Mi_diesis", "Sol_", "rosso", "mezzo"}) {
    EXPECT_EQ(note_constant(name), nullptr) << name;
  }
  for (const char* name : {"", "pi_greco", "Pi greco", "mezz", "un", "un_quarto_", "Do"}) {
    EXPECT_EQ(numeric_constant(name), nullptr) << name;
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
  using C = CharacterCodes;
  const std::pair<int C::*, char> expected[] = {
      {&C::maggiore, '>'},      {&C::minore, '<'},         {&C::trattino, '-'},       {&C::simbolo_piu, '+'},
      {&C::simbolo_potenza, '^'}, {&C::spazio, ' '},       {&C::aperta_graffa, '{'},  {&C::chiusa_graffa, '}'},
      {&C::aperta_quadra, '['}, {&C::chiusa_quadra, ']'},  {&C::lettera_a, 'a'},      {&C::lettera_e, 'e'},
      {&C::lettera_i, 'i'},     {&C::lettera_o, 'o'},      {&C::lettera_u, 'u'},      {&C::lettera_b, 'b'},
      {&C::lettera_v, 'v'},     {&C::lettera_s, 's'},      {&C::lettera_t, 't'},      {&C::lettera_n, 'n'},
      {&C::uguale, '='},        {&C::chiusa_tonda, ')'},   {&C::aperta_tonda, '('},   {&C::virgoletta, '"'},
      {&C::stanghetta, '/'},    {&C::stanga_dritta, '|'},  {&C::due_punti, ':'},      {&C::punto_e_virgola, ';'},
      {&C::hashtag, '#'},       {&C::asterisco, '*'},      {&C::punto, '.'},          {&C::numero_zero, '0'},
      {&C::numero_1, '1'},      {&C::numero_2, '2'},       {&C::numero_3, '3'},       {&C::numero_4, '4'},
      {&C::numero_5, '5'},      {&C::numero_6, '6'},       {&C::numero_7, '7'},       {&C::numero_8, '8'},
      {&C::numero_9, '9'},
      {&C::virgola, ';'},  // the comma's code is the semicolon's
  };
  // Every member of the structure is listed above.
  EXPECT_EQ(std::size(expected) * sizeof(int), sizeof(CharacterCodes));
  for (const auto& [member, code] : expected) EXPECT_EQ(codes.*member, code) << "expected '" << code << "'";
}
