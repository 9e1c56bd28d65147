#include "e2e/service/ServiceFixture.h"

namespace zovk {
namespace {

using ServiceSignature = ServiceFixture;

TEST_F(ServiceSignature, RefusesAWrongKeyAndShowsWhatItSigned) {
  start();
  ZOVKPopupUrlParams params = paramsFor(kConfigPath);
  params.gameKey = "another";
  const auto answer = client().Get(signedTarget(params));
  ASSERT_TRUE(answer);
  EXPECT_EQ(answer->status, 403);
  const auto told = jsonOf(answer);
  EXPECT_EQ(told.at("message"), "wrong signature");
  EXPECT_EQ(told.at("signed_text"),
            "/popup/get_info?game_id=1001&install_id=6F9619FF-8B86-D011-B42D-00CF4FC964FF&os=2"
            "&version=1.0.0<game key>");
  EXPECT_EQ(answer->body.find(kKey), std::string::npos);
  EXPECT_FALSE(told.as_object().contains("expected_sig"));
}

TEST_F(ServiceSignature, ShowsKeyAndExpectedSignatureWhenTold) {
  start({"--show-keys"});
  const std::string good = signedTarget(paramsFor(kConfigPath));
  const auto answer = client().Get(good.substr(0, good.size() - 32) + "0123");
  const auto told = jsonOf(answer);
  EXPECT_NE(told.at("signed_text").as_string().find(kKey), std::string::npos);
  EXPECT_EQ(told.at("expected_sig"), boost::json::string(good.substr(good.size() - 32)));
  EXPECT_EQ(told.at("sig"), "0123");
}

TEST_F(ServiceSignature, CoversTheBody) {
  start();
  ZOVKPopupUrlParams params = paramsFor("/check/a");
  params.postInfo = boost::json::object{{"pop_id", 1}};
  const std::string target = signedTarget(params);
  EXPECT_EQ(client().Post(target, R"({"pop_id":1})", "")->status, 200);
  EXPECT_EQ(client().Post(target, R"({"pop_id":2})", "")->status, 403);
}

TEST_F(ServiceSignature, CoversThePathAndNotTheAddressesOwnQuery) {
  start();
  const std::string query =
      signedTarget(paramsFor(kConfigPath)).substr(std::string(kConfigPath).size() + 1);
  EXPECT_EQ(client().Get(std::string(kConfigPath) + "?own=1&" + query)->status, 200);
  EXPECT_EQ(client().Post("/check/a?" + query, "", "")->status, 403);
}

TEST_F(ServiceSignature, NamesTheParameterThatIsMissing) {
  start();
  const auto message = [this](const std::string& query) {
    return jsonOf(client().Get("/popup/get_info?" + query)).at("message");
  };
  EXPECT_EQ(message("sig=1"), "game_id is missing");
  EXPECT_EQ(message("game_id=1001&sig=1"), "install_id is missing");
  EXPECT_EQ(message("game_id=1001&install_id=A&version=1.0.0&sig=1"), "os is missing");
  EXPECT_EQ(message("game_id=1001&install_id=A&os=2&sig=1"), "version is missing");
  EXPECT_EQ(message("game_id=1001&install_id=A&os=2&version=1.0.0"), "sig is missing");
  EXPECT_EQ(message("game_id=5&install_id=A&os=2&version=1.0.0&sig=1"), "unknown game_id: 5");
}

TEST_F(ServiceSignature, TakesAGameFromTheCommandLineBeforeTheFolders) {
  start({"--game", "1001=other=key", "--game", "spiel-ü=schlüssel"});
  EXPECT_EQ(getConfig()->status, 403);
  ZOVKPopupUrlParams params = paramsFor(kConfigPath);
  params.gameKey = "other=key";
  EXPECT_EQ(client().Get(signedTarget(params))->status, 200);
  params.gameID = "spiel-ü";
  params.gameKey = "schlüssel";
  EXPECT_EQ(client().Get(signedTarget(params))->status, 200);
}

TEST_F(ServiceSignature, WarnsWhenNoGameIsKnown) {
  folder().write("games.json", "{}");
  start();
  EXPECT_NE(errors().find("no games are known"), std::string::npos);
  EXPECT_EQ(getConfig()->status, 403);
}

}  // namespace
}  // namespace zovk
