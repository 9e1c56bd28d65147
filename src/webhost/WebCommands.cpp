#include "webhost/Commands.h"
#include "webhost/Host.h"

namespace zovk {
namespace {

void createWebView(Host& host, const Arguments& arguments) {
  const Id view = arguments.id("view");
  const std::vector<std::string> handlers = arguments.texts("handlers");
  WebViewWishes wishes;
  wishes.inlineMedia = arguments.flag("inlineMedia");
  wishes.mobile = arguments.flag("mobile");
  wishes.scrollIndicator = arguments.flag("scrollIndicator");
  wishes.opaque = arguments.flag("opaque");
  arguments.flag("bounces");
  arguments.flag("adjustInset");
  host.openWebView(view, wishes, handlers);
}

void load(Host& host, const Arguments& arguments) {
  const std::string url = arguments.text("url");
  if (WebViewHost* view = host.webView(arguments.id("view"))) view->load(url);
}

void loadFile(Host& host, const Arguments& arguments) {
  arguments.text("readAccess");  // the page's own file is all that the engine lets it read
  load(host, arguments);
}

/// A command that needs nothing but the view.
auto simply(void (WebViewHost::*action)()) {
  return [action](Host& host, const Arguments& arguments) {
    if (WebViewHost* view = host.webView(arguments.id("view"))) (view->*action)();
  };
}

void closeView(Host& host, const Arguments& arguments) {
  const Id view = arguments.id("view");
  if (host.webView(view) != nullptr) host.views().drop(view);
}

void evaluate(Host& host, const Arguments& arguments) {
  const Id id = arguments.id("id");
  const std::string script = arguments.text("script");
  if (WebViewHost* view = host.webView(arguments.id("view"))) return view->evaluate(id, script);
  host.events()({{"type", "web.evaluated"}, {"id", id}, {"error", "the web view is gone"}});
}

void run(Host& host, const Arguments& arguments) {
  const std::string script = arguments.text("script");
  if (WebViewHost* view = host.webView(arguments.id("view"))) view->run(script);
}

void decide(Host& host, const Arguments& arguments) {
  const Id decision = arguments.id("decision");
  const bool allow = arguments.flag("allow");
  if (WebViewHost* view = host.webView(arguments.id("view"))) view->decide(decision, allow);
}

}  // namespace

void addWebCommands(CommandTable& table) {
  table["web.create"] = createWebView;
  table["web.load"] = load;
  table["web.loadFile"] = loadFile;
  table["web.stop"] = simply(&WebViewHost::stop);
  table["web.reload"] = simply(&WebViewHost::reload);
  table["web.terminate"] = simply(&WebViewHost::terminate);
  table["web.close"] = closeView;
  table["web.evaluate"] = evaluate;
  table["web.run"] = run;
  table["web.decide"] = decide;
}

}  // namespace zovk
