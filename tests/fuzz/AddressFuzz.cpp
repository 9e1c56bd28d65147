// Addresses that documents, services and pages give, and the parameters of requests to them: what
// goes out is signed over just what goes out. The sections of an input are an address, an action
// path, the game's identifier, a text of the body, and any text.
#include <memory>

#include <curl/curl.h>

#include "fuzz/Fuzz.h"
#include "network/ZOVKPopupNetwork.h"
#include "support/Utf8.h"
#include "text/JsonNumbers.h"
#include "text/UrlText.h"
#include "text/WebAddress.h"
#include "text/ZOVKPopupCommonTool.h"

namespace zovk {
namespace {

constexpr const char* kGameKey = "s3cret-key";

/// Keeps the request that is sent. Tasks live as long as the process, so they are all one.
class Session final : public UrlSession {
 public:
  std::shared_ptr<UrlTask> dataTask(UrlRequest request,
                                    std::function<void(const DataResult&)>) override {
    sent = std::move(request);
    return task();
  }
  std::shared_ptr<UrlTask> downloadTask(std::string,
                                        std::function<void(const DownloadResult&)>) override {
    return task();
  }
  std::optional<UrlRequest> sent;

 private:
  class Task final : public UrlTask {
   public:
    void resume() override {}
    void cancel() override {}
  };
  static std::shared_ptr<UrlTask> task() {
    static const auto one = std::make_shared<Task>();
    return one;
  }
};

/// A part of an address as the session's library sends it.
std::string partOf(CURLU* url, CURLUPart what) {
  char* text = nullptr;
  if (curl_url_get(url, what, &text, 0) != CURLUE_OK) return {};
  const std::string part = text;
  curl_free(text);
  return part;
}

/// The path without its percent-encoding, as a service sees it. No path is sent as "/".
std::string decoded(const std::string& path) {
  int length = 0;
  char* const text =
      curl_easy_unescape(nullptr, path.data(), static_cast<int>(path.size()), &length);
  const std::string result(text, static_cast<std::size_t>(length));
  curl_free(text);
  return result == "/" ? "" : result;
}

/// Returns whether a service finds the signature of a request right.
void expectSigned(const UrlRequest& request, const ZOVKPopupUrlParams& params,
                  std::string_view input) {
  const auto address = readWebAddress(request.url);
  if (!address) return;  // the session does not send it
  const auto again = readWebAddress(address->text);
  if (!again || again->text != address->text) fail("an address with two readings", input);
  const std::unique_ptr<CURLU, decltype(&curl_url_cleanup)> url(curl_url(), &curl_url_cleanup);
  if (curl_url_set(url.get(), CURLUPART_URL, address->text.c_str(), CURLU_PATH_AS_IS) !=
      CURLUE_OK) {
    return;
  }
  const std::string query = partOf(url.get(), CURLUPART_QUERY);
  const std::string common = commonParameterText(params);
  const std::size_t begin = query.rfind(common);
  const std::size_t end = query.rfind("&sig=");
  if (begin == std::string::npos || end == std::string::npos) return;  // in a fragment, say
  const std::string path =
      params.actionPath.empty() ? decoded(partOf(url.get(), CURLUPART_PATH)) : params.actionPath;
  const std::string rest =
      "?" + query.substr(begin, end - begin) + request.body.value_or("") + kGameKey;
  const std::string sig = query.substr(end + 5);
  const bool fits = sig == ZOVKPopupCommonTool::getTextMD5(path + rest) ||
                    (path.empty() && sig == ZOVKPopupCommonTool::getTextMD5("/" + rest));
  if (!fits) fail("a signature over something else than what is sent", input);
}

void request(const std::vector<std::string>& sections, std::string_view input) {
  ZOVKPopupUrlParams params;
  params.urlStr = sections[0];
  params.actionPath = sections[1];
  params.gameID = sections[2];
  params.gameKey = kGameKey;
  params.installID = "6F9619FF-8B86-D011-B42D-00CF4FC964FF";
  params.os = 2;
  params.version = "1.0.0";
  params.postInfo = boost::json::object{{"text", sections[3]}};
  Session session;
  const auto network = std::make_shared<ZOVKPopupNetwork>(session);
  int heard = 0;
  network->startRequest(ZOVKPopupNetwork::kPost, params,
                        [&](bool, const std::optional<std::string>&) { ++heard; });
  if (session.sent && heard > 0) fail("sent, and answered before", input);
  if (!session.sent && heard != 1) fail("neither sent nor answered", input);
  if (session.sent) expectSigned(*session.sent, params, input);
}

void convert(const std::string& text, std::string_view input) {
  if (isUtf8(text) && withoutPercentEncoding(withQueryEncoding(text)) != text) {
    fail("a text that does not survive its encoding", input);
  }
  (void)withPathEncoding(text);
  const UrlParts parts = partsOfUrl(text);
  if (text.find(parts.host) == std::string::npos) fail("a host of nowhere", input);
  const auto parameters = ZOVKPopupCommonTool::urlParamToDictionary(text);
  for (const bool encode : {false, true}) {
    (void)ZOVKPopupCommonTool::dictionaryToUrlParam(parameters, encode);
  }
  const auto value = ZOVKPopupCommonTool::jsonStringToDictionary(text);
  if (value && value->is_object()) {
    (void)ZOVKPopupCommonTool::dictionaryToUrlParam(value->get_object(), true);
    const std::string json = ZOVKPopupCommonTool::dictionaryToJsonString(value->get_object());
    if (json.find_first_of(" \n") != std::string::npos) fail("a blank in what is signed", input);
  }
  if (value && !value->is_structured() && !value->is_null()) {
    (void)intValue(*value);
    (void)doubleValue(*value);
  }
}

}  // namespace

void fuzz(std::string_view input) {
  const auto sections = sectionsOf(input, 5);
  request(sections, input);
  convert(sections[0], input);
  convert(sections[4], input);
}

}  // namespace zovk
