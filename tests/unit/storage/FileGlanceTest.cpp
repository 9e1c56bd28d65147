#include <gtest/gtest.h>

#include "storage/FileGlance.h"
#include "unit/storage/StampedFileSystem.h"

namespace zovk {
namespace {

TEST(FileGlance, SeesEachFileAsItWasWhenFirstAskedFor) {
  StampedFileSystem files;
  files.put("/a", stampedAt(10, 1), "a");
  FileGlance glance(files);
  EXPECT_EQ(glance.identity("/a"), stampedAt(10, 1));
  EXPECT_EQ(glance.identity("/b"), std::nullopt);
  files.take("/a");
  files.put("/b", stampedAt(20, 1), "b");
  EXPECT_EQ(glance.identity("/a"), stampedAt(10, 1));
  EXPECT_EQ(glance.identity("/b"), std::nullopt);
  EXPECT_EQ(FileGlance(files).identity("/b"), stampedAt(20, 1)) << "a new glance looks anew";
}

}  // namespace
}  // namespace zovk
