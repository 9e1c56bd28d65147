#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include <webkit/webkit.h>

#include "webhost/GObjectPtr.h"

namespace zovk {

/// What the game wants of a web view beyond the safe defaults. Bouncing and insets have no
/// counterpart here.
struct WebViewWishes {
  bool inlineMedia = false;
  bool mobile = false;
  bool scrollIndicator = true;
  bool opaque = true;
};

/// Makes web views that share one store of cookies and caches. Making the first one takes long, so
/// one is kept ready.
class WebViewFactory {
 public:
  /// Stores below `directory`.
  WebViewFactory(const std::string& directory, bool developerTools, std::int64_t pageMemory);

  /// Calls `next` once it is settled whether the rules that keep pages from other files are there.
  void whenReady(std::function<void()> next);
  /// Why no page may be loaded: without those rules none may. Empty when pages may be.
  const std::string& refusal() const { return refusal_; }
  GObjectPtr<WebKitWebView> make(const WebViewWishes& wishes);
  /// Makes the view that the next `make` hands out.
  void prepareSpare();

 private:
  static void onFilterSaved(GObject* store, GAsyncResult* result, gpointer self);
  GObjectPtr<WebKitWebView> newView();
  void keepCookies(const std::string& directory);
  void saveFilter(const std::string& directory);

  bool developerTools_;
  GObjectPtr<WebKitWebContext> context_;
  GObjectPtr<WebKitNetworkSession> session_;
  WebKitUserContentFilter* filter_ = nullptr;
  bool filterSettled_ = false;
  std::string refusal_;
  std::function<void()> ready_;
  GObjectPtr<WebKitWebView> spare_;
};

}  // namespace zovk
