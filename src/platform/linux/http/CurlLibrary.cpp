#include "platform/linux/http/CurlLibrary.h"

#include <stdexcept>

#include <dlfcn.h>

namespace zovk {
namespace {

constexpr const char* kName = "libcurl.so.4";

std::string loaderError() {
  const char* const error = ::dlerror();
  return error != nullptr ? error : "unknown";
}

class Symbols {
 public:
  Symbols() : library_(::dlopen(kName, RTLD_LAZY | RTLD_LOCAL)) {
    if (library_ == nullptr) throw std::runtime_error(loaderError());
  }
  template <typename Function>
  void find(const char* name, Function*& function) const {
    function = reinterpret_cast<Function*>(::dlsym(library_, name));
    if (function == nullptr) throw std::runtime_error(loaderError());
  }

 private:
  void* const library_;
};

CurlLibrary found() {
  CurlLibrary curl;
  const Symbols symbols;
  symbols.find("curl_easy_cleanup", curl.easyCleanup);
  symbols.find("curl_easy_getinfo", curl.easyGetInfo);
  symbols.find("curl_easy_header", curl.easyHeader);
  symbols.find("curl_easy_init", curl.easyInit);
  symbols.find("curl_easy_setopt", curl.easySetOption);
  symbols.find("curl_easy_strerror", curl.easyErrorText);
  symbols.find("curl_global_init", curl.globalInit);
  symbols.find("curl_multi_add_handle", curl.multiAddHandle);
  symbols.find("curl_multi_cleanup", curl.multiCleanup);
  symbols.find("curl_multi_info_read", curl.multiInfoRead);
  symbols.find("curl_multi_init", curl.multiInit);
  symbols.find("curl_multi_perform", curl.multiPerform);
  symbols.find("curl_multi_poll", curl.multiPoll);
  symbols.find("curl_multi_remove_handle", curl.multiRemoveHandle);
  symbols.find("curl_multi_setopt", curl.multiSetOption);
  symbols.find("curl_slist_append", curl.listAppend);
  symbols.find("curl_slist_free_all", curl.listFreeAll);
  symbols.find("curl_url", curl.url);
  symbols.find("curl_url_cleanup", curl.urlCleanup);
  symbols.find("curl_url_set", curl.urlSet);
  symbols.find("curl_url_strerror", curl.urlErrorText);
  return curl;
}

CurlLibrary loaded() {
  try {
    CurlLibrary curl = found();
    const CURLcode code = curl.globalInit(CURL_GLOBAL_DEFAULT);
    if (code != CURLE_OK) throw std::runtime_error(curl.easyErrorText(code));
    return curl;
  } catch (const std::runtime_error& error) {
    CurlLibrary none;
    none.failure = std::string("libcurl cannot be used: ") + error.what();
    return none;
  }
}

}  // namespace

const CurlLibrary& curl() {
  static const CurlLibrary library = loaded();
  return library;
}

}  // namespace zovk
