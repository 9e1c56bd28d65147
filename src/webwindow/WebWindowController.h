#pragma once

#include <functional>
#include <memory>
#include <string>

#include "zovkpopup/platform/WebView.h"
#include "zovkpopup/platform/Window.h"

namespace zovk {

/// The contents of a web window: a page that fills it. Main thread only. The window owns it, and it
/// owns the page until it is torn down. Afterwards it reports nothing.
class WebWindowController final : public ViewController {
 public:
  using Failed = std::function<void(const std::string& reason)>;

  WebWindowController(std::shared_ptr<WebView> page, std::function<void()> pageChanged,
                      Failed failed);

  /// Returns the page; null after it was torn down.
  const std::shared_ptr<WebView>& page() const { return page_; }
  /// Reports that a page has replaced the one before.
  void pageDidChange() const;

  // ViewController
  void loadView(std::shared_ptr<View> view) override;
  void updateViewConstraints() override {}
  void viewWillTransitionToSize(const Size& /*size*/, TransitionCoordinator&) override {}
  void tearDown() override;
  void interfaceDidFail(const std::string& reason) override;

 private:
  std::shared_ptr<WebView> page_;
  std::function<void()> pageChanged_;
  Failed failed_;
};

}  // namespace zovk
