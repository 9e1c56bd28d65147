#pragma once

#include <cstddef>
#include <deque>
#include <set>

#include "protocol/FrameCodec.h"

namespace zovk::helper {

/// The game's commands that were read and wait. They come out as they were sent, except that a new
/// page and its first load come before the widgets around it: the page then loads while they are
/// built. A window is shown after what is done with its views, so that it is laid out once.
class CommandBatch {
 public:
  void add(HelperMessage command);
  bool empty() const { return commands_.empty(); }
  std::size_t size() const { return commands_.size(); }
  /// Returns the next command. There must be one.
  HelperMessage take();

 private:
  bool isMentioned(HelperId view) const;
  void addAhead(HelperMessage command);
  void addBehind(HelperMessage command);

  std::deque<HelperMessage> commands_;
  std::size_t ahead_ = 0;         // of the first commands, those that were put before others
  std::set<HelperId> untouched_;  // new pages whose next command is their first load
};

}  // namespace zovk::helper
