#pragma once

#include <string>

#include <curl/curl.h>

namespace zovk {

/// The functions used of libcurl. The library is not loaded with the game, but by the first
/// request, on the session's thread: with its dependencies it would take most of the time that a
/// game waits when it starts.
struct CurlLibrary {
  std::string failure;  // why it cannot be used; empty if it can. The others are null then.

  decltype(&curl_easy_cleanup) easyCleanup = nullptr;
  decltype(&curl_easy_getinfo) easyGetInfo = nullptr;
  decltype(&curl_easy_header) easyHeader = nullptr;
  decltype(&curl_easy_init) easyInit = nullptr;
  decltype(&curl_easy_setopt) easySetOption = nullptr;
  decltype(&curl_easy_strerror) easyErrorText = nullptr;
  decltype(&curl_global_init) globalInit = nullptr;
  decltype(&curl_multi_add_handle) multiAddHandle = nullptr;
  decltype(&curl_multi_cleanup) multiCleanup = nullptr;
  decltype(&curl_multi_info_read) multiInfoRead = nullptr;
  decltype(&curl_multi_init) multiInit = nullptr;
  decltype(&curl_multi_perform) multiPerform = nullptr;
  decltype(&curl_multi_poll) multiPoll = nullptr;
  decltype(&curl_multi_remove_handle) multiRemoveHandle = nullptr;
  decltype(&curl_multi_setopt) multiSetOption = nullptr;
  decltype(&curl_slist_append) listAppend = nullptr;
  decltype(&curl_slist_free_all) listFreeAll = nullptr;
  decltype(&curl_url) url = nullptr;
  decltype(&curl_url_cleanup) urlCleanup = nullptr;
  decltype(&curl_url_set) urlSet = nullptr;
  decltype(&curl_url_strerror) urlErrorText = nullptr;
};

/// Returns libcurl's functions. The first call loads the library and initialises it for the
/// process; any thread. It stays loaded, because the game may use it too.
const CurlLibrary& curl();

}  // namespace zovk
