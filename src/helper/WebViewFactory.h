#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include <webkit/webkit.h>

#include "helper/Drawing.h"
#include "helper/GObjectPtr.h"

namespace zovk::helper {

/// What the game wants of a web view beyond the safe defaults. Bouncing and insets have no
/// counterpart here.
struct WebViewWishes {
  bool inlineMedia = false;
  bool mobile = false;
  bool scrollIndicator = true;
  bool opaque = true;
};

/// What all pages have in common.
struct PageTerms {
  std::string directory;  ///< Below it they store.
  bool developerTools = false;
  std::int64_t memory = 0;  ///< In megabytes.
  Drawing drawing = Drawing::kSoftware;
  bool console = false;  ///< What pages tell their console goes to standard output.
};

/// Makes web views that share one store of cookies and caches. Making the first one takes long, so
/// one is kept ready.
class WebViewFactory {
 public:
  explicit WebViewFactory(const PageTerms& terms);

  /// Calls `next` once it is settled whether the rules that keep pages from other files are there.
  void whenReady(std::function<void()> next);
  /// Why no page may be loaded: without those rules none may. Empty when pages may be.
  const std::string& refusal() const { return refusal_; }
  GObjectPtr<WebKitWebView> make(const WebViewWishes& wishes);
  /// Makes the view that the next `make` hands out.
  void prepareSpare();
  /// Gives it up, with its process.
  void dropSpare();

 private:
  static void onFilterSaved(GObject* store, GAsyncResult* result, gpointer self);
  GObjectPtr<WebKitWebView> newView(bool opaque);
  void keepCookies(const std::string& directory);
  void saveFilter(const std::string& directory);

  const PageTerms terms_;
  GObjectPtr<WebKitWebContext> context_;
  GObjectPtr<WebKitNetworkSession> session_;
  WebKitUserContentFilter* filter_ = nullptr;
  bool filterSettled_ = false;
  std::string refusal_;
  std::function<void()> ready_;
  GObjectPtr<WebKitWebView> spare_;
};

}  // namespace zovk::helper
