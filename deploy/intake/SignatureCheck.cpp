#include "SignatureCheck.h"

#include <openssl/crypto.h>

#include "service/SignedQuery.h"
#include "text/Md5.h"

namespace zovk::intake {

namespace {

// How long it takes says nothing about the right one.
bool isSame(std::string_view one, std::string_view other) {
  return one.size() == other.size() && CRYPTO_memcmp(one.data(), other.data(), one.size()) == 0;
}

}  // namespace

std::variant<Report, Refusal> checkSignature(const SentReport& sent, const GameKeys& keys) {
  if (sent.body.empty()) return Refusal{.status = 400, .message = "the body is empty"};
  const auto [parameters, signature] = service::splitSignedQuery(sent.query);
  if (const auto missing = service::missingParameter(parameters); !missing.empty()) {
    return Refusal{.status = 400, .message = std::string(missing) + " is missing"};
  }
  const std::string* key = keys.keyOf(service::valueOf(parameters, "game_id").value_or(""));
  if (key == nullptr) return Refusal{.status = 403, .message = "unknown game_id"};
  const std::string text = service::signedText(sent.path, parameters, sent.body, *key);
  if (!isSame(signature, md5Hex(text))) {
    return Refusal{.status = 403, .message = "wrong signature"};
  }
  return Report{.path = sent.path, .parameters = parameters, .body = sent.body};
}

}  // namespace zovk::intake
