#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/helper/HelperJournal.h"

namespace zovk {

/// Those who wait for the helper's answer to a command. Main thread only.
class HelperReplies {
 public:
  /// Hears the answering event, which it may take apart, or null when none will come.
  using Reply = std::function<void(HelperMessage* answer)>;

  /// `about` is the object whose end ends the waiting, 0 for none.
  void expect(HelperId id, std::string event, HelperId about, Reply reply);
  /// Who waits for `event` under that number; null when nobody does.
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
