#include "helper/Commands.h"
#include "helper/Program.h"

namespace zovk::helper {
namespace {

void loadLayout(Program& program, const Arguments& arguments) {
  const Id id = arguments.id("layout");
  const Id view = arguments.id("view");
  const std::string bundle = arguments.text("bundle");
  program.openLayout(id, view, bundle, arguments.text("name"));
}

void bindOutlet(Program& program, const Arguments& arguments) {
  const Id view = arguments.id("view");
  const Id id = arguments.id("layout");
  const std::string name = arguments.text("name");
  const ToolkitLayout* layout = program.layout(id);
  GtkWidget* widget = layout == nullptr ? nullptr : layout->outlet(name);
  if (widget != nullptr) program.views().add(view, widget, id);
}

void closeLayout(Program& program, const Arguments& arguments) {
  program.closeLayout(arguments.id("layout"));
}

}  // namespace

void addLayoutCommands(CommandTable& table) {
  table["layout.load"] = loadLayout;
  table["layout.outlet"] = bindOutlet;
  table["layout.close"] = closeLayout;
}

}  // namespace zovk::helper
