#include "helper/Commands.h"
#include "helper/Program.h"

namespace zovk::helper {
namespace {

void createWebView(Program& program, const Arguments& arguments) {
  const Id view = arguments.id("view");
  const std::vector<std::string> handlers = arguments.texts("handlers");
  WebViewWishes wishes;
  wishes.inlineMedia = arguments.flag("inlineMedia");
  wishes.mobile = arguments.flag("mobile");
  wishes.scrollIndicator = arguments.flag("scrollIndicator");
  wishes.opaque = arguments.flag("opaque");
  arguments.flag("bounces");
  arguments.flag("adjustInset");
  program.openWebView(view, wishes, handlers);
}

void load(Program& program, const Arguments& arguments) {
  const std::string url = arguments.text("url");
  const bool allowed = arguments.has("allowed") && arguments.flag("allowed");
  if (ToolkitWebView* view = program.webView(arguments.id("view"))) view->load(url, allowed);
}

void loadFile(Program& program, const Arguments& arguments) {
  arguments.text("readAccess");  // the page's own file is all that the engine lets it read
  load(program, arguments);
}

/// A command that needs nothing but the view.
auto simply(void (ToolkitWebView::*action)()) {
  return [action](Program& program, const Arguments& arguments) {
    if (ToolkitWebView* view = program.webView(arguments.id("view"))) (view->*action)();
  };
}

void closeView(Program& program, const Arguments& arguments) {
  const Id view = arguments.id("view");
  if (program.webView(view) != nullptr) program.views().drop(view);
}

void evaluate(Program& program, const Arguments& arguments) {
  const Id id = arguments.id("id");
  const std::string script = arguments.text("script");
  if (ToolkitWebView* view = program.webView(arguments.id("view")))
    return view->evaluate(id, script);
  program.events()({{"type", "web.evaluated"}, {"id", id}, {"error", "the web view is gone"}});
}

void run(Program& program, const Arguments& arguments) {
  const std::string script = arguments.text("script");
  if (ToolkitWebView* view = program.webView(arguments.id("view"))) view->run(script);
}

void fetchAhead(Program& program, const Arguments& arguments) {
  const std::string address = arguments.text("address");
  const std::string script = arguments.text("script");
  if (ToolkitWebView* view = program.webView(arguments.id("view"))) {
    view->fetchAhead(address, script);
  }
}

void decide(Program& program, const Arguments& arguments) {
  const Id decision = arguments.id("decision");
  const bool allow = arguments.flag("allow");
  if (ToolkitWebView* view = program.webView(arguments.id("view"))) view->decide(decision, allow);
}

}  // namespace

void addWebCommands(CommandTable& table) {
  table["web.create"] = createWebView;
  table["web.load"] = load;
  table["web.loadFile"] = loadFile;
  table["web.stop"] = simply(&ToolkitWebView::stop);
  table["web.reload"] = simply(&ToolkitWebView::reload);
  table["web.terminate"] = simply(&ToolkitWebView::terminate);
  table["web.close"] = closeView;
  table["web.evaluate"] = evaluate;
  table["web.run"] = run;
  table["web.decide"] = decide;
  table["web.fetchAhead"] = fetchAhead;
}

}  // namespace zovk::helper
