#pragma once

#include <functional>
#include <string>
#include <vector>

#include <gtk/gtk.h>

#include "helper/GObjectPtr.h"
#include "helper/layout/LayoutTexts.h"

namespace zovk::helper {

/// One loaded layout file. A file that cannot be loaded gives a layout without views.
class ToolkitLayout {
 public:
  /// `perform` gets the handler name of a button that was pressed.
  ToolkitLayout(const std::string& bundle, const std::string& name,
                std::function<void(const std::string&)> perform);
  /// Removes the views from their parents.
  ~ToolkitLayout();
  ToolkitLayout(const ToolkitLayout&) = delete;
  ToolkitLayout& operator=(const ToolkitLayout&) = delete;

  /// Returns the root; null if there is none.
  GtkWidget* root() const { return root_.get(); }
  GtkWidget* outlet(const std::string& name) const;
  std::vector<std::string> outletNames() const;
  /// Returns a text of the bundle that no view has, in the player's language; empty if there is
  /// none.
  std::string text(const std::string& name) const;
  /// Returns why the file could not be loaded; empty if it was loaded.
  const std::string& error() const { return error_; }

 private:
  void findRoot();
  void addLooseConstraints();

  LayoutTexts texts_;
  GObjectPtr<GtkBuilder> builder_;
  GObjectPtr<GtkWidget> root_;
  std::string error_;
};

}  // namespace zovk::helper
