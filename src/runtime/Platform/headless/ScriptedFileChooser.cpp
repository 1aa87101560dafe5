#include "runtime/Platform/Desktop.h"
#include "runtime/Platform/Log.h"

namespace platform {

std::string ScriptedFileChooser::choose(const FileQuestion& question) {
  asked_.push_back(question);
  std::string answer;
  if (!answers_.empty()) {
    answer = std::move(answers_.front());
    answers_.pop_front();
  }
  log(std::string(question.save ? "get_save_filename" : "get_open_filename") + ": \"" + answer + "\"\n");
  return answer;
}

}  // namespace platform
