#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/WebHostJournal.h"

namespace zovk {

/// Those who wait for the helper's answer to a command. Main thread only.
class WebHostReplies {
 public:
  /// Hears the answering event, which it may take apart, or null when none will come.
  using Reply = std::function<void(WebHostMessage* answer)>;

  /// `about` is the object whose end ends the waiting, 0 for none.
  void expect(WebHostId id, std::string event, WebHostId about, Reply reply);
  /// Who waits for `event` under that number; null when nobody does.
  Reply take(WebHostId id, std::string_view event);
  std::vector<Reply> takeAbout(WebHostId object);
  std::vector<Reply> takeAll();
  bool isEmpty() const { return waiting_.empty(); }

 private:
  struct Waiting {
    std::string event;
    WebHostId about;
    Reply reply;
  };
  std::map<WebHostId, Waiting> waiting_;
};

}  // namespace zovk
