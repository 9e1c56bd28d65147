#pragma once

#include <deque>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include <sys/types.h>

#include "protocol/FrameCodec.h"

namespace zovk {

/// A directory that is removed with its holder.
class ScratchDirectory {
 public:
  ScratchDirectory();
  ~ScratchDirectory();
  ScratchDirectory(const ScratchDirectory&) = delete;
  ScratchDirectory& operator=(const ScratchDirectory&) = delete;
  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

/// The game's end of a running helper. Every wait has a bound. It throws std::runtime_error, with
/// the thing it waited for, when the bound is reached or the helper ends.
class HelperUnderTest {
 public:
  enum class Start { kGreeted, kSilent };
  /// Greets the helper and waits for its `ready`, or does neither. `environment` replaces variables
  /// of this process ("NAME=value") or removes them ("NAME").
  explicit HelperUnderTest(Start start = Start::kGreeted,
                           const std::vector<std::string>& environment = {});
  ~HelperUnderTest();
  HelperUnderTest(const HelperUnderTest&) = delete;
  HelperUnderTest& operator=(const HelperUnderTest&) = delete;

  pid_t pid() const { return pid_; }
  const std::filesystem::path& directory() const { return directory_.path(); }
  const HelperMessage& ready() const { return ready_; }
  HelperMessage greeting() const;

  void send(const HelperMessage& message);
  /// The files go with the message.
  void sendWithFiles(const HelperMessage& message, const std::vector<int>& files);
  void sendBytes(std::string_view bytes);
  /// Waits for the next event of the type whose members include `members`, and takes it out of the
  /// queue.
  HelperMessage await(std::string_view type, const HelperMessage& members = {});
  /// Receives everything that was sent before this call had an answer. Returns whether such an
  /// event came.
  bool came(std::string_view type, const HelperMessage& members = {});
  /// Waits for the answer to a `sync` of the window.
  void sync(int window = 1);
  void closeSocket();
  /// Waits for the process to end. Returns its exit status, or minus the signal that ended it.
  int awaitEnd();

 private:
  void spawn(const std::vector<std::string>& environment);
  void receive(int milliseconds, std::string_view awaited);
  bool take(std::string_view type, const HelperMessage& members, HelperMessage& result);

  ScratchDirectory directory_;
  pid_t pid_ = -1;
  int socket_ = -1;
  int lastSync_ = 1000000;
  FrameDecoder decoder_;
  std::deque<HelperMessage> events_;
  HelperMessage ready_;
};

/// Starts a helper that gets `socket` as its descriptor 3. Returns its process.
pid_t spawnHelper(int socket, const std::vector<std::string>& environment = {});
/// Runs a program to its end. Returns its exit status.
int runProgram(const std::vector<std::string>& arguments);
/// Returns whether the process ends within the bound.
bool endsSoon(pid_t pid);

}  // namespace zovk
