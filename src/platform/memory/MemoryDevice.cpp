#include "platform/memory/MemoryDevice.h"

namespace zovk {

MemoryDeviceFacts MemoryDevice::facts() const {
  const LockGuard lock(mutex_);
  return facts_;
}

void MemoryDevice::setHomeDirectory(const std::string& path) {
  const LockGuard lock(mutex_);
  facts_.homeDirectory = path;
}

void MemoryDevice::setIdentifierForVendor(const std::optional<std::string>& identifier) {
  const LockGuard lock(mutex_);
  facts_.identifierForVendor = identifier;
}

void MemoryDevice::setSystemMajorVersion(int version) {
  const LockGuard lock(mutex_);
  facts_.systemMajorVersion = version;
}

void MemoryDevice::setAppStoreHost(const std::string& host) {
  const LockGuard lock(mutex_);
  facts_.appStoreHost = host;
}

void MemoryDevice::setOrientation(Orientation orientation) {
  const LockGuard lock(mutex_);
  facts_.orientation = orientation;
}

void MemoryDevice::setStatusBarOrientation(Orientation orientation) {
  const LockGuard lock(mutex_);
  facts_.statusBarOrientation = orientation;
}

}  // namespace zovk
