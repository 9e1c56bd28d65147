#include "webhost/WebViewHost.h"

#include <memory>
#include <utility>

#include "webhost/PageScripts.h"
#include "webhost/ScriptValues.h"

namespace zovk {
namespace {

struct Evaluation {
  Id request;
  EventSink events;
};

void sendResult(const Evaluation& evaluation, const ScriptValue& result) {
  WebHostMessage message{{"type", "web.evaluated"}, {"id", evaluation.request}};
  if (result.error.empty()) {
    message["value"] = result.value.value_or(nullptr);
  } else {
    message["error"] = result.error;
  }
  evaluation.events(message);
}

/// The engine has no error of its own for it, and this one for nothing else that a page can meet.
bool isNetworkProcessGone(const GError& error) {
  constexpr int kInternalError = 300;
  return error.code == kInternalError &&
         g_strcmp0(g_quark_to_string(error.domain), "WebKitErrorDomain") == 0;
}

void onEvaluated(GObject* view, GAsyncResult* result, gpointer data) {
  const std::unique_ptr<Evaluation> evaluation(static_cast<Evaluation*>(data));
  ErrorOut error;
  const auto value = GObjectPtr<JSCValue>::adopt(
      webkit_web_view_evaluate_javascript_finish(WEBKIT_WEB_VIEW(view), result, error));
  sendResult(*evaluation,
             value ? readScriptValue(value.get()) : ScriptValue{std::nullopt, error.message()});
}

/// Runs in all frames, before their own scripts; in the pages' world when none is named.
void addScript(WebKitUserContentManager* manager, const std::string& text, const char* world) {
  constexpr auto kFrames = WEBKIT_USER_CONTENT_INJECT_ALL_FRAMES;
  constexpr auto kTime = WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START;
  WebKitUserScript* script =
      world == nullptr
          ? webkit_user_script_new(text.c_str(), kFrames, kTime, nullptr, nullptr)
          : webkit_user_script_new_for_world(text.c_str(), kFrames, kTime, world, nullptr, nullptr);
  webkit_user_content_manager_add_script(manager, script);
  webkit_user_script_unref(script);
}

}  // namespace

WebViewHost::WebViewHost(Id id, GObjectPtr<WebKitWebView> view,
                         const std::vector<std::string>& handlers, EventSink events,
                         Progress progress, std::string refusal, Drawing drawing)
    : id_(id),
      view_(std::move(view)),
      drawing_(view_.get(), drawing),
      events_(events),
      policies_(id, events, std::move(refusal)),
      progress_(std::move(progress)),
      lostMessages_(std::move(events)),
      handlers_(handlers) {
  connectSignals();
  if (!handlers_.empty()) addHandlers();
}

WebViewHost::~WebViewHost() {
  WebKitUserContentManager* manager = webkit_web_view_get_user_content_manager(view_.get());
  g_signal_handlers_disconnect_by_data(view_.get(), this);
  g_signal_handlers_disconnect_by_data(manager, this);
  webkit_user_content_manager_unregister_script_message_handler(manager, kGuardWorld, kGuardWorld);
  progress_(widget(), 1);
  // Left to itself the engine often keeps a thread and descriptors of the connection for good.
  webkit_web_view_terminate_web_process(view_.get());
}

void WebViewHost::setBackground(const GdkRGBA& color) {
  if (color.alpha < 1) drawing_.letThrough();
  webkit_web_view_set_background_color(view_.get(), &color);
}

void WebViewHost::load(const std::string& url) {
  asked_ = url;
  retried_ = false;
  endHangingProcess();
  loadAsked();
}

// It would never get to the next page. The game need not hear of its end: it asks for that page.
void WebViewHost::endHangingProcess() {
  if (webkit_web_view_get_is_web_process_responsive(view_.get()) == TRUE) return;
  const gpointer heard = reinterpret_cast<gpointer>(onTerminated);
  g_signal_handlers_block_by_func(view_.get(), heard, this);
  webkit_web_view_terminate_web_process(view_.get());
  g_signal_handlers_unblock_by_func(view_.get(), heard, this);
}

void WebViewHost::loadAsked() {
  stage_ = Stage::kAsked;
  loadAddress(asked_);
}

void WebViewHost::loadAddress(const std::string& url) {
  g_object_freeze_notify(G_OBJECT(view_.get()));  // what is said here comes first
  webkit_web_view_load_uri(view_.get(), url.c_str());
  events_({{"type", "web.address"}, {"view", id_}, {"asked", url}, {"url", this->url()}});
  g_object_thaw_notify(G_OBJECT(view_.get()));
}

void WebViewHost::stop() {
  webkit_web_view_stop_loading(view_.get());
}

// The engine reloads the page before, or nothing at all, as long as the new one is not there.
void WebViewHost::reload() {
  pageIsMissing() ? loadAsked() : webkit_web_view_reload(view_.get());
}

bool WebViewHost::retry(const std::string& url, const GError& error) {
  if (!isNetworkProcessGone(error) || std::exchange(retried_, true)) return false;
  sendLog(events_, "web host: the network process ended, the page is loaded again");
  pageIsMissing() ? loadAsked() : loadAddress(url);
  return true;
}

void WebViewHost::terminate() {
  webkit_web_view_terminate_web_process(view_.get());
}

void WebViewHost::evaluate(Id request, const std::string& script) {
  auto evaluation = std::make_unique<Evaluation>(Evaluation{request, events_});
  webkit_web_view_evaluate_javascript(view_.get(), script.c_str(), -1, nullptr, nullptr, nullptr,
                                      onEvaluated, evaluation.release());
}

void WebViewHost::run(const std::string& script) {
  webkit_web_view_evaluate_javascript(view_.get(), script.c_str(), -1, nullptr, nullptr, nullptr,
                                      nullptr, nullptr);
}

void WebViewHost::connectSignals() {
  g_signal_connect(view_.get(), "decide-policy", G_CALLBACK(onDecidePolicy), this);
  g_signal_connect(view_.get(), "load-changed", G_CALLBACK(onLoadChanged), this);
  g_signal_connect(view_.get(), "load-failed", G_CALLBACK(onLoadFailed), this);
  g_signal_connect(view_.get(), "web-process-terminated", G_CALLBACK(onTerminated), this);
  g_signal_connect(view_.get(), "notify::is-web-process-responsive", G_CALLBACK(onResponsiveness),
                   this);
  g_signal_connect(view_.get(), "notify::uri", G_CALLBACK(onUrlChanged), this);
  g_signal_connect(view_.get(), "notify::title", G_CALLBACK(onTitleChanged), this);
  for (const char* loading : {"notify::is-loading", "notify::estimated-load-progress"}) {
    g_signal_connect(view_.get(), loading, G_CALLBACK(onProgress), this);
  }
  g_signal_connect(view_.get(), "create", G_CALLBACK(onCreate), this);
}

// What pages post must be measured before the engine hands it to this process, which would stand
// still for seconds over a list of millions. So pages are given handlers of ours.
void WebViewHost::addHandlers() {
  WebKitUserContentManager* manager = webkit_web_view_get_user_content_manager(view_.get());
  const std::string signal = std::string("script-message-received::") + kGuardWorld;
  g_signal_connect(manager, signal.c_str(), G_CALLBACK(onMessage), this);
  webkit_user_content_manager_register_script_message_handler(manager, kGuardWorld, kGuardWorld);
  addScript(manager, pageMessageGuardScript(), kGuardWorld);
  addScript(manager, pageMessagesScript(handlers_), nullptr);
}

std::string WebViewHost::url() const {
  const char* address = webkit_web_view_get_uri(view_.get());
  return address == nullptr ? "" : address;
}

void WebViewHost::sendLoadEvent(const char* type) {
  events_({{"type", type}, {"view", id_}, {"url", url()}});
}

gboolean WebViewHost::onDecidePolicy(WebKitWebView*, WebKitPolicyDecision* decision,
                                     WebKitPolicyDecisionType type, gpointer self) {
  return static_cast<WebViewHost*>(self)->policies_.ask(decision, type);
}

void WebViewHost::onLoadChanged(WebKitWebView*, WebKitLoadEvent event, gpointer self) {
  auto* host = static_cast<WebViewHost*>(self);
  if (event == WEBKIT_LOAD_STARTED) {
    host->failed_ = false;
    if (host->stage_ == Stage::kAsked) host->stage_ = Stage::kStarted;
    host->sendLoadEvent("web.started");
  }
  if (event == WEBKIT_LOAD_COMMITTED) {
    host->drawing_.pageCame();
    // What was still under way when the game asked for another page may come after that.
    if (host->stage_ == Stage::kStarted) host->stage_ = Stage::kCommitted;
    host->sendLoadEvent("web.committed");
  }
  // The engine also calls a load that failed finished.
  if (event != WEBKIT_LOAD_FINISHED || host->failed_) return;
  host->retried_ = false;
  host->sendLoadEvent("web.finished");
}

gboolean WebViewHost::onLoadFailed(WebKitWebView*, WebKitLoadEvent event, const char* url,
                                   GError* error, gpointer self) {
  auto* host = static_cast<WebViewHost*>(self);
  host->failed_ = true;
  if (host->retry(url, *error)) return TRUE;
  host->events_({{"type", event == WEBKIT_LOAD_STARTED ? "web.provisionalFailed" : "web.failed"},
                 {"view", host->id_},
                 {"url", url},
                 {"error", error->message}});
  return TRUE;  // the engine's own error page stays away
}

void WebViewHost::onTerminated(WebKitWebView*, WebKitWebProcessTerminationReason reason,
                               gpointer self) {
  auto* host = static_cast<WebViewHost*>(self);
  if (reason == WEBKIT_WEB_PROCESS_CRASHED) host->drawing_.crashed();
  host->events_({{"type", "web.terminated"}, {"view", host->id_}});
}

void WebViewHost::onResponsiveness(GObject* view, GParamSpec*, gpointer self) {
  const auto* host = static_cast<WebViewHost*>(self);
  const bool responsive =
      webkit_web_view_get_is_web_process_responsive(WEBKIT_WEB_VIEW(view)) == TRUE;
  host->events_({{"type", "web.responsive"}, {"view", host->id_}, {"responsive", responsive}});
}

void WebViewHost::onUrlChanged(GObject*, GParamSpec*, gpointer self) {
  static_cast<WebViewHost*>(self)->sendLoadEvent("web.url");
}

void WebViewHost::onProgress(GObject*, GParamSpec*, gpointer self) {
  const auto* host = static_cast<WebViewHost*>(self);
  WebKitWebView* view = host->view();
  const bool loading = webkit_web_view_is_loading(view) == TRUE;
  host->progress_(host->widget(), loading ? webkit_web_view_get_estimated_load_progress(view) : 1);
}

void WebViewHost::onTitleChanged(GObject* view, GParamSpec*, gpointer) {
  // What a screen reader calls the page when the keyboard comes to it.
  const char* title = webkit_web_view_get_title(WEBKIT_WEB_VIEW(view));
  gtk_accessible_update_property(GTK_ACCESSIBLE(view), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                 title == nullptr ? "" : title, -1);
}

GtkWidget* WebViewHost::onCreate(WebKitWebView*, WebKitNavigationAction* action, gpointer self) {
  const auto* host = static_cast<WebViewHost*>(self);
  host->events_({{"type", "web.window"},
                 {"view", host->id_},
                 {"url", addressOf(action)},
                 {"target", "none"}});
  return nullptr;
}

void WebViewHost::onMessage(WebKitUserContentManager*, JSCValue* value, gpointer self) {
  static_cast<WebViewHost*>(self)->receive(readPageMessage(textOfScriptValue(value)));
}

void WebViewHost::receive(PageMessage message) {
  if (message.dropped > 0) {
    return lostMessages_.write("web host: a page posts too much, a message was left out",
                               message.dropped);
  }
  if (!message.body.error.empty()) {
    return lostMessages_.write("web host: a page's message was left out: " + message.body.error);
  }
  if (message.handler >= handlers_.size()) return;
  WebHostMessage event{
      {"type", "web.message"}, {"view", id_}, {"name", handlers_[message.handler]}};
  if (message.body.value) event["body"] = std::move(*message.body.value);
  events_(event);
}

}  // namespace zovk
