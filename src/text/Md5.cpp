#include "text/Md5.h"

#include <array>
#include <cstddef>

#include <openssl/evp.h>

namespace zovk {
namespace {

// Looking the algorithm up by name on every digest costs more than digesting a short text.
const EVP_MD* algorithm() {
  static const EVP_MD* const md5 = EVP_MD_fetch(nullptr, "MD5", nullptr);
  return md5;
}

}  // namespace

struct Md5::Context {
  Context() : handle(EVP_MD_CTX_new()) {}
  ~Context() { EVP_MD_CTX_free(handle); }
  Context(const Context&) = delete;
  Context& operator=(const Context&) = delete;

  EVP_MD_CTX* handle;
};

Md5::Md5() : context_(std::make_unique<Context>()) {
  EVP_DigestInit_ex2(context_->handle, algorithm(), nullptr);
}

Md5::~Md5() = default;

void Md5::update(std::string_view bytes) {
  EVP_DigestUpdate(context_->handle, bytes.data(), bytes.size());
}

std::string Md5::finish() {
  std::array<unsigned char, 16> digest{};
  EVP_DigestFinal_ex(context_->handle, digest.data(), nullptr);
  EVP_DigestInit_ex2(context_->handle, algorithm(), nullptr);
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text(2 * digest.size(), '\0');
  for (std::size_t i = 0; i < digest.size(); ++i) {
    text[2 * i] = kDigits[digest[i] >> 4U];
    text[2 * i + 1] = kDigits[digest[i] & 0xFU];
  }
  return text;
}

std::string md5Hex(std::string_view bytes) {
  thread_local Md5 digest;
  digest.update(bytes);
  return digest.finish();
}

}  // namespace zovk
