#include "helper/page/WebViewFactory.h"

#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "helper/page/PageDrawing.h"
#include "helper/page/PageLimits.h"
#include "helper/page/PageView.h"

namespace zovk::helper {
namespace {

/// A page that is a file may not show, run or embed other files. The page itself, a document that
/// is no frame, stays allowed.
constexpr const char* kFileRules = R"([
  {"trigger": {"url-filter": "^file:", "resource-type":
      ["image", "style-sheet", "script", "font", "raw", "svg-document", "media", "popup"]},
   "action": {"type": "block"}},
  {"trigger": {"url-filter": "^file:", "load-context": ["child-frame"]},
   "action": {"type": "block"}}
])";

constexpr GdkRGBA kClear{0, 0, 0, 0};
constexpr GdkRGBA kWhite{1, 1, 1, 1};

constexpr const char* kHideScrollIndicator = "::-webkit-scrollbar { width: 0 !important; }";

void cancelDownload(WebKitNetworkSession*, WebKitDownload* download) {
  webkit_download_cancel(download);
}

/// The engine would make the file readable for others.
void makePrivate(const std::string& file) {
  const int descriptor =
      ::open(file.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR);
  if (descriptor < 0) return;
  ::fchmod(descriptor, S_IRUSR | S_IWUSR);
  ::close(descriptor);
}

/// Switches off what the web engine allows but popups must not have. The engine itself keeps files
/// from other files and from the web, scripts from opening windows, and `data:` addresses from
/// replacing the page.
GObjectPtr<WebKitSettings> newSettings(const PageTerms& terms, bool opaque) {
  auto settings = GObjectPtr<WebKitSettings>::adopt(webkit_settings_new());
  WebKitSettings* raw = settings.get();
  webkit_settings_set_enable_developer_extras(raw, terms.developerTools);
  webkit_settings_set_enable_write_console_messages_to_stdout(raw, terms.console);
  webkit_settings_set_enable_fullscreen(raw, FALSE);  // it would take over the popup's window
  webkit_settings_set_enable_media_stream(raw, FALSE);
  preparePages(raw, terms.drawing, opaque);
  return settings;
}

/// Sets the usual sign by which sites recognise that their mobile pages are wanted.
void askForMobilePages(WebKitSettings* settings) {
  std::string agent = webkit_settings_get_user_agent(settings);
  const std::size_t browser = agent.find("Safari/");
  if (browser == std::string::npos || agent.find("Mobile ") != std::string::npos) return;
  agent.insert(browser, "Mobile ");
  webkit_settings_set_user_agent(settings, agent.c_str());
}

void hideScrollIndicator(WebKitWebView* view) {
  WebKitUserStyleSheet* sheet =
      webkit_user_style_sheet_new(kHideScrollIndicator, WEBKIT_USER_CONTENT_INJECT_ALL_FRAMES,
                                  WEBKIT_USER_STYLE_LEVEL_USER, nullptr, nullptr);
  webkit_user_content_manager_add_style_sheet(webkit_web_view_get_user_content_manager(view),
                                              sheet);
  webkit_user_style_sheet_unref(sheet);
}

/// The engine keeps a text view inside that translates keys. Unless it is left out of the tab
/// order, the keyboard is caught in it on the way from the page to the buttons.
void keepInnerWidgetsUnfocused(GtkWidget* view) {
  GtkWidget* child = gtk_widget_get_first_child(view);
  for (; child != nullptr; child = gtk_widget_get_next_sibling(child)) {
    gtk_widget_set_can_focus(child, FALSE);
  }
}

void apply(const WebViewWishes& wishes, WebKitWebView* view) {
  WebKitSettings* settings = webkit_web_view_get_settings(view);
  webkit_settings_set_media_playback_allows_inline(settings, wishes.inlineMedia);
  if (wishes.mobile) askForMobilePages(settings);
  if (!wishes.scrollIndicator) hideScrollIndicator(view);
}

}  // namespace

WebViewFactory::WebViewFactory(const PageTerms& terms)
    : terms_(terms),
      context_(newLimitedContext(terms.memory)),
      session_(newLimitedSession(terms.directory)) {
  g_signal_connect(session_.get(), "download-started", G_CALLBACK(cancelDownload), nullptr);
  keepCookies(terms_.directory + "/data");
  saveFilter(terms.directory + "/rules");
}

void WebViewFactory::whenReady(std::function<void()> next) {
  if (filterSettled_) return next();
  ready_ = std::move(next);
}

void WebViewFactory::keepCookies(const std::string& directory) {
  g_mkdir_with_parents(directory.c_str(), S_IRWXU);
  ::chmod(directory.c_str(), S_IRWXU);
  const std::string file = directory + "/cookies.sqlite";
  makePrivate(file);
  webkit_cookie_manager_set_persistent_storage(
      webkit_network_session_get_cookie_manager(session_.get()), file.c_str(),
      WEBKIT_COOKIE_PERSISTENT_STORAGE_SQLITE);
}

void WebViewFactory::saveFilter(const std::string& directory) {
  const auto store = GObjectPtr<WebKitUserContentFilterStore>::adopt(
      webkit_user_content_filter_store_new(directory.c_str()));
  GBytes* rules = g_bytes_new_static(kFileRules, std::char_traits<char>::length(kFileRules));
  webkit_user_content_filter_store_save(store.get(), "files", rules, nullptr, onFilterSaved, this);
  g_bytes_unref(rules);
}

void WebViewFactory::onFilterSaved(GObject* store, GAsyncResult* result, gpointer self) {
  auto* factory = static_cast<WebViewFactory*>(self);
  ErrorOut error;
  factory->filter_ = webkit_user_content_filter_store_save_finish(
      WEBKIT_USER_CONTENT_FILTER_STORE(store), result, error);
  if (factory->filter_ == nullptr) {
    factory->refusal_ = std::string("The rules for pages cannot be stored: ") + error.message();
  }
  factory->filterSettled_ = true;
  if (const auto next = std::exchange(factory->ready_, nullptr)) next();
}

GObjectPtr<WebKitWebView> WebViewFactory::newView(bool opaque) {
  const auto manager =
      GObjectPtr<WebKitUserContentManager>::adopt(webkit_user_content_manager_new());
  if (filter_ != nullptr) webkit_user_content_manager_add_filter(manager.get(), filter_);
  const GObjectPtr<WebKitSettings> settings = newSettings(terms_, opaque);
  auto view = GObjectPtr<WebKitWebView>::sink(WEBKIT_WEB_VIEW(
      g_object_new(pageViewType(), "web-context", context_.get(), "network-session", session_.get(),
                   "settings", settings.get(), "user-content-manager", manager.get(), nullptr)));
  keepInnerWidgetsUnfocused(GTK_WIDGET(view.get()));
  return view;
}

void WebViewFactory::prepareSpare(const Frame& size) {
  if (spare_.isThere()) return;
  GObjectPtr<WebKitWebView> view = newView(false);  // what most pages are
  webkit_web_view_set_background_color(view.get(), &kClear);
  // A script starts the web process and, unlike a page, leaves no trace in the view.
  webkit_web_view_evaluate_javascript(view.get(), "0", -1, nullptr, nullptr, nullptr, nullptr,
                                      nullptr);
  spare_.put(std::move(view), size);
}

GObjectPtr<WebKitWebView> WebViewFactory::make(const WebViewWishes& wishes) {
  const bool isOther = wishes.opaque && terms_.drawing == Drawing::kSoftware;
  GObjectPtr<WebKitWebView> view = isOther ? GObjectPtr<WebKitWebView>() : spare_.take();
  if (!view) view = newView(wishes.opaque);
  webkit_web_view_set_background_color(view.get(), wishes.opaque ? &kWhite : &kClear);
  apply(wishes, view.get());
  return view;
}

}  // namespace zovk::helper
