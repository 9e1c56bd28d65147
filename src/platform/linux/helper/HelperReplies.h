#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/helper/HelperJournal.h"

namespace zovk {

/// The callbacks that wait for the helper's answer to a command. Main thread only.
class HelperReplies {
 public:
  /// Receives the answering event, which it may take apart, or null if none will come.
  using Reply = std::function<void(HelperMessage* answer)>;

  /// Adds a waiting callback. `about` is the object whose end also ends the wait, or 0 for none.
  void expect(HelperId id, std::string_view event, HelperId about, Reply reply);
  /// Removes and returns the callback that waits for `event` with that number; null if there is
  /// none.
  Reply take(HelperId id, std::string_view event);
  std::vector<Reply> takeAbout(HelperId object);
  std::vector<Reply> takeAll();
  bool isEmpty() const { return waiting_.empty(); }

 private:
  struct Waiting {
    std::string event;
    HelperId about;
    Reply reply;
  };
  std::map<HelperId, Waiting> waiting_;
};

}  // namespace zovk
