#include "platform/memory/MemoryPlatform.h"

namespace zovk {

MemoryPlatform::MemoryPlatform() {
  files.addDirectory(device.homeDirectory() + "/Library/Caches");
  files.addDirectory("/tmp");
}

MemoryPlatform::~MemoryPlatform() {
  shutDown();
}

std::shared_ptr<Platform> MemoryPlatform::shared() {
  // Without an owner to share with, the pointer refers to this object and owns nothing.
  return {weak_from_this().lock(), &interfaces};
}

void MemoryPlatform::shutDown() {
  scheduler.shutDown();  // first: a completion may wait for the main thread
  urlSession.shutDown();
}

void MemoryPlatform::settle() {
  do {
    scheduler.runReady();
  } while (urlSession.deliver() > 0 || scheduler.pendingTaskCount() > 0);
}

}  // namespace zovk
