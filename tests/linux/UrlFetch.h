#pragma once

#include <chrono>
#include <future>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

#include "zovkpopup/platform/UrlSession.h"

namespace zovk {

/// A running request, and its later result.
struct Fetch {
  std::shared_ptr<UrlTask> task;
  std::future<DataResult> end;

  DataResult wait() {
    if (end.wait_for(std::chrono::seconds(30)) != std::future_status::ready) {
      throw std::runtime_error("no completion");
    }
    return end.get();
  }
};

inline Fetch beginFetch(UrlSession& session, UrlRequest request) {
  auto promise = std::make_shared<std::promise<DataResult>>();
  auto end = promise->get_future();
  auto task = session.dataTask(std::move(request),
                               [promise](const DataResult& result) { promise->set_value(result); });
  task->resume();
  return {std::move(task), std::move(end)};
}

inline UrlRequest get(const std::string& url) {
  UrlRequest request;
  request.url = url;
  return request;
}

inline DataResult fetch(UrlSession& session, UrlRequest request) {
  return beginFetch(session, std::move(request)).wait();
}

}  // namespace zovk
