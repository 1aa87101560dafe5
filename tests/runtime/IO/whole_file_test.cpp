// Whole files written through a temporary beside them: whatever stops the
// write, the file at the path is the old one or the new one, never a part.
#include "runtime/IO/WholeFile.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "support/TempFolder.h"

namespace {

size_t files_in(const std::filesystem::path& folder) {
  return static_cast<size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
}

// Runs `work` in a child process and gives its exit status, or -signal.
template <class Work>
int in_child(Work work, useconds_t kill_after = 0) {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(work());
  if (kill_after > 0) {
    ::usleep(kill_after);
    ::kill(child, SIGKILL);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

TEST(WholeFile, ReplacesTheOldFileAndLeavesNothingElse) {
  const TempFolder folder;
  const auto path = folder.write("programma.txt", "vecchio");
  EXPECT_TRUE(file_write_whole(path.string(), "INIZIA\nX = 1\n"));
  EXPECT_EQ(read_whole_file(path), "INIZIA\nX = 1\n");
  EXPECT_EQ(files_in(folder.path()), 1u) << "no temporary is left";

  EXPECT_FALSE(file_write_whole((folder / "nessuna_cartella/programma.txt").string(), "x"));
  EXPECT_EQ(files_in(folder.path()), 1u);
}

TEST(WholeFile, AFullDiskLeavesTheOldFileWhole) {
  const TempFolder folder;
  const auto path = folder.write("backup.txt", "il lavoro di ieri");
  // The child may write files of at most 1 KiB, as a disk that fills up would allow.
  const int status = in_child([&] {
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{1024, 1024};
    ::setrlimit(RLIMIT_FSIZE, &small);
    return file_write_whole(path.string(), std::string(1 << 20, 'a')) ? 1 : 0;
  });
  EXPECT_EQ(status, 0) << "the write reports its failure";
  EXPECT_EQ(read_whole_file(path), "il lavoro di ieri");
  EXPECT_EQ(files_in(folder.path()), 1u) << "no temporary is left";
}

TEST(WholeFile, AKillInTheMiddleLeavesTheOldFileOrTheNewOneWhole) {
  const TempFolder folder;
  const std::string old_text = "il lavoro di ieri";
  const std::string new_text(64 << 20, 'n');
  const auto path = folder.write("progetto.txt", old_text);
  // Killed at some moment of a long write, wherever it is.
  for (const useconds_t after : {2000u, 20000u}) {
    in_child([&] { return file_write_whole(path.string(), new_text) ? 0 : 1; }, after);
    const std::string found = read_whole_file(path);
    EXPECT_TRUE(found == old_text || found == new_text) << "a file of " << found.size() << " bytes";
  }
}

}  // namespace
