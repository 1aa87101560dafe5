// The cells of a file of separated values, as spreadsheets write them:
// cells in double quotes may hold the separator, line breaks and doubled
// quotes; lines end in LF or CR LF; a byte order mark at the start is not
// part of the first cell.
#pragma once

#include <string>
#include <string_view>
#include <vector>

using SeparatedRows = std::vector<std::vector<std::string>>;

// The rows of `text`, each the list of its cells with their quotes taken
// off. A separator that ends a line closes its last cell without opening
// another, and a blank last line is no row.
SeparatedRows separated_values_read(std::string_view text, char separator);
