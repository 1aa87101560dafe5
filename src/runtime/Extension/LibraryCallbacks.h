// The entry points that a library's "RegisterCallbacks" routine receives.
// With them the library's own threads report finished work the way the
// runtime's workers do: make a map, fill it, queue it as an asynchronous
// event, which the frame loop delivers with the map as `async_load`.
#pragma once

struct LibraryCallbacks {
  // Queues the map for the Other event `other_subtype`.
  void (*make_async_event)(int map, int other_subtype);
  // A new map, filled from `count` entries of (const char* key, double
  // number, const char* text): a text that isn't null is the value,
  // otherwise the number is. Returns the map's index.
  int (*make_map)(int count, ...);
  // Adds a number or a text under `key`; false for a bad map or a key
  // that is there already.
  bool (*map_add_number)(int map, const char* key, double value);
  bool (*map_add_string)(int map, const char* key, const char* value);
};

// The entry points, in the order the library receives them.
const LibraryCallbacks& library_callbacks();
