#include "runtime/IO/SeparatedValues.h"

namespace {

constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";

}  // namespace

SeparatedRows separated_values_read(std::string_view text, char separator) {
  if (text.starts_with(BYTE_ORDER_MARK)) text.remove_prefix(BYTE_ORDER_MARK.size());
  SeparatedRows rows;
  std::vector<std::string> row;
  std::string cell;
  bool quoted = false;
  bool cell_open = false;  // something of the cell under way has been read, or a separator opened it
  auto end_cell = [&] {
    row.push_back(std::move(cell));
    cell.clear();
    cell_open = false;
  };
  auto end_row = [&] {
    if (cell_open) end_cell();
    if (!row.empty()) rows.push_back(std::move(row));
    row.clear();
  };
  for (size_t k = 0; k < text.size(); ++k) {
    const char c = text[k];
    if (quoted) {
      if (c != '"') {
        cell += c;
      } else if (k + 1 < text.size() && text[k + 1] == '"') {
        cell += '"';
        ++k;
      } else {
        quoted = false;
      }
    } else if (c == '"') {
      quoted = true;
      cell_open = true;
    } else if (c == separator) {
      end_cell();
      // The separator opens the next cell unless the line ends here.
      const size_t next = k + 1;
      cell_open = next < text.size() && text[next] != '\n' && text[next] != '\r';
    } else if (c == '\n') {
      end_row();
    } else if (c != '\r') {
      cell += c;
      cell_open = true;
    }
  }
  end_row();
  return rows;
}
