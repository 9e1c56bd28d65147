#include "platform/linux/CurlTransfer.h"

#include <boost/algorithm/string/predicate.hpp>
#include <openssl/ssl.h>
#include <sys/socket.h>

namespace zovk {
namespace {

constexpr std::chrono::seconds kDefaultTimeout{60};
constexpr long kMostRedirects = 16;
constexpr const char* kProtocols = "http,https";

// Programs that the game starts must not inherit its connections.
curl_socket_t openSocket(void* /*context*/, curlsocktype /*purpose*/, curl_sockaddr* address) {
  return ::socket(address->family, address->socktype | SOCK_CLOEXEC, address->protocol);
}

CURLcode addAuthority(CURL* /*handle*/, void* context, void* path) {
  auto* const tls = static_cast<SSL_CTX*>(context);
  const bool added =
      SSL_CTX_load_verify_locations(tls, static_cast<const char*>(path), nullptr) == 1;
  return added ? CURLE_OK : CURLE_SSL_CACERT_BADFILE;
}

std::chrono::seconds timeoutOf(const UrlRequest& request) {
  const bool given = request.timeout && *request.timeout > std::chrono::seconds(0);
  return given ? *request.timeout : kDefaultTimeout;
}

}  // namespace

CurlTransfer::CurlTransfer(const UrlRequest& request, ResponseSink& sink,
                           const CurlSessionSettings& settings)
    : request_(request),
      sink_(sink),
      settings_(settings),
      timeout_(timeoutOf(request)),
      lastMove_(std::chrono::steady_clock::now()) {}

std::optional<std::string> CurlTransfer::prepare(SessionFiles& files) {
  if (easy_.get() == nullptr) return "out of memory";
  if (auto error = parseUrl()) return error;
  if (auto error = sink_.begin(files)) return error;
  setConnection();
  setTrust();
  setRedirects();
  setMethod();
  setHeaders();
  setReception();
  return std::nullopt;
}

std::optional<std::string> CurlTransfer::parseUrl() {
  // A zero byte would cut the address short.
  if (request_.url.find('\0') != std::string::npos) return "unusable address";
  url_.reset(curl_url());
  const CURLUcode code = curl_url_set(url_.get(), CURLUPART_URL, request_.url.c_str(), 0);
  if (code != CURLUE_OK) return std::string("unusable address: ") + curl_url_strerror(code);
  curl_easy_setopt(handle(), CURLOPT_CURLU, url_.get());
  return std::nullopt;
}

void CurlTransfer::setConnection() {
  curl_easy_setopt(handle(), CURLOPT_NOSIGNAL, 1L);
  curl_easy_setopt(handle(), CURLOPT_PROTOCOLS_STR, kProtocols);
  curl_easy_setopt(handle(), CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_2TLS));
  curl_easy_setopt(handle(), CURLOPT_OPENSOCKETFUNCTION, &openSocket);
  const auto connectTimeout = static_cast<long>(timeout_.count());
  curl_easy_setopt(handle(), CURLOPT_CONNECTTIMEOUT, connectTimeout);
  // A name that is still being looked up must not hold up a cancellation or the shutdown.
  curl_easy_setopt(handle(), CURLOPT_QUICK_EXIT, 1L);
}

void CurlTransfer::setTrust() {
  if (settings_.certificateAuthority.empty()) return;
  // Naming the file to the library would replace the system's.
  curl_easy_setopt(handle(), CURLOPT_SSL_CTX_FUNCTION, &addAuthority);
  curl_easy_setopt(handle(), CURLOPT_SSL_CTX_DATA, settings_.certificateAuthority.c_str());
}

void CurlTransfer::setRedirects() {
  curl_easy_setopt(handle(), CURLOPT_FOLLOWLOCATION, 1L);
  curl_easy_setopt(handle(), CURLOPT_MAXREDIRS, kMostRedirects);
  curl_easy_setopt(handle(), CURLOPT_REDIR_PROTOCOLS_STR, kProtocols);
}

void CurlTransfer::setMethod() {
  if (request_.method == "GET" && !request_.body) return;
  if (request_.method == "POST" || request_.body) {
    const std::string_view body = request_.body ? std::string_view(*request_.body) : "";
    curl_easy_setopt(handle(), CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
    curl_easy_setopt(handle(), CURLOPT_POSTFIELDS, body.data());
  }
  if (request_.method != "POST") {
    curl_easy_setopt(handle(), CURLOPT_CUSTOMREQUEST, request_.method.c_str());
  }
}

void CurlTransfer::setHeaders() {
  // No header says more than the caller does: neither the type of a form that a body gets
  // otherwise, nor that the body waits for the server's word.
  addHeader("Content-Type:");
  addHeader("Expect:");
  const Validators known = sink_.known();
  if (!known.entityTag.empty()) addHeader("If-None-Match: " + known.entityTag);
  if (!known.lastModified.empty()) addHeader("If-Modified-Since: " + known.lastModified);
  curl_easy_setopt(handle(), CURLOPT_HTTPHEADER, headers_.get());
}

void CurlTransfer::addHeader(const std::string& line) {
  curl_slist* const longer = curl_slist_append(headers_.get(), line.c_str());
  if (longer == nullptr) return;  // no memory: the list is as it was
  static_cast<void>(headers_.release());
  headers_.reset(longer);
}

void CurlTransfer::setReception() {
  curl_easy_setopt(handle(), CURLOPT_ACCEPT_ENCODING, "");
  curl_easy_setopt(handle(), CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(kMaximumBody));
  curl_easy_setopt(handle(), CURLOPT_WRITEFUNCTION, &CurlTransfer::receive);
  curl_easy_setopt(handle(), CURLOPT_WRITEDATA, this);
  curl_easy_setopt(handle(), CURLOPT_ERRORBUFFER, errorBuffer_.data());
}

// The library's own limit on slow transfers looks at an average, which hides a stop for seconds.
CurlTransfer::TimePoint CurlTransfer::deadline(TimePoint now) {
  const curl_off_t moved = bytesMoved();
  if (moved != bytesMoved_) lastMove_ = now;
  bytesMoved_ = moved;
  return lastMove_ + timeout_;
}

curl_off_t CurlTransfer::bytesMoved() const {
  curl_off_t down = 0;
  curl_off_t up = 0;
  long headers = 0;
  curl_easy_getinfo(handle(), CURLINFO_SIZE_DOWNLOAD_T, &down);
  curl_easy_getinfo(handle(), CURLINFO_SIZE_UPLOAD_T, &up);
  curl_easy_getinfo(handle(), CURLINFO_HEADER_SIZE, &headers);
  return down + up + headers;
}

UrlResult CurlTransfer::result(CURLcode code) const {
  UrlResult result;
  char* url = nullptr;
  curl_easy_getinfo(handle(), CURLINFO_EFFECTIVE_URL, &url);
  result.url = url != nullptr && *url != '\0' ? url : request_.url;
  if (code != CURLE_OK) {
    result.error = errorText(code);
    return result;
  }
  long status = 0;
  curl_easy_getinfo(handle(), CURLINFO_RESPONSE_CODE, &status);
  result.status = static_cast<int>(status);
  return result;
}

AnswerVersion CurlTransfer::version() const {
  long redirects = 0;
  curl_easy_getinfo(handle(), CURLINFO_REDIRECT_COUNT, &redirects);
  const bool mayBeKept = !boost::algorithm::icontains(answerHeader("Cache-Control"), "no-store") &&
                         answerHeader("Vary") != "*";
  return {{answerHeader("ETag"), answerHeader("Last-Modified")}, mayBeKept, redirects > 0};
}

std::string CurlTransfer::answerHeader(const char* name) const {
  constexpr int kLastRequest = -1;
  curl_header* header = nullptr;
  const CURLHcode code = curl_easy_header(handle(), name, 0, CURLH_HEADER, kLastRequest, &header);
  return code == CURLHE_OK ? header->value : std::string();
}

std::string CurlTransfer::errorText(CURLcode code) const {
  if (ownError_) return *ownError_;
  return errorBuffer_[0] != '\0' ? errorBuffer_.data() : curl_easy_strerror(code);
}

std::size_t CurlTransfer::receive(char* bytes, std::size_t size, std::size_t count,
                                  void* transfer) {
  auto& self = *static_cast<CurlTransfer*>(transfer);
  self.ownError_ = self.take({bytes, size * count});
  return self.ownError_ ? 0 : size * count;  // less than all ends the transfer
}

std::optional<std::string> CurlTransfer::take(std::string_view piece) {
  received_ += piece.size();
  return received_ > kMaximumBody ? std::optional<std::string>("answer too long")
                                  : sink_.write(piece);
}

}  // namespace zovk
