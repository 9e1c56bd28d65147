#include "platform/linux/http/CurlTransfer.h"

#include <algorithm>

#include <boost/algorithm/string/predicate.hpp>
#include <openssl/ssl.h>
#include <sys/socket.h>

#include "text/WebAddress.h"

namespace zovk {
namespace {

constexpr long kMostRedirects = 16;
// Larger than the library's own, so that a page takes few reads and writes.
constexpr long kPieceOfBody = 100L * 1024;
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

std::chrono::milliseconds stallOf(const UrlRequest& request, const CurlSessionSettings& settings) {
  const bool given = request.timeout && *request.timeout > std::chrono::seconds(0);
  return given ? *request.timeout : settings.longestStall;
}

}  // namespace

template <typename Value>
void CurlTransfer::set(CURLoption option, Value value) {
  curl().easySetOption(handle(), option, value);
}

template <typename Value>
Value CurlTransfer::info(CURLINFO what) const {
  Value value{};
  curl().easyGetInfo(handle(), what, &value);
  return value;
}

CurlTransfer::CurlTransfer(const UrlRequest& request, ResponseSink& sink,
                           const CurlSessionSettings& settings)
    : request_(request),
      sink_(sink),
      settings_(settings),
      longestStall_(stallOf(request, settings)) {}

std::optional<std::string> CurlTransfer::prepare(SessionFiles& files) {
  if (easy_.get() == nullptr) return "out of memory";
  if (auto error = parseUrl()) return error;
  sink_.begin(files);
  setConnection();
  setSpeed();
  setTrust();
  setRedirects();
  setMethod();
  setHeaders();
  setReception();
  return std::nullopt;
}

std::optional<std::string> CurlTransfer::parseUrl() {
  const auto address = readWebAddress(request_.url);
  if (!address) return "unusable address: it cannot be read";
  url_.reset(curl().url());
  const CURLUcode code =
      curl().urlSet(url_.get(), CURLUPART_URL, address->text.c_str(), CURLU_PATH_AS_IS);
  if (code != CURLUE_OK) return std::string("unusable address: ") + curl().urlErrorText(code);
  set(CURLOPT_CURLU, url_.get());
  return std::nullopt;
}

void CurlTransfer::setConnection() {
  set(CURLOPT_NOSIGNAL, 1L);
  set(CURLOPT_PROTOCOLS_STR, kProtocols);
  set(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_2TLS));
  set(CURLOPT_OPENSOCKETFUNCTION, &openSocket);
  set(CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(longestStall_.count()));
  // A name that is still being looked up must not hold up a cancellation or the shutdown.
  set(CURLOPT_QUICK_EXIT, 1L);
}

void CurlTransfer::setSpeed() {
  set(CURLOPT_LOW_SPEED_LIMIT, settings_.lowestSpeed);
  set(CURLOPT_LOW_SPEED_TIME, static_cast<long>(settings_.slowestTime.count()));
}

void CurlTransfer::setTrust() {
  if (settings_.certificateAuthority.empty()) return;
  // Naming the file to the library would replace the system's.
  set(CURLOPT_SSL_CTX_FUNCTION, &addAuthority);
  set(CURLOPT_SSL_CTX_DATA, settings_.certificateAuthority.c_str());
}

void CurlTransfer::setRedirects() {
  set(CURLOPT_FOLLOWLOCATION, 1L);
  set(CURLOPT_MAXREDIRS, kMostRedirects);
  set(CURLOPT_REDIR_PROTOCOLS_STR, kProtocols);
}

void CurlTransfer::setMethod() {
  if (request_.method == "GET" && !request_.body) return;
  if (request_.method == "POST" || request_.body) {
    const std::string_view body = request_.body ? std::string_view(*request_.body) : "";
    set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
    set(CURLOPT_POSTFIELDS, body.data());
  }
  if (request_.method != "POST") {
    set(CURLOPT_CUSTOMREQUEST, request_.method.c_str());
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
  set(CURLOPT_HTTPHEADER, headers_.get());
}

void CurlTransfer::addHeader(const std::string& line) {
  curl_slist* const longer = curl().listAppend(headers_.get(), line.c_str());
  if (longer == nullptr) return;  // no memory: the list is as it was
  static_cast<void>(headers_.release());
  headers_.reset(longer);
}

void CurlTransfer::setReception() {
  set(CURLOPT_ACCEPT_ENCODING, "");
  set(CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(kMaximumBody));
  set(CURLOPT_BUFFERSIZE, kPieceOfBody);
  set(CURLOPT_WRITEFUNCTION, &CurlTransfer::receive);
  set(CURLOPT_WRITEDATA, this);
  set(CURLOPT_ERRORBUFFER, errorBuffer_.data());
}

// The library's own limit on slow transfers looks at an average, which hides a stop for seconds. It
// is there for what drips without ever standing still.
CurlTransfer::TimePoint CurlTransfer::deadline(TimePoint now) {
  const curl_off_t moved = bytesMoved();
  if (moved != bytesMoved_) lastMove_ = now;
  bytesMoved_ = moved;
  const TimePoint still = lastMove_ + longestStall_;
  return request_.method == "POST" ? std::min(still, start_ + settings_.longestPost) : still;
}

std::size_t CurlTransfer::descriptors() const {
  // Looking a name up takes three; so may connecting.
  constexpr std::size_t kUntilConnected = 3;
  const bool connected = info<curl_off_t>(CURLINFO_PRETRANSFER_TIME_T) > 0;
  return connected ? 1 + sink_.descriptors() : kUntilConnected;
}

curl_off_t CurlTransfer::bytesMoved() const {
  return info<curl_off_t>(CURLINFO_SIZE_DOWNLOAD_T) + info<curl_off_t>(CURLINFO_SIZE_UPLOAD_T) +
         info<long>(CURLINFO_HEADER_SIZE);
}

UrlResult CurlTransfer::result(CURLcode code) const {
  UrlResult result;
  const char* const url = info<const char*>(CURLINFO_EFFECTIVE_URL);
  result.url = url != nullptr && *url != '\0' ? url : request_.url;
  if (code != CURLE_OK) {
    result.error = errorText(code);
    return result;
  }
  result.status = static_cast<int>(info<long>(CURLINFO_RESPONSE_CODE));
  return result;
}

AnswerVersion CurlTransfer::version() const {
  const bool redirected = info<long>(CURLINFO_REDIRECT_COUNT) > 0;
  const bool mayBeKept = !boost::algorithm::icontains(answerHeader("Cache-Control"), "no-store") &&
                         answerHeader("Vary") != "*";
  return {{answerHeader("ETag"), answerHeader("Last-Modified")}, mayBeKept, redirected};
}

std::string CurlTransfer::answerHeader(const char* name) const {
  constexpr int kLastRequest = -1;
  curl_header* header = nullptr;
  const CURLHcode code = curl().easyHeader(handle(), name, 0, CURLH_HEADER, kLastRequest, &header);
  return code == CURLHE_OK ? header->value : std::string();
}

std::string CurlTransfer::errorText(CURLcode code) const {
  if (ownError_) return *ownError_;
  return errorBuffer_[0] != '\0' ? errorBuffer_.data() : curl().easyErrorText(code);
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
