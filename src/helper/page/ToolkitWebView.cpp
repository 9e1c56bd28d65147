#include "helper/page/ToolkitWebView.h"

#include <memory>
#include <utility>

#include "helper/page/PageScripts.h"
#include "helper/page/PageView.h"
#include "helper/page/ScriptValues.h"
#include "protocol/MessageNames.h"

namespace zovk::helper {
namespace {

/// Calls come in bursts, but a page must not pile up calls that a slow game has not seen.
constexpr std::size_t kMostFetchesAhead = 8;

/// A script that runs, and the event that its result goes into.
struct Evaluation {
  HelperMessage answer;
  EventSink events;
};

void sendResult(const Evaluation& evaluation, const ScriptValue& result) {
  HelperMessage message = evaluation.answer;
  if (result.error.empty()) {
    message[member::kValue] = result.value.value_or(nullptr);
  } else {
    message[member::kError] = result.error;
  }
  evaluation.events(message);
}

/// The web engine has no special error for this, and uses this one for nothing else that a page can
/// meet.
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

ToolkitWebView::ToolkitWebView(Id id, GObjectPtr<WebKitWebView> view,
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

ToolkitWebView::~ToolkitWebView() {
  WebKitUserContentManager* manager = webkit_web_view_get_user_content_manager(view_.get());
  g_signal_handlers_disconnect_by_data(view_.get(), this);
  g_signal_handlers_disconnect_by_data(manager, this);
  webkit_user_content_manager_unregister_script_message_handler(manager, kGuardWorld, kGuardWorld);
  progress_(widget(), 1);
  // Left to itself the engine often keeps a thread and descriptors of the connection for good.
  webkit_web_view_terminate_web_process(view_.get());
}

void ToolkitWebView::setBackground(const GdkRGBA& color) {
  if (color.alpha < 1) drawing_.letThrough();
  webkit_web_view_set_background_color(view_.get(), &color);
}

void ToolkitWebView::load(const std::string& url, bool allowed) {
  asked_ = url;
  retried_ = false;
  endHangingProcess();
  loadAsked();
  policies_.allowAhead(allowed ? this->url() : "");
}

// A hanging process would never load the next page. The game need not hear of its end, because it
// asks for the next page.
void ToolkitWebView::endHangingProcess() {
  if (webkit_web_view_get_is_web_process_responsive(view_.get()) == TRUE) return;
  const gpointer heard = reinterpret_cast<gpointer>(onTerminated);
  g_signal_handlers_block_by_func(view_.get(), heard, this);
  webkit_web_view_terminate_web_process(view_.get());
  g_signal_handlers_unblock_by_func(view_.get(), heard, this);
}

void ToolkitWebView::loadAsked() {
  if (!isBeforeStart()) before_ = url();
  loadAddress(asked_);
  next_ = url();
  // Only an empty page starts without a question.
  stage_ = next_.empty() ? Stage::kDeciding : Stage::kAsked;
}

void ToolkitWebView::loadAddress(const std::string& url) {
  g_object_freeze_notify(G_OBJECT(view_.get()));  // what is said here comes first
  webkit_web_view_load_uri(view_.get(), url.c_str());
  events_({{member::kType, event::kWebAddress},
           {member::kView, id_},
           {member::kAsked, url},
           {member::kUrl, this->url()}});
  g_object_thaw_notify(G_OBJECT(view_.get()));
}

void ToolkitWebView::stop() {
  webkit_web_view_stop_loading(view_.get());
}

// Until the new page has come, the engine would reload the one before, or nothing at all.
void ToolkitWebView::reload() {
  if (pageIsMissing()) return loadAsked();
  webkit_web_view_reload(view_.get());
}

bool ToolkitWebView::retry(const std::string& url, const GError& error) {
  if (!isNetworkProcessGone(error) || std::exchange(retried_, true)) return false;
  sendLog(events_, "helper: the network process ended, the page is loaded again");
  if (pageIsMissing()) {
    loadAsked();
  } else {
    loadAddress(url);
  }
  return true;
}

void ToolkitWebView::terminate() {
  webkit_web_view_terminate_web_process(view_.get());
}

void ToolkitWebView::evaluate(Id request, const std::string& script) {
  runAndSend(script, {{member::kType, event::kWebEvaluated}, {member::kId, request}});
}

void ToolkitWebView::runAndSend(const std::string& script, HelperMessage answer) {
  auto evaluation = std::make_unique<Evaluation>(Evaluation{std::move(answer), events_});
  webkit_web_view_evaluate_javascript(view_.get(), script.c_str(), -1, nullptr, nullptr, nullptr,
                                      onEvaluated, evaluation.release());
}

void ToolkitWebView::run(const std::string& script) {
  webkit_web_view_evaluate_javascript(view_.get(), script.c_str(), -1, nullptr, nullptr, nullptr,
                                      nullptr, nullptr);
}

void ToolkitWebView::connectSignals() {
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

// Pages' posts must be measured before the web engine passes them to this process, which would
// block for seconds on a list of millions. So pages get our own handlers.
void ToolkitWebView::addHandlers() {
  WebKitUserContentManager* manager = webkit_web_view_get_user_content_manager(view_.get());
  const std::string signal = std::string("script-message-received::") + kGuardWorld;
  g_signal_connect(manager, signal.c_str(), G_CALLBACK(onMessage), this);
  webkit_user_content_manager_register_script_message_handler(manager, kGuardWorld, kGuardWorld);
  addScript(manager, pageMessageGuardScript(), kGuardWorld);
  addScript(manager, pageMessagesScript(handlers_), nullptr);
}

std::string ToolkitWebView::url() const {
  const char* address = webkit_web_view_get_uri(view_.get());
  return address == nullptr ? "" : address;
}

// The engine names the address that was asked for last, even while an earlier page comes or ends.
void ToolkitWebView::sendLoadEvent(std::string_view type) {
  events_({{member::kType, type},
           {member::kView, id_},
           {member::kUrl, isBeforeStart() ? before_ : url()}});
}

gboolean ToolkitWebView::onDecidePolicy(WebKitWebView*, WebKitPolicyDecision* decision,
                                        WebKitPolicyDecisionType type, gpointer self) {
  return static_cast<ToolkitWebView*>(self)->askGame(decision, type);
}

// The game's reaction to a signal of the page is known in advance: it fetches the page's messages.
gboolean ToolkitWebView::askGame(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type) {
  const bool isEarly = policies_.waiting() < kMostFetchesAhead;
  const std::optional<PolicyBook::Question> asked = policies_.ask(decision, type);
  if (!asked) return FALSE;
  if (stage_ == Stage::kAsked && asked->address == next_) stage_ = Stage::kDeciding;
  const bool fetches = isEarly && !fetchAddress_.empty() && asked->address == fetchAddress_;
  HelperMessage event{{member::kType, event::kWebPolicy},
                      {member::kView, id_},
                      {member::kDecision, asked->number},
                      {member::kUrl, asked->address},
                      {member::kTarget, asked->target}};
  if (fetches) event[member::kFetching] = true;
  events_(event);
  if (fetches) {
    runAndSend(fetchScript_, {{member::kType, event::kWebFetched},
                              {member::kView, id_},
                              {member::kDecision, asked->number}});
  }
  return TRUE;
}

void ToolkitWebView::decide(Id number, bool allow) {
  if (policies_.decide(number, allow)) stop();
}

void ToolkitWebView::fetchAhead(const std::string& address, const std::string& script) {
  fetchAddress_ = address;
  fetchScript_ = script;
}

void ToolkitWebView::onLoadChanged(WebKitWebView*, WebKitLoadEvent event, gpointer self) {
  auto* own = static_cast<ToolkitWebView*>(self);
  if (event == WEBKIT_LOAD_STARTED) {
    own->failed_ = false;
    if (own->stage_ == Stage::kDeciding) own->stage_ = Stage::kStarted;
    own->sendLoadEvent(event::kWebStarted);
  }
  if (event == WEBKIT_LOAD_COMMITTED) {
    expectPicture(own->view());
    own->drawing_.pageCame();
    if (own->stage_ == Stage::kStarted) own->stage_ = Stage::kCommitted;
    own->sendLoadEvent(event::kWebCommitted);
  }
  // The engine also calls a load that failed finished.
  if (event != WEBKIT_LOAD_FINISHED || own->failed_) return;
  own->retried_ = false;
  own->drawing_.pageLoaded();
  own->sendLoadEvent(event::kWebFinished);
}

gboolean ToolkitWebView::onLoadFailed(WebKitWebView*, WebKitLoadEvent event, const char* url,
                                      GError* error, gpointer self) {
  auto* own = static_cast<ToolkitWebView*>(self);
  own->failed_ = true;
  if (own->retry(url, *error)) return TRUE;
  own->events_({{member::kType,
                 event == WEBKIT_LOAD_STARTED ? event::kWebProvisionalFailed : event::kWebFailed},
                {member::kView, own->id_},
                {member::kUrl, url},
                {member::kError, error->message}});
  return TRUE;  // the engine's own error page stays away
}

void ToolkitWebView::onTerminated(WebKitWebView*, WebKitWebProcessTerminationReason reason,
                                  gpointer self) {
  auto* own = static_cast<ToolkitWebView*>(self);
  if (reason == WEBKIT_WEB_PROCESS_CRASHED) own->drawing_.crashed();
  own->events_({{member::kType, event::kWebTerminated}, {member::kView, own->id_}});
}

void ToolkitWebView::onResponsiveness(GObject* view, GParamSpec*, gpointer self) {
  const auto* own = static_cast<ToolkitWebView*>(self);
  const bool responsive =
      webkit_web_view_get_is_web_process_responsive(WEBKIT_WEB_VIEW(view)) == TRUE;
  own->events_({{member::kType, event::kWebResponsive},
                {member::kView, own->id_},
                {member::kResponsive, responsive}});
}

void ToolkitWebView::onUrlChanged(GObject*, GParamSpec*, gpointer self) {
  const auto* own = static_cast<ToolkitWebView*>(self);
  own->events_(
      {{member::kType, event::kWebUrl}, {member::kView, own->id_}, {member::kUrl, own->url()}});
}

void ToolkitWebView::onProgress(GObject*, GParamSpec*, gpointer self) {
  const auto* own = static_cast<ToolkitWebView*>(self);
  WebKitWebView* view = own->view();
  const bool loading = webkit_web_view_is_loading(view) == TRUE;
  own->progress_(own->widget(), loading ? webkit_web_view_get_estimated_load_progress(view) : 1);
}

void ToolkitWebView::onTitleChanged(GObject* view, GParamSpec*, gpointer) {
  // The name that a screen reader gives the page when the keyboard comes to it.
  const char* title = webkit_web_view_get_title(WEBKIT_WEB_VIEW(view));
  gtk_accessible_update_property(GTK_ACCESSIBLE(view), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                 title == nullptr ? "" : title, -1);
}

GtkWidget* ToolkitWebView::onCreate(WebKitWebView*, WebKitNavigationAction* action, gpointer self) {
  const auto* own = static_cast<ToolkitWebView*>(self);
  own->events_({{member::kType, event::kWebWindow},
                {member::kView, own->id_},
                {member::kUrl, addressOf(action)},
                {member::kTarget, word::kNone}});
  return nullptr;
}

void ToolkitWebView::onMessage(WebKitUserContentManager*, JSCValue* value, gpointer self) {
  static_cast<ToolkitWebView*>(self)->receive(readPageMessage(textOfScriptValue(value)));
}

void ToolkitWebView::receive(PageMessage message) {
  if (message.dropped > 0) {
    return lostMessages_.write("helper: a page posts too much, a message was left out",
                               message.dropped);
  }
  if (!message.body.error.empty()) {
    return lostMessages_.write("helper: a page's message was left out: " + message.body.error);
  }
  if (message.handler >= handlers_.size()) return;
  HelperMessage event{{member::kType, event::kWebMessage},
                      {member::kView, id_},
                      {member::kName, handlers_[message.handler]}};
  if (message.body.value) event[member::kBody] = std::move(*message.body.value);
  events_(event);
}

}  // namespace zovk::helper
