#include <gtest/gtest.h>

#include "network/ZOVKPopupNetwork.h"
#include "text/ZOVKPopupCommonTool.h"
#include "unit/network/NetworkFixture.h"

namespace zovk {
namespace {

constexpr const char* kCommon = "game_id=1001&install_id=ABC&os=2&version=1.0.0";

TEST(UrlParams, BeginEmptyWithThePlatformsCode) {
  const ZOVKPopupUrlParams fresh;
  EXPECT_EQ(fresh.urlStr + fresh.actionPath + fresh.gameID + fresh.gameKey, "");
  EXPECT_EQ(fresh.version + fresh.installID, "");
  EXPECT_EQ(fresh.os, 2);
  EXPECT_FALSE(fresh.postInfo.has_value());
}

TEST(CommonParameters, StandInOrder) {
  EXPECT_EQ(commonParameterText(params("https://s.example")), kCommon);
  ZOVKPopupUrlParams other = params("https://s.example");
  other.os = -1;
  EXPECT_EQ(commonParameterText(other), "game_id=1001&install_id=ABC&os=-1&version=1.0.0");
}

TEST(CommonParameters, AreNotEncoded) {
  ZOVKPopupUrlParams odd = params("https://s.example");
  odd.gameID = "a b&c=%41";
  odd.installID = "";
  EXPECT_EQ(commonParameterText(odd), "game_id=a b&c=%41&install_id=&os=2&version=1.0.0");
}

TEST(SignedUrl, JoinsServiceAndPath) {
  EXPECT_EQ(signedUrl(params("https://s.example", "/popup/get_info"), "SIG"),
            std::string("https://s.example/popup/get_info?") + kCommon + "&sig=SIG");
}

TEST(SignedUrl, ContinuesTheQueryOfAnEndpoint) {
  EXPECT_EQ(signedUrl(params("https://s.example/check?a=1"), "SIG"),
            std::string("https://s.example/check?a=1&") + kCommon + "&sig=SIG");
}

TEST(SignedUrl, BeginsTheQueryOfAnEndpointWithoutOne) {
  EXPECT_EQ(signedUrl(params("https://s.example/check"), "SIG"),
            std::string("https://s.example/check?") + kCommon + "&sig=SIG");
}

TEST(SignedUrl, BeginsAQueryBehindAPathThoughTheServiceHasOne) {
  EXPECT_EQ(signedUrl(params("https://s.example?a=1", "/popup/get_info"), "SIG"),
            std::string("https://s.example?a=1/popup/get_info?") + kCommon + "&sig=SIG");
}

TEST(SignedUrl, NeverHoldsTheGameKey) {
  EXPECT_EQ(signedUrl(params("https://s.example", "/x"), "SIG").find("secret"), std::string::npos);
}

TEST(SignatureSource, IsPathParametersBodyAndKey) {
  EXPECT_EQ(signatureSource(params("https://s.example", "/popup/get_info"), ""),
            std::string("/popup/get_info?") + kCommon + "secret");
  EXPECT_EQ(signatureSource(params("https://s.example", "/report"), R"({"a":1})"),
            std::string("/report?") + kCommon + R"({"a":1}secret)");
}

TEST(SignatureSource, LeavesThePathOfTheServiceOutWhereAnActionHasOne) {
  EXPECT_EQ(signatureSource(params("https://s.example/api/v1", "/popup/get_info"), ""),
            std::string("/popup/get_info?") + kCommon + "secret");
}

TEST(SignatureSource, TakesThePathOfAnEndpointWithoutItsQuery) {
  EXPECT_EQ(signatureSource(params("https://s.example/check?a=1"), ""),
            std::string("/check?") + kCommon + "secret");
  EXPECT_EQ(signatureSource(params("https://s.example:8080/a/b?x=1#y"), ""),
            std::string("/a/b?") + kCommon + "secret");
}

TEST(SignatureSource, HasAnEmptyPathWhereThereIsNone) {
  for (const char* url : {"", "https://s.example", "https://s.example?a=1", "http://[broken"}) {
    EXPECT_EQ(signatureSource(params(url), ""), std::string("?") + kCommon + "secret") << url;
  }
}

TEST(SignatureSource, TakesThePathDecoded) {
  EXPECT_EQ(signatureSource(params("https://s.example/a%20b"), ""),
            std::string("/a b?") + kCommon + "secret");
}

TEST(SignatureSource, TakesThePathThatIsSent) {
  for (const char* url : {"https://s.example/vip?x=a|b", "https://s.example/vip?x=[1]",
                          "https://s.example/vip?q=\xe4\xb8\xad", "https://s.example/vip?x=50%",
                          "https://s.example/x/../vip", "https://s.example/%2e%2e/./vip"}) {
    EXPECT_EQ(signatureSource(params(url), ""), std::string("/vip?") + kCommon + "secret") << url;
  }
  EXPECT_EQ(signatureSource(params("https://s.example/a|b/50%"), ""),
            std::string("/a|b/50%?") + kCommon + "secret");
}

TEST(SignatureSource, TakesAGivenPathAsItIs) {
  EXPECT_EQ(signatureSource(params("https://s.example", "/x/../%41"), ""),
            std::string("/x/../%41?") + kCommon + "secret");
}

TEST(Signature, AgreesWithWhatOthersCompute) {
  const auto signature = [](const ZOVKPopupUrlParams& p, const std::string& body) {
    return ZOVKPopupCommonTool::getTextMD5(signatureSource(p, body));
  };
  EXPECT_EQ(signature(params("https://s.example", "/popup/get_info"), ""),
            "2786be89397b59bc737e8ae9ee3b2b40");
  EXPECT_EQ(signature(params("https://s.example/check?a=1"), ""),
            "72b12950ac044236969982eaa51fb301");
  EXPECT_EQ(signature(params("https://s.example/report"), R"({"title":"HelloWorld"})"),
            "9a0f5641b755881ccce413dacb3686b9");
}

}  // namespace
}  // namespace zovk
