// HTTP through libcurl, one worker thread per request. The workers are kept
// so that the end of the program can stop and wait for them: a worker never
// outlives the callbacks it was given.
#include <curl/curl.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "runtime/Platform/Http.h"

namespace platform {
namespace {

constexpr long CONNECT_TIMEOUT_SECONDS = 15;

class Workers {
 public:
  Workers() { curl_global_init(CURL_GLOBAL_DEFAULT); }
  ~Workers() {
    stopping_ = true;
    std::lock_guard lock(mutex_);
    for (Worker& w : workers_) w.thread.join();
    curl_global_cleanup();
  }
  void start(std::function<void()> work) {
    std::lock_guard lock(mutex_);
    // The workers that are over are collected first, so a program that asks for many pages keeps few threads.
    std::erase_if(workers_, [](Worker& w) {
      if (!*w.over) return false;
      w.thread.join();
      return true;
    });
    auto over = std::make_shared<std::atomic<bool>>(false);
    workers_.push_back({std::thread([work = std::move(work), over] {
                          work();
                          *over = true;
                        }),
                        over});
  }
  bool stopping() const { return stopping_; }

 private:
  struct Worker {
    std::thread thread;
    std::shared_ptr<std::atomic<bool>> over;
  };
  std::atomic<bool> stopping_{false};
  std::mutex mutex_;
  std::vector<Worker> workers_;
};

Workers& workers() {
  static Workers pool;
  return pool;
}

struct Transfer {
  HttpCallbacks callbacks;
  HttpAnswer answer;
  int64_t reported = -1;
};

size_t take_body(char* data, size_t size, size_t count, void* user) {
  auto* t = static_cast<Transfer*>(user);
  t->answer.body.append(data, size * count);
  return size * count;
}

int on_progress(void* user, curl_off_t length, curl_off_t downloaded, curl_off_t, curl_off_t) {
  auto* t = static_cast<Transfer*>(user);
  if (downloaded > 0 && downloaded != t->reported && t->callbacks.progress) {
    t->reported = downloaded;
    t->callbacks.progress(downloaded, length > 0 ? length : -1);
  }
  // A non-zero answer stops the transfer: the program is ending.
  return workers().stopping() ? 1 : 0;
}

void fetch(const std::string& url, const std::string& agent, HttpCallbacks callbacks) {
  Transfer t{std::move(callbacks), {}};
  CURL* curl = curl_easy_init();
  if (!curl) {
    t.answer.failed = true;
  } else {
    curl_easy_setopt(curl, CURLOPT_URL, url.c_str());
    curl_easy_setopt(curl, CURLOPT_USERAGENT, agent.c_str());
    curl_easy_setopt(curl, CURLOPT_FOLLOWLOCATION, 1L);
    // A web address stays on the web, whatever it is redirected to.
    curl_easy_setopt(curl, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(curl, CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
    // The machine itself is never reached through a proxy.
    curl_easy_setopt(curl, CURLOPT_NOPROXY, "localhost,127.0.0.1");
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT, CONNECT_TIMEOUT_SECONDS);
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, take_body);
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, &t);
    curl_easy_setopt(curl, CURLOPT_XFERINFOFUNCTION, on_progress);
    curl_easy_setopt(curl, CURLOPT_XFERINFODATA, &t);
    curl_easy_setopt(curl, CURLOPT_NOPROGRESS, 0L);
    t.answer.failed = curl_easy_perform(curl) != CURLE_OK;
    curl_easy_getinfo(curl, CURLINFO_RESPONSE_CODE, &t.answer.status);
    curl_easy_cleanup(curl);
  }
  if (t.callbacks.done) t.callbacks.done(std::move(t.answer));
}

}  // namespace

void http_start(const std::string& url, const std::string& agent, HttpCallbacks callbacks) {
  workers().start([url, agent, callbacks = std::move(callbacks)]() mutable { fetch(url, agent, std::move(callbacks)); });
}

}  // namespace platform
