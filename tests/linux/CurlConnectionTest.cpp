#include <memory>
#include <stdexcept>
#include <thread>

#include <gmock/gmock.h>
#include <openssl/evp.h>
#include <openssl/x509.h>

#include "LoopbackServer.h"
#include "ScopedVariable.h"
#include "UrlFetch.h"
#include "platform/linux/http/CurlUrlSession.h"

namespace zovk {
namespace {

using testing::HasSubstr;
using testing::Optional;

struct OpensslDeleter {
  void operator()(EVP_PKEY* key) const { EVP_PKEY_free(key); }
  void operator()(X509* certificate) const { X509_free(certificate); }
};

/// A server whose certificate nobody but itself vouches for.
class SelfSignedServer {
 public:
  SelfSignedServer()
      : key_(EVP_EC_gen("P-256")),
        certificate_(sign(key_.get())),
        server_(certificate_.get(), key_.get()) {
    server_.Get(".*", [](const httplib::Request&, httplib::Response& response) {
      response.set_content("secret", "text/plain");
    });
    port_ = server_.bind_to_any_port("127.0.0.1");
    thread_ = std::thread([this] { server_.listen_after_bind(); });
    while (!server_.is_running()) std::this_thread::yield();
  }
  ~SelfSignedServer() {
    server_.stop();
    thread_.join();
  }
  SelfSignedServer(const SelfSignedServer&) = delete;
  SelfSignedServer& operator=(const SelfSignedServer&) = delete;

  std::string url() const { return "https://127.0.0.1:" + std::to_string(port_) + "/"; }

 private:
  static X509* sign(EVP_PKEY* key) {
    X509* const certificate = X509_new();
    X509_set_version(certificate, 2);
    X509_gmtime_adj(X509_getm_notBefore(certificate), 0);
    X509_gmtime_adj(X509_getm_notAfter(certificate), 3600);
    X509_set_pubkey(certificate, key);
    X509_NAME* const name = X509_get_subject_name(certificate);
    const auto* const text = reinterpret_cast<const unsigned char*>("127.0.0.1");
    X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC, text, -1, -1, 0);
    X509_set_issuer_name(certificate, name);
    if (X509_sign(certificate, key, EVP_sha256()) == 0) throw std::runtime_error("no certificate");
    return certificate;
  }

  const ScopedVariable noProxy_{"no_proxy", "127.0.0.1"};
  std::unique_ptr<EVP_PKEY, OpensslDeleter> key_;
  std::unique_ptr<X509, OpensslDeleter> certificate_;
  httplib::SSLServer server_;
  int port_ = 0;
  std::thread thread_;
};

TEST(CurlConnection, ACertificateThatNobodyVouchesForIsAnError) {
  const SelfSignedServer server;
  CurlUrlSession session;
  const DataResult result = fetch(session, get(server.url()));
  EXPECT_THAT(result.error, Optional(HasSubstr("certificate")));
  EXPECT_FALSE(result.body);
}

TEST(CurlConnection, AProxyIsTakenFromTheEnvironment) {
  LoopbackServer proxy;
  const ScopedVariable all("no_proxy", std::nullopt);
  const ScopedVariable http("http_proxy", proxy.url(""));
  CurlUrlSession session;
  EXPECT_FALSE(fetch(session, get("http://game.example/page")).error);
  const auto requests = proxy.requests();
  ASSERT_EQ(requests.size(), 1U);
  EXPECT_EQ(requests[0].get_header_value("Host"), "game.example");
}

TEST(CurlConnection, AHostThatDoesNotExistIsAnError) {
  CurlUrlSession session;
  const DataResult result = fetch(session, get("http://host.invalid/"));
  EXPECT_TRUE(result.error);
}

}  // namespace
}  // namespace zovk
