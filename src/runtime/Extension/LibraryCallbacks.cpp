// Entry points for libraries; they may run on any thread of the library, so
// they only touch the map table and the asynchronous queue, both locked.
#include "runtime/Extension/LibraryCallbacks.h"

#include <cstdarg>

#include "runtime/Support/AsyncQueue.h"
#include "runtime/Support/DsMap.h"

namespace {

bool add_number(int map, const char* key, double value) {
  return key && ds_map_add_from_worker(map, key, RValue::number(value));
}

bool add_string(int map, const char* key, const char* value) {
  return key && ds_map_add_from_worker(map, key, RValue::text(value ? value : ""));
}

int make_map(int count, ...) {
  const int map = ds_map_create().ref_index();
  va_list entries;
  va_start(entries, count);
  for (int i = 0; i < count; ++i) {
    const char* key = va_arg(entries, const char*);
    const double number = va_arg(entries, double);
    const char* text = va_arg(entries, const char*);
    if (text) add_string(map, key, text);
    else add_number(map, key, number);
  }
  va_end(entries);
  return map;
}

void make_async_event(int map, int other_subtype) { async_event_queue(map, other_subtype); }

}  // namespace

const LibraryCallbacks& library_callbacks() {
  static const LibraryCallbacks callbacks{make_async_event, make_map, add_number, add_string};
  return callbacks;
}
