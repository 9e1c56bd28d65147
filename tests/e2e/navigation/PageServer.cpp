#include "e2e/navigation/PageServer.h"

#include <utility>

namespace zovk {

PageServer::PageServer() {
  server_.handle("/gate", [opened = gate_.get_future().share()](const httplib::Request&,
                                                                httplib::Response& response) {
    opened.wait();
    response.set_header("Access-Control-Allow-Origin", "*");
    response.set_content("open", "text/plain");
  });
}

std::string PageServer::page(const std::string& path, const std::string& html) {
  return server_.handle(path, [html](const httplib::Request&, httplib::Response& response) {
    response.set_header("Cache-Control", "no-store");
    response.set_content(html, "text/html; charset=utf-8");
  });
}

std::string PageServer::redirect(const std::string& path, const std::string& target) {
  return server_.handle(path, [target](const httplib::Request&, httplib::Response& response) {
    response.set_redirect(target);
  });
}

std::string PageServer::brokenPage(const std::string& path) {
  return server_.handle(path, [](const httplib::Request&, httplib::Response& response) {
    constexpr std::size_t kPromised = 1 << 20;
    response.set_content_provider(kPromised, "text/html; charset=utf-8",
                                  [](std::size_t, std::size_t, httplib::DataSink& sink) {
                                    const std::string start(1 << 16, ' ');
                                    sink.write(start.data(), start.size());
                                    return false;
                                  });
  });
}

std::vector<std::string> PageServer::requestsTo(const std::string& path) const {
  std::vector<std::string> found;
  for (const httplib::Request& request : server_.requests()) {
    if (request.path == path) found.push_back(request.method + " " + request.body);
  }
  return found;
}

void PageServer::openGate() {
  if (!std::exchange(gateIsOpen_, true)) gate_.set_value();
}

}  // namespace zovk
