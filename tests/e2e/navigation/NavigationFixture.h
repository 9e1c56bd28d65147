#pragma once

#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "e2e/navigation/AddressOpener.h"
#include "e2e/navigation/PageServer.h"
#include "fixtures/HostFixture.h"

namespace zovk {

/// A popup with a page that navigates elsewhere. The machine opens web addresses and those of the
/// scheme "zovk-test", unless the test changes that; all of them reach `opener`.
class NavigationFixture : public HostFixture {
 protected:
  // The game ends first: its open connections would hold the servers up.
  ~NavigationFixture() override { ZOVKPopupHost::shutDown(); }

  /// Returns a page that runs `script` when it has been loaded and painted. The script has
  /// `tell(text)`, which ends the popup with that text, and `tellLater()`, which sends the page's
  /// address once the gate is open.
  std::string page(const std::string& script, const std::string& body = "") const;
  /// Returns a page that sends its address at once.
  std::string arrivalPage() const { return page("tell(location.href);"); }

  /// Serves the page of the popup at "/own". Returns its address.
  std::string servePage(const std::string& script, const std::string& body = "") {
    return site_.page("/own", page(script, body));
  }
  void show(const std::string& uri, int contentType = 3);
  /// Shows a page file. Returns its address.
  std::string showFile(const std::string& script, const std::string& body = "");
  /// Adds a page file that no popup on screen has. Returns its address.
  std::string addFile(const std::string& html);

  PageServer& site() { return site_; }
  PageServer& otherSite() { return otherSite_; }
  void openOnly(std::initializer_list<const char*> schemes);
  AddressOpener& opener() { return *opener_; }

  /// Returns the messages of the controller's log lines about navigations and loads so far.
  std::vector<std::string> navigationLines();
  /// Returns the addresses that were decided on so far.
  std::vector<std::string> decided();
  void awaitDecided(std::size_t count);
  void awaitOpened(std::size_t count);
  /// Opens the gate and waits for the page's text.
  std::string pageTells();
  /// Clicks with the real pointer in the middle of the page, once it has reached "#ready".
  void clickPage();

 private:
  void start();

  std::unique_ptr<AddressOpener> opener_ = std::make_unique<AddressOpener>(
      std::initializer_list<const char*>{"http", "https", "zovk-test"});
  PageServer site_;
  PageServer otherSite_;
};

}  // namespace zovk
