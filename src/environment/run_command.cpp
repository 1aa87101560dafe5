// `velant run FILE`: runs a program as the Run button would, from the
// command line, for people, tests and benchmarks.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "environment/commands.h"
#include "environment/folders.h"
#include "environment/rooms.h"
#include "language/evaluation/error_frame.h"
#include "language/tokenizer/controllo_errori.h"
#include "runtime/Function/DialogFunctions.h"
#include "runtime/Function/SystemFunctions.h"
#include "environment/main_code_ctrl.h"
#include "runtime/Graphics/ImageFile.h"
#include "runtime/Graphics/Screen.h"
#include "runtime/IO/FileNames.h"
#include "runtime/IO/Input.h"
#include "runtime/IO/WholeFile.h"
#include "runtime/Room/FrameState.h"
#include "runtime/Run/MainLoop.h"

namespace {

constexpr const char* USAGE =
    "uso: velant run FILE [--frames N] [--headless] [--screenshot PNG] [--vars] [--click X,Y@FRAME ...]\n";

// A left click at (x, y): pressed in frame `frame`, released in the next.
struct Click {
  int x = 0, y = 0;
  int64_t frame = 0;
};

struct RunRequest {
  std::string file;
  int64_t frames = -1;
  bool headless = false;
  std::string screenshot;
  bool vars = false;
  std::vector<Click> clicks;
};

std::optional<Click> parse_click(const char* text) {
  Click click;
  long long frame = 0;
  if (std::sscanf(text, "%d,%d@%lld", &click.x, &click.y, &frame) != 3 || frame < 1) return std::nullopt;
  click.frame = frame;
  return click;
}

// The request from the words after "run"; nothing when they don't make one.
std::optional<RunRequest> parse(int argc, char** argv) {
  RunRequest request;
  for (int k = 2; k < argc; ++k) {
    const std::string word = argv[k];
    if (word == "--frames" && k + 1 < argc) {
      char* end = nullptr;
      request.frames = std::strtoll(argv[++k], &end, 10);
      if (*end != '\0' || request.frames < 0) return std::nullopt;
    } else if (word == "--headless") {
      request.headless = true;
    } else if (word == "--screenshot" && k + 1 < argc) {
      request.screenshot = argv[++k];
    } else if (word == "--vars") {
      request.vars = true;
    } else if (word == "--click" && k + 1 < argc) {
      const std::optional<Click> click = parse_click(argv[++k]);
      if (!click) return std::nullopt;
      request.clicks.push_back(*click);
    } else if (request.file.empty() && !word.starts_with("--")) {
      request.file = word;
    } else {
      return std::nullopt;
    }
  }
  if (request.file.empty()) return std::nullopt;
  return request;
}

// A message of the check: printed as a headless run prints message boxes, or shown in one.
void tell(const std::string& text, bool headless) {
  if (headless) std::printf("%s\n\n", text.c_str());
  else show_message(RValue::text(text));
}

}  // namespace

int run_command(int argc, char** argv) {
  const std::optional<RunRequest> request = parse(argc, argv);
  if (!request) {
    std::fputs(USAGE, stderr);
    return 2;
  }
  std::string text;
  if (!file_read_whole(request->file, text)) {
    std::fprintf(stderr, "velant: impossibile aprire il file \"%s\"\n", request->file.c_str());
    return 2;
  }
  // The check the Run button makes: a failure ends here, a single run is a warning and goes on.
  const PreRunCheck check = controllo_errori(text + "filler ", text, os_is_network_connected);
  if (!check.message.empty()) tell(check.message, request->headless);
  if (!check.passed) return 1;
  // The program finds the files that stand beside it, wherever the command is run from.
  std::error_code failed;
  const std::string beside = std::filesystem::absolute(request->file, failed).parent_path().string();
  if (std::string problem; !prepare_folders(beside, problem)) {
    std::fprintf(stderr, "velant: %s\n", problem.c_str());
    return 2;
  }
  // The hand-over is the Run button's: the text in code.txt of the save area.
  const std::string program = file_folders().save_area + "code.txt";
  if (!file_write_whole(program, text)) {
    std::fprintf(stderr, "velant: impossibile scrivere %s\n", program.c_str());
    return 2;
  }

  RuntimeOptions options;
  options.headless = request->headless;
  options.max_frames = request->frames;
  // The last frame drawn is kept, to be saved when the run is over.
  Image last_frame;
  int64_t frames_seen = 0;
  options.after_frame = [&] {
    const int64_t drawn = frame_state().frames_drawn;
    // A click fed as the mouse would give it: moved and pressed for the frame asked, released after it.
    for (const Click& click : request->clicks) {
      if (drawn + 1 == click.frame) {
        input_mouse_move(click.x, click.y);
        input_mouse_button_event(MOUSE_LEFT, true);
      } else if (drawn == click.frame) {
        input_mouse_button_event(MOUSE_LEFT, false);
      }
    }
    if (request->screenshot.empty() || drawn == frames_seen) return;
    frames_seen = drawn;
    screen_read(last_frame);
  };
  runtime_run(options, [] { define_environment(Startup::Runner); });

  if (request->vars) {
    for (const auto& [name, value] : last_run_variables()) std::printf("%s = %s\n", name.c_str(), value.c_str());
  }
  if (!request->screenshot.empty() && !image_save_png(request->screenshot, last_frame)) {
    std::fprintf(stderr, "velant: impossibile salvare l'immagine \"%s\"\n", request->screenshot.c_str());
    return 2;
  }
  return run_stopped_by_error() ? 1 : 0;
}
