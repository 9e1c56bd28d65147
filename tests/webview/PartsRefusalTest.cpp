#include <gtest/gtest.h>

#include "helper/page/LoadRefusal.h"

namespace zovk::helper {
namespace {

TEST(LoadRefusal, IsForAFileAddressThatNamesNoFile) {
  for (const char* address : {"file:", "file://", "file://host", "file:?query", "file:///%zz"}) {
    EXPECT_EQ(loadRefusal(address), "The address names no file") << address;
  }
}

TEST(LoadRefusal, IsForWhatIsNoFile) {
  for (const char* address : {"file:///", "file:///proc", "file:///dev/zero"}) {
    EXPECT_EQ(loadRefusal(address), "The address names something else than a file") << address;
  }
}

TEST(LoadRefusal, IsNotForFilesAndNotForTheWeb) {
  for (const char* address : {"file:///proc/self/status", "file:///no/such/file.html",
                              "https://example.org/", "about:blank", "data:text/html,"}) {
    EXPECT_EQ(loadRefusal(address), "") << address;
  }
}

}  // namespace
}  // namespace zovk::helper
