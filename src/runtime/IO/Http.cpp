#include "runtime/IO/Http.h"

#include <filesystem>
#include <memory>
#include <mutex>
#include <vector>

#include "runtime/Code/Builtins.h"
#include "runtime/IO/FileNames.h"
#include "runtime/IO/WholeFile.h"
#include "runtime/Platform/Http.h"
#include "runtime/Support/AsyncQueue.h"
#include "runtime/Support/DsMap.h"

namespace {

constexpr const char* AGENT = "Velant";
constexpr int STATUS_DONE = 0, STATUS_RECEIVING = 1, STATUS_FAILED = -1;

// One request. Its worker writes into it under the lock; the frame loop reads it under the same lock.
struct Request {
  int id;
  std::string url;
  std::string file;       // as the program named it, "" for http_get
  std::string save_path;  // where the body goes for http_get_file
  bool over = false;
  bool progressed = false;  // data came since the last delivery
  int64_t downloaded = 0, length = -1;
  int status = STATUS_RECEIVING;
  long http_status = 0;
  std::string result;
};

std::mutex g_http_mutex;  // "HttpMutex"
std::vector<std::shared_ptr<Request>> g_requests;
int g_next_id = 0;

bool is_web_address(const std::string& url) { return url.starts_with("http://") || url.starts_with("https://"); }

// What the worker does when the answer is in. Any answer of the server
// finishes the request, an error page too: "http_status" tells which.
void finish(Request& r, platform::HttpAnswer answer) {
  bool failed = answer.failed;
  std::string result = std::move(answer.body);
  if (!failed && !r.file.empty()) {
    std::error_code ignored;
    if (!r.save_path.empty()) std::filesystem::create_directories(std::filesystem::path(r.save_path).parent_path(), ignored);
    failed = r.save_path.empty() || !file_write_whole(r.save_path, result);
    result = r.file;
  }
  std::lock_guard lock(g_http_mutex);
  r.http_status = answer.status;
  r.status = failed ? STATUS_FAILED : STATUS_DONE;
  r.result = std::move(result);
  r.over = true;
}

int start(const std::string& url, const std::string& file) {
  if (!is_web_address(url)) return -1;
  auto r = std::make_shared<Request>();
  r->id = g_next_id++;
  r->url = url;
  r->file = file;
  if (!file.empty()) r->save_path = file_save_path(file);
  {
    std::lock_guard lock(g_http_mutex);
    g_requests.push_back(r);
  }
  platform::http_start(url, AGENT,
                       {[r](int64_t downloaded, int64_t length) {
                          std::lock_guard lock(g_http_mutex);
                          r->downloaded = downloaded;
                          r->length = length;
                          r->progressed = true;
                        },
                        [r](platform::HttpAnswer answer) { finish(*r, std::move(answer)); }});
  return r->id;
}

int record_of(const Request& r, int status) {
  const RValue map = ds_map_create();
  const auto put = [&](const char* key, RValue value) { ds_map_add(map, RValue::text(key), value); };
  put("id", RValue::number(r.id));
  put("url", RValue::text(r.url));
  put("result", RValue::text(status == STATUS_RECEIVING ? "" : r.result));
  put("http_status", RValue::number(static_cast<double>(r.http_status)));
  put("status", RValue::number(status));
  if (status == STATUS_RECEIVING) {
    put("sizeDownloaded", RValue::number(static_cast<double>(r.downloaded)));
    put("contentLength", RValue::number(static_cast<double>(r.length)));
  }
  return map.ref_index();
}

BUILTIN_ADAPTER(http_get) { result = RValue::number(http_get(std::string(arg_text(args, 0)))); }
BUILTIN_ADAPTER(http_get_file) {
  result = RValue::number(http_get_file(std::string(arg_text(args, 0)), std::string(arg_text(args, 1))));
}

}  // namespace

int http_get(const std::string& url) { return start(url, ""); }
int http_get_file(const std::string& url, const std::string& file) { return start(url, file); }

void http_deliver() {
  std::lock_guard lock(g_http_mutex);
  std::erase_if(g_requests, [](const std::shared_ptr<Request>& r) {
    if (r->progressed && !r->over) async_event_queue(record_of(*r, STATUS_RECEIVING), OTHER_ASYNC_HTTP);
    r->progressed = false;
    if (r->over) async_event_queue(record_of(*r, r->status), OTHER_ASYNC_HTTP);
    return r->over;
  });
}

void register_http_builtins() {
  builtin_register("http_get", builtin_http_get, 1);
  builtin_register("http_get_file", builtin_http_get_file, 2);
}
