#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "network/ZOVKPopupUrlParams.h"
#include "zovkpopup/ThreadSafety.h"
#include "zovkpopup/platform/UrlSession.h"

namespace zovk {

/// Sends one request to the popup service, or downloads one file. Make a new object for each. The
/// running operation keeps it alive until its completion has run.
///
/// Any thread; calls return at once. Completions may be empty. They run on the session's thread,
/// never on the main thread, and at most once for each operation, except in the case that
/// `startDownload` describes.
class ZOVKPopupNetwork : public std::enable_shared_from_this<ZOVKPopupNetwork> {
 public:
  /// `success` means that there was no transport error; the HTTP status does not matter. Without
  /// success there is no data.
  using RequestComplete = std::function<void(bool success, const std::optional<std::string>& data)>;
  /// `filePath` is a temporary file; it is removed when the completion returns.
  using DownloadComplete =
      std::function<void(bool success, const std::optional<std::string>& filePath)>;

  enum RequestType : std::int32_t { kGet = 0, kPost = 1 };

  /// The session must outlive the object.
  explicit ZOVKPopupNetwork(UrlSession& session) : session_(session) {}

  /// Signs and sends a request. If the address is empty and there is a completion, the completion
  /// is called at once with false and nothing is sent. Without a completion the request is tried
  /// anyway. A call without a completion keeps the completion of an earlier call.
  void startRequest(std::int32_t type, const ZOVKPopupUrlParams& urlParams,
                    const RequestComplete& complete);

  /// Downloads a file; the address is used unchanged. With an empty address `complete` is called at
  /// once with false. The download is tried all the same, and calls it again when it fails.
  void startDownload(const std::string& urlStr, const DownloadComplete& complete);

 private:
  void finishRequest(const DataResult& result);
  void finishDownload(const DownloadResult& result);

  UrlSession& session_;
  Mutex mutex_;
  RequestComplete requestComplete_ ZOVK_GUARDED_BY(mutex_);
  DownloadComplete downloadComplete_ ZOVK_GUARDED_BY(mutex_);
};

/// Returns the parameters of every request, with values that are not percent-encoded.
std::string commonParameterText(const ZOVKPopupUrlParams& urlParams);
/// Returns the text to sign: path, "?", parameters, body text and game key. For an endpoint it is
/// the path that is sent, decoded.
std::string signatureSource(const ZOVKPopupUrlParams& urlParams, const std::string& bodyText);
/// Returns the address to send, with its signature.
std::string signedUrl(const ZOVKPopupUrlParams& urlParams, const std::string& signature);

}  // namespace zovk
