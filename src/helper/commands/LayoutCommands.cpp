#include "helper/Program.h"
#include "helper/commands/Commands.h"
#include "protocol/MessageNames.h"

namespace zovk::helper {
namespace {

void loadLayout(Program& program, const Arguments& arguments) {
  const Id id = arguments.id(member::kLayout);
  const Id view = arguments.id(member::kView);
  const std::string bundle = arguments.text(member::kBundle);
  program.openLayout(id, view, bundle, arguments.text(member::kName));
}

void bindOutlet(Program& program, const Arguments& arguments) {
  const Id view = arguments.id(member::kView);
  const Id id = arguments.id(member::kLayout);
  const std::string name = arguments.text(member::kName);
  const ToolkitLayout* layout = program.layout(id);
  GtkWidget* widget = layout == nullptr ? nullptr : layout->outlet(name);
  if (widget != nullptr) program.views().add(view, widget, id);
}

void closeLayout(Program& program, const Arguments& arguments) {
  program.closeLayout(arguments.id(member::kLayout));
}

}  // namespace

void addLayoutCommands(CommandTable& table) {
  table[command::kLayoutLoad] = loadLayout;
  table[command::kLayoutOutlet] = bindOutlet;
  table[command::kLayoutClose] = closeLayout;
}

}  // namespace zovk::helper
