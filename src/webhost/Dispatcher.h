#pragma once

#include <functional>
#include <memory>

#include "support/UniqueFd.h"
#include "webhost/Commands.h"
#include "webhost/Events.h"
#include "webhost/Host.h"

namespace zovk {

/// What the dispatcher asks of the connection and the main loop.
struct Control {
  std::function<void()> pause;
  std::function<void()> resume;
  std::function<void()> quit;
  std::function<UniqueFd()> takeFile;  ///< What came with a command.
};

/// Carries out the game's commands. The first one must be the greeting; the others wait until the
/// interface is up. A command that does not make sense leaves one log line and nothing else.
class Dispatcher {
 public:
  Dispatcher(EventSink events, Control control);
  void receive(const WebHostMessage& message);

 private:
  void carryOut(const std::string& type, const Arguments& arguments);
  void greet(const Arguments& arguments);
  void start(const Greeting& greeting);
  void fail(const std::string& reason);
  void takeBackdrop(Host& host, const Arguments& arguments) const;

  EventSink events_;
  Control control_;
  CommandTable table_;
  std::unique_ptr<Host> host_;
};

}  // namespace zovk
