#include "environment/editor/settings.h"

#include "runtime/IO/IniFile.h"

namespace {

constexpr const char* SECTION = "Velant";
constexpr const char* FILE_NAME = "setting.ini";

// Opens the file, runs `use` on it, and closes it: written back when changed.
template <class Use>
auto with_settings(Use use) {
  ini_open(FILE_NAME);
  auto result = use();
  ini_close();
  return result;
}

}  // namespace

double read_setting(const std::string& key, double fallback) {
  return with_settings([&] { return ini_read_real(SECTION, key, fallback); });
}

std::string read_setting_text(const std::string& key, const std::string& fallback) {
  return with_settings([&] { return ini_read_string(SECTION, key, fallback); });
}

void write_setting(const std::string& key, double value) {
  with_settings([&] {
    ini_write_real(SECTION, key, value);
    return 0;
  });
}

void write_setting_text(const std::string& key, const std::string& value) {
  with_settings([&] {
    ini_write_string(SECTION, key, value);
    return 0;
  });
}
