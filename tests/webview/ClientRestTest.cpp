// The client and the real helper while nothing is shown.
#include <csignal>

#include <unistd.h>

#include "ClientFixture.h"
#include "fixtures/ProcessFacts.h"

namespace zovk {
namespace {

class HelperClientAtRest : public HelperClientLive {
 protected:
  HelperClientAtRest() : HelperClientLive(kReadySeconds) {}

  /// Waits until one process is left, other than before.
  void awaitRest() {
    const pid_t before = client_->helperProcessId();
    pumpUntil("rest", [&] {
      return client_->helperProcessId() != before && descendantsOf(::getpid()).size() == 1;
    });
  }

 private:
  static constexpr std::uint32_t kReadySeconds = 1;
};

TEST_F(HelperClientAtRest, OneProcessIsLeftAndTheNextPageComesAllTheSame) {
  openPage();
  window_.reset();
  awaitRest();
  const pid_t waiting = client_->helperProcessId();
  EXPECT_EQ(descendantsOf(::getpid()), std::vector<pid_t>{waiting});
  screen_ = std::make_shared<ClientScreen>(*client_);
  openPage();
  EXPECT_EQ(client_->helperProcessId(), waiting);
}

TEST_F(HelperClientAtRest, ThePageComesAfterTheHelperWasKilled) {
  awaitRest();
  kill(client_->helperProcessId(), SIGKILL);
  pumpUntil("the end", [this] { return client_->helperProcessId() == 0; });
  openPage();
}

}  // namespace
}  // namespace zovk
