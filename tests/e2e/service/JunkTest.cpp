#include "e2e/service/RawConnection.h"
#include "e2e/service/ServiceFixture.h"

namespace zovk {
namespace {

class ServiceJunk : public ServiceFixture {
 protected:
  void TearDown() override {
    EXPECT_EQ(getConfig()->status, 200) << "the service has not survived";
    process().signal(SIGTERM);
    EXPECT_EQ(process().wait(), 0);
  }
  int statusOf(const std::string& request) { return zovk::statusOf(port(), request); }
  /// Sends what will never be whole, and waits until the service has given up on it.
  void abandon(const std::string& bytes) {
    const RawConnection connection(port());
    connection.send(bytes);
    connection.finishSending();
    connection.readAll();
  }
};

TEST_F(ServiceJunk, ThatIsNoHttpIsRefused) {
  start();
  abandon("");
  abandon("\r\n\r\n");
  abandon(std::string("\x16\x03\x01\x02\x00\x01\x00\x01\xfc\x03\x03\xff\xff", 13));
  abandon(std::string(100'000, '\0'));
  EXPECT_EQ(statusOf("HELLO\r\n\r\n"), 400);
  EXPECT_EQ(statusOf("GET /\r\n\r\n"), 400);
  EXPECT_EQ(statusOf("EXPLODE / HTTP/1.1\r\n\r\n"), 400);
  EXPECT_EQ(statusOf("GET /popup/get_info?game id=1 HTTP/1.1\r\n\r\n"), 400);
}

TEST_F(ServiceJunk, InAddressesIsRefused) {
  start();
  EXPECT_EQ(statusOf("GET /" + std::string(20'000, 'a') + " HTTP/1.1\r\n\r\n"), 414);
  EXPECT_EQ(statusOf("GET /pages/" + std::string(8'000, 'a') + " HTTP/1.1\r\n\r\n"), 404);
  EXPECT_EQ(statusOf("GET /%zz%u12%%% HTTP/1.1\r\n\r\n"), 404);
  EXPECT_EQ(statusOf("GET /pages/\xff\xfe HTTP/1.1\r\n\r\n"), 404);
  EXPECT_EQ(statusOf("GET /popup/get_info?&&&==&game_id=&sig=&sig= HTTP/1.1\r\n\r\n"), 400);
  EXPECT_EQ(statusOf("GET /popup/get_info?game_id=\xff&install_id=1&os=2&version=1&sig=\xff "
                     "HTTP/1.1\r\n\r\n"),
            403);
}

TEST_F(ServiceJunk, InHeadersIsRefused) {
  start();
  EXPECT_EQ(statusOf("GET / HTTP/1.1\r\nA: " + std::string(20'000, 'a') + "\r\n\r\n"), 400);
  EXPECT_EQ(statusOf("GET / HTTP/1.1\r\nRange: bytes=5-1,-\r\n\r\n"), 416);
  EXPECT_EQ(statusOf("GET /pages/welcome.html HTTP/1.1\r\nIf-None-Match: ,,W/, \"\r\n\r\n"), 200);
}

TEST_F(ServiceJunk, InBodiesIsRefused) {
  start();
  abandon("POST /report HTTP/1.1\r\nContent-Length: 5\r\n\r\nab");
  abandon("POST /report HTTP/1.1\r\nContent-Length: 99999999999999999999\r\n\r\nab");
  abandon("POST /report HTTP/1.1\r\nContent-Length: -1\r\n\r\nab");
  abandon("POST /report HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\nffffffffffffffff\r\nab");
  EXPECT_EQ(statusOf("POST /report HTTP/1.1\r\nContent-Type: multipart/form-data; boundary=x\r\n"
                     "Content-Length: 2\r\n\r\nab"),
            415);
  EXPECT_EQ(statusOf("POST /report HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\nzz\r\n"), 400);
  EXPECT_EQ(statusOf("POST /report HTTP/1.1\r\n\r\n"), 400);
}

TEST_F(ServiceJunk, ThatIsTooMuchIsRefused) {
  start();
  const std::string tooMuch((1 << 20) + 1, 'x');
  EXPECT_EQ(client().Post("/report", tooMuch, "text/plain")->status, 413);
}

}  // namespace
}  // namespace zovk
