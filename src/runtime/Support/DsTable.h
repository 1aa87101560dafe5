// The table of one kind of data structure. A structure is named by a ref of
// its kind's type whose index is its slot; the next create takes the lowest
// free slot, and the table grows by 16. A handle out of range or on a free
// slot is fatal with the built-in's name.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "runtime/Code/Builtins.h"
#include "runtime/Code/Error.h"
#include "runtime/Code/RValue.h"

template <class T>
class DsTable {
 public:
  explicit DsTable(uint32_t ref_type) : ref_type_(ref_type) {}

  // A new structure in the lowest free slot; its ref.
  RValue create() {
    size_t slot = 0;
    while (slot < slots_.size() && slots_[slot]) ++slot;
    if (slot == slots_.size()) slots_.resize(slots_.size() + GROWTH);
    slots_[slot] = std::make_unique<T>();
    return RValue::ref(ref_type_, static_cast<int32_t>(slot));
  }
  // The structure that `handle` names; null after a suppressed fatal report.
  T* find(const RValue& handle) const {
    const int32_t slot = slot_of(handle);
    return slot < 0 ? nullptr : slots_[static_cast<size_t>(slot)].get();
  }
  // The structure in `slot`, or null when there is none; never a fatal
  // report, for worker threads.
  T* at(int32_t slot) const {
    return slot >= 0 && static_cast<size_t>(slot) < slots_.size() ? slots_[static_cast<size_t>(slot)].get() : nullptr;
  }
  // Frees the structure and empties its slot for the next create.
  void destroy(const RValue& handle) {
    if (const int32_t slot = slot_of(handle); slot >= 0) slots_[static_cast<size_t>(slot)].reset();
  }

 private:
  // The slot of the live structure that `handle` names, or -1.
  int32_t slot_of(const RValue& handle) const {
    const int32_t slot = arg_ref(&handle, 0, ref_type_, static_cast<int32_t>(slots_.size()));
    if (slot < 0) return -1;
    if (slots_[static_cast<size_t>(slot)]) return slot;
    ReportError("%s argument %d invalid reference to (%s)", builtin_current_name(), 1, ref_type_name(ref_type_));
    return -1;
  }

  static constexpr size_t GROWTH = 16;
  uint32_t ref_type_;
  std::vector<std::unique_ptr<T>> slots_;
};
