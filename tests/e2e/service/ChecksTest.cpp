#include "e2e/service/ServiceFixture.h"

namespace zovk {
namespace {

class ServiceChecks : public ServiceFixture {
 protected:
  boost::json::value check(const std::string& path) {
    const auto answer = postSigned(path, {{"pop_id", 1}, {"scene", "main menu"}});
    EXPECT_TRUE(answer && answer->status == 200);
    return jsonOf(answer);
  }
};

TEST_F(ServiceChecks, AnswersByName) {
  folder().write("checks.json",
                 R"({"yes": 1, "text": "1", "rich": {"need_popup": 1, "extra": {"a": 2}}})");
  start();
  EXPECT_EQ(check("/check/yes"), (boost::json::value{{"need_popup", 1}}));
  EXPECT_EQ(check("/check/text"), (boost::json::value{{"need_popup", "1"}}));
  EXPECT_EQ(check("/check/rich").at("extra").at("a"), 2);
}

TEST_F(ServiceChecks, NeedsNoPopupWhereTheFolderSaysNothing) {
  start();
  EXPECT_EQ(check("/check/unknown").at("need_popup"), 0);
  folder().write("checks.json", R"({"yes": 1})");
  EXPECT_EQ(check("/check/unknown").at("need_popup"), 0);
}

TEST_F(ServiceChecks, TakesAnAddressWithAQueryOfItsOwn) {
  folder().write("checks.json", R"({"yes": 1})");
  start();
  EXPECT_EQ(check("/check/yes?a=1&b=2").at("need_popup"), 1);
}

TEST_F(ServiceChecks, TakesANameThatIsNotAscii) {
  folder().write("checks.json", R"({"größe": 1})");
  start();
  EXPECT_EQ(check("/check/gr%C3%B6%C3%9Fe").at("need_popup"), 1);
}

}  // namespace
}  // namespace zovk
