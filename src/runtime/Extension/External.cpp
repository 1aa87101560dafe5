// The external function table: define, call and free, and their built-ins.
#include "runtime/Extension/External.h"

#include <algorithm>
#include <bit>
#include <cstdarg>
#include <cstdio>
#include <filesystem>
#include <vector>

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Error.h"
#include "runtime/Extension/LibraryCallbacks.h"
#include "runtime/Code/Registration.h"
#include "runtime/Platform/SharedLibrary.h"

namespace {

// Rows are only touched by the main thread, which runs all program code.
std::vector<DLL_RFunction> g_rows;

std::string format_text(const char* format, ...) __attribute__((format(printf, 1, 2)));
std::string format_text(const char* format, ...) {
  va_list args;
  va_start(args, format);
  va_list again;
  va_copy(again, args);
  const int length = std::vsnprintf(nullptr, 0, format, args);
  va_end(args);
  std::string text(static_cast<size_t>(std::max(length, 0)), '\0');
  std::vsnprintf(text.data(), text.size() + 1, format, again);
  va_end(again);
  return text;
}

// Where a library name points: the bundle folder, then the save area, then
// the name as it is. Until the file module maps those folders, the
// executable's folder stands for the bundle and the working directory for
// the save area; that module will take this function over.
std::string resolve_library_name(std::string_view name) {
  namespace fs = std::filesystem;
  if (name.empty()) return {};
  std::error_code error;
  const fs::path folders[] = {fs::path(platform::executable_folder()), fs::current_path(error)};
  for (const fs::path& folder : folders) {
    if (folder.empty()) continue;
    const fs::path candidate = folder / fs::path(name);
    if (fs::is_regular_file(candidate, error)) return candidate.string();
  }
  return std::string(name);
}

int find_row(const std::string& library, const std::string& function) {
  for (size_t i = 0; i < g_rows.size(); ++i) {
    if (g_rows[i].library == library && g_rows[i].function == function) return static_cast<int>(i);
  }
  return -1;
}

struct FoundRoutine {
  void* routine = nullptr;
  ExternalNameForm form = ExternalNameForm::Plain;
};

// Looks for the function by its plain name, then decorated with the bytes
// of its arguments (4 each), then as a C++ routine with the built-in
// signature.
FoundRoutine find_routine(void* library, const std::string& name, int argument_count) {
  const std::string decorated = "_" + name + "@" + std::to_string(4 * argument_count);
  // A C++ routine `void name(RValue&, CInstance*, CInstance*, int, RValue*)`
  // at global scope, under the name this compiler's ABI gives it, and under
  // the name of the other widespread C++ name mangling scheme.
  const std::string builtin_names[] = {
      "_Z" + std::to_string(name.size()) + name + "R6RValueP9CInstanceS2_iPS_",
      "?" + name + "@@YAXAEAURValue@@PEAVCInstance@@1HPEAU1@@Z",
  };
  if (void* routine = platform::library_symbol(library, name.c_str())) return {routine, ExternalNameForm::Plain};
  if (void* routine = platform::library_symbol(library, decorated.c_str())) {
    return {routine, ExternalNameForm::Decorated};
  }
  for (const std::string& builtin_name : builtin_names) {
    if (void* routine = platform::library_symbol(library, builtin_name.c_str())) {
      return {routine, ExternalNameForm::Builtin};
    }
  }
  return {};
}

// The argument types in words, for the debug line of a function not found.
std::string argument_types_text(std::span<const int32_t> types) {
  std::string text;
  for (int32_t type : types) {
    if (!text.empty()) text += ", ";
    text += type == EXTERNAL_TYPE_NUMBER ? "number" : "string";
  }
  return text;
}

void report_load_failure(const std::string& path, const std::string& function, const platform::LibraryError& error) {
  std::string machine_type, process_type;
  if (error.file_machine != 0) {
    machine_type = " Machine type " + std::to_string(error.file_machine);
    process_type = ", game is type " + std::to_string(error.process_machine);
  }
  debug_output(format_text("LoadLibraryW(\"%s\") for function \"%s\" failed with error code %d (\"%s\")%s%s\n",
                           path.c_str(), function.c_str(), error.code, error.text.c_str(), machine_type.c_str(),
                           process_type.c_str()));
}

// Hands the runtime's entry points to a library's "RegisterCallbacks".
void register_callbacks(void* routine) {
  using Register = void (*)(void*, void*, void*, void*);
  const LibraryCallbacks& entries = library_callbacks();
  reinterpret_cast<Register>(routine)(reinterpret_cast<void*>(entries.make_async_event),
                                      reinterpret_cast<void*>(entries.make_map),
                                      reinterpret_cast<void*>(entries.map_add_number),
                                      reinterpret_cast<void*>(entries.map_add_string));
}

// An argument as a routine receives it: numbers of every kind as a double,
// a string as its text, a ptr as itself, anything else as 0.
ExternalSlot slot_of(const RValue& v) {
  switch (v.kind()) {
    case Kind::Number:
    case Kind::Bool:
      return std::bit_cast<ExternalSlot>(v.real);
    case Kind::Int32:
    case Kind::Ref:
      return std::bit_cast<ExternalSlot>(static_cast<double>(v.i32));
    case Kind::Int64:
      return std::bit_cast<ExternalSlot>(static_cast<double>(v.i64));
    case Kind::String:
      return reinterpret_cast<uintptr_t>(v.c_str());
    case Kind::Ptr:
      return reinterpret_cast<uintptr_t>(v.ptr);
    default:
      return 0;
  }
}

BUILTIN_ADAPTER(external_define) {
  const int32_t count = argc >= 5 ? arg_int32(args, 4) : -1;
  if (argc < 5 || argc != count + 5) {
    ReportError("Wrong number of arguments to external_define()");
    return;
  }
  // The call kind (argument 3) chooses between the two calling conventions
  // of 32-bit machines; a 64-bit machine has one, so it isn't read.
  std::vector<int32_t> types(static_cast<size_t>(count));
  for (int32_t i = 0; i < count; ++i) types[static_cast<size_t>(i)] = arg_int32(args, 5 + i);
  result = RValue::number(external_define(arg_text(args, 0), arg_text(args, 1), arg_int32(args, 3), types));
}

BUILTIN_ADAPTER(external_call) {
  if (argc < 1) {
    result = RValue::number(0);
    return;
  }
  result = external_call(arg_int32(args, 0), argc - 1, args + 1, self, other);
}

BUILTIN_ADAPTER(external_free) {
  if (argc == 0) external_free();
  else external_free(arg_text(args, 0));
}

}  // namespace

int external_define(std::string_view library, std::string_view function, int32_t result_type,
                    std::span<const int32_t> argument_types) {
  const int count = static_cast<int>(argument_types.size());
  if (count > EXTERNAL_MAX_ARGUMENTS) {
    ReportError("DLL functions can have at most 16 arguments");
    return -1;
  }
  if (count > EXTERNAL_MAX_MIXED_ARGUMENTS &&
      std::any_of(argument_types.begin(), argument_types.end(), [](int32_t t) { return t != EXTERNAL_TYPE_NUMBER; })) {
    ReportError("DLL functions with more than 4 arguments cannot have string arguments");
    return -1;
  }
  const std::string path = resolve_library_name(library);
  const std::string name(function);
  int index = find_row(path, name);
  if (index < 0 || !g_rows[static_cast<size_t>(index)].routine) {
    platform::LibraryError error;
    void* handle = platform::library_open(path, error);
    if (!handle) {
      report_load_failure(path, name, error);
      ReportError("Error defining an external function.");
      return -1;
    }
    const FoundRoutine found = find_routine(handle, name, count);
    if (!found.routine) {
      debug_output(format_text("Could not find function \"%s\" in \"%s\" with argument types [%s].\n", name.c_str(),
                               path.c_str(), argument_types_text(argument_types).c_str()));
      platform::library_close(handle);
      return -1;
    }
    if (index < 0) {
      index = static_cast<int>(g_rows.size());
      g_rows.emplace_back();
    }
    DLL_RFunction& row = g_rows[static_cast<size_t>(index)];
    row.library = path;
    row.library_handle = handle;
    row.function = name;
    row.routine = found.routine;
    row.name_form = found.form;
  }
  DLL_RFunction& row = g_rows[static_cast<size_t>(index)];
  row.argument_count = count;
  std::fill(std::begin(row.argument_types), std::end(row.argument_types), EXTERNAL_TYPE_NUMBER);
  std::copy(argument_types.begin(), argument_types.end(), row.argument_types);
  row.result_type = result_type;
  if (name.find("RegisterCallbacks") != std::string::npos && row.name_form != ExternalNameForm::Builtin) {
    register_callbacks(row.routine);
  }
  return index;
}

RValue external_call(int index, int argc, RValue* args, CInstance* self, CInstance* other) {
  if (index < 0) return RValue::number(-1);
  const DLL_RFunction* row = external_row(index);
  if (!row || !row->routine || argc != row->argument_count) return RValue::number(0);
  // Copied out: the routine may define functions itself and move the rows.
  void* const routine = row->routine;
  if (row->name_form == ExternalNameForm::Builtin) {
    RValue result = RValue::undefined();
    reinterpret_cast<BuiltinRoutine>(routine)(result, self, other, argc, args);
    return result;
  }
  ExternalSlot slots[EXTERNAL_MAX_ARGUMENTS];
  unsigned pointer_mask = 0;
  for (int i = 0; i < argc; ++i) {
    slots[i] = slot_of(args[i]);
    if (row->argument_types[i] != EXTERNAL_TYPE_NUMBER) pointer_mask |= 1u << i;
  }
  if (row->result_type == EXTERNAL_TYPE_STRING) {
    const char* text = external_invoke_text(routine, argc, pointer_mask, slots);
    return RValue::text(text ? text : "");
  }
  return RValue::number(external_invoke_number(routine, argc, pointer_mask, slots));
}

// The plain behaviour: without a name every library is closed and the
// table starts afresh; with a name only that library's rows lose their
// routine, and keep their index for a later define.
void external_free() {
  for (DLL_RFunction& row : g_rows) platform::library_close(row.library_handle);
  g_rows.clear();
}

void external_free(std::string_view library) {
  const std::string path = resolve_library_name(library);
  for (DLL_RFunction& row : g_rows) {
    if (row.library != path) continue;
    platform::library_close(row.library_handle);
    row.library_handle = nullptr;
    row.routine = nullptr;
  }
}

const DLL_RFunction* external_row(int index) {
  if (index < 0 || static_cast<size_t>(index) >= g_rows.size()) return nullptr;
  return &g_rows[static_cast<size_t>(index)];
}

void register_external_builtins() {
  builtin_register("external_define", builtin_external_define, -1);
  builtin_register("external_call", builtin_external_call, -1);
  builtin_register("external_free", builtin_external_free, -1);
}
