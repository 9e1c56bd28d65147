#include "e2e/service/ServiceFixture.h"

namespace zovk {
namespace {

class ServiceFaultControl : public ServiceFixture {
 protected:
  boost::json::array faults() {
    return jsonOf(client().Get("/_control/fault")).at("faults").as_array();
  }
};

TEST_F(ServiceFaultControl, SetsAndTakesAwayWhileTheServiceRuns) {
  start();
  EXPECT_EQ(getConfig()->status, 200);
  EXPECT_EQ(postControl({{"path", kConfigPath}, {"fault", "status-500"}})->status, 200);
  EXPECT_EQ(getConfig()->status, 500);
  EXPECT_EQ(postControl({{"path", kConfigPath}, {"fault", "none"}})->status, 200);
  EXPECT_EQ(getConfig()->status, 200);
}

TEST_F(ServiceFaultControl, CountsTheAnswersThatAreSpoilt) {
  start();
  postControl({{"path", kConfigPath}, {"fault", "status-500"}, {"times", 2}});
  EXPECT_EQ(getConfig()->status, 500);
  EXPECT_EQ(faults().at(0).at("spoilt"), 1);
  EXPECT_EQ(getConfig()->status, 500);
  EXPECT_EQ(getConfig()->status, 200);
  EXPECT_TRUE(faults().empty());
}

TEST_F(ServiceFaultControl, TakesArgumentsAsNumberOrText) {
  start();
  postControl({{"path", "/a"}, {"fault", "delay"}, {"arg", 5}});
  postControl({{"path", "/b"}, {"fault", "changed"}, {"arg", "2:other.json"}});
  EXPECT_EQ(faults().at(0).at("number"), 5);
  EXPECT_EQ(faults().at(1).at("number"), 2);
  EXPECT_EQ(faults().at(1).at("file"), "other.json");
}

TEST_F(ServiceFaultControl, RefusesWhatItDoesNotUnderstand) {
  start();
  EXPECT_EQ(postControl({})->status, 400);
  EXPECT_EQ(postControl({{"path", "/a"}, {"fault", "explode"}})->status, 400);
  EXPECT_EQ(postControl({{"path", "/a"}, {"fault", "delay"}})->status, 400);
  EXPECT_EQ(postControl({{"path", "/a"}, {"fault", "delay"}, {"arg", "x"}})->status, 400);
  EXPECT_EQ(postControl({{"path", "/a"}, {"fault", "delay"}, {"arg", -1}})->status, 400);
  EXPECT_EQ(postControl({{"path", "/a"}, {"fault", "drop"}, {"arg", 1}})->status, 400);
  EXPECT_EQ(postControl({{"path", "/a"}, {"fault", "drop"}, {"times", "x"}})->status, 400);
  EXPECT_EQ(postControl({{"path", "/a"}, {"fault", "changed"}, {"arg", "1:../x"}})->status, 400);
  EXPECT_EQ(postControl({{"path", "a"}, {"fault", "drop"}})->status, 400);
  EXPECT_EQ(client().Post("/_control/fault", "[", "")->status, 400);
  EXPECT_TRUE(faults().empty());
}

TEST_F(ServiceFaultControl, CannotBeLockedOut) {
  start();
  EXPECT_EQ(postControl({{"path", "/_control/fault"}, {"fault", "drop"}})->status, 400);
}

TEST_F(ServiceFaultControl, ABadFaultAtStartIsToldAndEndsTheService) {
  EXPECT_EQ(startInVain({"--fault", "/a=explode"}), 64);
  EXPECT_NE(errors().find("unknown fault \"explode\""), std::string::npos) << errors();
}

}  // namespace
}  // namespace zovk
