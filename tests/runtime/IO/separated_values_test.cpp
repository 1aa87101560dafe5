// Separated values as spreadsheets write them: quoted cells with the
// separator, doubled quotes and line breaks in them, CR LF, a byte order
// mark, a separator closing a line, and blank lines.
#include "runtime/IO/SeparatedValues.h"

#include <gtest/gtest.h>

namespace {

TEST(SeparatedValues, CellsReadAsASpreadsheetWroteThem) {
  struct Case {
    const char* text;
    SeparatedRows rows;
  };
  const Case cases[] = {
      {"a;b\nc;d", {{"a", "b"}, {"c", "d"}}},
      {"\xEF\xBB\xBFNome;Voto\r\nAnna;7,5\r\n", {{"Nome", "Voto"}, {"Anna", "7,5"}}},
      {"\"Rossi; Mario\";\"dice \"\"ciao\"\"\"\n", {{"Rossi; Mario", "dice \"ciao\""}}},
      {"\"due\nrighe\";x\n", {{"due\nrighe", "x"}}},
      {"a;;b;\n;;\n\n", {{"a", "", "b"}, {"", ""}}},
      {"", {}},
  };
  for (const Case& c : cases) EXPECT_EQ(separated_values_read(c.text, ';'), c.rows) << c.text;
}

}  // namespace
