#include "runtime/Support/AssetIndex.h"

#include <string>
#include <unordered_map>
#include <vector>

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Registration.h"

namespace {

struct Entry {
  AssetKind kind;
  int32_t index;
};

struct Assets {
  std::unordered_map<std::string, Entry> by_name;
  std::unordered_map<uint32_t, std::vector<std::string>> names;  // by kind, in index order
};

Assets& assets() {
  static Assets a;
  return a;
}

BUILTIN_ADAPTER(asset_get_index) { result = asset_get_index(arg_text(args, 0)); }

}  // namespace

int32_t asset_add(AssetKind kind, std::string_view name) {
  Assets& a = assets();
  std::string key(name);
  if (auto it = a.by_name.find(key); it != a.by_name.end() && it->second.kind == kind) return it->second.index;
  std::vector<std::string>& list = a.names[static_cast<uint32_t>(kind)];
  const auto index = static_cast<int32_t>(list.size());
  list.push_back(key);
  a.by_name.insert_or_assign(std::move(key), Entry{kind, index});
  return index;
}

std::string_view asset_name(AssetKind kind, int32_t index) {
  const Assets& a = assets();
  auto it = a.names.find(static_cast<uint32_t>(kind));
  if (it == a.names.end() || index < 0 || index >= static_cast<int32_t>(it->second.size())) return {};
  return it->second[static_cast<size_t>(index)];
}

RValue asset_get_index(std::string_view name) {
  const Assets& a = assets();
  auto it = a.by_name.find(std::string(name));
  if (it == a.by_name.end()) return RValue::number(-1);
  return RValue::ref(static_cast<uint32_t>(it->second.kind), it->second.index);
}

void register_asset_builtins() { builtin_register("asset_get_index", builtin_asset_get_index, 1); }
