#include "runtime/IO/DesktopFunctions.h"

#include "runtime/Platform/Desktop.h"

#include <cctype>
#include <cstring>

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Error.h"
#include "runtime/IO/FileNames.h"

namespace {

std::vector<std::string> split(const std::string& text, char separator) {
  std::vector<std::string> parts;
  size_t from = 0;
  for (size_t at; (at = text.find(separator, from)) != std::string::npos; from = at + 1) {
    parts.push_back(text.substr(from, at - from));
  }
  parts.push_back(text.substr(from));
  return parts;
}

std::string as_pattern(const std::string& text) { return text.starts_with('.') ? "*" + text : text; }

std::string choose_file(bool save, const std::string& filter, const std::string& default_name) {
  std::string path = platform::file_chooser().choose({save, file_filters(filter), default_name});
  if (!path.empty()) file_allow(path);
  return path;
}

BUILTIN_ADAPTER(url_open) {
  if (argc != 1 || !args[0].is(Kind::String)) return ReportError("Illegal argument count");
  url_open(std::string(args[0].string_view()));
}

// `path` as the path of a file:// address: what isn't a plain character is written as %XX.
std::string address_of(const std::string& path) {
  static constexpr char HEX[] = "0123456789ABCDEF";
  std::string out = "file://";
  for (const unsigned char c : path) {
    if (std::isalnum(c) || std::strchr("/-._~", c)) {
      out += static_cast<char>(c);
    } else {
      out += '%';
      out += HEX[c >> 4];
      out += HEX[c & 15];
    }
  }
  return out;
}
BUILTIN_ADAPTER(get_open_filename) {
  result = RValue::text(get_open_filename(std::string(arg_text(args, 0)), std::string(arg_text(args, 1))));
}
BUILTIN_ADAPTER(get_save_filename) {
  result = RValue::text(get_save_filename(std::string(arg_text(args, 0)), std::string(arg_text(args, 1))));
}

}  // namespace

void url_open(const std::string& url) {
  const size_t colon = url.find(':');
  if (colon == std::string::npos || colon == 1) {
    // A file of the program's: a saved one first, then one of Velant's data.
    const std::string file = file_read_path(url);
    if (file.empty()) {
      return ReportError(
          "Protocol missing from URL. Should start with http, https, mailto etc or reference a saved or included "
          "file.");
    }
    if (!platform::open_url(address_of(file))) ReportError("Requested URI protocol is not supported.");
    return;
  }
  if (!platform::open_url(url)) ReportError("Requested URI protocol is not supported.");
}

void folder_open(const std::string& path) {
  if (!platform::open_url(address_of(path))) debug_output("Impossibile aprire la cartella " + path + "\n");
}

std::vector<platform::FileFilter> file_filters(const std::string& filter) {
  if (filter.empty()) return {};
  if (filter.find('|') == std::string::npos) return {{filter, {as_pattern(filter)}}};
  std::vector<platform::FileFilter> filters;
  const std::vector<std::string> parts = split(filter, '|');
  for (size_t k = 0; k + 1 < parts.size(); k += 2) {
    platform::FileFilter f{parts[k], {}};
    for (const std::string& pattern : split(parts[k + 1], ';')) {
      if (!pattern.empty()) f.patterns.push_back(as_pattern(pattern));
    }
    filters.push_back(std::move(f));
  }
  return filters;
}

std::string get_open_filename(const std::string& filter, const std::string& default_name) {
  return choose_file(false, filter, default_name);
}

std::string get_save_filename(const std::string& filter, const std::string& default_name) {
  return choose_file(true, filter, default_name);
}

void register_desktop_builtins() {
  builtin_register("url_open", builtin_url_open, 1);
  builtin_register("get_open_filename", builtin_get_open_filename, 2);
  builtin_register("get_save_filename", builtin_get_save_filename, 2);
}
