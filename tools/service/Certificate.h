#pragma once

#include <memory>
#include <string>

#include <openssl/evp.h>
#include <openssl/x509.h>

namespace zovk::service {

struct FreeKey {
  void operator()(EVP_PKEY* key) const { EVP_PKEY_free(key); }
};
struct FreeX509 {
  void operator()(X509* certificate) const { X509_free(certificate); }
};

/// A self-signed certificate that is made at each start and is valid for a week, with its key,
/// which never leaves the process. It is its own authority, so that a client can trust it alone.
class Certificate {
 public:
  /// Makes one for localhost, the loopback addresses and `address`. Throws std::runtime_error.
  explicit Certificate(const std::string& address);

  X509* x509() const { return x509_.get(); }
  EVP_PKEY* key() const { return key_.get(); }
  /// Throws std::runtime_error.
  void writePem(const std::string& path) const;

 private:
  std::unique_ptr<EVP_PKEY, FreeKey> key_;
  std::unique_ptr<X509, FreeX509> x509_;
};

}  // namespace zovk::service
