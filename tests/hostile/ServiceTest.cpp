#include <fstream>

#include "e2e/remote/RemoteFixture.h"
#include "fixtures/ProcessFacts.h"
#include "hostile/RawServer.h"
#include "hostile/Tally.h"

namespace zovk {
namespace {

using Clock = std::chrono::steady_clock;

/// The game may ask for what takes longer; its end must not wait for that.
const std::chrono::milliseconds kPatience(400 * rounds(1, 10));
constexpr std::chrono::seconds kShutDownBound(2);

class HostileService : public RemoteFixture {
 protected:
  HostileService() {
    std::filesystem::create_directories(cachePath());
    putRemoteDocument(R"({"code":0,"popups":[]})");
  }
  void putRemoteDocument(const std::string& text) {
    std::ofstream(cachePath("ZOVKPopupRemote.config")) << text;
  }
  /// Until one of the lines has come; false when none does in the time that the trial gives it.
  bool awaitOneOf(const std::vector<std::string>& messages) {
    const auto end = Clock::now() + kPatience;
    while (Clock::now() < end) {
      for (const std::string& message : messages) {
        if (log().has(message)) return true;
      }
      pollfd ready{ZOVKPopupHost::pollDescriptor(), POLLIN, 0};
      poll(&ready, 1, 10);
      ZOVKPopupHost::pump();
    }
    return false;
  }
  /// Ends the game; nothing of it may be left, and it may not take long.
  void end(const std::string& round, std::size_t descriptors, Tally& tally) {
    EXPECT_TRUE(ZOVKPopup::havePopup(kLocalType)) << round;
    EXPECT_LE(openDescriptors(getpid()), descriptors + 64) << round;
    const auto start = Clock::now();
    endGame();
    const std::chrono::duration<double> taken = Clock::now() - start;
    EXPECT_LT(taken, kShutDownBound) << round;
    tally.measure("milliseconds of the shut-down", taken.count() * 1e3);
  }

  RawServer& server() { return server_; }

 private:
  RawServer server_;
};

TEST_F(HostileService, DocumentsLeaveTheGameWithAWholeOne) {
  const std::string good =
      R"({"code":0,"popups":[{"scene":"s","scene_type":9,"content_type":3,"uri":"u","sig":"7b774effe4a349c6dd82ad4f4f21d34c"}]})";
  putRemoteDocument(good);
  Tally tally("documents");
  for (const RawAnswer& answer : hostileAnswers(good)) {
    SCOPED_TRACE(answer.name);
    const std::string before = savedConfig();
    server().answerWith(answer);
    const std::size_t descriptors = openDescriptors(getpid());
    startGame(server().base());
    const bool decided =
        awaitOneOf({"Request remote config failed!", "No remote config or parse config file error",
                    "Handle remote config response:0", "Save remote config file"});
    end(answer.name, descriptors, tally);
    const std::string after = savedConfig();
    const bool accepted = after != before;
    EXPECT_TRUE(!accepted || answer.bytes.ends_with(after)) << "half a document was kept";
    tally.add(!decided ? "not answered in time" : accepted ? "taken" : "refused");
    putRemoteDocument(good);
  }
}

TEST_F(HostileService, AnswersToConditionsEndTheRequestOnce) {
  const std::string check = server().base() + "/check";
  putRemoteDocument(
      R"({"code":0,"popups":[{"scene":"asked","scene_type":9,"content_type":3,"pop_freq":3,"uri":"u","sig":"7b774effe4a349c6dd82ad4f4f21d34c","check_url":")" +
      check + "\"}]}");
  Tally tally("conditions");
  for (const RawAnswer& answer : hostileAnswers(R"({"need_popup":0})")) {
    SCOPED_TRACE(answer.name);
    server().answerWith(answer);
    const std::size_t descriptors = openDescriptors(getpid());
    startGame("");
    const std::size_t before = answers().size();
    ZOVKPopup::showPopup("asked", 0, recordAnswer());
    const auto limit = Clock::now() + kPatience;
    while (answers().size() == before && Clock::now() < limit) {
      pollfd ready{ZOVKPopupHost::pollDescriptor(), POLLIN, 0};
      poll(&ready, 1, 10);
      ZOVKPopupHost::pump();
    }
    end(answer.name, descriptors, tally);
    ASSERT_LE(answers().size(), before + 1);
    const bool answered = answers().size() > before;
    tally.add(!answered                     ? "not answered in time"
              : answers().back().first == 0 ? "not wanted"
                                            : "wanted, and no screen to show it");
  }
}

TEST_F(HostileService, PagesAreShownOnlyWhenTheyAreTheRightOnes) {
  const std::string page = server().base() + "/page.html";
  const std::string document =
      R"({"code":0,"popups":[{"scene":"page","scene_type":9,"pop_type":1,"content_type":1,"sig":"ca1bf2bb368438aa45c2291df757fde6","uri":")" +
      page + "\"}]}";
  RawServer documents;
  documents.answerWith({"document", httpAnswer(document)});
  Tally tally("page files");
  for (const RawAnswer& answer : hostileAnswers("<!doctype html><p>good")) {
    SCOPED_TRACE(answer.name);
    server().answerWith(answer);
    const std::size_t descriptors = openDescriptors(getpid());
    startGame(documents.base());
    const bool decided = awaitOneOf({"Download file failed, uri:" + page, ".html done, result:1"});
    EXPECT_FALSE(ZOVKPopup::havePopup(9));
    const bool saved = log().has(".html done, result:1");
    end(answer.name, descriptors, tally);
    tally.add(!decided ? "not answered in time" : saved ? "saved, not shown" : "failed");
  }
}

}  // namespace
}  // namespace zovk
