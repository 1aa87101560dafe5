// The buffer built-ins as called by name: each adapter reads its arguments
// with the getters and hands them to the function of the same name.
#include "runtime/Buffer/Buffer.h"
#include "runtime/Code/Builtins.h"
#include "runtime/Code/Registration.h"

namespace {

BUILTIN_ADAPTER(buffer_create) {
  result = RValue::number(buffer_create(arg_int32(args, 0), arg_int32(args, 1), arg_int32(args, 2)));
}
BUILTIN_ADAPTER(buffer_exists) { result = buffer_exists(arg_int32(args, 0)); }
BUILTIN_ADAPTER(buffer_delete) { buffer_delete(arg_int32(args, 0)); }
BUILTIN_ADAPTER(buffer_seek) {
  result = RValue::number(buffer_seek(arg_int32(args, 0), arg_int32(args, 1), arg_int32(args, 2)));
}
BUILTIN_ADAPTER(buffer_tell) { result = RValue::number(buffer_tell(arg_int32(args, 0))); }
BUILTIN_ADAPTER(buffer_get_size) { result = RValue::number(buffer_get_size(arg_int32(args, 0))); }
BUILTIN_ADAPTER(buffer_get_used_size) { result = RValue::number(buffer_get_used_size(arg_int32(args, 0))); }
BUILTIN_ADAPTER(buffer_get_address) { result = buffer_get_address(arg_int32(args, 0)); }
BUILTIN_ADAPTER(buffer_resize) { buffer_resize(arg_int32(args, 0), arg_int32(args, 1)); }
BUILTIN_ADAPTER(buffer_set_used_size) { buffer_set_used_size(arg_int32(args, 0), arg_int32(args, 1)); }
BUILTIN_ADAPTER(buffer_read) { result = buffer_read(arg_int32(args, 0), arg_int32(args, 1)); }
BUILTIN_ADAPTER(buffer_write) {
  result = RValue::number(buffer_write(arg_int32(args, 0), arg_int32(args, 1), args[2]));
}
BUILTIN_ADAPTER(buffer_copy) {
  buffer_copy(arg_int32(args, 0), arg_int32(args, 1), arg_int32(args, 2), arg_int32(args, 3), arg_int32(args, 4));
}
BUILTIN_ADAPTER(buffer_fill) {
  buffer_fill(arg_int32(args, 0), arg_int32(args, 1), arg_int32(args, 2), args[3], arg_int32(args, 4));
}

}  // namespace

void register_buffer_builtins() {
  builtin_register("buffer_create", builtin_buffer_create, 3);
  builtin_register("buffer_exists", builtin_buffer_exists, 1);
  builtin_register("buffer_delete", builtin_buffer_delete, 1);
  builtin_register("buffer_seek", builtin_buffer_seek, 3);
  builtin_register("buffer_tell", builtin_buffer_tell, 1);
  builtin_register("buffer_get_size", builtin_buffer_get_size, 1);
  builtin_register("buffer_get_used_size", builtin_buffer_get_used_size, 1);
  builtin_register("buffer_get_address", builtin_buffer_get_address, 1);
  builtin_register("buffer_resize", builtin_buffer_resize, 2);
  builtin_register("buffer_set_used_size", builtin_buffer_set_used_size, 2);
  builtin_register("buffer_read", builtin_buffer_read, 2);
  builtin_register("buffer_write", builtin_buffer_write, 3);
  builtin_register("buffer_copy", builtin_buffer_copy, 5);
  builtin_register("buffer_fill", builtin_buffer_fill, 5);
}
