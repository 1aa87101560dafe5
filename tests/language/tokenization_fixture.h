// Test helper: the tokeniser run on a program text written to a folder of
// the test's own, with the messages it shows recorded.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "language/tokenizer/sound_assets.h"
#include "language/tokenizer/tokenization.h"
#include "language/tokenizer/tokenizer.h"
#include "runtime/Code/Builtins.h"
#include "runtime/Platform/Dialogs.h"
#include "support/MessageRecorder.h"
#include "support/TempFolder.h"

namespace fs = std::filesystem;
using Tokens = std::vector<std::string>;

class Tokenization : public ::testing::Test {
 protected:
  void SetUp() override {
    register_runtime_builtins();
    register_language_sounds();
    platform::set_dialogs(std::make_unique<MessageRecorder>(&messages_));
  }
  void TearDown() override { platform::set_dialogs(nullptr); }

  std::string folder_path() const { return folder_.path().string() + "/"; }

  // The program text after stages 1 to `stage`.
  std::string text_after(const std::string& program, int stage) {
    folder_.write("code.txt", program);
    TokenProgram p;
    const std::string dir = folder_path(), file = dir + "code.txt";  // the tokeniser keeps references to them
    Tokenizer t(p, dir, file);
    t.run_stages(stage);
    return t.message();
  }

  // Every token, 0 to totale_tok.
  Tokens tokens(const std::string& program, TokenizationResult expected = TokenizationResult::Ready) {
    folder_.write("code.txt", program);
    program_ = TokenProgram();
    EXPECT_EQ(tokenization(program_, folder_path()), expected);
    Tokens out;
    for (int i = 0; i <= program_.totale_tok && i < static_cast<int>(program_.tok.size()); ++i) {
      const RValue& v = program_.tok[static_cast<size_t>(i)];
      out.emplace_back(v.is(Kind::String) ? v.string_view() : "<undefined>");
    }
    return out;
  }

  // The tokens a statement text makes between "INIZIA" and the header on one
  // side and "CICLO_CONTINUO" on the other.
  Tokens statement(const std::string& text) {
    const Tokens all = tokens("INIZIA\n" + text + "\nCICLO CONTINUO\n");
    return {all.begin() + 13, all.begin() + program_.DISEGNA};
  }

  TempFolder folder_{"velant_tok"};
  TokenProgram program_;
  std::vector<std::string> messages_;
};

