#include "e2e/service/ServiceFixture.h"

namespace zovk {
namespace {

class ServiceTls : public ServiceFixture {
 protected:
  void startTls(std::vector<std::string> more = {}) {
    more.insert(more.begin(), {"--tls", "--certificate-out", certificate()});
    start(more);
  }
  std::string certificate() { return folder().path("certificate.pem"); }
};

TEST_F(ServiceTls, IsTrustedByItsCertificate) {
  startTls();
  EXPECT_TRUE(base().starts_with("https://127.0.0.1:"));
  client().set_ca_cert_path(certificate());
  const auto answer = getConfig();
  ASSERT_TRUE(answer) << httplib::to_string(answer.error());
  EXPECT_EQ(answer->status, 200);
  EXPECT_EQ(client().get_openssl_verify_result(), X509_V_OK);
}

TEST_F(ServiceTls, IsTrustedByTheNameLocalhostToo) {
  startTls();
  httplib::Client byName("https://localhost:" + std::to_string(port()));
  byName.set_ca_cert_path(certificate());
  EXPECT_TRUE(byName.Get("/pages/welcome.html"));
}

TEST_F(ServiceTls, IsNotTrustedWithoutIt) {
  startTls();
  EXPECT_EQ(getConfig().error(), httplib::Error::SSLServerVerification);
}

TEST_F(ServiceTls, MakesAnotherCertificateAtEachStart) {
  startTls();
  const std::string first = folder().read("certificate.pem");
  startTls();
  EXPECT_NE(folder().read("certificate.pem"), first);
}

TEST_F(ServiceTls, WritesNoPrivateKey) {
  startTls();
  const std::string pem = folder().read("certificate.pem");
  EXPECT_TRUE(pem.starts_with("-----BEGIN CERTIFICATE-----"));
  EXPECT_EQ(pem.find("PRIVATE"), std::string::npos);
}

TEST_F(ServiceTls, DropsConnectionsToo) {
  startTls({"--fault", "/popup/get_info=drop"});
  client().set_ca_cert_path(certificate());
  EXPECT_FALSE(getConfig());
  EXPECT_TRUE(client().Get("/pages/welcome.html"));
}

}  // namespace
}  // namespace zovk
