#pragma once

#include <cstdint>
#include <map>
#include <utility>
#include <vector>

#include "protocol/FrameCodec.h"

namespace zovk {

using HelperId = std::int64_t;

/// What of an object a remembered command sets. A later command of the same aspect replaces it.
enum class HelperAspect {
  kExistence,
  kPlace,  ///< Where a view was added, or that it was taken out.
  kDepth,  ///< That it was sent to the back there.
  kHidden,
  kAlpha,
  kBackground,
  kClip,
  kImage,
  kEdges,
  kTop,
  kBottom,
  kFetching,  ///< What is fetched from a page when it calls.
  kAddress,
  kShown,
};

/// The commands that make what is on screen, so that a new helper can be given it anew. It holds
/// one command for each aspect of each object that is there, and so never grows with time.
class HelperJournal {
 public:
  void remember(HelperId object, HelperAspect aspect, const HelperMessage& command);
  void forget(HelperId object, HelperAspect aspect);
  void forget(HelperId object);
  /// The commands in the order in which they were given, except that windows are shown last, when
  /// they are complete.
  std::vector<HelperMessage> commands() const;
  bool isEmpty() const { return order_.empty(); }

 private:
  using Key = std::pair<HelperId, HelperAspect>;
  std::map<Key, std::uint64_t> places_;
  std::map<std::uint64_t, std::pair<Key, HelperMessage>> order_;
  std::uint64_t last_ = 0;
};

}  // namespace zovk
