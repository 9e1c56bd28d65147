#include <csignal>

#include "e2e/service/RawConnection.h"
#include "e2e/service/ServiceFixture.h"

namespace zovk {
namespace {

using ServiceLife = ServiceFixture;

// A good start says one thing more than that it listens: where the console is.
bool onlyTheConsole(const std::string& errors) {
  return errors.starts_with("console at http") && errors.find('\n') == errors.size() - 1;
}

TEST_F(ServiceLife, ListensOnLoopbackOnAPortOfTheKernelsChoice) {
  start();
  EXPECT_TRUE(base().starts_with("http://127.0.0.1:"));
  EXPECT_GT(port(), 0);
  EXPECT_TRUE(onlyTheConsole(errors())) << errors();
}

TEST_F(ServiceLife, EndsCleanlyOnASignal) {
  for (int number : {SIGTERM, SIGINT}) {
    start();
    EXPECT_EQ(getConfig()->status, 200);  // leaves a connection open
    process().signal(number);
    EXPECT_EQ(process().nextLine(), std::nullopt);
    EXPECT_EQ(process().wait(), 0);
  }
}

TEST_F(ServiceLife, EndsCleanlyWhenAsked) {
  start();
  EXPECT_EQ(client().Post("/_control/stop", "", "")->status, 200);
  EXPECT_EQ(process().wait(), 0);
}

TEST_F(ServiceLife, EndsWhileConnectionsAreIdleAndAnswersSlow) {
  folder().write("pages/welcome.html", std::string(100'000, 'x'));
  start({"--fault", "/pages/welcome.html=slow-drip:10"});
  const RawConnection idle(port());
  const RawConnection half(port());
  half.send("POST /report HTTP/1.1\r\nContent-Length: 50\r\n\r\nabc");
  const RawConnection slow(port());
  slow.send("GET /pages/welcome.html HTTP/1.1\r\nHost: a\r\n\r\n");
  EXPECT_NE(slow.readSome(), "");
  process().signal(SIGTERM);
  EXPECT_EQ(process().wait(), 0);
  EXPECT_EQ(idle.readAll(), "");
}

TEST_F(ServiceLife, SaysLoudlyWhenOthersMayReachIt) {
  // An address for documentation, which no machine has: the service says it before it fails.
  EXPECT_EQ(startInVain({"--listen", "192.0.2.1"}), 69);
  EXPECT_NE(errors().find("WARNING: listening on 192.0.2.1, which OTHER MACHINES MAY REACH"),
            std::string::npos);
  EXPECT_NE(errors().find("cannot listen on 192.0.2.1"), std::string::npos);
}

TEST_F(ServiceLife, AnotherLoopbackAddressIsNothingToWarnOf) {
  start({"--listen", "127.0.0.2"});
  EXPECT_TRUE(base().starts_with("http://127.0.0.2:"));
  EXPECT_TRUE(onlyTheConsole(errors())) << errors();
  EXPECT_EQ(getConfig()->status, 200);
}

TEST_F(ServiceLife, DoesNotShareItsPort) {
  start();
  const std::string taken = std::to_string(port());
  EXPECT_EQ(startInVain({"--port", taken}), 69);
  EXPECT_NE(errors().find("cannot listen on 127.0.0.1 port " + taken), std::string::npos);
}

TEST_F(ServiceLife, RefusesACommandLineThatMakesNoSense) {
  EXPECT_EQ(startInVain({"--certificate-out", "x"}), 64);
  EXPECT_EQ(startInVain({"--port", "70000"}), 64);
  EXPECT_EQ(startInVain({"--game", "nokey"}), 64);
  EXPECT_EQ(startInVain({"--reports", folder().path("no/such/folder.db")}), 74);
  folder().write("games.json", "[]");
  EXPECT_EQ(startInVain({}), 65);
  EXPECT_EQ(startInVain({"--help"}), 0);
}

TEST_F(ServiceLife, ShowsRequestsWhenTold) {
  start({"--verbose"});
  client().Get("/pages/welcome.html?a=1");
  client().Post("/_control/stop", "", "");
  process().wait();
  EXPECT_NE(errors().find("GET /pages/welcome.html?a=1 200"), std::string::npos) << errors();
}

}  // namespace
}  // namespace zovk
