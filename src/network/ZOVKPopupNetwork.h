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

/// Sends one request to the popup service, or downloads one file. A new object is made for each;
/// the running operation keeps it alive until its completion has run.
///
/// Any thread; calls return at once. Completions run on the session's thread, never on the main
/// thread, and at most once for each operation but for the one case that `startDownload` names.
/// They may be empty.
class ZOVKPopupNetwork : public std::enable_shared_from_this<ZOVKPopupNetwork> {
 public:
  /// `success` means that there was no transport error; an HTTP status is not looked at. Without
  /// success there is no data.
  using RequestComplete = std::function<void(bool success, const std::optional<std::string>& data)>;
  /// `filePath` is a temporary file, gone when the completion returns.
  using DownloadComplete =
      std::function<void(bool success, const std::optional<std::string>& filePath)>;

  enum RequestType : std::int32_t { kGet = 0, kPost = 1 };

  /// The session must outlive the object.
  explicit ZOVKPopupNetwork(UrlSession& session) : session_(session) {}

  /// Signs and sends a request. With an empty address and a completion, the completion is called
  /// at once with false and nothing is sent; without a completion the attempt is still made. A call
  /// without a completion leaves that of an earlier call waiting.
  void startRequest(std::int32_t type, const ZOVKPopupUrlParams& urlParams,
                    const RequestComplete& complete);

  /// Fetches a file, the address used as given. An empty address calls `complete` at once with
  /// false; the download is attempted all the same and calls it a second time when it fails.
  void startDownload(const std::string& urlStr, const DownloadComplete& complete);

 private:
  void finishRequest(const DataResult& result);
  void finishDownload(const DownloadResult& result);

  UrlSession& session_;
  Mutex mutex_;
  RequestComplete requestComplete_ ZOVK_GUARDED_BY(mutex_);
  DownloadComplete downloadComplete_ ZOVK_GUARDED_BY(mutex_);
};

/// The parameters that go with every request, values as they are, not percent-encoded.
std::string commonParameterText(const ZOVKPopupUrlParams& urlParams);
/// What is signed: path, "?", parameters, body text and game key. The path of an endpoint is the
/// one that is sent, decoded.
std::string signatureSource(const ZOVKPopupUrlParams& urlParams, const std::string& bodyText);
/// The address that is sent, its signature included.
std::string signedUrl(const ZOVKPopupUrlParams& urlParams, const std::string& signature);

}  // namespace zovk
