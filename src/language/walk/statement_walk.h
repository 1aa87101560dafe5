// What the statement walk needs of the function families: each family's
// functions, where each one's name stands in a statement, and the cheap
// test (the guard) that a family makes before comparing names.
//
// The walk asks every family, in a fixed order, at every position that can
// start a statement. Which functions can answer at a position is worked out
// once, when the program is prepared (mem_function), since a token only
// ever changes by the marks put at its front and a marked name matches no
// function; so a family that can't act at a position costs nothing there.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

class ProgramInstance;

// Where a function's name stands in a statement at position i.
enum class CallShape : uint8_t {
  Statement,  // tok[i]: "disegna_cerchio", "-->", then the arguments
  Value,      // tok[i+2]: NAME, "f=", "ottieni_...", "-->", then the arguments
};

// The test that a family makes before its comparisons: `word` must stand
// in the statement's first token (tok[i]), in its function token
// (tok[i+2]), or in either. An empty word lets everything through.
struct FamilyGuard {
  std::string_view word;
  bool in_first = false;
  bool in_function = false;
};
inline constexpr FamilyGuard NO_GUARD{};

struct FamilyFunction {
  std::string_view name;  // token form, with underscores
  CallShape shape;
  // Serves the statement at position i of the running program.
  void (*act)(ProgramInstance& program, int i);
  // The guard of a function that doesn't follow its family's guard for its
  // shape; &NO_GUARD for one that stands outside every guard.
  const FamilyGuard* guard = nullptr;
};

struct Family {
  std::string_view name;
  FamilyGuard statement_guard;
  FamilyGuard value_guard;
  std::span<const FamilyFunction> functions;
};

// "debug EXPR", the walk's own statement, as a family: it has its place in
// the order of the families.
extern const Family debug_family;

// The families that the walk calls, in the order of the calls. Programs
// prepared before this see none.
void install_families(std::span<const Family* const> families);
// The guard that `function` of `family` must pass.
const FamilyGuard& guard_of(const Family& family, const FamilyFunction& function);
