#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zovk::service {

/// The two halves of a signed query, exactly as they were sent, within the given text.
struct SignedQuery {
  std::string_view parameters;  ///< From the last "game_id=" up to the signature.
  std::string_view signature;   ///< The text after the last "&sig="; empty if there is none.
};

/// Splits a query. An address may already have a query in front, which is not signed.
SignedQuery splitSignedQuery(std::string_view query);

/// Returns a parameter's value as it was sent, or nothing if there is no such parameter.
std::optional<std::string_view> valueOf(std::string_view parameters, std::string_view name);

/// Returns the name of the first common parameter that is missing; empty if none is.
std::string_view missingParameter(std::string_view parameters);

/// Returns the signed text, with the game's key last. `path` is without percent-encoding; the
/// parameters are unchanged.
std::string signedText(std::string_view path, std::string_view parameters, std::string_view body,
                       std::string_view key);

}  // namespace zovk::service
