// Every test of this program runs with the walk's own statements installed
// and no family of functions: the language is tested on its own.
#include <gtest/gtest.h>

#include "language/walk/statement_walk.h"

namespace {

struct WalkStatementsInstalled : ::testing::Environment {
  void SetUp() override {
    static const Family* const walk_only[] = {&debug_family};
    install_families(walk_only);
  }
};

[[maybe_unused]] const auto* const installed = ::testing::AddGlobalTestEnvironment(new WalkStatementsInstalled);

}  // namespace
