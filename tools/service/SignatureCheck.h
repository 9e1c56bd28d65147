#pragma once

#include <string>
#include <string_view>
#include <variant>

#include "service/Answer.h"
#include "service/GameKeys.h"

namespace zovk::service {

/// The two halves of a signed query, exactly as they were sent.
struct SignedQuery {
  std::string parameters;  ///< From the last "game_id=" up to the signature.
  std::string signature;   ///< The text after the last "&sig="; empty if there is none.
};

/// The common parameters of a request with a right signature.
struct Caller {
  std::string gameId;
  std::string installId;
  std::string os;
  std::string version;
};

/// Splits a query. An address may already have a query in front, which is not signed.
SignedQuery splitSignedQuery(std::string_view query);
/// Returns the signed text, with the game's key last. `path` is without percent-encoding; the
/// parameters are unchanged.
std::string signedText(std::string_view path, std::string_view parameters, std::string_view body,
                       std::string_view key);

/// Finds out who signed a request, or why it is refused. Any thread.
class SignatureCheck {
 public:
  SignatureCheck(const GameKeys& keys, bool showKeys) : keys_(keys), showKeys_(showKeys) {}

  std::variant<Caller, Answer> check(std::string_view path, std::string_view query,
                                     std::string_view body) const;

 private:
  Answer wrongSignature(const std::string& received, std::string_view path,
                        std::string_view parameters, std::string_view body,
                        const std::string& key) const;

  const GameKeys& keys_;
  bool showKeys_;
};

}  // namespace zovk::service
