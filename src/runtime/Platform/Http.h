// Web pages fetched with GET on worker threads that the platform runs and
// waits for when the program ends.
#pragma once

#ifdef VELANT_ABOVE_RUNTIME
#error "the layers above the runtime reach the platform through the runtime's functions"
#endif

#include <cstdint>
#include <functional>
#include <string>

namespace platform {

struct HttpAnswer {
  bool failed = false;  // no answer came: no connection, a bad address, a cut-off body
  long status = 0;      // the server's status code, 0 without an answer
  std::string body;
};

struct HttpCallbacks {
  // Data came in: the bytes so far and the length the server announced (-1 when it didn't).
  std::function<void(int64_t downloaded, int64_t length)> progress;
  // The request is over, one way or the other.
  std::function<void(HttpAnswer answer)> done;
};

// Starts fetching `url` on a worker thread; the callbacks run on that thread.
void http_start(const std::string& url, const std::string& agent, HttpCallbacks callbacks);

}  // namespace platform
