// INI files in their written form: a byte order mark and CR LF read like
// plain text, quotes round values, new keys first, the flush command, and
// the fatal words without an open file.
#include "runtime/IO/IniFile.h"

#include <gtest/gtest.h>


#include "support/Fatal.h"
#include "support/SaveArea.h"

namespace {

TEST(IniFile, AByteOrderMarkAndCrLfReadAsPlainText) {
  const SaveArea folder;
  for (const char* text : {"[opzioni]\nvolume=\"0.5\"\ntema=scuro\nrumore\n",
                           "\xEF\xBB\xBF[opzioni]\r\nvolume=\"0.5\"\r\n tema = scuro \r\nrumore\r\n"}) {
    ini_open(folder.write("opzioni.ini", text).string());
    EXPECT_EQ(ini_read_real("opzioni", "volume", 1), 0.5);
    EXPECT_EQ(ini_read_string("opzioni", "tema", "chiaro"), "scuro");
    EXPECT_EQ(ini_read_string("opzioni", "rumore", "nessuno"), "nessuno") << "a line without = is passed over";
    EXPECT_EQ(ini_read_real("altro", "volume", 7), 7);
    EXPECT_TRUE(ini_section_exists("opzioni"));
    EXPECT_FALSE(ini_key_exists("opzioni", "lingua"));
    EXPECT_EQ(ini_close(), "[opzioni]\r\nvolume=\"0.5\"\r\ntema=\"scuro\"\r\n");
  }
}

TEST(IniFile, WritesPutNewKeysFirstAndReachTheDiskAtCloseOrFlush) {
  const SaveArea folder;
  const auto path = folder / "setting.ini";
  ini_open(path.string());
  ini_write_real("Progetti", "totale", 1);
  ini_write_string("Progetti", "nome_1", "primo");
  ini_write_string("Progetti", "totale", "2");
  ini_write_string("Crash", "valore", "0");
  EXPECT_FALSE(std::filesystem::exists(path)) << "nothing is written before the close";
  ini_write_string("SYSTEM_COMMAND", "INI_FILE_FLUSH", "TRUE");
  const std::string expected = "[Crash]\r\nvalore=\"0\"\r\n[Progetti]\r\nnome_1=\"primo\"\r\ntotale=\"2\"\r\n";
  EXPECT_EQ(read_whole_file(path), expected) << "the flush writes at once and stores no key";
  ini_key_delete("Progetti", "nome_1");
  ini_section_delete("Crash");
  ini_write_real("Progetti", "uno", 1);
  EXPECT_EQ(ini_close(), "[Progetti]\r\nuno=\"1.000000\"\r\ntotale=\"2\"\r\n");
  EXPECT_EQ(read_whole_file(path), "[Progetti]\r\nuno=\"1.000000\"\r\ntotale=\"2\"\r\n");

  ini_open((folder / "mancante.ini").string());
  EXPECT_EQ(ini_close(), "") << "a missing file is an empty one, and an unchanged one isn't written";
  EXPECT_FALSE(std::filesystem::exists(folder / "mancante.ini"));
}

TEST(IniFile, WithoutAnOpenFileReadsAndWritesAreFatal) {
  EXPECT_EQ(ini_close(), "");
  EXPECT_FATAL(ini_read_real("a", "b", 0), "Trying to read from undefined INI file");
  EXPECT_FATAL(ini_write_real("a", "b", 0), "Trying to write to undefined INI file");
  EXPECT_FATAL(ini_section_delete("a"), "Trying to change undefined INI file");
}

}  // namespace
