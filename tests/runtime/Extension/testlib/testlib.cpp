// A library for the external-call tests, loaded at run time. It stands for
// a user's library: it doesn't link the runtime, so it touches values only
// through their plain fields.
#include <cstdio>
#include <cstring>
#include <string>

#include "runtime/Code/RValue.h"

#define TESTLIB_EXPORT extern "C" __attribute__((visibility("default")))

namespace {

// Returned texts must outlive the call; the caller copies them at once.
std::string g_text;

const char* keep(std::string text) {
  g_text = std::move(text);
  return g_text.c_str();
}

std::string number_text(double d) {
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%g", d);
  return buffer;
}

// The entry points of the runtime, as "RegisterCallbacks" hands them over.
using MakeAsyncEvent = void (*)(int map, int other_subtype);
using MakeMap = int (*)(int count, ...);
using MapAddNumber = bool (*)(int map, const char* key, double value);
using MapAddString = bool (*)(int map, const char* key, const char* value);
MakeAsyncEvent g_make_async_event = nullptr;
MakeMap g_make_map = nullptr;
MapAddNumber g_map_add_number = nullptr;
MapAddString g_map_add_string = nullptr;

}  // namespace

TESTLIB_EXPORT double velant_test_answer() { return 42.0; }

TESTLIB_EXPORT double velant_test_add(double a, double b) { return a + b; }

// Texts and numbers in every other position; the result shows which
// argument arrived where.
TESTLIB_EXPORT const char* velant_test_join_sdsd(const char* a, double b, const char* c, double d) {
  return keep(std::string(a) + "|" + number_text(b) + "|" + c + "|" + number_text(d));
}

TESTLIB_EXPORT const char* velant_test_join_dssd(double a, const char* b, const char* c, double d) {
  return keep(number_text(a) + "|" + b + "|" + c + "|" + number_text(d));
}

// Numbers from the text lengths and the numbers, each weighted by its place.
TESTLIB_EXPORT double velant_test_weigh_ddds(double a, double b, double c, const char* d) {
  return a + 10 * b + 100 * c + 1000 * static_cast<double>(std::strlen(d));
}

TESTLIB_EXPORT const char* velant_test_greet(const char* name) { return keep(std::string("ciao ") + name); }

// Reads a double through a pointer argument.
TESTLIB_EXPORT double velant_test_read_double(const double* p) { return p ? *p : -1.0; }

// The sum of the arguments weighted by their place (1 to 16).
TESTLIB_EXPORT double velant_test_sum16(double a1, double a2, double a3, double a4, double a5, double a6, double a7,
                                        double a8, double a9, double a10, double a11, double a12, double a13,
                                        double a14, double a15, double a16) {
  const double all[] = {a1, a2, a3, a4, a5, a6, a7, a8, a9, a10, a11, a12, a13, a14, a15, a16};
  double sum = 0;
  for (int i = 0; i < 16; ++i) sum += (i + 1) * all[i];
  return sum;
}

// A routine with the built-in signature: the argument count times 1000 plus
// the numbers given, and whether `self` came through (100).
__attribute__((visibility("default"))) void velant_test_native(RValue& result, CInstance* self, CInstance*,
                                                               int argc, RValue* args) {
  double sum = 1000.0 * argc + (self ? 100.0 : 0.0);
  for (int i = 0; i < argc; ++i) sum += args[i].real;
  result.real = sum;
  result.kind_word = 0;
}

TESTLIB_EXPORT void velant_test_RegisterCallbacks(void* make_async_event, void* make_map, void* map_add_number,
                                                  void* map_add_string) {
  g_make_async_event = reinterpret_cast<MakeAsyncEvent>(make_async_event);
  g_make_map = reinterpret_cast<MakeMap>(make_map);
  g_map_add_number = reinterpret_cast<MapAddNumber>(map_add_number);
  g_map_add_string = reinterpret_cast<MapAddString>(map_add_string);
}

// Reports finished work as the runtime's workers do: a map with "source"
// (made by make_map), "value" and "text", queued for the Other event
// `subtype`. Gives the map's index, or -1 before the callbacks arrived.
TESTLIB_EXPORT double velant_test_report(double subtype, double value, const char* text) {
  if (!g_make_map) return -1;
  const int map = g_make_map(1, "source", 0.0, "testlib");
  g_map_add_number(map, "value", value);
  g_map_add_string(map, "text", text);
  g_make_async_event(map, static_cast<int>(subtype));
  return map;
}
