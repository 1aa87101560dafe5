#include "runtime/Object/VariableMap.h"

#include <utility>

uint32_t VariableMap::hash_of(int32_t id) {
  // A 32-bit integer mix with the top bit cleared; 0 is kept for empty entries.
  uint32_t h = static_cast<uint32_t>(id);
  h ^= h >> 16;
  h *= 0x7FEB352Du;
  h ^= h >> 15;
  h *= 0x846CA68Bu;
  h ^= h >> 16;
  h &= 0x7FFFFFFFu;
  return h == 0 ? 1 : h;
}

RValue* VariableMap::find(int32_t id) const {
  if (entries_.empty()) return nullptr;
  const uint32_t h = hash_of(id);
  for (size_t slot = h & mask_, probe = 0;; slot = (slot + 1) & mask_, ++probe) {
    const Entry& e = entries_[slot];
    if (e.hash == 0 || probe > distance(slot, e.hash)) return nullptr;
    if (e.hash == h && e.key == id) return e.value.get();
  }
}

RValue* VariableMap::find_or_insert(int32_t id) {
  if (RValue* found = find(id)) return found;
  // Grown only when the load would pass 0.6.
  if ((count_ + 1) * 10 > entries_.size() * 6) grow();
  auto value = std::make_unique<RValue>();
  RValue* slot = value.get();
  place(Entry{hash_of(id), id, std::move(value)});
  ++count_;
  return slot;
}

void VariableMap::place(Entry entry) {
  for (size_t slot = entry.hash & mask_, probe = 0;; slot = (slot + 1) & mask_, ++probe) {
    Entry& e = entries_[slot];
    if (e.hash == 0) {
      e = std::move(entry);
      return;
    }
    // The richer entry (nearer its home) gives its place to the poorer one.
    const size_t existing = distance(slot, e.hash);
    if (existing < probe) {
      std::swap(e, entry);
      probe = existing;
    }
  }
}

void VariableMap::grow() {
  std::vector<Entry> old = std::move(entries_);
  const size_t capacity = old.empty() ? 8 : old.size() * 2;
  entries_ = std::vector<Entry>(capacity);
  mask_ = capacity - 1;
  for (Entry& e : old) {
    if (e.hash != 0) place(std::move(e));
  }
}
