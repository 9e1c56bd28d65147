#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <webkit/webkit.h>

#include "helper/Events.h"
#include "helper/GObjectPtr.h"
#include "helper/page/PageDrawing.h"
#include "helper/page/PageLog.h"
#include "helper/page/PageMessages.h"
#include "helper/page/PolicyBook.h"

namespace zovk::helper {

/// One web view: carries out the game's commands and sends the page's events.
class ToolkitWebView {
 public:
  /// Receives how much of its page a view has loaded; 1 is all.
  using Progress = std::function<void(GtkWidget* view, double loaded)>;

  /// For `refusal` see PolicyBook.
  ToolkitWebView(Id id, GObjectPtr<WebKitWebView> view, const std::vector<std::string>& handlers,
                 EventSink events, Progress progress, std::string refusal, Drawing drawing);
  ~ToolkitWebView();
  ToolkitWebView(const ToolkitWebView&) = delete;
  ToolkitWebView& operator=(const ToolkitWebView&) = delete;

  WebKitWebView* view() const { return view_.get(); }
  GtkWidget* widget() const { return GTK_WIDGET(view_.get()); }
  /// Sets the ground. Through a colour that is not opaque, the things behind the page are seen.
  void setBackground(const GdkRGBA& color);
  /// Loads an address. If the game allowed the navigation in advance, it does not wait for the
  /// game's answer.
  void load(const std::string& url, bool allowed);
  void stop();
  void reload();
  void terminate();
  void evaluate(Id request, const std::string& script);
  /// Runs a script without reporting its result.
  void run(const std::string& script);
  void decide(Id number, bool allow);
  /// Runs `script` as soon as a page navigates to exactly that address; an empty one ends that.
  void fetchAhead(const std::string& address, const std::string& script);

 private:
  /// Runs a script and sends `answer` with its value or error.
  void runAndSend(const std::string& script, HelperMessage answer);
  static gboolean onDecidePolicy(WebKitWebView* view, WebKitPolicyDecision* decision,
                                 WebKitPolicyDecisionType type, gpointer self);
  static void onLoadChanged(WebKitWebView* view, WebKitLoadEvent event, gpointer self);
  static gboolean onLoadFailed(WebKitWebView* view, WebKitLoadEvent event, const char* url,
                               GError* error, gpointer self);
  static void onTerminated(WebKitWebView* view, WebKitWebProcessTerminationReason reason,
                           gpointer self);
  static void onResponsiveness(GObject* view, GParamSpec* property, gpointer self);
  static void onUrlChanged(GObject* view, GParamSpec* property, gpointer self);
  static void onProgress(GObject* view, GParamSpec* property, gpointer self);
  static void onTitleChanged(GObject* view, GParamSpec* property, gpointer self);
  static GtkWidget* onCreate(WebKitWebView* view, WebKitNavigationAction* action, gpointer self);
  static void onMessage(WebKitUserContentManager* manager, JSCValue* value, gpointer self);
  void connectSignals();
  void addHandlers();
  void receive(PageMessage message);
  void sendLoadEvent(std::string_view type);
  void endHangingProcess();
  gboolean askGame(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type);
  void loadAsked();
  void loadAddress(const std::string& url);
  bool retry(const std::string& url, const GError& error);
  std::string url() const;

  Id id_;
  GObjectPtr<WebKitWebView> view_;
  PageDrawing drawing_;
  EventSink events_;
  PolicyBook policies_;
  Progress progress_;
  PageLog lostMessages_;
  const std::vector<std::string> handlers_;
  /// The progress of the game's last load.
  enum class Stage { kNone, kAsked, kDeciding, kStarted, kCommitted };
  bool isBeforeStart() const { return stage_ == Stage::kAsked || stage_ == Stage::kDeciding; }
  bool pageIsMissing() const { return isBeforeStart() || stage_ == Stage::kStarted; }
  std::string asked_;
  std::string next_;    // as the engine writes that address
  std::string before_;  // the address whose events may come until that load starts
  std::string fetchAddress_;
  std::string fetchScript_;
  Stage stage_ = Stage::kNone;
  bool failed_ = false;
  bool retried_ = false;  // since a page last came whole, or was asked for
};

}  // namespace zovk::helper
