#pragma once

#include <cstdint>
#include <map>
#include <utility>
#include <vector>

#include "protocol/FrameCodec.h"

namespace zovk {

/// The property of an object that a remembered command sets. A later command of the same aspect
/// replaces it.
enum class HelperAspect {
  kExistence,
  kPlace,  ///< The parent to which a view was added, or its removal.
  kDepth,  ///< That it was sent to the back there.
  kHidden,
  kAlpha,
  kBackground,
  kClip,
  kImage,
  kEdges,
  kTop,
  kBottom,
  kFetching,  ///< The script that is run when a page calls.
  kAddress,
  kShown,
};

/// The commands that rebuild what is on screen, for a new helper. It holds one command for each
/// aspect of each existing object, and so never grows with time.
class HelperJournal {
 public:
  void remember(HelperId object, HelperAspect aspect, const HelperMessage& command);
  void forget(HelperId object, HelperAspect aspect);
  void forget(HelperId object);
  /// Returns the commands in the order in which they were given, except that windows are shown
  /// last, when they are complete.
  std::vector<HelperMessage> commands() const;
  bool isEmpty() const { return order_.empty(); }

 private:
  using Key = std::pair<HelperId, HelperAspect>;
  std::map<Key, std::uint64_t> places_;
  std::map<std::uint64_t, std::pair<Key, HelperMessage>> order_;
  std::uint64_t last_ = 0;
};

}  // namespace zovk
