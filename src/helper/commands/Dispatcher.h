#pragma once

#include <functional>
#include <memory>

#include "helper/Events.h"
#include "helper/Program.h"
#include "helper/commands/Commands.h"
#include "support/UniqueFd.h"

namespace zovk::helper {

/// The services of the connection and the main loop for the dispatcher.
struct Control {
  std::function<void()> pause;
  std::function<void()> resume;
  std::function<void()> quit;
  std::function<UniqueFd()> takeFile;  ///< The file that came with a command.
};

/// Carries out the game's commands. The first one must be the greeting; the others wait until the
/// interface is ready. An invalid command writes one log line and has no other effect.
class Dispatcher {
 public:
  Dispatcher(EventSink events, Control control);
  void receive(const HelperMessage& message);

 private:
  void carryOut(const std::string& type, const Arguments& arguments);
  void greet(const Arguments& arguments);
  void start(const Greeting& greeting);
  void fail(const std::string& reason);
  void takeBackdrop(Program& program, const Arguments& arguments) const;

  EventSink events_;
  Control control_;
  CommandTable table_;
  std::unique_ptr<Program> program_;
};

}  // namespace zovk::helper
