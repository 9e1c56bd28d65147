#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include <webkit/webkit.h>

#include "helper/Drawing.h"
#include "helper/GObjectPtr.h"
#include "helper/page/SpareView.h"

namespace zovk::helper {

/// The game's settings of a web view besides the safe defaults. Bouncing and insets have no
/// counterpart here.
struct WebViewWishes {
  bool inlineMedia = false;
  bool mobile = false;
  bool scrollIndicator = true;
  bool opaque = true;
};

/// The settings that all pages share.
struct PageTerms {
  std::string directory;  ///< The directory for their stored data.
  bool developerTools = false;
  std::int64_t memory = 0;  ///< In megabytes.
  Drawing drawing = Drawing::kSoftware;
  bool console = false;  ///< The pages' console goes to standard output.
};

/// Makes web views that share one store of cookies and caches. Making the first one takes long, so
/// one is kept ready.
class WebViewFactory {
 public:
  explicit WebViewFactory(const PageTerms& terms);
  WebViewFactory(const WebViewFactory&) = delete;
  WebViewFactory& operator=(const WebViewFactory&) = delete;

  /// Calls `next` once it is known whether the rules that keep pages from other files are stored.
  void whenReady(std::function<void()> next);
  /// Returns why no page may be loaded, which is the case without those rules; empty if pages may
  /// be loaded.
  const std::string& refusal() const { return refusal_; }
  GObjectPtr<WebKitWebView> make(const WebViewWishes& wishes);
  /// Makes the view that the next `make` returns, drawn for that size.
  void prepareSpare(const Frame& size);
  /// Returns the window of spare web views, which is never shown.
  GtkWidget* spareWindow() const { return spare_.window(); }

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
  SpareView spare_;
};

}  // namespace zovk::helper
