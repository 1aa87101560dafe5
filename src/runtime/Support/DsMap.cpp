// The ds_map table and its built-ins.
#include "runtime/Support/DsMap.h"

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Code/Error.h"
#include "runtime/Code/Registration.h"
#include "runtime/Support/DsTable.h"

namespace {

// Number keys compare with an epsilon of their own, finer than the
// language's 1e-05, so that keys close together stay apart.
constexpr double KEY_EPSILON = 1e-08;

struct MapKey {
  bool is_text;
  double number;
  std::string text;
};

// Numbers order before texts; numbers within the epsilon are one key.
struct MapKeyLess {
  bool operator()(const MapKey& a, const MapKey& b) const {
    if (a.is_text != b.is_text) return !a.is_text;
    if (a.is_text) return a.text < b.text;
    return b.number - a.number > KEY_EPSILON;
  }
};

struct CDS_Map {
  std::map<MapKey, RValue, MapKeyLess> entries;
};

std::mutex g_ds_mutex;  // "DsMutex"
DsTable<CDS_Map> g_maps(REF_DS_MAP);

// The key a value stands for; false after the fatal report of a kind that
// can't be a key.
bool make_key(const RValue& v, MapKey& key) {
  switch (v.kind()) {
    case Kind::String:
      key = {true, 0.0, std::string(v.string_view())};
      return true;
    case Kind::Number:
    case Kind::Bool:
    case Kind::Int32:
    case Kind::Int64:
      key = {false, value_to_real(v), {}};
      return true;
    default:
      ReportError("Illegal key type for ds_map");
      return false;
  }
}

// The live map a handle names; the caller holds the lock.
CDS_Map* map_of(const RValue& handle) { return g_maps.find(handle); }

BUILTIN_ADAPTER(ds_map_create) { result = ds_map_create(); }
BUILTIN_ADAPTER(ds_map_destroy) { ds_map_destroy(args[0]); }
BUILTIN_ADAPTER(ds_map_exists) { result = RValue::boolean(ds_map_exists(args[0], args[1])); }
BUILTIN_ADAPTER(ds_map_add) { result = RValue::boolean(ds_map_add(args[0], args[1], args[2])); }
BUILTIN_ADAPTER(ds_map_find_value) { result = ds_map_find_value(args[0], args[1]); }
BUILTIN_ADAPTER(ds_map_size) { result = RValue::number(ds_map_size(args[0])); }

}  // namespace

RValue ds_map_create() {
  std::lock_guard<std::mutex> lock(g_ds_mutex);
  return g_maps.create();
}

void ds_map_destroy(const RValue& map) {
  std::lock_guard<std::mutex> lock(g_ds_mutex);
  g_maps.destroy(map);
}

bool ds_map_exists(const RValue& map, const RValue& key) {
  std::lock_guard<std::mutex> lock(g_ds_mutex);
  CDS_Map* m = map_of(map);
  MapKey k;
  return m && make_key(key, k) && m->entries.count(k) != 0;
}

bool ds_map_add(const RValue& map, const RValue& key, const RValue& value) {
  std::lock_guard<std::mutex> lock(g_ds_mutex);
  CDS_Map* m = map_of(map);
  MapKey k;
  return m && make_key(key, k) && m->entries.emplace(std::move(k), value).second;
}

RValue ds_map_find_value(const RValue& map, const RValue& key) {
  std::lock_guard<std::mutex> lock(g_ds_mutex);
  CDS_Map* m = map_of(map);
  MapKey k;
  if (!m || !make_key(key, k)) return RValue::undefined();
  auto it = m->entries.find(k);
  return it == m->entries.end() ? RValue::undefined() : it->second;
}

int32_t ds_map_size(const RValue& map) {
  std::lock_guard<std::mutex> lock(g_ds_mutex);
  CDS_Map* m = map_of(map);
  return m ? static_cast<int32_t>(m->entries.size()) : 0;
}

bool ds_map_add_from_worker(int32_t map, std::string_view key, RValue value) {
  std::lock_guard<std::mutex> lock(g_ds_mutex);
  CDS_Map* m = g_maps.at(map);
  return m && m->entries.emplace(MapKey{true, 0.0, std::string(key)}, std::move(value)).second;
}

void register_ds_map_builtins() {
  builtin_register("ds_map_create", builtin_ds_map_create, 0);
  builtin_register("ds_map_destroy", builtin_ds_map_destroy, 1);
  builtin_register("ds_map_exists", builtin_ds_map_exists, 2);
  builtin_register("ds_map_add", builtin_ds_map_add, 3);
  builtin_register("ds_map_find_value", builtin_ds_map_find_value, 2);
  builtin_register("ds_map_size", builtin_ds_map_size, 1);
}
