#include "unit/storage/StorageFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using FilePath = StorageFixture;

TEST_F(FilePath, OfAnInternalFileIsTheDirectoryAndTheName) {
  EXPECT_EQ(fileManager().getInternalFilePath("a.html"), cachePath("a.html"));
  EXPECT_THAT(lines(),
              ElementsAre("D getInternalFilePath: Get internal file path, fileName:a.html"));
}

TEST_F(FilePath, OfAnInternalFileWithoutANameIsEmpty) {
  EXPECT_EQ(fileManager().getInternalFilePath(""), "");
  EXPECT_THAT(lines(), ElementsAre("D getInternalFilePath: Get internal file path, fileName:",
                                   "E Param fileName illegal"));
}

TEST_F(FilePath, OfAnInternalFileTakesTheNameAsItIs) {
  for (const char* name : {"sub/a.html", "../a.html", "100%s \"quoted\" 'name'.html", " "}) {
    EXPECT_EQ(fileManager().getInternalFilePath(name), cachePath(name));
  }
  EXPECT_TRUE(log().contains("fileName:100%s \"quoted\" 'name'.html"));
}

TEST_F(FilePath, OfAResourceIsTheBundlesDirectoryAndTheName) {
  EXPECT_EQ(fileManager().getResourceFilePath("a.html"), std::string(kBundle) + "/a.html");
  EXPECT_EQ(fileManager().getResourceFilePath(""), std::string(kBundle) + "/");
  EXPECT_TRUE(lines().empty());
}

TEST_F(FilePath, OfAResourceIsEmptyWithoutABundle) {
  memory().bundles.removeResourceBundle();
  EXPECT_EQ(fileManager().getResourceFilePath("a.html"), "");
  EXPECT_THAT(lines(), ElementsAre("E No resource bundle found!"));
}

using ResourceBundle = StorageFixture;

TEST_F(ResourceBundle, IsFoundInTheMainBundle) {
  ASSERT_NE(fileManager().getResourceBundle(), nullptr);
  EXPECT_EQ(fileManager().getResourceBundle()->resourcePath(), kBundle);
}

TEST_F(ResourceBundle, IsKeptOnceFound) {
  const auto bundle = fileManager().getResourceBundle();
  ASSERT_NE(bundle, nullptr);
  EXPECT_EQ(fileManager().getResourceBundle(), bundle) << "not opened a second time";
  memory().bundles.removeResourceBundle();
  EXPECT_EQ(fileManager().getResourceBundle(), bundle);
}

TEST_F(ResourceBundle, IsLookedForAgainUntilFound) {
  memory().bundles.removeResourceBundle();
  EXPECT_EQ(fileManager().getResourceBundle(), nullptr);
  addResource("a.html", "a");
  EXPECT_NE(fileManager().getResourceBundle(), nullptr);
}

TEST_F(ResourceBundle, IsAbsentWhenAFileIsInItsPlace) {
  memory().bundles.removeResourceBundle();
  files().addFile(kBundle, "a file");
  EXPECT_EQ(fileManager().getResourceBundle(), nullptr);
}

TEST_F(ResourceBundle, OffersItsInfoDictionary) {
  addResource("Info.json", R"({"title":"Popups"})");
  const boost::json::object* const info = fileManager().getResourceInfo();
  ASSERT_NE(info, nullptr);
  EXPECT_EQ(info->at("title"), "Popups");
  memory().bundles.removeResourceBundle();
  EXPECT_EQ(fileManager().getResourceInfo(), info) << "read once, then kept";
  EXPECT_TRUE(lines().empty());
}

TEST_F(ResourceBundle, HasNoInfoDictionaryWhenItIsNotThere) {
  memory().bundles.removeResourceBundle();
  EXPECT_EQ(fileManager().getResourceInfo(), nullptr);
  EXPECT_THAT(lines(), ElementsAre("E No resource bundle found!"));
}

}  // namespace
}  // namespace zovk
