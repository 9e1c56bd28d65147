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
  std::string signature;   ///< What follows the last "&sig="; empty when there is none.
};

/// The common parameters of a request whose signature is right.
struct Caller {
  std::string gameId;
  std::string installId;
  std::string os;
  std::string version;
};

/// An address may have a query of its own in front, which is not part of what is signed.
SignedQuery splitSignedQuery(std::string_view query);
/// What is signed, the game's key last. `path` is without percent-encoding; the parameters are
/// taken as they were sent.
std::string signedText(std::string_view path, std::string_view parameters, std::string_view body,
                       std::string_view key);

/// Tells who signed a request, or why it is refused. Any thread.
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
