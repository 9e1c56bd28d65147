#include "service/Certificate.h"

#include <stdexcept>

#include <openssl/bio.h>
#include <openssl/bn.h>
#include <openssl/ec.h>
#include <openssl/pem.h>
#include <openssl/x509v3.h>

#include "service/Loopback.h"

namespace zovk::service {
namespace {

constexpr long kOneDay = 24L * 60 * 60;
constexpr long kLifetime = 7 * kOneDay;
constexpr int kSerialBits = 127;

struct FreeBio {
  void operator()(BIO* bio) const { BIO_free_all(bio); }
};
struct FreeNumber {
  void operator()(BIGNUM* number) const { BN_free(number); }
};
struct FreeExtension {
  void operator()(X509_EXTENSION* extension) const { X509_EXTENSION_free(extension); }
};

void require(bool done, const char* step) {
  if (!done) throw std::runtime_error(std::string("certificate: ") + step);
}

void setSerial(X509* x509) {
  const std::unique_ptr<BIGNUM, FreeNumber> number(BN_new());
  require(number && BN_rand(number.get(), kSerialBits, BN_RAND_TOP_ANY, BN_RAND_BOTTOM_ANY) == 1 &&
              BN_to_ASN1_INTEGER(number.get(), X509_get_serialNumber(x509)) != nullptr,
          "serial number");
}

void setNames(X509* x509) {
  constexpr std::string_view kName = "zovkpopup-service, throw-away";
  const std::string text(kName);
  X509_NAME* const name = X509_get_subject_name(x509);
  require(X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_UTF8,
                                     reinterpret_cast<const unsigned char*>(text.data()),
                                     static_cast<int>(text.size()), -1, 0) == 1 &&
              X509_set_issuer_name(x509, name) == 1,
          "names");
}

void setLifetime(X509* x509) {
  // The past hour allows for a client's clock that is a little slow.
  require(X509_gmtime_adj(X509_getm_notBefore(x509), -60L * 60) != nullptr &&
              X509_gmtime_adj(X509_getm_notAfter(x509), kLifetime) != nullptr,
          "lifetime");
}

void addExtension(X509* x509, int kind, const std::string& value) {
  X509V3_CTX context{};
  X509V3_set_ctx(&context, x509, x509, nullptr, nullptr, 0);
  const std::unique_ptr<X509_EXTENSION, FreeExtension> extension(
      X509V3_EXT_conf_nid(nullptr, &context, kind, value.c_str()));
  require(extension && X509_add_ext(x509, extension.get(), -1) == 1, "extension");
}

std::string alternativeNames(const std::string& address) {
  std::string names = "DNS:localhost,IP:127.0.0.1,IP:::1";
  if (!isLoopback(address)) names += (isNumericAddress(address) ? ",IP:" : ",DNS:") + address;
  return names;
}

}  // namespace

Certificate::Certificate(const std::string& address)
    : key_(EVP_PKEY_Q_keygen(nullptr, nullptr, "EC", "P-256")), x509_(X509_new()) {
  require(key_ && x509_, "key");
  X509* const x509 = x509_.get();
  require(X509_set_version(x509, X509_VERSION_3) == 1, "version");
  setSerial(x509);
  setNames(x509);
  setLifetime(x509);
  require(X509_set_pubkey(x509, key_.get()) == 1, "public key");
  addExtension(x509, NID_basic_constraints, "critical,CA:TRUE,pathlen:0");
  addExtension(x509, NID_key_usage, "critical,digitalSignature,keyCertSign");
  addExtension(x509, NID_ext_key_usage, "serverAuth");
  addExtension(x509, NID_subject_key_identifier, "hash");
  addExtension(x509, NID_subject_alt_name, alternativeNames(address));
  require(X509_sign(x509, key_.get(), EVP_sha256()) > 0, "signature");
}

void Certificate::writePem(const std::string& path) const {
  const std::unique_ptr<BIO, FreeBio> file(BIO_new_file(path.c_str(), "w"));
  require(file && PEM_write_bio_X509(file.get(), x509_.get()) == 1 && BIO_flush(file.get()) == 1,
          "cannot be written");
}

}  // namespace zovk::service
