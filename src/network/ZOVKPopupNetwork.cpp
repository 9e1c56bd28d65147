#include "network/ZOVKPopupNetwork.h"

#include <deque>
#include <utility>

#include "logging/ZPLogger.h"
#include "text/WebAddress.h"
#include "text/ZOVKPopupCommonTool.h"

namespace zovk {
namespace {

constexpr std::chrono::seconds kRequestTimeout{15};
// About as long as the parameters of a game are.
constexpr std::size_t kUsualParameters = 128;

// Keeps every task that was started, newest first. None is ever removed: a sent task lives as long
// as the process, whoever releases it.
void keepTask(std::shared_ptr<UrlTask> task) {
  static Mutex mutex;
  static auto* const requestTaskArray = new std::deque<std::shared_ptr<UrlTask>>;
  const LockGuard lock(mutex);
  requestTaskArray->push_front(std::move(task));
}

const void* identity(const auto& callback) {
  return callback ? &callback : nullptr;
}

// Returns the path to sign for an endpoint. An address that cannot be read has no path; the session
// reads it in the same way and does not send it.
std::string pathToSign(const ZOVKPopupUrlParams& p) {
  if (!p.actionPath.empty()) return p.actionPath;
  const auto address = readWebAddress(p.urlStr);
  return address ? address->path : "";
}

void appendCommonParameters(std::string& text, const ZOVKPopupUrlParams& p) {
  text.append("game_id=").append(p.gameID).append("&install_id=").append(p.installID);
  text.append("&os=").append(std::to_string(p.os)).append("&version=").append(p.version);
}

}  // namespace

std::string commonParameterText(const ZOVKPopupUrlParams& p) {
  std::string text;
  appendCommonParameters(text, p);
  return text;
}

std::string signatureSource(const ZOVKPopupUrlParams& p, const std::string& bodyText) {
  std::string source = pathToSign(p);
  source.reserve(source.size() + kUsualParameters + bodyText.size() + p.gameKey.size());
  source += '?';
  appendCommonParameters(source, p);
  return source.append(bodyText).append(p.gameKey);
}

std::string signedUrl(const ZOVKPopupUrlParams& p, const std::string& signature) {
  const bool hasQuery = p.actionPath.empty() && p.urlStr.find('?') != std::string::npos;
  std::string url;
  url.reserve(p.urlStr.size() + p.actionPath.size() + kUsualParameters + signature.size());
  url.append(p.urlStr).append(p.actionPath).append(hasQuery ? "&" : "?");
  appendCommonParameters(url, p);
  return url.append("&sig=").append(signature);
}

void ZOVKPopupNetwork::startRequest(std::int32_t type, const ZOVKPopupUrlParams& urlParams,
                                    const RequestComplete& complete) {
  constexpr DebugLog debug{"ZOVKPopupNetwork", "ZOVKPopupNetwork::startRequest"};
  debug(
      "Start request, type:%d, urlStr:%@, postInfo:%@, complete:%p", type, urlParams.urlStr,
      [&] { return urlParams.postInfo ? logText(*urlParams.postInfo) : std::string("(null)"); },
      identity(complete));
  if (urlParams.urlStr.empty()) {
    logError("Url illegal");
    if (complete) return complete(false, std::nullopt);
  } else if (complete) {  // without one, the one of an earlier call stays
    const LockGuard lock(mutex_);
    requestComplete_ = complete;
  }
  const std::string bodyText = ZOVKPopupCommonTool::dictionaryToJsonString(urlParams.postInfo);
  const std::string source = signatureSource(urlParams, bodyText);
  const std::string signature = ZOVKPopupCommonTool::getTextMD5(source);
  debug("sigSource:%@\nsig:%@", source, signature);

  UrlRequest request;
  request.url = signedUrl(urlParams, signature);
  request.timeout = kRequestTimeout;
  if (type == kPost) {
    request.method = "POST";
    if (!urlParams.postInfo || urlParams.postInfo->empty()) {
      logError("postInfo illegal");
    } else if (!bodyText.empty()) {
      request.body = bodyText;
    }
  }
  auto task = session_.dataTask(
      std::move(request),
      [self = shared_from_this()](const DataResult& result) { self->finishRequest(result); });
  keepTask(task);
  task->resume();
}

void ZOVKPopupNetwork::finishRequest(const DataResult& result) {
  constexpr DebugLog debug{"ZOVKPopupNetwork", "ZOVKPopupNetwork::startRequest"};
  if (result.error) {
    logError("Request url:%@, error:%@", result.url, *result.error);
  } else {
    debug("Request url:%@, finished, data length:%d", result.url,
          result.body ? result.body->size() : 0);
  }
  RequestComplete complete;
  {
    const LockGuard lock(mutex_);
    complete = std::exchange(requestComplete_, nullptr);
  }
  if (!complete) return debug("Callback is Null");
  complete(!result.error, result.error ? std::nullopt : result.body);
}

void ZOVKPopupNetwork::startDownload(const std::string& urlStr, const DownloadComplete& complete) {
  constexpr DebugLog debug{"ZOVKPopupNetwork", "ZOVKPopupNetwork::startDownload"};
  debug("Start download, urlStr:%@, complete:%p", urlStr, identity(complete));
  if (urlStr.empty()) {
    debug("Url illegal");
    if (complete) complete(false, std::nullopt);
  }
  if (complete) {
    const LockGuard lock(mutex_);
    downloadComplete_ = complete;
  }
  session_
      .downloadTask(urlStr, [self = shared_from_this()](
                                const DownloadResult& result) { self->finishDownload(result); })
      ->resume();
}

void ZOVKPopupNetwork::finishDownload(const DownloadResult& result) {
  constexpr DebugLog debug{"ZOVKPopupNetwork", "ZOVKPopupNetwork::startDownload"};
  if (result.error) {
    logError("Download from url:%@, error:%@", result.url, *result.error);
  } else {
    debug("Download from url:%@, finished, file path:%@", result.url, result.path);
  }
  DownloadComplete complete;
  {
    const LockGuard lock(mutex_);
    complete = std::exchange(downloadComplete_, nullptr);
  }
  if (!complete) return debug("Callback is Null");
  complete(!result.error, result.error ? std::nullopt : result.path);
}

}  // namespace zovk
