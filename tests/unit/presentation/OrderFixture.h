#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "engine/LoggerSetUp.h"
#include "fixtures/ControllerFixture.h"

namespace zovk {

/// Observes the order of the controller's steps: by the log, into which a test writes its own
/// marks, and by the state at the moment when a line is written.
class OrderFixture : public ControllerFixture {
 protected:
  ~OrderFixture() override { setUpLogger(memory().shared(), memory().sharedLog()); }

  /// Calls `look` just before each line that contains `text` is written.
  void whenLogged(const std::string& text, std::function<void()> look) {
    watches_.emplace_back(text, std::move(look));
    LogEnvironment environment = memoryLogEnvironment(log(), true);
    environment.writeLine = [this, copy = log()](std::string_view line) mutable {
      for (const auto& [wanted, call] : watches_) {
        if (line.find(wanted) != std::string_view::npos) call();
      }
      copy.writeLine(line);
    };
    ZPLogger::setEnvironment(std::move(environment));
  }
  static void mark(const std::string& text) { ZPLogger::writeDirectly(text); }
  /// Returns those `texts` that the log's lines contain, in the order of the lines.
  std::vector<std::string> order(const std::vector<std::string>& texts) {
    std::vector<std::string> found;
    for (const std::string& line : log().lines()) {
      for (const std::string& text : texts) {
        if (line.find(text) != std::string::npos) found.push_back(text);
      }
    }
    return found;
  }

  /// Shows the popups with a callback that writes the mark "told CODE"; the log begins empty.
  void showMarked(std::vector<ZOVKPopupModel> popups) {
    controller().showPopup(
        listOf(std::move(popups)), window().get(),
        [](std::int32_t code, const std::string&) { mark("told " + std::to_string(code)); });
    settle();
    log().clear();
  }

 private:
  std::vector<std::pair<std::string, std::function<void()>>> watches_;
};

}  // namespace zovk
