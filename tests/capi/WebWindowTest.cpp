#include <thread>
#include <utility>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include "capi/CWindowFixture.h"

namespace zovk {
namespace {

using CWindow = CWindowFixture;

/// An address where nobody answers: the port is taken, but nothing listens there.
class ClosedPort {
 public:
  ClosedPort() {
    sockaddr_in any{};
    any.sin_family = AF_INET;
    any.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof any;
    bind(socket_, reinterpret_cast<const sockaddr*>(&any), size);
    getsockname(socket_, reinterpret_cast<sockaddr*>(&any), &size);
    address_ = "http://127.0.0.1:" + std::to_string(ntohs(any.sin_port)) + "/";
  }
  ~ClosedPort() { close(socket_); }
  ClosedPort(const ClosedPort&) = delete;
  ClosedPort& operator=(const ClosedPort&) = delete;
  const std::string& address() const { return address_; }

 private:
  const int socket_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  std::string address_;
};

TEST_F(CWindow, ShowsAPageAndTellsOfIt) {
  open("");
  EXPECT_TRUE(zovkpopup_web_window_is_open(window_));
  awaitText("finished");
  EXPECT_EQ(note_.texts, (std::vector<std::string>{"started", "changed", "finished"}));
  EXPECT_EQ(evaluate("document.title"), R"("Page")");
  EXPECT_EQ(evaluate("({a: [1, null]})"), R"({"a":[1,null]})");
  EXPECT_EQ(evaluate("nothing.there").substr(0, 6), "error ");
  note_.texts.clear();
  EXPECT_EQ(zovkpopup_web_window_reload(window_), ZOVKPOPUP_OK);
  awaitText("finished");
  EXPECT_EQ(note_.texts, (std::vector<std::string>{"started", "changed", "finished"}));
  zovkpopup_web_window_free(std::exchange(window_, nullptr));
  EXPECT_EQ(note_.destroyed, 1);
}

/// A game with a frame of one pixel, and what it saw of being asked for it.
struct FrameGame {
  Note asked;
  std::uint32_t pixel = 0x00FF8000;
  std::size_t size = 0;

  static void give(zovkpopup_picture* picture, void* user) {
    auto* const game = static_cast<FrameGame*>(user);
    ++game->asked.calls;
    game->size = picture->size;
    EXPECT_EQ(picture->pixels, nullptr);
    picture->pixels = &game->pixel;
    picture->width = picture->height = 1;
    picture->format = ZOVKPOPUP_PIXELS_BGRX;
  }
  static void destroy(void* user) { ++static_cast<FrameGame*>(user)->asked.destroyed; }
};

// The screen of the tests blends no windows.
TEST_F(CWindow, IsGivenTheGamesFrameOnceWhereItWouldHideTheGame) {
  FrameGame game;
  writePage("");
  zovkpopup_settings mine = settings();
  mine.backdrop = FrameGame::give;
  mine.backdrop_user = &game;
  mine.backdrop_destroy = FrameGame::destroy;
  ASSERT_EQ(zovkpopup_set_up(&mine), ZOVKPOPUP_OK);
  auto page = pageSettings();
  page.see_through = 1;
  ASSERT_EQ(zovkpopup_web_window_open(&page, &window_), ZOVKPOPUP_OK) << allLines();
  awaitText("finished");
  pumpUntil([&] { return game.asked.calls > 0; }, "the game to be asked");
  EXPECT_EQ(evaluate("1"), "1");  // the helper has taken the frame by then
  EXPECT_EQ(game.asked.calls, 1);
  EXPECT_EQ(game.size, sizeof(zovkpopup_picture));
  EXPECT_FALSE(logged("backdrop")) << allLines();
  zovkpopup_web_window_free(std::exchange(window_, nullptr));
  EXPECT_EQ(game.asked.destroyed, 0);
  zovkpopup_shut_down();
  EXPECT_EQ(game.asked.destroyed, 1);
}

TEST_F(CWindow, OfAGameWhoseFrameIsTooLargeSaysSoAndGoesOn) {
  writePage("");
  zovkpopup_settings mine = settings();
  mine.backdrop = [](zovkpopup_picture* picture, void*) {
    picture->pixels = picture;
    picture->width = UINT64_MAX;
    picture->height = UINT64_MAX;
    picture->stride = INT64_MIN;
    picture->format = UINT64_MAX;
  };
  ASSERT_EQ(zovkpopup_set_up(&mine), ZOVKPOPUP_OK);
  const auto page = pageSettings();
  ASSERT_EQ(zovkpopup_web_window_open(&page, &window_), ZOVKPOPUP_OK) << allLines();
  awaitText("finished");
  pumpUntil([&] { return logged("The game's backdrop is left out"); }, "the line");
}

TEST_F(CWindow, NeedsSettingsThatMakeSense) {
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  EXPECT_EQ(zovkpopup_web_window_open(nullptr, &window_), ZOVKPOPUP_ERROR_ARGUMENT);
  auto page = pageSettings();
  EXPECT_EQ(zovkpopup_web_window_open(&page, nullptr), ZOVKPOPUP_ERROR_ARGUMENT);
  EXPECT_EQ(note_.destroyed, 1);
  page.address = "http://127.0.0.1:9";
  EXPECT_EQ(zovkpopup_web_window_open(&page, &window_), ZOVKPOPUP_ERROR_ARGUMENT);
  page.page_file = nullptr;
  page.address = "ftp://127.0.0.1";
  EXPECT_EQ(zovkpopup_web_window_open(&page, &window_), ZOVKPOPUP_ERROR_ARGUMENT);
  page.address = "http://127.0.0.1:9";
  page.width = -1;
  EXPECT_EQ(zovkpopup_web_window_open(&page, &window_), ZOVKPOPUP_ERROR_ARGUMENT);
  EXPECT_EQ(window_, nullptr);
  EXPECT_EQ(note_.destroyed, 4);
  EXPECT_EQ(countOf("[Error] zovkpopup_web_window_open"), 2U);
  EXPECT_EQ(countOf("[Error] ZOVKPopupWebWindow::open"), 3U);
}

TEST_F(CWindow, NeedsAHost) {
  const auto page = pageSettings();
  EXPECT_EQ(zovkpopup_web_window_open(&page, &window_), ZOVKPOPUP_ERROR_STATE);
  EXPECT_EQ(window_, nullptr);
  EXPECT_EQ(note_.destroyed, 1);
}

TEST_F(CWindow, NothingIsNoWindow) {
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  EXPECT_FALSE(zovkpopup_web_window_is_open(nullptr));
  EXPECT_EQ(zovkpopup_web_window_close(nullptr), ZOVKPOPUP_ERROR_ARGUMENT);
  EXPECT_EQ(zovkpopup_web_window_reload(nullptr), ZOVKPOPUP_ERROR_ARGUMENT);
  EXPECT_EQ(zovkpopup_web_window_evaluate(nullptr, "1", nullptr, &note_, Note::destroy),
            ZOVKPOPUP_ERROR_ARGUMENT);
  EXPECT_EQ(note_.destroyed, 1);
  EXPECT_EQ(countOf("window is NULL"), 3U);
  zovkpopup_web_window_free(nullptr);
}

TEST_F(CWindow, ThatIsClosedHearsNothingMore) {
  open("");
  awaitText("finished");
  EXPECT_EQ(zovkpopup_web_window_evaluate(window_, nullptr, nullptr, nullptr, nullptr),
            ZOVKPOPUP_ERROR_ARGUMENT);
  EXPECT_EQ(zovkpopup_web_window_close(window_), ZOVKPOPUP_OK);
  EXPECT_EQ(zovkpopup_web_window_close(window_), ZOVKPOPUP_OK);
  EXPECT_FALSE(zovkpopup_web_window_is_open(window_));
  EXPECT_EQ(note_.destroyed, 1);
  EXPECT_EQ(zovkpopup_web_window_reload(window_), ZOVKPOPUP_ERROR_STATE);
  Note result;
  const auto done = [](const char*, const char*, void* user) { Note::event(user); };
  EXPECT_EQ(zovkpopup_web_window_evaluate(window_, "1", done, &result, Note::destroy),
            ZOVKPOPUP_ERROR_STATE);
  EXPECT_EQ(result.calls, 0);
  EXPECT_EQ(result.destroyed, 1);
}

TEST_F(CWindow, MayBeFreedAfterTheShutDown) {
  open("");
  zovkpopup_shut_down();
  EXPECT_FALSE(zovkpopup_web_window_is_open(window_));
  EXPECT_EQ(zovkpopup_web_window_reload(window_), ZOVKPOPUP_ERROR_STATE);
  zovkpopup_web_window_free(std::exchange(window_, nullptr));
  EXPECT_EQ(note_.destroyed, 1);
}

TEST_F(CWindow, MayBeFreedByItsOwnEvent) {
  writePage("");
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  auto page = pageSettings();
  page.page_changed = [](void* user) {
    auto* const test = static_cast<CWindow*>(user);
    zovkpopup_web_window_free(std::exchange(test->window_, nullptr));
    test->note_.texts.emplace_back("freed");
  };
  page.load_started = page.load_finished = nullptr;
  page.user = this;
  page.destroy = [](void* user) { ++static_cast<CWindow*>(user)->note_.destroyed; };
  ASSERT_EQ(zovkpopup_web_window_open(&page, &window_), ZOVKPOPUP_OK);
  awaitText("freed");
  EXPECT_EQ(zovkpopup_pump(1'000'000), ZOVKPOPUP_OK);
  EXPECT_EQ(note_.texts.size(), 1U);
  EXPECT_EQ(note_.destroyed, 1);
}

TEST_F(CWindow, AsksTheGameWhereThePageMayGo) {
  writePage("");
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  auto page = pageSettings();
  page.allow_navigation = [](const char* address, std::int32_t frame, void* user) {
    CWindow::note("asked " + std::to_string(frame) + " ", address, user);
    return std::string(address).find("forbidden") == std::string::npos;
  };
  ASSERT_EQ(zovkpopup_web_window_open(&page, &window_), ZOVKPOPUP_OK);
  awaitText("finished");
  EXPECT_EQ(note_.texts.front(), "asked 1 file://" + pageFile_);
  note_.texts.clear();
  evaluate("location.href = 'https://forbidden.example/'; 1");
  awaitText("asked 1 https://forbidden.example/");
  EXPECT_FALSE(has("started"));
  EXPECT_EQ(evaluate("document.title"), R"("Page")");
}

TEST_F(CWindow, TellsOfALoadThatFails) {
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  auto page = pageSettings();
  page.page_file = nullptr;
  const ClosedPort closed;
  page.address = closed.address().c_str();
  ASSERT_EQ(zovkpopup_web_window_open(&page, &window_), ZOVKPOPUP_OK);
  awaitText("load failed ");
  EXPECT_EQ(note_.texts.front(), "started");
}

TEST_F(CWindow, TellsOfAWindowThatThePageAskedFor) {
  open("");
  awaitText("finished");
  EXPECT_EQ(evaluate("window.open('https://other.example/') === null"), "true");
  awaitText("new window https://other.example/");
}

TEST_F(CWindow, TellsWhyItIsGoneWhenThereIsNoHelper) {
  writePage("");
  auto mine = settings();
  mine.helper_path = "/nowhere/zovkpopup-helper";
  ASSERT_EQ(zovkpopup_set_up(&mine), ZOVKPOPUP_OK);
  const auto page = pageSettings();
  ASSERT_EQ(zovkpopup_web_window_open(&page, &window_), ZOVKPOPUP_OK);
  awaitText("failed ");
  EXPECT_GT(note_.texts.back().size(), std::string("failed ").size());
  EXPECT_FALSE(zovkpopup_web_window_is_open(window_));
}

TEST_F(CWindow, BelongsToTheMainThread) {
  open("");
  awaitText("finished");
  std::vector<zovkpopup_status> found;
  std::thread([&] {
    found.push_back(zovkpopup_web_window_reload(window_));
    found.push_back(zovkpopup_web_window_close(window_));
    found.push_back(zovkpopup_web_window_evaluate(window_, "1", nullptr, nullptr, nullptr));
    zovkpopup_web_window_free(window_);
  }).join();
  EXPECT_EQ(found, std::vector<zovkpopup_status>(3, ZOVKPOPUP_ERROR_THREAD));
  EXPECT_TRUE(zovkpopup_web_window_is_open(window_));
  EXPECT_TRUE(logged("[Error] zovkpopup_web_window_free: this was called on another thread"));
}

}  // namespace
}  // namespace zovk
