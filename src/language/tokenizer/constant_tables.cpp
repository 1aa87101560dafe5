// The tables of named constants and their lookups.
//
// Each table is written in the order a reader knows it and sorted by name at
// compile time; a lookup is then a binary search with no allocation.
#include "language/tokenizer/constant_tables.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace {

struct NamedConstant {
  std::string_view name;
  const char* text;
};

// A copy of `table` ordered by name, for the binary search.
template <size_t N>
constexpr std::array<NamedConstant, N> sorted_by_name(std::array<NamedConstant, N> table) {
  std::ranges::sort(table, {}, &NamedConstant::name);
  return table;
}

// A name given twice would leave one of its values unreachable.
template <size_t N>
constexpr bool names_are_unique(const std::array<NamedConstant, N>& sorted) {
  return std::ranges::adjacent_find(sorted, {}, &NamedConstant::name) == sorted.end();
}

// The text of `name` in a table sorted by name, or nullptr.
template <size_t N>
const char* find_constant(const std::array<NamedConstant, N>& sorted, std::string_view name) {
  auto it = std::ranges::lower_bound(sorted, name, {}, &NamedConstant::name);
  return it != sorted.end() && it->name == name ? it->text : nullptr;
}

// The decimal text of a colour number, large enough for 16777215.
struct ColourText {
  char digits[9] = {};
};

constexpr ColourText colour_text(int number) {
  ColourText text;
  int length = 0;
  for (int rest = number; rest >= 10; rest /= 10) ++length;
  for (int i = length; i >= 0; --i, number /= 10) {
    text.digits[i] = static_cast<char>('0' + number % 10);
  }
  return text;
}

// A colour given by its red, green and blue parts, as the colour number's
// text: red is the lowest byte, blue the highest.
template <int Red, int Green, int Blue>
constexpr ColourText rgb = colour_text(Red + 256 * Green + 65536 * Blue);

constexpr auto colours = sorted_by_name(std::to_array<NamedConstant>({
    {"rosso", "255"},
    {"verde_scuro", "32768"},
    {"blu", "16711680"},
    {"bianco", "16777215"},
    {"nero", "0"},
    {"grigio", "8421504"},
    {"grigio_chiaro", "12632256"},
    {"grigio_scuro", "4210752"},
    {"giallo", "65535"},
    {"arancione", "4235519"},
    {"ciano", "16776960"},
    {"magenta", "16711935"},
    {"verde_acqua", "8421376"},
    {"verde_oliva", "32896"},
    {"giada", rgb<0, 210, 134>.digits},
    {"verde", "65280"},
    {"marrone", "128"},
    {"argento", rgb<220, 220, 220>.digits},
    {"oro", rgb<255, 215, 0>.digits},
    {"bronzo", rgb<205, 127, 50>.digits},
    {"rosa", rgb<255, 192, 203>.digits},
    {"azzurro", rgb<0, 127, 255>.digits},
    {"corallo", rgb<255, 127, 80>.digits},
    {"viola", rgb<143, 0, 255>.digits},
    {"rosso_vermiglione", rgb<227, 66, 52>.digits},
    {"castagno", rgb<205, 92, 92>.digits},
    {"castagno_scuro", rgb<152, 105, 96>.digits},
    {"blu_ardesia", rgb<112, 152, 192>.digits},
    {"rosa_vivo", rgb<255, 0, 127>.digits},
    {"malva", rgb<224, 176, 255>.digits},
}));

// Enharmonic notes sound the same, so each pair of names shares one ratio.
constexpr char do_diesis[] = "1.061068702290076";
constexpr char re_diesis[] = "1.190839694656489";
constexpr char fa_diesis[] = "1.412213740458015";
constexpr char sol_diesis[] = "1.587786259541985";
constexpr char la_diesis[] = "1.778625954198473";

constexpr auto notes = sorted_by_name(std::to_array<NamedConstant>({
    {"Do", "1"},
    {"Do_diesis", do_diesis},
    {"Re_bemolle", do_diesis},
    {"Re", "1.122137404580153"},
    {"Re_diesis", re_diesis},
    {"Mi_bemolle", re_diesis},
    {"Mi", "1.259541984732824"},
    {"Fa", "1.33587786259542"},
    {"Sol_bemolle", fa_diesis},
    {"Fa_diesis", fa_diesis},
    {"Sol", "1.49618320610687"},
    {"Sol_diesis", sol_diesis},
    {"La_bemolle", sol_diesis},
    {"La", "1.679389312977099"},
    {"La_diesis", la_diesis},
    {"Si_bemolle", la_diesis},
    {"Si", "1.885496183206107"},
}));

// The values are token texts and keep their digits exactly, "un_nono" with
// its nine decimals beside the others' ten.
constexpr auto numbers = sorted_by_name(std::to_array<NamedConstant>({
    {"Pi_greco", "3.1415926535"},
    {"numero_di_Nepero", "2.7182818284"},
    {"sezione_aurea", "1.6180339887"},
    {"un_mezzo", "0.5"},
    {"mezza", "0.5"},
    {"mezzo", "0.5"},
    {"un_terzo", "0.3333333333"},
    {"un_quarto", "0.25"},
    {"un_quinto", "0.2"},
    {"un_sesto", "0.1666666666"},
    {"un_settimo", "0.1428571428"},
    {"un_ottavo", "0.125"},
    {"un_nono", "0.111111111"},
    {"un_decimo", "0.1"},
    {"tre_quarti", "0.75"},
    {"due_terzi", "0.6666666666"},
}));

static_assert(names_are_unique(colours) && names_are_unique(notes) && names_are_unique(numbers));

}  // namespace

const char* colour_constant(std::string_view name) { return find_constant(colours, name); }

const char* note_constant(std::string_view name) { return find_constant(notes, name); }

const char* numeric_constant(std::string_view name) { return find_constant(numbers, name); }
