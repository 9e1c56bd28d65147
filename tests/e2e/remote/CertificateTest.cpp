#include "e2e/remote/PrivateMounts.h"
#include "e2e/remote/RemoteFixture.h"

namespace zovk {
namespace {

class CertificateOfTheService : public RemoteFixture {
 protected:
  void startTlsService() { startService({"--tls", "--certificate-out", certificate()}); }
  std::string certificate() { return folder().path("certificate.pem"); }
  ZOVKPopupHostSettings gameSettings() override {
    auto game = RemoteFixture::gameSettings();
    game.certificateAuthority = authority_;
    return game;
  }

  std::string authority_;
};

TEST_F(CertificateOfTheService, ThatNobodyVouchesForEndsTheRequest) {
  startTlsService();
  startGame();
  await("Request remote config failed!");
  ASSERT_EQ(log().errors().size(), 2U);
  EXPECT_THAT(log().errors()[0],
              requestError(kConfigPath, "SSL certificate problem: self-signed certificate"));
  EXPECT_TRUE(ZOVKPopup::havePopup(kLocalType));
  EXPECT_TRUE(cacheListing().empty());
  stopService();
  EXPECT_EQ(requestLog(), "");
}

TEST_F(CertificateOfTheService, ThatTheGameVouchesForIsTrusted) {
  startTlsService();
  authority_ = certificate();
  startGame();
  awaitPages(1);
  EXPECT_TRUE(log().errors().empty());
  EXPECT_TRUE(ZOVKPopup::havePopup(kRemoteType));
}

TEST_F(CertificateOfTheService, ThatIsNotTheOneVouchedForEndsTheRequest) {
  startTlsService();
  const std::string another = folder().path("another.pem");
  std::filesystem::rename(certificate(), another);
  stopService();
  startTlsService();
  authority_ = another;
  startGame();
  await("Request remote config failed!");
  EXPECT_THAT(log().errors().front(),
              requestError(kConfigPath, "SSL certificate problem: self-signed certificate"));
  EXPECT_TRUE(ZOVKPopup::havePopup(kLocalType));
}

TEST_F(CertificateOfTheService, IsTrustedByNobodyWhenTheGamesFileIsNone) {
  startTlsService();
  authority_ = folder().path("config.json");
  startGame();
  await("Request remote config failed!");
  ASSERT_EQ(log().errors().size(), 2U);
  EXPECT_THAT(log().errors()[0], testing::StartsWith("Request url:" + base() + kConfigPath));
  EXPECT_TRUE(ZOVKPopup::havePopup(kLocalType));
}

TEST_F(CertificateOfTheService, ThatWasAddedToTheSystemsStoreIsTrusted) {
  startTlsService();
  if (!trustOnly(certificate())) GTEST_SKIP() << "this machine allows no mounts of one's own";
  startGame();
  awaitPages(1);
  EXPECT_TRUE(log().errors().empty());
  EXPECT_TRUE(ZOVKPopup::havePopup(kRemoteType));
}

}  // namespace
}  // namespace zovk
