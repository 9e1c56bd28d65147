#include "helperclient/ClientFixture.h"

namespace zovk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class HelperPageProcess : public ClientOfTheHelper {
 protected:
  HelperPageProcess() {
    startReady();
    page_ = client_->makeWebView({});
    page_->setNavigationDelegate(delegate_);
  }
  void commit() { receive(R"({"type":"web.committed","view":1,"url":"https://a/"})"); }
  void end() { receive(R"({"type":"web.terminated","view":1})"); }
  std::vector<std::string> heard() { return std::exchange(delegate_->calls, {}); }

  std::shared_ptr<RecordingDelegate> delegate_ = std::make_shared<RecordingDelegate>();
  std::shared_ptr<WebView> page_;
};

TEST_F(HelperPageProcess, ThatEndsAgainBeforeThePageIsThereFailsForGood) {
  page_->load("https://a/");
  end();
  EXPECT_THAT(heard(), ElementsAre("terminated"));
  EXPECT_THAT(takeLines(), IsEmpty());
  end();
  EXPECT_THAT(heard(), ElementsAre("process failed: The page cannot be shown: its process ended "
                                   "before it was there"));
  EXPECT_THAT(takeLines(), ElementsAre("[Error] Web process ended 2 times before its page was "
                                       "there, giving up"));
}

TEST_F(HelperPageProcess, ThatEndsAfterThePageCameIsReportedHoweverOften) {
  page_->load("https://a/");
  for (int i = 0; i < 5; ++i) {
    commit();
    end();
  }
  EXPECT_THAT(heard(),
              ElementsAre("committed", "terminated", "committed", "terminated", "committed",
                          "terminated", "committed", "terminated", "committed", "terminated"));
}

TEST_F(HelperPageProcess, ThatEndsOnceInVainMayDoSoAgainAfterThePageCame) {
  page_->load("https://a/");
  end();
  commit();
  end();
  end();
  EXPECT_THAT(heard(), ElementsAre("terminated", "committed", "terminated", "terminated"));
  end();
  EXPECT_THAT(heard(), ElementsAre(HasSubstr("process failed")));
}

TEST_F(HelperPageProcess, HasBothItsTriesForEveryPageThatIsAskedFor) {
  page_->load("https://a/");
  end();
  page_->load("https://b/");
  end();
  EXPECT_THAT(heard(), ElementsAre("terminated", "terminated"));
  page_->loadFile("file:///c.html", "file:///c.html");
  end();
  EXPECT_THAT(heard(), ElementsAre("terminated"));
}

TEST_F(HelperPageProcess, ThatEndsBeforeAnythingWasAskedForDoesNotCount) {
  for (int i = 0; i < 3; ++i) end();
  EXPECT_THAT(heard(), ElementsAre("terminated", "terminated", "terminated"));
}

TEST_F(HelperPageProcess, ThatHangsIsReportedAndThatItAnswersAgain) {
  receive(R"({"type":"web.responsive","view":1,"responsive":false})");
  receive(R"({"type":"web.responsive","view":1,"responsive":true})");
  EXPECT_THAT(heard(), ElementsAre("hangs", "answers"));
  receive(R"({"type":"web.responsive","view":1})");
  EXPECT_THAT(takeLines(), ElementsAre("[Error] Helper sent an ill-formed web.responsive event"));
}

TEST_F(HelperPageProcess, NeedsNobodyWhoListens) {
  page_->setNavigationDelegate({});
  page_->load("https://a/");
  end();
  end();
  EXPECT_THAT(takeLines(), IsEmpty());
}

}  // namespace
}  // namespace zovk
