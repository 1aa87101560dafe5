#include "runtime/Support/DsList.h"

#include <algorithm>
#include <vector>

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Operators.h"
#include "runtime/Support/DsTable.h"

namespace {

// Values equal within this count as the same one, as in every data structure.
constexpr double VALUE_EPSILON = 1e-08;

struct CDS_List {
  std::vector<RValue> elements;
};

DsTable<CDS_List>& lists() {
  static DsTable<CDS_List> table(REF_DS_LIST);
  return table;
}

bool in_range(const CDS_List* l, int32_t index) {
  return l && index >= 0 && static_cast<size_t>(index) < l->elements.size();
}

BUILTIN_ADAPTER(ds_list_create) { result = ds_list_create(); }
BUILTIN_ADAPTER(ds_list_destroy) { ds_list_destroy(args[0]); }
BUILTIN_ADAPTER(ds_list_size) { result = RValue::number(ds_list_size(args[0])); }
BUILTIN_ADAPTER(ds_list_clear) { ds_list_clear(args[0]); }
BUILTIN_ADAPTER(ds_list_add) {
  for (int k = 1; k < argc; ++k) ds_list_add(args[0], args[k]);
}
BUILTIN_ADAPTER(ds_list_find_value) { result = ds_list_find_value(args[0], arg_int32(args, 1)); }
BUILTIN_ADAPTER(ds_list_find_index) { result = RValue::number(ds_list_find_index(args[0], args[1])); }
BUILTIN_ADAPTER(ds_list_replace) { ds_list_replace(args[0], arg_int32(args, 1), args[2]); }
BUILTIN_ADAPTER(ds_list_insert) { ds_list_insert(args[0], arg_int32(args, 1), args[2]); }
BUILTIN_ADAPTER(ds_list_delete) { ds_list_delete(args[0], arg_int32(args, 1)); }

}  // namespace

RValue ds_list_create() { return lists().create(); }
void ds_list_destroy(const RValue& list) { lists().destroy(list); }

int32_t ds_list_size(const RValue& list) {
  const CDS_List* l = lists().find(list);
  return l ? static_cast<int32_t>(l->elements.size()) : 0;
}

void ds_list_clear(const RValue& list) {
  if (CDS_List* l = lists().find(list)) l->elements.clear();
}

void ds_list_add(const RValue& list, const RValue& value) {
  if (CDS_List* l = lists().find(list)) l->elements.push_back(value);
}

RValue ds_list_find_value(const RValue& list, int32_t index) {
  const CDS_List* l = lists().find(list);
  return in_range(l, index) ? l->elements[static_cast<size_t>(index)] : RValue::undefined();
}

int32_t ds_list_find_index(const RValue& list, const RValue& value) {
  const CDS_List* l = lists().find(list);
  if (!l) return -1;
  const auto found = std::ranges::find_if(
      l->elements, [&](const RValue& element) { return CompareValues(element, value, VALUE_EPSILON, false) == 0; });
  return found == l->elements.end() ? -1 : static_cast<int32_t>(found - l->elements.begin());
}

void ds_list_replace(const RValue& list, int32_t index, const RValue& value) {
  CDS_List* l = lists().find(list);
  if (in_range(l, index)) l->elements[static_cast<size_t>(index)] = value;
}

void ds_list_insert(const RValue& list, int32_t index, const RValue& value) {
  CDS_List* l = lists().find(list);
  if (l && index >= 0 && static_cast<size_t>(index) <= l->elements.size()) {
    l->elements.insert(l->elements.begin() + index, value);
  }
}

void ds_list_delete(const RValue& list, int32_t index) {
  CDS_List* l = lists().find(list);
  if (in_range(l, index)) l->elements.erase(l->elements.begin() + index);
}

void register_ds_list_builtins() {
  builtin_register("ds_list_create", builtin_ds_list_create, 0);
  builtin_register("ds_list_destroy", builtin_ds_list_destroy, 1);
  builtin_register("ds_list_size", builtin_ds_list_size, 1);
  builtin_register("ds_list_clear", builtin_ds_list_clear, 1);
  builtin_register("ds_list_add", builtin_ds_list_add, -1);
  builtin_register("ds_list_find_value", builtin_ds_list_find_value, 2);
  builtin_register("ds_list_find_index", builtin_ds_list_find_index, 2);
  builtin_register("ds_list_replace", builtin_ds_list_replace, 3);
  builtin_register("ds_list_insert", builtin_ds_list_insert, 3);
  builtin_register("ds_list_delete", builtin_ds_list_delete, 2);
}
