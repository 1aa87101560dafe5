// Web addresses and files go to xdg-open, the desktop's opener, which
// starts the user's browser, mail program or viewer for them.
#include <spawn.h>
#include <sys/wait.h>

#include <algorithm>
#include <cctype>
#include <thread>

#include "runtime/Platform/Desktop.h"
#include "runtime/Platform/Headless.h"
#include "runtime/Platform/Log.h"

extern char** environ;

namespace platform {
namespace {

// A protocol name: a letter, then letters, digits, "+", "-" or ".", then ":".
bool has_protocol(const std::string& url) {
  const size_t colon = url.find(':');
  if (colon == std::string::npos || colon == 0 || !std::isalpha(static_cast<unsigned char>(url[0]))) return false;
  return std::all_of(url.begin(), url.begin() + static_cast<long>(colon), [](unsigned char c) {
    return std::isalnum(c) || c == '+' || c == '-' || c == '.';
  });
}

}  // namespace

bool open_url(const std::string& url) {
  if (!has_protocol(url)) return false;
  // A run without a window opens nothing on the desktop; the log tells what it would have opened.
  if (headless()) {
    log("url_open: " + url + "\n");
    return true;
  }
  char opener[] = "xdg-open";
  std::string address = url;
  char* argv[] = {opener, address.data(), nullptr};
  pid_t child = 0;
  if (posix_spawnp(&child, opener, nullptr, nullptr, argv, environ) != 0) return false;
  // Somebody has to collect the opener when it ends; the program doesn't wait for it.
  std::thread([child] { waitpid(child, nullptr, 0); }).detach();
  return true;
}

}  // namespace platform
