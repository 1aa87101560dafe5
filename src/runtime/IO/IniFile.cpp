#include "runtime/IO/IniFile.h"

#include <algorithm>
#include <charconv>
#include <memory>
#include <utility>
#include <vector>

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Error.h"
#include "runtime/IO/FileNames.h"
#include "runtime/IO/WholeFile.h"

namespace {

struct IniSection {
  std::string name;
  std::vector<std::pair<std::string, std::string>> keys;  // the newest first
};

struct IniFile {
  std::string name;  // as the program gave it: read and written by the file name rule
  std::vector<IniSection> sections;  // the newest first
  bool changed = false;
};

std::unique_ptr<IniFile> g_open;

std::string_view trimmed(std::string_view s) {
  const size_t first = s.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return s.substr(first, s.find_last_not_of(" \t\r") - first + 1);
}

// Reads the text of an INI file: a byte order mark is passed over, lines
// that are neither "[section]" nor "key=value" too, and quotes round a value go.
std::vector<IniSection> parse(std::string_view text) {
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  std::vector<IniSection> sections;
  while (!text.empty()) {
    const size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = trimmed(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.size() >= 2 && line.front() == '[' && line.back() == ']') {
      sections.push_back(IniSection{std::string(line.substr(1, line.size() - 2)), {}});
    } else if (const size_t equals = line.find('='); equals != std::string_view::npos && !sections.empty()) {
      std::string_view value = trimmed(line.substr(equals + 1));
      if (value.size() >= 2 && value.front() == '"' && value.back() == '"') value = value.substr(1, value.size() - 2);
      sections.back().keys.emplace_back(std::string(trimmed(line.substr(0, equals))), std::string(value));
    }
  }
  return sections;
}

std::string text_of(const IniFile& file) {
  std::string text;
  for (const IniSection& section : file.sections) {
    text += "[" + section.name + "]\r\n";
    for (const auto& [key, value] : section.keys) text += key + "=\"" + value + "\"\r\n";
  }
  return text;
}

// The open file; without one, the fatal report with `fatal_words` (null when it is suppressed).
IniFile* open_file(const char* fatal_words) {
  if (!g_open) ReportError("%s", fatal_words);
  return g_open.get();
}

IniSection* section_of(IniFile& file, std::string_view name) {
  const auto found = std::ranges::find(file.sections, name, &IniSection::name);
  return found == file.sections.end() ? nullptr : &*found;
}

const std::string* value_of(std::string_view section, std::string_view key) {
  IniFile* file = open_file("Trying to read from undefined INI file");
  IniSection* s = file ? section_of(*file, section) : nullptr;
  if (!s) return nullptr;
  const auto found = std::ranges::find(s->keys, key, &std::pair<std::string, std::string>::first);
  return found == s->keys.end() ? nullptr : &found->second;
}

// The number at the start of a text, as C's atof reads it; 0 when there is none.
double leading_number(std::string_view text) {
  text = trimmed(text);
  if (text.starts_with('+')) text.remove_prefix(1);
  double value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

void write_out(IniFile& file) {
  if (const std::string path = file_save_path(file.name); !path.empty()) file_write_whole(path, text_of(file));
  file.changed = false;
}

BUILTIN_ADAPTER(ini_open) { ini_open(std::string(arg_text(args, 0))); }
BUILTIN_ADAPTER(ini_close) { result = RValue::text(ini_close()); }
BUILTIN_ADAPTER(ini_read_string) {
  result = RValue::text(ini_read_string(arg_text(args, 0), arg_text(args, 1), arg_text(args, 2)));
}
BUILTIN_ADAPTER(ini_read_real) {
  result = RValue::number(ini_read_real(arg_text(args, 0), arg_text(args, 1), arg_real(args, 2)));
}
BUILTIN_ADAPTER(ini_write_string) { ini_write_string(arg_text(args, 0), arg_text(args, 1), arg_text(args, 2)); }
BUILTIN_ADAPTER(ini_write_real) { ini_write_real(arg_text(args, 0), arg_text(args, 1), arg_real(args, 2)); }
BUILTIN_ADAPTER(ini_section_exists) { result = RValue::boolean(ini_section_exists(arg_text(args, 0))); }
BUILTIN_ADAPTER(ini_key_exists) { result = RValue::boolean(ini_key_exists(arg_text(args, 0), arg_text(args, 1))); }
BUILTIN_ADAPTER(ini_section_delete) { ini_section_delete(arg_text(args, 0)); }
BUILTIN_ADAPTER(ini_key_delete) { ini_key_delete(arg_text(args, 0), arg_text(args, 1)); }

}  // namespace

void ini_open(const std::string& name) {
  if (name.empty()) return;
  if (g_open) write_out(*g_open);
  auto file = std::make_unique<IniFile>();
  file->name = name;
  // A missing file is an empty one.
  std::string text;
  file_read_whole(file_read_path(name), text);
  file->sections = parse(text);
  g_open = std::move(file);
}

std::string ini_close() {
  if (!g_open) return "";
  if (g_open->changed) write_out(*g_open);
  std::string text = text_of(*g_open);
  g_open.reset();
  return text;
}

std::string ini_read_string(std::string_view section, std::string_view key, std::string_view fallback) {
  const std::string* value = value_of(section, key);
  return value ? *value : std::string(fallback);
}

double ini_read_real(std::string_view section, std::string_view key, double fallback) {
  const std::string* value = value_of(section, key);
  return value ? leading_number(*value) : fallback;
}

void ini_write_string(std::string_view section, std::string_view key, std::string_view value) {
  IniFile* open = open_file("Trying to write to undefined INI file");
  if (!open) return;
  IniFile& file = *open;
  if (section == "SYSTEM_COMMAND" && key == "INI_FILE_FLUSH" && value == "TRUE") return write_out(file);
  IniSection* s = section_of(file, section);
  if (!s) s = &*file.sections.insert(file.sections.begin(), IniSection{std::string(section), {}});
  const auto found = std::ranges::find(s->keys, key, &std::pair<std::string, std::string>::first);
  if (found != s->keys.end()) {
    found->second = value;
  } else {
    s->keys.insert(s->keys.begin(), {std::string(key), std::string(value)});
  }
  file.changed = true;
}

void ini_write_real(std::string_view section, std::string_view key, double value) {
  char digits[400];  // the largest double in fixed notation with six decimals fits
  const auto written = std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, 6);
  ini_write_string(section, key, std::string_view(digits, static_cast<size_t>(written.ptr - digits)));
}

bool ini_section_exists(std::string_view section) {
  IniFile* file = open_file("Trying to read from undefined INI file");
  return file && section_of(*file, section);
}

bool ini_key_exists(std::string_view section, std::string_view key) { return value_of(section, key) != nullptr; }

void ini_section_delete(std::string_view section) {
  IniFile* file = open_file("Trying to change undefined INI file");
  if (file && std::erase_if(file->sections, [&](const IniSection& s) { return s.name == section; }) > 0) {
    file->changed = true;
  }
}

void ini_key_delete(std::string_view section, std::string_view key) {
  IniFile* file = open_file("Trying to change undefined INI file");
  IniSection* s = file ? section_of(*file, section) : nullptr;
  if (s && std::erase_if(s->keys, [&](const auto& entry) { return entry.first == key; }) > 0) file->changed = true;
}

void register_ini_builtins() {
  builtin_register("ini_open", builtin_ini_open, 1);
  builtin_register("ini_close", builtin_ini_close, 0);
  builtin_register("ini_read_string", builtin_ini_read_string, 3);
  builtin_register("ini_read_real", builtin_ini_read_real, 3);
  builtin_register("ini_write_string", builtin_ini_write_string, 3);
  builtin_register("ini_write_real", builtin_ini_write_real, 3);
  builtin_register("ini_section_exists", builtin_ini_section_exists, 1);
  builtin_register("ini_key_exists", builtin_ini_key_exists, 2);
  builtin_register("ini_section_delete", builtin_ini_section_delete, 1);
  builtin_register("ini_key_delete", builtin_ini_key_delete, 2);
}
