#pragma once

#include <functional>
#include <memory>
#include <string>

#include <sys/types.h>

#include "platform/linux/helper/HelperBackOff.h"
#include "platform/linux/helper/HelperBackdrop.h"
#include "platform/linux/helper/HelperJournal.h"
#include "platform/linux/helper/HelperLauncher.h"
#include "platform/linux/helper/HelperLife.h"
#include "platform/linux/helper/HelperObjects.h"
#include "platform/linux/helper/HelperReaper.h"
#include "platform/linux/helper/HelperReplies.h"
#include "platform/linux/helper/HelperRest.h"
#include "platform/linux/helper/HelperWatchdog.h"
#include "platform/linux/system/LinuxDevice.h"
#include "platform/linux/system/LinuxMainQueue.h"

namespace zovk {

/// What all handles share: the helper, however often it had to be started, and what it was told.
/// Main thread only. Commands to a helper that is gone are remembered and go to the next one. In a
/// process that was forked off the game it does nothing.
///
/// A helper that is lost is started again once, and gets what is on screen anew; when that one is
/// lost too, every window's root controller is told. The second chance comes back when a window
/// closes over a helper that is well. After a failure the next window starts anew, with a second
/// chance of its own; after further failures in a row only once a growing pause is over. A helper
/// that shows something and does not answer counts as lost.
class HelperClient : public std::enable_shared_from_this<HelperClient> {
 public:
  using Task = std::function<void()>;

  HelperClient(LinuxMainQueue& queue, LinuxDevice& device, HelperLauncher launcher,
               HelperMessage hello, ZOVKPopupBackdrop backdrop = {});

  /// Starts a helper unless one is running or coming, or it is too soon after a failure.
  void start();
  /// Something may be shown soon: a helper that rests gets ready again, one that has ended for it
  /// is started. Costs nothing when it is ready.
  void prepare();
  /// Ends the helper. Nothing has an effect or is called back afterwards.
  void shutDown();
  bool isShutDown() const { return queue_ == nullptr; }

  HelperId newId() { return ++lastId_; }
  void send(const HelperMessage& command);
  /// Sends it, and remembers it for a helper to come.
  void command(HelperId object, HelperAspect aspect, const HelperMessage& command);
  /// Sends `command` with a new number, by which the helper answers with `event`.
  void request(HelperMessage command, std::string event, HelperId about,
               HelperReplies::Reply reply);
  /// The object is gone: it is not made again, and who waits for it is told so from the pump.
  void forget(HelperId object);
  void windowShown(HelperId window);
  void windowClosed(HelperId window);
  /// A window did not come up on that display system, "x11" or "wayland", whatever the helper did.
  /// Only from the pump.
  void windowIsStuck(const std::string& display);
  /// The helper hides the game behind its windows, so it wants a frame of the game's now, if
  /// something is shown, and each time that something is about to be.
  void backdropWanted();
  /// What the game tells of its own window, where the display does not.
  void gameHasKeyboard(bool has);
  void gameHasSize(const Size& size);
  /// How the player holds the machine.
  void heldAs(Orientation orientation);
  /// How large the popup is, or is about to be; an empty size tells nothing.
  void sizeKnown(const Size& size);
  /// Runs `task` from the pump, unless all is shut down by then.
  void later(Task task);

  void helperIsReady();
  /// The helper is of no use any more. Only from the pump.
  void helperIsLost(const std::string& reason);
  /// Tells helpers apart: what one asked must not be answered to the next.
  int helperNumber() const { return helperNumber_; }
  pid_t helperProcessId() const { return link_ ? link_->pid() : 0; }
  /// Why there is no helper and none is coming; empty otherwise.
  const std::string& failure() const { return failure_; }

  HelperObjects& objects() { return objects_; }
  HelperJournal& journal() { return journal_; }
  /// Who waits for that answer; null when nobody does.
  HelperReplies::Reply takeReply(HelperId id, std::string_view event);
  /// Whether nothing is left of any handle.
  bool isEmpty() const;

 private:
  bool isForeignProcess() const;
  bool displayTellsOfGame() const;
  void launch();
  HelperLife::Events linkEvents();
  /// A helper ends by itself when its socket closes.
  enum class HelperEnd { kAtOnce, kByItself };
  void dropLink(HelperEnd end);
  void watchHelper();
  void restHelper();
  void endHelper();
  void tellWindows();
  void sendBackdrop();

  LinuxMainQueue* queue_;  // null once shut down
  LinuxDevice& device_;    // not to be used then
  const pid_t process_;
  const HelperLauncher launcher_;
  HelperMessage hello_;
  HelperReaper reaper_;
  HelperWatchdog watchdog_;
  HelperRest rest_;
  HelperBackOff backOff_;
  HelperObjects objects_;
  HelperJournal journal_;
  HelperReplies replies_;
  HelperBackdrop backdrop_;
  std::shared_ptr<HelperLife> link_;
  std::string failure_ = "not started";
  bool mayStartAgain_ = true;
  bool isReady_ = false;
  bool isResting_ = false;  // has given up what it held ready, or has ended for the same reason
  int helperNumber_ = 0;
  HelperId lastId_ = 0;
};

}  // namespace zovk
