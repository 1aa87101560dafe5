#include "runtime/IO/FileNames.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "runtime/Code/Conversions.h"
#include "runtime/IO/BinaryFile.h"
#include "runtime/IO/DesktopFunctions.h"
#include "runtime/Platform/Desktop.h"
#include "runtime/IO/TextFile.h"
#include "runtime/Platform/Headless.h"
#include "runtime/Platform/Log.h"
#include "support/CallBuiltin.h"
#include "support/DebugLines.h"
#include "support/Fatal.h"
#include "support/TempFolder.h"

namespace {

namespace fs = std::filesystem;

RValue text(const std::string& s) { return RValue::text(s); }

// The whole text of `name` as file_text_* reads it, "missing" when it can't be opened.
std::string read_by_rule(const std::string& name) {
  const int h = file_text_open_read(name);
  if (h < 0) return "missing";
  std::string all;
  while (!file_text_eof(h)) all += file_text_readln(h);
  file_text_close(h);
  return all;
}

// A save area, a program's folder and a bundle folder of the test's own, and a folder outside them all.
class FileNames : public ::testing::Test {
 protected:
  void SetUp() override {
    register_runtime_builtins();
    for (const TempFolder* f : {&save_, &program_, &bundle_, &outside_}) fs::create_directories(f->path());
    before_ = file_folders();
    file_folders_set({save_.path().string(), bundle_.path().string(), program_.path().string()});
  }
  void TearDown() override {
    file_folders_set(before_);
    file_allowed_clear();
    file_sandbox_set(true);
  }

  TempFolder save_{"velant_save"}, program_{"velant_program"}, bundle_{"velant_bundle"}, outside_{"velant_outside"};
  FileFolders before_;
};

TEST_F(FileNames, ReadsTakeTheSaveAreaThenTheProgramsFolderThenTheBundle) {
  save_.write("tutti.txt", "salvato");
  program_.write("tutti.txt", "accanto");
  bundle_.write("tutti.txt", "di Velant");
  program_.write("accanto.txt", "accanto");
  bundle_.write("accanto.txt", "di Velant");
  fs::create_directories(bundle_ / "esempi");
  bundle_.write("esempi/solo.txt", "di Velant");
  const struct {
    std::string name, expected;
  } rows[] = {
      {"tutti.txt", "salvato"},
      {"accanto.txt", "accanto"},
      {"esempi/solo.txt", "di Velant"},
      {"esempi/../tutti.txt", "salvato"},
      {(save_ / "esempi/solo.txt").string(), "di Velant"},  // a full path in a known folder is a name in it
      {"nessuno.txt", "missing"},
      {"", "missing"},
  };
  for (const auto& row : rows) EXPECT_EQ(read_by_rule(row.name), row.expected) << row.name;
  EXPECT_TRUE(value_to_bool(call_builtin("file_exists", {text("esempi/solo.txt")})));
  EXPECT_FALSE(value_to_bool(call_builtin("file_exists", {text("esempi")}))) << "a folder isn't a file";
  EXPECT_TRUE(value_to_bool(call_builtin("directory_exists", {text("esempi")})));
}

TEST_F(FileNames, WritesGoToTheSaveAreaAndPathsOutsideAreRefusedUnlessChosen) {
  const int h = file_text_open_write("punti/record.txt");
  file_text_write_string(h, "42");
  file_text_close(h);
  EXPECT_EQ(read_whole_file(save_ / "punti/record.txt"), "42");
  EXPECT_FALSE(fs::exists(program_ / "punti"));

  // A full path outside behaves like a missing file, with the refusal in the debug stream.
  const std::string far = outside_.write("lontano.txt", "x").string();
  for (const std::string& refused : {far, std::string("../lontano.txt")}) {
    const std::string lines = debug_lines([&] {
      EXPECT_EQ(file_text_open_read(refused), -1);
      EXPECT_EQ(file_text_open_write(refused), -1);
      EXPECT_FALSE(value_to_bool(call_builtin("file_exists", {text(refused)})));
    });
    EXPECT_NE(lines.find("Error! not allowing file operation with filename '" + refused + "'.\n"), std::string::npos)
        << lines;
    EXPECT_NE(lines.find("ERROR!!! :: Failed to open file: " + refused + "\n"), std::string::npos) << lines;
  }
  EXPECT_EQ(read_whole_file(far), "x");

  // A path chosen in a dialog may be used as it stands, for this run only.
  file_allow(far);
  EXPECT_EQ(read_by_rule(far), "x");
  file_allowed_clear();
  EXPECT_EQ(read_by_rule(far), "missing");
  // A chosen path inside a known folder is used as it stands too, not mapped into the save area.
  const std::string beside = program_.write("scelto.txt", "qui").string();
  file_allow(beside);
  const int out = file_text_open_write(beside);
  file_text_close(out);
  EXPECT_EQ(read_whole_file(beside), "");
  EXPECT_FALSE(fs::exists(save_ / "scelto.txt"));
  file_sandbox_set(false);
  EXPECT_EQ(read_by_rule(far), "x");
}

TEST_F(FileNames, DeleteRenameAndFoldersWorkInTheSaveAreaOnly) {
  bundle_.write("di_velant.txt", "x");
  save_.write("mio.txt", "y");
  const struct {
    const char* builtin;
    std::vector<RValue> args;
    double answer;
  } rows[] = {
      {"file_delete", {text("di_velant.txt")}, 0},  // Velant's own data can't be deleted
      {"file_rename", {text("nessuno.txt"), text("altro.txt")}, 0},
      {"file_rename", {text("mio.txt"), text("rinominato.txt")}, 1},
      {"file_rename", {text("rinominato.txt"), text("di_velant.txt")}, 1},  // the name is free in the save area
      {"file_rename", {text("di_velant.txt"), text("di_velant.txt")}, 0},   // a file there is never replaced
      {"file_delete", {text("di_velant.txt")}, 1},
      {"file_delete", {text("di_velant.txt")}, 0},
      {"directory_create", {text("uno/due")}, 1},
      {"directory_exists", {text("uno/due")}, 1},
      {"directory_exists", {text("tre")}, 0},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(value_to_real(call_builtin(row.builtin, row.args)), row.answer) << row.builtin << " " << row.args[0].string_view();
  }
  EXPECT_TRUE(fs::exists(bundle_ / "di_velant.txt")) << "the bundle's file stayed where it was";
  EXPECT_TRUE(fs::is_directory(save_ / "uno/due"));
}

TEST_F(FileNames, BinaryFilesAreReadAndWrittenByteByByte) {
  const int out = file_bin_open("dati.bin", 1);
  ASSERT_GE(out, 1);
  for (const int byte : {0, 255, 256, -1, 65}) file_bin_write_byte(out, byte);
  file_bin_close(out);
  EXPECT_EQ(read_whole_file(save_ / "dati.bin"), std::string("\x00\xFF\x00\xFF" "A", 5));

  const int both = file_bin_open("dati.bin", 2);
  EXPECT_EQ(file_bin_size(both), 5);
  file_bin_seek(both, 3);
  EXPECT_EQ(file_bin_read_byte(both), 255);
  file_bin_write_byte(both, 66);  // right after the byte read, at 4
  file_bin_seek(both, 1);
  EXPECT_EQ(file_bin_position(both), 1);
  EXPECT_EQ(file_bin_read_byte(both), 255);
  file_bin_close(both);

  const int in = file_bin_open("dati.bin", 0);
  std::vector<int> bytes;
  for (int b; (b = file_bin_read_byte(in)) >= 0;) bytes.push_back(b);
  EXPECT_EQ(bytes, (std::vector<int>{0, 255, 0, 255, 66}));
  file_bin_rewrite(in);
  EXPECT_EQ(file_bin_size(in), 5) << "a file opened for reading is never emptied";
  file_bin_close(in);

  EXPECT_EQ(debug_lines([] { EXPECT_EQ(file_bin_open("manca.bin", 0), -1); }),
            "ERROR!!! :: Failed to open file: manca.bin\n");
  std::vector<int> handles;
  for (int k = 0; k < 32; ++k) handles.push_back(file_bin_open("dati.bin", 0));
  EXPECT_EQ(handles.back(), 32);
  EXPECT_FATAL(file_bin_open("dati.bin", 0), "Cannot open another file (maximum exceeded).");
  for (const int h : handles) file_bin_close(h);
  EXPECT_FATAL(file_bin_read_byte(3), "Trying to use a binary file that has not been opened.");
}

TEST_F(FileNames, FileDialogsAskWithTheFilterAndTheirChoiceIsAllowed) {
  const std::string far = (outside_ / "scelto.txt").string();
  auto chooser = std::make_unique<platform::ScriptedFileChooser>(std::deque<std::string>{far});
  const platform::ScriptedFileChooser& asked = *chooser;
  platform::set_file_chooser(std::move(chooser));

  EXPECT_EQ(value_to_text(call_builtin("get_save_filename", {text("text |*.txt"), text("progetto")})), far);
  EXPECT_EQ(value_to_text(call_builtin("get_open_filename", {text(".png"), text("")})), "") << "the script is used up";
  ASSERT_EQ(asked.asked().size(), 2u);
  EXPECT_TRUE(asked.asked()[0].save);
  EXPECT_EQ(asked.asked()[0].default_name, "progetto");
  EXPECT_EQ(asked.asked()[0].filters[0].name, "text ");
  EXPECT_EQ(asked.asked()[0].filters[0].patterns, (std::vector<std::string>{"*.txt"}));
  EXPECT_EQ(asked.asked()[1].filters[0].patterns, (std::vector<std::string>{"*.png"}));
  const int h = file_text_open_write(far);
  EXPECT_GE(h, 1) << "a chosen path is written where it is";
  file_text_close(h);
  EXPECT_TRUE(fs::exists(far));
  platform::set_file_chooser(nullptr);

  const std::vector<platform::FileFilter> filters = file_filters("Immagini|*.png;*.jpg|Tutti|*.*");
  ASSERT_EQ(filters.size(), 2u);
  EXPECT_EQ(filters[0].patterns, (std::vector<std::string>{"*.png", "*.jpg"}));
  EXPECT_EQ(filters[1].name, "Tutti");
}

TEST_F(FileNames, UrlOpenHandsAddressesAndSavedFilesToTheDesktop) {
  platform::set_headless(true);
  platform::set_log(debug_output);
  save_.write("pagina.html", "<p>");
  EXPECT_EQ(debug_lines([] {
              url_open("https://esempio.it/velant");
              url_open("pagina.html");
            }),
            "url_open: https://esempio.it/velant\nurl_open: file://" + (save_ / "pagina.html").string() + "\n");
  EXPECT_FATAL(url_open("mancante.html"),
               "Protocol missing from URL. Should start with http, https, mailto etc or reference a saved or included "
               "file.");
  EXPECT_FATAL(url_open("1a:b"), "Requested URI protocol is not supported.");
  EXPECT_FATAL(call_builtin("url_open", {}), "Illegal argument count");
  platform::set_log(nullptr);
}

}  // namespace
