#include "capi/Boundary.h"

#include <atomic>
#include <cstdio>
#include <exception>
#include <new>

#include <unistd.h>

#include "engine/Installation.h"
#include "logging/ZPLogger.h"
#include "platform/HostPlatform.h"
#include "zovkpopup/Host.h"
#include "zovkpopup/platform/CurrentPlatform.h"

namespace zovk {
namespace {

std::atomic<bool> logHasPlace{false};
std::atomic<pid_t> hostProcess{0};

zovkpopup_status tell(const char* function, zovkpopup_status status, const char* why) noexcept {
  try {
    if (logHasPlace || ZOVKPopupHost::pollDescriptor() >= 0) {
      logError("%s: %s", function, why);
      return status;
    }
  } catch (...) {  // without memory for the line, it goes the way that needs none
  }
  std::fprintf(stderr, "[Error] %s: %s\n", function, why);
  return status;
}

}  // namespace

void hostIsSetUp() {
  logHasPlace = true;
  hostProcess = getpid();
}

zovkpopup_status statusOfThrown(const char* function) noexcept {
  try {
    throw;
  } catch (const Fault& fault) {
    const char* const message = zovkpopup_error_message(fault.status);
    if (fault.isTold) return fault.status;
    return tell(function, fault.status, fault.why.empty() ? message : fault.why.c_str());
  } catch (const std::bad_alloc&) {
    return tell(function, ZOVKPOPUP_ERROR_MEMORY, zovkpopup_error_message(ZOVKPOPUP_ERROR_MEMORY));
  } catch (const std::exception& error) {
    return tell(function, ZOVKPOPUP_ERROR_INTERNAL, error.what());
  } catch (...) {
    return tell(function, ZOVKPOPUP_ERROR_INTERNAL, "something was thrown");
  }
}

void requireHost() {
  if (ZOVKPopupHost::pollDescriptor() < 0) {
    throw Fault{ZOVKPOPUP_ERROR_STATE, "the host is not set up, or was shut down"};
  }
  // Bytes that a copy of the process took from the helper's socket would be missing to the game.
  if (hostProcess != 0 && hostProcess != getpid()) {
    throw Fault{ZOVKPOPUP_ERROR_STATE, "this process is a copy of the one that set the host up"};
  }
}

void requireMainThread() {
  requireHost();
  if (hostPlatform() == nullptr) throw Fault{ZOVKPOPUP_ERROR_THREAD, {}};
}

void requirePopups() {
  if (ZOVKPopupHost::pollDescriptor() < 0) {
    installLinked();
    if (currentPlatform() != nullptr) hostIsSetUp();
  }
  requireMainThread();
}

}  // namespace zovk
