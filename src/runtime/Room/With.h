// The `with` iteration: the body runs once for each instance that a value
// names, with that instance as `self` and the `self` outside as `other`.
//
// The instances are taken as a snapshot when the iteration begins and are
// visited from the most recently created to the oldest. An instance
// destroyed while the loop runs keeps its pass: it lives until the deletion
// point. Outside any `with`, `self` and `other` are those of the running
// event.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "runtime/Object/Instance.h"
#include "runtime/Room/Events.h"

// `self` and `other` of the code that runs now.
CInstance* current_self();
CInstance* current_other();

// Makes `self` and `other` name other instances while it lives; the ones
// before come back when it ends, also when an exception passes.
class WithScope {
 public:
  WithScope(CInstance* self, CInstance* other);
  ~WithScope();
  WithScope(const WithScope&) = delete;
  WithScope& operator=(const WithScope&) = delete;
  // Moves the scope on to the next instance of the loop.
  void retarget(CInstance* self) { self_ = self; }

 private:
  friend CInstance* current_self();
  friend CInstance* current_other();
  // Whether this scope speaks for the code running now: an event run from
  // the body has a record of its own, and its `self` is its own.
  bool in_force() const;

  CInstance* self_;
  CInstance* other_;
  CurrentEvent event_;  // the running event when the scope began
  WithScope* previous_;
};

// The instances that `with (target)` visits, in visiting order, with `self`
// and `other` as given: fatal "invalid with reference" for a kind that
// names no instances (an array, a pointer, unset ...); none for undefined.
std::vector<CInstance*> with_snapshot(const RValue& target, CInstance* self, CInstance* other);
// The same for a target already converted to a number.
std::vector<CInstance*> with_snapshot(int32_t target, CInstance* self, CInstance* other);

// One `with` loop as compiled code runs it: begin (the constructor takes the
// snapshot), next until it says false, end (the destructor restores `self`
// and `other`). Leaving early is a plain break.
class WithIteration {
 public:
  explicit WithIteration(const RValue& target);
  // Makes the next instance `self`; false when none is left.
  bool next();
  CInstance* self() const { return snapshot_[position_ - 1]; }
  CInstance* other() const { return outer_self_; }

 private:
  CInstance* outer_self_;
  std::vector<CInstance*> snapshot_;
  size_t position_ = 0;
  std::optional<WithScope> scope_;
};

// Runs `body` once for each instance of `with (target)`.
void with_instances(const RValue& target, const std::function<void(CInstance& self, CInstance* other)>& body);
