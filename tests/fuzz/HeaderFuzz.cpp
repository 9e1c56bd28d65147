// What a hostile server can answer to a download: its raw bytes, over a real connection, to the
// real session with the cache of earlier downloads. Each section of an input is the answer to the
// next request; later ones get a plain file. Two downloads of one address follow one another, so
// that the second is asked for with the validators of the first.
#include <atomic>
#include <filesystem>
#include <future>
#include <thread>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include "fuzz/Fuzz.h"
#include "platform/linux/http/CurlUrlSession.h"
#include "support/UniqueFd.h"
#include "zovkpopup/ThreadSafety.h"

namespace zovk {
namespace {

namespace fs = std::filesystem;

constexpr const char* kPlain =
    "HTTP/1.1 200 OK\r\nETag: \"1\"\r\nContent-Length: 5\r\nConnection: close\r\n\r\nplain";

/// Answers each connection of this machine with the next text, and closes it.
class Server {
 public:
  Server() : listener_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof place;
    auto* const address = reinterpret_cast<sockaddr*>(&place);
    if (::bind(listener_.get(), address, length) != 0 || ::listen(listener_.get(), 16) != 0 ||
        ::getsockname(listener_.get(), address, &length) != 0) {
      fail("no server", "");
    }
    url_ = "http://127.0.0.1:" + std::to_string(ntohs(place.sin_port));
    std::thread([this] { serve(); }).detach();  // as long as the process
  }
  const std::string& url() const { return url_; }
  void setAnswers(std::vector<std::string> answers) {
    const LockGuard lock(mutex_);
    answers_ = std::move(answers);
    next_ = 0;
  }

 private:
  std::string nextAnswer() {
    const LockGuard lock(mutex_);
    return next_ < answers_.size() ? answers_[next_++] : kPlain;
  }
  void serve() {
    while (true) {
      const UniqueFd connection(::accept4(listener_.get(), nullptr, nullptr, SOCK_CLOEXEC));
      char request[4096];
      if (::recv(connection.get(), request, sizeof request, 0) <= 0) continue;
      const std::string answer = nextAnswer();
      (void)::send(connection.get(), answer.data(), answer.size(), MSG_NOSIGNAL);
      ::shutdown(connection.get(), SHUT_WR);
      while (::recv(connection.get(), request, sizeof request, 0) > 0) {
      }
    }
  }

  const UniqueFd listener_;
  std::string url_;
  Mutex mutex_;
  std::vector<std::string> answers_ ZOVK_GUARDED_BY(mutex_);
  std::size_t next_ ZOVK_GUARDED_BY(mutex_) = 0;
};

Server& server() {
  static auto* const one = new Server;
  return *one;
}

/// Wherever an answer redirects to, it is this server that is asked.
void askOnlyThisServer() {
  for (const char* proxy : {"http_proxy", "https_proxy", "all_proxy"}) {
    setenv(proxy, server().url().c_str(), 1);
  }
  unsetenv("no_proxy");
  unsetenv("NO_PROXY");
}

fs::path scratch() {
  return fs::temp_directory_path() / ("zovkpopup-fuzz-headers-" + std::to_string(getpid()));
}

/// Returns whether the download succeeded. Its file must be there while the completion runs.
void download(CurlUrlSession& session, const std::string& url, std::string_view input) {
  std::promise<void> ended;
  session
      .downloadTask(url,
                    [&](const DownloadResult& result) {
                      if (result.error.has_value() == result.path.has_value()) {
                        fail("neither a file nor an error", input);
                      }
                      if (result.path && !fs::exists(*result.path)) fail("no file", input);
                      ended.set_value();
                    })
      ->resume();
  ended.get_future().wait();
}

void ask(CurlUrlSession& session, const std::string& url, std::string_view input) {
  std::promise<void> ended;
  UrlRequest request;
  request.url = url;
  session
      .dataTask(std::move(request),
                [&](const DataResult& result) {
                  if (result.error.has_value() == result.body.has_value()) {
                    fail("neither a body nor an error", input);
                  }
                  ended.set_value();
                })
      ->resume();
  ended.get_future().wait();
}

}  // namespace

void fuzz(std::string_view input) {
  static const bool proxied = (askOnlyThisServer(), true);
  (void)proxied;
  server().setAnswers(sectionsOf(input, 1));
  fs::create_directories(scratch());
  CurlSessionSettings settings;
  settings.cachePath = (scratch() / "downloads.db").string();
  {
    CurlUrlSession session(settings);
    const std::string url = server().url() + "/page.html";
    download(session, url, input);
    download(session, url, input);
    ask(session, url, input);
  }
  fs::remove_all(scratch());
}

}  // namespace zovk
