#pragma once

#include <string>

#include <gtk/gtk.h>

namespace zovk::helper {

/// The line at the foot of a window that says which button of a game pad does what. It appears with
/// the first press of a pad, over everything else, and takes no input.
class PadLine {
 public:
  explicit PadLine(GtkOverlay* overlay);
  PadLine(const PadLine&) = delete;
  PadLine& operator=(const PadLine&) = delete;

  void show(const std::string& text);

 private:
  GtkWidget* label_;
};

}  // namespace zovk::helper
