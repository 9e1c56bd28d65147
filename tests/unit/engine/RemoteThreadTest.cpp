#include "fixtures/EngineFixture.h"

namespace zovk {
namespace {

// The service's answer is handled on the session's thread, while the host asks for popups.
using RemoteThread = EngineFixture;

std::string documentOf(int popups) {
  std::string list;
  for (int i = 0; i < popups; ++i) {
    const std::string name = "page" + std::to_string(i);
    if (i > 0) list += ",";
    list += R"({"scene":")" + name + R"(","scene_type":1,"content_type":1,"uri":)" +
            R"("https://files.example/)" + name + R"(","sig":")" + md5Hex(name) + R"("})";
  }
  return R"({"code":0,"server_time":5,"popups":[)" + list + "]}";
}

TEST_F(RemoteThread, AnAnswerAndItsPagesMayComeWhileTheHostAsksForPopups) {
  constexpr int kPopups = 20;
  engine();
  memory().urlSession.useThread();
  memory().urlSession.setHandler([](const MemoryRequest& request) -> std::optional<MemoryAnswer> {
    const bool isPage = request.kind == MemoryRequest::Kind::kDownload;
    const std::string name = request.url.substr(request.url.rfind('/') + 1);
    return MemoryAnswer{200, isPage ? name : documentOf(kPopups), std::nullopt, ""};
  });
  engine().startPopup("https://service.example", "1001", "secret");
  std::size_t found = 0;
  memory().scheduler.runUntil(
      [&] {
        engine().havePopup(1);
        engine().setChannelID(2, "open", "token", "jwt");
        found = engine().getValidPopupForSceneType(1, engine().mergePopupArr()).size();
        return found == kPopups;
      },
      "the pages");
  EXPECT_EQ(engine().remotePopupArr().size(), std::size_t{kPopups});
  EXPECT_EQ(engine().serverTime(), 5);
}

}  // namespace
}  // namespace zovk
