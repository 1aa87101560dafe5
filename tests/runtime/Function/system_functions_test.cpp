// The clipboard (the run's own, headless) and the environment's variables.
#include "runtime/Function/SystemFunctions.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

TEST(SystemFunctions, TheClipboardKeepsTextAndTheEnvironmentGivesItsVariables) {
  clipboard_set_text("disegna cerchio (X: 10)");
  EXPECT_TRUE(clipboard_has_text());
  EXPECT_EQ(clipboard_get_text(), "disegna cerchio (X: 10)");
  clipboard_set_text("");
  EXPECT_FALSE(clipboard_has_text());

  setenv("VELANT_PROVA", "città", 1);
  EXPECT_EQ(environment_get_variable("VELANT_PROVA"), "città");
  EXPECT_EQ(environment_get_variable("VELANT_MAI_IMPOSTATA"), "");
}

}  // namespace
