// Golden tests of the colouring: pages of program lines and the tagged
// lines they become, kept in tests/environment/colouring/golden/. After a
// deliberate change, VELANT_UPDATE_GOLDEN=1 writes the files anew, and
// `git diff` shows what changed.
#include "environment/colouring/code_editor.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "support/Golden.h"

namespace {

namespace fs = std::filesystem;

const fs::path GOLDEN = fs::path(VELANT_SOURCE_DIR) / "tests/environment/colouring/golden";

std::vector<std::string> lines_of(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    lines.push_back(line);
  }
  return lines;
}

// The tagged lines of a page, one a line, as the code box colours them from its first line down.
std::string coloured_page(const std::vector<std::string>& page, CodeColouring& c) {
  std::string out;
  for (size_t k = 0; k < page.size(); ++k) {
    const std::string line = (k > 0 ? "\n" : "") + page[k];
    std::string tagged = code_editor(line, static_cast<int>(k) + 1, c);
    std::erase(tagged, '\n');
    out += tagged + "\n";
  }
  return out;
}

void expect_golden_colours(const std::string& name, const std::string& actual) {
  expect_golden(GOLDEN / (name + ".colours"), actual);
}

TEST(CodeEditor, LinesOfEveryKindMatchTheirGoldenColours) {
  CodeColouring c;
  c.user_functions = {"saluta"};
  expect_golden_colours("lines", coloured_page(lines_of(GOLDEN / "lines.txt"), c));
}

TEST(CodeEditor, TheExamplesMatchTheirGoldenColours) {
  for (const auto& entry : fs::directory_iterator(fs::path(VELANT_SOURCE_DIR) / "examples")) {
    if (entry.path().extension() != ".txt") continue;
    CodeColouring c;
    expect_golden_colours(entry.path().stem().string(), coloured_page(lines_of(entry.path()), c));
  }
}

}  // namespace
