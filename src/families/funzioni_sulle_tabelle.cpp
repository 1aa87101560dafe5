// funzioni_sulle_tabelle: named tables of text that a program creates,
// fills, reads, draws, and exchanges with spreadsheets as files of values
// separated by semicolons.
//
// A table is an instance of `tabella`, named by the name token exactly as
// written, quotes and all; every function acts on all the tables of a name.
// Cells hold value texts: a quoted text stays quoted, a number is its
// digits. A cell never written reads as an empty text.
#include "families/funzioni_sulle_tabelle.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

#include "families/families.h"
#include "families/funzioni_di_disegno_condivise.h"
#include "families/value_function.h"
#include "language/evaluation/numeric_expression.h"
#include "language/evaluation/program_instance.h"
#include "language/evaluation/string_expression.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Font/TextState.h"
#include "runtime/Function/DialogFunctions.h"
#include "runtime/Function/StringFunctions.h"
#include "runtime/Graphics/Primitives.h"
#include "runtime/Graphics/TextDrawing.h"
#include "runtime/IO/FileNames.h"
#include "runtime/IO/SeparatedValues.h"
#include "runtime/IO/WholeFile.h"
#include "runtime/Object/Objects.h"
#include "runtime/Room/Room.h"

namespace {

constexpr size_t START_ROWS = 200, START_COLUMNS = 16;
constexpr double MAX_DRAWN = 1000;
constexpr double COLUMN_WIDTH = 140, ROW_HEIGHT = 20, TITLE_RADIUS = 18;
constexpr std::string_view CSV = ".csv";

class Tabella : public CInstance {
 public:
  Tabella(float x, float y, int32_t id, int32_t object)
      : CInstance(x, y, id, object), arr(START_ROWS, std::vector<std::string>(START_COLUMNS)) {}

  // The cell at row r, column c, counted from 1; "" outside what was written.
  const std::string& cell(double r, double c) const {
    static const std::string none;
    if (!(r >= 1 && c >= 1) || r > static_cast<double>(arr.size())) return none;
    const auto& row = arr[static_cast<size_t>(r) - 1];
    return c > static_cast<double>(row.size()) ? none : row[static_cast<size_t>(c) - 1];
  }
  // The cell at row r, column c, counted from 1, the table growing to hold it.
  std::string& cell_to_write(size_t r, size_t c) {
    if (arr.size() < r) arr.resize(r);
    auto& row = arr[r - 1];
    if (row.size() < c) row.resize(c);
    return row[c - 1];
  }

  std::string nome;
  std::vector<std::vector<std::string>> arr;  // arr[riga - 1][colonna - 1]
};

int32_t g_object = -1;

std::vector<Tabella*> tables_named(std::string_view name) {
  std::vector<Tabella*> found;
  const CObject* object = object_get(g_object);
  if (!object) return found;
  for (CInstance* instance : object->instances) {
    auto* table = static_cast<Tabella*>(instance);
    if (table->active() && table->nome == name) found.push_back(table);
  }
  return found;
}

void make_table(std::string name) {
  if (auto* table = static_cast<Tabella*>(instance_create(0, 0, g_object, 0))) table->nome = std::move(name);
}

// A whole index of a row or column from 1, or 0 for one that isn't or
// that would make a table too large to keep.
size_t index_of(double n, double limit) { return n >= 1 && n <= limit ? static_cast<size_t>(n) : 0; }
constexpr double MAX_ROWS = 100000, MAX_COLUMNS = 1000;

// The file of PERCORSO: quotes taken out, ".csv" added unless it is there.
std::string table_file(const std::string& written) {
  std::string path = without_quotes(written);
  if (path.find(CSV) == std::string::npos) path += CSV;
  return path;
}

constexpr int NAME = 1;
constexpr ArgumentKey CREATE_KEYS[] = {{"(NOME:", NAME}, {"(RIGHE:", 2, "150"}, {"(COLONNE:", 3, "100"}};

// The size a table is made with is its start size: the rows and columns
// asked for are the drawing's business.
void crea_tabella(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Statement, CREATE_KEYS);
  make_table(slot_name_or_unnamed(p, NAME));
}

constexpr int X = 2, Y = 3, ROWS = 4, COLUMNS = 5, BACKGROUND = 6, TEXT = 7, LINES = 8;
constexpr ArgumentKey DRAW_KEYS[] = {
    {"(NOME:", NAME, "senza nome"},     {"(X:", X, "150"},
    {"(Y:", Y, "100"},                  {"(RIGHE:", ROWS, "10"},
    {"(COLONNE:", COLUMNS, "1"},        {"(COLORE_SFONDO:", BACKGROUND, "", 16777215},
    {"(COLORE_TESTO:", TEXT, "", 32768}, {"(COLORE_LINEE:", LINES, "", 8421504},
};

// The shapes first and the texts after them, so that the device draws
// each kind in one go; no text crosses a line, so the picture is the same.
void draw_table(const Tabella& table, double x, double y, double rows, double columns, double background,
                double ink, double lines) {
  const double right = x + COLUMN_WIDTH * columns, bottom = y + ROW_HEIGHT + ROW_HEIGHT * rows;
  set_colour_and_alpha(ink, 1);
  draw_roundrect_ext(x, y, right, y + 2 * ROW_HEIGHT, TITLE_RADIUS, TITLE_RADIUS, false);
  set_colour_and_alpha(background, 1);
  draw_rectangle(x, y + ROW_HEIGHT, right, bottom, false);
  set_colour_and_alpha(lines, 1);
  for (double r = 1; r <= rows; ++r) draw_line(x, y + r * ROW_HEIGHT + ROW_HEIGHT, right, y + r * ROW_HEIGHT + ROW_HEIGHT);
  for (double b = 1; b <= columns; ++b) draw_line(x + b * COLUMN_WIDTH, y + ROW_HEIGHT, x + b * COLUMN_WIDTH, bottom);
  draw_rectangle(x, y + ROW_HEIGHT, right, bottom, true);

  set_colour_and_alpha(background, 1);
  draw_set_halign(TEXT_ALIGN_CENTRE);
  draw_text(x + COLUMN_WIDTH * columns / 2, y + 3, rt::string_upper(without_quotes(table.nome)).string_view());
  draw_set_halign(TEXT_ALIGN_START);
  set_colour_and_alpha(ink, 1);
  for (double b = 1; b <= columns; ++b) {
    for (double r = 1; r <= rows; ++r) {
      // A text shows as the learner reads it, without its quotes.
      const std::string& value = table.cell(r, b);
      const bool quoted = value.size() >= 2 && value.front() == '"' && value.back() == '"';
      draw_text(x + (b - 1) * COLUMN_WIDTH + 10, y + r * ROW_HEIGHT + 3,
                quoted ? std::string_view(value).substr(1, value.size() - 2) : std::string_view(value));
    }
  }
  reset_colour_and_alpha();
}

void disegna_tabella(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Statement, DRAW_KEYS);
  const double x = slot_number(p, X), y = slot_number(p, Y);
  // Rows and columns past the window's reach would only hold the frame up.
  const double rows = std::clamp(std::floor(slot_number(p, ROWS)), 0.0, MAX_DRAWN),
               columns = std::clamp(std::floor(slot_number(p, COLUMNS)), 0.0, MAX_DRAWN);
  const std::vector<Tabella*> tables = tables_named(slot_source(p, NAME));
  if (tables.empty() || std::isnan(rows) || std::isnan(columns)) return;
  draw_set_font(environment_font());
  for (const Tabella* table : tables) {
    draw_table(*table, x, y, rows, columns, slot_number(p, BACKGROUND), slot_number(p, TEXT), slot_number(p, LINES));
  }
}

constexpr int ROW = 2, COLUMN = 3, NEW_VALUE = 4;
constexpr ArgumentKey CHANGE_KEYS[] = {
    {"(NOME:", NAME, "senza nome"}, {"(RIGA:", ROW, "1"}, {"(COLONNA:", COLUMN, "1"}, {"(NUOVO_VALORE:", NEW_VALUE, "10"}};

void modifica_tabella(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Statement, CHANGE_KEYS);
  const std::vector<Tabella*> tables = tables_named(slot_source(p, NAME));
  const size_t r = index_of(slot_number(p, ROW), MAX_ROWS), c = index_of(slot_number(p, COLUMN), MAX_COLUMNS);
  if (tables.empty() || r == 0 || c == 0) return;
  const std::string value = calculate_expression_in_string(p, calculate_string(p, slot_source(p, NEW_VALUE)));
  for (Tabella* table : tables) table->cell_to_write(r, c) = value;
}

constexpr ArgumentKey NAME_KEY[] = {{"(NOME:", NAME, "senza nome"}};

void distruggi_tabella(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Statement, NAME_KEY);
  for (Tabella* table : tables_named(slot_source(p, NAME))) instance_destroy(*table);
}

constexpr ArgumentKey READ_KEYS[] = {{"(NOME:", NAME, "senza nome"}, {"(RIGA:", ROW, "0"}, {"(COLONNA:", COLUMN, "0"}};

void ottieni_dato_da_tabella(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Value, READ_KEYS);
  const std::vector<Tabella*> tables = tables_named(slot_source(p, NAME));
  if (tables.empty()) {
    give_number(p, i, 0, NumberForm::Exact);
    return;
  }
  const double r = string_is_real(calculate_string(p, slot_source(p, ROW)));
  const double c = string_is_real(calculate_string(p, slot_source(p, COLUMN)));
  give_text(p, i, tables.back()->cell(r, c));
}

constexpr size_t FILLED_COLUMNS = 15;
constexpr std::string_view CELL_END = "|";

constexpr ArgumentKey FILL_KEYS[] = {
    {"(NOME:", 0, "senza nome"}, {"(COLONNA_1:", 1, "0"},   {"(COLONNA_2:", 2, "0"},   {"(COLONNA_3:", 3, "0"},
    {"(COLONNA_4:", 4, "0"},     {"(COLONNA_5:", 5, "0"},   {"(COLONNA_6:", 6, "0"},   {"(COLONNA_7:", 7, "0"},
    {"(COLONNA_8:", 8, "0"},     {"(COLONNA_9:", 9, "0"},   {"(COLONNA_10:", 10, "0"}, {"(COLONNA_11:", 11, "0"},
    {"(COLONNA_12:", 12, "0"},   {"(COLONNA_13:", 13, "0"}, {"(COLONNA_14:", 14, "0"}, {"(COLONNA_15:", 15, "0"},
};

// Column n of a table takes the cells of its list, "a|b|c|", from row 1
// down; what follows the last "|" belongs to no cell.
void riempi_tabella(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Statement, FILL_KEYS);
  const std::vector<Tabella*> tables = tables_named(slot_source(p, 0));
  for (size_t n = 1; n <= FILLED_COLUMNS; ++n) {
    const std::string list = without_quotes(slot_source(p, static_cast<int>(n)));
    if (list == "0") continue;
    size_t row = 0;
    for (size_t from = 0, end; (end = list.find(CELL_END, from)) != std::string::npos; from = end + 1) {
      ++row;
      for (Tabella* table : tables) table->cell_to_write(row, n) = list.substr(from, end - from);
    }
  }
}

constexpr int PATH = 2;
constexpr ArgumentKey FILE_KEYS[] = {{"(NOME:", NAME, "senza nome"}, {"(PERCORSO:", PATH, "1"}};

// Every row, each cell followed by ";", the way spreadsheets read them.
void esporta_tabella(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Statement, FILE_KEYS);
  const std::string path = file_save_path(table_file(slot_source(p, PATH)));
  if (path.empty()) return;
  for (const Tabella* table : tables_named(slot_source(p, NAME))) {
    std::string text;
    for (const auto& row : table->arr) {
      for (const std::string& value : row) (text += value) += ';';
      text += "\r\n";
    }
    file_write_whole(path, text);
  }
}

// A number keeps its digits; a text that starts with a digit, such as
// "3A", stays as written; any other text becomes a quoted text.
std::string imported_value(std::string cell) {
  const auto digit = [](char c) { return c >= '0' && c <= '9'; };
  char* end = nullptr;
  std::strtod(cell.c_str(), &end);
  const bool is_number = !cell.empty() && (digit(cell[0]) || cell[0] == '-' || cell[0] == '+' || cell[0] == '.') &&
                         *end == '\0';
  if (is_number || (!cell.empty() && digit(cell[0]))) return cell;
  return '"' + cell + '"';
}

// The table is made anew from the file. Cells are split at the semicolons
// only, so that a decimal comma or a comma in a quoted text stays in its cell.
void importa_tabella(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Statement, FILE_KEYS);
  const std::string name = slot_source(p, NAME);
  for (Tabella* table : tables_named(name)) instance_destroy(*table);
  make_table(name);
  const std::string written = table_file(slot_source(p, PATH));
  std::string text;
  if (!file_read_whole(file_read_path(written), text)) {
    show_message(RValue::text("ATTENZIONE: Il file .csv specificato nella funzione importa tabella (" + written +
                              ") non esiste!"));
    return;
  }
  const SeparatedRows rows = separated_values_read(text, ';');
  const std::vector<Tabella*> made = tables_named(name);
  if (made.empty()) return;
  Tabella& table = *made.back();
  for (size_t r = 0; r < rows.size(); ++r) {
    for (size_t c = 0; c < rows[r].size(); ++c) table.cell_to_write(r + 1, c + 1) = imported_value(rows[r][c]);
  }
}

constexpr FamilyFunction FUNCTIONS[] = {
    {"crea_tabella", CallShape::Statement, crea_tabella},
    {"disegna_tabella", CallShape::Statement, disegna_tabella},
    {"modifica_tabella", CallShape::Statement, modifica_tabella},
    {"distruggi_tabella", CallShape::Statement, distruggi_tabella},
    {"ottieni_dato_da_tabella", CallShape::Value, ottieni_dato_da_tabella},
    {"riempi_tabella", CallShape::Statement, riempi_tabella},
    {"esporta_tabella", CallShape::Statement, esporta_tabella},
    {"importa_tabella", CallShape::Statement, importa_tabella},
};

constexpr FamilyGuard TABELLA_GUARD{"tabella", true, true};

}  // namespace

const Family funzioni_sulle_tabelle{"funzioni_sulle_tabelle", TABELLA_GUARD, TABELLA_GUARD, FUNCTIONS};

int32_t define_tabella() {
  g_object = ObjectDefinition<Tabella>("tabella").flags(0).index();
  return g_object;
}
