#pragma once

#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

#include <httplib.h>

#include "service/Certificate.h"
#include "service/ConfigDocument.h"
#include "service/FaultBook.h"
#include "service/GameKeys.h"
#include "service/Options.h"
#include "service/Reports.h"
#include "service/SignatureCheck.h"
#include "service/StopSignal.h"

namespace zovk::service {

/// The service cannot listen on the port or the address.
class ListenError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The whole service. The constructor takes the port, so that `base` is known. From `start` until
/// the object is destroyed, each request is answered on its own thread. Throws std::exception if it
/// cannot be set up.
class Server {
 public:
  /// Receives each report as one line of JSON, one call at a time.
  using ReportSink = std::function<void(const std::string& line)>;
  /// Receives each answer to a request with a refused signature; several calls at a time.
  using RefusalSink = std::function<void(const std::string& path, const Answer& answer)>;

  Server(const Options& options, ReportSink reportSink, RefusalSink refusalSink);
  ~Server();
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  /// Returns once requests are answered.
  void start();
  /// Ends every running answer, and waits for that.
  void stop();
  /// Returns the address on which it listens.
  const std::string& address() const { return address_; }
  int port() const { return port_; }
  bool knowsGames() const { return !keys_.empty(); }

  /// Returns the server for further endpoints; add them before `start`.
  httplib::Server& http() { return *http_; }
  const Folder& folder() const { return folder_; }
  const ConfigDocument& config() const { return *config_; }
  FaultBook& faults() { return faults_; }
  StopSignal& stopSignal() { return stop_; }

 private:
  struct Call {
    const httplib::Request& request;
    const std::string& body;
  };
  using Endpoint = std::function<Answer(const Call&)>;
  using SignedEndpoint = std::function<Answer(const Call&, const Caller&)>;

  void setLimits(bool verbose);
  int bind(const Options& options);
  void addServiceEndpoints();
  void addControlEndpoints();
  void addErrorAnswers();
  void addAnswerToTheRest();

  void get(const std::string& pattern, const Endpoint& endpoint);
  void post(const std::string& pattern, const Endpoint& endpoint);
  Endpoint withSignature(const SignedEndpoint& endpoint) const;
  void reply(const Call& call, const Endpoint& endpoint, httplib::Response& response);

  Answer answerConfig() const;
  Answer answerReport(const Call& call, const Caller& caller);
  Answer answerReportList(const Call& call) const;
  Answer answerFault(const Call& call);

  Folder folder_;
  GameKeys keys_;
  SignatureCheck signatures_;
  Reports reports_;
  FaultBook faults_;
  ReportSink reportSink_;
  RefusalSink refusalSink_;
  Mutex reportMutex_;
  StopSignal stop_;
  std::unique_ptr<Certificate> certificate_;
  std::unique_ptr<httplib::Server> http_;
  int listener_ = -1;
  int port_;
  std::string address_;
  std::optional<ConfigDocument> config_;
  std::future<void> running_;
};

}  // namespace zovk::service
