#include "service/console/Console.h"
#include "service/console/ConsoleError.h"
#include "service/console/ConsoleRequest.h"
#include "service/console/EntryFields.h"

namespace zovk::service {
namespace {

boost::json::object jsonOf(const ZOVKPopupExplainedPopup& popup) {
  return {{"scene", popup.scene},       {"pop_id", popup.pop_id}, {"page", popup.page},
          {"verdict", popup.verdict},   {"wanted", popup.wanted}, {"found", popup.found},
          {"sentence", popup.sentence}, {"rank", popup.rank}};
}

}  // namespace

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

}  // namespace zovk::service
