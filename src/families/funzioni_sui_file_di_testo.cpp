// funzioni_sui_file_di_testo: a program writes text files and reads them
// back, whole or a line at a time. Files follow the file name rule: they
// are written into the save area and read from where the rule finds them.
//
// A file's name is the NOME as written, without its quotes; where that is
// the name of a variable, its value is the name, so that a program can keep
// a file's name in a variable.
#include <algorithm>
#include <string>

#include "families/families.h"
#include "families/value_function.h"
#include "language/evaluation/numeric_expression.h"
#include "language/evaluation/program_instance.h"
#include "language/tokenizer/text_edit.h"
#include "runtime/IO/FileNames.h"
#include "runtime/IO/TextFile.h"
#include "runtime/IO/WholeFile.h"

namespace {

constexpr int NAME = 1, TEXT = 2, LINE = 2;
constexpr std::string_view LINE_BREAK_MARK = "/carriage_return/";
constexpr std::string_view NO_VARIABLE = "no var";

std::string file_name(ProgramInstance& p, std::string written) {
  std::erase(written, '"');
  std::string value = p.calculate_var(written);
  if (value == NO_VARIABLE) return written;
  std::erase(value, '"');
  return value;
}

// The written text: quotes out, line marks as line breaks, "< name >" filled in.
std::string text_to_write(ProgramInstance& p) {
  std::string text = slot_source(p, TEXT);
  std::erase(text, '"');
  text_edit::replace_all(text, LINE_BREAK_MARK, "\n");
  return fill_text_template(p, text);
}

constexpr ArgumentKey WRITE_KEYS[] = {{"(NOME:", NAME}, {"(TESTO:", TEXT, "testo"}};

enum class Writing { Append, AppendLine, Replace };

void write(ProgramInstance& p, int i, Writing how) {
  read_arguments(p, i, CallShape::Statement, WRITE_KEYS);
  const std::string name = file_name(p, slot_name_or_unnamed(p, NAME));
  const int file = how == Writing::Replace ? file_text_open_write(name) : file_text_open_append(name);
  if (file < 0) return;
  if (how == Writing::AppendLine) file_text_writeln(file);
  file_text_write_string(file, text_to_write(p));
  file_text_close(file);
}

void scrivi_su_questo_file(ProgramInstance& p, int i) { write(p, i, Writing::Append); }
void sovrascrivi_su_questo_file(ProgramInstance& p, int i) { write(p, i, Writing::Replace); }
void scrivi_una_nuova_linea_su_questo_file(ProgramInstance& p, int i) { write(p, i, Writing::AppendLine); }

// The lines of a file, each ended by a line feed, the last one too; "" for a file that can't be read.
std::string lines_of(const std::string& name) {
  std::string text;
  if (!file_read_whole(file_read_path(name), text) || text.empty()) return "";
  text_edit::replace_all(text, "\r\n", "\n");
  std::replace(text.begin(), text.end(), '\r', '\n');
  if (!text.ends_with('\n')) text += '\n';
  return text;
}

constexpr ArgumentKey READ_KEYS[] = {{"(NOME:", NAME, "0"}, {"(RIGA:", LINE, "", 1}};

void ottieni_testo_da_questo_file(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Value, READ_KEYS);
  std::string name = file_name(p, slot_source(p, NAME));
  if (!text_edit::contains(name, ".txt")) name += ".txt";
  give_text(p, i, lines_of(name));
}

// Line RIGA, counted from 1, with its line feed; "" past the end. RIGA is a
// number as written, not an expression: one below 1 skips no line.
void ottieni_una_riga_di_testo_da_questo_file(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Value, READ_KEYS);
  const std::string text = lines_of(file_name(p, slot_source(p, NAME)));
  const double wanted = string_is_real(slot_source(p, LINE));
  size_t from = 0;
  for (double skipped = 1; skipped < wanted && from < text.size(); ++skipped) from = text.find('\n', from) + 1;
  const size_t end = text.find('\n', from);
  give_text(p, i, from >= text.size() ? "" : text.substr(from, end + 1 - from));
}

constexpr FamilyFunction FUNCTIONS[] = {
    {"scrivi_su_questo_file", CallShape::Statement, scrivi_su_questo_file},
    {"sovrascrivi_su_questo_file", CallShape::Statement, sovrascrivi_su_questo_file},
    {"scrivi_una_nuova_linea_su_questo_file", CallShape::Statement, scrivi_una_nuova_linea_su_questo_file},
    {"ottieni_testo_da_questo_file", CallShape::Value, ottieni_testo_da_questo_file},
    {"ottieni_una_riga_di_testo_da_questo_file", CallShape::Value, ottieni_una_riga_di_testo_da_questo_file},
};

constexpr FamilyGuard FILE_GUARD{"file", true, true};

}  // namespace

const Family funzioni_sui_file_di_testo{"funzioni_sui_file_di_testo", FILE_GUARD, FILE_GUARD, FUNCTIONS};
