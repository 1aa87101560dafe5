// Variables of an object by id: an open-addressing hash map with robin hood
// probing. The capacity is a power of two; an entry with hash 0 is empty; a
// lookup stops as soon as its probe distance exceeds the distance of the
// entry it meets, which keeps misses short. Values live on the heap, so a
// slot's address stays valid while the map grows.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "runtime/Code/RValue.h"

class VariableMap {
 public:
  // The slot of `id`, or null.
  RValue* find(int32_t id) const;
  // The slot of `id`, made unset when missing.
  RValue* find_or_insert(int32_t id);
  size_t size() const { return count_; }

  // Calls `visit(id, value)` for every variable, in no particular order.
  template <class Visit>
  void for_each(Visit visit) const {
    for (const Entry& e : entries_) {
      if (e.hash != 0) visit(e.key, *e.value);
    }
  }

 private:
  struct Entry {
    uint32_t hash = 0;
    int32_t key = 0;
    std::unique_ptr<RValue> value;
  };
  static uint32_t hash_of(int32_t id);
  size_t distance(size_t slot, uint32_t hash) const { return (slot - (hash & mask_)) & mask_; }
  void grow();
  void place(Entry entry);

  std::vector<Entry> entries_;
  size_t mask_ = 0;
  size_t count_ = 0;
};
