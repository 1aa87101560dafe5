#include "runtime/IO/Http.h"

#include <gtest/gtest.h>

#include <chrono>
#include <map>
#include <thread>
#include <vector>

#include "runtime/Code/Conversions.h"
#include "runtime/Support/AsyncQueue.h"
#include "runtime/Support/DsMap.h"
#include "support/LoopbackServer.h"
#include "support/SaveArea.h"

namespace {

// One record of `async_load`, its keys as text.
using Record = std::map<std::string, std::string>;

Record record_of(int map_id) {
  const RValue map = RValue::ref(REF_DS_MAP, map_id);
  Record r;
  for (const char* key : {"id", "url", "result", "http_status", "status", "sizeDownloaded", "contentLength"}) {
    const RValue key_value = RValue::text(key);
    if (ds_map_exists(map, key_value)) r[key] = value_to_text(ds_map_find_value(map, key_value));
  }
  ds_map_destroy(map);
  return r;
}

// The records of each request, in order, delivered a frame at a time until
// every one of `ids` has its last record (status other than 1).
std::map<int, std::vector<Record>> records_until_over(const std::vector<int>& ids) {
  std::map<int, std::vector<Record>> by_id;
  const auto over = [&] {
    for (const int id : ids) {
      if (by_id[id].empty() || by_id[id].back()["status"] == "1") return false;
    }
    return true;
  };
  for (int frame = 0; frame < 600 && !over(); ++frame) {
    std::this_thread::sleep_for(std::chrono::milliseconds(33));
    http_deliver();
    for (const AsyncEvent& e : async_events_take()) {
      EXPECT_EQ(e.other_subtype, OTHER_ASYNC_HTTP);
      Record r = record_of(e.map_id);
      by_id[std::stoi(r["id"])].push_back(std::move(r));
    }
  }
  return by_id;
}

TEST(Http, PagesFilesErrorsAndSlowBodiesArriveAsRecords) {
  const SaveArea save_area;
  const std::string slow_body(40000, 'z');
  LoopbackServer server({{"/pagina", {200, "ciao dal server"}},
                         {"/melodia.ogg", {200, std::string("OggS\0\1", 6)}},
                         {"/lento", {200, slow_body, 4}}});
  EXPECT_EQ(http_get("ftp://127.0.0.1/x"), -1);
  const int page = http_get(server.url("/pagina"));
  const int file = http_get_file(server.url("/melodia.ogg"), "Suoni/melodia.ogg");
  const int missing = http_get(server.url("/manca"));
  const int refused = http_get(LoopbackServer::refused_url());
  const int slow = http_get(server.url("/lento"));
  EXPECT_EQ(file, page + 1) << "ids are a running number";

  std::map<int, std::vector<Record>> records = records_until_over({page, file, missing, refused, slow});
  EXPECT_EQ(records.size(), 5u) << "nothing for the ftp address";
  const Record done = records[page].back();
  EXPECT_EQ(done.at("status"), "0");
  EXPECT_EQ(done.at("http_status"), "200");
  EXPECT_EQ(done.at("result"), "ciao dal server");
  EXPECT_EQ(done.at("url"), server.url("/pagina"));

  EXPECT_EQ(records[file].back().at("result"), "Suoni/melodia.ogg");
  EXPECT_EQ(read_whole_file(save_area / "Suoni/melodia.ogg"), std::string("OggS\0\1", 6));

  EXPECT_EQ(records[missing].back().at("http_status"), "404");
  EXPECT_EQ(records[missing].back().at("status"), "0") << "an error page is an answer";
  EXPECT_EQ(records[missing].back().at("result"), "non trovato");
  EXPECT_EQ(records[refused].back().at("status"), "-1");
  EXPECT_EQ(records[refused].back().at("http_status"), "0");

  // The slow page reports its progress before its end.
  const std::vector<Record>& steps = records[slow];
  ASSERT_GE(steps.size(), 2u);
  EXPECT_EQ(steps.front().at("status"), "1");
  EXPECT_EQ(steps.front().at("contentLength"), "40000");
  EXPECT_LT(std::stod(steps.front().at("sizeDownloaded")), 40000);
  EXPECT_EQ(steps.back().at("status"), "0");
  EXPECT_EQ(steps.back().at("result").size(), slow_body.size());
}

}  // namespace
