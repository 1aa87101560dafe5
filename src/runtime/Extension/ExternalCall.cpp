// The tables of call signatures for external routines.
#include "runtime/Extension/ExternalCall.h"

#include <array>
#include <bit>
#include <cstddef>
#include <type_traits>
#include <utility>

namespace {

template <bool Pointer>
using SlotType = std::conditional_t<Pointer, const void*, double>;

template <bool Pointer>
SlotType<Pointer> slot_as(ExternalSlot slot) {
  return std::bit_cast<SlotType<Pointer>>(slot);
}

constexpr bool is_pointer(size_t mask, size_t i) { return ((mask >> i) & 1u) != 0; }

// Casts the routine to the function type that `Mask` spells out over
// `I...` and calls it with the slots read as that type's arguments.
template <typename R, size_t Mask, size_t... I>
R call_as(void* routine, [[maybe_unused]] const ExternalSlot* slots, std::index_sequence<I...>) {
  using Routine = R (*)(SlotType<is_pointer(Mask, I)>...);
  return reinterpret_cast<Routine>(routine)(slot_as<is_pointer(Mask, I)>(slots[I])...);
}

template <typename R, size_t Count, size_t Mask>
R call_signature(void* routine, const ExternalSlot* slots) {
  return call_as<R, Mask>(routine, slots, std::make_index_sequence<Count>{});
}

template <typename R>
using Caller = R (*)(void*, const ExternalSlot*);

// The mixed signatures laid out flat: count n with mask m sits at
// 2^n - 1 + m, so entry k has count bit_width(k + 1) - 1.
template <typename R, size_t K>
constexpr Caller<R> mixed_caller() {
  constexpr size_t count = std::bit_width(K + 1) - 1;
  return &call_signature<R, count, K + 1 - (size_t{1} << count)>;
}

template <typename R, size_t... K>
constexpr std::array<Caller<R>, sizeof...(K)> mixed_callers(std::index_sequence<K...>) {
  return {mixed_caller<R, K>()...};
}

template <typename R, size_t... Count>
constexpr std::array<Caller<R>, sizeof...(Count)> number_callers(std::index_sequence<Count...>) {
  return {&call_signature<R, Count, 0>...};
}

constexpr size_t MIXED_SIGNATURES = (size_t{1} << (EXTERNAL_MAX_MIXED_ARGUMENTS + 1)) - 1;

template <typename R>
R invoke(void* routine, int argc, unsigned pointer_mask, const ExternalSlot* slots) {
  static constexpr auto mixed = mixed_callers<R>(std::make_index_sequence<MIXED_SIGNATURES>{});
  static constexpr auto numbers = number_callers<R>(std::make_index_sequence<EXTERNAL_MAX_ARGUMENTS + 1>{});
  if (argc <= EXTERNAL_MAX_MIXED_ARGUMENTS) {
    const unsigned mask = pointer_mask & ((1u << argc) - 1u);
    return mixed[(size_t{1} << argc) - 1 + mask](routine, slots);
  }
  return numbers[static_cast<size_t>(argc)](routine, slots);
}

}  // namespace

double external_invoke_number(void* routine, int argc, unsigned pointer_mask, const ExternalSlot* slots) {
  return invoke<double>(routine, argc, pointer_mask, slots);
}

const char* external_invoke_text(void* routine, int argc, unsigned pointer_mask, const ExternalSlot* slots) {
  return invoke<const char*>(routine, argc, pointer_mask, slots);
}
