#include "service/FaultyDelivery.h"
#include "service/console/Console.h"
#include "service/console/ConsoleFiles.h"

namespace zovk::service {
namespace {

constexpr std::chrono::milliseconds kHeartbeat{5000};

// Nothing but the console's own files, and frames of its own; nobody may frame the console.
constexpr const char* kPolicy =
    "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' data:;"
    " connect-src 'self'; frame-src 'self'; base-uri 'none'; form-action 'none';"
    " frame-ancestors 'none'";
// A page in its frame is a stranger: it has no origin, opens nothing, and reaches no network.
constexpr const char* kPreviewPolicy =
    "sandbox allow-scripts; default-src 'none'; script-src 'unsafe-inline' 'unsafe-eval';"
    " style-src 'unsafe-inline'; img-src data: blob:; media-src data: blob:; font-src data:;"
    " frame-ancestors 'self'";

Answer fileAnswer(const std::string& name) {
  auto file = consoleFile(name);
  if (!file) return problem(404, "nothing here");
  Answer answer;
  answer.body = std::move(file->bytes);
  answer.type = file->type;
  answer.headers = {{"Cache-Control", "no-cache"},
                    {"Content-Security-Policy", kPolicy},
                    {"Referrer-Policy", "no-referrer"},
                    {"X-Content-Type-Options", "nosniff"},
                    {"Cross-Origin-Resource-Policy", "same-origin"}};
  return answer;
}

}  // namespace

// The page needs no token: it holds nothing yet when it is loaded.
void Console::addPage() {
  const auto file = [this](const httplib::Request& request, httplib::Response& response,
                           const std::string& name) {
    auto refusal = gate_.refuseStranger(request);
    deliver(request, response, refusal ? std::move(*refusal) : fileAnswer(name), std::nullopt,
            server_.stopSignal());
  };
  server_.http().Get(
      "/", [file](const auto& request, auto& response) { file(request, response, "index.html"); });
  server_.http().Get(
      "/console/([a-z-]+\\.(?:js|css|html))",
      [file](const auto& request, auto& response) { file(request, response, request.matches[1]); });
  server_.http().Get(
      "/console/preview/([0-9a-f]{64})", [this](const auto& request, auto& response) {
        auto answer = gate_.refuseStranger(request);
        const auto page = previews_.page(request.matches[1]);
        if (!answer && !page) answer = problem(404, "no such preview");
        if (!answer) {
          answer = Answer{200,
                          *page,
                          "text/html; charset=utf-8",
                          {{"Cache-Control", "no-store"},
                           {"Content-Security-Policy", kPreviewPolicy},
                           {"Referrer-Policy", "no-referrer"}}};
        }
        deliver(request, response, std::move(*answer), std::nullopt, server_.stopSignal());
      });
  server_.http().Get("/console/events",
                     [this](const auto& request, auto& response) { stream(request, response); });
}

void Console::stream(const httplib::Request& request, httplib::Response& response) {
  auto refusal = gate_.refuse(request);
  const auto listener = refusal ? nullptr : feed_.listen();
  if (!refusal && !listener) refusal = problem(503, "there are listeners enough");
  if (refusal) {
    return deliver(request, response, std::move(*refusal), std::nullopt, server_.stopSignal());
  }
  response.set_header("Cache-Control", "no-store");
  response.set_chunked_content_provider(
      "text/event-stream",
      [this, listener, greeted = false](std::size_t /*offset*/, httplib::DataSink& sink) mutable {
        // The browser calls the stream open when the first bytes are there.
        const auto line = greeted ? listener->next(kHeartbeat) : std::nullopt;
        greeted = true;
        const std::string event = line ? "event: report\ndata: " + *line + "\n\n" : ":\n\n";
        if (feed_.closed()) {
          sink.done();
          return true;
        }
        return sink.write(event.data(), event.size());
      });
}

}  // namespace zovk::service
