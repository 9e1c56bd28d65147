#include "ReportServer.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <system_error>
#include <utility>
#include <variant>

#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>
#include <event2/buffer.h>
#include <event2/listener.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace zovk::intake {

namespace {

using namespace std::chrono_literals;

constexpr ev_ssize_t kLargestBody = 65536;
// The edge takes a line of 8 KB, and adds three of its own.
constexpr ev_ssize_t kLargestHead = 16384;
// Longer than the edge keeps an idle connection, so that none is closed while a report comes.
constexpr int kIdleSeconds = 90;
constexpr int kMostNotAccepted = 4096;
constexpr timeval kPauseOfListening{.tv_sec = 0, .tv_usec = 100'000};
constexpr std::string_view kTaken = R"({"code":0})";

// Without a pause the loop would try to accept the same connection over and over.
void rest(evconnlistener* listener, void*) {
  std::fprintf(stderr, "no connection can be taken: %s\n", std::strerror(errno));
  evconnlistener_disable(listener);
  event_base_once(
      evconnlistener_get_base(listener), -1, EV_TIMEOUT,
      [](evutil_socket_t, short, void* rested) {
        evconnlistener_enable(static_cast<evconnlistener*>(rested));
      },
      listener, &kPauseOfListening);
}

evconnlistener* listenAt(event_base* base, const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof address.sun_path) throw std::invalid_argument(path + " is too long");
  std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
  unlink(path.c_str());  // A receiver that was killed leaves its socket behind.
  auto* listener = evconnlistener_new_bind(
      base, nullptr, nullptr, LEV_OPT_CLOSE_ON_FREE | LEV_OPT_CLOSE_ON_EXEC, kMostNotAccepted,
      reinterpret_cast<sockaddr*>(&address), sizeof address);
  if (listener == nullptr) throw std::system_error(errno, std::generic_category(), path);
  evconnlistener_set_error_cb(listener, rest);
  return listener;
}

struct Free {
  void operator()(char* text) const { std::free(text); }
};

}  // namespace

ReportServer::ReportServer(event_base* base, const std::string& socket, const GameKeys& keys,
                           ReportStream& stream)
    : keys_(keys), stream_(stream), http_(evhttp_new(base), evhttp_free) {
  evhttp_set_allowed_methods(http_.get(), EVHTTP_REQ_POST);
  evhttp_set_max_body_size(http_.get(), kLargestBody);
  evhttp_set_max_headers_size(http_.get(), kLargestHead);
  evhttp_set_timeout(http_.get(), kIdleSeconds);
  evhttp_set_default_content_type(http_.get(), "application/json");
  evhttp_set_gencb(
      http_.get(),
      [](evhttp_request* request, void* self) { static_cast<ReportServer*>(self)->take(request); },
      this);
  evhttp_bind_listener(http_.get(), listenAt(base, socket));
}

void ReportServer::take(evhttp_request* request) {
  if (ended_) {
    answer(request, "the receiver is ending");
    return;
  }
  const evhttp_uri* uri = evhttp_request_get_evhttp_uri(request);
  std::size_t length = 0;
  const std::unique_ptr<char, Free> path(evhttp_uridecode(evhttp_uri_get_path(uri), 0, &length));
  const char* query = evhttp_uri_get_query(uri);
  evbuffer* body = evhttp_request_get_input_buffer(request);
  const std::size_t size = evbuffer_get_length(body);
  const auto* bytes = size == 0 ? "" : reinterpret_cast<const char*>(evbuffer_pullup(body, -1));
  const auto checked = checkSignature(
      {.path = {path.get(), length}, .query = query == nullptr ? "" : query, .body = {bytes, size}},
      keys_);
  if (const auto* refusal = std::get_if<Refusal>(&checked)) {
    refuse(request, *refusal);
    return;
  }
  stream_.add(std::get<Report>(checked),
              [this, request](std::string_view refusal) { answer(request, refusal); });
}

void ReportServer::refuse(evhttp_request* request, const Refusal& refusal) {
  const std::string text = boost::json::serialize(
      boost::json::object{{"code", refusal.status}, {"message", refusal.message}});
  evbuffer_add(evhttp_request_get_output_buffer(request), text.data(), text.size());
  evhttp_send_reply(request, refusal.status, "Refused", nullptr);
}

void ReportServer::answer(evhttp_request* request, std::string_view refusal) {
  const std::string_view text = refusal.empty() ? kTaken : refusal;
  evbuffer_add(evhttp_request_get_output_buffer(request), text.data(), text.size());
  if (refusal.empty()) {
    evhttp_send_reply(request, HTTP_OK, "OK", nullptr);
  } else {
    evhttp_send_reply(request, HTTP_SERVUNAVAIL, "Not stored", nullptr);
    log(refusal);
  }
  if (ended_ && stream_.waiting() == 0) ended_();
}

// A full stream refuses thousands in a second, and one line says it.
void ReportServer::log(std::string_view refusal) {
  const auto now = Clock::now();
  if (now - logged_ < 1s) return;
  logged_ = now;
  std::fprintf(stderr, "reports are refused: %.*s\n", static_cast<int>(refusal.size()),
               refusal.data());
}

void ReportServer::end(std::function<void()> ended) {
  ended_ = std::move(ended);
  if (stream_.waiting() == 0) ended_();
}

}  // namespace zovk::intake
