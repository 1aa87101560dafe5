// The value built-ins by name: real, bool, string, is_string.
#include "runtime/Code/Builtins.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Code/Registration.h"

namespace {

BUILTIN_ADAPTER(real) { result = RValue::number(value_to_real(args[0])); }

BUILTIN_ADAPTER(bool) { result = RValue::boolean(value_to_bool(args[0])); }

// A string argument is handed back as it is: its text is its text form.
BUILTIN_ADAPTER(string) {
  if (args[0].is(Kind::String)) {
    result = args[0];
  } else {
    result = RValue::text(value_to_text(args[0]));
  }
}

// The whole kind word must be 1, not only its low bits.
BUILTIN_ADAPTER(is_string) { result = RValue::boolean(args[0].kind_word == static_cast<uint32_t>(Kind::String)); }

}  // namespace

void register_value_builtins() {
  builtin_register("real", builtin_real, 1);
  builtin_register("bool", builtin_bool, 1);
  builtin_register("string", builtin_string, 1);
  builtin_register("is_string", builtin_is_string, 1);
}
