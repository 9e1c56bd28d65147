#include "webhost/Commands.h"
#include "webhost/Host.h"

namespace zovk {
namespace {

void loadLayout(Host& host, const Arguments& arguments) {
  const Id id = arguments.id("layout");
  const Id view = arguments.id("view");
  const std::string bundle = arguments.text("bundle");
  host.openLayout(id, view, bundle, arguments.text("name"));
}

void bindOutlet(Host& host, const Arguments& arguments) {
  const Id view = arguments.id("view");
  const Id id = arguments.id("layout");
  const std::string name = arguments.text("name");
  const LayoutHost* layout = host.layout(id);
  GtkWidget* widget = layout == nullptr ? nullptr : layout->outlet(name);
  if (widget != nullptr) host.views().add(view, widget, id);
}

void closeLayout(Host& host, const Arguments& arguments) {
  host.closeLayout(arguments.id("layout"));
}

}  // namespace

void addLayoutCommands(CommandTable& table) {
  table["layout.load"] = loadLayout;
  table["layout.outlet"] = bindOutlet;
  table["layout.close"] = closeLayout;
}

}  // namespace zovk
