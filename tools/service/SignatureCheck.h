#pragma once

#include <string>
#include <string_view>
#include <variant>

#include "service/Answer.h"
#include "service/GameKeys.h"
#include "service/SignedQuery.h"

namespace zovk::service {

/// The common parameters of a request with a right signature.
struct Caller {
  std::string gameId;
  std::string installId;
  std::string os;
  std::string version;
};

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
