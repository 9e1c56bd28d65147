#pragma once

#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "e2e/navigation/AddressOpener.h"
#include "e2e/navigation/PageServer.h"
#include "support/HostFixture.h"

namespace zovk {

/// A popup with a page that wants to go elsewhere. The machine opens web addresses and those of
/// the scheme "zovk-test", unless the test says otherwise; all of them end in `opener`.
class NavigationFixture : public HostFixture {
 protected:
  // The game ends first: its open connections would hold the servers up.
  ~NavigationFixture() override { ZOVKPopupHost::shutDown(); }

  /// A page that runs `script` when it has been loaded and painted. The script has `tell(text)`,
  /// which ends the popup with that text, and `tellLater()`, which tells where the page stands
  /// once the gate is open.
  std::string page(const std::string& script, const std::string& body = "") const;
  /// A page that tells its address at once.
  std::string arrivalPage() const { return page("tell(location.href);"); }

  /// The page of the popup at "/own", and its address.
  std::string servePage(const std::string& script, const std::string& body = "") {
    return site_.page("/own", page(script, body));
  }
  void show(const std::string& uri, int contentType = 3);
  /// Shows a page file; gives its address.
  std::string showFile(const std::string& script, const std::string& body = "");
  /// Adds a page file that no popup on screen has; gives its address.
  std::string addFile(const std::string& html);

  PageServer& site() { return site_; }
  PageServer& otherSite() { return otherSite_; }
  void openOnly(std::initializer_list<const char*> schemes);
  AddressOpener& opener() { return *opener_; }

  /// The controller's lines about navigations and loads so far, without what stands before the
  /// message.
  std::vector<std::string> navigationLines();
  /// The addresses that were decided on so far.
  std::vector<std::string> decided();
  void awaitDecided(std::size_t count);
  void awaitOpened(std::size_t count);
  /// Opens the gate and waits for what the page tells.
  std::string pageTells();
  /// A real click of the pointer in the middle of the page, once that stands at "#ready".
  void clickPage();

 private:
  void start();

  std::unique_ptr<AddressOpener> opener_ = std::make_unique<AddressOpener>(
      std::initializer_list<const char*>{"http", "https", "zovk-test"});
  PageServer site_;
  PageServer otherSite_;
};

}  // namespace zovk
