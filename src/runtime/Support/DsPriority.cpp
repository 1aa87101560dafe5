#include "runtime/Support/DsPriority.h"

#include <vector>

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Operators.h"
#include "runtime/Support/DsTable.h"

namespace {

// Priorities and values equal within this count as the same.
constexpr double PRIORITY_EPSILON = 1e-08;

struct CDS_Priority {
  std::vector<RValue> values, priorities;  // parallel, in storing order
};

DsTable<CDS_Priority>& queues() {
  static DsTable<CDS_Priority> table(REF_DS_PRIORITY);
  return table;
}

// The index of the highest priority, the first of equal ones; -1 when empty.
int32_t max_index(const CDS_Priority& q) {
  if (q.priorities.empty()) return -1;
  size_t best = 0;
  for (size_t i = 1; i < q.priorities.size(); ++i) {
    if (CompareValues(q.priorities[i], q.priorities[best], PRIORITY_EPSILON, false) > 0) best = i;
  }
  return static_cast<int32_t>(best);
}

BUILTIN_ADAPTER(ds_priority_create) { result = ds_priority_create(); }
BUILTIN_ADAPTER(ds_priority_destroy) { ds_priority_destroy(args[0]); }
BUILTIN_ADAPTER(ds_priority_add) { ds_priority_add(args[0], args[1], args[2]); }
BUILTIN_ADAPTER(ds_priority_size) { result = RValue::number(ds_priority_size(args[0])); }
BUILTIN_ADAPTER(ds_priority_empty) { result = RValue::number(ds_priority_empty(args[0]) ? 1 : 0); }
BUILTIN_ADAPTER(ds_priority_clear) { ds_priority_clear(args[0]); }
BUILTIN_ADAPTER(ds_priority_find_max) { result = ds_priority_find_max(args[0]); }
BUILTIN_ADAPTER(ds_priority_delete_max) { result = ds_priority_delete_max(args[0]); }
BUILTIN_ADAPTER(ds_priority_find_priority) { result = ds_priority_find_priority(args[0], args[1]); }

}  // namespace

RValue ds_priority_create() { return queues().create(); }
void ds_priority_destroy(const RValue& queue) { queues().destroy(queue); }

void ds_priority_add(const RValue& queue, const RValue& value, const RValue& priority) {
  if (CDS_Priority* q = queues().find(queue)) {
    q->values.push_back(value);
    q->priorities.push_back(priority);
  }
}

int32_t ds_priority_size(const RValue& queue) {
  const CDS_Priority* q = queues().find(queue);
  return q ? static_cast<int32_t>(q->values.size()) : 0;
}

bool ds_priority_empty(const RValue& queue) { return ds_priority_size(queue) == 0; }

void ds_priority_clear(const RValue& queue) {
  if (CDS_Priority* q = queues().find(queue)) {
    q->values.clear();
    q->priorities.clear();
  }
}

RValue ds_priority_find_max(const RValue& queue) {
  const CDS_Priority* q = queues().find(queue);
  const int32_t best = q ? max_index(*q) : -1;
  return best < 0 ? RValue::undefined() : q->values[static_cast<size_t>(best)];
}

RValue ds_priority_delete_max(const RValue& queue) {
  CDS_Priority* q = queues().find(queue);
  const int32_t best = q ? max_index(*q) : -1;
  if (best < 0) return RValue::number(0);
  const auto at = static_cast<size_t>(best);
  RValue found = q->values[at];
  q->values[at] = q->values.back();
  q->priorities[at] = q->priorities.back();
  q->values.pop_back();
  q->priorities.pop_back();
  return found;
}

RValue ds_priority_find_priority(const RValue& queue, const RValue& value) {
  const CDS_Priority* q = queues().find(queue);
  if (!q) return RValue::undefined();
  for (size_t i = 0; i < q->values.size(); ++i) {
    if (CompareValues(q->values[i], value, PRIORITY_EPSILON, false) == 0) return q->priorities[i];
  }
  return RValue::undefined();
}

void register_ds_priority_builtins() {
  builtin_register("ds_priority_create", builtin_ds_priority_create, 0);
  builtin_register("ds_priority_destroy", builtin_ds_priority_destroy, 1);
  builtin_register("ds_priority_add", builtin_ds_priority_add, 3);
  builtin_register("ds_priority_size", builtin_ds_priority_size, 1);
  builtin_register("ds_priority_empty", builtin_ds_priority_empty, 1);
  builtin_register("ds_priority_clear", builtin_ds_priority_clear, 1);
  builtin_register("ds_priority_find_max", builtin_ds_priority_find_max, 1);
  builtin_register("ds_priority_delete_max", builtin_ds_priority_delete_max, 1);
  builtin_register("ds_priority_find_priority", builtin_ds_priority_find_priority, 2);
}
