#pragma once

#include <string>

#include <gtk/gtk.h>

namespace zovk::helper {

/// The texts of a bundle's layouts, in the player's language. The file has one group for each view
/// that has a text, with the key "label" and its translations, such as `label[zh]`.
class LayoutTexts {
 public:
  /// Without a readable file every view keeps the text of its layout.
  explicit LayoutTexts(const std::string& bundle);
  ~LayoutTexts();
  LayoutTexts(const LayoutTexts&) = delete;
  LayoutTexts& operator=(const LayoutTexts&) = delete;

  /// Gives a view the text of that name. It is the text of a button or label, the hint of a button
  /// with a picture, and in both cases also the text for screen readers.
  void apply(const std::string& name, GtkWidget* view) const;
  /// Returns the text of that name; empty if there is none.
  std::string find(const std::string& name) const;

 private:
  GKeyFile* file_;
};

}  // namespace zovk::helper
