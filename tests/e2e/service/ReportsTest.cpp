#include <boost/json/serialize.hpp>

#include "e2e/service/ServiceFixture.h"

namespace zovk {
namespace {

class ServiceReports : public ServiceFixture {
 protected:
  httplib::Result report(const std::string& path, const std::string& action) {
    const boost::json::object result{{"action", action}, {"msg", ""}};
    return postSigned(path, {{"pop_id", 7}, {"data", boost::json::serialize(result)}});
  }
  boost::json::array listed(const std::string& query = "") {
    return jsonOf(client().Get("/reports" + query)).at("reports").as_array();
  }
};

TEST_F(ServiceReports, AreStoredListedAndPrinted) {
  start();
  EXPECT_EQ(jsonOf(report("/report/shop", "commit")), (boost::json::value{{"code", 0}, {"id", 1}}));
  const auto printed = boost::json::parse(process().nextLine().value_or("null"));
  const auto reports = listed();
  ASSERT_EQ(reports.size(), 1U);
  EXPECT_EQ(reports[0], printed);
  EXPECT_EQ(printed.at("name"), "shop");
  EXPECT_EQ(printed.at("game_id"), kGame);
  EXPECT_EQ(printed.at("install_id"), "6F9619FF-8B86-D011-B42D-00CF4FC964FF");
  EXPECT_EQ(printed.at("os"), "2");
  EXPECT_EQ(printed.at("version"), "1.0.0");
  EXPECT_EQ(printed.at("result").at("action"), "commit");
  EXPECT_EQ(printed.at("body").at("pop_id"), 7);
}

TEST_F(ServiceReports, NeedNoName) {
  start();
  EXPECT_EQ(report("/report", "commit")->status, 200);
  EXPECT_EQ(listed().at(0).at("name"), "");
}

TEST_F(ServiceReports, AreListedOldestFirstFromWhereTheAskerLeftOff) {
  start();
  for (const char* action : {"first", "second", "third"}) report("/report", action);
  const auto reports = listed("?after=1");
  ASSERT_EQ(reports.size(), 2U);
  EXPECT_EQ(reports[0].at("result").at("action"), "second");
  EXPECT_EQ(reports[1].at("result").at("action"), "third");
  EXPECT_EQ(client().Get("/reports?after=x")->status, 400);
}

TEST_F(ServiceReports, OutliveTheServiceInTheFileThatWasGiven) {
  const std::vector<std::string> arguments{"--reports", folder().path("kept.db")};
  start(arguments);
  report("/report", "commit");
  process().signal(SIGTERM);
  EXPECT_EQ(process().wait(), 0);
  start(arguments);
  EXPECT_EQ(listed().size(), 1U);
}

TEST_F(ServiceReports, ThatAreNoJsonObjectAreRefused) {
  start();
  EXPECT_EQ(postSigned("/report", {})->status, 400);  // an empty object is sent as no body at all
  EXPECT_TRUE(listed().empty());
}

TEST_F(ServiceReports, WithAWrongSignatureAreNotStored) {
  start();
  ZOVKPopupUrlParams params = paramsFor("/report");
  EXPECT_EQ(client().Post(signedTarget(params), R"({"pop_id":1})", "")->status, 403);
  EXPECT_TRUE(listed().empty());
}

TEST_F(ServiceReports, MayBeLongWhateverTypeTheyClaimToBe) {
  start();
  ZOVKPopupUrlParams params = paramsFor("/report");
  params.postInfo = boost::json::object{{"token", std::string(20'000, 't')}};
  const std::string body = boost::json::serialize(*params.postInfo);
  const auto answer =
      client().Post(signedTarget(params), body, "application/x-www-form-urlencoded");
  ASSERT_TRUE(answer);
  EXPECT_EQ(answer->status, 200);
}

TEST_F(ServiceReports, ComeInFromManyPlayersAtOnce) {
  start();
  constexpr int kPlayers = 16;
  ZOVKPopupUrlParams params = paramsFor("/report");
  params.postInfo = boost::json::object{{"pop_id", 1}};
  const std::string target = signedTarget(params);
  std::vector<std::thread> players;
  for (int i = 0; i < kPlayers; ++i) {
    players.emplace_back([&] {
      httplib::Client player(base());
      player.set_url_encode(false);
      player.Post(target, R"({"pop_id":1})", "");
    });
  }
  for (std::thread& player : players) player.join();
  EXPECT_EQ(listed().size(), static_cast<std::size_t>(kPlayers));
}

}  // namespace
}  // namespace zovk
