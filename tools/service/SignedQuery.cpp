#include "service/SignedQuery.h"

#include <algorithm>
#include <cstddef>

namespace zovk::service {
namespace {

// Returns where the common parameters begin: at the last "game_id=" that starts a parameter.
std::size_t startOfParameters(std::string_view query) {
  constexpr std::string_view kFirst = "game_id=";
  const std::size_t later = query.rfind("&game_id=");
  if (later != std::string_view::npos) return later + 1;
  return query.starts_with(kFirst) ? 0 : query.size();
}

}  // namespace

SignedQuery splitSignedQuery(std::string_view query) {
  constexpr std::string_view kSignature = "&sig=";
  query.remove_prefix(startOfParameters(query));
  const std::size_t end = query.rfind(kSignature);
  if (end == std::string_view::npos) return {.parameters = query, .signature = ""};
  return {.parameters = query.substr(0, end), .signature = query.substr(end + kSignature.size())};
}

std::optional<std::string_view> valueOf(std::string_view parameters, std::string_view name) {
  while (!parameters.empty()) {
    const std::string_view piece = parameters.substr(0, parameters.find('&'));
    const bool wanted =
        piece.size() > name.size() && piece.starts_with(name) && piece[name.size()] == '=';
    if (wanted) return piece.substr(name.size() + 1);
    parameters.remove_prefix(std::min(parameters.size(), piece.size() + 1));
  }
  return std::nullopt;
}

std::string_view missingParameter(std::string_view parameters) {
  for (const std::string_view name : {"game_id", "install_id", "os", "version"}) {
    const auto value = valueOf(parameters, name);
    // A machine may have nothing to identify the installation by, so that one value may be empty.
    if (!value || (value->empty() && name != "install_id")) return name;
  }
  return "";
}

std::string signedText(std::string_view path, std::string_view parameters, std::string_view body,
                       std::string_view key) {
  std::string text(path);
  return text.append("?").append(parameters).append(body).append(key);
}

}  // namespace zovk::service
