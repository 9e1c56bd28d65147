#pragma once

#include <functional>
#include <string>

#include <boost/json/object.hpp>
#include <httplib.h>

#include "service/Server.h"
#include "service/console/Answers.h"
#include "service/console/Gate.h"
#include "service/console/Judge.h"
#include "service/console/Previews.h"
#include "service/console/Refusals.h"
#include "service/console/ReportFeed.h"
#include "service/console/Workshop.h"

namespace zovk::service {

/// The page at `/` and all its endpoints. It adds the endpoints to the service. Make it before the
/// service starts, and destroy it after the service has stopped. Throws std::exception if its file
/// cannot be used.
class Console {
 public:
  static constexpr std::size_t kLargestBody = 6 << 20;
  static constexpr std::size_t kMostChecks = 200;

  Console(Server& server, const Options& options, ReportFeed& feed, Refusals& refusals);

  /// Returns the address to open, with the token where only the page can read it.
  std::string address() const;

 private:
  struct Call {
    const httplib::Request& request;
    boost::json::object body;
    std::int64_t id = 0;  ///< The number in the path.
    std::string who;
  };
  using Endpoint = std::function<Answer(const Call&)>;

  void addPage();
  void addPopups();
  void addReleases();
  void addAnswers();
  void addControls();
  void get(const std::string& pattern, const Endpoint& endpoint);
  void post(const std::string& pattern, const Endpoint& endpoint);
  void reply(const httplib::Request& request, httplib::Response& response, const std::string& body,
             const Endpoint& endpoint);
  void stream(const httplib::Request& request, httplib::Response& response);

  Answer answerExplanation(const Call& call);
  Answer setCheck(const Call& call);
  Answer setFault(const Call& call);

  Server& server_;
  ReportFeed& feed_;
  Refusals& refusals_;
  Gate gate_;
  ConfigDocument judged_;
  Judge judge_;
  Workshop workshop_;
  Answers answers_;
  Previews previews_;
  Mutex checksMutex_;
};

}  // namespace zovk::service
