// Text files by handle: lines read as the language reads them, line ends
// written as CR LF, at most 31 open, and the fatal words of wrong handles.
#include "runtime/IO/TextFile.h"

#include <gtest/gtest.h>

#include <vector>

#include "support/Fatal.h"
#include "support/SaveArea.h"

namespace {

TEST(TextFile, LinesWrittenWithCrLfAreReadBackLineByLine) {
  const SaveArea folder;
  const std::string path = (folder / "cartella/punteggi.txt").string();
  const int out = file_text_open_write(path);
  ASSERT_GE(out, 1);
  file_text_write_string(out, "a\nb");
  file_text_writeln(out);
  file_text_write_string(out, "ultima\r\n");
  file_text_close(out);
  EXPECT_EQ(read_whole_file(path), "a\r\nb\r\nultima\r\n");

  const int more = file_text_open_append(path);
  file_text_write_string(more, "senza a capo");
  file_text_close(more);

  const int in = file_text_open_read(path);
  EXPECT_EQ(file_text_read_string(in), "a");
  EXPECT_EQ(file_text_read_string(in), "") << "at a line end it stays";
  EXPECT_EQ(file_text_readln(in), "\r\n") << "only readln moves on";
  EXPECT_EQ(file_text_readln(in), "b\r\n");
  EXPECT_EQ(file_text_readln(in), "ultima\r\n");
  EXPECT_FALSE(file_text_eof(in));
  EXPECT_EQ(file_text_readln(in), "senza a capo") << "the last line without a line end";
  EXPECT_TRUE(file_text_eof(in));
  EXPECT_EQ(file_text_readln(in), "") << "reading past the end";
  file_text_close(in);

  EXPECT_EQ(file_text_open_read((folder / "mancante.txt").string()), -1);
}

TEST(TextFile, AThirtySecondOpenFileAndWrongHandlesAreFatal) {
  const SaveArea folder;
  const std::string path = folder.write("uno.txt", "x").string();
  std::vector<int> handles;
  for (int k = 0; k < 31; ++k) handles.push_back(file_text_open_read(path));
  EXPECT_EQ(handles.front(), 1);
  EXPECT_EQ(handles.back(), 31);
  EXPECT_FATAL(file_text_open_read(path), "Cannot open another file (maximum exceeded).");
  EXPECT_FATAL(file_text_write_string(handles[0], "x"), "File not opened for writing.");
  for (const int h : handles) file_text_close(h);
  file_text_close(5);  // closed twice: nothing left to do
  EXPECT_FATAL(file_text_close(32), "Trying to close text file that has not been opened.");
  EXPECT_FATAL(file_text_read_string(0), "File is not opened for reading.");
}

}  // namespace
