// Dialogs of a headless run: text on the standard streams, default answers.
#include <cstdio>
#include <string>

#include "runtime/Platform/Dialogs.h"

namespace platform {
namespace {

class HeadlessDialogs final : public Dialogs {
 public:
  HeadlessDialogs(std::FILE* out, std::FILE* err) : out_(out), err_(err) {}

  void message(const std::string&, const std::string& text) override {
    std::fprintf(out_, "%s\n\n", text.c_str());
    std::fflush(out_);
  }

  bool question(const std::string& title, const std::string& text) override {
    message(title, text);
    return true;
  }

  ErrorChoice error(const std::string& title, const std::string& text, bool) override {
    std::fprintf(err_, "%s\n%s\n", title.c_str(), text.c_str());
    std::fflush(err_);
    return ErrorChoice::Abort;
  }

 private:
  std::FILE* out_;
  std::FILE* err_;
};

}  // namespace

std::unique_ptr<Dialogs> make_headless_dialogs(std::FILE* out, std::FILE* err) {
  return std::make_unique<HeadlessDialogs>(out, err);
}

}  // namespace platform
