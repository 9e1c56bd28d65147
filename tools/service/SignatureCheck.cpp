#include "service/SignatureCheck.h"

#include <optional>

#include <boost/json/object.hpp>

#include "text/Md5.h"

namespace zovk::service {
namespace {

constexpr std::string_view kMask = "<game key>";

// Returns where the common parameters begin: at the last "game_id=" that starts a parameter.
std::size_t startOfParameters(std::string_view query) {
  constexpr std::string_view kFirst = "game_id=";
  const std::size_t later = query.rfind("&game_id=");
  if (later != std::string_view::npos) return later + 1;
  return query.starts_with(kFirst) ? 0 : query.size();
}

// Returns the value as it was sent, or nothing if there is no such parameter.
std::optional<std::string> parameter(std::string_view parameters, std::string_view name) {
  while (!parameters.empty()) {
    const std::string_view piece = parameters.substr(0, parameters.find('&'));
    const bool wanted =
        piece.size() > name.size() && piece.starts_with(name) && piece[name.size()] == '=';
    if (wanted) return std::string(piece.substr(name.size() + 1));
    parameters.remove_prefix(std::min(parameters.size(), piece.size() + 1));
  }
  return std::nullopt;
}

}  // namespace

SignedQuery splitSignedQuery(std::string_view query) {
  constexpr std::string_view kSignature = "&sig=";
  query.remove_prefix(startOfParameters(query));
  const std::size_t end = query.rfind(kSignature);
  if (end == std::string_view::npos) return {std::string(query), ""};
  return {std::string(query.substr(0, end)), std::string(query.substr(end + kSignature.size()))};
}

std::string signedText(std::string_view path, std::string_view parameters, std::string_view body,
                       std::string_view key) {
  std::string text(path);
  return text.append("?").append(parameters).append(body).append(key);
}

std::variant<Caller, Answer> SignatureCheck::check(std::string_view path, std::string_view query,
                                                   std::string_view body) const {
  const SignedQuery parts = splitSignedQuery(query);
  const auto gameId = parameter(parts.parameters, "game_id");
  const auto installId = parameter(parts.parameters, "install_id");
  const auto os = parameter(parts.parameters, "os");
  const auto version = parameter(parts.parameters, "version");
  // A machine may have nothing to identify the installation by, so that one value may be empty.
  if (!gameId || gameId->empty()) return problem(400, "game_id is missing");
  if (!installId) return problem(400, "install_id is missing");
  if (!os || os->empty()) return problem(400, "os is missing");
  if (!version || version->empty()) return problem(400, "version is missing");

  const auto key = keys_.keyOf(*gameId);
  if (!key) return problem(403, "unknown game_id: " + *gameId);
  const std::string expected = md5Hex(signedText(path, parts.parameters, body, *key));
  if (parts.signature != expected) {
    return wrongSignature(parts.signature, path, parts.parameters, body, *key);
  }
  return Caller{*gameId, *installId, *os, *version};
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
