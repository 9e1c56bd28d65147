#include "service/console/Console.h"

#include "service/Body.h"
#include "service/FaultyDelivery.h"
#include "service/console/ConsoleError.h"
#include "service/console/ConsoleRequest.h"

namespace zovk::service {
namespace {

// The service stands in for the studio's own, so its plain address on loopback is not the author's
// fault.
std::string asIfSecure(std::string base) {
  constexpr std::string_view kPlain = "http://";
  if (base.starts_with(kPlain)) base.replace(0, kPlain.size(), "https://");
  return base;
}

Answer failure(const ConsoleError& error) {
  boost::json::object told = error.details();
  told["code"] = error.status();
  told["message"] = error.what();
  return jsonAnswer(told, error.status());
}

}  // namespace

Console::Console(Server& server, const Options& options, ReportFeed& feed, Refusals& refusals)
    : server_(server),
      feed_(feed),
      refusals_(refusals),
      gate_(options.tls, options.listen, server.port()),
      judged_(server.folder(), asIfSecure(server.config().base())),
      judge_(judged_),
      workshop_(server.folder(), server.config(), judge_, options.reports),
      answers_(options.reports) {
  addPage();
  addPopups();
  addReleases();
  addAnswers();
  addControls();
}

std::string Console::address() const {
  return gate_.origin() + "/#token=" + gate_.token();
}

void Console::get(const std::string& pattern, const Endpoint& endpoint) {
  server_.http().Get(pattern, [this, endpoint](const auto& request, auto& response) {
    reply(request, response, "", endpoint);
  });
}

// The body of a request is read only if the console knows its sender.
void Console::post(const std::string& pattern, const Endpoint& endpoint) {
  server_.http().Post(pattern,
                      [this, endpoint](const httplib::Request& request, httplib::Response& response,
                                       const httplib::ContentReader& reader) {
                        std::optional<std::string> body;
                        if (!gate_.refuse(request)) {
                          body = readBody(request, response, reader, kLargestBody);
                          if (!body) return;
                        }
                        reply(request, response, body.value_or(""), endpoint);
                      });
}

void Console::reply(const httplib::Request& request, httplib::Response& response,
                    const std::string& body, const Endpoint& endpoint) {
  std::optional<Answer> answer = gate_.refuse(request);
  try {
    if (!answer) {
      Call call{request, bodyOf(body), 0, ""};
      if (request.matches.size() > 1) call.id = numberOf(request.matches[1]);
      call.who = nameOf(call.body);
      answer = endpoint(call);
    }
  } catch (const ConsoleError& error) {
    answer = failure(error);
  } catch (const FolderError& error) {
    answer = problem(409, error.what());
  } catch (const std::exception& error) {
    answer = problem(500, error.what());
  }
  deliver(request, response, std::move(*answer), std::nullopt, server_.stopSignal());
}

}  // namespace zovk::service
