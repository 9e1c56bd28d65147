#include "service/Server.h"

#include <charconv>
#include <csignal>
#include <cstdio>

#include <boost/json/serialize.hpp>
#include <sys/socket.h>
#include <unistd.h>

#include "service/Body.h"
#include "service/Checks.h"
#include "service/Connections.h"
#include "service/FaultyDelivery.h"
#include "service/Loopback.h"
#include "service/Pages.h"

namespace zovk::service {
namespace {

constexpr std::size_t kLargestBody = 1 << 20;
// The console sends whole pages.
constexpr std::size_t kLargestOfAll = 8 << 20;
// A connection has a thread to itself for as long as it is open.
constexpr std::size_t kThreads = 128;
constexpr int kWaitingConnections = 128;
constexpr time_t kTransferSeconds = 10;
constexpr time_t kIdleSeconds = 1;
constexpr std::size_t kRequestsPerConnection = 1000;
constexpr const char* kStopPath = "/_control/stop";

Answer onlyFromThisMachine() {
  return problem(403, "only from this machine");
}

std::string rawQuery(const std::string& target) {
  const std::size_t question = target.find('?');
  return question == std::string::npos ? "" : target.substr(question + 1);
}

void log(const httplib::Request& request, const httplib::Response& response) {
  std::fprintf(stderr, "%s %s %d\n", request.method.c_str(), request.target.c_str(),
               response.status);
}

std::unique_ptr<httplib::Server> makeHttpServer(const Certificate* certificate) {
  if (certificate == nullptr) return std::make_unique<httplib::Server>();
  return std::make_unique<httplib::SSLServer>(certificate->x509(), certificate->key());
}

}  // namespace

Server::Server(const Options& options, ReportSink reportSink, RefusalSink refusalSink)
    : folder_(options.folder),
      keys_(folder_, options.games),
      signatures_(keys_, options.showKeys),
      reports_(options.reports),
      reportSink_(std::move(reportSink)),
      refusalSink_(std::move(refusalSink)),
      certificate_(options.tls ? std::make_unique<Certificate>(options.listen) : nullptr),
      http_(makeHttpServer(certificate_.get())),
      port_(bind(options)),
      address_(baseAddress(options.tls, options.listen, port_)) {
  config_.emplace(folder_, options.base.empty() ? address_ : options.base);
  for (const std::string& fault : options.faults) faults_.set(fault);
  if (!options.certificateOut.empty()) certificate_->writePem(options.certificateOut);
  setLimits(options.verbose);
  addServiceEndpoints();
  addControlEndpoints();
  addErrorAnswers();
}

Server::~Server() {
  stop();
}

void Server::stop() {
  stop_.raise();
  http_->stop();
  stopReading(port_);
  if (running_.valid()) running_.wait();
}

int Server::bind(const Options& options) {
  // Before the socket is made: an answer whose body waits for the client's word takes 40 ms more.
  http_->set_tcp_nodelay(true);
  http_->set_socket_options([this](socket_t socket) {
    const int yes = 1;
    ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof(yes));
    listener_ = socket;
  });
  const int port = options.port == 0 ? http_->bind_to_any_port(options.listen) : options.port;
  const bool bound = options.port == 0 ? port > 0 : http_->bind_to_port(options.listen, port);
  if (!bound) {
    throw ListenError("cannot listen on " + options.listen + " port " +
                      std::to_string(options.port));
  }
  // The library's own waiting line is too short for a game that fetches all its pages at once.
  ::listen(listener_, kWaitingConnections);
  return port;
}

void Server::setLimits(bool verbose) {
  http_->new_task_queue = [] { return new httplib::ThreadPool(kThreads); };
  http_->set_payload_max_length(kLargestOfAll);
  http_->set_read_timeout(kTransferSeconds);
  http_->set_write_timeout(kTransferSeconds);
  http_->set_keep_alive_timeout(kIdleSeconds);
  http_->set_keep_alive_max_count(kRequestsPerConnection);
  // This runs when an answer has been sent, so that the one to a request to stop still gets out.
  http_->set_logger([verbose](const httplib::Request& request, const httplib::Response& response) {
    if (verbose) log(request, response);
    if (request.path == kStopPath && response.status == 200) ::kill(::getpid(), SIGTERM);
  });
}

void Server::addAnswerToTheRest() {
  const Endpoint nothingHere = [](const Call&) { return problem(404, "nothing here"); };
  get(".*", nothingHere);
  post(".*", nothingHere);
}

void Server::start() {
  addAnswerToTheRest();
  running_ = std::async(std::launch::async, [this] { http_->listen_after_bind(); });
  const auto ended = [this] {
    return running_.wait_for(std::chrono::milliseconds(1)) == std::future_status::ready;
  };
  while (!http_->is_running()) {
    if (ended() && !http_->is_running()) throw ListenError("cannot listen");
  }
}

void Server::addServiceEndpoints() {
  get("/popup/get_info",
      withSignature([this](const Call&, const Caller&) { return answerConfig(); }));
  get("/pages/([^/]+)", [this](const Call& call) {
    return answerPage(folder_, call.request.matches[1],
                      {call.request.get_header_value("If-None-Match"),
                       call.request.get_header_value("If-Modified-Since")});
  });
  post("/check/([^/]+)", withSignature([this](const Call& call, const Caller&) {
         return jsonAnswer(answerCheck(folder_, call.request.matches[1]));
       }));
  post("/report(?:/([^/]+))?", withSignature([this](const Call& call, const Caller& caller) {
         return answerReport(call, caller);
       }));
  get("/reports", [this](const Call& call) { return answerReportList(call); });
}

void Server::addControlEndpoints() {
  get("/_control/fault", [this](const Call& call) {
    if (!isLoopback(call.request.remote_addr)) return onlyFromThisMachine();
    return jsonAnswer(boost::json::object{{"faults", faults_.list()}});
  });
  post("/_control/fault", [this](const Call& call) { return answerFault(call); });
  post(kStopPath, [](const Call& call) {
    if (!isLoopback(call.request.remote_addr)) return onlyFromThisMachine();
    return jsonAnswer(boost::json::object{{"code", 0}});
  });
}

void Server::addErrorAnswers() {
  http_->set_error_handler([](const httplib::Request&, httplib::Response& response) {
    if (response.content_length_ != 0 || !response.body.empty()) return;
    const Answer answer = problem(response.status, "this request cannot be served");
    response.set_content(answer.body, answer.type);
  });
}

void Server::get(const std::string& pattern, const Endpoint& endpoint) {
  http_->Get(pattern, [this, endpoint](const httplib::Request& request, httplib::Response& answer) {
    reply({request, request.body}, endpoint, answer);
  });
}

// Bodies are read here: the library would take some for forms and allow them 8 KiB only.
void Server::post(const std::string& pattern, const Endpoint& endpoint) {
  http_->Post(pattern, [this, endpoint](const httplib::Request& request, httplib::Response& answer,
                                        const httplib::ContentReader& reader) {
    if (const auto body = readBody(request, answer, reader, kLargestBody)) {
      reply({request, *body}, endpoint, answer);
    }
  });
}

Server::Endpoint Server::withSignature(const SignedEndpoint& endpoint) const {
  return [this, endpoint](const Call& call) {
    auto checked = signatures_.check(call.request.path, rawQuery(call.request.target), call.body);
    if (auto* const refusal = std::get_if<Answer>(&checked)) {
      refusalSink_(call.request.path, *refusal);
      return std::move(*refusal);
    }
    return endpoint(call, std::get<Caller>(checked));
  };
}

// A fault spoils the answer alone: the request has been carried out by then.
void Server::reply(const Call& call, const Endpoint& endpoint, httplib::Response& response) {
  const auto fault = faults_.take(call.request.path);
  Answer answer;
  try {
    answer = endpoint(call);
    if (fault && fault->kind == FaultKind::kChanged && answer.status == 200) {
      answer.body = config_->text(fault->file);
    }
  } catch (const std::exception& error) {
    answer = problem(500, error.what());
  }
  deliver(call.request, response, std::move(answer), fault, stop_);
}

Answer Server::answerConfig() const {
  Answer answer;
  answer.body = config_->text("config.json");
  answer.headers.emplace_back("Cache-Control", "no-cache");
  return answer;
}

Answer Server::answerReport(const Call& call, const Caller& caller) {
  try {
    objectOf(call.body, "the report");
  } catch (const FolderError& error) {
    return problem(400, error.what());
  }
  const boost::json::object report = reports_.add(caller, call.request.matches[1], call.body);
  {
    const LockGuard lock(reportMutex_);
    reportSink_(boost::json::serialize(report));
  }
  return jsonAnswer(boost::json::object{{"code", 0}, {"id", report.at("id")}});
}

Answer Server::answerReportList(const Call& call) const {
  if (!isLoopback(call.request.remote_addr)) return onlyFromThisMachine();
  const std::string text = call.request.get_param_value("after");
  std::int64_t after = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), after);
  if (!text.empty() && read.ptr != text.data() + text.size()) {
    return problem(400, "after is a report's number");
  }
  return jsonAnswer(boost::json::object{{"reports", reports_.list(after)}});
}

Answer Server::answerFault(const Call& call) {
  if (!isLoopback(call.request.remote_addr)) return onlyFromThisMachine();
  try {
    faults_.set(objectOf(call.body, "the fault"));
  } catch (const std::exception& error) {
    return problem(400, error.what());
  }
  return jsonAnswer(boost::json::object{{"code", 0}, {"faults", faults_.list()}});
}

}  // namespace zovk::service
