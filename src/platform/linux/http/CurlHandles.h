#pragma once

#include <memory>

#include "platform/linux/http/CurlLibrary.h"

namespace zovk {

struct CurlDeleter {
  void operator()(CURLU* url) const { curl().urlCleanup(url); }
  void operator()(curl_slist* list) const { curl().listFreeAll(list); }
};

using CurlUrl = std::unique_ptr<CURLU, CurlDeleter>;
using CurlList = std::unique_ptr<curl_slist, CurlDeleter>;

/// Handles whose C type is void; types of their own tell them apart.
class CurlEasy {
 public:
  CurlEasy() : handle_(curl().easyInit()) {}
  ~CurlEasy() { curl().easyCleanup(handle_); }
  CurlEasy(const CurlEasy&) = delete;
  CurlEasy& operator=(const CurlEasy&) = delete;
  CURL* get() const { return handle_; }

 private:
  CURL* handle_;
};

class CurlMulti {
 public:
  CurlMulti() : handle_(curl().multiInit()) {}
  ~CurlMulti() { curl().multiCleanup(handle_); }
  CurlMulti(const CurlMulti&) = delete;
  CurlMulti& operator=(const CurlMulti&) = delete;
  CURLM* get() const { return handle_; }

 private:
  CURLM* handle_;
};

}  // namespace zovk
