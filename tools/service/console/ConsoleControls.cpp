#include "service/console/Console.h"
#include "service/console/ConsoleError.h"
#include "service/console/ConsoleRequest.h"
#include "service/console/EntryFields.h"
#include "service/console/WholeFile.h"
#include "zovkpopup/JsonText.h"

namespace zovk::service {

void Console::addControls() {
  get("/console/api/controls", [this](const Call&) {
    const auto checks = server_.folder().readObject("checks.json");
    return jsonAnswer(boost::json::object{{"faults", server_.faults().list()},
                                          {"checks", checks ? *checks : boost::json::object()}});
  });
  post("/console/api/checks", [this](const Call& call) { return setCheck(call); });
  post("/console/api/faults", [this](const Call& call) { return setFault(call); });
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

}  // namespace zovk::service
