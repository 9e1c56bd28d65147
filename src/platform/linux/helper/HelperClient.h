#pragma once

#include <functional>
#include <memory>
#include <string>

#include <sys/types.h>

#include "platform/linux/helper/FrameThread.h"
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

/// The client of the helper, which all handles share. It stays the same however often a helper is
/// started, and remembers the commands. Main thread only. Commands to a helper that is gone are
/// remembered and go to the next one. In a forked copy of the game's process it does nothing.
///
/// A helper that is lost is started again once, and gets the commands for what is on screen again.
/// If that one is lost too, every window's root controller is told. When a window closes over a
/// helper that works, a second chance is available again. After a failure the next window starts a
/// new helper, with its own second chance; after further failures in a row it does so only after a
/// growing pause. A helper that shows something and does not answer counts as lost.
class HelperClient : public std::enable_shared_from_this<HelperClient> {
 public:
  using Task = std::function<void()>;

  HelperClient(LinuxMainQueue& queue, LinuxDevice& device, HelperLauncher launcher,
               HelperMessage hello, ZOVKPopupBackdrop backdrop = {});

  /// Starts a helper, or greets the one at rest, unless one is ready or starting, or it is too soon
  /// after a failure.
  void start();
  /// Announces that something may be shown soon: makes a helper at rest ready, and starts another
  /// if that one has ended. A helper that is ready stays so for its time from now on.
  void prepare();
  /// Ends the helper. Afterwards no call has an effect, and nothing is called back.
  void shutDown();
  bool isShutDown() const { return queue_ == nullptr; }

  HelperId newId() { return ++lastId_; }
  void send(const HelperMessage& command);
  /// Sends a command, and remembers it for a later helper.
  void command(HelperId object, HelperAspect aspect, const HelperMessage& command);
  /// Sends `command` with a new number. The helper answers with `event` and the same number.
  void request(HelperMessage command, std::string_view event, HelperId about,
               HelperReplies::Reply reply);
  /// Forgets an object: a new helper does not get it, and its waiting replies are told so, from the
  /// pump.
  void forget(HelperId object);
  void windowShown(HelperId window);
  void windowClosed(HelperId window);
  /// Reports that a window did not come up on that display system, "x11" or "wayland", even full
  /// screen. Call only from the pump.
  void windowIsStuck(const std::string& display);
  /// Reports that the helper's windows hide the game. The helper then gets a frame of the game now,
  /// if something is shown, and each time before something is shown.
  void backdropWanted();
  /// Reports of the game about its own window, for displays that do not report them.
  void gameHasKeyboard(bool has);
  void gameHasSize(const Size& size);
  /// Reports how the player holds the machine.
  void heldAs(Orientation orientation);
  /// Reports the size that the popup has or will have; an empty size is ignored.
  void sizeKnown(const Size& size);
  /// Runs `task` from the pump, unless the client has been shut down by then.
  void later(Task task);

  /// `renderer` is what the helper found that draws; empty if it did not look.
  void helperIsReady(const std::string& renderer);
  /// Reports that the helper is of no use any more. Call only from the pump.
  void helperIsLost(const std::string& reason);
  /// Returns the number of the current helper, so that a question of one helper is not answered to
  /// the next.
  int helperNumber() const { return helperNumber_; }
  pid_t helperProcessId() const { return link_ ? link_->pid() : 0; }
  /// Returns why there is no helper and none is starting; empty otherwise.
  const std::string& failure() const { return failure_; }

  HelperObjects& objects() { return objects_; }
  HelperJournal& journal() { return journal_; }
  /// Removes and returns the reply that waits for that answer; null if there is none.
  HelperReplies::Reply takeReply(HelperId id, std::string_view event);
  /// Returns whether nothing is left of any handle.
  bool isEmpty() const;

 private:
  bool isForeignProcess() const;
  bool displayTellsOfGame() const;
  /// Whether a helper is there that was not greeted, and so knows nothing of the game.
  bool isWaiting() const { return isResting_ && link_; }
  void launch();
  /// Starts a process, without greeting it. Returns why there is none.
  std::string openLink();
  /// Sends what the helper must know, and waits until it is ready.
  void greet();
  HelperLife::Events linkEvents();
  /// How a helper ends: killed at once, or on its own because its socket closes.
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
  FrameThread frames_;
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
  bool isResting_ = false;  // nothing was shown for long: the helper waits, or has ended
  int helperNumber_ = 0;
  HelperId lastId_ = 0;
};

}  // namespace zovk
