#pragma once

#include <string>

#include <gtk/gtk.h>

namespace zovk::helper {

/// The texts of a bundle's layouts, in the player's language. The file has one group for each view
/// that has a text, with the key "label", and translations of it as in `label[zh]`.
class LayoutTexts {
 public:
  /// Without a file that can be read every view keeps the text of its layout.
  explicit LayoutTexts(const std::string& bundle);
  ~LayoutTexts();
  LayoutTexts(const LayoutTexts&) = delete;
  LayoutTexts& operator=(const LayoutTexts&) = delete;

  /// Gives a view the text of that name: on a button or label as what it says, on a button with a
  /// picture as its hint, and on each of them as what a screen reader says.
  void apply(const std::string& name, GtkWidget* view) const;
  /// The text of that name; empty when there is none.
  std::string find(const std::string& name) const;

 private:
  GKeyFile* file_;
};

}  // namespace zovk::helper
