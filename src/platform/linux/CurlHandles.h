#pragma once

#include <memory>

#include <curl/curl.h>

namespace zovk {

struct CurlDeleter {
  void operator()(CURLU* url) const { curl_url_cleanup(url); }
  void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};

using CurlUrl = std::unique_ptr<CURLU, CurlDeleter>;
using CurlList = std::unique_ptr<curl_slist, CurlDeleter>;

/// Readies the library for the process. It is never cleaned up: the game may use it too.
inline void initialiseCurl() {
  static const CURLcode code = curl_global_init(CURL_GLOBAL_DEFAULT);
  static_cast<void>(code);  // without it every handle fails to be made
}

/// Handles whose C type is void, so that they need types of their own to be told apart.
class CurlEasy {
 public:
  CurlEasy() : handle_(curl_easy_init()) {}
  ~CurlEasy() { curl_easy_cleanup(handle_); }
  CurlEasy(const CurlEasy&) = delete;
  CurlEasy& operator=(const CurlEasy&) = delete;
  CURL* get() const { return handle_; }

 private:
  CURL* handle_;
};

class CurlMulti {
 public:
  CurlMulti() {
    initialiseCurl();
    handle_ = curl_multi_init();
  }
  ~CurlMulti() { curl_multi_cleanup(handle_); }
  CurlMulti(const CurlMulti&) = delete;
  CurlMulti& operator=(const CurlMulti&) = delete;
  CURLM* get() const { return handle_; }

 private:
  CURLM* handle_ = nullptr;
};

}  // namespace zovk
