#include "service/FaultyDelivery.h"

#include <algorithm>
#include <chrono>
#include <memory>

#include "service/Connections.h"

namespace zovk::service {
namespace {

constexpr std::size_t kMegabyte = 1 << 20;

// Bodies go through a provider, not as a text, which the library might compress: a page's tag
// stands for its exact bytes.
void sendWhole(httplib::Response& response, Answer answer) {
  response.status = answer.status;
  for (const auto& [name, value] : answer.headers) response.set_header(name, value);
  // Without a body the library sends the length by itself; for a provider, 0 means no length.
  if (answer.body.empty()) return;
  const auto body = std::make_shared<const std::string>(std::move(answer.body));
  response.set_content_provider(body->size(), answer.type,
                                [body](std::size_t offset, std::size_t length, auto& sink) {
                                  return sink.write(body->data() + offset, length);
                                });
}

void sendTooLittle(httplib::Response& response, const Answer& answer, std::size_t missing) {
  response.status = answer.status;
  const auto body = std::make_shared<const std::string>(answer.body);
  response.set_content_provider(body->size() + missing, answer.type,
                                [body](std::size_t offset, std::size_t /*length*/, auto& sink) {
                                  if (offset == 0) sink.write(body->data(), body->size());
                                  return false;
                                });
}

void sendSlowly(httplib::Response& response, Answer answer, std::size_t perSecond,
                StopSignal& stop) {
  if (answer.body.empty()) return sendWhole(response, std::move(answer));
  constexpr std::size_t kPiecesPerSecond = 10;
  const std::size_t piece = std::max<std::size_t>(1, perSecond / kPiecesPerSecond);
  const auto pause = std::chrono::milliseconds(1000 * piece / perSecond);
  response.status = answer.status;
  const auto body = std::make_shared<const std::string>(std::move(answer.body));
  response.set_content_provider(
      body->size(), answer.type,
      [body, piece, pause, &stop](std::size_t offset, std::size_t length, auto& sink) {
        if (offset != 0 && stop.waitFor(pause)) return false;
        return sink.write(body->data() + offset, std::min(piece, length));
      });
}

void sendHuge(httplib::Response& response, std::size_t megabytes) {
  const auto blanks = std::make_shared<const std::string>(kMegabyte, ' ');
  response.set_content_provider(megabytes * kMegabyte, "application/json",
                                [blanks](std::size_t /*offset*/, std::size_t length, auto& sink) {
                                  return sink.write(blanks->data(),
                                                    std::min(length, blanks->size()));
                                });
}

Answer serverError() {
  return {
      500, "<!DOCTYPE html><title>500</title><h1>Internal Server Error</h1>\n", "text/html", {}};
}

}  // namespace

void deliver(const httplib::Request& request, httplib::Response& response, Answer answer,
             const std::optional<Fault>& fault, StopSignal& stop) {
  if (!fault) return sendWhole(response, std::move(answer));
  switch (fault->kind) {
    case FaultKind::kDelay:
      stop.waitFor(std::chrono::milliseconds(fault->number));
      return sendWhole(response, std::move(answer));
    case FaultKind::kDrop:
      return cutConnection(request.remote_addr, request.remote_port);
    case FaultKind::kTruncate:
      return sendTooLittle(response, answer, fault->number);
    case FaultKind::kSlowDrip:
      return sendSlowly(response, std::move(answer), fault->number, stop);
    case FaultKind::kStatus500:
      return sendWhole(response, serverError());
    case FaultKind::kEmpty:
      return sendWhole(response, {200, "", answer.type, {}});
    case FaultKind::kNotJson:
      return sendWhole(response, {200, "this is {not JSON", answer.type, {}});
    case FaultKind::kHuge:
      return sendHuge(response, fault->number);
    case FaultKind::kRedirectLoop:
      return sendWhole(response, {302, "", "text/plain", {{"Location", request.target}}});
    case FaultKind::kChanged:
      return sendWhole(response, std::move(answer));
  }
}

}  // namespace zovk::service
