#include "service/console/Console.h"

#include <charconv>

#include <boost/json/serialize.hpp>

#include "service/Body.h"
#include "service/FaultyDelivery.h"
#include "service/Loopback.h"
#include "service/console/ConsoleError.h"
#include "service/console/ConsoleFiles.h"
#include "service/console/EntryFields.h"
#include "service/console/WholeFile.h"
#include "zovkpopup/JsonText.h"

namespace zovk::service {
namespace {

constexpr std::size_t kShownAnswers = 100;
constexpr std::chrono::milliseconds kHeartbeat{5000};
constexpr std::size_t kLongestName = 64;

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

Answer done(boost::json::object members = {}) {
  members["code"] = 0;
  return jsonAnswer(members);
}

std::int64_t numberOf(const std::string& text) {
  std::int64_t number = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
  return read.ec == std::errc() && read.ptr == text.data() + text.size() ? number : 0;
}

std::string nameOf(const boost::json::object& body) {
  std::string who = textIn(body, "who");
  if (who.empty()) return "somebody";
  if (who.size() > kLongestName) throw ConsoleError(400, "a name may have 64 bytes");
  return who;
}

boost::json::object entryIn(const boost::json::object& body) {
  const auto* const entry = body.if_contains("entry");
  if (entry == nullptr || !entry->is_object()) throw ConsoleError(400, "\"entry\" is no object");
  return entry->get_object();
}

std::optional<std::string> pageIn(const boost::json::object& body) {
  const auto* const page = body.if_contains("page_text");
  if (page == nullptr || !page->is_string()) return std::nullopt;
  return std::string(page->get_string());
}

std::vector<std::int64_t> idsIn(const boost::json::object& body) {
  const auto* const ids = body.if_contains("ids");
  if (ids == nullptr || !ids->is_array()) throw ConsoleError(400, "\"ids\" is no array");
  if (ids->get_array().size() > LiveFolder::kMostPopups) throw ConsoleError(413, "too many popups");
  std::vector<std::int64_t> result;
  for (const auto& id : ids->get_array()) {
    if (!id.is_int64()) throw ConsoleError(400, "\"ids\" are numbers");
    result.push_back(id.get_int64());
  }
  return result;
}

AnswerFilter filterOf(const httplib::Request& request) {
  return {numberOf(request.get_param_value("popup")), numberOf(request.get_param_value("from")),
          numberOf(request.get_param_value("until")), request.get_param_value("text"),
          request.get_param_value("zone") == "utc"};
}

boost::json::object jsonOf(const ZOVKPopupExplainedPopup& popup) {
  return {{"scene", popup.scene},       {"pop_id", popup.pop_id}, {"page", popup.page},
          {"verdict", popup.verdict},   {"wanted", popup.wanted}, {"found", popup.found},
          {"sentence", popup.sentence}, {"rank", popup.rank}};
}

boost::json::object bodyOf(const std::string& text) {
  if (text.empty()) return {};
  try {
    return objectOf(text, "the request");
  } catch (const FolderError& error) {
    throw ConsoleError(400, error.what());
  }
}

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

void Console::addPopups() {
  get("/console/api/popups", [this](const Call&) { return jsonAnswer(workshop_.overview()); });
  get("/console/api/popups/([0-9]+)/page", [this](const Call& call) {
    return jsonAnswer(boost::json::object{{"text", workshop_.page(call.id)}});
  });
  post("/console/api/popups", [this](const Call& call) {
    return done({{"id", workshop_.create(call.who, entryIn(call.body), pageIn(call.body))}});
  });
  post("/console/api/popups/([0-9]+)", [this](const Call& call) {
    workshop_.save(call.who, call.id, numberIn(call.body, "version"), entryIn(call.body),
                   pageIn(call.body));
    return done();
  });
  post("/console/api/popups/([0-9]+)/duplicate", [this](const Call& call) {
    return done({{"id", workshop_.duplicate(call.who, call.id)}});
  });
  post("/console/api/popups/([0-9]+)/delete", [this](const Call& call) {
    workshop_.remove(call.who, call.id);
    return done();
  });
  post("/console/api/popups/([0-9]+)/move", [this](const Call& call) {
    workshop_.move(call.who, call.id, numberIn(call.body, "before"));
    return done();
  });
  post("/console/api/preview", [this](const Call& call) {
    std::string page = pageIn(call.body).value_or("");
    if (page.size() > Workshop::kLongestPage) throw ConsoleError(413, "a page may have 4 MiB");
    return done({{"address", "/console/preview/" + previews_.add(std::move(page))}});
  });
}

void Console::addReleases() {
  post("/console/api/publish", [this](const Call& call) {
    workshop_.publish(call.who, idsIn(call.body));
    return done();
  });
  post("/console/api/popups/([0-9]+)/pause", [this](const Call& call) {
    workshop_.pause(call.who, call.id);
    return done();
  });
  post("/console/api/popups/([0-9]+)/end", [this](const Call& call) {
    workshop_.end(call.who, call.id);
    return done();
  });
  post("/console/api/rollback", [this](const Call& call) {
    workshop_.rollBack(call.who, numberIn(call.body, "release"));
    return done();
  });
  get("/console/api/history", [this](const Call&) {
    return jsonAnswer(boost::json::object{{"history", workshop_.history()}});
  });
  post("/console/api/explain", [this](const Call& call) { return answerExplanation(call); });
}

void Console::addAnswers() {
  get("/console/api/answers", [this](const Call& call) {
    boost::json::object totals = answers_.totals(filterOf(call.request));
    totals["latest"] = answers_.list(filterOf(call.request), kShownAnswers);
    return jsonAnswer(totals);
  });
  get("/console/api/answers.csv", [this](const Call& call) {
    Answer answer;
    answer.type = "text/csv; charset=utf-8";
    answer.body = answers_.csv(filterOf(call.request));
    return answer;
  });
  get("/console/api/answers.json", [this](const Call& call) {
    return jsonAnswer(answers_.list(filterOf(call.request), Answers::kMostExported));
  });
  get("/console/api/refusals", [this](const Call&) {
    return jsonAnswer(boost::json::object{{"refusals", refusals_.list()}});
  });
}

void Console::addControls() {
  get("/console/api/controls", [this](const Call&) {
    const auto checks = server_.folder().readObject("checks.json");
    return jsonAnswer(boost::json::object{{"faults", server_.faults().list()},
                                          {"checks", checks ? *checks : boost::json::object()}});
  });
  post("/console/api/checks", [this](const Call& call) { return setCheck(call); });
  post("/console/api/faults", [this](const Call& call) { return setFault(call); });
}

Answer Console::answerExplanation(const Call& call) {
  PlayerQuestion question;
  question.scene = textIn(call.body, "scene");
  question.sceneType = static_cast<std::uint64_t>(numberIn(call.body, "scene_type"));
  question.channel = static_cast<std::int32_t>(numberIn(call.body, "channel"));
  question.moment = static_cast<double>(numberIn(call.body, "moment"));
  const ZOVKPopupExplanation explanation = workshop_.explain(question);
  boost::json::array popups;
  for (const auto& popup : explanation.popups) popups.push_back(jsonOf(popup));
  return jsonAnswer(
      boost::json::object{{"sentence", explanation.sentence}, {"popups", std::move(popups)}});
}

// A number, an object, or null to forget the name.
Answer Console::setCheck(const Call& call) {
  const std::string name = textIn(call.body, "name");
  const auto* const answer = call.body.if_contains("answer");
  if (name.empty() || name.size() > kLongestName)
    throw ConsoleError(400, "a name has 1 to 64 bytes");
  if (answer == nullptr) throw ConsoleError(400, "\"answer\" is missing");
  const LockGuard lock(checksMutex_);
  auto checks = server_.folder().readObject("checks.json").value_or(boost::json::object());
  if (answer->is_null()) {
    checks.erase(name);
  } else {
    checks[name] = *answer;
  }
  if (checks.size() > kMostChecks) throw ConsoleError(409, "there may be 200 conditions");
  writeWhole(server_.folder().path("checks.json"), tool::prettyJson(checks));
  return done();
}

Answer Console::setFault(const Call& call) {
  const std::string path = textIn(call.body, "path");
  // A fault in the console would lock its user out.
  if (path == "/" || path.starts_with("/console")) {
    throw ConsoleError(400, "no fault can be set for the console");
  }
  try {
    server_.faults().set(call.body);
  } catch (const std::invalid_argument& error) {
    throw ConsoleError(400, error.what());
  }
  return done();
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
