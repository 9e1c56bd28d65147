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

TEST_F(ServiceFaultControl, KeepsSixtyFourFaultsAndStillChangesAndRemovesThese) {
  start();
  for (int i = 0; i < 64; ++i) {
    ASSERT_EQ(postControl({{"path", "/" + std::to_string(i)}, {"fault", "drop"}})->status, 200);
  }
  const auto refused = postControl({{"path", "/64"}, {"fault", "drop"}});
  EXPECT_EQ(refused->status, 400);
  EXPECT_NE(refused->body.find("there may be 64 faults"), std::string::npos) << refused->body;
  EXPECT_EQ(postControl({{"path", "/63"}, {"fault", "empty"}})->status, 200);
  EXPECT_EQ(postControl({{"path", "/0"}, {"fault", "none"}})->status, 200);
  EXPECT_EQ(postControl({{"path", "/64"}, {"fault", "drop"}})->status, 200);
  EXPECT_EQ(faults().size(), 64U);
}

TEST_F(ServiceFaultControl, TakesTextsOfAKilobyte) {
  start();
  const std::string longest = "/" + std::string(1023, 'a');
  EXPECT_EQ(postControl({{"path", longest}, {"fault", "drop"}})->status, 200);
  EXPECT_EQ(postControl({{"path", longest + "a"}, {"fault", "drop"}})->status, 400);
  EXPECT_EQ(postControl({{"path", "/a"}, {"fault", std::string(1025, 'b')}})->status, 400);
  const std::string file = "2:" + std::string(1023, 'c');
  EXPECT_EQ(postControl({{"path", "/a"}, {"fault", "changed"}, {"arg", file}})->status, 400);
  EXPECT_EQ(faults().size(), 1U);
}

TEST_F(ServiceFaultControl, TakesNumbersUpToItsBoundsOnly) {
  start();
  const auto status = [this](const char* fault, std::int64_t number) {
    return postControl({{"path", "/a"}, {"fault", fault}, {"arg", number}})->status;
  };
  EXPECT_EQ(status("delay", 600'000), 200);
  EXPECT_EQ(status("delay", 600'001), 400);
  EXPECT_EQ(status("huge", 1024), 200);
  EXPECT_EQ(status("huge", 1025), 400);
  EXPECT_EQ(status("truncate", 1 << 30), 200);
  EXPECT_EQ(status("truncate", (1 << 30) + 1), 400);
  EXPECT_EQ(status("slow-drip", (1 << 30) + 1), 400);
  EXPECT_EQ(postControl({{"path", "/a"}, {"fault", "drop"}, {"times", 1 << 30}})->status, 200);
  EXPECT_EQ(postControl({{"path", "/a"}, {"fault", "drop"}, {"times", (1 << 30) + 1}})->status,
            400);
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
