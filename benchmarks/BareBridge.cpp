// The floors for the page bridge: one process with GTK and a web view in a window, whose page and
// program call each other as fast as they can, with nothing of ours between.
//   signal    the page navigates a frame, the program cancels that and answers by a script
//   overtaken the same with two signals in a row, as calls that are in flight together give them
//   fetch     the same as signal with what the bridge's page needs: the program first fetches the
//   call by
//             another script, and the page takes the answer on a turn of its own
//   message   the page posts a message and waits for the reply
//   evaluate  the program runs a script, which posts a message
// Prints how many milliseconds the round trips took, and by how many bytes each let the program
// grow.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include <gtk/gtk.h>
#include <unistd.h>
#include <webkit/webkit.h>

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kWarmCalls = 1000;
constexpr int kHelpersPriority = 10;  // what the popups' helper takes, so that both wait alike
constexpr const char* kPage = R"(<!doctype html><title>Bare</title><body><script>
const frame = document.createElement('iframe');
frame.style.display = 'none';
document.body.append(frame);
const bare = window.webkit.messageHandlers.bare;
const loops = {
  signal: () => { frame.src = 'https://__signal__'; },
  message: async () => { for (;;) await window.webkit.messageHandlers.replied.postMessage('call'); },
  overtaken: () => { loops.signal(); setTimeout(loops.signal, 0); },
  fetch: (answer) => setTimeout(() => { frame.src = 'https://__signal__'; }, 0),
  evaluate: () => bare.postMessage('call')
};
</script>)";

double privateBytes() {
  std::ifstream file("/proc/self/smaps_rollup");
  std::string line;
  double kilobytes = 0;
  while (std::getline(file, line)) {
    double value = 0;
    if (std::sscanf(line.c_str(), "Private_%*[A-Za-z]: %lf kB", &value) == 1) kilobytes += value;
  }
  return kilobytes * 1024;
}

struct Loop {
  std::string kind;
  int calls = 0;
  int seen = 0;
  Clock::time_point start;
  double bytesAtStart = 0;
  GMainLoop* loop = g_main_loop_new(nullptr, FALSE);
  WebKitWebView* view = nullptr;

  void answer() const { run("loops." + kind + "();"); }
  void run(const std::string& script) const {
    webkit_web_view_evaluate_javascript(view, script.c_str(), -1, nullptr, nullptr, nullptr,
                                        nullptr, nullptr);
  }
  /// Returns whether the page has signalled as often as it does for one answer.
  bool endsTurn() const { return kind != "overtaken" || seen % 2 == 0; }
  /// Returns false if enough were seen.
  bool count() {
    ++seen;
    if (seen == kWarmCalls) {
      bytesAtStart = privateBytes();
      start = Clock::now();
    }
    if (seen < kWarmCalls + calls) return true;
    const std::chrono::duration<double, std::milli> took = Clock::now() - start;
    std::printf("%.3f %.0f\n", took.count(), (privateBytes() - bytesAtStart) / calls);
    std::fflush(stdout);
    g_main_loop_quit(loop);
    return false;
  }
};

void onFetched(GObject* view, GAsyncResult* result, gpointer data) {
  JSCValue* const value =
      webkit_web_view_evaluate_javascript_finish(WEBKIT_WEB_VIEW(view), result, nullptr);
  if (value == nullptr) std::exit(1);
  char* const call = jsc_value_to_string(value);
  auto* const loop = static_cast<Loop*>(data);
  if (loop->count()) loop->run("loops.fetch('" + std::string(call) + "');");
  g_free(call);
  g_object_unref(value);
}

gboolean onDecidePolicy(WebKitWebView* /*view*/, WebKitPolicyDecision* decision,
                        WebKitPolicyDecisionType type, gpointer data) {
  if (type != WEBKIT_POLICY_DECISION_TYPE_NAVIGATION_ACTION) return FALSE;
  WebKitNavigationAction* const action = webkit_navigation_policy_decision_get_navigation_action(
      WEBKIT_NAVIGATION_POLICY_DECISION(decision));
  const char* const url = webkit_uri_request_get_uri(webkit_navigation_action_get_request(action));
  if (!g_str_has_prefix(url, "https://__signal__")) return FALSE;
  webkit_policy_decision_ignore(decision);
  auto* const loop = static_cast<Loop*>(data);
  if (loop->kind == "fetch") {
    webkit_web_view_evaluate_javascript(loop->view, "'call'", -1, nullptr, nullptr, nullptr,
                                        onFetched, loop);
  } else if (loop->count() && loop->endsTurn()) {
    loop->answer();
  }
  return TRUE;
}

void onMessage(WebKitUserContentManager* /*manager*/, JSCValue* /*value*/, gpointer data) {
  auto* const loop = static_cast<Loop*>(data);
  if (loop->count()) loop->answer();
}

gboolean onReplied(WebKitUserContentManager* /*manager*/, JSCValue* value,
                   WebKitScriptMessageReply* reply, gpointer data) {
  if (static_cast<Loop*>(data)->count()) webkit_script_message_reply_return_value(reply, value);
  return TRUE;
}

void onLoadChanged(WebKitWebView* /*view*/, WebKitLoadEvent event, gpointer data) {
  if (event == WEBKIT_LOAD_FINISHED) static_cast<Loop*>(data)->answer();
}

void listen(Loop& loop) {
  WebKitUserContentManager* const manager = webkit_web_view_get_user_content_manager(loop.view);
  g_signal_connect(loop.view, "decide-policy", G_CALLBACK(onDecidePolicy), &loop);
  g_signal_connect(loop.view, "load-changed", G_CALLBACK(onLoadChanged), &loop);
  g_signal_connect(manager, "script-message-received::bare", G_CALLBACK(onMessage), &loop);
  g_signal_connect(manager, "script-message-with-reply-received::replied", G_CALLBACK(onReplied),
                   &loop);
  webkit_user_content_manager_register_script_message_handler(manager, "bare", nullptr);
  webkit_user_content_manager_register_script_message_handler_with_reply(manager, "replied",
                                                                         nullptr);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3 || nice(kHelpersPriority) == -1) return 2;
  gtk_init();
  Loop loop;
  loop.kind = argv[1];
  loop.calls = std::atoi(argv[2]);
  GtkWidget* const window = gtk_window_new();
  loop.view = WEBKIT_WEB_VIEW(webkit_web_view_new());
  listen(loop);
  gtk_window_set_child(GTK_WINDOW(window), GTK_WIDGET(loop.view));
  gtk_window_fullscreen(GTK_WINDOW(window));
  gtk_window_present(GTK_WINDOW(window));
  webkit_web_view_load_html(loop.view, kPage, nullptr);
  g_main_loop_run(loop.loop);
  g_main_loop_unref(loop.loop);
  return 0;
}
