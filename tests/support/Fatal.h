// Test helper: expects a statement to end in the runtime's fatal report
// with exactly the given short message.
#pragma once

#include <gtest/gtest.h>

#include "runtime/Code/Error.h"

#define EXPECT_FATAL(statement, words)                                   \
  do {                                                                   \
    try {                                                                \
      statement;                                                         \
      ADD_FAILURE() << "expected the fatal report: " << (words);         \
    } catch (const QvScriptException& fatal_report) {                    \
      EXPECT_EQ(fatal_report.message, (words));                          \
    }                                                                    \
  } while (0)
