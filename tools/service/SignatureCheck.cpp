#include "service/SignatureCheck.h"

#include <boost/json/object.hpp>

#include "text/Md5.h"

namespace zovk::service {
namespace {

constexpr std::string_view kMask = "<game key>";

}  // namespace

std::variant<Caller, Answer> SignatureCheck::check(std::string_view path, std::string_view query,
                                                   std::string_view body) const {
  const SignedQuery parts = splitSignedQuery(query);
  if (const auto missing = missingParameter(parts.parameters); !missing.empty()) {
    return problem(400, std::string(missing) + " is missing");
  }
  const auto value = [&](std::string_view name) {
    return std::string(valueOf(parts.parameters, name).value_or(""));
  };
  const Caller caller{.gameId = value("game_id"),
                      .installId = value("install_id"),
                      .os = value("os"),
                      .version = value("version")};
  const auto key = keys_.keyOf(caller.gameId);
  if (!key) return problem(403, "unknown game_id: " + caller.gameId);
  const std::string expected = md5Hex(signedText(path, parts.parameters, body, *key));
  if (parts.signature != expected) {
    return wrongSignature(std::string(parts.signature), path, parts.parameters, body, *key);
  }
  return caller;
}

Answer SignatureCheck::wrongSignature(const std::string& received, std::string_view path,
                                      std::string_view parameters, std::string_view body,
                                      const std::string& key) const {
  boost::json::object told{
      {"code", 403},
      {"message", received.empty() ? "sig is missing" : "wrong signature"},
      {"sig", received},
      {"signed_text", signedText(path, parameters, body, showKeys_ ? key : kMask)},
      {"rule", "sig = MD5 of path, ?, parameters, body and game key, in lower-case hexadecimal"}};
  if (showKeys_) told["expected_sig"] = md5Hex(signedText(path, parameters, body, key));
  return jsonAnswer(told, 403);
}

}  // namespace zovk::service
