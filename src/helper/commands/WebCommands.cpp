#include "helper/Program.h"
#include "helper/commands/Commands.h"
#include "protocol/MessageNames.h"

namespace zovk::helper {
namespace {

void createWebView(Program& program, const Arguments& arguments) {
  const Id view = arguments.id(member::kView);
  const std::vector<std::string> handlers = arguments.texts(member::kHandlers);
  WebViewWishes wishes;
  wishes.inlineMedia = arguments.flag(member::kInlineMedia);
  wishes.mobile = arguments.flag(member::kMobile);
  wishes.scrollIndicator = arguments.flag(member::kScrollIndicator);
  wishes.opaque = arguments.flag(member::kOpaque);
  arguments.flag(member::kBounces);
  arguments.flag(member::kAdjustInset);
  program.openWebView(view, wishes, handlers);
}

void load(Program& program, const Arguments& arguments) {
  const std::string url = arguments.text(member::kUrl);
  const bool allowed = arguments.flagOr(member::kAllowed, false);
  ToolkitWebView* const view = program.webView(arguments.id(member::kView));
  if (view == nullptr) return;
  program.loadHaste().begin();
  view->load(url, allowed);
}

void loadFile(Program& program, const Arguments& arguments) {
  arguments.text(member::kReadAccess);  // the page's own file is all that the engine lets it read
  load(program, arguments);
}

/// Returns a command that needs nothing but the view.
auto simply(void (ToolkitWebView::*action)()) {
  return [action](Program& program, const Arguments& arguments) {
    if (ToolkitWebView* view = program.webView(arguments.id(member::kView))) (view->*action)();
  };
}

void closeView(Program& program, const Arguments& arguments) {
  const Id view = arguments.id(member::kView);
  if (program.webView(view) != nullptr) program.views().drop(view);
}

void evaluate(Program& program, const Arguments& arguments) {
  const Id id = arguments.id(member::kId);
  const std::string script = arguments.text(member::kScript);
  if (ToolkitWebView* view = program.webView(arguments.id(member::kView)))
    return view->evaluate(id, script);
  program.events()({{member::kType, event::kWebEvaluated},
                    {member::kId, id},
                    {member::kError, "the web view is gone"}});
}

void run(Program& program, const Arguments& arguments) {
  const std::string script = arguments.text(member::kScript);
  if (ToolkitWebView* view = program.webView(arguments.id(member::kView))) view->run(script);
}

void fetchAhead(Program& program, const Arguments& arguments) {
  const std::string address = arguments.text(member::kAddress);
  const std::string script = arguments.text(member::kScript);
  if (ToolkitWebView* view = program.webView(arguments.id(member::kView))) {
    view->fetchAhead(address, script);
  }
}

void decide(Program& program, const Arguments& arguments) {
  const Id decision = arguments.id(member::kDecision);
  const bool allow = arguments.flag(member::kAllow);
  if (ToolkitWebView* view = program.webView(arguments.id(member::kView)))
    view->decide(decision, allow);
}

}  // namespace

void addWebCommands(CommandTable& table) {
  table[command::kWebCreate] = createWebView;
  table[command::kWebLoad] = load;
  table[command::kWebLoadFile] = loadFile;
  table[command::kWebStop] = simply(&ToolkitWebView::stop);
  table[command::kWebReload] = simply(&ToolkitWebView::reload);
  table[command::kWebTerminate] = simply(&ToolkitWebView::terminate);
  table[command::kWebClose] = closeView;
  table[command::kWebEvaluate] = evaluate;
  table[command::kWebRun] = run;
  table[command::kWebDecide] = decide;
  table[command::kWebFetchAhead] = fetchAhead;
}

}  // namespace zovk::helper
