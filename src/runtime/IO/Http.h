// http_get and http_get_file: pages and files fetched while the program
// runs on. Each request has an id, a running number from 0; its progress
// and its end reach the program as Other event 62 with `async_load` holding
// "id", "url", "result", "http_status" and "status" (1 while data arrives,
// with "sizeDownloaded" and "contentLength"; 0 when done; negative when it
// failed).
#pragma once

#include <string>

inline constexpr int OTHER_ASYNC_HTTP = 62;

// The id of the request for `url`, or -1 when it isn't an http:// or https:// address.
int http_get(const std::string& url);
// As http_get; the body goes into `file` in the save area, and "result" is `file` as given.
int http_get_file(const std::string& url, const std::string& file);
// Puts what the requests have to tell since the last call into the
// asynchronous queue: a progress record for each one that got data, and a
// final record for each one that is over. Called once a frame.
void http_deliver();

void register_http_builtins();
