#include "service/Body.h"

namespace zovk::service {

std::optional<std::string> readBody(const httplib::Request& request, httplib::Response& response,
                                    const httplib::ContentReader& reader, std::size_t largest) {
  if (request.is_multipart_form_data()) {
    response.status = 415;
    return std::nullopt;
  }
  std::string body;
  const bool announced =
      request.has_header("Content-Length") || request.has_header("Transfer-Encoding");
  if (!announced) return body;
  const bool whole = reader([&body, largest](const char* bytes, std::size_t length) {
    body.append(bytes, length);
    return body.size() <= largest;
  });
  if (whole) return body;
  // The library calls a body that was not read to its end a bad request.
  if (body.size() > largest) {
    response.status = 413;
  } else if (response.status < 400) {
    response.status = 400;
  }
  return std::nullopt;
}

}  // namespace zovk::service
