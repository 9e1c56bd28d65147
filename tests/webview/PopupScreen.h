#pragma once

#include <string>

#include <boost/json/array.hpp>

#include "HelperUnderTest.h"

namespace zovk {

/// The screen that a game builds: window 1 with root view 1, layout 1 with root view 2 and its
/// outlets from view 10 on, web view 50 behind the buttons.
class PopupScreen {
 public:
  static constexpr int kWindow = 1;
  static constexpr int kRoot = 1;
  static constexpr int kLayoutRoot = 2;
  static constexpr int kWebView = 50;
  static constexpr int kLeft = 60;
  static constexpr int kTop = 40;
  static constexpr int kWidth = 390;
  static constexpr int kHeight = 700;

  explicit PopupScreen(HelperUnderTest& helper) : helper_(helper) {}

  void createWindow();
  /// Shows the web view alone, see-through, instead of a layout.
  void fillWithWebView();
  void loadLayout(const std::string& name = "ZOVKPopupView",
                  const std::string& bundle = HELPER_BUNDLE);
  void createWebView(bool opaque = false);
  void show();
  /// Opens a window with a layout and a web view, and shows it.
  void open();
  /// Loads one of the test's pages and allows its first navigation.
  void loadPage(const std::string& name);
  /// Does all of the above.
  void openPage(const std::string& name);
  /// Asks for an address; the page's first navigation then waits.
  HelperMessage ask(const std::string& url);
  void decide(const HelperMessage& question, bool allow = true);
  /// Loads an address and allows its first navigation.
  void load(const std::string& url);

  static int view(const std::string& outlet);
  /// Makes the page run a script. Returns its result, or the error's text.
  boost::json::value evaluate(const std::string& script);
  /// Returns the place of a view in its window, once it is seen.
  boost::json::array place(int view);
  void hide(const std::string& outlet, bool hidden = true);
  /// Clicks with the real pointer on the middle of a button.
  void click(const std::string& outlet);
  /// Clicks really on the middle of the page with one of the pointer's buttons.
  void clickPage(int button = 1);
  static std::string pageUrl(const std::string& name);

 private:
  void makeWebView(int content, bool opaque);
  HelperUnderTest& helper_;
  int lastEvaluation_ = 100;
  boost::json::array page_;  // where it stands, once it was clicked
};

}  // namespace zovk
