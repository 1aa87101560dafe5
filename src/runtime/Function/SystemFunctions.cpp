#include "runtime/Function/SystemFunctions.h"

#include <cstdlib>

#include "runtime/Code/Builtins.h"
#include "runtime/Platform/Clipboard.h"
#include "runtime/Platform/Network.h"

void clipboard_set_text(const std::string& text) { platform::clipboard_set_text(text); }
std::string clipboard_get_text() { return platform::clipboard_get_text(); }
bool clipboard_has_text() { return platform::clipboard_has_text(); }

std::string environment_get_variable(const std::string& name) {
  const char* value = std::getenv(name.c_str());
  return value ? value : "";
}

bool os_is_network_connected() { return platform::network_connected(); }

namespace {

BUILTIN_ADAPTER(clipboard_set_text) { clipboard_set_text(std::string(arg_text(args, 0))); }
BUILTIN_ADAPTER(clipboard_get_text) { result = RValue::text(clipboard_get_text()); }
BUILTIN_ADAPTER(clipboard_has_text) { result = RValue::boolean(clipboard_has_text()); }
BUILTIN_ADAPTER(os_is_network_connected) { result = RValue::boolean(os_is_network_connected()); }
BUILTIN_ADAPTER(environment_get_variable) {
  result = RValue::text(environment_get_variable(std::string(arg_text(args, 0))));
}

}  // namespace

void register_system_builtins() {
  builtin_register("clipboard_set_text", builtin_clipboard_set_text, 1);
  builtin_register("clipboard_get_text", builtin_clipboard_get_text, 0);
  builtin_register("clipboard_has_text", builtin_clipboard_has_text, 0);
  builtin_register("environment_get_variable", builtin_environment_get_variable, 1);
  builtin_register("os_is_network_connected", builtin_os_is_network_connected, 0);
}
