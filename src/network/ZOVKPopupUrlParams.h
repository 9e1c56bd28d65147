#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <boost/json/object.hpp>

namespace zovk {

/// The parameters of one request to the popup service.
struct ZOVKPopupUrlParams {
  std::string urlStr;      ///< Base address of the service, or the whole address of an endpoint.
  std::string actionPath;  ///< Appended to `urlStr`; empty if that is an endpoint already.
  std::string gameID;
  std::string gameKey;  ///< The secret end of the signed text; never sent.
  std::int32_t os = 2;  ///< The platform's code.
  std::string version;
  std::string installID;
  std::optional<boost::json::object> postInfo;  ///< Members of the JSON body of a POST.
};

}  // namespace zovk
