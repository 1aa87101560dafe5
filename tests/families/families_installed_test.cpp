// Every test of this program runs with the families installed in the
// statement walk, in their order, as a run has them.
#include <gtest/gtest.h>

#include "families/families.h"

namespace {

struct FamiliesInstalled : ::testing::Environment {
  void SetUp() override { register_families(); }
};

[[maybe_unused]] const auto* const installed = ::testing::AddGlobalTestEnvironment(new FamiliesInstalled);

}  // namespace
