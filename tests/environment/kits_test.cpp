// The ready kits that come with Velant: each runs for 90 frames as the Run
// button would, without a message and without an error.
#include <filesystem>

#include "run_fixture.h"

namespace {

using Kits = RunFixture;

TEST_F(Kits, EachKitRunsNinetyFramesCleanly) {
  int kits = 0;
  for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::path(VELANT_SOURCE_DIR) / "examples" / "kit pronti")) {
    const RunResult r = run(read_whole_file(entry.path()), "--frames 90");
    EXPECT_EQ(r.status, 0) << entry.path().filename() << r.out;
    EXPECT_EQ(r.out, "") << entry.path().filename();
    ++kits;
  }
  EXPECT_GE(kits, 13);
}

}  // namespace
